// qm_simulator as it is started from a shell.
#include "client.h"
#include "host.h"
#include "samples.h"

#include "hex.h"

#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <poll.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace qm::sim {
namespace {

using qm::test::hex;
using testing::HasSubstr;

// Both ends of a pipe, or of a terminal.
std::pair<Descriptor, Descriptor> output_ends(bool terminal) {
    if (terminal) {
        Descriptor master(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC));
        ::unlockpt(master.get());
        return {std::move(master),
                Descriptor(::open(::ptsname(master.get()), O_RDWR | O_NOCTTY | O_CLOEXEC))};
    }
    int ends[2];
    if (::pipe(ends) != 0) throw std::runtime_error("pipe");
    return {Descriptor(ends[0]), Descriptor(ends[1])};
}

// A child with its standard output and error in one pipe or terminal. It is killed when it outlives the test.
class Program {
  public:
    explicit Program(std::vector<std::string> arguments, bool terminal = false) {
        auto [output, input] = output_ends(terminal);
        m_output = std::move(output);
        arguments.insert(arguments.begin(), QM_SIMULATOR_BINARY);
        std::vector<char*> argv;
        for (std::string& argument : arguments) argv.push_back(argument.data());
        argv.push_back(nullptr);
        m_pid = ::fork();
        if (m_pid != 0) return;
        ::dup2(input.get(), STDOUT_FILENO);
        ::dup2(input.get(), STDERR_FILENO);
        ::execv(argv[0], argv.data());
        ::_exit(127);
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    ~Program() {
        if (m_pid <= 0) return;
        ::kill(m_pid, SIGKILL);
        ::waitpid(m_pid, nullptr, 0);
    }

    // The next line, or what came before the end.
    std::string line() {
        std::string text;
        char c = 0;
        const auto deadline = Clock::now() + std::chrono::seconds(20);
        while (wait_ready(m_output.get(), POLLIN, deadline) > 0 && ::read(m_output.get(), &c, 1) == 1 &&
               c != '\n')
            text += c;
        return text;
    }
    std::uint16_t port() {
        const std::string ready = line();
        EXPECT_THAT(ready, HasSubstr("qm_simulator ready: 127.0.0.1:"));
        return static_cast<std::uint16_t>(std::atoi(ready.c_str() + ready.find_last_of(':') + 1));
    }
    void signal(int number) const { ::kill(m_pid, number); }
    // Exit status; its output ends first, within the bounds of line().
    int status() {
        while (!line().empty()) {
        }
        return status_unread();
    }
    // The same, without a look at its output.
    int status_unread() {
        const Descriptor process(static_cast<int>(::syscall(SYS_pidfd_open, m_pid, 0)));
        if (wait_ready(process.get(), POLLIN, Clock::now() + std::chrono::seconds(20)) <= 0) return -1;
        int status = 0;
        ::waitpid(m_pid, &status, 0);
        m_pid = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

  private:
    Descriptor m_output;
    pid_t m_pid = -1;
};

TEST(Program, MisuseIsExplained) {
    struct Row {
        std::vector<std::string> arguments;
        const char* words;
    };
    const Row rows[] = {
        {{"--fault", "crash"}, "silence, close, reset, split, bad-crc"},
        {{"--size", "128"}, "--size: expected WIDTHxHEIGHT"},
        {{"--size", "0x32"}, "--size: expected WIDTHxHEIGHT"},
        {{"--size", "128x5000"}, "--size: expected WIDTHxHEIGHT"},
        {{"--type", "0x10000"}, "--type: expected a controller type"},
        {{"--color", "blue"}, "--color: expected one of single, double"},
        {{"--port", "65536"}, "--port: expected a whole number from 0 to 65535"},
        {{"--listen", "localhost"}, "--listen: expected an IPv4 address"},
        {{"--udp-port", "65536"}, "--udp-port: expected a whole number from 0 to 65535"},
        {{"--count", "3", "--port", "65534"}, "--count: expected ports up to 65535"},
        {{"--controllers", "/dev/null"}, "--controllers: /dev/null: parse error at line 1, column 1"},
        {{"--controllers", "/"}, "--controllers: /: it is a folder"},
        {{"--controllers", "/dev/null/list"}, "--controllers: /dev/null/list: Not a directory"},
        {{"--web", "foo"}, "--web: expected [ADDRESS:]PORT"},
        {{"--count", "2", "--udp"}, "expected one controller"},
        {{"--clock", "2026-02-30 12:00:00"}, "--clock: expected a time of the years 2000 to 2099"},
        {{"--clock", "2026-12-31T12:00:00"}, "--clock: expected a time of the years 2000 to 2099"},
        {{"--scale", "0"}, "--scale: expected a whole number from 1"},
        {{"surplus"}, "surplus"},
    };
    for (const Row& row : rows) {
        Program program(row.arguments);
        EXPECT_THAT(program.line(), HasSubstr(row.words));
        EXPECT_EQ(program.status(), 1) << row.words;
    }
}

TEST(Program, PortInUseIsExplained) {
    Program first({"--port", "0"});
    const std::string port = std::to_string(first.port());
    Program second({"--port", port});
    EXPECT_THAT(second.line(), HasSubstr("127.0.0.1:" + port + " is in use"));
    EXPECT_EQ(second.status(), 2);
    Program page({"--port", "0", "--web", port});
    EXPECT_THAT(page.line(), HasSubstr("choose another port with --web"));
    EXPECT_EQ(page.status(), 2);
}

TEST(Program, WhatCannotBeWrittenIsExplainedAtTheStart) {
    for (const char* option : {"--store", "--json", "--screenshot", "--record", "--frames"}) {
        Program program({"--port", "0", option, "/dev/null/there"});
        EXPECT_THAT(program.line(), AllOf(HasSubstr("/dev/null/there"), HasSubstr("Not a directory")));
        EXPECT_EQ(program.status(), 2) << option;
    }
}

TEST(Program, ListsThatCannotBeAreExplained) {
    const auto file = std::filesystem::path(testing::TempDir()) / "qm_simulator_bad_list_test.json";
    const std::pair<const char*, const char*> rows[] = {
        {R"([{"port": 5007}, {}, {"port": 5007}])", "[0] and [2] both have port 5007"},
        {R"([{}, {"port": 5008}, {}])", "[2]: expected ports up to 65535"},
        {R"([{}, {"size": "8"}])", "[1].size: expected WIDTHxHEIGHT"},
        {"[{},\n {]", "parse error at line 2, column 3"},
    };
    for (const auto& [list, words] : rows) {
        std::ofstream(file) << list;
        Program program({"--port", "65534", "--controllers", file});
        EXPECT_THAT(program.line(), HasSubstr(words));
        EXPECT_EQ(program.status(), 1);
    }
    std::filesystem::remove(file);
}

TEST(Program, EndsCleanlyOnSignals) {
    for (const int number : {SIGINT, SIGTERM}) {
        Program program({"--port", "0"});
        EXPECT_NE(program.port(), 0);
        program.signal(number);
        EXPECT_EQ(program.status(), 0);
    }
}

TEST(Program, AnswersAndEndsThoughNobodyReadsItsTerminal) {
    for (const int number : {SIGINT, SIGTERM}) {
        Program program({"--port", "0", "--show", "--size", "128x64", "--color", "1"}, true);
        test::Client client(program.port());
        for (int i = 0; i < 40; ++i) {
            const ByteBuffer stripes(128 * 64 / 8, i % 2 ? 0x55 : 0xAA);
            const ByteBuffer update = test::payload_of({{1, {0, 0, 128, 64}, {stripes}}});
            ASSERT_FALSE(client.ask(test::envelope_around(update)).empty()) << i;
        }
        program.signal(number);
        EXPECT_EQ(program.status_unread(), 0);
    }
}

TEST(Program, OnceShowsTheUpdateAndEnds) {
    const auto folder = std::filesystem::path(testing::TempDir()) / "qm_simulator_once_test";
    std::filesystem::remove_all(folder);
    Program program({"--port", "0", "--once", "--frames", folder / "frames", "--screenshot",
                     folder / "frames/panel.png", "--size", "8x1", "--color", "1", "--scale", "4"});
    const std::uint16_t port = program.port();
    EXPECT_TRUE(std::filesystem::exists(folder / "frames/panel.png")) << "before the first change";
    EXPECT_FALSE(test::Client(port).ask(test::handshake()).empty()); // updates nothing
    EXPECT_FALSE(test::Client(port)
                     .ask(test::envelope_around(test::payload_of({{1, {0, 0, 8, 1}, {hex("FF*3 7F")}}})))
                     .empty());
    EXPECT_EQ(program.status(), 0);
    EXPECT_TRUE(std::filesystem::exists(folder / "frames/frame-0001.png"));
    EXPECT_FALSE(std::filesystem::exists(folder / "frames/frame-0002.png"));
    EXPECT_TRUE(std::filesystem::exists(folder / "frames/panel.png"));
    std::filesystem::remove_all(folder);
}

TEST(Program, ControllersOfAListLiveSideBySide) {
    const auto folder = std::filesystem::path(testing::TempDir()) / "qm_simulator_list_test";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "list.json") << R"([{"name": "Gate 1", "size": "8x1"}, {"type": 1122}])";
    Program program({"--port", "0", "--controllers", folder / "list.json", "--json", folder / "states",
                     "--frames", folder / "frames"});
    const std::string first = program.line();
    EXPECT_THAT(first, testing::EndsWith(", type 0x0262, 8x1, double colour, Gate 1"));
    const std::string second = program.line();
    EXPECT_THAT(second, testing::EndsWith(", type 0x0462, 128x32, double colour, controller-2"));
    const auto port = static_cast<std::uint16_t>(std::atoi(second.c_str() + second.find(".1:") + 3));
    EXPECT_FALSE(test::Client(port).ask(test::command_frame(0xA2, 5, hex("00"))).empty());
    const auto power_in = [&](const char* name) {
        std::ifstream in(folder / "states" / name);
        const std::string text(std::istreambuf_iterator<char>(in), {});
        return text.substr(text.find("\"power\":"), 14);
    };
    EXPECT_EQ(power_in("Gate 1.json"), "\"power\": true,");
    EXPECT_EQ(power_in("controller-2.json"), "\"power\": false");
    EXPECT_TRUE(std::filesystem::is_directory(folder / "frames" / "Gate 1"));
    std::filesystem::remove_all(folder);
}

TEST(Program, ClockBeginsWhereItIsToldAndHasItsRate) {
    Program program({"--port", "0", "--clock", "2026-12-31 23:59:59", "--rate", "86400"});
    test::Client client(program.port());
    const auto year = [&] { // BCD, low byte first
        const ByteBuffer time = test::answer_in(client.ask(test::command_frame(0xA2, 23, hex("00")))).payload;
        return time.size() < 2 ? 0 : time[1] * 256 + time[0];
    };
    const auto deadline = Clock::now() + std::chrono::seconds(20);
    while (year() == 0x2026 && Clock::now() < deadline) {
    }
    EXPECT_EQ(year(), 0x2027);
}

TEST(Program, StateFileFollowsEachChange) {
    const auto file = std::filesystem::path(testing::TempDir()) / "qm_simulator_state_test.json";
    Program program({"--port", "0", "--state", file});
    test::Client client(program.port());
    const auto state = [&] {
        std::ifstream in(file);
        return std::string(std::istreambuf_iterator<char>(in), {});
    };
    EXPECT_THAT(state(), HasSubstr("\"power\": true"));
    EXPECT_FALSE(client.ask(test::command_frame(0xA2, 5, hex("00"))).empty());
    EXPECT_THAT(state(), HasSubstr("\"power\": false"));
    EXPECT_FALSE(client.ask(test::command_frame(0xA2, 27, hex("07 00"))).empty());
    EXPECT_THAT(state(), HasSubstr("\"address\": 7"));
    std::filesystem::remove(file);
}

TEST(Program, LogsRequestsInWordsAndPrintsTheScreen) {
    Program program({"--port", "0", "--verbose", "--show", "--size", "8x1", "--color", "1"});
    test::Client client(program.port());
    EXPECT_FALSE(client.ask(test::handshake()).empty());
    EXPECT_EQ(program.line(), "handshake: 52 bytes");
    EXPECT_FALSE(
        client.ask(test::envelope_around(test::payload_of({{1, {0, 0, 8, 1}, {hex("FF*3 7F")}}}))).empty());
    EXPECT_EQ(program.line(), "dynamic areas, area 1 at 0,0 size 8x1 with 1 page: acknowledged");
    EXPECT_THAT(program.line(), HasSubstr("\x1b[38;2;255;0;0m\x1b[48;2;0;0;0m▀"));
}

} // namespace
} // namespace qm::sim
