// How a text is to be shown, as the first bytes of an input say; the others are the text.
#pragma once

#include "qm_sdk_dual.hpp"
#include "support/bytes.h"

namespace qm::fuzz {

struct WantedText {
    explicit WantedText(ByteReader in) {
        constexpr Ouint16 kTypes[] = {0x0051, 0x0262, 0x0066, 0x8166}; // each with pixels of its own
        // Few, since to find a font takes longer than all else; 0 looks for a size that fits.
        constexpr const char* kFonts[] = {"DejaVu Sans", "auto", "none.ttf", "\xCB\xCE\xCC\xE5"};
        constexpr Ouint16 kPoints[] = {12, 9, 6, 24, 60, 12, 9, 0};
        screen.generation = in.u8() & 1 ? 5 : 6;
        screen.type = kTypes[in.u8() % std::size(kTypes)];
        screen.color = static_cast<E_ScreenColor_G56>(1 + in.u8() % 4);
        rect = {in.u8(), in.u8(), static_cast<Ouint16>(1 + in.u8() * 2), static_cast<Ouint16>(1 + in.u8())};
        style.font = kFonts[in.u8() % std::size(kFonts)];
        if (const Ouint16 points = kPoints[in.u8() % std::size(kPoints)]; points != 0) style.size = points;
        style.color = in.u8() * 0x010203U;
        const Ouint8 flags = in.u8();
        style.one_line = (flags & 1) != 0;
        style.bold = (flags & 2) != 0;
        style.italic = (flags & 4) != 0;
        style.vertical = (flags & 8) != 0;
        style.halign = static_cast<Align>(flags >> 4 & 3);
        style.valign = static_cast<Align>(flags >> 6);
        style.spacing = in.u8();
        effect.mode = in.u8();
        text.assign(in.rest().begin(), in.rest().end());
        text.resize(std::min(text.find('\0'), text.size()));
    }

    Screen screen;
    Rect rect;
    TextStyle style;
    Effect effect;
    std::string text;
};

} // namespace qm::fuzz
