// The file system, group 0xA1.
#include "simulator/controller/commands.h"

#include "cmdPacket/catalogue.h"

#include <algorithm>

namespace qm::sim {
namespace {

constexpr std::size_t kName = FileSystem::kNameSize;
constexpr std::size_t kAnnouncement = 14, kBlockHeader = 9, kPosition = 8;
constexpr std::size_t kReadBlock = 1024;   // data bytes of a block that is read
constexpr std::size_t kMostEntries = 0x20; // of one directory block
constexpr std::size_t kLongestPayload = 0xFFFF;

Outcome outcome_of(FileSystem::Result result, std::string log) {
    if (result) return {*result, std::move(log)};
    return {Ack{}, std::move(log)};
}

void name(ByteWriter& out, const std::string& text) {
    out.text(text.data(), text.size()).zeros(kName - text.size());
}

Outcome format(State& state, Bytes, Now) {
    state.files.format();
    return done();
}

// u16 count, the names; of configurations one byte short, so that the last name, or for no name the count,
// lacks its last byte.
template <FileFamily family> Outcome remove_files(State& state, Bytes payload, Now) {
    const std::size_t lacking = family == FileFamily::configuration ? 1 : 0;
    const std::size_t count = payload[0] + (payload.size() > 1 ? 256U * payload[1] : 0U);
    if (payload.size() + lacking != 2 + count * kName) return refuse(ErrorValue::malformed);
    std::vector<std::string> names;
    for (std::size_t at = 2; names.size() < count; at += kName)
        names.push_back(text_of(payload.subspan(at, std::min(kName, payload.size() - at))));
    return outcome_of(state.files.remove(family, names), std::to_string(count) + " files");
}

// Whether it is the configuration proper of the other generation.
bool is_foreign(Generation own, const Announcement& announcement) {
    if (announcement.name != kConfigurationFile) return false;
    return (own == Generation::five && announcement.length == kConfiguration6) ||
           (own == Generation::six && announcement.length == kConfiguration5);
}

// name 4, type, length u32, overwrite, last bytes of the file 4.
template <FileFamily family> Outcome start_write(State& state, Bytes payload, Now) {
    ByteReader reader(payload);
    Announcement announcement;
    announcement.name = text_of(reader.bytes(kName));
    announcement.type = reader.u8();
    announcement.length = reader.u32();
    announcement.overwrite = reader.u8() != 0;
    const Bytes tail = reader.rest();
    std::copy(tail.begin(), tail.end(), announcement.tail.begin());
    if (family == FileFamily::configuration && is_foreign(generation_of(state.model.type), announcement))
        return refuse(ErrorValue::other_generation);
    return outcome_of(state.files.start_write(family, announcement),
                      std::to_string(announcement.length) + " bytes");
}

// ControllerName stands behind the file type, ScreenAddress, in generation 6 only, behind the name.
void note_names(ControllerState& settings, Bytes configuration) {
    constexpr std::size_t kName5 = 8, kName6 = 16, kLocation = 48;
    const auto text = [&](std::size_t at, std::size_t size) {
        const std::string field = text_of(configuration.subspan(at, size));
        return field.substr(0, field.find('\0'));
    };
    const bool six = configuration.size() == kConfiguration6;
    settings.name = text(1, six ? kName6 : kName5);
    settings.location = six ? text(1 + kName6, kLocation) : "";
}

// name 4, last-block flag, offset u32, data.
template <FileFamily family> Outcome write_block(State& state, Bytes payload, Now) {
    ByteReader reader(payload);
    Block block;
    block.name = text_of(reader.bytes(kName));
    const std::uint8_t last = reader.u8();
    block.last = last != 0;
    block.offset = reader.u32();
    block.data = reader.rest();
    if (last > 1) return refuse(ErrorValue::bad_value);
    const auto result = state.files.write_block(family, block);
    if (!result && block.last && family == FileFamily::configuration && block.name == kConfigurationFile)
        note_names(state.settings, state.files.find(family, block.name)->data);
    return outcome_of(result, std::to_string(block.data.size()) + " bytes at " +
                                  std::to_string(block.offset) + (block.last ? ", the last" : ""));
}

// Answers name 4, size u32, CRC u32.
template <FileFamily family> Outcome start_read(State& state, Bytes payload, Now) {
    const StoredFile* file = state.files.read(family, text_of(payload), 0);
    if (!file) return refuse(ErrorValue::no_such_file);
    return answer([&](ByteWriter& out) {
        name(out, file->name);
        out.u32(static_cast<std::uint32_t>(file->data.size())).u32(file->crc);
    });
}

// Answers as a block is written: name 4, last-block flag, offset u32, data.
template <FileFamily family> Outcome read_block(State& state, Bytes payload, Now) {
    const std::string file_name = text_of(payload.first(kName));
    const std::uint32_t offset = ByteReader(payload.subspan(kName)).u32();
    const StoredFile* file = state.files.find(family, file_name);
    if (!file) return refuse(ErrorValue::no_such_file);
    if (offset > file->data.size()) return refuse(ErrorValue::bad_value);
    const Bytes rest = Bytes(file->data).subspan(offset);
    const Bytes data = rest.first(std::min(rest.size(), kReadBlock));
    (void)state.files.read(family, file_name, offset + static_cast<std::uint32_t>(data.size()));
    return answer([&](ByteWriter& out) {
        name(out, file->name);
        out.u8(data.size() == rest.size()).u32(offset).bytes(data);
    });
}

std::vector<const StoredFile*> listed(const State& state) {
    std::vector<const StoredFile*> files;
    for (const auto& [key, file] : state.files.all())
        if (file.family == FileFamily::ordinary && file.type == state.listing.type) files.push_back(&file);
    return files;
}

// The type of the files, the most entries of a block. Answers with their number, u16.
Outcome start_directory(State& state, Bytes payload, Now) {
    if (payload[1] == 0) return refuse(ErrorValue::bad_value);
    state.listing = {payload[0], std::min<std::size_t>(payload[1], kMostEntries)};
    return answer([&](ByteWriter& out) { out.u16(static_cast<unsigned>(listed(state).size())); });
}

void entry(ByteWriter& out, const StoredFile& file) {
    name(out, file.name);
    out.u8(file.type).u32(static_cast<std::uint32_t>(file.data.size())).u32(file.crc);
}

// Index u16 of the first entry. Answers last-block flag, the index, the number of entries, a byte of no
// meaning, the entries.
Outcome directory_block(State& state, Bytes payload, Now) {
    if (state.listing.block_size == 0) return refuse(ErrorValue::out_of_order);
    const std::size_t index = ByteReader(payload).u16();
    const auto files = listed(state);
    if (index > files.size()) return refuse(ErrorValue::bad_value);
    const std::size_t count = std::min(files.size() - index, state.listing.block_size);
    return answer([&](ByteWriter& out) {
        out.u8(index + count == files.size()).u16(static_cast<unsigned>(index));
        out.u8(static_cast<unsigned>(count)).u8(0);
        for (std::size_t i = 0; i < count; ++i) entry(out, *files[index + i]);
    });
}

Outcome start_transfer(State& state, Bytes, Now) {
    state.files.begin_transfer();
    return done();
}

Outcome end_transfer(State& state, Bytes, Now) {
    state.files.end_transfer();
    return done();
}

// Total and available bytes, u32 each.
Outcome memory_volume(State& state, Bytes, Now) {
    return answer([&](ByteWriter& out) { out.u32(FileSystem::kCapacity).u32(state.files.available()); });
}

// Direction (0 reads, 1 writes), name 4, CRC u32 once the file is whole, offset u32.
Outcome transfer_status(State& state, Bytes, Now) {
    const Transfer& transfer = state.files.transfer();
    return answer([&](ByteWriter& out) {
        out.u8(transfer.writes);
        name(out, transfer.name);
        out.u32(transfer.crc).u32(transfer.offset);
    });
}

constexpr auto kOrdinary = FileFamily::ordinary, kConfiguration = FileFamily::configuration;
constexpr Command kFilesCommands[] = {
    {kFileGroup, hv_ofs_Format, "format", 0, 0, format},
    {kFileGroup, hv_ofs_FileDelete, "delete", 2, kLongestPayload, remove_files<kOrdinary>},
    {kFileGroup, hv_ofs_StartWriteFile, "start write", kAnnouncement, kAnnouncement, start_write<kOrdinary>},
    {kFileGroup, hv_ofs_WriteFileBlock, "write", kBlockHeader, kLongestPayload, write_block<kOrdinary>},
    {kFileGroup, hv_ofs_StartReadFile, "start read", kName, kName, start_read<kOrdinary>},
    {kFileGroup, hv_ofs_ReadFileBlock, "read", kPosition, kPosition, read_block<kOrdinary>},
    {kFileGroup, hv_ofs_StartReadDir, "start directory", 2, 2, start_directory},
    {kFileGroup, hv_ofs_ReadDirBlock, "directory", 2, 2, directory_block},
    {kFileGroup, hv_ofs_StartFileTransf, "start transfer", 0, 0, start_transfer},
    {kFileGroup, hv_ofs_EndFileTransf, "end transfer", 0, 0, end_transfer},
    {kFileGroup, hv_ofs_other_FileDelete, "delete configuration", 1, kLongestPayload,
     remove_files<kConfiguration>},
    {kFileGroup, hv_ofs_other_StartWriteFile, "start write configuration", kAnnouncement, kAnnouncement,
     start_write<kConfiguration>},
    {kFileGroup, hv_ofs_other_WriteFileBlock, "write configuration", kBlockHeader, kLongestPayload,
     write_block<kConfiguration>},
    {kFileGroup, hv_ofs_other_StartReadFile, "start read configuration", kName, kName,
     start_read<kConfiguration>},
    {kFileGroup, hv_ofs_other_ReadFileBlock, "read configuration", kPosition, kPosition,
     read_block<kConfiguration>},
    {kFileGroup, hv_ofs_GetMemoryVolume, "memory volume", 0, 0, memory_volume},
    {kFileGroup, hv_ofs_GetTransStatus, "transfer status", 0, 0, transfer_status},
};

} // namespace

std::span<const Command> file_commands() { return kFilesCommands; }

} // namespace qm::sim
