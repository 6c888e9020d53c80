// Verbs for the light of the screen: power, timer and brightness.
#include "Verb.h"
#include "device_arguments.h"
#include "sign/TimerPeriod.h"

namespace qm::ctl {
namespace {

template <unsigned on> class Switch : public Verb {
  public:
    Report run(const Session& session) const override {
        require(session.controller.switch_screen(on));
        return session.report().add("Power", "power", word_for(kOffOn, on));
    }
};

class SetTimer : public Verb {
  public:
    void add_arguments(ArgumentList& command) override {
        add_values(command, "PERIOD", m_periods, kMostTimerPeriods,
                   "HH:MM-HH:MM: when the screen is on; up to 255 of them", read_timer_period);
    }
    void prepare() override {
        if (const std::string overlap = overlap_of(m_periods); !overlap.empty()) throw UsageError(overlap);
    }
    Report run(const Session& session) const override {
        require(session.controller.switch_screen(times_of(m_periods)));
        return session.report().add("On at", "timer", texts_of(m_periods));
    }

  private:
    std::vector<TimerPeriod> m_periods;
};

class CancelTimer : public Verb {
  public:
    Report run(const Session& session) const override {
        require(session.controller.cancel_timer());
        return session.report().add("Timer", "timer", "off");
    }
};

class SetBrightness : public Verb {
  public:
    void add_arguments(ArgumentList& command) override {
        const auto level = add_value(command, "N", m_level, "", "Brightness of the whole day, 0 to 255",
                                     [](const std::string& text) { return read_number(text, 0, 255); });
        add_value(
            command, "--table", m_levels, "FILE",
            "File of 48 numbers, one for each half hour from midnight on,\nseparated by spaces or line ends",
            read_levels)
            .excludes(level);
    }
    void prepare() override {
        if (!m_level && !m_levels)
            throw UsageError("brightness: expected a number from 0 to 255, or --table FILE");
    }
    Report run(const Session& session) const override {
        const Controller& to = session.controller;
        if (m_level) {
            require(to.set_brightness(static_cast<Ouint8>(*m_level)));
            return session.report().add("Brightness", "brightness", *m_level);
        }
        require(to.set_brightness(*m_levels));
        return session.report().add("Brightness", "by clock", "brightness",
                                    std::vector<unsigned>(m_levels->begin(), m_levels->end()));
    }

  private:
    std::optional<unsigned> m_level;
    std::optional<Levels> m_levels;
};

constexpr VerbEntry kPowerVerbs[] = {
    {"power on", "Switch the screen on", "Example:\n  qmctl power on", make_verb<Switch<1>>},
    {"power off", "Switch the screen off", "Example:\n  qmctl power off", make_verb<Switch<0>>},
    {"power timer", "Switch the screen by timer, in place of the timer that was set",
     "A period may run past midnight; they must not overlap.\n\nExample:\n  qmctl power timer 07:30-12:00 "
     "13:00-22:15",
     make_verb<SetTimer>},
    {"power cancel", "End the timer", "Example:\n  qmctl power cancel", make_verb<CancelTimer>},
    {"brightness", "Set the brightness, of the whole day or by the clock",
     "Controllers know 0 to 15 as a rule and refuse what is beyond their scale.\n\n"
     "Examples:\n  qmctl brightness 8\n  qmctl brightness --table day-and-night.txt",
     make_verb<SetBrightness>}};

} // namespace

Family power_verbs() { return kPowerVerbs; }

} // namespace qm::ctl
