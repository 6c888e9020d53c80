// Frames arrive whole, whatever pieces the network cuts them into.
#include "simulator/wire/FrameSplitter.h"

#include "hex.h"

namespace qm::sim {
namespace {

using qm::test::hex;
using qm::test::hex_text;

// The bodies that come out, in hex, or what is wrong with a frame, each followed by a bar.
std::string split(Bytes stream, std::size_t piece, std::size_t limit = 16) {
    FrameSplitter splitter(limit);
    std::string bodies;
    while (!stream.empty()) {
        Bytes input = stream.first(std::min(piece, stream.size()));
        stream = stream.subspan(input.size());
        while (const auto frame = splitter.next(input)) {
            if (const auto* body = std::get_if<ByteBuffer>(&frame->body))
                bodies += hex_text(*body) + "|";
            else
                bodies += std::string(std::get<BadFrame>(frame->body).why) + "|";
        }
    }
    return bodies;
}

struct StreamCase {
    const char *name, *stream, *bodies;
};

class FrameStream : public testing::TestWithParam<StreamCase> {};

TEST_P(FrameStream, GivesTheSameFramesWhateverThePieces) {
    const ByteBuffer stream = hex(GetParam().stream);
    for (std::size_t piece = 1; piece <= stream.size(); ++piece)
        EXPECT_EQ(split(stream, piece), GetParam().bodies) << "pieces of " << piece;
}

INSTANTIATE_TEST_SUITE_P(
    , FrameStream,
    testing::Values(
        StreamCase{"Plain", "A5*8 01 02 5A", "01 02|"},
        StreamCase{"Escapes", "A5*8 5B 02 5B 01 A6 02 A6 01 5A", "5A 5B A5 A6|"},
        StreamCase{"TwoInARow", "A5*8 01 5A A5*8 02 5A", "01|02|"},
        StreamCase{"FewStartBytes", "A5 01 5A", "01|"},
        StreamCase{"GarbageAround", "00 5A 5B 7F A5*8 01 5A FF 5A 00", "01|"},
        StreamCase{"UnknownEscape", "A5*8 01 5B 03 02 5A A5*8 04 5A", "its stuffing is broken|04|"},
        StreamCase{"EscapeOfNothing", "A5*8 01 5B 5A A5*8 04 5A", "its stuffing is broken|04|"},
        StreamCase{"CutOffByTheNext", "A5*8 01 02 A5*8 03 5A", "it is cut off by the start of another|03|"},
        StreamCase{"Empty", "A5*8 5A A5*8 03 5A", "there is nothing in it|03|"},
        StreamCase{"LongestAllowed", "A5*8 77*16 5A A5*8 03 5A",
                   "77 77 77 77 77 77 77 77 77 77 77 77 77 77 77 77|03|"},
        StreamCase{"TooLong", "A5*8 77*17 01 02 5A A5*8 03 5A",
                   "it is too long for a screen of this size|03|"}),
    [](const auto& which) { return which.param.name; });

} // namespace
} // namespace qm::sim
