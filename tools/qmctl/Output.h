// Standard output belongs to results alone, though the library prints its messages there.
#pragma once

#include <cstdio>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

namespace qm::ctl {

// Any thread may write; what is written stays whole.
class Output {
  public:
    // Keeps the real standard output for itself and points descriptor 1 at /dev/null.
    Output();

    // Sends the library's messages to standard error instead of nowhere.
    static void show_messages();

    // Writes a result; throws std::runtime_error when it cannot be written.
    void write(std::string_view text);
    // Writes one whatever becomes of it.
    void show(std::string_view text) noexcept;
    // Writes to standard error, even though somebody waits for standard output to be read.
    void remark(std::string_view text) noexcept;

    [[nodiscard]] bool is_terminal() const;
    // Shows a line on the terminal, in place of the one before and below all that is written; none when it is
    // empty.
    void pass(std::string line) noexcept;

  private:
    void wipe() noexcept;
    void draw() noexcept;

    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    std::unique_ptr<std::FILE, Closer> m_results;
    std::timed_mutex m_mutex;
    std::string m_passing;
};

} // namespace qm::ctl
