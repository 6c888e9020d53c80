#include "simulator/playback/ReceivedArea.h"

namespace qm::sim {
namespace {

constexpr std::uint8_t kDynamicAreaType = 0x10;
constexpr std::uint32_t kPageRecord = 26; // a page record without its own length field

// What is found out while the descriptions are read, in their order.
struct Parse {
    std::vector<ReceivedArea> areas;
    std::vector<Extent> extents; // one for every page of every area
    ErrorValue error = ErrorValue::malformed;
};

// AreaId 1, RunMode 1, Timeout 2, RelateAllPro 1, RelateProNum 2, the program numbers 2 each, ImmePlay 1,
// Reserved 4. The numbers are there only when the area is not shown with every program.
bool read_schedule(ByteReader& reader, Parse& parse, ReceivedArea& area) {
    area.id = reader.u8();
    area.run_mode = reader.u8();
    area.timeout = reader.u16();
    const std::uint8_t with_all = reader.u8();
    const std::size_t programs = reader.u16();
    area.with_all_programs = with_all == 1;
    if (with_all == 0)
        for (std::size_t i = 0; i < programs && reader.ok(); ++i) area.programs.push_back(reader.u16());
    area.play_at_once = reader.u8() != 0;
    reader.skip(4);
    if (reader.ok() && with_all > 1) parse.error = ErrorValue::bad_value;
    return reader.ok() && with_all <= 1;
}

// AreaType 1, AreaX, AreaY, AreaWidth, AreaHeight 2 each, AreaFFlag 1. Dynamic areas have no border.
bool read_place(ByteReader& reader, Parse& parse, ReceivedArea& area) {
    const std::uint8_t type = reader.u8();
    area.rect = {reader.u16(), reader.u16(), reader.u16(), reader.u16()};
    const std::uint8_t border = reader.u8();
    if (!reader.ok()) return false;
    parse.error = ErrorValue::bad_value;
    if (type != kDynamicAreaType || border != 0 || area.rect.width == 0 || area.rect.height == 0)
        return false;
    parse.error = ErrorValue::malformed;
    return true;
}

// BackGroundFlag, Transparency, AreaEqual 1 each.
bool read_blending(ByteReader& reader, ReceivedArea& area) {
    area.background_flag = reader.u8();
    area.transparency = reader.u8();
    area.equal = reader.u8();
    return reader.ok();
}

// PageDataLen 4, the 9 bytes that every page header begins with, Reserved 9, Dataoffset 4, DataLen 4.
bool read_page(ByteReader& reader, Parse& parse, ReceivedArea& area) {
    const std::uint32_t length = reader.u32();
    Page& page = area.pages.emplace_back();
    read_page_head(reader, page);
    reader.skip(9);
    parse.extents.push_back({reader.u32(), reader.u32()});
    return reader.ok() && length == kPageRecord;
}

// Reserved5, PageNum 2, the page records.
bool read_pages(ByteReader& reader, Parse& parse, ReceivedArea& area) {
    reader.skip(5);
    const std::size_t count = reader.u16();
    for (std::size_t i = 0; i < count; ++i)
        if (!read_page(reader, parse, area)) return false;
    return reader.ok();
}

// AreaDataLen 4, then that many bytes of description, no more and no fewer.
bool read_area(ByteReader& reader, Parse& parse) {
    ByteReader description(reader.bytes(reader.u32()));
    ReceivedArea& area = parse.areas.emplace_back();
    return reader.ok() && read_schedule(description, parse, area) && read_place(description, parse, area) &&
           read_blending(description, area) && read_sound(description, area.sound) &&
           read_pages(description, parse, area) && description.left() == 0;
}

// Hands every page its part of the block, which holds the pages and nothing else.
bool share_out(Bytes block, Parse& parse) {
    std::size_t total = 0;
    for (const Extent& extent : parse.extents) {
        if (extent.offset + extent.length > block.size()) return false;
        total += extent.length;
    }
    if (total != block.size()) return false;
    hand_out(block, parse.extents, parse.areas);
    return true;
}

// PageNum 2; for each page PageDataLen 4, the 9 bytes that every page header begins with, Reserved 4, and the
// pixels, which PageDataLen counts from the page header on.
bool read_pages_5(ByteReader& reader, ReceivedArea& area) {
    constexpr std::uint32_t kProperties = 13;
    const std::size_t count = reader.u16();
    for (std::size_t i = 0; i < count && reader.ok(); ++i) {
        const std::uint32_t length = reader.u32();
        if (length < kProperties) return false;
        Page& page = area.pages.emplace_back();
        read_page_head(reader, page);
        reader.skip(4);
        const Bytes pixels = reader.bytes(length - kProperties);
        page.pixels.assign(pixels.begin(), pixels.end());
    }
    return reader.ok();
}

} // namespace

ParsedAreas parse_dynamic_area_5(Bytes content) {
    ByteReader reader(content);
    Parse parse;
    ByteReader description(reader.bytes(reader.u32()));
    ReceivedArea& area = parse.areas.emplace_back();
    const bool read = reader.ok() && reader.left() == 0 && read_schedule(description, parse, area) &&
                      read_place(description, parse, area) && read_pages_5(description, area) &&
                      description.left() == 0;
    if (!read) return parse.error;
    return std::move(parse.areas);
}

ParsedAreas parse_dynamic_areas(Bytes content) {
    ByteReader reader(content);
    Parse parse;
    const std::size_t count = reader.u16();
    if (count == 0) return parse.error;
    for (std::size_t i = 0; i < count; ++i)
        if (!read_area(reader, parse)) return parse.error;
    if (!share_out(reader.rest(), parse)) return parse.error;
    return std::move(parse.areas);
}

} // namespace qm::sim
