#include "simulator/playback/program_reading.h"

#include <algorithm>

namespace qm::sim {
namespace {

bool planar(PixelFormat format) { return format.color != ScreenColor::full; }

int pixels_a_unit(PixelFormat format) {
    if (!planar(format)) return 1;
    return format.mode == TransferMode::planes32 ? 32 : 8;
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
    const int group = pixels_a_unit(format), longest = static_cast<int>(length / row) * group;
    const bool stated = border.unit_length > longest - group && border.unit_length <= longest &&
                        border.unit_length != thickness; // some write the thickness there
    border.length = stated ? border.unit_length : longest;
    return true;
}

bool size_pattern(BorderPattern& border, PixelFormat format, std::size_t length) {
    return size_pattern(border, format, length, border.unit_width) || size_pattern(border, format, length, 1);
}

} // namespace qm::sim
