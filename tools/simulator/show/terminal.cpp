#include "simulator/show/terminal.h"

#include <algorithm>
#include <cerrno>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <poll.h>
#include <string_view>
#include <sys/ioctl.h>
#include <thread>
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

// 0: no terminal, or one that does not say.
int columns_of(int fd) {
    winsize size{};
    return ::ioctl(fd, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

std::string size_text(const Image& image) {
    return std::to_string(image.width) + "x" + std::to_string(image.height);
}

// All of it, however long that takes.
void write_all(int fd, std::string_view text) {
    while (!text.empty()) {
        const auto written = ::write(fd, text.data(), text.size());
        pollfd entry{fd, POLLOUT, 0};
        if (written < 0 && errno == EAGAIN) (void)::poll(&entry, 1, -1);
        if (written < 0 && errno != EAGAIN && errno != EINTR) return;
        if (written > 0) text.remove_prefix(static_cast<std::size_t>(written));
    }
}

} // namespace

std::string half_blocks(const Image& screen) {
    std::string text = kNoWrap;
    for (int y = 0; y < screen.height; y += 2) text += line_of(screen, y);
    return text + kWrap;
}

Image narrowed(const Image& screen, int width) {
    Image image(width, std::max(1, screen.height * width / screen.width));
    for (int y = 0; y < screen.height; ++y)
        for (int x = 0; x < screen.width; ++x) {
            const int to_x = x * width / screen.width, to_y = y * image.height / screen.height;
            const Rgb one = screen.at(x, y), other = image.at(to_x, to_y);
            image.set(to_x, to_y,
                      {std::max(one.r, other.r), std::max(one.g, other.g), std::max(one.b, other.b)});
        }
    return image;
}

struct Printer::Work {
    struct Entry {
        std::optional<Image> screen; // in place of a line
        int fd = -1;                 // of the line
        std::string line{};
    };

    Work(int fd_of_screens, bool replace) : fd(fd_of_screens), in_place(replace) {}

    void add(Entry entry);
    void run();
    void print(const Entry& entry);
    [[nodiscard]] bool done() const { return waiting.empty() && !printing; }

    const int fd;
    const bool in_place;
    int above = 0; // lines of the screen right above the cursor

    std::mutex mutex; // guards what follows
    std::condition_variable changed;
    std::deque<Entry> waiting;
    std::size_t bytes = 0, lost = 0; // of lines that wait; lines that found no room
    bool printing = false, ending = false;
};

void Printer::Work::add(Entry entry) {
    constexpr std::size_t kMostBytes = std::size_t{8} << 20U;
    const std::lock_guard lock(mutex);
    if (entry.screen) std::erase_if(waiting, [](const Entry& other) { return other.screen.has_value(); });
    if (bytes + entry.line.size() > kMostBytes) {
        ++lost;
        return;
    }
    if (lost > 0 && !entry.screen) entry.line.insert(0, "(" + std::to_string(lost) + " lines left out)\n");
    if (!entry.screen) lost = 0;
    bytes += entry.line.size();
    waiting.push_back(std::move(entry));
    changed.notify_all();
}

void Printer::Work::run() {
    std::unique_lock lock(mutex);
    while (true) {
        changed.wait(lock, [this] { return !waiting.empty() || ending; });
        if (waiting.empty()) return;
        const Entry entry = std::move(waiting.front());
        waiting.pop_front();
        bytes -= entry.line.size();
        printing = true;
        lock.unlock();
        print(entry);
        lock.lock();
        printing = false;
        changed.notify_all();
    }
}

void Printer::Work::print(const Entry& entry) {
    if (!entry.screen) {
        above = 0;
        return write_all(entry.fd, entry.line);
    }
    const std::string up = in_place && above > 0 ? "\x1b[" + std::to_string(above) + "A" : "";
    const int columns = columns_of(fd);
    const bool scaled = columns > 0 && columns < entry.screen->width;
    const Image screen = scaled ? narrowed(*entry.screen, columns) : *entry.screen;
    above = (screen.height + 1) / 2 + (scaled ? 1 : 0);
    const std::string words = size_text(*entry.screen) + " scaled to " + size_text(screen);
    write_all(fd, up + half_blocks(screen) +
                      (scaled ? words.substr(0, static_cast<std::size_t>(columns)) + "\n" : ""));
}

Printer::Printer(int fd, bool in_place) : m_work(std::make_shared<Work>(fd, in_place)) {
    std::thread([work = m_work] { work->run(); }).detach();
}

Printer::~Printer() {
    constexpr std::chrono::milliseconds kInstant(300);
    std::unique_lock lock(m_work->mutex);
    m_work->ending = true;
    m_work->changed.notify_all();
    m_work->changed.wait_for(lock, kInstant, [this] { return m_work->done(); });
}

void Printer::print(Image screen) { m_work->add({std::move(screen)}); }

void Printer::print_line(int fd, std::string line) {
    m_work->add({std::nullopt, fd, std::move(line) + "\n"});
}

} // namespace qm::sim
