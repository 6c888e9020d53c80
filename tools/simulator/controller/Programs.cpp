#include "simulator/controller/Programs.h"

#include "simulator/playback/program_parser.h"

#include <algorithm>

namespace qm::sim {
namespace {

constexpr std::uint8_t kProgramType = 0;

bool is_digit(char c) { return c >= '0' && c <= '9'; }

bool is_program(const StoredFile& file) {
    const std::string& name = file.name;
    return file.family == FileFamily::ordinary && file.type == kProgramType && name.size() == 4 &&
           (name[0] == 'P' || (is_digit(name[0]) && name[0] != '0')) &&
           std::all_of(name.begin() + 1, name.end(), is_digit);
}

const StoredFile* data_of(const FileSystem& files, const std::string& name) {
    return files.find(FileFamily::ordinary, std::string("D").append(name, 1));
}

} // namespace

std::map<std::string, Programs::Versions> Programs::find_all(const FileSystem& files) const {
    std::map<std::string, Versions> found;
    if (m_generation == Generation::none) return found;
    for (const auto& [key, file] : files.all()) {
        if (!is_program(file)) continue;
        const StoredFile* data = m_generation == Generation::six ? data_of(files, file.name) : nullptr;
        if (m_generation == Generation::five || data)
            found[file.name] = {file.version, data ? data->version : 0};
    }
    return found;
}

std::string Programs::update(const FileSystem& files, Milliseconds now) {
    if (files.version() == m_seen || files.transferring()) return {};
    m_seen = files.version();
    const auto found = find_all(files);
    std::string news = forget_missing(found);
    for (const auto& [name, versions] : found) {
        const auto known = m_known.find(name);
        if (known != m_known.end() && known->second == versions) continue;
        news += load(files, name);
    }
    m_known = found;
    if (!news.empty()) m_since = now;
    return news;
}

std::string Programs::forget_missing(const std::map<std::string, Versions>& found) {
    std::string news;
    for (const auto& [name, versions] : m_known) {
        if (found.contains(name)) continue;
        m_list.remove(name);
        m_errors.erase(name);
        news += "; program " + name + " is gone";
    }
    return news;
}

std::string Programs::load(const FileSystem& files, const std::string& name) {
    const Bytes file = files.find(FileFamily::ordinary, name)->data;
    ParsedProgram parsed = m_generation == Generation::six
                               ? parse_program(file, data_of(files, name)->data, m_format)
                               : parse_program(file, m_format);
    if (const auto* error = std::get_if<std::string>(&parsed)) {
        m_list.remove(name);
        m_errors[name] = *error;
        return "; program " + name + " cannot be played: " + *error;
    }
    m_errors.erase(name);
    m_list.put(name, std::get<StoredProgram>(std::move(parsed)));
    return "; program " + name + " is complete";
}

std::optional<Milliseconds> Programs::end_of_turn(const Moment& now) const {
    constexpr int kMostSteps = 20000; // of running text, some minutes
    if (m_known.size() < 2 || now.locked) return std::nullopt;
    const std::string name = playing(now);
    if (name.empty()) return std::nullopt;
    Moment then = now;
    for (int i = 0; i < kMostSteps; ++i) {
        if (playing(then) != name) return then.played;
        const auto next = next_change(then);
        if (!next) break;
        then = {*next, now.clock + std::chrono::floor<std::chrono::seconds>(*next - now.played)};
    }
    return std::nullopt;
}

std::optional<Milliseconds> Programs::next_change(const Moment& now) const {
    const auto next = m_list.next_change(in_list(now));
    return next ? std::optional(*next + m_since) : std::nullopt;
}

} // namespace qm::sim
