// What every verb shares: the controller to talk to, and the way results and trouble are shown.
#pragma once

#include "Output.h"
#include "Report.h"
#include "sign/errors.h"

namespace qm::ctl {

using namespace sign;

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

    // A call of the library's with the controller's address and the arguments; throws Failure unless it
    // succeeds.
    template <class Call, class... Arguments> void command(Call call, Arguments... arguments) const {
        require(controller.call(call, arguments...));
    }

    // One that begins with the controller.
    [[nodiscard]] Report report() const { return Report(controller.address()); }

    void print(const Report& report);
    // Says on standard error, and in JSON on standard output when that is asked for, what went wrong.
    void tell(const Failure& failure);
    // Says on standard error what is done otherwise than it was asked for.
    void note(const std::string& note) const;
    // Says what is wrong with the command line: on standard error, in JSON when that is asked for.
    void refuse(const UsageError& error);

    Output output;
};

} // namespace qm::ctl
