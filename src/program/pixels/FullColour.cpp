#include "program/pixels/FullColour.h"

#include "support/processor.h"

namespace qm {
namespace {

constexpr GammaTable kGamma = gamma_table();

void to_24bit_portable(const Ouint8* pixel, std::size_t count, Ouint8* out) {
    for (std::size_t i = 0; i < count; ++i, pixel += 4, out += 3) {
        out[0] = pixel[2];
        out[1] = pixel[1];
        out[2] = pixel[0];
    }
}

void to_16bit_portable(const Ouint8* pixel, std::size_t count, Ouint8* out) {
    for (std::size_t i = 0; i < count; ++i, pixel += 4, out += 2) {
        const Ouint16 value = pack_565(kGamma[pixel[2]], kGamma[pixel[1]], kGamma[pixel[0]]);
        out[0] = static_cast<Ouint8>(value);
        out[1] = static_cast<Ouint8>(value >> 8U);
    }
}

} // namespace

constexpr FullColourKernels kPortableFullColour{to_24bit_portable, to_16bit_portable};

const FullColourKernels& full_colour_kernels() {
    static const FullColourKernels& chosen = has_avx2() ? kAvx2FullColour : kPortableFullColour;
    return chosen;
}

} // namespace qm
