// What the readers of program files share.
#pragma once

#include "simulator/playback/StoredProgram.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace qm::sim {

constexpr std::size_t kLongestBorder = 3 * 255 * 255; // bytes; no pattern is longer

// The complaint of the attempt that came farthest; it is put into words at the end, for most attempts fail.
struct Refusal {
    std::size_t at = 0;
    const char* field = "";
    const char* expected = nullptr;
    std::uint64_t found = 0;

    [[nodiscard]] std::string sentence() const;
};

// What all attempts at a file have in common.
struct Reading {
    Bytes file; // without its CRC
    Bytes data; // of generation 6, without its CRC
    Generation generation = Generation::five;
    PixelFormat format;
    Refusal refusal{};
    // Records that may still be read. A file that is made to be read in too many ways costs no more.
    unsigned records_left = 1'000'000;
};

// One attempt at the areas.
struct Attempt {
    std::vector<ProgramArea> areas;
    std::vector<Extent> extents; // one for every page of every area
    std::size_t data_used = 13;  // bytes of the data file that are accounted for
};

// Takes fields off a part of the program file, and knows where it is.
class Cursor {
  public:
    Cursor(Reading& reading, std::size_t begin, std::size_t end)
        : m_reading(&reading), m_reader(reading.file.subspan(begin, end - begin)), m_end(end) {}

    std::uint8_t u8() { return mark().u8(); }
    std::uint16_t u16() { return mark().u16(); }
    std::uint32_t u32() { return mark().u32(); }
    Bytes bytes(std::size_t count) { return mark().bytes(count); }
    void skip(std::size_t count) { mark().skip(count); }
    // The reader, for functions that read a whole record; complaints name where it began.
    ByteReader& mark() {
        m_field = position();
        return m_reader;
    }

    // The next part of the file, which is skipped.
    Cursor part(std::size_t length) {
        const std::size_t begin = position();
        skip(length);
        return {*m_reading, begin, begin + length};
    }

    [[nodiscard]] Reading& reading() const { return *m_reading; }
    [[nodiscard]] bool six() const { return m_reading->generation == Generation::six; }
    [[nodiscard]] PixelFormat format() const { return m_reading->format; }
    [[nodiscard]] std::size_t position() const { return m_end - m_reader.left(); }
    [[nodiscard]] std::size_t left() const { return m_reader.left(); }

    // Complains about the field taken last unless it holds.
    bool expect(bool holds, const char* field, const char* expected, std::uint64_t found = 0);
    // Complains when fields were taken that are not there.
    bool whole(const char* record);
    // Takes bytes that must be 0.
    bool zeros(std::size_t count, const char* field);
    // Accounts for work; false once there was too much of it.
    bool spend(std::size_t records = 1);

  private:
    Reading* m_reading;
    ByteReader m_reader;
    std::size_t m_end;
    std::size_t m_field = 0;
};

// The smallest step in which border pixels can grow: a group of pixels of every plane, or a pixel.
[[nodiscard]] std::size_t border_unit(PixelFormat format);

// Sets the size of the pattern whose pixels take so many bytes at this thickness; false when none does.
bool size_pattern(BorderPattern& border, PixelFormat format, std::size_t length, int thickness);

// The same when nothing but the header tells the thickness; 1 pixel where that does not fit.
bool size_pattern(BorderPattern& border, PixelFormat format, std::size_t length);

// Generation 5: PageDataLen 4, page header 13 (the last 4 bytes zero), pixels.
bool read_page_5(Cursor& in, Page& page, Extent& extent);

// Generation 6: PageDataLen 4, the 9 common bytes, zero 1, CartoonFrameRate 1, zero 6, BackNotValidFlag 1,
// Dataoffset 4, DataLen 4. The pixels are in the data file.
bool read_page_6(Cursor& in, Page& page, Extent& extent, Attempt& attempt);

} // namespace qm::sim
