// Bytes are opened as an answer when the tests' own reader finds one in them, with what that finds; whatever
// they are, no more is written than there is room for.
#include "cmdPacket/LedHVPacket.h"
#include "require.h"
#include "support/reason.h"
#include "wire.h"

namespace qm::fuzz {
namespace {

constexpr Ouint8 kGroup = 0xA2, kCode = 0;

// A frame, with any number of start and end bytes.
ByteBuffer body_of(Bytes frame) {
    if (frame.empty() || frame.front() != 0xA5 || frame.back() != 0x5A) return {};
    while (!frame.empty() && frame.front() == 0xA5) frame = frame.subspan(1);
    while (!frame.empty() && frame.back() == 0x5A) frame = frame.first(frame.size() - 1);
    return test::restore(frame);
}

// What Unpack should give, -1 standing for every refusal.
int expected(Bytes body, ByteBuffer& room) {
    const auto application = test::application_of(body);
    if (!application || application->size() < 9) return QM_FAILED;
    ByteReader in(*application);
    in.skip(1);
    const Ouint8 group = in.u8(), code = in.u8();
    in.skip(2);
    const Ouint16 error = in.u16(), length = in.u16();
    const std::size_t capacity = std::exchange(room, {}).size();
    if (group == hv_GRP_Global && code <= hv_NACK) return code == hv_ACK ? 0 : int{error};
    if (group != kGroup || code != kCode + 0x80 || length > in.left() || capacity == 0) return QM_FAILED;
    const Bytes taken = in.bytes(std::min<std::size_t>(length, capacity));
    room.assign(taken.begin(), taken.end());
    return length > capacity ? QM_TRUNCATED : QM_OK;
}

} // namespace
} // namespace qm::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace qm;
    ByteReader in({data, size});
    ByteBuffer room(in.u8()), right = room, handshake;
    const ByteBuffer body = fuzz::body_of(in.rest());
    const int status = fuzz::expected(body, right);
    Answer answer{room};
    clear_reason();
    fuzz::require(std::max(LedHVPacket().Unpack(in.rest(), fuzz::kGroup, fuzz::kCode, answer), -1) == status);
    fuzz::require(status >= QM_OK || *reason() != 0);
    if (status == QM_OK || status == QM_TRUNCATED)
        fuzz::require(std::ranges::equal(answer.received(), right));
    const bool known = body.size() >= 8 && (body[4] == 5 || body[4] == 7);
    fuzz::require((LedHVPacket().UnpackPing3(in.rest(), handshake) == QM_OK) == known);
    if (known) fuzz::require(handshake == body);
    return 0;
}
