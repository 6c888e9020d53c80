// What every verb shares: the controller to talk to, and the way results and trouble are shown.
#pragma once

#include "Output.h"
#include "Report.h"
#include "sign/AddressBook.h"
#include "sign/errors.h"

#include <memory>
#include <variant>

namespace qm::ctl {

using namespace sign;

// What a verb came to: its report, or why there is none.
using Outcome = std::variant<Report, UsageError, Failure>;

constexpr int kDone = 0, kUsage = 1, kFailed = 2, kInterrupted = 130;
[[nodiscard]] int exit_status(const Outcome& outcome);

// A copy with another controller is that of one more job.
class Session {
  public:
    explicit Session(Output& results) : output(&results) {}

    std::shared_ptr<const AddressBook> book; // that the command line gave; null: the user's own
    std::optional<std::string> wanted;       // the controllers, as the command line calls them
    NamedController target;                  // the one to talk to
    Controller controller;                   // and where that is
    std::string verb;                        // its words, such as "fs ls"
    unsigned jobs = 32;                      // controllers at a time
    bool json = false;
    bool verbose = false;
    bool one_of_many = false; // the result is one line, trouble included
    bool broadcast = false;   // the verb asks whoever answers, not the controller

    // A call of the library's with the controller's address and the arguments; throws Failure unless it
    // succeeds.
    template <class Call, class... Arguments> void command(Call call, Arguments... arguments) const {
        require(controller.call(call, arguments...));
    }

    // One that begins with the controller.
    [[nodiscard]] Report report() const { return Report(controller.address(), target.name); }

    // Shows what came of the verb: reports on standard output, trouble on standard error and, where JSON is
    // asked for, there, too.
    void print(const Outcome& outcome) const;
    // The same as one object.
    [[nodiscard]] nlohmann::ordered_json object_of(const Outcome& outcome) const;
    // Says on standard error what is done otherwise than it was asked for.
    void note(const std::string& note) const;

    Output* output;

  private:
    [[nodiscard]] std::string place() const;
    void show(const Report& report) const;
    void show(const Failure& failure) const;
    void show(const UsageError& error) const;
};

} // namespace qm::ctl
