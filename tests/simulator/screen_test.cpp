// What the LED screen shows of the dynamic areas that were sent.
#include "client.h"
#include "samples.h"
#include "simulator/Simulator.h"

#include "hex.h"
#include "wire.h"

namespace qm::sim {
namespace {

using qm::test::hex;
using test::Client;
using test::envelope_around;
using test::letters;
using test::payload_of;

// Code and error value of the global answer to a payload.
struct Verdict {
    int code = -1, error = 0;
    bool operator==(const Verdict&) const = default;
};
const Verdict kTaken{0, 0};
Verdict refused(ErrorValue error) { return {1, static_cast<int>(error)}; }

Verdict send(const Simulator& sim, Bytes payload) {
    const ByteBuffer body = qm::test::unstuff(Client(sim.port()).ask(envelope_around(payload)));
    if (body.size() < 28) return {};
    const Bytes answer = Bytes(body).subspan(body[4] == 5 ? 27 : 28);
    if (answer.size() != 9 || answer[1] != 0xA0) return {};
    return {answer[2], answer[5] | answer[6] << 8};
}

// A type with planes of 8 pixels: small areas take few bytes.
Options small_screen() { return {.type = 0x0662, .width = 8, .height = 2, .color = ScreenColor::single}; }

TEST(Screen, ShowsTheFirstPageOfAnAreaFirst) {
    Simulator sim(small_screen());
    EXPECT_EQ(letters(sim.screen()), "......../........");
    EXPECT_EQ(send(sim, payload_of({{1, {2, 0, 3, 2}, {hex("DF EF"), hex("C7 C7")}}})), kTaken);
    EXPECT_EQ(letters(sim.screen()), "..R...../...R....");
}

TEST(Screen, LaterAreasLieOverEarlierOnes) {
    Simulator sim(small_screen());
    EXPECT_EQ(send(sim, payload_of({{1, {0, 0, 8, 1}, {hex("00")}}, {2, {2, 0, 2, 1}, {hex("FF")}}})),
              kTaken);
    EXPECT_EQ(letters(sim.screen()), "RR..RRRR/........");
    EXPECT_EQ(send(sim, payload_of({{3, {6, 0, 2, 2}, {hex("FE FC")}}})), kTaken);
    EXPECT_EQ(letters(sim.screen()), "RR..RR.R/......RR");
}

TEST(Screen, AnAreaSentAgainReplacesItself) {
    Simulator sim(small_screen());
    send(sim, payload_of({{1, {0, 0, 8, 2}, {hex("00 00")}}}));
    EXPECT_EQ(send(sim, payload_of({{1, {1, 1, 2, 1}, {hex("9F")}}})), kTaken);
    EXPECT_EQ(letters(sim.screen()), "......../.RR.....");
    EXPECT_EQ(sim.dynamic_areas().size(), 1U);
    EXPECT_EQ(send(sim, payload_of({{1, {1, 1, 2, 1}, {}}})), kTaken); // without pages
    EXPECT_EQ(letters(sim.screen()), "......../........");
}

TEST(Screen, CutsAreasAtItsEdges) {
    Simulator sim(small_screen());
    EXPECT_EQ(send(sim, payload_of({{1, {6, 1, 9, 3}, {ByteBuffer(6, 0x00)}}})), kTaken);
    EXPECT_EQ(letters(sim.screen()), "......../......RR");
    EXPECT_EQ(send(sim, payload_of({{2, {65535, 65535, 1, 1}, {hex("00")}}})), kTaken);
    EXPECT_EQ(letters(sim.screen()), "......../......RR");
}

TEST(Screen, StaysAsItIsWhenAPayloadIsRefused) {
    Simulator sim(small_screen());
    const ByteBuffer good = payload_of({{1, {0, 0, 8, 1}, {hex("00")}}});
    send(sim, good);
    ByteBuffer cut = payload_of({{1, {0, 0, 8, 1}, {hex("FF")}}});
    cut.pop_back();
    EXPECT_EQ(send(sim, cut), refused(ErrorValue::malformed));
    // The first area is good, the second one has too few pixels.
    EXPECT_EQ(send(sim, payload_of({{1, {0, 0, 8, 1}, {hex("FF")}}, {2, {0, 0, 9, 1}, {hex("FF")}}})),
              refused(ErrorValue::bad_pixel_data));
    EXPECT_EQ(send(sim, {}), refused(ErrorValue::malformed));
    EXPECT_EQ(send(sim, hex("01 A7 00 00 00")), refused(ErrorValue::bad_length));
    EXPECT_EQ(send(sim, hex("01 A7 63 00 00")), refused(ErrorValue::unknown_command));
    EXPECT_EQ(letters(sim.screen()), "RRRRRRRR/........");
}

TEST(Screen, IsReportedWhenItChangesAndOnlyThen) {
    Options options = small_screen();
    std::vector<std::string> reported; // written by the simulator's thread before it answers
    options.on_screen = [&](const Image& screen) { reported.push_back(letters(screen)); };
    Simulator sim(options);
    const ByteBuffer payload = payload_of({{1, {0, 0, 8, 1}, {hex("7F")}}});
    for (int i = 0; i < 2; ++i) EXPECT_EQ(send(sim, payload), kTaken);
    EXPECT_EQ(reported, std::vector<std::string>{"R......./........"});
}

TEST(Screen, AreasTakeNoMoreThanTheMemory) {
    Simulator sim({.type = 0x0166, .color = ScreenColor::full}); // 24 MB a page
    const ByteBuffer page(3 * 4000 * 2000, 0x11);
    EXPECT_EQ(send(sim, payload_of({{1, {0, 0, 4000, 2000}, {page}}})), kTaken);
    EXPECT_EQ(send(sim, payload_of({{2, {0, 0, 4000, 2000}, {page}}})), kTaken);
    EXPECT_EQ(send(sim, payload_of({{3, {0, 0, 4000, 2000}, {page}}})), refused(ErrorValue::no_memory));
    EXPECT_EQ(sim.dynamic_areas().size(), 2U);
}

TEST(Screen, TakesAPageOfItsOwnSizeAndNoLongerFrame) {
    std::string log; // written by the simulator's thread before it answers
    Simulator sim({.type = 0x0166,
                   .width = 4096,
                   .height = 2800,
                   .color = ScreenColor::full,
                   .on_request = [&](const std::string& words) { log += words + "\n"; }});
    const ByteBuffer update = payload_of({{1, {0, 0, 4096, 2800}, {ByteBuffer(3 * 4096 * 2800, 0xFF)}}});
    for (int i = 0; i < 2; ++i) EXPECT_EQ(send(sim, update), kTaken) << "also in the place of the same";
    EXPECT_EQ(sim.screen().at(4095, 2799), (Rgb{255, 255, 255}));
    Client client(sim.port());
    client.send(hex("A5"));
    client.send(ByteBuffer(3 * 4096 * 2800 + (std::size_t{32} << 20U) + 1, 0x11));
    client.send(hex("5A"));
    EXPECT_FALSE(client.ask(test::handshake()).empty());
    EXPECT_EQ(sim.bad_frames(), 1U);
    EXPECT_NE(log.find("bad frame, it is too long for a screen of this size: not answered"), log.npos) << log;
}

TEST(Payloads, AreKeptByteForByteWhetherTakenOrRefused) {
    Simulator sim(small_screen());
    const ByteBuffer good = payload_of({{1, {0, 0, 8, 1}, {hex("5A")}}});
    const ByteBuffer bad = hex("01 A7 00 00 00 A5 5A 5B A6");
    send(sim, good);
    send(sim, bad);
    EXPECT_EQ(sim.payloads(), (std::vector<ByteBuffer>{good, bad}));
    for (int i = 0; i < 70; ++i) send(sim, good);
    EXPECT_EQ(sim.payloads().size(), 64U);
    EXPECT_EQ(sim.payloads().back(), good);
}

} // namespace
} // namespace qm::sim
