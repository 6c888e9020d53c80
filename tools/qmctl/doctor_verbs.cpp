// The verb that finds out why a controller does not do what it should.
#include "Probe.h"
#include "Verb.h"
#include "arguments.h"
#include "record_text.h"

#include <cstdlib>
#include <ctime>
#include <optional>

namespace qm::ctl {
namespace {

constexpr std::time_t kMostDrift = 60; // seconds

[[noreturn]] void wrong(const std::string& what) { throw std::runtime_error(what); }

// A step asks the controller as far as that has not been done. It returns what it found, or throws Failure or
// std::runtime_error.
class Examination {
  public:
    explicit Examination(const Session& session) : m_session(session), m_probe(session.controller) {}

    std::string address() { return m_probe.route(); }
    std::string port() { return m_probe.connect(); }
    std::string handshake() { return m_probe.shake_hands(); }

    std::string type() {
        m_identity = require(m_session.controller.ping()); // which tells it
        const ControllerType& type = m_identity->type;
        const std::string found = hex(type.code, 4) + ", " + model_name(type);
        if (type.generation == 0) wrong(found + ", which is of neither generation.");
        return found + ", generation " + std::to_string(type.generation);
    }

    std::string ping() {
        if (!m_identity) m_identity = require(m_session.controller.ping()); // once more, for its reason
        return "answered; firmware " + printable(m_identity->firmware);
    }

    std::string screen() {
        const auto& [width, height] = m_identity->screen;
        const unsigned color = m_identity->color;
        const std::string found = to_string({width, height}) + " pixels, " + word_for(kScreenColors, color) +
                                  ", " + word_for(kOffOn, m_identity->power) + ", brightness " +
                                  std::to_string(m_identity->brightness);
        const bool known = color >= SCREEN_COLOR_SINGLE && color <= SCREEN_COLOR_FULLCOLOR;
        if (width == 0 || height == 0 || !known) wrong(found + ", which is no screen.");
        return found;
    }

    std::string clock() {
        const auto& time = status().clock;
        if (!time) wrong("It shows no time.");
        std::string found = iso_time(*time);
        std::ranges::replace(found, 'T', ' ');
        const std::time_t ahead = seconds_of(*time) - std::time(nullptr);
        if (std::abs(ahead) <= kMostDrift) return found;
        wrong(found + ", which is " + std::to_string(std::abs(ahead)) + " s " +
              (ahead > 0 ? "ahead of" : "behind") + " this host's clock.");
    }

    std::string disk() {
        const Volume volume = require(m_session.controller.volume());
        const std::string found =
            std::to_string(volume.available) + " of " + std::to_string(volume.total) + " bytes free";
        if (volume.available == 0) wrong(found + ".");
        return found;
    }

    std::string program() {
        const ControllerStatus& now = status();
        const std::string name = printable(now.program);
        std::string found =
            (name.empty() ? "none" : name) + " is played; " + std::to_string(now.programs) + " on the disk";
        if (now.screen_lock) found += "; the screen is locked";
        if (now.program_lock) found += "; the program is locked";
        return found;
    }

  private:
    const ControllerStatus& status() {
        if (!m_status) m_status = require(m_session.controller.status());
        return *m_status;
    }

    // Of this host's local time.
    static std::time_t seconds_of(const Time& time) {
        std::tm local{};
        local.tm_year = static_cast<int>(time.date.year) - 1900;
        local.tm_mon = static_cast<int>(time.date.month) - 1;
        local.tm_mday = static_cast<int>(time.date.day);
        local.tm_hour = static_cast<int>(time.hour);
        local.tm_min = static_cast<int>(time.minute);
        local.tm_sec = static_cast<int>(time.second);
        local.tm_isdst = -1;
        return std::mktime(&local);
    }

    const Session& m_session;
    Probe m_probe;
    std::optional<Identity> m_identity;
    std::optional<ControllerStatus> m_status;
};

struct Step {
    const char* name;
    std::string (Examination::*look)();
    bool needed;      // by those that follow
    const char* next; // to be checked when it fails
};

constexpr Step kSteps[] = {
    {"address", &Examination::address, true,
     "is this host on a network (ip -4 address), and is the address right (qmctl find)?"},
    {"port", &Examination::port, true,
     "is the controller powered and connected, are its address and port right (qmctl find), and does no "
     "firewall stand between?"},
    {"handshake", &Examination::handshake, true,
     "is it a controller that listens there, and is nobody else connected to it? Switch it off and on."},
    {"type", &Examination::type, false, "is it a controller of generation 5 or 6 (its label, qmctl find)?"},
    {"ping", &Examination::ping, true, "does somebody else send to it? Switch it off and on."},
    {"screen", &Examination::screen, false, "its configuration (qmctl config push --help)"},
    {"clock", &Examination::clock, false, "qmctl clock set"},
    {"disk", &Examination::disk, false, "its files (qmctl fs ls, qmctl fs rm)"},
    {"program", &Examination::program, false, "does it answer qmctl status? Switch it off and on."}};

// What a step came to.
struct Finding {
    bool ok = true;
    int status = QM_OK;
    std::string text; // what was found, or the reason
};

Finding try_step(const Step& step, Examination& examination) {
    try {
        return {.text = (examination.*step.look)()};
    } catch (const Failure& failure) {
        return {false, failure.status(), failure.reason()};
    } catch (const std::runtime_error& wrong) {
        return {false, QM_FAILED, wrong.what()};
    }
}

class Doctor : public Verb {
  public:
    Report run(const Session& session) const override {
        Report report = session.report();
        Examination examination(session);
        auto steps = nlohmann::ordered_json::array();
        for (const Step& step : kSteps) {
            const Finding finding = try_step(step, examination);
            steps.push_back(describe(report, step, finding));
            if (finding.ok) continue;
            if (report.ok()) report.fail(finding.status, finding.text);
            if (step.needed) break;
        }
        report.add("steps", std::move(steps));
        return report;
    }

  private:
    static nlohmann::ordered_json describe(Report& report, const Step& step, const Finding& finding) {
        if (finding.ok) {
            report.show(step.name, "ok: " + finding.text);
            return {{"step", step.name}, {"ok", true}, {"found", finding.text}};
        }
        report.show(step.name, "FAILED: " + finding.text + " Check next: " + step.next);
        return {{"step", step.name}, {"ok", false}, {"reason", finding.text}, {"next", step.next}};
    }
};

constexpr VerbEntry kDoctorVerbs[] = {
    {"doctor", "Find out why a controller does not answer, or does not do what it should",
     "Looks at its address, port, handshake, type, ping, screen, clock, disk and program, a line each, and\n"
     "says what to check next where something is wrong; the exit status is 2 then. Changes nothing.\n\n"
     "Example:\n  qmctl -c 192.168.0.199 doctor",
     make_verb<Doctor>}};

} // namespace

Family doctor_verbs() { return kDoctorVerbs; }

} // namespace qm::ctl
