// An area that shows the controller's own clock, digital or analog.
#pragma once

#include "program/ClockDial.h"
#include "program/HVarea.h"
#include "program/TimeFontModel.h"
#include "support/TemporaryFile.h"

#include <memory>

namespace qm {

// The clock of generation 5, and of screens that are not full colour; 14 bytes. Colours are palette indices.
struct _QM_G56_ANALOGCLOCKSETTING {
    Ouint16 OrignPointX = 0, OrignPointY = 0;
    Ouint8 UnitMode = 0;
    Ouint8 HourHandWidth = 0, HourHandLen = 0, HourHandColor = 0;
    Ouint8 MinHandWidth = 0, MinHandLen = 0, MinHandColor = 0;
    Ouint8 SecHandWidth = 0, SecHandLen = 0, SecHandColor = 0;

    void append(ByteWriter& out) const;
};
// Keeps the low byte of each colour.
[[nodiscard]] _QM_G56_ANALOGCLOCKSETTING narrowed(const HVAnalogClockHeader_G56& header);

class TimeArea : public HVarea {
  public:
    // Sets what a digital clock shows.
    void AddContent(const HVtimeAreaData_G56& record);
    // The same with the font kept.
    void ChangeContent(const HVtimeAreaData_G56& record);

    void AddAnalogClock(const _QM_G56_ANALOGCLOCKSETTING& setting, E_ClockStyle style,
                        const ClockColor_G56& color);
    // A dial picture makes the area an analog clock; the file is read when the page is prepared.
    void ChangeDialPic(const char* picPath);
    // The picture is copied. Throws when there is no place for it.
    void ChangeDialPicAdd(Bytes picture);
    void RemoveDialPic();

    void Reload() { set_drawing_rectangle(); }
    void MoveArea() override { Reload(); }

    // Draws the page and the glyphs and converts them. False when the dial picture cannot be read.
    bool PreparePageData() override;
    void assemble(ProgramFiles& files) const override;

    [[nodiscard]] std::size_t page_count() const override { return 1; }

    // Appends the record with which the screen shows a unit in the area's colour, and gives its length: 2
    // bytes, 5 in full colour, 3 in full colour of 16-bit pixels.
    Ouint32 setTimeSetting(ByteBuffer& dataAdd, Ouint8 mode) const;
    // A colour as the controller takes it: unchanged, 0xBBGGRR in full colour, a pixel in that of 16 bits.
    [[nodiscard]] static Ouint32 get_vemarColor(Ouint32 color);
    static Ouint8 byte2bcd(unsigned v) { return static_cast<Ouint8>(((v / 10) << 4U) + v % 10); }
    static Ouint16 short2bcd(unsigned v) {
        return static_cast<Ouint16>((byte2bcd(v / 100) << 8U) + byte2bcd(v % 100));
    }

    double fontSize = 0; // pixels

  protected:
    static constexpr Ouint8 kDigital = 0, kAnalog = 1;

    // The part that both generations write: kind, unit count, glyph-set count, units, extra data. Glyphs
    // follow one another from a position on.
    void append_digital(ByteWriter& out, Ouint32 firstGlyph) const;
    [[nodiscard]] Bytes page() const { return m_page.bytes(); }
    [[nodiscard]] Bytes glyphs() const { return m_glyphs; }
    // Where the hands turn.
    [[nodiscard]] virtual std::pair<int, int> pivot() const;
    void set_clock(E_ClockStyle style, const ClockColor_G56& color);
    // The face as a preview shows it: a digital clock as it is now, an analog one without its hands.
    bool draw_page(Canvas32& canvas, std::size_t page) override;

    bool m_analogClock = false;
    Ouint32 m_clockStyle = eLINE;

  private:
    [[nodiscard]] TimeText text() const;
    void draw_digital(Canvas32& canvas, const TimeFontModel& model) const;
    bool draw_analog(Canvas32& canvas) const;
    void prepare_glyphs();

    HVtimeAreaData_G56 m_timeData{}; // without the font's name
    Ouint32 m_timeColor = 0;
    _QM_G56_ANALOGCLOCKSETTING m_acHeader;
    ClockColor_G56 _clockColor{};
    bool m_useDialPic = false;
    std::string m_picPath;
    std::unique_ptr<TemporaryFile> m_picture; // what was given in memory

    std::unique_ptr<TimeFontModel> m_model; // of the prepared page
    CData m_page;
    ByteBuffer m_glyphs; // of every set, one after the other
    std::vector<Ouint32> m_setOffsets;
};

} // namespace qm
