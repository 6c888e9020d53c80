// Every verb of qmctl while an allocation or a system call fails in the middle of it: it ends by itself, with
// a word on standard error when it failed, and leaves no file half written.
#include "qmctl/sign_fixture.h"
#include "support/Descriptor.h"
#include "torture.h"

#include <csignal>
#include <cstring>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>

namespace qm::test {
namespace {

// qmctl that is run again and again, forked where main begins.
class TorturedQmctl {
  public:
    TorturedQmctl(const Words& arguments, const std::string& input) {
        ::ftruncate(m_shared.get(), sizeof(Torture));
        m_torture = static_cast<Torture*>(
            ::mmap(nullptr, sizeof(Torture), PROT_READ | PROT_WRITE, MAP_SHARED, m_shared.get(), 0));
        ::sem_init(&m_torture->go, 1, 0);
        ::sem_init(&m_torture->done, 1, 0);
        (void)::write(m_streams[0].get(), input.data(), input.size());
        start(Words{QMCTL_BINARY} + arguments);
    }
    TorturedQmctl(const TorturedQmctl&) = delete;
    TorturedQmctl& operator=(const TorturedQmctl&) = delete;
    ~TorturedQmctl() {
        ::kill(m_server, SIGKILL);
        ::waitpid(m_server, nullptr, 0);
        ::munmap(m_torture, sizeof(Torture));
    }

    Torture& torture() { return *m_torture; }

    Outcome run(const Strike& strike) {
        ::lseek(m_streams[0].get(), 0, SEEK_SET);
        for (int stream : {1, 2}) {
            ::ftruncate(m_streams[stream].get(), 0);
            ::lseek(m_streams[stream].get(), 0, SEEK_SET);
        }
        m_torture->arm(strike, 0);
        ::sem_post(&m_torture->go);
        timespec limit{};
        ::clock_gettime(CLOCK_REALTIME, &limit);
        limit.tv_sec += 20;
        if (::sem_timedwait(&m_torture->done, &limit) != 0) {
            ::kill(m_torture->child, SIGKILL);
            ::sem_wait(&m_torture->done);
        }
        const int status = m_torture->status;
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status), content(1), content(2)};
    }

  private:
    void start(Words words) {
        std::vector<char*> argv;
        for (std::string& word : words) argv.push_back(word.data());
        argv.push_back(nullptr);
        std::string preload = "LD_PRELOAD=" TORTURE_LIBRARY, shared = "QM_TORTURE=3",
                    again = "QM_TORTURE_AGAIN=1";
        std::vector<char*> environment{preload.data(), shared.data(), again.data()};
        for (char** one = environ; *one; ++one) environment.push_back(*one);
        environment.push_back(nullptr);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        for (int stream : {0, 1, 2})
            posix_spawn_file_actions_adddup2(&actions, m_streams[stream].get(), stream);
        posix_spawn_file_actions_adddup2(&actions, m_shared.get(), 3);
        EXPECT_EQ(::posix_spawn(&m_server, argv[0], &actions, nullptr, argv.data(), environment.data()), 0);
        posix_spawn_file_actions_destroy(&actions);
    }

    std::string content(int stream) const {
        std::string text(static_cast<std::size_t>(::lseek(m_streams[stream].get(), 0, SEEK_END)), '\0');
        (void)::pread(m_streams[stream].get(), text.data(), text.size(), 0);
        return text;
    }

    static Descriptor memory() { return Descriptor(::memfd_create("torture", MFD_CLOEXEC)); }

    Descriptor m_shared = memory(), m_streams[3] = {memory(), memory(), memory()};
    Torture* m_torture = nullptr;
    pid_t m_server = -1;
};

struct Line {
    const char* arguments;
    int status = 0; // when nothing fails
    const char* input = "";
};
// IN stands for a folder with what they read, OUT for one that they write to, BOTH for two controllers.
// clang-format off
const Line kLines[] = {
    {"ping"}, {"doctor"}, {"status"}, {"clock"}, {"clock set"}, {"battle"}, {"id"}, {"power on"},
    {"power timer 07:00-08:00"}, {"power cancel"}, {"brightness 8"}, {"lock screen"}, {"lock program P001"},
    {"unlock screen"}, {"unlock program P001"}, {"password set 000000 s3cret", 2},
    {"password delete s3cret"}, {"button 1"}, {"mode 0"}, {"speed 1"}, {"address 2"}, {"delay 10"},
    {"reset"}, {"firmware activate P001", 2}, {"network show"}, {"config push IN/config.json"},
    {"fs put IN/picture.png P009"}, {"fs ls"}, {"fs df"}, {"fs rm P009", 2}, {"fs format --yes"},
    {"text Hello"}, {"text --area 1 --rect 0,0,64,16 -", 0, "Hello"}, {"picture IN/picture.png"},
    {"picture --fit cover --dither IN/picture.png"}, {"area send IN/areas.json"}, {"area rm all"},
    {"say Hello"}, {"sound update 1=Hello"},
    {"program build --generation 6 --type 0x0262 --screen double -o OUT IN/program.json"},
    {"program preview --generation 6 --type 0x0262 --screen double -o OUT IN/program.json"},
    {"program send IN/program.json"}, {"program ls"}, {"program rm P001", 2}, {"plan IN/sign.json", 3},
    {"apply IN/sign.json"}, {"preview --film 1s --size 32x16 -o OUT IN/sign.json"}, {"completion"},
    {"serve", 0, "{\"verb\": \"ping\"}\n{\"verb\": \"fs ls\"}\n"}, {"override --for 1s Hello"},
    {"-c BOTH ping"}, {"-c BOTH --json --report OUT/report fs ls"},
};
// clang-format on

class TorturedVerbs : public testing::TestWithParam<std::size_t> {
  protected:
    TorturedVerbs() {
        std::string pattern = testing::TempDir() + "qm_torture_XXXXXX";
        m_out = ::mkdtemp(pattern.data());
        m_in.program("program.json", 1, 2);
        m_in.write("areas.json",
                   R"({"id": 1, "areas": [{"id": 1, "rect": [0, 0, 64, 16], "text": "Hello"}]})");
        m_in.write("sign.json", R"({"playlist": ["program.json"], "brightness": 8})");
        m_in.write("config.json", R"({"ControllerName": "x", "ScreenAddress": "y", "modeofdisp": 0,
            "TipLanguage": 0, "FaultProcessMode": 0, "CommTimeoutValue": 0, "RunningMode": 0, "LoggingMode": 0,
            "DevideScreenMode": 0, "Default_brightness": 8})");
    }
    ~TorturedVerbs() override { std::filesystem::remove_all(m_out); }

    Words words(const Line& line) const {
        Words words(line.arguments);
        const std::string both = address(m_one.port()) + "," + address(m_other.port());
        for (std::string& word : words)
            for (const auto& [name, meaning] : {std::pair<std::string, std::string>{"IN/", m_in.path() + "/"},
                                                {"OUT", m_out},
                                                {"BOTH", both}})
                if (const auto at = word.find(name); at != word.npos) word.replace(at, name.size(), meaning);
        return words.front() == "-c" ? words : Words{"-c", address(m_one.port())} + words;
    }

    // What lies in the folder for results; it is emptied.
    std::map<std::string, std::string> results() const {
        std::map<std::string, std::string> files;
        for (const auto& entry : std::filesystem::directory_iterator(m_out)) {
            std::ifstream file(entry.path(), std::ios::binary);
            files[entry.path().filename()].assign(std::istreambuf_iterator<char>(file), {});
            std::filesystem::remove_all(entry.path());
        }
        return files;
    }

    void torment(const Line& line) {
        TorturedQmctl qmctl(words(line), line.input);
        (void)qmctl.run({});
        m_reference = qmctl.run({Failing::allocations, kNone});
        m_files = results();
        EXPECT_EQ(m_reference.status, line.status) << line.arguments << ": " << m_reference.err;
        m_complaints.clear();
        const long all = qmctl.torture().seen;
        for (const bool lasting : {false, true})
            for (long at = 1; at <= all; at += step(all - at, all))
                check(qmctl, {Failing::allocations, at, lasting});
        // Each in one of its ways, or in all of them.
        for (long at = 1; check(qmctl, {Failing::calls, at, false, static_cast<int>(at)}); ++at)
            for (int way = 0; kAll && way < qmctl.torture().ways; ++way)
                (void)check(qmctl, {Failing::calls, at, false, way});
        for (const auto& [complaint, where] : m_complaints)
            ADD_FAILURE() << line.arguments << ": " << complaint << ", first with " << where;
    }

  private:
    static constexpr long kNone = 1L << 60;
    static inline const bool kAll = std::getenv("QM_TORTURE_ALL") != nullptr;

    // All of the last, which are the verb's own, but few of those that read the command line, and that all
    // verbs share; or all of them where QM_TORTURE_ALL is set.
    static long step(long left, long all) {
        constexpr long kOwn = 16, kOfOthers = 6;
        return left <= kOwn || std::getenv("QM_TORTURE_ALL")
                   ? 1
                   : std::max(1L, std::min(all / kOfOthers, left - kOwn));
    }

    // A program is built without a picture that cannot be opened any more.
    static bool bears_missing_picture(const Torture& t, const std::string& name) {
        return (name == "P001" || name == "D001") && std::strcmp(t.name, "fopen") == 0;
    }

    // Whether there was something that could fail.
    bool check(TorturedQmctl& qmctl, const Strike& strike) {
        const Outcome outcome = qmctl.run(strike);
        const Torture& t = qmctl.torture();
        const bool struck = t.seen >= strike.at, memory = strike.what == Failing::allocations;
        std::ostringstream where;
        where << (memory ? "allocation " : "system call ") << strike.at
              << (strike.lasting ? " and all that follow" : "");
        if (!memory && struck) where << ", " << t.name << ": " << std::strerror(t.error);
        const auto expect = [&](bool good, const std::string& complaint) {
            if (!good) m_complaints.try_emplace(complaint, where.str());
        };
        const bool failed = outcome.status != m_reference.status;
        const std::string said = outcome.err + outcome.out;
        expect(outcome.status >= 0, "ends by signal " + std::to_string(-outcome.status) + ": " + outcome.err);
        expect(!failed || struck, "fails by itself: " + said);
        expect(!failed || outcome.status == 1 || outcome.status == 2,
               "ends with " + std::to_string(outcome.status));
        expect(!failed || !said.empty(), "says nothing");
        for (const auto& [name, content] : results()) {
            const auto known = m_files.find(name);
            expect(known != m_files.end(), "leaves " + name);
            expect(known == m_files.end() || known->second == content || name == "report" ||
                       bears_missing_picture(t, name),
                   "leaves half of " + name);
        }
        return struck;
    }

    Folder m_in;
    std::string m_out;
    sim::Simulator m_one, m_other;
    Outcome m_reference;
    std::map<std::string, std::string> m_files, m_complaints;
};

// So that they take all processors.
constexpr std::size_t kParts = 4;

TEST_P(TorturedVerbs, EndByThemselvesAndSayWhy) {
    for (std::size_t i = GetParam(); i < std::size(kLines); i += kParts) torment(kLines[i]);
}

INSTANTIATE_TEST_SUITE_P(Part, TorturedVerbs, testing::Range(std::size_t{0}, kParts));

} // namespace
} // namespace qm::test
