// A bitmap font as text (BDF), which needs nothing installed.
#pragma once

#include "seeds.h"

#include <cstdio>
#include <span>
#include <string>

namespace qm::test {

// One character, A, 8 pixels wide, of these rows on the baseline; the font is ascent + descent pixels high.
inline std::string bitmap_font(int ascent, int descent, std::span<const unsigned char> rows) {
    const std::string size = std::to_string(ascent + descent), height = std::to_string(rows.size());
    std::string text = "STARTFONT 2.1\nFONT -test-dots-medium-r-normal--" + size + "-" + size +
                       "0-72-72-c-80-iso10646-1\nSIZE " + size + " 72 72\nFONTBOUNDINGBOX 8 " + size +
                       " 0 -" + std::to_string(descent) + "\nSTARTPROPERTIES 5\nFONT_ASCENT " +
                       std::to_string(ascent) + "\nFONT_DESCENT " + std::to_string(descent) +
                       "\nPIXEL_SIZE " + size +
                       "\nCHARSET_REGISTRY \"ISO10646\"\nCHARSET_ENCODING \"1\"\nENDPROPERTIES\nCHARS 1\n"
                       "STARTCHAR A\nENCODING 65\nSWIDTH 500 0\nDWIDTH 8 0\nBBX 8 " +
                       height + " 0 0\nBITMAP\n";
    for (const unsigned char row : rows) {
        char hex[4];
        std::snprintf(hex, sizeof hex, "%02X\n", row);
        text += hex;
    }
    text += "ENDCHAR\nENDFONT\n";
    ByteBuffer input{0, 0}; // the form that fuzz/font.cpp reads
    input.insert(input.end(), text.begin(), text.end());
    keep_seed("font", input);
    return text;
}

} // namespace qm::test
