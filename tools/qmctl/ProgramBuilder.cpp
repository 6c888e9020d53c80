#include "ProgramBuilder.h"

#include "JsonReader.h"
#include "clock_records.h"
#include "panel_picture.h"
#include "program_files.h"

#include <algorithm>

namespace qm::ctl {
namespace {

constexpr Ouint16 kBackgroundId = 0xFFFF;
constexpr Oint32 kMostPages = 0xFFFF; // of an area
constexpr Ouint16 kNoYear = 0xFFFF;   // a program that lives for ever
constexpr Ouint8 kNoMonth = 0x12, kNoDay = 0x12;

Ouint8 u8(unsigned value) { return static_cast<Ouint8>(value); }
Ouint16 u16(unsigned value) { return static_cast<Ouint16>(value); }

void require(int status, const std::string& where) {
    if (status != QM_OK) throw Failure(status, where + ": the library does not take it");
}

// What the generations have in common under different names.
struct G5 {
    using Program = HVprogramHeader;
    using Area = HVareaHeader;
    using Page = HVpageHeader;
    static constexpr auto add_program = program_addProgram;
    static constexpr auto add_periods = program_addPlayPeriodGrp;
    static constexpr auto add_area = program_AddArea;
    static constexpr auto add_text = program_picturesAreaAddTxt;
    static constexpr auto add_picture = program_pictureAreaAddPic;
    static constexpr auto add_time = program_timeAreaAddContent;
    static constexpr auto add_clock = program_timeAreaAddAnalogClock;
    static constexpr auto add_dial = program_timeAreaChangeDialPic;
};
struct G6 {
    using Program = HVprogramHeader_G6;
    using Area = HVareaHeader_G6;
    using Page = HVpageHeader_G6;
    static constexpr auto add_program = program_addProgram_G6;
    static constexpr auto add_periods = program_addPlayPeriodGrp_G6;
    static constexpr auto add_area = program_addArea_G6;
    static constexpr auto add_text = program_picturesAreaAddTxt_G6;
    static constexpr auto add_picture = program_pictureAreaAddPic_G6;
    static constexpr auto add_time = program_timeAreaAddContent_G6;
    static constexpr auto add_clock = program_timeAreaAddAnalogClock_G6;
    static constexpr auto add_dial = program_timeAreaChangeDialPic_G6;
};

template <class Header> Header area_header(E_areaType type, const Rect& rect) {
    Header header{};
    header.AreaType = u8(type);
    header.AreaX = rect.x;
    header.AreaY = rect.y;
    header.AreaWidth = rect.width;
    header.AreaHeight = rect.height;
    return header;
}

template <class Header> Header page_header(const Effect& effect) {
    Header header{};
    effect.apply_to(header);
    return header;
}

bool has_page(Ouint16 area, Oint32 number) {
    getPageData page{};
    return program_pictureAreaGetOnePage(area, number, &page) == QM_OK;
}

// Their number comes with each of them.
std::vector<std::string> rendered_pages(Ouint16 area, const std::string& where, E_ScreenColor_G56 screen) {
    std::vector<std::string> pages;
    getPageData page{};
    for (Oint32 number = 0; number == 0 || number < page.allPageNub; ++number) {
        require(program_pictureAreaGetOnePage(area, number, &page), where);
        const std::string png(reinterpret_cast<const char*>(page.fileAddre), std::size_t{page.pageLen});
        pages.push_back(on_panel(png, screen));
    }
    return pages;
}

// Whether a picture can be drawn is known once it has been.
void require_drawable(const PictureFile& picture) {
    const ProgramSlot slot;
    const auto area = area_header<HVareaHeader>(ePicturesArea, {0, 0, 1, 1});
    const HVpageHeader page{};
    require(program_AddArea(0, &area), picture.where);
    require(program_pictureAreaAddPic(0, 0, &page, picture.path.c_str()), picture.where);
    if (!has_page(0, 0)) throw JsonError(picture.where + ": " + picture.path + " is damaged or too large");
}

template <class Header> Header program_header(const ProgramDescription& program) {
    Header header{};
    header.ProgramID = program.id;
    header.ProgramStyle = u8(program.style);
    header.ProgramPriority = u8(program.priority);
    header.ProgramPlayTimes = u8(program.play_times);
    header.ProgramTimeSpan = u16(program.time_span);
    header.ProgramWeek = u8(program.week);
    header.ProgramLifeSpan_sy = header.ProgramLifeSpan_ey = kNoYear;
    header.ProgramLifeSpan_sm = header.ProgramLifeSpan_em = kNoMonth;
    header.ProgramLifeSpan_sd = header.ProgramLifeSpan_ed = kNoDay;
    if (!program.life_span) return header;
    const auto& [from, to] = *program.life_span;
    header.ProgramLifeSpan_sy = u16(bcd(from.year));
    header.ProgramLifeSpan_sm = u8(bcd(from.month));
    header.ProgramLifeSpan_sd = u8(bcd(from.day));
    header.ProgramLifeSpan_ey = u16(bcd(to.year));
    header.ProgramLifeSpan_em = u8(bcd(to.month));
    header.ProgramLifeSpan_ed = u8(bcd(to.day));
    return header;
}

HVprogramppGrp_G56 period_group(const std::vector<HVprogrampTime_G56>& periods) {
    HVprogramppGrp_G56 group{};
    group.playTimeGrpNum = u8(static_cast<unsigned>(periods.size()));
    std::copy(periods.begin(), periods.end(), group.timeGrp);
    return group;
}

void add_border(const Border& border, G5) {
    HVscreenframeHeader header{};
    header.FrameDispFlag = 1;
    header.FrameDispStyle = u8(border.style);
    header.FrameDispSpeed = u8(border.speed);
    header.FrameMoveStep = u8(border.step);
    header.FrameWidth = u8(border.pattern.size.height);
    require(program_addFrame(&header, border.pattern.path.c_str()), border.pattern.where);
}

void add_border(const Border& border, G6) {
    HVscreenframeHeader_G6 header{};
    header.FrameDispStype = u8(border.style);
    header.FrameDispSpeed = u8(border.speed);
    header.FrameMoveStep = u8(border.step);
    header.FrameUnitLength = u8(border.pattern.size.width);
    header.FrameUnitWidth = u8(border.pattern.size.height);
    require(program_addFrame_G6(&header, border.pattern.path.c_str()), border.pattern.where);
}

void add_area_border(Ouint16 id, const Border& border) {
    HVareaframeHeader header{};
    header.AreaFFlag = 1;
    header.AreaFDispStyle = u8(border.style);
    header.AreaFDispSpeed = u8(border.speed);
    header.AreaFMoveStep = u8(border.step);
    header.AreaFWidth = u8(border.pattern.size.height);
    require(program_picturesAreaAddFrame(id, &header, border.pattern.path.c_str()), border.pattern.where);
}

void add_background(const Background& background, const PixelSize& screen) {
    const Rect rect{0, 0, u16(screen.width), u16(screen.height)};
    const auto area = area_header<HVareaHeader_G6>(eGlobalBackGroundArea, rect);
    require(program_addArea_G6(kBackgroundId, &area), "background");
    const HVpageHeader_G6 unused{};
    if (background.color)
        require(program_backGroundColor_G6(kBackgroundId, &unused, *background.color), "background.color");
    Ouint16 number = 0;
    for (const auto& [picture, effect] : background.pictures) {
        const auto page = page_header<HVpageHeader_G6>(effect);
        require(program_backGroundPic_G6(kBackgroundId, number++, &page, picture.path.c_str()),
                picture.where);
    }
}

void add_sound(Ouint16 id, const Sound& sound, const std::string& where) {
    HVPicAreaSoundHeader_G6 header{};
    header.SoundPerson = u8(sound.voice);
    header.SoundVolum = u8(sound.volume);
    header.SoundSpeed = u8(sound.speed);
    header.SoundDataMode = u8(sound.encoding);
    header.SoundReplayTimes = sound.repeat;
    header.SoundReplayDelay = sound.delay;
    header.Soundnumdeal = u8(sound.digits);
    header.Soundlanguages = u8(sound.language);
    header.Soundwordstyle = u8(sound.word_style);
    require(program_pictureAreaEnableSound_G6(id, header, sound.text.c_str()), where + ".sound");
}

void set_flags(HVareaHeader&, const Area&) {}
void set_flags(HVareaHeader_G6& header, const Area& area) {
    header.BackGroundFlag = u8(area.background_flag);
    header.Transparency = u8(area.transparency);
    header.AreaEqual = u8(area.equal);
}

template <class G> void add_text(Ouint16 id, const Area& area) {
    auto page = page_header<typename G::Page>(area.effect);
    area.style.apply_to(page, area.text, drawing_rectangle(area), area.effect.running());
    require(G::add_text(id, area.text.c_str(), area.style.font.c_str(), &page), area.where);
    if (has_page(id, kMostPages - static_cast<Oint32>(area.pictures.size())))
        throw JsonError(area.where + ": makes more than 65535 pages");
}

template <class G> void add_clock(Ouint16 id, const Area& area) {
    if (area.digital) {
        const HVtimeAreaData_G56 content = time_content(area);
        require(G::add_time(id, &content), area.where);
    } else {
        const HVAnalogClockHeader_G56 hands = clock_hands(*area.analog, *area.rect);
        const ClockColor_G56 colors{area.analog->main_color, area.analog->mark_color,
                                    area.analog->background};
        require(G::add_clock(id, &hands, static_cast<E_ClockStyle>(area.analog->style), &colors), area.where);
        if (const auto& picture = area.analog->picture)
            require(G::add_dial(id, picture->path.c_str()), picture->where);
    }
    if (area.battle) require(program_timeAreaSetBattleTime_G6(id, &*area.battle), area.where + ".battle");
}

template <class G> void add_area(const Area& area) {
    const Ouint16 id = u16(area.id);
    auto header = area_header<typename G::Area>(area.is_clock() ? eTimeClockArea : ePicturesArea, *area.rect);
    set_flags(header, area);
    require(G::add_area(id, &header), area.where);
    if (area.is_clock()) return add_clock<G>(id, area);
    if (area.border) add_area_border(id, *area.border);
    if (!area.text.empty()) add_text<G>(id, area);
    Ouint16 number = 0;
    for (const auto& [picture, effect] : area.pictures) {
        const auto page = page_header<typename G::Page>(effect);
        require(G::add_picture(id, number++, &page, picture.path.c_str()), picture.where);
    }
    if (area.sound) add_sound(id, *area.sound, area.where);
}

template <class G> void add_all(const ProgramDescription& program, const ProgramTarget& target) {
    const auto header = program_header<typename G::Program>(program);
    require(G::add_program(&header), "id");
    const HVprogramppGrp_G56 periods = period_group(program.periods);
    if (periods.playTimeGrpNum > 0) require(G::add_periods(&periods), "play_periods");
    if (program.border) add_border(*program.border, G());
    if (program.background) add_background(*program.background, target.size);
    for (const Area& area : program.areas) add_area<G>(area);
}

ProgramFile file_of(const char (&name)[4], Ouint8 type, const Ouint8* bytes, Ouint32 length) {
    return {std::string(name, sizeof(name)), type, {bytes, bytes + length}};
}

// What the library hands out, released with the object.
template <class Program, auto integrate, auto release> struct Integrated {
    Integrated() { require(integrate(&program), "the program"); }
    Integrated(const Integrated&) = delete;
    Integrated& operator=(const Integrated&) = delete;
    ~Integrated() { release(&program); }

    Program program{};
};

std::vector<ProgramFile> files_g5() {
    const TemporaryFolder folder; // the library leaves a copy in the current one
    const Integrated<HVprogram, program_IntegrateProgramFile, program_freeBuffer> built;
    const HVprogram& p = built.program;
    return {file_of(p.fileName, p.fileType, p.fileAddre, p.fileLen)};
}

std::vector<ProgramFile> files_g6() {
    const Integrated<HVprogram_G6, program_IntegrateProgramFile_G6, program_freeBuffer_G6> built;
    const HVprogram_G6& p = built.program;
    return {file_of(p.dfileName, p.dfileType, p.dfileAddre, p.dfileLen),
            file_of(p.fileName, p.fileType, p.fileAddre, p.fileLen)};
}

} // namespace

void require_drawable(const ProgramDescription& program) {
    const auto all = [](const std::vector<PicturePage>& pages) {
        for (const PicturePage& page : pages) require_drawable(page.picture);
    };
    if (program.border) require_drawable(program.border->pattern);
    if (program.background) all(program.background->pictures);
    for (const Area& area : program.areas) {
        all(area.pictures);
        if (area.analog && area.analog->picture) require_drawable(*area.analog->picture);
        if (area.border) require_drawable(area.border->pattern);
    }
}

Ouint32 ProgramFile::crc() const {
    Ouint32 value = 0;
    for (std::size_t i = 0; i < 4; ++i) value = value << 8U | bytes[bytes.size() - 1 - i];
    return value;
}

ProgramBuilder::ProgramBuilder(const ProgramDescription& program, const ProgramTarget& target)
    : m_program(program), m_target(target) {
    program_setScreenParams_G56(target.color, target.type, target.wiring);
    target.generation == 5 ? add_all<G5>(program, target) : add_all<G6>(program, target);
}

std::vector<ProgramFile> ProgramBuilder::files() const {
    return m_target.generation == 5 ? files_g5() : files_g6();
}

std::vector<AreaPages> ProgramBuilder::pages() const {
    std::vector<AreaPages> areas;
    if (m_program.background)
        areas.push_back({"background",
                         {0, 0, u16(m_target.size.width), u16(m_target.size.height)},
                         rendered_pages(kBackgroundId, "background", m_target.color)});
    for (const Area& area : m_program.areas)
        areas.push_back({"area-" + std::to_string(area.id), drawing_rectangle(area),
                         rendered_pages(u16(area.id), area.where, m_target.color)});
    return areas;
}

Rect drawing_rectangle(const Area& area) {
    const unsigned border = area.border ? area.border->pattern.size.height : 0;
    const Rect& rect = *area.rect;
    return {u16(rect.x + border), u16(rect.y + border), u16(rect.width - 2 * border),
            u16(rect.height - 2 * border)};
}

} // namespace qm::ctl
