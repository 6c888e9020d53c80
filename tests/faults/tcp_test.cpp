// Every call over TCP, with every fault of the simulator at each of its answers, and with each answer cut
// after every byte.
#include "Matrix.h"
#include "Replay.h"
#include "open_descriptors.h"
#include "simulator/Simulator.h"

#include <gtest/gtest.h>

namespace qm::test {
namespace {

using sim::FaultKind;

const char kSilent[] = "The controller is connected, but was silent for N s.";
const char kNoEnd[] = "The answer was cut at N bytes: its end is missing.";

// Which fail with a controller that answers as it should.
const std::set<std::string_view> kNotDelivered = {"cmd_getStopwatch", "cmd_getSensorBrightnessValue",
                                                  "cmd_ofsReedFileBlock", "cmd_confReedFileBlock"};

// In the order of FaultKind, then in that of After.
const std::vector<Row> kRows = {
    {"none comes", {-1}, {kSilent}},
    {"the connection is closed instead", {-1}, {"The connection was closed after N bytes of the answer."}},
    {"the connection is reset instead", {-1}, {"The connection was reset after N bytes of the answer."}},
    {"it comes in two pieces", {-1}, {kNoEnd}},
    {"its CRC is wrong", {-3}, {"The CRC of the answer is wrong."}},
    {"its header checksum is wrong", {-2}, {"The header checksum of the answer is wrong."}},
    {"it is to another command", {-5}, {"The answer is to another command: group N, code N."}},
    {"the controller refuses", {199}, {"The controller refused with error N."}},
    {"bytes come that are no frame", {-1}, {"The answer is not a frame: its N bytes begin with N."}},
    {"it is 4 KB longer than it should be",
     {1, -1},
     {"The answer has N bytes, and there is room for N.", "The answer is longer than N bytes.",
      "The controller answered with N bytes where the call takes an acknowledgement only."}},
    {"its length claims more than it holds",
     {-3, -5}, // deletions and speech take an acknowledgement, or an answer with the code of an update
     {"The answer was cut at N bytes: its lengths announce more.",
      "The answer is to another command: group N, code N."}},
    {"it comes late, but in time", {}, {}},
    {"it is cut after any byte, and the connection closed",
     {-1},
     {kNoEnd, "The connection was closed after N bytes of the answer."}},
    {"it is cut after any byte, and the connection reset",
     {-1},
     {kNoEnd, "The connection was reset after N bytes of the answer."}},
    {"it is cut after any byte, and nothing follows", {-1}, {kNoEnd, kSilent}},
};
constexpr std::size_t kFirstCut = 12;

// Under a sanitizer, which slows everything down, not every byte.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr std::size_t kStride = 11;
#else
constexpr std::size_t kStride = 1;
#endif

const std::map<std::string, std::string> kTitles = {
    {"cmd_tcpPing", "Commands and questions"},
    {"dynamicArea_AddAreaTxt_6G", "Areas"},
    {"dynamicArea_AddAreaTxt_6G, type assumed", "Areas without a ping"},
    {"dynamicArea_DelArea_6G", "Deletion of areas"},
    {"dynamicArea_InsertSoundIndepend", "Speech"},
    {"cmd_getStopwatch", "Values that are not delivered"},
};

sim::Options controller_for(const TalkingCall& call) {
    const bool five = call.talks == Talks::to_generation_5;
    return {.type = static_cast<std::uint16_t>(five ? 0x0051 : 0x0262)};
}

// Gives it what earlier calls have taken away.
void prepare(const sim::Simulator& sim) {
    const auto files = sim.files();
    if (std::ranges::count(files, "P001", &sim::StoredFile::name) == 2) return;
    EXPECT_EQ(prepare_for_calls(sim.port()), 0);
}

Met with_fault(const TalkingCall& call, sim::Fault fault) {
    thread_local std::map<Talks, sim::Simulator> own;
    sim::Simulator& sim = own.try_emplace(call.talks, controller_for(call)).first->second;
    prepare(sim);
    sim.set_fault(fault);
    return meet(call, sim.port(), [&] {
        sim.set_fault(std::nullopt);
        prepare(sim);
    });
}

Met with_cut(const TalkingCall& call, const std::vector<ByteBuffer>& answers, Cut cut) {
    thread_local Replay replay;
    replay.begin(answers, cut);
    Met met = meet(call, replay.port(), [&] { replay.begin(answers, {}); });
    EXPECT_TRUE(cut.bytes == 0 ||
                met.reason.find(" " + std::to_string(cut.bytes) + " bytes") != met.reason.npos)
        << met.reason;
    return met;
}

void add_faults(std::vector<Case>& cases, const TalkingCall& call, int good, std::size_t answers) {
    for (std::size_t kind = 0; kind < kFirstCut; ++kind)
        for (unsigned step = 0; step < answers; ++step) {
            const sim::Fault fault{
                .kind = static_cast<FaultKind>(kind), .after = step, .delay = std::chrono::milliseconds(20)};
            cases.push_back({&call, kind, "from answer " + std::to_string(step) + " on", good,
                             [&call, fault] { return with_fault(call, fault); }});
        }
}

void add_cuts(std::vector<Case>& cases, const TalkingCall& call, int good,
              const std::vector<ByteBuffer>& answers) {
    for (const After after : {After::close, After::reset, After::silence})
        for (std::size_t answer = 0; answer < answers.size(); ++answer)
            for (std::size_t bytes = 0; bytes < answers[answer].size(); bytes += kStride)
                cases.push_back({&call, kFirstCut + static_cast<std::size_t>(after),
                                 std::to_string(bytes) + " bytes of answer " + std::to_string(answer), good,
                                 [&call, &answers, cut = Cut{answer, bytes, after}] {
                                     return with_cut(call, answers, cut);
                                 }});
}

TEST(FaultsOverTcp, EndEveryCallAsThePageSaysAndSpareTheNextOne) {
    qm_set_message_handler([](const char*, void*) {}, nullptr);
    std::vector<Case> cases;
    std::map<const TalkingCall*, std::vector<ByteBuffer>> answers;
    for (const TalkingCall& call : talking_calls()) {
        if (call.talks != Talks::to_generation_5 && call.talks != Talks::to_generation_6) continue;
        const sim::Simulator sim(controller_for(call));
        prepare(sim);
        answers[&call] = answers_to(call, sim.port());
        prepare(sim);
        const int good = call.run(sim.port());
        EXPECT_EQ(good, kNotDelivered.contains(call.name) ? QM_FAILED : QM_OK) << call.name;
        add_faults(cases, call, good, answers[&call].size());
        add_cuts(cases, call, good, answers[&call]);
    }
    std::ranges::stable_sort(cases, {}, [](const Case& c) { return c.row != 0; });
    Matrix matrix(kRows);
    const std::size_t before = open_descriptors();
    matrix.run(cases);
    EXPECT_EQ(open_descriptors(), before);
    expect_on_page("faults over TCP", matrix.markdown(kTitles));
}

} // namespace
} // namespace qm::test
