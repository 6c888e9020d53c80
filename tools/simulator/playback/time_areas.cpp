#include "simulator/playback/time_areas.h"

namespace qm::sim {
namespace {

constexpr std::size_t kInUnit = 2; // bytes of a time-setting record that stand in the unit itself
constexpr std::size_t kBytesARecord = 256;

// Bytes of the record that says in which colour a unit is shown: colour of 1, 2 or 4 and a mode of 1.
std::size_t setting_length(PixelFormat format) {
    if (format.color != ScreenColor::full) return 2;
    return format.mode == TransferMode::rgb565 ? 3 : 5;
}

// A colour of so many bytes: palette index, 16-bit pixel, 0xBBGGRR.
Rgb read_color(ByteReader& in, std::size_t bytes, PixelFormat format) {
    if (bytes == 1) return shine_of(format.color, in.u8());
    const Bytes color = in.bytes(bytes);
    if (bytes == 4) return color.empty() ? Rgb{} : Rgb{color[0], color[1], color[2]};
    return PixelReader({TransferMode::rgb565, ScreenColor::full}, {0, 0, 1, 1}, color).at(0, 0);
}

// BackGroundFlag 1, TimeMode 1, the start of the battle time 8, StartUpMode 1, Transparency, AreaEqual 1
// each, zero 14; no speech; zero 5.
bool read_extended_header(Cursor& in, ProgramArea& area) {
    area.background_flag = in.u8();
    const std::uint8_t mode = in.u8();
    if (!in.expect(mode <= 1, "time mode", "0 or 1", mode)) return false;
    const Bytes start = in.bytes(kClockRecord);
    if (!in.whole("extended area header")) return false;
    if (mode == 1) {
        area.clock->battle = weekday_time_from(start);
        if (!in.expect(area.clock->battle.has_value(), "start of the battle time", "a moment in BCD"))
            return false;
    }
    in.skip(1);
    area.transparency = in.u8();
    area.equal = in.u8();
    return in.zeros(14, "reserved bytes of the extended area header") &&
           in.zeros(1, "speech of a time area") && in.zeros(5, "reserved bytes of an area");
}

class ClockReader {
  public:
    ClockReader(Cursor& in, ProgramArea& area, Attempt& attempt)
        : m_in(in), m_area(area), m_attempt(attempt), m_six(in.six()) {}

    bool read() {
        m_area.clock.emplace();
        const std::uint8_t border = m_in.u8();
        if (!m_in.expect(border == 0, "border of a time area", "0", border)) return false;
        if (m_six && (!read_extended_header(m_in, m_area) || !read_page_record())) return false;
        const std::uint8_t kind = m_in.u8();
        const std::size_t units = m_in.u8(), sets = m_in.u8();
        if (!m_in.whole("time area") || !m_in.expect(kind <= 1, "kind of a time area", "0 or 1", kind))
            return false;
        return kind == 0 ? read_digital(units, sets) : read_analog(units, sets);
    }

  private:
    // Of generation 6: the page count and the page, as in other areas.
    bool read_page_record() {
        const std::size_t pages = m_in.u16();
        return m_in.expect(pages == 1, "page count", "1 in a time area", pages) &&
               read_page_6(m_in, m_area.pages.emplace_back(), m_attempt.extents.emplace_back(), m_attempt) &&
               check_page(m_attempt.extents.back().length);
    }

    bool check_page(std::size_t length) {
        return m_in.expect(length == page_length(), "length of a page", "the pixels of the area", length);
    }

    [[nodiscard]] std::size_t page_length() const { return pixel_data_length(m_in.format(), m_area.rect); }

    // Of generation 5, where the pixels stand in the program file itself.
    bool read_page_5() {
        const std::size_t length = page_length();
        m_area.pages.emplace_back();
        m_attempt.extents.push_back({m_in.position(), length});
        m_in.skip(length);
        return m_in.whole("page of a time area");
    }

    // Kind 1, x 2, y 2, glyph set 1, the first bytes of the time-setting record.
    bool read_units(std::size_t units) {
        for (std::size_t i = 0; i < units; ++i) {
            UnitPlace& unit = m_digital.units.emplace_back();
            const std::uint8_t kind = m_in.u8();
            if (!m_in.expect(kind <= static_cast<std::uint8_t>(ClockUnit::literal), "kind of a unit",
                             "0 to 10", kind))
                return false;
            unit.unit = static_cast<ClockUnit>(kind);
            unit.x = m_in.u16();
            unit.y = m_in.u16();
            unit.set = m_in.u8();
            const Bytes setting = m_in.bytes(kInUnit);
            m_settings.emplace_back(setting.begin(), setting.end());
        }
        return m_in.whole("units of a time area");
    }

    // The rest of the time-setting records.
    bool read_settings() {
        const std::size_t length = setting_length(m_in.format());
        for (std::size_t i = 0; i < m_settings.size(); ++i) {
            const Bytes rest = m_in.bytes(length - kInUnit);
            m_settings[i].insert(m_settings[i].end(), rest.begin(), rest.end());
            ByteReader setting(m_settings[i]);
            m_digital.units[i].color = read_color(setting, length - 1, m_in.format());
        }
        return m_in.whole("colours of the units");
    }

    // Glyph count 1, cell width 2, cell height 2, position of the first glyph 4: behind what comes before it.
    bool read_sets(std::size_t sets, std::size_t next) {
        for (std::size_t i = 0; i < sets; ++i) {
            GlyphImages& set = m_digital.sets.emplace_back();
            const std::size_t count = m_in.u8();
            set.width = m_in.u16();
            set.height = m_in.u16();
            const std::size_t position = m_in.u32();
            if (!m_in.whole("glyph set") || !m_in.spend(count)) return false;
            if (!m_in.expect(position == next, "position of a glyph set", "the end of the pixels before it",
                             position))
                return false;
            set.glyphs.resize(count);
            next += count * glyph_length(set);
        }
        return true;
    }

    [[nodiscard]] std::size_t glyph_length(const GlyphImages& set) const {
        return pixel_data_length(m_in.format(), {0, 0, set.width, set.height});
    }

    // Every unit finds its glyphs, and its cells lie in the area.
    bool check_units() {
        for (const UnitPlace& unit : m_digital.units) {
            if (!m_in.expect(unit.set < m_digital.sets.size(), "glyph set of a unit",
                             "one of those that follow", unit.set))
                return false;
            const GlyphImages& set = m_digital.sets[unit.set];
            const int right = unit.x + set.width * cells_of(unit.unit), bottom = unit.y + set.height;
            if (!m_in.expect(set.glyphs.size() == static_cast<std::size_t>(glyphs_of(unit.unit)),
                             "glyph set of a unit", "all glyphs that it needs", set.glyphs.size()) ||
                !m_in.expect(right <= m_area.rect.width && bottom <= m_area.rect.height, "place of a unit",
                             "cells inside the area", static_cast<unsigned>(right)))
                return false;
        }
        return true;
    }

    // The glyphs of a set follow one another.
    bool read_glyphs(Bytes pixels) {
        ByteReader in(pixels);
        for (GlyphImages& set : m_digital.sets)
            for (ByteBuffer& glyph : set.glyphs) {
                const Bytes image = in.bytes(glyph_length(set));
                glyph.assign(image.begin(), image.end());
            }
        return m_in.expect(in.ok() && in.left() == 0, "glyphs of a time area", "their pixels, whole",
                           pixels.size()) &&
               m_in.spend(pixels.size() / kBytesARecord);
    }

    [[nodiscard]] std::size_t length_of_glyphs() const {
        std::size_t length = 0;
        for (const GlyphImages& set : m_digital.sets) length += set.glyphs.size() * glyph_length(set);
        return length;
    }

    bool read_digital(std::size_t units, std::size_t sets) {
        const std::size_t first = m_six ? m_attempt.data_used + 1 : page_length();
        if (!read_units(units) || !read_settings() || !read_sets(sets, first) || !check_units()) return false;
        if (m_six) {
            const std::size_t length = length_of_glyphs();
            const std::size_t left = m_in.reading().data.size() - m_attempt.data_used;
            if (!m_in.expect(length <= left, "glyphs of a time area", "pixels inside the data file",
                             length) ||
                !read_glyphs(m_in.reading().data.subspan(m_attempt.data_used, length)))
                return false;
            m_attempt.data_used += length;
        } else if (!read_page_5() || !read_glyphs(m_in.bytes(m_in.left()))) {
            return false;
        }
        m_area.clock->face = std::move(m_digital);
        return ends();
    }

    Hand read_hand(std::size_t color) {
        const int width = m_in.u8(), length = m_in.u8();
        return {width, length, read_color(m_in.mark(), color, m_in.format())};
    }

    // OrignPointX, OrignPointY 2 each, UnitMode 1; of each hand width 1, length 1, colour.
    bool read_hands(AnalogClock& clock, std::size_t length) {
        constexpr std::size_t kWithoutColors = 11;
        const std::size_t color = (length - kWithoutColors) / 3;
        clock.x = m_in.u16();
        clock.y = m_in.u16();
        m_in.skip(1);
        clock.hour = read_hand(color);
        clock.minute = read_hand(color);
        clock.second = read_hand(color);
        return m_in.whole("clock setting");
    }

    // Length of the setting 1 in generation 6; the setting; style 1, zero 1; in generation 5 the length of
    // the page 4 and the page.
    bool read_analog(std::size_t units, std::size_t sets) {
        if (!m_in.expect(units == 1 && sets == 0, "unit count", "1 unit and no glyph set", units))
            return false;
        const std::size_t length = m_six ? m_in.u8() : 14;
        if (!m_in.expect(length == 14 || length == 17 || length == 23, "length of the clock setting",
                         "14, 17 or 23", length))
            return false;
        AnalogClock clock;
        if (!read_hands(clock, length)) return false;
        clock.style = m_in.u8();
        if (!m_in.zeros(1, "reserved byte of a clock")) return false;
        if (!m_six && (!check_page(m_in.u32()) || !read_page_5())) return false;
        m_area.clock->face = clock;
        return ends();
    }

    bool ends() { return m_in.expect(m_in.left() == 0, "time area", "its end", m_in.left()); }

    Cursor& m_in;
    ProgramArea& m_area;
    Attempt& m_attempt;
    bool m_six;
    DigitalClock m_digital;
    std::vector<ByteBuffer> m_settings;
};

} // namespace

bool read_time_area(Cursor& in, ProgramArea& area, Attempt& attempt) {
    return ClockReader(in, area, attempt).read();
}

} // namespace qm::sim
