#include "simulator/controller/Store.h"

#include "global.h"
#include "simulator/controller/state_json.h"

#include <cerrno>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <set>
#include <system_error>

namespace qm::sim {
namespace fs = std::filesystem;
namespace {

constexpr const char* kIndex = "index.json";
constexpr const char* kOrdinary = "ordinary";
constexpr const char* kConfiguration = "configuration";

ByteBuffer read_whole(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

FileFamily family_from(const std::string& text) {
    if (text == kOrdinary) return FileFamily::ordinary;
    if (text == kConfiguration) return FileFamily::configuration;
    throw std::runtime_error("there is no such family of files: " + text);
}

// The file that an entry of the index describes, its data still to be read.
StoredFile file_from(const nlohmann::json& entry) {
    StoredFile file;
    file.family = family_from(entry.at("family").get<std::string>());
    file.name = bytes_of(entry.at("name").get<std::string>());
    if (file.name.size() != FileSystem::kNameSize)
        throw std::runtime_error("a file name has not 4 characters");
    file.type = entry.at("type").get<std::uint8_t>();
    file.crc = entry.at("crc").get<std::uint32_t>();
    file.data_crc = entry.value("data_crc", file.crc); // where none was kept beside it, that was of the data
    return file;
}

bool has_files(const fs::path& folder) { return fs::exists(folder) && !fs::is_empty(folder); }

} // namespace

void write_whole(const fs::path& path, Bytes bytes) {
    const fs::path draft = path.string() + ".new";
    std::ofstream out(draft, std::ios::binary | std::ios::trunc);
    if (!out) throw std::system_error(errno, std::generic_category(), "cannot write " + draft.string());
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    out.close();
    if (!out)
        throw std::system_error(std::make_error_code(std::errc::io_error), "cannot write " + draft.string());
    fs::rename(draft, path);
}

Store::Store(fs::path folder, Complain complain)
    : m_folder(std::move(folder)), m_complain(std::move(complain)) {
    std::error_code error;
    fs::create_directories(m_folder, error);
    if (error)
        throw std::runtime_error("cannot make the store " + m_folder.string() + ": " + error.message());
}

fs::path Store::path_of(FileFamily family, const std::string& name) const {
    return m_folder / (family == FileFamily::ordinary ? kOrdinary : kConfiguration) / label_of(name);
}

Store::Contents Store::load() {
    const std::vector<fs::path> everything{m_folder / kIndex, m_folder / kOrdinary,
                                           m_folder / kConfiguration};
    std::string why = "there is no index";
    try {
        if (fs::exists(everything[0])) return load_index();
        if (!has_files(everything[1]) && !has_files(everything[2])) return {};
    } catch (const std::exception& error) {
        why = std::string("the index is damaged: ") + error.what();
    }
    const fs::path aside = set_aside(everything);
    m_kept.clear();
    m_complain(m_folder.string() + ": " + why + "; starting empty, what was there is now in " +
               aside.string());
    return {};
}

Store::Contents Store::load_index() {
    const ByteBuffer text = read_whole(m_folder / kIndex);
    const auto index = nlohmann::json::parse(text.begin(), text.end());
    Contents contents{state_from(index.at("settings")), {}};
    for (const auto& entry : index.at("files")) contents.files.push_back(file_from(entry));
    std::erase_if(contents.files, [this](StoredFile& file) { return !load_data(file); });
    contents.settings = after_restart(std::move(contents.settings));
    return contents;
}

bool Store::load_data(StoredFile& file) {
    const fs::path path = path_of(file.family, file.name);
    m_kept[path] = 0;
    const bool there = fs::is_regular_file(path) && fs::file_size(path) <= FileSystem::kCapacity;
    if (there) file.data = read_whole(path);
    if (there && calc_crc32(file.data) == file.data_crc) return true;
    std::string sentence = path.string() + (fs::exists(path) ? ": its CRC is wrong" : ": it is missing");
    if (fs::exists(path)) sentence += "; it is now in " + set_aside({path}).string();
    m_complain(sentence);
    return false;
}

fs::path Store::set_aside(const std::vector<fs::path>& paths) {
    fs::path aside;
    for (unsigned n = 1; aside.empty() || fs::exists(aside); ++n)
        aside = m_folder / ("damaged-" + std::to_string(n));
    fs::create_directory(aside);
    for (const fs::path& path : paths)
        if (fs::exists(path)) fs::rename(path, aside / path.filename());
    return aside;
}

void Store::save(const ControllerState& settings, const FileSystem& files) try {
    write_changes(settings, files);
} catch (const std::exception& error) {
    m_complain(std::string("the store was not written: ") + error.what());
}

// New data are written before the index that names them, and old data removed after it.
void Store::write_changes(const ControllerState& settings, const FileSystem& files) {
    nlohmann::json index{{"settings", json_of(settings)}, {"files", nlohmann::json::array()}};
    std::set<fs::path> wanted;
    for (const char* folder : {kOrdinary, kConfiguration}) fs::create_directory(m_folder / folder);
    for (const auto& [key, file] : files.all()) {
        const fs::path path = path_of(file.family, file.name);
        index["files"].push_back(json_of(file));
        index["files"].back()["data_crc"] = file.data_crc;
        wanted.insert(path);
        const auto kept = m_kept.find(path);
        if (kept != m_kept.end() && kept->second == file.version) continue;
        write_whole(path, file.data);
        m_kept[path] = file.version;
    }
    const std::string text = index.dump(2) + "\n";
    write_whole(m_folder / kIndex, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
    std::erase_if(m_kept, [&](const auto& kept) {
        if (wanted.contains(kept.first)) return false;
        fs::remove(kept.first);
        return true;
    });
}

} // namespace qm::sim
