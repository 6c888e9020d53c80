// Byte stuffing and its inverse.
//
// A frame body must carry none of the start byte A5, the end byte 5A and the escape bytes A6 and 5B. An
// escape byte followed by 1 stands for itself, followed by 2 for the byte below it.
#pragma once

#include "support/bytes.h"

namespace qm {

struct StuffingKernels {
    // How many of the bytes need an escape.
    std::size_t (*count)(Bytes bytes);
    // Writes the bytes with their escapes, as many bytes more as were counted; returns the bytes written.
    std::size_t (*stuff)(Bytes bytes, Ouint8* out);
    // Undoes the escapes; an escape byte with anything else behind it stands for itself. out holds at least
    // as many bytes as come in; returns the bytes written.
    std::size_t (*restore)(Bytes stuffed, Ouint8* out);
};

extern const StuffingKernels kPortableStuffing; // for any processor
extern const StuffingKernels kAvx2Stuffing;     // where has_avx2() says so

// Those that are faster on this processor.
[[nodiscard]] const StuffingKernels& stuffing_kernels();

} // namespace qm
