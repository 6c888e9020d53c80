// What every verb shares: the controller to talk to, the way results are printed, and the ways to fail.
#pragma once

#include "Output.h"
#include "Result.h"
#include "qm_sdk_dual.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace qm::ctl {

struct Controller {
    std::string ip = "127.0.0.1";
    Ouint16 port = 5005;

    [[nodiscard]] std::string text() const { return ip + ":" + std::to_string(port); }
};

// The command line asks for something that cannot be done; nothing was sent.
class UsageError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The library or the controller did not do it.
class Failure : public std::runtime_error {
  public:
    // Of the library's call that has just failed, whose reason it takes; words say what was tried.
    explicit Failure(int status, const std::string& words = "");
    // Of no call.
    explicit Failure(const std::string& words);

    [[nodiscard]] int status() const { return m_status; }
    [[nodiscard]] const std::string& meaning() const {
        return m_meaning;
    }                                                                    // the words, or the status in words
    [[nodiscard]] const std::string& reason() const { return m_reason; } // empty without a call

  private:
    Failure(int status, const std::string& words, const std::string& reason);

    int m_status;
    std::string m_meaning, m_reason;
};

class Session {
  public:
    std::vector<Controller> controllers{Controller()}; // as the command line names them
    unsigned jobs = 32;                                // controllers at a time, when there are many
    bool one_of_many = false;                          // the result is one line, trouble included
    Controller controller;                             // the one to talk to
    std::string verb;                                  // its words, such as "fs ls"
    bool json = false;
    bool verbose = false;
    bool broadcast = false; // the verb asks whoever answers, not the controller
    bool failed = false;    // what the verb printed says that something is wrong

    // Throws Failure for every status but 0.
    static void require(int status);
    [[nodiscard]] Ping_data ping() const;
    // Calls the library with the controller's address and the arguments; throws Failure for every status
    // but 0.
    template <class... Parameters, class... Arguments>
    void command(int (*call)(const char*, Ouint16, Parameters...), Arguments... arguments) const {
        require(call(controller.ip.c_str(), controller.port, static_cast<Parameters>(arguments)...));
    }

    // A result that begins with the controller.
    [[nodiscard]] Result result() const;

    void print(const Result& result);
    // Says on standard error, and in JSON on standard output when that is asked for, what went wrong.
    void report(const Failure& failure);
    // Says what is wrong with the command line: on standard error, in JSON when that is asked for.
    void refuse(const UsageError& error);

    Output output;
};

} // namespace qm::ctl
