#include "parser.h"

#include <stdexcept>

namespace qm::test {
namespace {

void require(bool condition, const std::string& what) {
    if (!condition) throw std::runtime_error(what);
}

Ouint32 crc32(Bytes bytes) {
    Ouint32 crc = 0xFFFFFFFF;
    for (const Ouint8 b : bytes) {
        crc ^= b;
        for (int bit = 0; bit < 8; ++bit) crc = crc & 1 ? crc >> 1 ^ 0xEDB88320 : crc >> 1;
    }
    return ~crc;
}

// The file without its CRC, which must be right.
Bytes checked(Bytes file, Ouint32* crc = nullptr) {
    require(file.size() >= 4, "shorter than a CRC");
    ByteReader tail(file.last(4));
    const Ouint32 stated = tail.u32();
    require(stated == crc32(file.first(file.size() - 4)), "wrong CRC");
    if (crc) *crc = stated;
    return file.first(file.size() - 4);
}

ByteBuffer owned(Bytes bytes) { return {bytes.begin(), bytes.end()}; }

class Parser {
  public:
    Parser(Bytes file, NotInTheFile known, bool g6)
        : m_known(std::move(known)), m_g6(g6), m_in(checked(file, &m_out.crc)) {}

    // The pixels of generation 6.
    void data(Bytes file, const std::string& name) {
        m_data = checked(file);
        ByteReader head(m_data);
        require(head.u8() == 9, "type of the data file");
        require(owned(head.bytes(4)) == ByteBuffer(name.begin(), name.end()), "name of the data file");
        require(owned(head.bytes(8)) == ByteBuffer(8) && head.ok(), "zeros of the data file");
        m_nextPixel = 14;
    }

    ParsedProgram run() {
        m_out.header = owned(m_in.bytes(m_g6 ? 29 : 19));
        const Ouint8 periods = m_in.u8();
        require(periods <= 1, "play-period flag");
        for (std::size_t i = 0; periods && i < m_known.periods; ++i)
            m_out.periods.push_back(owned(m_in.bytes(6)));
        m_out.frame = border(m_g6 ? 14 : 7, m_out.framePixels);
        const Ouint8 background = m_in.u8();
        require(background <= (m_g6 ? 1 : 0), "background flag");
        m_out.background = background;
        m_out.areaCount = m_in.u8();
        while (m_in.left() > 0) m_out.areas.push_back(area());
        require(m_in.ok(), "cut short");
        if (m_g6) require(m_nextPixel == m_data.size() + 1, "pixel data that belongs to no page");
        return std::move(m_out);
    }

  private:
    // A border header begins with a flag of 1; a single 0 says that there is none.
    std::optional<ByteBuffer> border(std::size_t headerSize, ByteBuffer& pixels) {
        if (m_in.rest().empty() || m_in.rest()[0] == 0) {
            require(m_in.u8() == 0, "border flag");
            return std::nullopt;
        }
        require(m_in.rest()[0] == 1 && m_border < m_known.borderPixels.size(), "unexpected border");
        const ByteBuffer header = owned(m_in.bytes(headerSize));
        pixels = owned(m_in.bytes(m_known.borderPixels[m_border++]));
        return header;
    }

    ParsedArea area() {
        ParsedArea area;
        area.length = m_in.u32();
        const std::size_t before = m_in.left();
        area.type = m_in.u8();
        area.x = m_in.u16();
        area.y = m_in.u16();
        area.width = m_in.u16();
        area.height = m_in.u16();
        if (area.type == 2) {
            area.clock = clock();
            require(m_in.ok() && before - m_in.left() == area.length, "length of a time area");
            return area;
        }
        area.border = border(7, area.borderPixels);
        if (m_g6) second_header(area);
        for (Ouint16 left = m_in.u16(); left > 0 && m_in.ok(); --left)
            area.pages.push_back(m_g6 ? page_g6() : page_g5());
        require(m_in.ok() && before - m_in.left() == area.length, "length of an area");
        return area;
    }

    void second_header(ParsedArea& area) {
        area.backGroundFlag = m_in.u8();
        area.transparency = m_in.u8();
        area.areaEqual = m_in.u8();
        const Ouint8 flag = m_in.u8();
        require(flag <= 1, "sound flag");
        if (flag) {
            ByteBuffer header{1};
            const Bytes rest = m_in.bytes(16);
            header.insert(header.end(), rest.begin(), rest.end());
            area.sound = header;
            const Bytes text = m_in.bytes(m_in.u32());
            area.soundText.assign(text.begin(), text.end());
        }
        require(owned(m_in.bytes(5)) == ByteBuffer(5), "five zeros");
    }

    // Everything behind the area header. Generation 5 has the pixels behind the record's other bytes.
    ParsedClock clock() {
        ParsedClock clock;
        require(m_in.u8() == 0, "border of a time area");
        if (m_g6) {
            clock.extended = owned(m_in.bytes(27));
            require(owned(m_in.bytes(6)) == ByteBuffer(6), "zeros of a time area");
            require(m_in.u16() == 1, "page count of a time area");
            clock.page = page_g6().pixels;
        }
        clock.kind = m_in.u8();
        const std::size_t units = m_in.u8(), sets = m_in.u8();
        if (clock.kind == 0)
            digital(clock, units, sets);
        else
            analog(clock, units, sets);
        return clock;
    }

    void digital(ParsedClock& clock, std::size_t units, std::size_t sets) {
        for (std::size_t i = 0; i < units; ++i) {
            ParsedUnit& unit = clock.units.emplace_back();
            unit.kind = m_in.u8();
            unit.x = m_in.u16();
            unit.y = m_in.u16();
            unit.set = m_in.u8();
            require(unit.set < sets, "glyph set of a unit");
            unit.setting = owned(m_in.bytes(2));
        }
        for (ParsedUnit& unit : clock.units)
            for (const Ouint8 byte : m_in.bytes(m_known.timeSetting - 2)) unit.setting.push_back(byte);
        std::vector<std::size_t> positions;
        for (std::size_t i = 0; i < sets; ++i) {
            ParsedGlyphSet& set = clock.sets.emplace_back();
            set.count = m_in.u8();
            set.width = m_in.u16();
            set.height = m_in.u16();
            positions.push_back(m_in.u32());
        }
        glyphs(clock, positions);
    }

    // Glyphs and sets follow one another behind the page.
    void glyphs(ParsedClock& clock, const std::vector<std::size_t>& positions) {
        if (!m_g6) clock.page = owned(m_in.bytes(positions.empty() ? m_known.clockPage : positions.front()));
        std::size_t next = m_g6 ? m_nextPixel : clock.page.size();
        for (std::size_t i = 0; i < positions.size(); ++i) {
            ParsedGlyphSet& set = clock.sets[i];
            require(positions[i] == next, "position of a glyph set");
            const std::size_t length = m_known.glyph(set.width, set.height);
            for (int glyph = 0; glyph < set.count; ++glyph) {
                const Bytes source = m_g6 ? m_data.subspan(std::min(next - 1, m_data.size())) : m_in.rest();
                require(length <= source.size(), "pixels of a glyph");
                set.glyphs.push_back(owned(source.first(length)));
                if (!m_g6) m_in.skip(length);
                next += length;
            }
        }
        if (m_g6) m_nextPixel = next;
    }

    void analog(ParsedClock& clock, std::size_t units, std::size_t sets) {
        require(units == 1 && sets == 0, "units of an analog clock");
        clock.setting = owned(m_in.bytes(m_g6 ? m_in.u8() : 14));
        clock.style = m_in.u8();
        require(m_in.u8() == 0, "reserved byte of an analog clock");
        if (!m_g6) clock.page = owned(m_in.bytes(m_in.u32()));
    }

    ParsedPage page_start() {
        ParsedPage page;
        page.style = m_in.u8();
        page.displayMode = m_in.u8();
        page.clearMode = m_in.u8();
        page.speed = m_in.u8();
        page.stayTime = m_in.u16();
        page.repeatTime = m_in.u8();
        page.validLen = m_in.u16();
        return page;
    }

    ParsedPage page_g5() {
        const Ouint32 length = m_in.u32();
        require(length >= 13, "length of a page");
        ParsedPage page = page_start();
        require(owned(m_in.bytes(4)) == ByteBuffer(4), "reserved bytes of a page");
        page.pixels = owned(m_in.bytes(length - 13));
        return page;
    }

    ParsedPage page_g6() {
        require(m_in.u32() == 26, "length of a page record");
        ParsedPage page = page_start();
        require(m_in.u8() == 0, "reserved byte of a page");
        page.frameRate = m_in.u8();
        require(owned(m_in.bytes(6)) == ByteBuffer(6), "reserved bytes of a page");
        page.backNotValid = m_in.u8();
        const Ouint32 position = m_in.u32(), length = m_in.u32();
        require(position == m_nextPixel && position - 1 + length <= m_data.size(),
                "position of a page's pixels");
        page.pixels = owned(m_data.subspan(position - 1, length));
        m_nextPixel += length;
        return page;
    }

    NotInTheFile m_known;
    bool m_g6;
    ParsedProgram m_out;
    ByteReader m_in;
    Bytes m_data;
    std::size_t m_nextPixel = 0; // counted from 1
    std::size_t m_border = 0;
};

} // namespace

ParsedProgram parse_g5(Bytes file, NotInTheFile known) { return Parser(file, std::move(known), false).run(); }

ParsedProgram parse_g6(Bytes file, Bytes data, const std::string& dataName, NotInTheFile known) {
    Parser parser(file, std::move(known), true);
    parser.data(data, dataName);
    return parser.run();
}

} // namespace qm::test
