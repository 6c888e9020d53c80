// Program and data files taken apart again. Every length, position and CRC is checked; a file that is wrong
// anywhere throws std::runtime_error.
#pragma once

#include "support/bytes.h"

#include <functional>
#include <optional>
#include <string>

namespace qm::test {

struct ParsedPage {
    Ouint8 style = 0, displayMode = 0, clearMode = 0, speed = 0;
    Ouint16 stayTime = 0;
    Ouint8 repeatTime = 0;
    Ouint16 validLen = 0;
    Ouint8 frameRate = 0, backNotValid = 0; // generation 6
    ByteBuffer pixels;
};

struct ParsedUnit {
    Ouint8 kind = 0;
    Ouint16 x = 0, y = 0;
    Ouint8 set = 0;
    ByteBuffer setting; // its time-setting record, whole
};

struct ParsedGlyphSet {
    Ouint8 count = 0;
    Ouint16 width = 0, height = 0;
    std::vector<ByteBuffer> glyphs;
};

struct ParsedClock {
    Ouint8 kind = 0;     // 0 digital, 1 analog
    ByteBuffer extended; // header of generation 6, 27 bytes
    std::vector<ParsedUnit> units;
    std::vector<ParsedGlyphSet> sets;
    ByteBuffer setting; // of the hands
    Ouint8 style = 0;
    ByteBuffer page;
};

struct ParsedArea {
    Ouint32 length = 0; // as written before the record
    Ouint8 type = 0;
    Ouint16 x = 0, y = 0, width = 0, height = 0;
    std::optional<ByteBuffer> border; // its header; the pixels follow in borderPixels
    ByteBuffer borderPixels;
    Ouint8 backGroundFlag = 0, transparency = 0, areaEqual = 0; // generation 6
    std::optional<ByteBuffer> sound;                            // 17-byte header
    std::string soundText;
    std::vector<ParsedPage> pages;
    std::optional<ParsedClock> clock;
};

struct ParsedProgram {
    ByteBuffer header;
    std::vector<ByteBuffer> periods; // 6 bytes each
    std::optional<ByteBuffer> frame; // header of the screen border
    ByteBuffer framePixels;
    bool background = false;
    int areaCount = 0; // as written
    std::vector<ParsedArea> areas;
    Ouint32 crc = 0;
};

// What the file itself does not say: how long the pixel data of its borders is, in the order in which they
// come, how many play periods there are, and how long time-setting records are.
struct NotInTheFile {
    std::vector<std::size_t> borderPixels{};
    std::size_t periods = 0;
    std::size_t timeSetting = 2;
    std::size_t clockPage = 0; // of a digital clock of generation 5 without glyphs
    // A glyph of that size; planes of 8 pixels for two colours unless said otherwise.
    std::function<std::size_t(int, int)> glyph = [](int width, int height) {
        return static_cast<std::size_t>((width + 7) / 8 * height * 2);
    };
};

ParsedProgram parse_g5(Bytes file, NotInTheFile known = {});
ParsedProgram parse_g6(Bytes file, Bytes data, const std::string& dataName, NotInTheFile known = {});

} // namespace qm::test
