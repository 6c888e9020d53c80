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

void Session::print(const Result& result) { output.write(json ? result.json() : result.table()); }

void Session::report(const Failure& failure) {
    std::cerr << "qmctl: " << (broadcast ? "broadcast" : controller.text()) << ": " << failure.what()
              << " (status " << failure.status() << ")\n";
    if (json) output.write(failure_json(failure.status(), failure.what()));
}

} // namespace qm::ctl
