#include "program/LitPixels.h"

#include "support/processor.h"

namespace qm {

void lit_pixels_portable(const Ouint8* pixels, std::size_t words, Ouint32* lit) {
    for (std::size_t n = 0; n < words; ++n) {
        Ouint32 word = 0;
        for (int i = 0; i < 8; ++i, pixels += 4) {
            const Ouint32 pixel = pixels[0] | Ouint32{pixels[1]} << 8U | Ouint32{pixels[2]} << 16U;
            // Carries into the top bit of each byte that is above 96, or has it already.
            const Ouint32 above = ((pixel & 0x7F7F7F7FU) + 0x1F1F1F1FU) | pixel;
            word = word << 1U | (above >> 7U & 0x00010101U);
        }
        lit[n] = word;
    }
}

LitPixels lit_pixels() { return has_avx2() ? lit_pixels_avx2 : lit_pixels_portable; }

} // namespace qm
