// Whatever the pieces in which bytes come to a controller, the frames among them are the same, and each is a
// command or is none. What the library packs comes out as it went in.
#include "cmdPacket/LedHVPacket.h"
#include "require.h"
#include "simulator/wire/open_request.h"

#include <tuple>

namespace qm::sim {
namespace {

using Frame = std::tuple<std::string, ByteBuffer, ByteBuffer>; // why it has no body; that; all of it

std::vector<Frame> split(Bytes stream, std::size_t longest, std::size_t piece) {
    FrameSplitter splitter(longest);
    std::vector<Frame> frames;
    for (; !stream.empty(); stream = stream.subspan(std::min(piece, stream.size()))) {
        Bytes input = stream.first(std::min(piece, stream.size()));
        while (const auto next = splitter.next(input)) {
            const auto* const bad = std::get_if<BadFrame>(&next->body);
            const ByteBuffer body = bad ? ByteBuffer() : std::get<ByteBuffer>(next->body);
            fuzz::require(body.empty() == (bad != nullptr) && body.size() <= longest &&
                          next->bytes.size() <= 4096);
            frames.emplace_back(bad ? bad->why : "", body, next->bytes);
        }
    }
    return frames;
}

void open(Bytes stream, std::size_t longest, std::size_t piece) {
    const auto frames = split(stream, longest, stream.size());
    fuzz::require(frames == split(stream, longest, piece));
    for (const auto& [why, body, bytes] : frames)
        for (const auto kind : {Generation::five, Generation::six}) (void)open_request(body, kind);
}

// A piece's length, the longest body, and the bytes that come.
void check(ByteReader in) {
    const std::size_t piece = 1U + in.u8(), longest = 1U + 8U * in.u8();
    const Bytes content = in.rest().first(std::min<std::size_t>(in.left(), 65000));
    open(content, longest, piece);
    LedHVPacket library; // in an envelope anything may stand, a frame of its own too, whole or not
    open(library.Pack6HnX_DynamicArea(0, 0, content), 1U << 20U, piece);
    const auto opened = [](Bytes frame, Generation kind) {
        return std::get<Request>(open_request(std::get<1>(split(frame, 1U << 20U, 1U << 20U).at(0)), kind));
    };
    const auto same_as = [content](Bytes found) { fuzz::require(std::ranges::equal(found, content)); };
    same_as(opened(library.Pack5(0xA1, 2, content), Generation::five).payload());
    same_as(opened(library.Pack6(0xA1, 2, content), Generation::six).payload());
    same_as(opened(library.Pack6_OnlyHeader(content), Generation::six).application);
}

} // namespace
} // namespace qm::sim

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    qm::sim::check(qm::ByteReader({data, size}));
    return 0;
}
