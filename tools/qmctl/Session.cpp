#include "Session.h"

#include "names.h"

#include <iostream>

namespace qm::ctl {

Failure::Failure(int status) : Failure(status, status_meaning(status)) {}

void Session::require(int status) {
    if (status != QM_OK) throw Failure(status);
}

Ping_data Session::ping() const {
    Ping_data data{};
    require(cmd_tcpPing(controller.ip.c_str(), controller.port, &data));
    return data;
}

Result Session::result() const {
    Result result;
    result.add("Controller", "controller", controller.text());
    return result;
}

void Session::print(const Result& result) {
    if (one_of_many && !json)
        output.write(controller.text() + ": " + result.line());
    else
        output.write(json ? result.json() : result.table());
}

void Session::report(const Failure& failure) {
    if (one_of_many) {
        const std::string why = failure.what();
        output.write(json ? failure_json(failure.status(), why, controller.text())
                          : controller.text() + ": " + why + " (status " + std::to_string(failure.status()) +
                                ")\n");
        return;
    }
    std::cerr << "qmctl: " << (broadcast ? "broadcast" : controller.text()) << ": " << failure.what()
              << " (status " << failure.status() << ")\n";
    if (json) output.write(failure_json(failure.status(), failure.what()));
}

} // namespace qm::ctl
