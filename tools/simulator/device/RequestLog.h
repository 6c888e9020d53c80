// What a controller was asked lately, and what else happened to it. Any thread may call it.
#pragma once

#include "support/bytes.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace qm::sim {

struct LogEntry {
    std::uint64_t number = 0; // counts from 1
    std::chrono::system_clock::time_point time{};
    std::string peer{};               // address and port; empty: nobody asked
    std::string command{};            // and what became of it, in words
    std::optional<unsigned> status{}; // 0 or an error value; nothing when it was not answered
    ByteBuffer bytes{};               // of the frame, the first ones
};

class RequestLog {
  public:
    static constexpr std::size_t kEntries = 1000;

    // Numbers it, and forgets the oldest ones; bytes of old ones also when all together are too many.
    void add(LogEntry entry);
    // Those that came after the one of that number, oldest first; of more than the most the newest.
    [[nodiscard]] std::vector<LogEntry> after(std::uint64_t number, std::size_t most = kEntries) const;

    // Number of the newest one, 0 without any.
    [[nodiscard]] std::uint64_t latest() const;

  private:
    void forget_bytes();

    mutable std::mutex m_mutex; // guards what follows
    std::deque<LogEntry> m_entries;
    std::uint64_t m_latest = 0;
    std::size_t m_bytes = 0;
};

} // namespace qm::sim
