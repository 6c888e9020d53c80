// Verbs that ask a controller how it is.
#include "Verb.h"
#include "arguments.h"
#include "record_text.h"

namespace qm::ctl {
namespace {

constexpr Name kBrightnessModes[] = {{"manual", 0}, {"by clock", 1}, {"by sensor", 2}};
constexpr Name kLocks[] = {{"unlocked", 0}, {"locked", 1}};

// Words for people and null for scripts when the controller's clock shows no time.
void add_clock(Result& result, const char* label, const BcdClock& clock) {
    const auto time = iso_time(clock);
    std::string text = time.value_or("not set");
    std::ranges::replace(text, 'T', ' ');
    result.add(label, time ? text : "not set", "clock",
               time ? nlohmann::ordered_json(*time) : nlohmann::ordered_json());
}

void add_light(Result& result, const ControllerStatus_G56& status) {
    result.add("Power", "power", word_for(kOffOn, status.onoffStatus))
        .add("Timer", "timer", word_for(kOffOn, status.timingOnOff))
        .add("Brightness mode", "brightness_mode", word_for(kBrightnessModes, status.brightnessAdjMode))
        .add("Brightness", "brightness", unsigned{status.brightness});
}

void add_programs(Result& result, const ControllerStatus_G56& status) {
    result.add("Programs", "programs", int{status.programeNumber})
        .add("Current program", "current_program", printable(octets(status.currentProgram)))
        .add("Screen", "screen_lock", word_for(kLocks, status.screenLockStatus))
        .add("Program", "program_lock", word_for(kLocks, status.programLockStatus))
        .add("Running mode", "running_mode", unsigned{status.runningMode})
        .add("Clock status", "clock_status", unsigned{status.RTCStatus});
}

// Their units are the controller's, and a temperature's three bytes too.
void add_sensors(Result& result, const ControllerStatus_G56& status) {
    result.add("Temperature 1 (raw)", "temperature1", hex(octets(status.temperature1), " "))
        .add("Temperature 2 (raw)", "temperature2", hex(octets(status.temperature2), " "))
        .add("Humidity (raw)", "humidity", int{status.humidity})
        .add("Noise (raw)", "noise", int{status.noise})
        .add("Switch", "switch", unsigned{status.switchStatus});
}

ControllerStatus_G56 ask_status(const Session& session) {
    ControllerStatus_G56 status{};
    session.command(cmd_check_controllerStatus, &status);
    return status;
}

class Status : public Verb {
  public:
    void add_arguments(ArgumentList&) override {}
    void run(Session& session) override {
        const ControllerStatus_G56 status = ask_status(session);
        Result result = session.result();
        add_light(result, status);
        add_programs(result, status);
        add_clock(result, "Clock", clock_of(status));
        add_sensors(result, status);
        result.add("Custom ID", "custom_id", printable(octets(status.CustomID)))
            .add("Bar code", "bar_code", printable(octets(status.BarCode)));
        session.print(result);
    }
};

class ShowClock : public Verb {
  public:
    void add_arguments(ArgumentList&) override {}
    void run(Session& session) override {
        Result result = session.result();
        add_clock(result, "Clock", clock_of(ask_status(session)));
        session.print(result);
    }
};

class SetClock : public ShowClock {
  public:
    void run(Session& session) override {
        session.command(cmd_check_time);
        ShowClock::run(session);
    }
};

class Battle : public Verb {
  public:
    void add_arguments(ArgumentList& command) override {
        add_number(command, "--mode", m_mode, 0, 255,
                   "What is asked for, in the controller's numbers (default 0)");
    }
    void run(Session& session) override {
        BattleTime time{};
        const int status = cmd_battieTime(session.controller.ip.c_str(), session.controller.port,
                                          static_cast<Ouint8>(m_mode), &time);
        if (status != QM_TRUNCATED) Session::require(status); // a longer answer is delivered, too
        // All but the year has been turned into plain numbers.
        const auto bcd = [](unsigned value) { return value / 10 * 16 + value % 10; };
        Result result = session.result();
        add_clock(result, "Battle time",
                  {static_cast<Ouint16>(time.BattleRTCYear), bcd(time.BattleRTCMonth),
                   bcd(time.BattleRTCDate), bcd(time.BattleRTCHour), bcd(time.BattleRTCMinute),
                   bcd(time.BattleRTCSecond)});
        session.print(result);
    }

  private:
    unsigned m_mode = 0;
};

class Identity : public Verb {
  public:
    void add_arguments(ArgumentList&) override {}
    void run(Session& session) override {
        unsigned char id[8]{};
        const int status = cmd_readControllerID(session.controller.ip.c_str(), session.controller.port, id);
        if (status != QM_TRUNCATED) Session::require(status); // of a longer ID, the first 8 bytes
        Result result = session.result();
        result.add("ID", hex(octets(id), " "), "id", hex(octets(id), ""))
            .add("As text", "text", printable(octets(id)));
        session.print(result);
    }
};

constexpr VerbEntry kVerbs[] = {
    {"status", "Show what the controller is doing: power, programs, locks, clock",
     "What is marked raw is in the controller's own units.\n\nExample:\n  qmctl -c 192.168.0.199 status",
     make_verb<Status>},
    {"clock", "Show the controller's clock", "Example:\n  qmctl clock", make_verb<ShowClock>},
    {"clock set", "Set the controller's clock to this host's local time",
     "Shows the clock afterwards.\n\nExample:\n  qmctl clock set", make_verb<SetClock>},
    {"battle", "Show the controller's battle time", "Example:\n  qmctl battle", make_verb<Battle>},
    {"id", "Show the controller's 8-byte ID", "Example:\n  qmctl --json id", make_verb<Identity>}};

} // namespace

Family status_verbs() { return kVerbs; }

} // namespace qm::ctl
