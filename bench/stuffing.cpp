// Byte stuffing of frames and its inverse, beside plain loops that look at one byte after the other.
#include "compare.h"

#include "cmdPacket/LedPacket.h"

#include <benchmark/benchmark.h>

#include <memory>

namespace qm::bench {
namespace {

constexpr std::size_t kBytes = 1U << 16U; // of random bytes, one in 64 needs an escape

std::size_t stuff_bytewise(Bytes body, Ouint8* out) {
    Ouint8* p = std::fill_n(out, 8, Ouint8{0xA5});
    for (const Ouint8 b : body) {
        if (b == 0x5A || b == 0x5B) {
            *p++ = 0x5B;
            *p++ = b == 0x5A ? 2 : 1;
        } else if (b == 0xA5 || b == 0xA6) {
            *p++ = 0xA6;
            *p++ = b == 0xA5 ? 2 : 1;
        } else {
            *p++ = b;
        }
    }
    *p++ = 0x5A;
    return static_cast<std::size_t>(p - out);
}

// Of a good frame: no end byte is missing and no escape is cut.
std::size_t unstuff_bytewise(Bytes frame, Ouint8* out) {
    const Ouint8* in = frame.data();
    while (*in == 0xA5) ++in;
    Ouint8* p = out;
    while (*in != 0x5A) {
        const Ouint8 b = *in++;
        const bool escape = b == 0x5B || b == 0xA6;
        *p++ = escape && *in++ == 2 ? static_cast<Ouint8>(b - 1) : b;
    }
    return static_cast<std::size_t>(p - out);
}

struct Buffers {
    Frame body = random_bytes(kBytes);
    Frame frame;                            // ours, stuffed
    Frame restored;                         // ours, back again
    Frame room = Frame(8 + 2 * kBytes + 1); // where the loops write
    LedPacket packet;
};

} // namespace

void stuffing() {
    const auto b = std::make_shared<Buffers>();

    const auto stuff = [=] { LedPacket::Transfer_Packet(b->body, b->frame); };
    const auto stuff_plain = [=] { return stuff_bytewise(b->body, b->room.data()); };
    stuff();
    require(stuff_plain() == b->frame.size() && std::equal(b->frame.begin(), b->frame.end(), b->room.begin()),
            "stuffing: not as the plain loop's");
    compare_speed("stuff 64 KiB", kBytes, stuff,
                  {{"byte by byte", [=] { benchmark::DoNotOptimize(stuff_plain()); }}});

    const auto unstuff = [=] { b->packet.Restore_Packet(b->frame, b->restored); };
    const auto unstuff_plain = [=] { return unstuff_bytewise(b->frame, b->room.data()); };
    unstuff();
    require(b->restored == b->body, "un-stuffing: not what was stuffed");
    require(unstuff_plain() == kBytes && std::equal(b->body.begin(), b->body.end(), b->room.begin()),
            "un-stuffing by the plain loop: not what was stuffed");
    compare_speed("un-stuff 64 KiB", kBytes, unstuff,
                  {{"byte by byte", [=] { benchmark::DoNotOptimize(unstuff_plain()); }}});
}

} // namespace qm::bench
