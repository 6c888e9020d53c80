// Commands that leave what they hand out in a room, as the answer had it.
#pragma once

#include "AnsweringLink.h"
#include "require.h"

namespace qm::fuzz {

constexpr std::size_t kNeverCut = 400; // bytes that every receive takes, however they are stuffed

// The room is the caller's memory.
template <auto command, class... Arguments>
int into_room(AnsweringLink& link, ByteBuffer& room, Arguments... given) {
    Answer answer{room};
    const int status = (link.*command)(given..., answer);
    const std::size_t came = link.payload().size();
    if (link.was_right() && came <= kNeverCut)
        require(status == (room.empty() ? QM_FAILED : came <= room.size() ? QM_OK : QM_TRUNCATED));
    room.resize(static_cast<std::size_t>(answer.length));
    return status;
}

template <auto command> int enveloped(AnsweringLink& link, ByteBuffer& room) {
    const ByteBuffer payload(100, 0x5A);
    return into_room<command>(link, room, Ouint8{hv_GPR_5HDynamicArea}, Ouint8{0}, Bytes(payload));
}

// Nothing as it came.
template <auto command> int ignored(AnsweringLink& link, ByteBuffer& room) {
    return room.clear(), command(link);
}

// Takes a command's fields, each of so many bytes, for its room, as far as they came.
template <auto command, std::size_t field> int in_fields(AnsweringLink& link, ByteBuffer& room) {
    room.clear();
    const int status = command(link, ByteWriter(room));
    room.resize(std::min(room.size(), link.payload().size()) / field * field);
    return status;
}

inline int identity(ON_command& link, ByteWriter out) {
    ByteBuffer id(8);
    const int status = link.hv_cmd_read_controllerID(id.data());
    return out.bytes(id), status;
}

inline int volume(ON_command& link, ByteWriter out) {
    Ouint32 total = 0, available = 0;
    const int status = link.hv_cmd_ofs_getMemoryVolume(total, available);
    return out.u32(total).u32(available), status;
}

inline int transfer(ON_command& link, ByteWriter out) {
    Ouint8 rw = 0;
    char name[kFileNameSize] = {};
    Ouint32 crc = 0, offset = 0;
    const int status = link.hv_cmd_ofs_getTransStatus(rw, name, crc, offset);
    return out.u8(rw).text(name, sizeof name).u32(crc).u32(offset), status;
}

inline int read_start(ON_command& link, ByteWriter out) {
    char name[kFileNameSize] = {};
    Ouint32 size = 0, crc = 0;
    const int status = link.hv_cmd_conf_startReedFile(name, size, crc);
    return out.text(name, sizeof name).u32(size).u32(crc), status;
}

// Its entries, be they cut, can all be read.
inline int directory(ON_command& link) {
    GetDirBlock_G56 block{};
    const int status = link.hv_cmd_ofs_reedDirBlock(block);
    require(block.dataAddre || (status != QM_OK && block.fileNumber == 0));
    const ByteBuffer read(block.dataAddre, block.dataAddre + block.fileNumber * sizeof(FileAttribute_G56));
    return ON_command::hv_cmd_freeDirBlock(block.dataAddre), status;
}

inline int battle_time(ON_command& link) {
    BattleTime time{};
    return link.hv_cmd_battie_time(0, time);
}

// Of a block each.
inline int write_files(ON_command& link) {
    const Ouint8 bytes[100] = {};
    const FileToWrite file{"P000", 0, 1, bytes};
    const int first = link.hv_cmd_ofs_writeFile(file);
    return first == QM_OK ? link.hv_cmd_conf_writeFile(file) : first;
}

} // namespace qm::fuzz
