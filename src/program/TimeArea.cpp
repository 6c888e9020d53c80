#include "program/TimeArea.h"

#include "program/HVframe.h"
#include "support/local_time.h"
#include "support/message.h"
#include "support/reason.h"

#include <algorithm>

namespace qm {
namespace {

constexpr unsigned kByte = 0xFF;

struct Channels {
    unsigned red, green, blue;
};

// Palette indices have a bit a channel.
Channels channels_of(Ouint32 color) {
    if (color < 8) return {(color & 1U) * kByte, (color >> 1U & 1U) * kByte, (color >> 2U & 1U) * kByte};
    return {color >> 16U & kByte, color >> 8U & kByte, color & kByte};
}

// The palette index that comes nearest, by halves. What is dark in all channels becomes red.
Ouint8 palette_index(Ouint32 color) {
    if (color < 8) return static_cast<Ouint8>(color);
    const Channels c = channels_of(color);
    const auto bit = [](unsigned channel, unsigned place) { return channel > 128 ? 1U << place : 0U; };
    const unsigned index = bit(c.red, 0) | bit(c.green, 1) | bit(c.blue, 2);
    return static_cast<Ouint8>(index == 0 ? eRed : index);
}

bool full_color() { return screen_settings().m_screenColor == SCREEN_COLOR_FULLCOLOR; }

// What a unit shows at a moment: its glyphs from left to right.
std::vector<std::size_t> glyphs_at(TimeUnit unit, const std::tm& now) {
    const int year = now.tm_year + 1900, hour12 = (now.tm_hour + 11) % 12 + 1;
    const int ofUnits[] = {year,   year,       now.tm_mon + 1, now.tm_mday,       now.tm_hour,
                           hour12, now.tm_min, now.tm_sec,     now.tm_hour >= 12, now.tm_wday,
                           0};
    static_assert(std::size(ofUnits) == static_cast<std::size_t>(TimeUnit::literal) + 1);
    auto value = static_cast<std::size_t>(ofUnits[static_cast<std::size_t>(unit)]);
    std::vector<std::size_t> glyphs(static_cast<std::size_t>(std::max(1, digits_of(unit))), value);
    for (std::size_t i = digits_of(unit) > 0 ? glyphs.size() : 0; i-- > 0; value /= 10)
        glyphs[i] = value % 10;
    return glyphs;
}

} // namespace

void _QM_G56_ANALOGCLOCKSETTING::append(ByteWriter& out) const {
    out.u16(OrignPointX).u16(OrignPointY).u8(UnitMode);
    out.u8(HourHandWidth).u8(HourHandLen).u8(HourHandColor);
    out.u8(MinHandWidth).u8(MinHandLen).u8(MinHandColor);
    out.u8(SecHandWidth).u8(SecHandLen).u8(SecHandColor);
}

_QM_G56_ANALOGCLOCKSETTING narrowed(const HVAnalogClockHeader_G56& h) {
    const auto low = [](Ouint32 color) { return static_cast<Ouint8>(color); };
    return {h.OrignPointX,       h.OrignPointY,        h.UnitMode,     h.HourHandWidth,
            h.HourHandLen,       low(h.HourHandColor), h.MinHandWidth, h.MinHandLen,
            low(h.MinHandColor), h.SecHandWidth,       h.SecHandLen,   low(h.SecHandColor)};
}

void TimeArea::AddContent(const HVtimeAreaData_G56& record) {
    FontNames font = font_names(record.fontName);
    _fontStyle = std::move(font.family);
    _fontPathName = std::move(font.path);
    ChangeContent(record);
}

void TimeArea::ChangeContent(const HVtimeAreaData_G56& record) {
    std::memcpy(&m_timeData, &record, sizeof record);
    m_timeData.fontName = nullptr; // the caller's
    fontSize = pixels_of_points(record.fontSize);
    m_timeColor = record.color;
    Reload();
}

void TimeArea::set_clock(E_ClockStyle style, const ClockColor_G56& color) {
    m_analogClock = true;
    m_clockStyle = style;
    _clockColor = color;
    Reload();
}

void TimeArea::AddAnalogClock(const _QM_G56_ANALOGCLOCKSETTING& setting, E_ClockStyle style,
                              const ClockColor_G56& color) {
    m_acHeader = setting;
    set_clock(style, color);
}

void TimeArea::ChangeDialPic(const char* picPath) {
    m_picPath = picPath;
    m_useDialPic = m_analogClock = true;
    m_picture.reset();
}

void TimeArea::ChangeDialPicAdd(Bytes picture) {
    auto file = std::make_unique<TemporaryFile>(picture);
    ChangeDialPic(file->path().c_str());
    m_picture = std::move(file);
    Reload();
}

void TimeArea::RemoveDialPic() {
    m_useDialPic = false;
    m_picture.reset();
}

std::pair<int, int> TimeArea::pivot() const { return {m_acHeader.OrignPointX, m_acHeader.OrignPointY}; }

TimeText TimeArea::text() const {
    TimeText text;
    if (flag(m_timeData.date_enable)) text.date = date_pieces(m_timeData.datestyle);
    if (flag(m_timeData.week_enable)) text.week = week_pieces(m_timeData.weekstyle);
    if (flag(m_timeData.time_enable)) {
        text.time = time_pieces(m_timeData.timestyle);
        text.minutes = minute_pieces(m_timeData.timestyle);
        text.hours = hour_pieces(m_timeData.timestyle);
    }
    text.weekStyle = m_timeData.weekstyle;
    text.severalLines = m_timeData.linestyle == MULTILINE;
    text.font = {_fontStyle, _fontPathName, std::clamp(fontSize, 1.0, kMaxFontPixels),
                 m_timeData.fontBold != 0, m_timeData.fontItalic != 0};
    text.underline = m_timeData.fontUnderline != 0;
    text.align = m_timeData.fontAlign;
    return text;
}

bool TimeArea::PreparePageData() {
    Reload();
    m_page = {};
    m_glyphs.clear();
    m_setOffsets.clear();
    m_model.reset();
    bool whole = true;
    if (has_room()) {
        Canvas32 canvas(m_AreaWidth, m_AreaHeight);
        if (m_analogClock) whole = draw_analog(canvas);
        m_page = convert_canvas(canvas, m_AreaLeft);
    }
    if (!m_analogClock) prepare_glyphs();
    return whole;
}

// Glyphs are white: the controller colours what is lit.
void TimeArea::prepare_glyphs() {
    m_model = std::make_unique<TimeFontModel>(text(), m_AreaWidth, m_AreaHeight);
    for (const GlyphSet& set : m_model->sets()) {
        m_setOffsets.push_back(CData::length_of(m_glyphs));
        Canvas32 cell(set.width, set.height());
        for (std::size_t i = 0; i < set.glyphs.size(); ++i) {
            cell.clear();
            set_cairoColor(cell.context(), eWhite);
            m_model->draw(cell.context(), set, i, 0, 0);
            ByteWriter(m_glyphs).bytes(convert_canvas(cell, 0).bytes());
        }
    }
}

void TimeArea::draw_digital(Canvas32& canvas, const TimeFontModel& model) const {
    const std::tm now = local_time();
    set_cairoColor(canvas.context(), m_timeColor);
    for (const PlacedUnit& unit : model.units()) {
        const GlyphSet& set = model.sets()[unit.set];
        int x = unit.x;
        for (const std::size_t glyph : glyphs_at(unit.unit, now)) {
            model.draw(canvas.context(), set, glyph, x, unit.y);
            x += set.width;
        }
    }
}

bool TimeArea::draw_analog(Canvas32& canvas) const {
    const auto [x, y] = pivot();
    draw_dial(canvas, {m_clockStyle, _clockColor, x, y});
    if (!m_useDialPic) return true;
    const SurfacePtr picture = load_picture(m_picPath);
    if (!picture) {
        say("Error:The picture is not exist.\n");
        return false;
    }
    draw_scaled(canvas, picture.get());
    return true;
}

bool TimeArea::draw_page(Canvas32& canvas, std::size_t) {
    if (m_analogClock)
        (void)draw_analog(canvas);
    else
        draw_digital(canvas, TimeFontModel(text(), m_AreaWidth, m_AreaHeight));
    clear_reason(); // a clock without its dial picture is one
    return true;
}

Ouint32 TimeArea::setTimeSetting(ByteBuffer& dataAdd, Ouint8 mode) const {
    const std::size_t start = dataAdd.size();
    ByteWriter out(dataAdd);
    if (!full_color())
        out.u8(palette_index(m_timeColor));
    else if (screen_settings().m_tranMode == Tran_Pixel_Mode3)
        out.u16(get_vemarColor(m_timeColor));
    else
        out.u32(get_vemarColor(m_timeColor));
    out.u8(mode);
    return static_cast<Ouint32>(dataAdd.size() - start);
}

Ouint32 TimeArea::get_vemarColor(Ouint32 color) {
    if (!full_color()) return color;
    const Channels c = channels_of(color);
    if (screen_settings().m_tranMode == Tran_Pixel_Mode3)
        return pack_565(r_gam[c.red], g_gam[c.green], b_gam[c.blue]);
    return c.blue << 16U | c.green << 8U | c.red;
}

// Kind 0, unit count u8, glyph-set count u8. For each unit: kind u8, x u16, y u16, glyph set u8, the first
// two bytes of its time-setting record. Then for each unit the rest of that record; for each glyph set: glyph
// count u8, cell width u16, cell height u16, position of its first glyph u32.
void TimeArea::append_digital(ByteWriter& out, Ouint32 firstGlyph) const {
    constexpr std::size_t kInUnit = 2;
    const auto& units = m_model->units();
    const auto& sets = m_model->sets();
    ByteBuffer setting;
    setTimeSetting(setting, 0);
    out.u8(kDigital).u8(static_cast<unsigned>(units.size())).u8(static_cast<unsigned>(sets.size()));
    for (const PlacedUnit& unit : units) {
        out.u8(static_cast<Ouint8>(unit.unit));
        out.u16(static_cast<unsigned>(unit.x)).u16(static_cast<unsigned>(unit.y)).u8(unit.set);
        out.bytes(Bytes(setting).first(kInUnit));
    }
    for (std::size_t i = 0; i < units.size(); ++i) out.bytes(Bytes(setting).subspan(kInUnit));
    for (std::size_t i = 0; i < sets.size(); ++i) {
        out.u8(static_cast<unsigned>(sets[i].glyphs.size())).u16(static_cast<unsigned>(sets[i].width));
        out.u16(static_cast<unsigned>(sets[i].height())).u32(firstGlyph + m_setOffsets[i]);
    }
}

// Area header 9; no border; then of a digital clock what append_digital says, positions counted from the
// page's first byte, and the page and the glyphs; of an analog one kind 1, unit count 1, no glyph sets,
// setting 14, style u8, zero 1, length of the page u32, and the page.
void TimeArea::assemble(ProgramFiles& files) const {
    ByteWriter out(files.program);
    m_aHeader.append(out);
    out.u8(0);
    if (m_analogClock) {
        out.u8(kAnalog).u8(1).u8(0);
        m_acHeader.append(out);
        out.u8(m_clockStyle).u8(0).u32(CData::length_of(page())).bytes(page());
        return;
    }
    append_digital(out, CData::length_of(page()));
    out.bytes(page()).bytes(glyphs());
}

} // namespace qm
