#include "Session.h"

namespace qm::ctl {

using Json = nlohmann::ordered_json;

int exit_status(const Outcome& outcome) {
    if (const auto* report = std::get_if<Report>(&outcome)) return report->exit_status();
    return std::holds_alternative<UsageError>(outcome) ? kUsage : kFailed;
}

std::string Session::place() const { return broadcast ? "broadcast" : target.label(); }

void Session::print(const Outcome& outcome) const {
    std::visit([this](const auto& what) { show(what); }, outcome);
}

Json Session::object_of(const Outcome& outcome) const {
    if (const auto* report = std::get_if<Report>(&outcome)) return report->object();
    Json object{{"ok", false}};
    if (const auto* failure = std::get_if<Failure>(&outcome)) {
        object["status"] = failure->status();
        object["meaning"] = failure->meaning();
        if (!failure->reason().empty()) object["reason"] = failure->reason();
    } else {
        object["error"] = std::get<UsageError>(outcome).what();
    }
    const bool named = !std::holds_alternative<UsageError>(outcome) || one_of_many;
    if (named) object["controller"] = broadcast ? place() : target.address();
    if (named && !broadcast && !target.name.empty()) object["name"] = target.name;
    return object;
}

void Session::show(const Report& report) const {
    if (report.is_silent()) return;
    if (json)
        output->write(one_line(report.object()));
    else
        output->write(one_of_many ? place() + ": " + report.line() : report.table());
}

void Session::show(const Failure& failure) const {
    if (json) output->show(one_line(object_of(failure)));
    if (json && one_of_many) return;
    const std::string line = place() + ": " + failure.what() + "\n";
    if (one_of_many)
        output->show(line);
    else
        output->remark("qmctl: " + line);
}

void Session::show(const UsageError& error) const {
    if (one_of_many)
        output->show(json ? one_line(object_of(error)) : place() + ": " + error.what() + "\n");
    else if (json)
        output->remark(one_line(object_of(error)));
    else
        output->remark(std::string("qmctl: ") + error.what() + "\nTry 'qmctl " + verb +
                       (verb.empty() ? "" : " ") + "--help'.\n");
}

void Session::note(const std::string& note) const {
    output->remark("qmctl: " + (one_of_many ? place() + ": " : "") + "note: " + note + "\n");
}

} // namespace qm::ctl
