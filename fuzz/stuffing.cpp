// Every kernel stuffs and restores any bytes as the plain ones of the tests do, and fills no more than it
// says.
#include "cmdPacket/stuffing.h"
#include "cmdPacket/LedPacket.h"
#include "require.h"
#include "support/processor.h"
#include "wire.h"

#include <algorithm>

namespace qm::fuzz {
namespace {

// A byte at a time; out of nothing that a kernel uses.
ByteBuffer restored_bytewise(Bytes stuffed) {
    ByteBuffer out;
    for (std::size_t i = 0; i < stuffed.size(); ++i) {
        const Ouint8 b = stuffed[i], next = i + 1 < stuffed.size() ? stuffed[i + 1] : Ouint8{0};
        const bool pair = (b == 0x5B || b == 0xA6) && (next == 1 || next == 2);
        out.push_back(static_cast<Ouint8>(pair && next == 2 ? b - 1 : b));
        if (pair) ++i;
    }
    return out;
}

void check(const StuffingKernels& kernels, Bytes input) {
    const ByteBuffer frame = test::stuff(input), restored = restored_bytewise(input);
    const Bytes stuffed = Bytes(frame).subspan(8, frame.size() - 9);
    require(kernels.count(input) == stuffed.size() - input.size());
    ByteBuffer out(stuffed.size()), back(input.size());
    require(kernels.stuff(input, out.data()) == out.size() && std::ranges::equal(out, stuffed));
    back.resize(kernels.restore(input, back.data()));
    require(back == restored);
    back.resize(out.size());
    back.resize(kernels.restore(out, back.data()));
    require(std::ranges::equal(back, input));
}

} // namespace
} // namespace qm::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const qm::Bytes input(data, size);
    qm::fuzz::check(qm::kPortableStuffing, input);
    if (qm::has_avx2()) qm::fuzz::check(qm::kAvx2Stuffing, input);
    if (size == 0) return 0; // an empty body is no frame
    qm::ByteBuffer body;
    qm::LedPacket().Restore_Packet(qm::test::stuff(input), body);
    qm::fuzz::require(std::ranges::equal(body, input));
    return 0;
}
