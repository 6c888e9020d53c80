// Verbs for the light of the screen: power, timer and brightness.
#include "Verb.h"
#include "device_arguments.h"

#include <algorithm>

namespace qm::ctl {
namespace {

constexpr int kMostPeriods = 255;

template <unsigned on> class Switch : public Verb {
  public:
    void add_arguments(ArgumentList&) override {}
    void run(Session& session) override {
        session.command(cmd_coerceOnOff, on);
        Result result = session.result();
        result.add("Power", "power", word_for(kOffOn, on));
        session.print(result);
    }
};

struct Period {
    OnOffTime times;
    std::string text;
};

int minute_of_day(Ouint8 hour, Ouint8 minute) { return 60 * hour + minute; }

// Whether time is in a period, which may run past midnight.
bool covers(const OnOffTime& period, int time) {
    const int on = minute_of_day(period[0], period[1]), off = minute_of_day(period[2], period[3]);
    return on < off ? on <= time && time < off : time >= on || time < off;
}

bool overlap(const OnOffTime& a, const OnOffTime& b) {
    return covers(a, minute_of_day(b[0], b[1])) || covers(b, minute_of_day(a[0], a[1]));
}

class Timer : public Verb {
  public:
    void add_arguments(ArgumentList& command) override {
        add_values(command, "PERIOD", m_periods, kMostPeriods,
                   "HH:MM-HH:MM: when the screen is on; up to 255 of them", [](const std::string& text) {
                       const OnOffTime times = read_on_off_time(text);
                       if (times[0] == times[2] && times[1] == times[3]) expected("two different times");
                       return Period{times, text};
                   });
    }
    void prepare(const Session&) override {
        for (auto period = m_periods.begin(); period != m_periods.end(); ++period)
            for (auto other = m_periods.begin(); other != period; ++other)
                if (overlap(period->times, other->times))
                    throw UsageError("expected periods that do not overlap, not '" + other->text + "' and '" +
                                     period->text + "'");
    }
    void run(Session& session) override {
        std::vector<Ouint8> data;
        nlohmann::ordered_json texts;
        std::string words;
        for (const Period& period : m_periods) {
            data.insert(data.end(), period.times.begin(), period.times.end());
            texts.push_back(period.text);
            words += (words.empty() ? "" : ", ") + period.text;
        }
        session.command(cmd_timingOnOff, m_periods.size(), data.data());
        Result result = session.result();
        result.add("On at", words, "timer", texts);
        session.print(result);
    }

  private:
    std::vector<Period> m_periods;
};

class CancelTimer : public Verb {
  public:
    void add_arguments(ArgumentList&) override {}
    void run(Session& session) override {
        session.command(cmd_cancelTimingOnOff);
        Result result = session.result();
        result.add("Timer", "timer", "off");
        session.print(result);
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
    void prepare(const Session&) override {
        if (!m_level && !m_levels)
            throw UsageError("brightness: expected a number from 0 to 255, or --table FILE");
    }
    void run(Session& session) override {
        Brightness brightness{};
        brightness.BrightnessMode = m_levels ? kByClock : kManual;
        if (m_levels)
            std::ranges::copy(*m_levels, brightness.HalfHourValue);
        else
            std::ranges::fill(brightness.HalfHourValue, static_cast<Ouint8>(*m_level));
        session.command(cmd_setBrightness, &brightness);
        Result result = session.result();
        if (m_level)
            result.add("Brightness", "brightness", *m_level);
        else
            result.add("Brightness", "by clock", "brightness",
                       std::vector<unsigned>(m_levels->begin(), m_levels->end()));
        session.print(result);
    }

  private:
    static constexpr Ouint8 kManual = 0, kByClock = 1;
    std::optional<unsigned> m_level;
    std::optional<Levels> m_levels;
};

constexpr VerbEntry kVerbs[] = {
    {"power on", "Switch the screen on", "Example:\n  qmctl power on", make_verb<Switch<1>>},
    {"power off", "Switch the screen off", "Example:\n  qmctl power off", make_verb<Switch<0>>},
    {"power timer", "Switch the screen by timer, in place of the timer that was set",
     "A period may run past midnight; they must not overlap.\n\nExample:\n  qmctl power timer 07:30-12:00 "
     "13:00-22:15",
     make_verb<Timer>},
    {"power cancel", "End the timer", "Example:\n  qmctl power cancel", make_verb<CancelTimer>},
    {"brightness", "Set the brightness, of the whole day or by the clock",
     "Controllers know 0 to 15 as a rule and refuse what is beyond their scale.\n\n"
     "Examples:\n  qmctl brightness 8\n  qmctl brightness --table day-and-night.txt",
     make_verb<SetBrightness>}};

} // namespace

Family power_verbs() { return kVerbs; }

} // namespace qm::ctl
