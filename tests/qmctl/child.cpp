#include "child.h"

#include "seeds.h"
#include "support/Descriptor.h"

#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <poll.h>
#include <spawn.h>
#include <sstream>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace qm::test {
namespace {

// A file in memory: unlike a pipe it is never full, so that nobody has to read while the child runs.
Descriptor memory_file(const std::string& content = "") {
    Descriptor file(::memfd_create("stream", MFD_CLOEXEC));
    EXPECT_EQ(::pwrite(file.get(), content.data(), content.size(), 0), static_cast<ssize_t>(content.size()));
    return file;
}

std::string content_of(const Descriptor& file) {
    std::string text(static_cast<std::size_t>(::lseek(file.get(), 0, SEEK_END)), '\0');
    EXPECT_EQ(::pread(file.get(), text.data(), text.size(), 0), static_cast<ssize_t>(text.size()));
    return text;
}

// The files that it reads, for fuzz/description.cpp and fuzz/picture.cpp, whatever they are.
void keep_seeds(const Words& arguments) {
    const char* const list = std::getenv("QMCTL_CONTROLLERS");
    for (const std::string& path : arguments + Words(list ? list : "")) {
        std::error_code ignored; // most are no paths
        if (!std::filesystem::is_regular_file(path, ignored)) continue;
        std::ifstream file(path, std::ios::binary);
        ByteBuffer input{0};
        input.insert(input.end(), std::istreambuf_iterator<char>(file), {});
        for (; input[0] < 4; ++input[0])
            for (const char* target : {"description", "picture"}) keep_seed(target, input);
    }
}

pid_t spawn(std::vector<std::string> words, int in, int out, int err) {
    std::vector<char*> argv;
    for (std::string& word : words) argv.push_back(word.data());
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, in, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, out, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, err, STDERR_FILENO);
    pid_t pid = -1;
    EXPECT_EQ(::posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), environ), 0) << words[0];
    posix_spawn_file_actions_destroy(&actions);
    return pid;
}

int wait_for_end(pid_t pid) {
    const Descriptor end(static_cast<int>(::syscall(SYS_pidfd_open, pid, 0)));
    if (wait_ready(end.get(), POLLIN, Clock::now() + std::chrono::seconds(60)) <= 0) {
        ADD_FAILURE() << "qmctl does not end";
        ::kill(pid, SIGKILL);
    }
    int status = 0;
    ::waitpid(pid, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace

Words::Words(const char* line) {
    std::istringstream words(line);
    assign(std::istream_iterator<std::string>(words), {});
}

Words operator+(Words front, const Words& back) {
    front.insert(front.end(), back.begin(), back.end());
    return front;
}

struct RunningQmctl::Streams {
    Descriptor in, out, err;
};

RunningQmctl::RunningQmctl(const Words& arguments, const std::string& input, const char* output)
    : m_streams(std::make_unique<Streams>(Streams{memory_file(input), memory_file(), memory_file()})) {
    keep_seeds(arguments);
    const Descriptor device(output ? ::open(output, O_WRONLY | O_CLOEXEC) : -1);
    m_pid = spawn(Words{QMCTL_BINARY} + arguments, m_streams->in.get(),
                  device ? device.get() : m_streams->out.get(), m_streams->err.get());
}

RunningQmctl::~RunningQmctl() {
    if (m_pid < 0) return;
    send(SIGKILL);
    (void)end();
}

void RunningQmctl::send(int signal) const {
    const int pid = m_pid;
    if (pid > 0) ::kill(pid, signal); // -1 would be everybody
}

Outcome RunningQmctl::end() {
    const int status = m_pid < 0 ? -1 : wait_for_end(m_pid);
    m_pid = -1;
    return {status, content_of(m_streams->out), content_of(m_streams->err)};
}

Outcome qmctl(const Words& arguments, const std::string& input, const char* output) {
    return RunningQmctl(arguments, input, output).end();
}

nlohmann::json qmctl_json(unsigned port, const Words& arguments) {
    const std::string out = qmctl(Words{"--json", "-c", address(port)} + arguments).out;
    EXPECT_EQ(out.find('\n'), out.size() - 1) << out;
    const auto value = nlohmann::json::parse(out, nullptr, false);
    EXPECT_TRUE(value.is_object()) << out;
    return value.is_object() ? value : nlohmann::json::object();
}

std::string address(unsigned port) { return "127.0.0.1:" + std::to_string(port); }

} // namespace qm::test
