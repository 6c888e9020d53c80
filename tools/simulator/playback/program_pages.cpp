#include "simulator/playback/program_pages.h"

namespace qm::sim {
namespace {

constexpr std::uint32_t kPageHeader5 = 13; // bytes
constexpr std::uint32_t kPageRecord6 = 26; // without its own length field

// The pixels of a data file follow one another. Offsets are counted from 1.
bool read_extent(Cursor& in, const Reading& reading, Extent& extent, Attempt& attempt) {
    const std::size_t next = attempt.data_used + 1;
    const std::uint32_t offset = in.u32();
    if (!in.expect(offset == next, "data offset of a page",
                   "the end of the pixels before it, counted from 1,", offset))
        return false;
    extent = {offset - 1U, in.u32()};
    const bool inside =
        extent.offset <= reading.data.size() && extent.length <= reading.data.size() - extent.offset;
    if (!in.expect(inside, "data length of a page", "pixels inside the data file", extent.length))
        return false;
    attempt.data_used = extent.offset + extent.length;
    return true;
}

} // namespace

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

bool read_page_6(Cursor& in, const Reading& reading, Page& page, Extent& extent, Attempt& attempt) {
    const std::uint32_t length = in.u32();
    if (!in.whole("page record") || !in.expect(length == kPageRecord6, "page record length", "26", length))
        return false;
    read_page_head(in.mark(), page);
    if (!in.zeros(1, "reserved byte of a page header")) return false;
    in.skip(1);
    if (!in.zeros(6, "reserved bytes of a page header")) return false;
    in.skip(1);
    return read_extent(in, reading, extent, attempt) && in.whole("page record");
}

} // namespace qm::sim
