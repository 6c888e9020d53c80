// Dynamic areas, group 0xA7.
#include "simulator/commands.h"

#include <algorithm>

namespace qm::sim {
namespace {

constexpr std::size_t kAnyLength = SIZE_MAX;
constexpr std::size_t kPixelMemory = std::size_t{64} << 20U; // bytes for the pages of all areas

std::size_t pixel_bytes(const DynamicArea& area) {
    std::size_t bytes = 0;
    for (const Page& page : area.pages) bytes += page.pixels.size();
    return bytes;
}

bool fits_rectangle(PixelFormat format, const DynamicArea& area) {
    const std::size_t expected = pixel_data_length(format, area.rect);
    return std::all_of(area.pages.begin(), area.pages.end(),
                       [&](const Page& page) { return page.pixels.size() == expected; });
}

// An area that is sent again takes the place of its former self, in front of all others.
void put(std::vector<PlayedArea>& areas, DynamicArea area, Time now) {
    std::erase_if(areas, [&](const PlayedArea& played) { return played.area.id == area.id; });
    areas.push_back({std::move(area), now});
}

std::string words_for(const DynamicArea& area) {
    const auto number = [](auto value) { return std::to_string(value); };
    const std::size_t pages = area.pages.size();
    return "area " + number(area.id) + " at " + number(area.rect.x) + "," + number(area.rect.y) + " size " +
           number(area.rect.width) + "x" + number(area.rect.height) + " with " + number(pages) +
           (pages == 1 ? " page" : " pages") + (area.sound ? " and sound" : "");
}

std::string words_for(const std::vector<DynamicArea>& areas) {
    constexpr std::size_t kListed = 8;
    std::string words;
    for (std::size_t i = 0; i < areas.size() && i < kListed; ++i)
        words += (i ? ", " : "") + words_for(areas[i]);
    if (areas.size() > kListed) words += ", " + std::to_string(areas.size() - kListed) + " more";
    return words;
}

Outcome update_areas(State& state, Bytes payload, Moment now) {
    auto parsed = parse_dynamic_areas(payload);
    if (const auto* error = std::get_if<ErrorValue>(&parsed)) return {*error, {}};
    auto& areas = std::get<std::vector<DynamicArea>>(parsed);
    std::string words = words_for(areas);

    std::size_t bytes = 0;
    for (const DynamicArea& area : areas) {
        if (!fits_rectangle(state.model.format, area)) return {ErrorValue::bad_pixel_data, words};
        bytes += pixel_bytes(area);
    }
    // The old pages are given up once the new ones are in: there must be room for both.
    for (const PlayedArea& played : state.areas) bytes += pixel_bytes(played.area);
    if (bytes > kPixelMemory) return {ErrorValue::no_memory, words};

    for (DynamicArea& area : areas) put(state.areas, std::move(area), now.up);
    return {Ack{}, words, true};
}

constexpr Command kCommands[] = {
    {kDynamicAreaGroup, 0, "dynamic areas", 2, kAnyLength, update_areas},
};

} // namespace

std::span<const Command> dynamic_area_commands() { return kCommands; }

} // namespace qm::sim
