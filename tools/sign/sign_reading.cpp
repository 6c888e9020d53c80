#include "sign_reading.h"

#include "time_zone.h"

#include <algorithm>
#include <filesystem>

namespace qm::sign {
namespace {

constexpr unsigned kMostLevel = 0xFF;
constexpr std::size_t kMostPrograms = 4096; // more than any controller keeps
constexpr int kLargestShift = 24 * 60 * 60; // seconds
constexpr unsigned kByClock = 1, kBySensor = 2;

Brightness brightness_of(unsigned mode, unsigned level) {
    Brightness brightness{};
    brightness.BrightnessMode = static_cast<Ouint8>(mode);
    std::ranges::fill(brightness.HalfHourValue, static_cast<Ouint8>(level));
    return brightness;
}

// The levels that go with the sensor are for controllers without one.
Brightness read_brightness(const Field& field) {
    constexpr unsigned kUsual = 8;
    if (field.value().is_number()) return brightness_of(0, field.number(0, kMostLevel));
    if (field.value().is_string()) {
        if (field.text() != "sensor") field.expected("a level, 48 levels or \"sensor\"");
        return brightness_of(kBySensor, kUsual);
    }
    Brightness brightness = brightness_of(kByClock, 0);
    const auto levels = field.list(std::size(brightness.HalfHourValue), std::size(brightness.HalfHourValue));
    for (std::size_t i = 0; i < levels.size(); ++i)
        brightness.HalfHourValue[i] = static_cast<Ouint8>(levels[i].number(0, kMostLevel));
    return brightness;
}

std::vector<TimerPeriod> read_timer(const Field& field) {
    std::vector<TimerPeriod> periods;
    if (field.value().is_string()) {
        if (field.text() != "off") field.expected("a list of periods or \"off\"");
        return periods;
    }
    for (const Field& period : field.list(1, kMostTimerPeriods))
        periods.push_back(period.read(read_timer_period));
    if (const std::string overlap = overlap_of(periods); !overlap.empty()) field.refuse(overlap);
    return periods;
}

PowerWish read_power(const Field& field) {
    constexpr Name kSwitch[] = {{"off", 0}, {"on", 1}};
    PowerWish power;
    if (field.value().is_string())
        power.on = field.read([&](const std::string& text) { return read_word(text, kSwitch); }) != 0;
    else
        read_object(field, [&](Object& object) { power.timer = read_timer(object.require("timer")); });
    return power;
}

int read_shift(const Field& field) {
    const bool whole = field.value().is_number_integer();
    const bool huge =
        field.value().is_number_unsigned() && field.value().get<std::uint64_t>() > kLargestShift;
    const auto seconds = whole && !huge ? field.value().get<std::int64_t>() : kLargestShift + 1;
    if (seconds < -kLargestShift || seconds > kLargestShift)
        field.expected("a whole number from -86400 to 86400");
    return static_cast<int>(seconds);
}

ClockWish read_clock(const Field& field) {
    ClockWish clock;
    if (field.value().is_string()) {
        if (field.text() != "now") field.expected("\"now\" or an object");
        return clock;
    }
    read_object(field, [&](Object& object) {
        object.take_text("zone", clock.zone, read_time_zone);
        object.take("shift", clock.shift, read_shift);
    });
    return clock;
}

class SignReader {
  public:
    explicit SignReader(std::filesystem::path folder) : m_folder(std::move(folder)) {}

    SignDescription sign(const Field& field) const {
        SignDescription sign;
        read_object(field, [&](Object& object) {
            object.take("controllers", sign.controllers, [](const Field& list) {
                std::vector<std::string> names;
                for (const Field& name : list.list(1, kMostPrograms)) names.push_back(name.text());
                return names;
            });
            object.take("playlist", sign.playlist, [&](const Field& f) {
                sign.has_playlist = true;
                return playlist(f);
            });
            object.take("number", sign.number, &Field::flag);
            object.take("areas", sign.areas, [&](const Field& f) {
                if (f.value().is_array())
                    f.refuse("stands in a program; its path belongs in the playlist of a sign");
                return path(f);
            });
            object.take("power", sign.power, read_power);
            object.take("brightness", sign.brightness, read_brightness);
            object.take("clock", sign.clock, read_clock);
            object.take("prune", sign.prune, &Field::flag);
            if (sign.prune && !sign.has_playlist) field.refuse("prune needs a playlist, be it empty");
        });
        return sign;
    }

  private:
    std::vector<PlaylistEntry> playlist(const Field& field) const {
        std::vector<PlaylistEntry> entries;
        for (const Field& one : field.list(0, kMostPrograms)) entries.push_back(entry(one));
        return entries;
    }

    // A path, or an object.
    PlaylistEntry entry(const Field& field) const {
        PlaylistEntry entry;
        entry.where = field.path();
        if (field.value().is_string()) {
            entry.programs = {path(field)};
            return entry;
        }
        read_object(field, [&](Object& object) {
            const auto one = object.find("program"), several = object.find("variants");
            if (one.has_value() == several.has_value())
                field.refuse(one ? "has both program and variants; give one" : "needs program or variants");
            if (one) entry.programs = {path(*one)};
            entry.has_variants = several.has_value();
            if (several)
                for (const Field& variant : several->list(1, kMostPrograms))
                    entry.programs.push_back(path(variant));
            entry.times = read_play_times(object);
        });
        return entry;
    }

    std::string path(const Field& field) const {
        return field.read([&](const std::string& text) { return read_path((m_folder / text).string()); });
    }

    std::filesystem::path m_folder;
};

} // namespace

SignDescription read_sign(const std::string& path) {
    const nlohmann::json json = read_json(path);
    return SignReader(std::filesystem::path(path).parent_path()).sign(Field(json, ""));
}

} // namespace qm::sign
