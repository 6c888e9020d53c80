// The screen as text for a terminal.
#pragma once

#include "simulator/Image.h"

#include <atomic>
#include <string>
#include <string_view>

namespace qm::sim {

// Two rows of pixels a line, in upper half blocks with 24-bit colours. What is wider than the terminal is
// cut at its edge rather than wrapped.
[[nodiscard]] std::string half_blocks(const Image& screen);

// Prints screens to a descriptor, one below the other, or each in the place of the one before. A reader who
// does not keep up misses screens: printing never waits for one for longer than an instant. One thread at a
// time may print.
class ScreenPrinter {
  public:
    ScreenPrinter(int fd, bool in_place) : m_fd(fd), m_in_place(in_place) {}

    void print(const Image& screen);
    // Something else was printed: the next screen comes below it. Any thread may say so.
    void interrupt() { m_follows = false; }
    // The latest screen was not printed, or not all of it.
    [[nodiscard]] bool missed() const { return m_missed; }

  private:
    bool write(std::string_view text);

    int m_fd;
    bool m_in_place;
    std::atomic<bool> m_follows = false; // the cursor stands right below a screen
    bool m_missed = false;
    bool m_cut = false; // a screen ends somewhere in the middle
};

} // namespace qm::sim
