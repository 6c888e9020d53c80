#include "simulator/playback/program_parser.h"

#include "global.h"
#include "simulator/playback/program_areas.h"

#include <algorithm>

namespace qm::sim {
namespace {

constexpr std::size_t kCrc = 4, kMostPeriods = 8, kPeriod = 6;
constexpr std::size_t kDataHead = 13;
constexpr std::uint8_t kDataType = 9;

std::string text_of(Bytes bytes) { return {bytes.begin(), bytes.end()}; }

CalendarDay read_day(Cursor& in) { return {in.u16(), in.u8(), in.u8()}; }

// FileType 1, ProgramName 4, ProgramStyle, ProgramPriority, ProgramPlayTimes 1 each, ProgramTimeSpan 2; in
// generation 6 SpecialFlag, CommExtendParaLen 1 each, ScheduNum, LoopValue 2 each, Intergrate,
// TimeAttributeNum 1 each, TimeAttribute0Offset 2; ProgramWeek 1, two days of 4 each.
bool read_header(Cursor& in, ProgramHeader& header) {
    in.skip(1);
    header.name = text_of(in.bytes(4));
    header.style = in.u8();
    header.priority = in.u8();
    header.play_times = in.u8();
    header.time_span = in.u16();
    if (in.six()) {
        in.skip(2);
        header.schedule = in.u16();
        in.skip(4);
        header.time_attribute_offset = in.u16();
    }
    header.week = in.u8();
    header.first_day = read_day(in);
    header.last_day = read_day(in);
    return in.whole("program header");
}

struct ClockTime {
    unsigned hour, minute, second;

    [[nodiscard]] std::chrono::seconds of_day() const {
        return std::chrono::hours(hour) + std::chrono::minutes(minute) + std::chrono::seconds(second);
    }
    [[nodiscard]] bool plausible() const {
        return minute < 60 && second < 60 && of_day() <= std::chrono::hours(24);
    }
};

// StartHour, StartMinute, StartSecond, EndHour, EndMinute, EndSecond 1 each. A period of one second is what
// lit pixels of a border look like; it is believed only when nothing else parses.
bool read_period(Cursor& in, bool any, std::vector<PlayPeriod>& periods) {
    const ClockTime first{in.u8(), in.u8(), in.u8()}, last{in.u8(), in.u8(), in.u8()};
    periods.push_back({first.of_day(), last.of_day()});
    return in.whole("play period") &&
           in.expect(first.plausible() && last.plausible(), "play period", "a time of day before its end",
                     first.plausible() ? last.hour : first.hour) &&
           in.expect(any || first.of_day() != last.of_day(), "play period", "more than a second", first.hour);
}

// Behind the flag, in generation 5: FrameDispStyle, FrameDispSpeed, FrameMoveStep, FrameWidth 1 each,
// FrameBackup 2; in generation 6: FrameDispStype, FrameDispSpeed, FrameMoveStep, FrameUnitLength,
// FrameUnitWidth, FrameDirectDispBit 1 each, zero 7.
bool read_border_header(Cursor& in, BorderPattern& border) {
    border.style = in.u8();
    border.speed = in.u8();
    border.move_step = in.u8();
    if (!in.six()) {
        border.unit_width = in.u8();
        in.skip(2);
        return in.whole("screen border");
    }
    border.unit_length = in.u8();
    border.unit_width = in.u8();
    in.skip(1);
    return in.zeros(7, "reserved bytes of the screen border");
}

// Whether lengths and areas alternate from here to the end, no more than so many: the cheap check first.
bool are_areas(Cursor in, std::size_t most) {
    std::size_t count = 0;
    while (in.left() > 0) {
        const std::uint32_t length = in.u32();
        if (!in.whole("area length") ||
            !in.expect(length <= in.left(), "area length", "an area inside the file", length) ||
            !in.expect(++count <= most, "area count", "the number of areas or more", most) || !in.spend())
            return false;
        in.skip(length);
    }
    return true;
}

bool read_areas(Cursor& in, Attempt& attempt) {
    while (in.left() > 0) {
        const std::uint32_t length = in.u32();
        if (!read_area(in.part(length), attempt)) return false;
    }
    const std::size_t unused = in.six() ? in.reading().data.size() - attempt.data_used : 0;
    return in.expect(unused == 0, "data file", "no bytes behind the last page", unused);
}

// Background flag 1, area count 1, the areas.
bool read_rest(Cursor in, StoredProgram& program, Attempt& attempt) {
    const std::uint8_t background = in.u8();
    if (!in.expect(background <= (in.six() ? 1 : 0), "background flag", in.six() ? "0 or 1" : "0",
                   background))
        return false;
    program.background = background == 1;
    program.area_count = in.u8();
    if (!in.whole("area count") || !are_areas(in, program.area_count)) return false;
    attempt = {};
    if (!read_areas(in, attempt)) return false;
    const auto is_background = [](const ProgramArea& area) { return area.type == AreaType::background; };
    return in.expect(program.background ||
                         std::none_of(attempt.areas.begin(), attempt.areas.end(), is_background),
                     "background flag", "1 with a background area", background);
}

// Tries every length that border pixels may have.
bool read_bordered(Cursor& in, StoredProgram& program, Attempt& attempt) {
    BorderPattern& border = program.border.emplace();
    if (!read_border_header(in, border)) return false;
    const std::size_t unit = border_unit(in.format()), most = std::min(in.left(), kLongestBorder);
    for (std::size_t length = unit; length <= most && in.spend(); length += unit) {
        Cursor rest = in;
        const Bytes pixels = rest.bytes(length);
        if (read_rest(rest, program, attempt)) {
            border.pixels.assign(pixels.begin(), pixels.end());
            return size_pattern(border, in.format(), length);
        }
        if (unit == 0) break;
    }
    return false;
}

// Border flag 1, the border, the rest.
bool read_border_on(Cursor in, StoredProgram& program, Attempt& attempt) {
    const std::uint8_t flag = in.u8();
    program.border.reset();
    if (!in.whole("border flag") || !in.expect(flag <= 1, "border flag", "0 or 1", flag)) return false;
    if (flag == 0) return read_rest(in, program, attempt);
    return read_bordered(in, program, attempt);
}

bool read_with_periods(Cursor in, std::size_t count, bool any, StoredProgram& program, Attempt& attempt) {
    program.periods.clear();
    for (std::size_t i = 0; i < count; ++i)
        if (!read_period(in, any, program.periods)) return false;
    return read_border_on(in, program, attempt);
}

// Play-period flag 1, as many periods as there turn out to be.
bool read_periods_on(Cursor& in, StoredProgram& program, Attempt& attempt) {
    const std::uint8_t flag = in.u8();
    if (!in.whole("play-period flag") || !in.expect(flag <= 1, "play-period flag", "0 or 1", flag))
        return false;
    if (flag == 0) return read_border_on(in, program, attempt);
    for (const bool any : {false, true})
        for (std::size_t count = std::min(kMostPeriods, in.left() / kPeriod); count > 0; --count)
            if (read_with_periods(in, count, any, program, attempt)) return true;
    in.expect(in.left() >= kPeriod, "play-period flag", "0 without periods", flag);
    return false;
}

// Why a file is damaged as a whole, before any field of it is looked at.
std::optional<std::string> damage(Bytes file, const std::string& name) {
    if (file.size() < kCrc) return name + ": too short for a CRC";
    const Bytes body = file.first(file.size() - kCrc);
    const std::uint32_t stated = ByteReader(file.last(kCrc)).u32();
    if (stated != calc_crc32(body)) return name + ": the CRC in its last 4 bytes is wrong";
    return std::nullopt;
}

// Data file type 9, data file name 4, zero 8.
std::optional<std::string> wrong_data_head(Bytes data, const std::string& program_name) {
    if (data.size() < kDataHead) return "data file: its header is cut short";
    if (data[0] != kDataType)
        return std::string("data file, byte 0, type: 9 expected, ")
            .append(std::to_string(data[0]))
            .append(" found");
    if (text_of(data.subspan(1, 4)) != std::string("D").append(program_name, 1))
        return "data file, byte 1, name: that of the program with D in front expected";
    const Bytes zeros = data.subspan(5, 8);
    if (std::any_of(zeros.begin(), zeros.end(), [](std::uint8_t byte) { return byte != 0; }))
        return "data file, byte 5, reserved bytes: 0 expected";
    return std::nullopt;
}

ParsedProgram parse(Reading& reading) {
    StoredProgram program;
    program.generation = reading.generation;
    Attempt attempt;
    Cursor in(reading, 0, reading.file.size());
    const bool six = reading.generation == Generation::six;
    if (!read_header(in, program.header)) return "program file, " + reading.refusal.sentence();
    if (six)
        if (auto wrong = wrong_data_head(reading.data, program.header.name)) return std::move(*wrong);
    const bool read = read_periods_on(in, program, attempt);
    if (!read && reading.records_left == 0)
        return "program file: it can be read in too many ways to find where its borders end";
    if (!read) return "program file, " + reading.refusal.sentence();
    program.areas = std::move(attempt.areas);
    hand_out(six ? reading.data : reading.file, attempt.extents, program.areas);
    return program;
}

} // namespace

ParsedProgram parse_program(Bytes file, PixelFormat format) {
    if (auto wrong = damage(file, "program file")) return std::move(*wrong);
    Reading reading{file.first(file.size() - kCrc), {}, Generation::five, format};
    return parse(reading);
}

ParsedProgram parse_program(Bytes file, Bytes data, PixelFormat format) {
    if (auto wrong = damage(file, "program file")) return std::move(*wrong);
    if (auto wrong = damage(data, "data file")) return std::move(*wrong);
    Reading reading{file.first(file.size() - kCrc), data.first(data.size() - kCrc), Generation::six, format};
    return parse(reading);
}

} // namespace qm::sim
