#include "program/pixels/LitPixels.h"

#include "support/processor.h"

namespace qm {
namespace {

void find_dark_portable(const Ouint8* pixels, std::size_t count, DarkBits* dark) {
    for (std::size_t n = 0; n < count; ++n) {
        Ouint32 lit = 0;
        for (int i = 0; i < 8; ++i, pixels += 4) {
            const Ouint32 pixel = pixels[0] | Ouint32{pixels[1]} << 8U | Ouint32{pixels[2]} << 16U;
            // Carries into the top bit of each byte that is above 96, or has it already.
            const Ouint32 above = ((pixel & 0x7F7F7F7FU) + 0x1F1F1F1FU) | pixel;
            lit = lit << 1U | (above >> 7U & 0x00010101U);
        }
        dark[n] = ~lit;
    }
}

void split_portable(const DarkBits* dark, std::size_t count, ByteOrder order, const ChannelBytes& out) {
    const std::size_t flip = order == ByteOrder::fours_reversed ? 3 : 0;
    for (std::size_t n = 0; n < count; ++n) {
        out.blue[n ^ flip] = static_cast<Ouint8>(dark[n]);
        out.green[n ^ flip] = static_cast<Ouint8>(dark[n] >> 8U);
        out.red[n ^ flip] = static_cast<Ouint8>(dark[n] >> 16U);
    }
}

} // namespace

constexpr LitPixelKernels kPortableLitPixels{find_dark_portable, split_portable};

const LitPixelKernels& lit_pixel_kernels() {
    static const LitPixelKernels& chosen = has_avx2() ? kAvx2LitPixels : kPortableLitPixels;
    return chosen;
}

} // namespace qm
