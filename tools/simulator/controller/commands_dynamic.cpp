// Dynamic areas and speech, group 0xA7.
#include "simulator/controller/commands.h"

#include <algorithm>

namespace qm::sim {
namespace {

constexpr std::size_t kAnyLength = SIZE_MAX;

// Bytes for the pages of all areas. One that fills the screen can take the place of another.
std::size_t pixel_memory(const Model& model) { return (std::size_t{64} << 20U) + 2 * model.page(); }

std::size_t pixel_bytes(const ReceivedArea& area) {
    std::size_t bytes = 0;
    for (const Page& page : area.pages) bytes += page.pixels.size();
    return bytes;
}

bool fits_rectangle(PixelFormat format, const ReceivedArea& area) {
    const std::size_t expected = pixel_data_length(format, area.rect);
    return std::all_of(area.pages.begin(), area.pages.end(),
                       [&](const Page& page) { return page.pixels.size() == expected; });
}

// An area that is sent again takes the place of its former self, in front of all others. One that is to
// interrupt nothing waits for the next program, unless it was on the screen already.
void put(State& state, ReceivedArea area, Now now) {
    bool known = false;
    std::erase_if(state.areas, [&](const PlayedArea& played) {
        if (played.area.id != area.id) return false;
        known = played.since <= now.up;
        return true;
    });
    const bool at_once = area.play_at_once || known;
    const Milliseconds since =
        at_once ? now.up : state.programs.end_of_turn(moment_of(state, now)).value_or(now.up);
    state.areas.emplace_back(std::move(area), state.model.screen.format, since);
}

std::string summary_of(const ReceivedArea& area) {
    const auto number = [](auto value) { return std::to_string(value); };
    const std::size_t pages = area.pages.size();
    return "area " + number(area.id) + " at " + number(area.rect.x) + "," + number(area.rect.y) + " size " +
           number(area.rect.width) + "x" + number(area.rect.height) + " with " + number(pages) +
           (pages == 1 ? " page" : " pages") + (area.sound ? " and sound" : "");
}

std::string summary_of(const std::vector<ReceivedArea>& areas) {
    constexpr std::size_t kListed = 8;
    std::string summary;
    for (std::size_t i = 0; i < areas.size() && i < kListed; ++i)
        summary += (i ? ", " : "") + summary_of(areas[i]);
    if (areas.size() > kListed) summary += ", " + std::to_string(areas.size() - kListed) + " more";
    return summary;
}

ParsedAreas parse(Generation generation, Bytes payload) {
    const bool five = generation == Generation::five;
    ParsedAreas areas = five ? parse_dynamic_area_5(payload) : parse_dynamic_areas(payload);
    if (!std::holds_alternative<ErrorValue>(areas)) return areas;
    const ParsedAreas foreign = five ? parse_dynamic_areas(payload) : parse_dynamic_area_5(payload);
    if (!std::holds_alternative<ErrorValue>(foreign)) return ErrorValue::other_generation;
    return areas;
}

Outcome update_areas(State& state, Bytes payload, Now now) {
    auto parsed = parse(generation_of(state.model.type), payload);
    if (const auto* error = std::get_if<ErrorValue>(&parsed)) return {*error, {}};
    auto& areas = std::get<std::vector<ReceivedArea>>(parsed);
    std::string summary = summary_of(areas);

    std::size_t bytes = 0;
    for (const ReceivedArea& area : areas) {
        if (!fits_rectangle(state.model.screen.format, area)) return {ErrorValue::bad_pixel_data, summary};
        bytes += pixel_bytes(area);
    }
    // The old pages are given up once the new ones are in: there must be room for both.
    for (const PlayedArea& played : state.areas) bytes += pixel_bytes(played.area);
    if (bytes > pixel_memory(state.model)) return {ErrorValue::no_memory, summary};

    for (ReceivedArea& area : areas) put(state, std::move(area), now);
    ++state.dynamic_version;
    return {Ack{}, summary, true};
}

// DeleteAreaNum 1, then that many numbers of areas; 0xFF and none for all. Areas that are not there are no
// matter.
Outcome delete_areas(State& state, Bytes payload, Now) {
    constexpr std::uint8_t kAll = 0xFF, kMost = 0x7F;
    const std::uint8_t count = payload.front();
    const Bytes ids = payload.subspan(1);
    if (count > kMost && count != kAll) return refuse(ErrorValue::bad_value);
    if (ids.size() != (count == kAll ? 0 : count)) return refuse(ErrorValue::malformed);
    const std::size_t deleted = std::erase_if(state.areas, [&](const PlayedArea& played) {
        return count == kAll || std::find(ids.begin(), ids.end(), played.area.id) != ids.end();
    });
    if (deleted) ++state.dynamic_version;
    return {Ack{}, std::to_string(deleted) + " deleted", deleted != 0};
}

Outcome keep_voices(State& state, ParsedVoices parsed) {
    if (generation_of(state.model.type) == Generation::five) return refuse(ErrorValue::unknown_command);
    if (const auto* error = std::get_if<ErrorValue>(&parsed)) return refuse(*error);
    auto& voices = std::get<std::vector<Voice>>(parsed);
    const std::string summary = std::to_string(voices.size()) + (voices.size() == 1 ? " text" : " texts");
    if (!state.voices.add(std::move(voices))) return {ErrorValue::no_memory, summary};
    ++state.dynamic_version;
    return {Ack{}, summary};
}

Outcome update_sounds(State& state, Bytes payload, Now) {
    return keep_voices(state, parse_voice_update(payload));
}

Outcome insert_sound(State& state, Bytes payload, Now) {
    return keep_voices(state, parse_voice_insertion(payload));
}

constexpr Command kDynamicCommands[] = {
    {kDynamicAreaGroup, 0, "dynamic areas", 2, kAnyLength, update_areas},
    {kDynamicAreaGroup, 1, "delete dynamic areas", 1, kAnyLength, delete_areas},
    {kDynamicAreaGroup, 2, "update sounds", 2, kAnyLength, update_sounds},
    {kDynamicAreaGroup, 7, "insert a sound", 9, kAnyLength, insert_sound},
};

} // namespace

std::span<const Command> dynamic_area_commands() { return kDynamicCommands; }

} // namespace qm::sim
