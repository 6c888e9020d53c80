#include "simulator/terminal.h"

#include <algorithm>
#include <climits>
#include <optional>
#include <poll.h>
#include <unistd.h>

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

void ScreenPrinter::print(const Image& screen) {
    const bool over = m_follows.exchange(true) && m_in_place;
    const std::string end = m_cut ? std::string(kReset) + kWrap + "\n" : "";
    const std::string up = over ? "\x1b[" + std::to_string((screen.height + 1) / 2) + "A" : "";
    m_missed = !write(end + up + half_blocks(screen));
    if (m_missed) m_follows = false;
}

// In pieces for which a pipe that is ready has room. Who has missed a screen is not waited for again, but who
// has kept up so far is: the screen at hand may be the last one for long.
bool ScreenPrinter::write(std::string_view text) {
    constexpr int kInstant = 100; // ms
    for (int patience = m_missed ? 0 : kInstant; !text.empty(); patience = kInstant) {
        pollfd entry{m_fd, POLLOUT, 0};
        const bool ready = ::poll(&entry, 1, patience) > 0;
        const auto written =
            ready ? ::write(m_fd, text.data(), std::min<std::size_t>(text.size(), PIPE_BUF)) : 0;
        m_cut = written > 0 || m_cut;
        if (written <= 0) return false;
        text.remove_prefix(static_cast<std::size_t>(written));
    }
    m_cut = false;
    return true;
}

} // namespace qm::sim
