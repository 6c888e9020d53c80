// A program, which a controller plays from its files: built page by page, previewed, and put into files.
#pragma once

#include "program_values.hpp"
#include "records.hpp"
#include "result.hpp"

#include <atomic>
#include <stdexcept>
#include <thread>

namespace qm {
namespace detail {

// What the generations have in common under different names.
struct Generation5 {
    using Rules = HVprogramHeader;
    using AreaHeader = HVareaHeader;
    using Page = HVpageHeader;
    using Integrated = HVprogram;
    static constexpr auto add_program = program_addProgram;
    static constexpr auto add_periods = program_addPlayPeriodGrp;
    static constexpr auto add_area = program_AddArea;
    static constexpr auto add_text = program_picturesAreaAddTxt;
    static constexpr auto add_picture = program_pictureAreaAddPic;
    static constexpr auto add_time = program_timeAreaAddContent;
    static constexpr auto add_clock = program_timeAreaAddAnalogClock;
    static constexpr auto add_dial = program_timeAreaChangeDialPic;
    static constexpr auto integrate = program_IntegrateProgramFile;
    static constexpr auto release = program_freeBuffer;
};
struct Generation6 {
    using Rules = HVprogramHeader_G6;
    using AreaHeader = HVareaHeader_G6;
    using Page = HVpageHeader_G6;
    using Integrated = HVprogram_G6;
    static constexpr auto add_program = program_addProgram_G6;
    static constexpr auto add_periods = program_addPlayPeriodGrp_G6;
    static constexpr auto add_area = program_addArea_G6;
    static constexpr auto add_text = program_picturesAreaAddTxt_G6;
    static constexpr auto add_picture = program_pictureAreaAddPic_G6;
    static constexpr auto add_time = program_timeAreaAddContent_G6;
    static constexpr auto add_clock = program_timeAreaAddAnalogClock_G6;
    static constexpr auto add_dial = program_timeAreaChangeDialPic_G6;
    static constexpr auto integrate = program_IntegrateProgramFile_G6;
    static constexpr auto release = program_freeBuffer_G6;
};

template <class Header> Header rules_record(unsigned id, const PlayRules& rules) {
    constexpr unsigned kNoYear = 0xFFFF, kNoMonth = 0x12, kNoDay = 0x12;
    Header header{};
    header.ProgramID = id;
    header.ProgramStyle = rules.style;
    header.ProgramPriority = rules.priority;
    header.ProgramPlayTimes = rules.play_times;
    header.ProgramTimeSpan = rules.time_span;
    header.ProgramWeek = rules.week;
    std::array<Date, 2> span{};
    if (rules.life_span) span = *rules.life_span;
    const bool ends = rules.life_span.has_value();
    header.ProgramLifeSpan_sy = u16(ends ? to_bcd(span[0].year) : kNoYear);
    header.ProgramLifeSpan_sm = u8(ends ? to_bcd(span[0].month) : kNoMonth);
    header.ProgramLifeSpan_sd = u8(ends ? to_bcd(span[0].day) : kNoDay);
    header.ProgramLifeSpan_ey = u16(ends ? to_bcd(span[1].year) : kNoYear);
    header.ProgramLifeSpan_em = u8(ends ? to_bcd(span[1].month) : kNoMonth);
    header.ProgramLifeSpan_ed = u8(ends ? to_bcd(span[1].day) : kNoDay);
    return header;
}

inline HVtimeAreaData_G56 time_record(const DigitalClock& clock, const Rect& rect) {
    const TextStyle& style = clock.style;
    HVtimeAreaData_G56 record{};
    record.linestyle = style.one_line.value_or(false) ? SINGLELINE : MULTILINE;
    record.color = style.color;
    record.fontName = style.font.c_str();
    // As large as the area is high, since the library takes a smaller size for what does not fit.
    record.fontSize = style.size.value_or(std::min(rect.height, kLargestSize));
    record.fontBold = style.bold;
    record.fontItalic = style.italic;
    record.fontUnderline = clock.underline;
    record.fontAlign = static_cast<Ouint8>(style.halign);
    record.date_enable = clock.date.has_value();
    record.datestyle = static_cast<DateStyle>(clock.date.value_or(0));
    record.week_enable = clock.week.has_value();
    record.weekstyle = static_cast<WeekStyle>(clock.week.value_or(0));
    record.time_enable = clock.time.has_value();
    record.timestyle = static_cast<TimeStyle>(clock.time.value_or(0));
    return record;
}

} // namespace detail

// The pivot and the hands of a clock in an area, with what they leave open.
[[nodiscard]] inline HVAnalogClockHeader_G56 hands_record(const AnalogClock& clock, const Rect& rect) {
    using detail::u16;
    const auto byte = [](unsigned value) { return detail::u8(std::clamp(value, 1U, 0xFFU)); };
    const auto pivot = clock.pivot.value_or(std::array{u16(rect.width / 2U), u16(rect.height / 2U)});
    const auto [x, y] = pivot;
    const int right = rect.width - 1 - x, below = rect.height - 1 - y;
    const auto radius = static_cast<unsigned>(std::max(0, std::min({int{x}, int{y}, right, below})));
    HVAnalogClockHeader_G56 record{};
    record.OrignPointX = x;
    record.OrignPointY = y;
    record.HourHandWidth = clock.hour.width.value_or(byte(radius / 12));
    record.HourHandLen = clock.hour.length.value_or(byte(radius / 2));
    record.HourHandColor = clock.hour.color;
    record.MinHandWidth = clock.minute.width.value_or(byte(radius / 18));
    record.MinHandLen = clock.minute.length.value_or(byte(radius * 3 / 4));
    record.MinHandColor = clock.minute.color;
    record.SecHandWidth = clock.second.width.value_or(byte(radius / 60));
    record.SecHandLen = clock.second.length.value_or(byte(radius * 7 / 8));
    record.SecHandColor = clock.second.color;
    return record;
}

namespace detail {

inline File file_of(const char (&name)[4], Ouint8 type, const Ouint8* bytes, Ouint32 length) {
    return {std::string(name, sizeof name), type, {bytes, bytes + length}};
}
// In the order in which they should be written: pixels before the program that points to them.
inline std::vector<File> files_of(const HVprogram& built) {
    return {file_of(built.fileName, built.fileType, built.fileAddre, built.fileLen)};
}
inline std::vector<File> files_of(const HVprogram_G6& built) {
    return {file_of(built.dfileName, built.dfileType, built.dfileAddre, built.dfileLen),
            file_of(built.fileName, built.fileType, built.fileAddre, built.fileLen)};
}

} // namespace detail

// The one program that a process can have under construction. It belongs to the thread that makes it, from
// its construction to its destruction; a Program of another thread waits until then, and using this one there
// waits for ever. Areas are shown with screen settings of their own, so none should be shown meanwhile. Begin
// with set_rules; areas are numbered by the caller. What generation 5 does not have (background, speech,
// battle time) it refuses, and it does not read flags. Calls fail and print as the calls of qm_sdk_dual.h
// that they make. Paths are those of PNG files.
class Program {
  public:
    // Throws std::logic_error in a thread that is making another, which would wait for ever.
    explicit Program(const Screen& screen) : m_five(screen.generation == 5) {
        if (s_maker == std::this_thread::get_id())
            throw std::logic_error("This thread is making another program.");
        m_five ? program_removeFrame() : program_removeFrame_G6(); // waits for the slot, and takes it
        s_maker = std::this_thread::get_id();
        program_setScreenParams_G56(screen.color, screen.type, screen.wiring);
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    ~Program() {
        s_maker = std::thread::id();
        program_deleteProgram();
    }

    // id: 0 to 9999; 7 makes file P007.
    Result<> set_rules(unsigned id, const PlayRules& rules = {}) {
        HVprogramppGrp_G56 periods{};
        const std::size_t count = rules.periods.size();
        if (count > 8) return Error{QM_FAILED, "A program has at most 8 play periods."};
        if (rules.life_span && !(is_day((*rules.life_span)[0]) && is_day((*rules.life_span)[1])))
            return Error{QM_FAILED, "The life span of a program is from one day to another."};
        periods.playTimeGrpNum = static_cast<Ouint8>(count);
        for (std::size_t i = 0; i < count; ++i) {
            const PlayRules::Period& p = rules.periods[i];
            periods.timeGrp[i] = {p.start_hour, p.start_minute, p.start_second,
                                  p.end_hour,   p.end_minute,   p.end_second};
        }
        return generation([&](auto g) {
            const auto header = detail::rules_record<typename decltype(g)::Rules>(id, rules);
            const int status = g.add_program(&header);
            return status != QM_OK || rules.periods.empty() ? status : g.add_periods(&periods);
        });
    }

    // Around the screen.
    Result<> set_border(const Border& border) {
        return patterned(border, [&](Ouint8 width, Ouint8 height) {
            const HVscreenframeHeader header{1, border.style, border.speed, border.step, height, 0};
            const HVscreenframeHeader_G6 header6{border.style, border.speed, border.step, width, height, 0};
            return m_five ? program_addFrame(&header, border.picture.c_str())
                          : program_addFrame_G6(&header6, border.picture.c_str());
        });
    }

    // Text and pictures, or a clock.
    Result<> add_area(std::uint16_t id, E_areaType type, const Rect& rect, const AreaFlags& flags = {}) {
        return generation([&](auto g) {
            typename decltype(g)::AreaHeader header{};
            header.AreaType = detail::u8(type);
            header.AreaX = rect.x;
            header.AreaY = rect.y;
            header.AreaWidth = rect.width;
            header.AreaHeight = rect.height;
            set_flags(header, flags);
            return g.add_area(id, &header);
        });
    }
    // Goes before text and pictures, which get what it leaves.
    Result<> set_area_border(std::uint16_t id, const Border& border) {
        return patterned(border, [&](Ouint8, Ouint8 height) {
            const HVareaframeHeader header{1, border.style, border.speed, border.step, height, 0};
            return program_picturesAreaAddFrame(id, &header, border.picture.c_str());
        });
    }
    // rect: the area without its border.
    Result<> add_text(std::uint16_t id, const std::string& text, const TextStyle& style, const Effect& effect,
                      const Rect& rect) {
        return generation([&](auto g) {
            const auto page = detail::page_of<typename decltype(g)::Page>(effect, style, text, rect);
            return g.add_text(id, text.c_str(), style.font.c_str(), &page);
        });
    }
    // number: of the picture in its area.
    Result<> add_picture(std::uint16_t id, std::uint16_t number, const std::string& path,
                         const Effect& effect) {
        return generation([&](auto g) {
            const auto page = detail::page_of<typename decltype(g)::Page>(effect);
            return g.add_picture(id, number, &page, path.c_str());
        });
    }
    Result<> add_clock(std::uint16_t id, const DigitalClock& clock, const Rect& rect) {
        const auto record = detail::time_record(clock, rect);
        return generation([&](auto g) { return g.add_time(id, &record); });
    }
    // Its dial picture comes with set_dial.
    Result<> add_clock(std::uint16_t id, const AnalogClock& clock, const Rect& rect) {
        const auto hands = hands_record(clock, rect);
        const ClockColor_G56 colors{clock.main_color, clock.mark_color, clock.background};
        return generation(
            [&](auto g) { return g.add_clock(id, &hands, static_cast<E_ClockStyle>(clock.marks), &colors); });
    }
    Result<> set_dial(std::uint16_t id, const std::string& path) {
        return generation([&](auto g) { return g.add_dial(id, path.c_str()); });
    }

    // ---- Generation 6

    // In an area of type eGlobalBackGroundArea: one colour, or pictures.
    Result<> set_background(std::uint16_t id, std::uint32_t color) {
        const HVpageHeader_G6 unused{};
        return Result<>::of(program_backGroundColor_G6(id, &unused, color));
    }
    Result<> add_background(std::uint16_t id, std::uint16_t number, const std::string& path,
                            const Effect& effect) {
        const auto page = detail::page_of<HVpageHeader_G6>(effect);
        return Result<>::of(program_backGroundPic_G6(id, number, &page, path.c_str()));
    }
    Result<> set_speech(std::uint16_t id, const Speech& speech) {
        return Result<>::of(program_pictureAreaEnableSound_G6(
            id, detail::voice_of<HVPicAreaSoundHeader_G6>(speech), speech.text.c_str()));
    }
    // When a clock begins to count down; weekday: 0 Sunday to 6 Saturday.
    Result<> set_battle_time(std::uint16_t id, const Time& time, unsigned weekday) {
        if (!is_time(time) || weekday > 6)
            return Error{QM_FAILED, "The battle time is no time of a day of the week."};
        const auto byte = [](unsigned value) { return detail::u8(to_bcd(value)); };
        const HVTimeAreaBattle_G6 record{detail::u16(to_bcd(time.date.year)),
                                         byte(time.date.month),
                                         byte(time.date.day),
                                         byte(time.hour),
                                         byte(time.minute),
                                         byte(time.second),
                                         byte(weekday),
                                         0};
        return Result<>::of(program_timeAreaSetBattleTime_G6(id, &record));
    }

    // ---- What came of it

    [[nodiscard]] static bool has_page(std::uint16_t id, std::int32_t number) {
        getPageData page{};
        return program_pictureAreaGetOnePage(id, number, &page) == QM_OK;
    }
    // The pages of an area as PNG files: text, then pictures.
    [[nodiscard]] static Result<std::vector<std::string>> pages(std::uint16_t id) {
        std::vector<std::string> pages;
        getPageData page{};
        for (std::int32_t number = 0; number == 0 || number < page.allPageNub; ++number) {
            const int status = program_pictureAreaGetOnePage(id, number, &page);
            if (status != QM_OK) return Error::last(status);
            pages.emplace_back(reinterpret_cast<const char*>(page.fileAddre), std::size_t{page.pageLen});
        }
        return pages;
    }
    // What is to be written to a controller, in this order. Generation 5 leaves a copy in the current folder.
    [[nodiscard]] Result<std::vector<File>> files() const {
        return m_five ? integrate<detail::Generation5>() : integrate<detail::Generation6>();
    }

  private:
    template <class Call> Result<> generation(Call call) const {
        return Result<>::of(m_five ? call(detail::Generation5()) : call(detail::Generation6()));
    }

    template <class Call> static Result<> patterned(const Border& border, Call call) {
        const bool given = border.size.width > 0 && border.size.height > 0;
        const Size size = given ? border.size : png_size(border.picture);
        if (size.width > 0xFF || size.height > 0xFF)
            return Error{QM_FAILED, "The pattern of a border has at most 255 x 255 pixels."};
        return Result<>::of(call(detail::u8(size.width), detail::u8(size.height)));
    }

    static void set_flags(HVareaHeader&, const AreaFlags&) {}
    static void set_flags(HVareaHeader_G6& header, const AreaFlags& flags) {
        header.BackGroundFlag = flags.background_flag;
        header.Transparency = flags.transparency;
        header.AreaEqual = flags.equal;
    }

    template <class Generation> static Result<std::vector<File>> integrate() {
        typename Generation::Integrated built{};
        if (const int status = Generation::integrate(&built); status != QM_OK) return Error::last(status);
        struct Release { // whatever happens while the bytes are copied
            typename Generation::Integrated& built;
            ~Release() { Generation::release(&built); }
        } release{built};
        return detail::files_of(built);
    }

    static inline std::atomic<std::thread::id> s_maker{}; // the owner of the slot
    bool m_five;
};

} // namespace qm
