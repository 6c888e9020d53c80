// Verbs that ask a controller how it is.
#include "Verb.h"
#include "arguments.h"
#include "record_text.h"

namespace qm::ctl {
namespace {

using Json = nlohmann::ordered_json;

constexpr Name kBrightnessModes[] = {{"manual", 0}, {"by clock", 1}, {"by sensor", 2}};

// Words for people and null for scripts when the controller's clock shows no time.
Report& add_clock(Report& report, const char* label, const std::optional<Time>& time) {
    std::string text = time ? iso_time(*time) : "not set";
    const Json value = time ? Json(text) : Json();
    if (time) std::ranges::replace(text, 'T', ' ');
    return report.add(label, text, "clock", value);
}

void add_light(Report& report, const ControllerStatus& status) {
    report.add("Power", "power", word_for(kOffOn, status.power))
        .add("Timer", "timer", word_for(kOffOn, status.timer))
        .add("Brightness mode", "brightness_mode", word_for(kBrightnessModes, status.brightness_mode))
        .add("Brightness", "brightness", status.brightness);
}

void add_programs(Report& report, const ControllerStatus& status) {
    report.add("Programs", "programs", status.programs)
        .add("Current program", "current_program", printable(status.program))
        .add("Screen", "screen_lock", word_for(kLocks, status.screen_lock))
        .add("Program", "program_lock", word_for(kLocks, status.program_lock))
        .add("Running mode", "running_mode", status.running_mode)
        .add("Clock status", "clock_status", status.clock_status);
}

// Their units are the controller's, and a temperature's three bytes too.
void add_sensors(Report& report, const ControllerStatus& status) {
    report.add("Temperature 1 (raw)", "temperature1", hex(status.temperature1, " "))
        .add("Temperature 2 (raw)", "temperature2", hex(status.temperature2, " "))
        .add("Humidity (raw)", "humidity", status.humidity)
        .add("Noise (raw)", "noise", status.noise)
        .add("Switch", "switch", status.switch_status);
}

class ShowStatus : public Verb {
  public:
    Report run(const Session& session) const override {
        const ControllerStatus status = require(session.controller.status());
        Report report = session.report();
        add_light(report, status);
        add_programs(report, status);
        add_clock(report, "Clock", status.clock);
        add_sensors(report, status);
        return report.add("Custom ID", "custom_id", printable(status.custom_id))
            .add("Bar code", "bar_code", printable(status.bar_code));
    }
};

class ShowClock : public Verb {
  public:
    Report run(const Session& session) const override {
        Report report = session.report();
        return add_clock(report, "Clock", require(session.controller.status()).clock);
    }
};

class SetClock : public ShowClock {
  public:
    Report run(const Session& session) const override {
        require(session.controller.set_clock());
        return ShowClock::run(session);
    }
};

// A longer answer is delivered as far as there is room.
void require_delivered(const Result<>& done) {
    if (done.status() != QM_TRUNCATED) require(done);
}

class Battle : public Verb {
  public:
    void add_arguments(ArgumentList& command) override {
        add_number(command, "--mode", m_mode, 0, 255,
                   "What is asked for, in the controller's numbers (default 0)");
    }
    Report run(const Session& session) const override {
        BattleTime time{};
        require_delivered(session.controller.call(cmd_battieTime, m_mode, &time));
        // All but the year has been turned into plain numbers.
        Report report = session.report();
        return add_clock(report, "Battle time",
                         time_from_bcd(static_cast<Ouint16>(time.BattleRTCYear), to_bcd(time.BattleRTCMonth),
                                       to_bcd(time.BattleRTCDate), to_bcd(time.BattleRTCHour),
                                       to_bcd(time.BattleRTCMinute), to_bcd(time.BattleRTCSecond)));
    }

  private:
    unsigned m_mode = 0;
};

class ShowId : public Verb {
  public:
    Report run(const Session& session) const override {
        unsigned char id[8]{};
        require_delivered(session.controller.call(cmd_readControllerID, id));
        return session.report()
            .add("ID", hex(octets(id), " "), "id", hex(octets(id), ""))
            .add("As text", "text", printable(octets(id)));
    }
};

constexpr VerbEntry kStatusVerbs[] = {
    {"status", "Show what the controller is doing: power, programs, locks, clock",
     "What is marked raw is in the controller's own units.\n\nExample:\n  qmctl -c 192.168.0.199 status",
     make_verb<ShowStatus>},
    {"clock", "Show the controller's clock", "Example:\n  qmctl clock", make_verb<ShowClock>},
    {"clock set", "Set the controller's clock to this host's local time",
     "Shows the clock afterwards.\n\nExample:\n  qmctl clock set", make_verb<SetClock>},
    {"battle", "Show the controller's battle time", "Example:\n  qmctl battle", make_verb<Battle>},
    {"id", "Show the controller's 8-byte ID", "Example:\n  qmctl --json id", make_verb<ShowId>}};

} // namespace

Family status_verbs() { return kStatusVerbs; }

} // namespace qm::ctl
