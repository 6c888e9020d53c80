// Screens and lines of text on a terminal.
#pragma once

#include "simulator/playback/Image.h"

#include <memory>
#include <string>

namespace qm::sim {

// Two rows of pixels a line, in upper half blocks with 24-bit colours. What is wider than the terminal is
// cut at its edge rather than wrapped.
[[nodiscard]] std::string half_blocks(const Image& screen);

// So many pixels wide, each with the brightest of every colour that falls on it, so that thin strokes stay.
[[nodiscard]] Image narrowed(const Image& screen, int width);

// Prints from a thread of its own, in the order in which things come, so that nobody waits for a reader who
// does not keep up. Such a reader misses screens, but for the latest, and lines beyond some megabytes. Any
// thread may call it.
class Printer {
  public:
    // Screens go to the descriptor: one below the other, or each in the place of the one right above it. On a
    // terminal that is too narrow they are scaled to its width, and a line below says so.
    Printer(int fd, bool in_place);
    Printer(const Printer&) = delete;
    Printer& operator=(const Printer&) = delete;
    // Waits until all is printed, but for no longer than an instant.
    ~Printer();

    void print(Image screen);
    void print_line(int fd, std::string line);

  private:
    struct Work;
    std::shared_ptr<Work> m_work; // the thread's as well, which a reader may hold up for good
};

} // namespace qm::sim
