#include "simulator/playback/program_areas.h"

#include "simulator/playback/time_areas.h"

#include <algorithm>

namespace qm::sim {
namespace {

constexpr std::size_t kBytesARecord = 256; // that may be copied at the price of a record

// AreaType 1, AreaX, AreaY, AreaWidth, AreaHeight 2 each.
bool read_place(Cursor& in, ProgramArea& area) {
    const std::uint8_t type = in.u8();
    area.type = static_cast<AreaType>(type);
    const bool known = area.type == AreaType::pictures || area.type == AreaType::time ||
                       (in.six() && area.type == AreaType::background);
    if (!in.expect(known, "area type", in.six() ? "0, 2 or 11" : "0 or 2", type)) return false;
    area.rect = {in.u16(), in.u16(), in.u16(), in.u16()};
    return in.whole("area header");
}

// PageNum 2 and the pages, to the end of the record.
bool read_pages(Cursor& in, ProgramArea& area, Attempt& attempt) {
    const std::size_t count = in.u16();
    if (!in.whole("page count")) return false;
    for (std::size_t i = 0; i < count; ++i) {
        if (!in.spend()) return false;
        Page& page = area.pages.emplace_back();
        Extent& extent = attempt.extents.emplace_back();
        const bool read = in.six() ? read_page_6(in, page, extent, attempt) : read_page_5(in, page, extent);
        if (!read) return false;
        if (!in.expect(page.valid_len <= area.rect.width, "ValidLen of a page", "the area's width or less",
                       page.valid_len))
            return false;
    }
    return in.expect(in.left() == 0, "page count", "pages up to the end of the area", count);
}

// Of generation 6, before the pages: BackGroundFlag, Transparency, AreaEqual 1 each, speech, zero 5.
bool read_second_header(Cursor& in, ProgramArea& area) {
    area.background_flag = in.u8();
    area.transparency = in.u8();
    area.equal = in.u8();
    if (!read_sound(in.mark(), area.sound)) return in.whole("speech");
    if (area.sound && !in.spend(area.sound->text.size() / kBytesARecord)) return false;
    return in.zeros(5, "reserved bytes of an area");
}

// The thickness at which a page of the area takes so many bytes. Pages shrink with every pixel of it, so that
// there is one at most.
int thickness_of(PixelFormat format, const Rect& rect, std::size_t page) {
    for (int t = 1; 2 * t < std::min(rect.width, rect.height); ++t)
        if (pixel_data_length(format, {rect.x + t, rect.y + t, rect.width - 2 * t, rect.height - 2 * t}) ==
            page)
            return t;
    return 0;
}

// Without pages, or without pixels in them, the header tells the thickness.
bool size_border(Cursor& in, ProgramArea& area, std::size_t length, std::span<const Extent> pages) {
    BorderPattern& border = *area.border;
    if (pages.empty() || border_unit(in.format()) == 0) return size_pattern(border, in.format(), length);
    if (!in.spend(static_cast<std::size_t>(area.rect.height) / 32)) return false;
    const std::size_t page = pages.front().length;
    const int thickness = thickness_of(in.format(), area.rect, page);
    return in.expect(thickness > 0, "page length", "the pixels of what an area border leaves", page) &&
           in.expect(size_pattern(border, in.format(), length, thickness), "area border",
                     "whole rows of a pattern", length);
}

// All pages are as large as the drawing rectangle.
bool check_pages(Cursor& in, const ProgramArea& area, std::span<const Extent> pages) {
    const std::size_t length = pixel_data_length(in.format(), area.inside());
    for (const Extent& page : pages)
        if (!in.expect(page.length == length, "length of a page", "the pixels of the drawing rectangle",
                       page.length))
            return false;
    return true;
}

// What follows the border, whose pixels take so many bytes.
bool read_content(Cursor in, ProgramArea& area, std::size_t border, Attempt& attempt) {
    if (!in.spend()) return false;
    const std::size_t first = attempt.extents.size();
    const Bytes pattern = in.bytes(border);
    if (in.six() && !read_second_header(in, area)) return false;
    if (!read_pages(in, area, attempt)) return false;
    const std::span<const Extent> pages(attempt.extents.begin() + static_cast<std::ptrdiff_t>(first),
                                        attempt.extents.end());
    if (area.border && !size_border(in, area, border, pages)) return false;
    if (area.border) area.border->pixels.assign(pattern.begin(), pattern.end());
    return check_pages(in, area, pages);
}

// Takes the content over into the attempt when it parses with a border of this length.
bool try_content(const Cursor& in, const ProgramArea& head, std::size_t border, Attempt& attempt) {
    ProgramArea area = head;
    const std::size_t extents = attempt.extents.size(), used = attempt.data_used;
    if (read_content(in, area, border, attempt)) {
        attempt.areas.push_back(std::move(area));
        return true;
    }
    attempt.extents.resize(extents);
    attempt.data_used = used;
    return false;
}

// AreaFDispStyle, AreaFDispSpeed, AreaFMoveStep, AreaFWidth 1 each, AreaFBackup 2, behind the flag. The
// length of the pixels is not written: it is the one with which the rest of the record parses.
bool read_bordered(Cursor& in, ProgramArea& area, Attempt& attempt) {
    BorderPattern& border = area.border.emplace();
    border.style = in.u8();
    border.speed = in.u8();
    border.move_step = in.u8();
    border.unit_length = in.u8();
    in.skip(2);
    if (!in.whole("area border")) return false;
    const std::size_t unit = border_unit(in.format());
    if (unit == 0) return try_content(in, area, 0, attempt);
    const std::size_t most = std::min(in.left(), kLongestBorder);
    for (std::size_t length = unit; length <= most && in.reading().records_left > 0; length += unit)
        if (try_content(in, area, length, attempt)) return true;
    return false;
}

} // namespace

bool read_area(Cursor in, Attempt& attempt) {
    ProgramArea area;
    if (!in.spend() || !read_place(in, area)) return false;
    if (area.type == AreaType::time) {
        if (!read_time_area(in, area, attempt)) return false;
        attempt.areas.push_back(std::move(area));
        return true;
    }
    const std::uint8_t flag = in.u8();
    if (!in.whole("area border flag") || !in.expect(flag <= 1, "area border flag", "0 or 1", flag))
        return false;
    if (flag == 0) return try_content(in, area, 0, attempt);
    return read_bordered(in, area, attempt);
}

} // namespace qm::sim
