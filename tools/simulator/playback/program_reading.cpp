#include "simulator/playback/program_reading.h"

#include <algorithm>

namespace qm::sim {
namespace {

constexpr std::uint32_t kPageHeader5 = 13; // bytes
constexpr std::uint32_t kPageRecord6 = 26; // without its own length field

// The pixels of a data file follow one another. Offsets are counted from 1.
bool read_extent(Cursor& in, Extent& extent, Attempt& attempt) {
    const std::size_t next = attempt.data_used + 1;
    const std::uint32_t offset = in.u32();
    if (!in.expect(offset == next, "data offset of a page",
                   "the end of the pixels before it, counted from 1,", offset))
        return false;
    extent = {offset - 1U, in.u32()};
    const bool inside = extent.offset <= in.reading().data.size() &&
                        extent.length <= in.reading().data.size() - extent.offset;
    if (!in.expect(inside, "data length of a page", "pixels inside the data file", extent.length))
        return false;
    attempt.data_used = extent.offset + extent.length;
    return true;
}

} // namespace

std::string Refusal::sentence() const {
    std::string where = "byte " + std::to_string(at) + ", " + field;
    if (!expected) return where + ": the record is cut short";
    return where + ": " + expected + " expected, " + std::to_string(found) + " found";
}

bool Cursor::expect(bool holds, const char* field, const char* expected, std::uint64_t found) {
    if (!holds && m_field >= m_reading->refusal.at) m_reading->refusal = {m_field, field, expected, found};
    return holds;
}

bool Cursor::whole(const char* record) { return m_reader.ok() || expect(false, record, nullptr); }

bool Cursor::zeros(std::size_t count, const char* field) {
    const Bytes taken = bytes(count);
    const auto other = std::find_if(taken.begin(), taken.end(), [](std::uint8_t byte) { return byte != 0; });
    return whole(field) && (other == taken.end() || expect(false, field, "0", *other));
}

bool Cursor::spend(std::size_t records) {
    const bool affordable = records <= m_reading->records_left;
    m_reading->records_left = affordable ? m_reading->records_left - static_cast<unsigned>(records) : 0;
    return affordable;
}

std::size_t border_unit(PixelFormat format) { return pixel_data_length(format, {0, 0, 1, 1}); }

bool size_pattern(BorderPattern& border, PixelFormat format, std::size_t length, int thickness) {
    const std::size_t unit = border_unit(format);
    border.thickness = thickness;
    if (unit == 0) return length == 0 && thickness > 0;
    const std::size_t row = unit * static_cast<std::size_t>(thickness);
    if (thickness < 1 || length == 0 || length % row != 0) return false;
    const int group = static_cast<int>(group_of(format)), longest = static_cast<int>(length / row) * group;
    const bool stated = border.unit_length > longest - group && border.unit_length <= longest &&
                        border.unit_length != thickness; // some write the thickness there
    border.length = stated ? border.unit_length : longest;
    return true;
}

bool size_pattern(BorderPattern& border, PixelFormat format, std::size_t length) {
    return size_pattern(border, format, length, border.unit_width) || size_pattern(border, format, length, 1);
}

bool read_page_5(Cursor& in, Page& page, Extent& extent) {
    const std::uint32_t length = in.u32();
    if (!in.expect(length >= kPageHeader5 && length <= in.left(), "page length",
                   "13 or more, inside the area", length))
        return false;
    read_page_head(in.mark(), page);
    if (!in.zeros(4, "reserved bytes of a page header")) return false;
    extent = {in.position(), length - kPageHeader5};
    in.skip(extent.length);
    return true;
}

bool read_page_6(Cursor& in, Page& page, Extent& extent, Attempt& attempt) {
    const std::uint32_t length = in.u32();
    if (!in.whole("page record") || !in.expect(length == kPageRecord6, "page record length", "26", length))
        return false;
    read_page_head(in.mark(), page);
    if (!in.zeros(1, "reserved byte of a page header")) return false;
    in.skip(1);
    if (!in.zeros(6, "reserved bytes of a page header")) return false;
    in.skip(1);
    return read_extent(in, extent, attempt) && in.whole("page record");
}

} // namespace qm::sim
