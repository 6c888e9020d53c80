// Base of every area: identity, geometry, font, and the helpers that all drawing areas share.
#pragma once

#include "program/pixels/FullColour.h"
#include "program/pixels/ScreenSettings.h"
#include "program/text/Font.h"

#include <string>

namespace qm {

// The area header of program files: kind and rectangle; 9 bytes.
struct qm_G5_area_header {
    Ouint8 AreaType = 0;
    Ouint16 AreaX = 0, AreaY = 0, AreaWidth = 0, AreaHeight = 0;

    void append(ByteWriter& out) const;
};

// Where an assembled area goes: its record to the program file, and in generation 6 its pixel data to the
// data file, whose positions the record gives counted from 1.
struct ProgramFiles {
    ByteBuffer program;
    ByteBuffer data;

    // Appends pixel data; returns its position.
    Ouint32 add_pixels(Bytes pixels) {
        const Ouint32 position = CData::length_of(data) + 1;
        data.insert(data.end(), pixels.begin(), pixels.end());
        return position;
    }
};

class HVarea {
  public:
    HVarea();
    HVarea(const HVarea&) = delete;
    HVarea& operator=(const HVarea&) = delete;
    virtual ~HVarea() = default;

    // Position or size has changed.
    virtual void MoveArea() = 0;
    // Draws and converts everything for the screen settings of this moment. False when something is missing;
    // it has been reported and is left out.
    virtual bool PreparePageData() = 0;
    // Appends the record, and in generation 6 the pixel data.
    virtual void assemble(ProgramFiles& files) const = 0;

    // Renders a page, from 0, as a PNG for a preview. The result is valid until the next one; false, after a
    // message, when there is no such page, no room for it, or its picture cannot be read.
    bool LoadAreaPage(int pageNum);
    [[nodiscard]] Bytes preview() const { return pngData; }
    [[nodiscard]] virtual std::size_t page_count() const = 0;

    // Sets kind and rectangle; the content follows with MoveArea.
    void setGeometry(const qm_G5_area_header& header) { m_aHeader = header; }

    // Selects this area's font on the context and turns antialiasing off. Always 0.
    Oint8 get_cairoFace(cairo_t* c, bool bold, bool italic) const;

    // Converts a drawn image for the screen settings: see convert_pixels. Only nLeft modulo the alignment
    // unit matters; the unit follows the screen settings, not nPixelMode.
    static void TranCanvToInfo(const Ouint8* buffer, Ouint8* pInfoBuf, Ouint32& nInfoLen, Oint32 nLeft,
                               Oint32 nWidth, Oint32 nHeight, Oint32 nPx, Oint32 nPixelMode, Oint32 nMKStyle);

    static constexpr GammaTable r_gam = gamma_table(), g_gam = gamma_table(), b_gam = gamma_table();

    Ouint16 _areaID = 0;
    Oint32 m_AreaWidth = 0, m_AreaHeight = 0; // of the drawing rectangle
    std::string _fontStyle;                   // family name; wins over the path
    std::string _fontPathName;
    qm_G5_area_header m_aHeader;

  protected:
    // The rectangle that is drawn on, inside the border, in screen coordinates.
    void set_drawing_rectangle();
    [[nodiscard]] bool has_room() const { return m_AreaWidth > 0 && m_AreaHeight > 0; }
    // How thick the border is.
    [[nodiscard]] virtual int border() const { return 0; }
    // Draws a page on a black canvas; false, after a message, when its picture cannot be read.
    virtual bool draw_page(Canvas32& canvas, std::size_t page) = 0;

    int m_AreaLeft = 0;

  private:
    ByteBuffer pngData;
};

} // namespace qm
