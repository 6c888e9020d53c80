// An animated picture of what a screen shows, frame by frame at its own times.
#pragma once

#include "simulator/playback/Image.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <span>

namespace qm::sim {

class GifWriter {
  public:
    using Time = std::chrono::steady_clock::time_point;
    // Takes bytes of the file; false when it cannot.
    using Sink = std::function<bool(std::span<const std::uint8_t>)>;

    explicit GifWriter(Sink sink);
    GifWriter(const GifWriter&) = delete;
    GifWriter& operator=(const GifWriter&) = delete;
    ~GifWriter();

    // The screen shows that from now on. Viewers show a frame for 20 ms at least: of pictures that come
    // faster some are left out. Throws std::runtime_error, as finish does, when the sink fails or memory runs
    // out.
    void add(std::shared_ptr<const Image> picture, Time now);
    // Up to now the latest one was shown.
    void finish(Time now);

  private:
    struct File;
    struct Shown {
        std::shared_ptr<const Image> picture;
        Time since;
    };

    void write(Time end);

    std::unique_ptr<File> m_file;
    std::optional<Shown> m_shown, m_next; // not yet written
    std::shared_ptr<const Image> m_written;
    std::optional<Time> m_begin;
};

} // namespace qm::sim
