#include "Session.h"

#include <iostream>

namespace qm::ctl {

void Session::print(const Report& report) {
    if (one_of_many && !json)
        output.write(controller.address() + ": " + report.line());
    else
        output.write(json ? report.json() : report.table());
}

void Session::tell(const Failure& failure) {
    const std::string at = broadcast ? "broadcast" : controller.address();
    if (json) output.show(failure_json(failure.status(), failure.meaning(), failure.reason(), at));
    if (json && one_of_many) return;
    const std::string line = at + ": " + failure.what() + "\n";
    if (one_of_many)
        output.show(line);
    else
        std::cerr << "qmctl: " << line;
}

void Session::note(const std::string& note) const {
    std::cerr << "qmctl: " + (one_of_many ? controller.address() + ": " : "") + "note: " + note + "\n";
}

void Session::refuse(const UsageError& error) {
    if (one_of_many)
        output.show(json ? usage_json(error.what(), controller.address())
                         : controller.address() + ": " + error.what() + "\n");
    else if (json)
        std::cerr << usage_json(error.what());
    else
        std::cerr << "qmctl: " << error.what() << "\nTry 'qmctl " << verb << (verb.empty() ? "" : " ")
                  << "--help'.\n";
}

} // namespace qm::ctl
