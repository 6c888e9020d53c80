// The verb that finds out why a controller does not do what it should.
#include "Probe.h"
#include "Verb.h"
#include "names.h"
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
        m_ping = m_session.ping(); // which tells it
        const unsigned generation = generation_of(m_ping->ControllerType);
        const std::string found = hex(m_ping->ControllerType, 4) + ", " + model_name(m_ping->ControllerType);
        if (generation == 0) wrong(found + ", which is of neither generation.");
        return found + ", generation " + std::to_string(generation);
    }

    std::string ping() {
        if (!m_ping) m_ping = m_session.ping(); // once more, for its reason
        return "answered; firmware " + printable(octets(m_ping->FirmwareVersion));
    }

    std::string screen() {
        const unsigned width = m_ping->ScreenWidth, height = m_ping->ScreenHeight, color = m_ping->Color;
        const std::string found = std::to_string(width) + " x " + std::to_string(height) + " pixels, " +
                                  word_for(kScreenColors, color) + ", " +
                                  word_for(kOffOn, m_ping->CurrentOnOffStatus) + ", brightness " +
                                  std::to_string(m_ping->CurrentBrigtness);
        const bool known = color >= SCREEN_COLOR_SINGLE && color <= SCREEN_COLOR_FULLCOLOR;
        if (width == 0 || height == 0 || !known) wrong(found + ", which is no screen.");
        return found;
    }

    std::string clock() {
        const auto time = iso_time(clock_of(status()));
        if (!time) wrong("It shows no time.");
        std::string found = *time;
        std::ranges::replace(found, 'T', ' ');
        const std::time_t ahead = seconds_of(*time) - std::time(nullptr);
        if (std::abs(ahead) <= kMostDrift) return found;
        wrong(found + ", which is " + std::to_string(std::abs(ahead)) + " s " +
              (ahead > 0 ? "ahead of" : "behind") + " this host's clock.");
    }

    std::string disk() {
        Ouint32 total = 0, available = 0;
        m_session.command(cmd_ofsGetMemoryVolume, &total, &available);
        const std::string found = std::to_string(available) + " of " + std::to_string(total) + " bytes free";
        if (available == 0) wrong(found + ".");
        return found;
    }

    std::string program() {
        const ControllerStatus_G56& now = status();
        const std::string name = printable(octets(now.currentProgram));
        std::string found = (name.empty() ? "none" : name) + " is played; " +
                            std::to_string(now.programeNumber) + " on the disk";
        if (now.screenLockStatus) found += "; the screen is locked";
        if (now.programLockStatus) found += "; the program is locked";
        return found;
    }

  private:
    const ControllerStatus_G56& status() {
        if (m_status) return *m_status;
        ControllerStatus_G56 status{};
        m_session.command(cmd_check_controllerStatus, &status);
        return m_status.emplace(status);
    }

    // Of this host's local time.
    static std::time_t seconds_of(const std::string& iso) {
        std::tm time{};
        ::strptime(iso.c_str(), "%Y-%m-%dT%H:%M:%S", &time);
        time.tm_isdst = -1;
        return std::mktime(&time);
    }

    const Session& m_session;
    Probe m_probe;
    std::optional<Ping_data> m_ping;
    std::optional<ControllerStatus_G56> m_status;
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

Finding take(const Step& step, Examination& examination) {
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
    void add_arguments(ArgumentList&) override {}
    void run(Session& session) override {
        Result result = session.result();
        Examination examination(session);
        auto steps = nlohmann::ordered_json::array();
        for (const Step& step : kSteps) {
            const Finding finding = take(step, examination);
            steps.push_back(describe(result, step, finding));
            if (finding.ok) continue;
            if (!session.failed) result.fail(finding.status, finding.text);
            session.failed = true;
            if (step.needed) break;
        }
        result.add("steps", std::move(steps));
        session.print(result);
    }

  private:
    static nlohmann::ordered_json describe(Result& result, const Step& step, const Finding& finding) {
        if (finding.ok) {
            result.show(step.name, "ok: " + finding.text);
            return {{"step", step.name}, {"ok", true}, {"found", finding.text}};
        }
        result.show(step.name, "FAILED: " + finding.text + " Check next: " + step.next);
        return {{"step", step.name}, {"ok", false}, {"reason", finding.text}, {"next", step.next}};
    }
};

constexpr VerbEntry kVerbs[] = {
    {"doctor", "Find out why a controller does not answer, or does not do what it should",
     "Looks at its address, port, handshake, type, ping, screen, clock, disk and program, a line each, and\n"
     "says what to check next where something is wrong; the exit status is 2 then. Changes nothing.\n\n"
     "Example:\n  qmctl -c 192.168.0.199 doctor",
     make_verb<Doctor>}};

} // namespace

Family doctor_verbs() { return kVerbs; }

} // namespace qm::ctl
