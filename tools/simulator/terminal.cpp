#include "simulator/terminal.h"

#include <optional>

namespace qm::sim {
namespace {

constexpr const char* kReset = "\x1b[0m";
constexpr const char* kNoWrap = "\x1b[?7l";
constexpr const char* kWrap = "\x1b[?7h";
constexpr const char* kUpperHalf = "\u2580";

std::string color_code(const char* ground, Rgb color) {
    return std::string("\x1b[") + ground + ";2;" + std::to_string(color.r) + ";" + std::to_string(color.g) +
           ";" + std::to_string(color.b) + "m";
}

// Colours are set where they change only.
std::string line_of(const Image& screen, int y) {
    std::string line;
    std::optional<Rgb> foreground, background;
    for (int x = 0; x < screen.width; ++x) {
        const Rgb upper = screen.at(x, y);
        const Rgb lower = y + 1 < screen.height ? screen.at(x, y + 1) : Rgb{};
        if (foreground != upper) line += color_code("38", upper);
        if (background != lower) line += color_code("48", lower);
        foreground = upper;
        background = lower;
        line += kUpperHalf;
    }
    return line + kReset + "\n";
}

} // namespace

std::string half_blocks(const Image& screen) {
    std::string text = kNoWrap;
    for (int y = 0; y < screen.height; y += 2) text += line_of(screen, y);
    return text + kWrap;
}

std::string half_blocks_over(const Image& screen) {
    return "\x1b[" + std::to_string((screen.height + 1) / 2) + "A" + half_blocks(screen);
}

} // namespace qm::sim
