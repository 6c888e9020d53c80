// Rendered pictures to controller pixel data, beside the plain form and beside moving the same memory.
#include "compare.h"

#include "program/PixelData.h"
#include "reference_conversion.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>

namespace qm::bench {
namespace {

constexpr int kWidth = 2048, kHeight = 1024;
constexpr std::size_t kSourceBytes = std::size_t{4} * kWidth * kHeight;

struct Case {
    const char* work;
    PixelLayout layout;
};
constexpr Case kCases[] = {
    {"convert 2048 x 1024, mode 0, double colour", {2, Tran_Pixel_Mode0, 1, 8}},
    {"convert 2048 x 1024, mode 4, double colour", {2, Tran_Pixel_Mode4, 1, 32}},
    {"convert 2048 x 1024, mode 3, full colour", {4, Tran_Pixel_Mode3, 1, 8}},
    {"convert 2048 x 1024, mode 5, full colour", {4, Tran_Pixel_Mode5, 1, 8}},
};

struct Memory {
    Frame source = random_bytes(kSourceBytes);
    Frame target = Frame(kSourceBytes); // no layout takes more than the source
};

void compare_conversion(const Case& c, const std::shared_ptr<Memory>& memory) {
    const auto ours = [=] {
        return convert_pixels(memory->source.data(), 0, kWidth, kHeight, c.layout, memory->target.data());
    };
    const auto plain = [=] {
        return reference::convert(memory->source.data(), 0, kWidth, kHeight, c.layout);
    };

    const Frame expected = plain();
    require(ours() == expected.size() && std::equal(expected.begin(), expected.end(), memory->target.begin()),
            std::string(c.work) + ": wrong bytes");

    const auto copy = [=] { std::memcpy(memory->target.data(), memory->source.data(), kSourceBytes); };
    compare_speed(
        c.work, kSourceBytes, ours,
        {{"bit by bit", [=] { benchmark::DoNotOptimize(plain().data()); }}, {"memcpy of the source", copy}});
}

} // namespace

void conversion() {
    const auto memory = std::make_shared<Memory>();
    for (const Case& c : kCases) compare_conversion(c, memory);
}

} // namespace qm::bench
