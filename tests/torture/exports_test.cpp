// Every exported function while an allocation or a system call fails in the middle of it: it ends with -1 and
// the reason, or does without; nothing is leaked, nothing is half changed, and the next call works.
#include "calls.h"
#include "open_descriptors.h"
#include "outcome.h"
#include "program_file/fixture.h"
#include "simulator/Simulator.h"
#include "torture.h"

#include <cstring>
#include <gtest/gtest.h>
#include <map>
#include <poll.h>
#include <set>
#include <unistd.h>

namespace qm::test {
namespace {

TEST(Torture, KnowsEveryExportedFunction) {
    std::set<std::string> known, declared;
    for (const Call& call : all_calls()) known.insert(call.name);
    std::istringstream lines(public_header());
    for (std::string line; std::getline(lines, line);)
        if (line.starts_with("QM_API ")) {
            line.resize(line.find('('));
            declared.insert(line.substr(line.find_last_of(" *") + 1));
        }
    EXPECT_EQ(known, declared);
}

// What a call gave, and what it did.
struct Result {
    Outcome outcome;
    unsigned sent = 0; // checksum of it
    ByteBuffer files;  // of the program
};

// Words of the library's own for an error, and the system's for all others; 0: less came than was asked for.
const char* words_for(int error) {
    switch (error) {
    case 0:
        return "was cut";
    case ECONNREFUSED:
        return "was refused";
    case ECONNRESET:
        return "was reset";
    case EPIPE:
        return "was closed";
    default:
        return std::strerror(error);
    }
}

class TorturedExports : public Program, public testing::WithParamInterface<Stage> {
  protected:
    TorturedExports() {
        write_pictures();
        qm_set_message_handler([](const char*, void*) {}, nullptr);
    }
    ~TorturedExports() override { qm_set_message_handler(nullptr, nullptr); }

    void torment(const Call& call) {
        prepare(call);
        m_before = files();
        (void)undisturbed(call); // so that caches are full
        prepare(call);
        m_reference = undisturbed(call);
        program_deleteProgram();
        m_complaints.clear();
        for (const bool lasting : {false, true})
            for (long at = 1; fails(call, {Failing::allocations, at, lasting}); ++at) continue;
        for (long at = 1; fails(call, {Failing::calls, at}); ++at)
            for (int way = 1; way < torture()->ways; ++way)
                (void)fails(call, {Failing::calls, at, false, way});
        for (const auto& [complaint, strike] : m_complaints)
            ADD_FAILURE() << call.name << " " << complaint << ", first with "
                          << (strike.what == Failing::calls ? "system call " : "allocation ") << strike.at
                          << (strike.lasting ? " and all that follow" : "");
    }

  private:
    static bool of_program() { return GetParam() == Stage::program_six || GetParam() == Stage::program_five; }

    static ByteBuffer files() {
        if (!of_program()) return {};
        File file = GetParam() == Stage::program_six ? integrate_g6() : integrate_g5();
        file.bytes.insert(file.bytes.end(), file.data.begin(), file.data.end());
        return file.bytes;
    }

    static void prepare(const Call& call) {
        if (of_program()) make_program(GetParam());
        // Answers to a call that did not wait for them would be taken for those to the next one.
        if (GetParam() == Stage::broadcast) (void)::poll(nullptr, 0, 1000);
        if (call.before) {
            EXPECT_EQ(call.before(), 0);
        }
    }

    Outcome run(const Call& call, const Strike& strike) {
        torture()->arm(strike, ::gettid());
        const int code = call.run(m_sim.port());
        torture()->what = Failing::nothing;
        return code;
    }

    Result undisturbed(const Call& call) {
        const Outcome outcome = run(call, {});
        return {outcome, torture()->sent, files()};
    }

    // Whether there was something that could fail. What is left behind must not grow by the same again and
    // again.
    bool fails(const Call& call, const Strike& strike) {
        const std::size_t complaints = m_complaints.size();
        m_strike = strike;
        long left = 0;
        for (int time = 0; time < 4 && (time == 0 || left > 0) && m_complaints.size() == complaints; ++time) {
            const long level = torture_live();
            check(call);
            left = torture_live() - level;
        }
        expect(left <= 0 || m_complaints.size() != complaints, "leaks memory");
        return m_struck;
    }

    void expect(bool good, const std::string& complaint) {
        if (!good) m_complaints.try_emplace(complaint, m_strike);
    }

    void check(const Call& call) {
        prepare(call);
        expect(m_sim.wait_idle(), "leaves the controller waiting");
        const std::size_t descriptors = open_descriptors();
        const Outcome outcome = run(call, m_strike);
        m_struck = torture()->seen >= m_strike.at;
        m_error = torture()->error;
        expect(settles_at(descriptors), "leaves descriptors open");
        if (outcome.status != m_reference.outcome.status || outcome.reason != m_reference.outcome.reason)
            check_failed(call, outcome);
        else
            expect(files() == m_reference.files || bears_missing_picture(call), "succeeds, but otherwise");
        program_deleteProgram();
    }

    void check_failed(const Call& call, const Outcome& outcome) {
        const std::string given = std::to_string(outcome.status) + ": " + outcome.reason;
        expect(m_struck, "fails by itself, " + given);
        // 2: an answer to the probe before, which was not waited for, in the place of the settings asked for.
        const bool late = GetParam() == Stage::broadcast && outcome.status == 2;
        expect(outcome.status == QM_FAILED || late, "returns " + given);
        expect(tells(outcome.reason), "does not say why, but \"" + outcome.reason + "\"");
        expect(files() == m_before || bears_missing_picture(call), "is half done");
        if (GetParam() == Stage::broadcast) prepare(call);
        const Result next = undisturbed(call);
        expect(next.outcome.status == m_reference.outcome.status, "fails again: " + next.outcome.reason);
        expect(next.sent == m_reference.sent, "sends something else next time");
        expect(next.files == m_reference.files, "does something else next time");
    }

    [[nodiscard]] bool tells(const std::string& reason) const {
        if (m_strike.what == Failing::allocations) return reason == "Out of memory.";
        return reason.find(words_for(m_error)) != reason.npos;
    }

    // A border's picture that cannot be opened is no failure of the calls of generation 5, and changes the
    // header in generation 6.
    [[nodiscard]] bool bears_missing_picture(const Call& call) const {
        return m_strike.what == Failing::calls && std::strcmp(torture()->name, "fopen") == 0 &&
               std::strstr(call.name, "Frame");
    }

    // The controller in this process has descriptors, too, and may notice an end only after a while.
    [[nodiscard]] bool settles_at(std::size_t descriptors) const {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
        while (!m_sim.wait_idle() || open_descriptors() != descriptors)
            if (std::chrono::steady_clock::now() > deadline) return false;
        return true;
    }

    sim::Simulator m_sim{{.type = GetParam() == Stage::five ? kMode0 : kMode4}};
    ByteBuffer m_before;
    Result m_reference{QM_OK, 0, {}};
    std::map<std::string, Strike> m_complaints;
    Strike m_strike;
    int m_error = 0;
    bool m_struck = false;
};

TEST_P(TorturedExports, BearWhateverFails) {
    if (GetParam() == Stage::broadcast && !std::getenv("QM_TORTURE_HURRY"))
        GTEST_SKIP() << "not in broadcast.sh";
    for (const Call& call : all_calls())
        if (call.stage == GetParam()) torment(call);
}

constexpr const char* kNames[] = {"Controllers6", "Controllers5", "Programs6", "Programs5", "Broadcasts"};

// Broadcasts are for broadcast.sh alone, which makes a network for them.
INSTANTIATE_TEST_SUITE_P(Of, TorturedExports,
                         testing::Values(Stage::six, Stage::five, Stage::program_six, Stage::program_five,
                                         Stage::broadcast),
                         [](const auto& test) { return kNames[static_cast<int>(test.param)]; });

} // namespace
} // namespace qm::test
