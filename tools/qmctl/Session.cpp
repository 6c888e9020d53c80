#include "Session.h"

#include "names.h"

#include <iostream>

namespace qm::ctl {

namespace {

// "writing P001: The controller refused with error 107 (status 107)"
std::string in_words(int status, const std::string& words, std::string reason) {
    if (reason.ends_with('.')) reason.pop_back();
    return words + (words.empty() || reason.empty() ? "" : ": ") + reason + " (status " +
           std::to_string(status) + ")";
}

} // namespace

Failure::Failure(int status, const std::string& words) : Failure(status, words, qm_last_error()) {}

Failure::Failure(int status, const std::string& words, const std::string& reason)
    : std::runtime_error(in_words(status, words, reason)), m_status(status),
      m_meaning(words.empty() ? status_meaning(status) : words), m_reason(reason) {}

Failure::Failure(const std::string& words)
    : std::runtime_error(words), m_status(QM_FAILED), m_meaning(words) {}

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
    const std::string at = broadcast ? "broadcast" : controller.text();
    if (json) output.show(failure_json(failure.status(), failure.meaning(), failure.reason(), at));
    if (json && one_of_many) return;
    const std::string line = at + ": " + failure.what() + "\n";
    if (one_of_many)
        output.show(line);
    else
        std::cerr << "qmctl: " << line;
}

void Session::refuse(const UsageError& error) {
    if (one_of_many)
        output.show(json ? usage_json(error.what(), controller.text())
                         : controller.text() + ": " + error.what() + "\n");
    else if (json)
        std::cerr << usage_json(error.what());
    else
        std::cerr << "qmctl: " << error.what() << "\nTry 'qmctl " << verb << (verb.empty() ? "" : " ")
                  << "--help'.\n";
}

} // namespace qm::ctl
