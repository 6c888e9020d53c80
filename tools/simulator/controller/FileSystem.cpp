#include "simulator/controller/FileSystem.h"

#include "global.h"

#include <set>

namespace qm::sim {
namespace {

constexpr std::size_t kCrc16 = 2;

bool ends_as_announced(Bytes data, const std::array<std::uint8_t, 4>& tail) {
    const std::size_t count = std::min(data.size(), tail.size());
    return std::equal(data.end() - static_cast<std::ptrdiff_t>(count), data.end(),
                      tail.end() - static_cast<std::ptrdiff_t>(count));
}

// The configuration proper ends with a CRC-16 of what stands before.
bool is_configuration(Bytes data) {
    if (data.size() != kConfiguration5 && data.size() != kConfiguration6) return false;
    const std::size_t crc_at = data.size() - kCrc16;
    return calc_crc(data.first(crc_at)) == (data[crc_at] | data[crc_at + 1] << 8);
}

} // namespace

void FileSystem::restore(StoredFile file) {
    file.version = ++m_version;
    Key key{file.family, file.name};
    m_files[std::move(key)] = std::move(file);
}

FileSystem::Result FileSystem::start_write(FileFamily family, const Announcement& announcement) {
    const bool replaces = m_files.contains({family, announcement.name});
    if (replaces && !announcement.overwrite) return ErrorValue::file_exists;
    // The old file is given up once the new one is in: there must be room for both.
    const std::uint32_t given_back = m_pending ? m_pending->announcement.length : 0;
    if (announcement.length > available() + given_back) return ErrorValue::no_memory;
    if (!replaces && m_files.size() >= kMostFiles) return ErrorValue::no_memory;
    m_pending = Pending{family, announcement, {}};
    m_transfer = {true, announcement.name, 0, 0};
    return announcement.length == 0 ? finish() : Result{};
}

FileSystem::Result FileSystem::write_block(FileFamily family, const Block& block) {
    if (!m_pending || m_pending->family != family || m_pending->announcement.name != block.name)
        return ErrorValue::out_of_order;
    ByteBuffer& data = m_pending->data;
    if (block.offset != data.size()) return ErrorValue::out_of_order;
    const std::size_t missing = m_pending->announcement.length - data.size();
    if (block.data.empty() || block.data.size() > missing) return ErrorValue::bad_length;
    if (block.last != (block.data.size() == missing)) return ErrorValue::malformed;
    ByteWriter(data).bytes(block.data);
    m_transfer.offset = static_cast<std::uint32_t>(data.size());
    return block.last ? finish() : Result{};
}

FileSystem::Result FileSystem::finish() {
    Pending pending = std::move(*m_pending);
    m_pending.reset();
    const Announcement& announced = pending.announcement;
    if (!ends_as_announced(pending.data, announced.tail)) return ErrorValue::bad_checksum;
    if (pending.family == FileFamily::configuration && announced.name == kConfigurationFile &&
        !is_configuration(pending.data))
        return ErrorValue::bad_checksum;
    m_transfer.crc = ByteReader(announced.tail).u32();
    const std::uint32_t data_crc = calc_crc32(pending.data);
    restore({pending.family, announced.name, announced.type, std::move(pending.data), m_transfer.crc,
             data_crc, 0});
    return {};
}

const StoredFile* FileSystem::read(FileFamily family, const std::string& name, std::uint32_t offset) {
    const StoredFile* file = find(family, name);
    if (file) m_transfer = {false, name, file->crc, offset};
    return file;
}

std::optional<FileSystem::Key> FileSystem::resolve(FileFamily family, const std::string& name) const {
    auto first = m_files.lower_bound({family, name});
    const auto fits = [&](auto file) {
        return file != m_files.end() && file->first.first == family && file->first.second.starts_with(name);
    };
    if (!fits(first) || fits(std::next(first))) return std::nullopt;
    return first->first;
}

FileSystem::Result FileSystem::remove(FileFamily family, const std::vector<std::string>& names) {
    std::set<Key> keys;
    for (const std::string& name : names) {
        const auto key = resolve(family, name);
        if (!key) return ErrorValue::no_such_file;
        keys.insert(*key);
    }
    for (const Key& key : keys) m_files.erase(key);
    if (!keys.empty()) ++m_version;
    return {};
}

void FileSystem::format() {
    std::erase_if(m_files, [](const auto& entry) { return entry.first.first == FileFamily::ordinary; });
    m_pending.reset();
    m_transfer = {};
    ++m_version;
}

void FileSystem::end_transfer() {
    m_transferring = false;
    m_pending.reset();
}

const StoredFile* FileSystem::find(FileFamily family, const std::string& name) const {
    const auto file = m_files.find({family, name});
    return file == m_files.end() ? nullptr : &file->second;
}

std::vector<StoredFile> FileSystem::copies() const {
    std::vector<StoredFile> files;
    for (const auto& [key, file] : m_files) files.push_back(file);
    return files;
}

std::uint32_t FileSystem::available() const {
    std::size_t used = m_pending ? m_pending->announcement.length : 0;
    for (const auto& [key, file] : m_files) used += file.data.size();
    return used < kCapacity ? kCapacity - static_cast<std::uint32_t>(used) : 0;
}

} // namespace qm::sim
