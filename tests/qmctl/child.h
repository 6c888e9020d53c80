// qmctl as it is started from a shell.
#pragma once

#include <nlohmann/json.hpp>

#include <atomic>
#include <memory>
#include <string>
#include <vector>

namespace qm::test {

struct Outcome {
    int status = -1; // exit status; -1 when a signal ended it, or it had to be ended
    std::string out, err;
};

// Arguments one by one, or in one line with spaces between.
struct Words : std::vector<std::string> {
    using std::vector<std::string>::vector;
    Words(const char* line); // NOLINT: a line is a list of words
};
Words operator+(Words front, const Words& back);

// qmctl at work.
class RunningQmctl {
  public:
    explicit RunningQmctl(const Words& arguments, const std::string& input = "",
                          const char* output = nullptr);
    RunningQmctl(const RunningQmctl&) = delete;
    RunningQmctl& operator=(const RunningQmctl&) = delete;
    ~RunningQmctl(); // kills it, unless it has ended

    void send(int signal) const; // nothing once it has ended
    Outcome end();               // waits for it, for at most 60 s

  private:
    struct Streams;
    std::unique_ptr<Streams> m_streams;
    std::atomic<int> m_pid = -1; // others may send while its end is waited for
};

// Runs qmctl to its end, for at most 60 s. output: a file to write its results to, in place of Outcome::out.
Outcome qmctl(const Words& arguments, const std::string& input = "", const char* output = nullptr);

// Runs qmctl --json against 127.0.0.1:port, which has to print one JSON object in one line.
nlohmann::json qmctl_json(unsigned port, const Words& arguments);

std::string address(unsigned port); // 127.0.0.1:port

} // namespace qm::test
