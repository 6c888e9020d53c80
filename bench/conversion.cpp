// Rendered pictures to controller pixel data: bit planes beside the plain form and beside reading the same
// memory, full colour beside the plain form and beside a library that does much the same.
#include "compare.h"

#include "program/pixels/pixel_packing.h"
#include "reference_conversion.h"

#include <benchmark/benchmark.h>
#include <libyuv.h>

#include <cstring>
#include <memory>

namespace qm::bench {
namespace {

constexpr int kWidth = 2048, kHeight = 1024;
constexpr std::size_t kSourceBytes = std::size_t{4} * kWidth * kHeight;

struct Memory {
    ByteBuffer source = random_bytes(kSourceBytes);
    ByteBuffer target = ByteBuffer(kSourceBytes); // no layout takes more than the source
};
using SharedMemory = std::shared_ptr<Memory>;

struct Case {
    std::string work;
    PixelLayout layout;
    int left;
};

// The least that can be done with the pixels: a sum of them.
Ouint32 sum_of_words(Bytes bytes) {
    Ouint32 sum = 0;
    for (std::size_t i = 0; i + 4 <= bytes.size(); i += 4) {
        Ouint32 word;
        std::memcpy(&word, &bytes[i], sizeof word);
        sum += word;
    }
    return sum;
}

void compare_conversion(const Case& c, const SharedMemory& memory, double bitMark, const Peer& peer) {
    const auto ours = [=] {
        return convert_pixels(memory->source.data(), c.left, kWidth, kHeight, c.layout,
                              memory->target.data());
    };
    const auto plain = [=] {
        return reference::convert(memory->source.data(), c.left, kWidth, kHeight, c.layout);
    };

    const ByteBuffer expected = plain();
    require(ours() == expected.size() && std::equal(expected.begin(), expected.end(), memory->target.begin()),
            c.work + ": wrong bytes");
    compare_speed("convert 2048 x 1024, " + c.work, kSourceBytes, ours,
                  {{"bit by bit", [=] { benchmark::DoNotOptimize(plain().data()); }, bitMark}, peer});
}

void bit_planes(const SharedMemory& memory) {
    constexpr struct {
        int color;
        const char* name;
    } kColors[] = {
        {SCREEN_COLOR_SINGLE, "single"}, {SCREEN_COLOR_DOUBLE, "double"}, {SCREEN_COLOR_THREE, "three"}};
    const Peer reading{"reading it", [=] { benchmark::DoNotOptimize(sum_of_words(memory->source)); }, 0.25};
    for (const int mode : {Tran_Pixel_Mode0, Tran_Pixel_Mode4})
        for (const auto& color : kColors)
            for (const int left : {0, 3}) {
                std::string work = "mode ";
                work += std::to_string(mode);
                work.append(", ").append(color.name).append(left == 0 ? " colour" : " colour, at column 3");
                const unsigned unit = mode == Tran_Pixel_Mode0 ? 8 : 32;
                compare_conversion({work, {color.color, mode, 1, unit}, left}, memory, 40, reading);
            }
}

void full_colour(const SharedMemory& memory) {
    const auto peer = [&memory](const char* name, auto function, int bytes, double mark) {
        const auto run = [=] {
            function(memory->source.data(), 4 * kWidth, memory->target.data(), bytes * kWidth, kWidth,
                     kHeight);
        };
        return Peer{name, run, mark};
    };
    compare_conversion({"mode 3, full colour", {SCREEN_COLOR_FULLCOLOR, Tran_Pixel_Mode3, 1, 8}, 0}, memory,
                       0, peer("libyuv, no gamma", libyuv::ARGBToRGB565, 2, 0.5));
    compare_conversion({"mode 5, full colour", {SCREEN_COLOR_FULLCOLOR, Tran_Pixel_Mode5, 1, 8}, 0}, memory,
                       0, peer("libyuv", libyuv::ARGBToRAW, 3, 0.8));
}

} // namespace

void conversion() {
    const auto memory = std::make_shared<Memory>();
    bit_planes(memory);
    full_colour(memory);
}

} // namespace qm::bench
