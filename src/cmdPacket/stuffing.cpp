#include "cmdPacket/stuffing.h"

#include "support/processor.h"

#include <cstring>

namespace qm {
namespace {

constexpr bool is_escape(Ouint8 b) { return b == 0x5B || b == 0xA6; }
constexpr bool needs_escape(Ouint8 b) { return b == 0x5A || b == 0xA5 || is_escape(b); }

std::size_t count_portable(Bytes bytes) {
    std::size_t count = 0;
    for (const Ouint8 b : bytes) count += needs_escape(b);
    return count;
}

// Copies whole blocks as long as there is no byte in them that needs an escape; returns the bytes copied.
std::size_t copy_plain(Bytes bytes, Ouint8* out) {
    constexpr std::size_t kBlock = 64;
    std::size_t at = 0;
    for (; bytes.size() - at >= kBlock; at += kBlock) {
        Ouint8 found = 0; // no early exit, so that the compiler takes many bytes at once
        for (std::size_t i = 0; i < kBlock; ++i) found |= static_cast<Ouint8>(needs_escape(bytes[at + i]));
        if (found) break;
        std::memcpy(out + at, &bytes[at], kBlock);
    }
    return at;
}

// Bytes taken one by one before whole blocks are tried again.
constexpr std::size_t kAwkward = 64;

std::size_t stuff_portable(Bytes bytes, Ouint8* out) {
    Ouint8* p = out;
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t plain = copy_plain(bytes.subspan(at), p);
        p += plain;
        at += plain;
        for (const std::size_t end = std::min(bytes.size(), at + kAwkward); at < end; ++at) {
            const Ouint8 b = bytes[at];
            if (!needs_escape(b)) {
                *p++ = b;
                continue;
            }
            *p++ = static_cast<Ouint8>(is_escape(b) ? b : b + 1);
            *p++ = is_escape(b) ? 1 : 2;
        }
    }
    return static_cast<std::size_t>(p - out);
}

std::size_t restore_portable(Bytes stuffed, Ouint8* out) {
    Ouint8* p = out;
    for (std::size_t at = 0; at < stuffed.size();) {
        const std::size_t plain = copy_plain(stuffed.subspan(at), p);
        p += plain;
        at += plain;
        for (const std::size_t end = std::min(stuffed.size(), at + kAwkward); at < end; ++at) {
            const Ouint8 b = stuffed[at];
            const Ouint8 next = at + 1 < stuffed.size() ? stuffed[at + 1] : Ouint8{0};
            const bool pair = is_escape(b) && (next == 1 || next == 2);
            *p++ = static_cast<Ouint8>(pair ? b + 1 - next : b);
            if (pair) ++at;
        }
    }
    return static_cast<std::size_t>(p - out);
}

} // namespace

constexpr StuffingKernels kPortableStuffing{count_portable, stuff_portable, restore_portable};

const StuffingKernels& stuffing_kernels() {
    static const StuffingKernels& chosen = has_avx2() ? kAvx2Stuffing : kPortableStuffing;
    return chosen;
}

} // namespace qm
