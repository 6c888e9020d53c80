// Verbs that make controllers what the description of their sign says.
#include "AreaOptions.h"
#include "Progress.h"
#include "Verb.h"
#include "arguments.h"
#include "record_text.h"
#include "sign/Plan.h"

namespace qm::ctl {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kSomethingToDo = 3;
constexpr const char* kUnknown = "cannot be asked for, set by each apply";

std::string state_of(const Setting& setting) {
    if (setting.state == SettingState::unknown) return kUnknown;
    return setting.state == SettingState::same ? "as it should be" : "to be set, is " + setting.found;
}

// "2 new, 1 unchanged"
std::string counts(const std::vector<PlannedFile>& files) {
    std::string text;
    for (const Name& state : kFileStates) {
        const auto count = std::ranges::count(files, static_cast<FileState>(state.code), &PlannedFile::state);
        if (count > 0) text += (text.empty() ? "" : ", ") + std::to_string(count) + " " + state.word;
    }
    return text.empty() ? "none" : text;
}

Report& list_settings(Report& report, const Plan& plan) {
    Json values = Json::array();
    for (const Setting& setting : plan.settings) {
        std::string label = setting.name;
        label.front() = static_cast<char>(std::toupper(label.front()));
        report.show(std::move(label), setting.wanted + " (" + state_of(setting) + ")");
        const bool unknown = setting.state == SettingState::unknown;
        values.push_back({{"name", setting.name},
                          {"state", unknown                                  ? "unknown"
                                    : setting.state == SettingState::differs ? "differs"
                                                                             : "same"},
                          {"wanted", setting.wanted},
                          {"found", unknown ? Json() : Json(setting.found)}});
    }
    return report.add("settings", std::move(values));
}

Report& list_programs(Report& report, const Plan& plan) {
    std::vector<std::vector<std::string>> lines{{"File", "Bytes", "CRC-32", "State", "Program"}};
    Json values = Json::array();
    for (const PlannedFile& file : plan.files) {
        const std::string state = word_for(kFileStates, static_cast<unsigned>(file.state));
        const std::string name = printable(file.entry.name);
        lines.push_back(
            {name, std::to_string(file.entry.size), hex(file.entry.checksum, 8), state, file.program});
        values.push_back({{"name", name},
                          {"state", state},
                          {"size", file.entry.size},
                          {"crc32", file.entry.checksum},
                          {"program", file.program.empty() ? Json() : Json(file.program)}});
    }
    report.show("Files", counts(plan.files));
    return report.list(std::move(lines), "programs", std::move(values));
}

class PlanSign : public Verb {
  public:
    void add_arguments(ArgumentList& command) override {
        add_value(command, "SIGN.json", m_path, "", "The description of the sign", read_path).required();
        m_remarks.add_to(command);
    }
    void prepare() final { m_source.read(m_path); }
    std::vector<std::string> controllers() const final { return m_source.sign().controllers; }
    void check(const NamedController& target) const final {
        if (m_source.areas()) require_area_port(target);
    }
    Report run(const Session& session) const override {
        const Identity identity = require(session.controller.ping());
        return report(session, plan(session, identity));
    }

  protected:
    [[nodiscard]] Plan plan(const Session& session, const Identity& identity) const {
        const auto programs = m_source.programs(identity);
        for (const auto& [source, fitted, files] : programs) m_remarks.tell(session, *fitted, source->path());
        if (m_source.areas()) require_areas(session, Screen::of(identity));
        return plan_for(m_source, programs, session.controller, identity);
    }

    [[nodiscard]] Report report(const Session& session, const Plan& plan) const {
        Report report = session.report();
        const bool todo = plan.anything_to_do();
        report.add("To do", todo ? "something" : nothing_of(plan), "to_do", todo);
        list_settings(report, plan);
        if (m_source.areas()) report.add("Areas", kUnknown, "areas", m_source.areas()->ids());
        return list_programs(report, plan).exit_with(todo ? kSomethingToDo : kDone);
    }

    // What each apply sets cannot be known to be done.
    [[nodiscard]] std::string nothing_of(const Plan& plan) const {
        std::vector<std::string> unknown;
        for (const Setting& setting : plan.settings)
            if (setting.state == SettingState::unknown) unknown.push_back(setting.name);
        if (m_source.areas()) unknown.emplace_back("areas");
        return unknown.empty() ? "nothing" : "nothing that can be told; apply sets " + joined(unknown);
    }
    void show_areas_of(const Session& session, const Identity& identity, Report& report) const {
        if (!m_source.areas()) return;
        const Screen screen = Screen::of(identity);
        show_areas(session, m_source.areas()->fitted(screen).areas, screen, std::nullopt);
        report.add("Areas", "areas", m_source.areas()->ids());
    }

  private:
    // Before anything is sent.
    void require_areas(const Session& session, const Screen& screen) const {
        const auto& [areas, texts] = m_source.areas()->fitted(screen);
        require_voice(areas, screen);
        m_remarks.tell(session, texts.remarks);
    }

    std::string m_path;
    SignSource m_source;
    Remarks m_remarks;
};

class ApplySign : public PlanSign {
  public:
    void add_arguments(ArgumentList& command) override {
        PlanSign::add_arguments(command);
        command.add_flag("--dry-run", m_dry_run, "Only say what would be done, as plan does");
    }
    Report run(const Session& session) const override {
        if (m_dry_run) return PlanSign::run(session);
        const Identity identity = require(session.controller.ping());
        const Plan plan = this->plan(session, identity);
        carry_out(plan, session.controller,
                  [&](const File& file) -> std::shared_ptr<void> { return Progress::of(session, file); });
        Report report = session.report();
        std::vector<std::string> written, set;
        for (const File& file : plan.writes()) written.push_back(file.name);
        for (const Setting& setting : plan.changes()) set.push_back(setting.name + " " + setting.wanted);
        report.add("Written", written.empty() ? "nothing" : joined(written), "written", written);
        if (const auto deleted = plan.deletes(); !deleted.empty()) report.add("Deleted", "deleted", deleted);
        if (!set.empty()) report.add("Set", "set", set);
        show_areas_of(session, identity, report);
        return report;
    }

  private:
    bool m_dry_run = false;
};

constexpr VerbEntry kSignVerbs[] = {
    {"plan", "Say what apply would change; nothing is written",
     "Exit status 0: nothing to do, 3: something.\n\nExample:\n  qmctl plan examples/shops/sign.json",
     make_verb<PlanSign>},
    {"apply", "Make controllers what the description of their sign says",
     "Sends the programs that differ, as one transfer, deletes what the description lets it, and sets\n"
     "what differs or cannot be asked for. What was interrupted is finished by the next apply. Goes to\n"
     "the controllers of the description unless -c is given.\n\n"
     "Examples:\n  qmctl apply examples/shops/sign.json\n  qmctl -c stop-5 apply --dry-run sign.json",
     make_verb<ApplySign>}};

} // namespace

Family sign_verbs() { return kSignVerbs; }

} // namespace qm::ctl
