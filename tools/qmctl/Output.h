// Standard output belongs to results alone, though the library prints its messages there.
#pragma once

#include <cstdio>
#include <memory>
#include <string_view>

namespace qm::ctl {

class Output {
  public:
    // Keeps the real standard output for itself and points descriptor 1 at /dev/null.
    Output();

    // Sends the library's messages to standard error instead of nowhere.
    static void show_messages();

    // Writes results to a file instead, which it closes.
    void redirect(std::FILE* file) { m_results.reset(file); }
    // Writes a result; throws std::runtime_error when it cannot be written.
    void write(std::string_view text);
    [[nodiscard]] bool is_terminal() const;
    // Shows something passing; never fails.
    void show(std::string_view text) noexcept;

  private:
    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    std::unique_ptr<std::FILE, Closer> m_results;
};

} // namespace qm::ctl
