// A page of an area, in a program or sent by itself.
#pragma once

#include "support/bytes.h"

#include <cstdint>

namespace qm::sim {

// The first fields in the order of the record.
struct Page {
    std::uint8_t style = 0, display_mode = 0, clear_mode = 0, speed = 0;
    std::uint16_t stay_time = 0;
    std::uint8_t repeat_time = 0;
    std::uint16_t valid_len = 0;
    ByteBuffer pixels{}; // in the controller's own layout
};

// Where the pixels of a page lie in what was sent.
struct Extent {
    std::size_t offset = 0, length = 0;
};

// Gives the pages of the areas their pixels, each from its extent.
template <class Area>
void hand_out(Bytes source, const std::vector<Extent>& extents, std::vector<Area>& areas) {
    auto extent = extents.cbegin();
    for (Area& area : areas)
        for (Page& page : area.pages) {
            const Bytes pixels = source.subspan(extent->offset, extent->length);
            page.pixels.assign(pixels.begin(), pixels.end());
            ++extent;
        }
}

// PageStyle, DisplayMode, ClearMode, Speed 1 each, StayTime 2, RepeatTime 1, ValidLen 2: the beginning of
// every page header.
inline void read_page_head(ByteReader& reader, Page& page) {
    page = {reader.u8(), reader.u8(), reader.u8(), reader.u8(), reader.u16(), reader.u8(), reader.u16()};
}

} // namespace qm::sim
