// A bar on the terminal while a file is being written, drawn from what the controller says it has.
#pragma once

#include "Session.h"

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

namespace qm::ctl {

// Asks the controller for its transfer status, on connections of its own, until it is destroyed. A controller
// that does not tell is not asked again; then the bar shows the elapsed time only.
class Progress {
  public:
    Progress(const Session& session, std::string name, std::size_t size);
    // While a file is being written; null when nobody looks.
    [[nodiscard]] static std::unique_ptr<Progress> of(const Session& session, const File& file);
    // Wipes the bar.
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

  private:
    void watch();
    [[nodiscard]] std::optional<std::size_t> offset() const;
    void draw();
    // False when it has ended.
    [[nodiscard]] bool pause();

    const Session& m_session;
    const std::string m_name;
    const std::size_t m_size;
    const std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
    bool m_told = true; // the controller tells how far it is
    std::optional<std::size_t> m_written;
    std::mutex m_mutex;
    std::condition_variable m_ending;
    bool m_ended = false;
    std::thread m_thread;
};

} // namespace qm::ctl
