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

void check(const StuffingKernels& kernels, Bytes input) {
    const ByteBuffer frame = test::stuff(input), restored = test::restore(input);
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
