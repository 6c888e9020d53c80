#include "Progress.h"

#include <algorithm>
#include <array>
#include <sstream>

namespace qm::ctl {
namespace {

constexpr std::chrono::milliseconds kBetween{200};
constexpr std::size_t kWidth = 30;

} // namespace

Progress::Progress(const Session& session, std::string name, std::size_t size)
    : m_session(session), m_name(std::move(name)), m_size(size), m_thread([this] { watch(); }) {}

std::unique_ptr<Progress> Progress::of(const Session& session, const File& file) {
    if (session.json || session.verbose || session.one_of_many || !session.output->is_terminal())
        return nullptr;
    return std::make_unique<Progress>(session, file.name, file.bytes.size());
}

Progress::~Progress() {
    {
        const std::lock_guard lock(m_mutex);
        m_ended = true;
    }
    m_ending.notify_one();
    m_thread.join();
    m_session.output->pass("");
}

void Progress::watch() {
    do {
        draw();
        if (!m_told) continue;
        const auto written = offset();
        m_told = written.has_value();
        if (written) m_written = written;
    } while (pause());
}

// Nothing when the controller does not answer. Another transfer than ours counts as none yet.
std::optional<std::size_t> Progress::offset() const {
    Ouint8 writes = 0;
    std::array<char, 4> name{};
    Ouint32 crc = 0, offset = 0;
    if (!m_session.controller.call(cmd_ofsGetTransStatus, &writes, name.data(), &crc, &offset))
        return std::nullopt;
    const bool ours = writes == 1 && std::ranges::equal(name, m_name);
    return ours ? std::min<std::size_t>(offset, m_size) : 0;
}

void Progress::draw() {
    const auto elapsed = std::chrono::steady_clock::now() - m_start;
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(elapsed).count();
    const std::size_t written = m_written.value_or(0);
    std::ostringstream line;
    line << m_name << "  ";
    if (m_told) {
        const std::size_t done = m_size ? written * kWidth / m_size : kWidth;
        line << '[' << std::string(done, '#') << std::string(kWidth - done, ' ') << "]  " << written
             << " of ";
    }
    line << m_size << " bytes  " << seconds << " s";
    m_session.output->pass(line.str());
}

bool Progress::pause() {
    std::unique_lock lock(m_mutex);
    return !m_ending.wait_for(lock, kBetween, [this] { return m_ended; });
}

} // namespace qm::ctl
