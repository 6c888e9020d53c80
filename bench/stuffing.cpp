// Byte stuffing of frames and its inverse, beside plain loops that look at one byte after the other.
#include "compare.h"

#include "cmdPacket/LedPacket.h"
#include "program/PicturesArea_g6.h"

#include <benchmark/benchmark.h>

#include <memory>

namespace qm::bench {
namespace {

constexpr std::size_t kBytes = 1U << 16U;

std::size_t stuff_bytewise(Bytes body, Ouint8* out) {
    Ouint8* p = std::fill_n(out, 8, Ouint8{0xA5});
    for (const Ouint8 b : body) {
        if (b == 0x5A || b == 0x5B) {
            *p++ = 0x5B;
            *p++ = b == 0x5A ? 2 : 1;
        } else if (b == 0xA5 || b == 0xA6) {
            *p++ = 0xA6;
            *p++ = b == 0xA5 ? 2 : 1;
        } else {
            *p++ = b;
        }
    }
    *p++ = 0x5A;
    return static_cast<std::size_t>(p - out);
}

// Of a good frame: no end byte is missing and no escape is cut.
std::size_t unstuff_bytewise(Bytes frame, Ouint8* out) {
    const Ouint8* in = frame.data();
    while (*in == 0xA5) ++in;
    Ouint8* p = out;
    while (*in != 0x5A) {
        const Ouint8 b = *in++;
        const bool escape = b == 0x5B || b == 0xA6;
        *p++ = escape && *in++ == 2 ? static_cast<Ouint8>(b - 1) : b;
    }
    return static_cast<std::size_t>(p - out);
}

// The pages of a long text, 128 x 32 pixels in two colours.
ByteBuffer picture_data() {
    screen_settings().set(SCREEN_COLOR_DOUBLE, 0x0262, DOUBLE_COLOR_PIXTYPE_1);
    std::string text;
    while (text.size() < 10000) text += "signs that say what they mean ";
    qm_G5_G6_fontData style;
    style.arrMode = MULTILINE;
    style.fontSize = 9;
    style.color = eYellow;
    PicturesArea_g6 area;
    area.setGeometry({ePicturesArea, 0, 0, 128, 32});
    area.AreaAddTxt(text.c_str(), "DejaVu Sans", style, qm_G6_page_header{});
    area.PreparePageData();
    ByteBuffer data;
    while (data.size() < kBytes)
        for (const Page& page : area.pages)
            data.insert(data.end(), page.pixels.bytes().begin(), page.pixels.bytes().end());
    data.resize(kBytes);
    return data;
}

struct Buffers {
    explicit Buffers(ByteBuffer bytes) : body(std::move(bytes)) {}

    ByteBuffer body;
    ByteBuffer ourRoom;                               // where ours writes
    Bytes frame;                                      // and what it wrote
    ByteBuffer restored;                              // ours, back again
    ByteBuffer room = ByteBuffer(8 + 2 * kBytes + 1); // where the loops write
    LedPacket packet;
};

void compare_stuffing(const std::string& what, double mark, ByteBuffer body) {
    const auto b = std::make_shared<Buffers>(std::move(body));

    const auto stuff = [=] { b->frame = LedPacket::Transfer_Packet(b->body, b->ourRoom); };
    const auto stuff_plain = [=] { return stuff_bytewise(b->body, b->room.data()); };
    stuff();
    require(stuff_plain() == b->frame.size() && std::equal(b->frame.begin(), b->frame.end(), b->room.begin()),
            "stuffing: not as the plain loop's");
    compare_speed("stuff " + what, kBytes, stuff,
                  {{"byte by byte", [=] { benchmark::DoNotOptimize(stuff_plain()); }, mark}});

    const auto unstuff = [=] { b->packet.Restore_Packet(b->frame, b->restored); };
    const auto unstuff_plain = [=] { return unstuff_bytewise(b->frame, b->room.data()); };
    unstuff();
    require(b->restored == b->body, "un-stuffing: not what was stuffed");
    require(unstuff_plain() == kBytes && std::equal(b->body.begin(), b->body.end(), b->room.begin()),
            "un-stuffing by the plain loop: not what was stuffed");
    compare_speed("un-stuff " + what, kBytes, unstuff,
                  {{"byte by byte", [=] { benchmark::DoNotOptimize(unstuff_plain()); }, mark}});
}

} // namespace

void stuffing() {
    compare_stuffing("64 KiB of picture data", 10, picture_data());
    compare_stuffing("64 KiB of random bytes", 0, random_bytes(kBytes));
}

} // namespace qm::bench
