// The controllers' file system.
#include "cmdPacket/command.h"

#include "support/message.h"
#include "support/reason.h"

#include <array>
#include <cstdlib>

namespace qm {
namespace {

constexpr std::size_t kConfBlock = 1024;
constexpr std::size_t kBlockHeader = 9; // name 4, last-block flag, offset u32
constexpr std::size_t kEntry = sizeof(FileAttribute_G56);
constexpr std::size_t kDirBlockHeader = 5;
// After so many blocks without entries a controller that goes on and on is given up.
constexpr std::size_t kEmptyBlocks = 64;

// The last 4 bytes of a file, with zeros in front of a shorter one.
std::array<Ouint8, 4> tail_of(Bytes data) {
    std::array<Ouint8, 4> tail{};
    const std::size_t count = std::min(data.size(), tail.size());
    std::copy_n(data.end() - static_cast<std::ptrdiff_t>(count), count,
                tail.end() - static_cast<std::ptrdiff_t>(count));
    return tail;
}

bool fits_a_frame(std::size_t blockSize) {
    return in_range("len of set_packetLen", static_cast<long>(blockSize), 1,
                    LedHVPacket::kMaxPayload - kBlockHeader);
}

} // namespace

bool ON_command::can_send_blocks() { return fits_a_frame(packet_len()); }

bool ON_command::can_name_files(std::int16_t fileNub) {
    return in_range("fileNub", fileNub, 0, (kMaxPayload - 2) / kFileNameSize);
}

int ON_command::hv_cmd_freeDirBlock(Ouint8* dataAddre) {
    std::free(dataAddre);
    return QM_OK;
}

int ON_command::hv_cmd_ofs_format() { return send_cmd(hv_GRP_OFSConf, hv_ofs_Format, {}); }
int ON_command::hv_cmd_ofs_startFileTransf() { return send_cmd(hv_GRP_OFSConf, hv_ofs_StartFileTransf, {}); }
int ON_command::hv_cmd_ofs_endFileTransf() { return send_cmd(hv_GRP_OFSConf, hv_ofs_EndFileTransf, {}); }

// The payload is sent as if its count of names, which takes 2 bytes, took fieldSize: with 1 it ends a byte
// early.
int ON_command::delete_files(Ouint8 code, std::int16_t fileNub, const char* fileName, std::size_t fieldSize) {
    if (!can_name_files(fileNub)) return QM_FAILED;
    const auto count = static_cast<Ouint16>(fileNub);
    ByteBuffer payload;
    ByteWriter(payload).u16(count).text(fileName, kFileNameSize * count);
    return send_cmd(hv_GRP_OFSConf, code, Bytes(payload).first(fieldSize + kFileNameSize * count));
}

int ON_command::hv_cmd_ofs_deleteFile(std::int16_t fileNub, const char* fileName) {
    return delete_files(hv_ofs_FileDelete, fileNub, fileName, 2);
}

// The protocol's length is one byte short here, so that the last name loses its last byte.
int ON_command::hv_cmd_conf_deleteFile(std::int16_t fileNub, const char* fileName) {
    return delete_files(hv_ofs_other_FileDelete, fileNub, fileName, 1);
}

int ON_command::hv_cmd_ofs_getMemoryVolume(Ouint32& totalMemVolume, Ouint32& availableMemVolume) {
    Ouint8 buffer[8];
    Answer answer{buffer};
    const int code = send_recv_cmd(hv_GRP_OFSConf, hv_ofs_GetMemoryVolume, {}, answer);
    ByteReader reader(answer.received());
    reader.update(totalMemVolume);
    reader.update(availableMemVolume);
    return code;
}

int ON_command::hv_cmd_ofs_writeFile(const FileToWrite& file) {
    return write_file(file, {hv_ofs_StartWriteFile, hv_ofs_WriteFileBlock, packet_len(), true});
}

int ON_command::hv_cmd_conf_writeFile(const FileToWrite& file) {
    return write_file(file, {hv_ofs_other_StartWriteFile, hv_ofs_other_WriteFileBlock, kConfBlock, false});
}

int ON_command::write_file(const FileToWrite& file, const WriteCodes& codes) {
    if (!fits_a_frame(codes.blockSize)) return QM_FAILED;
    ByteBuffer start;
    ByteWriter(start)
        .text(file.name, kFileNameSize)
        .u8(file.type)
        .u32(static_cast<Ouint32>(file.data.size()))
        .u8(file.overwrite)
        .bytes(tail_of(file.data));
    int code = send_cmd(hv_GRP_OFSConf, codes.start, start);
    if (codes.reports) say("g_packetLen ======= %d \n", static_cast<int>(codes.blockSize));

    for (std::size_t offset = 0; code == QM_OK && offset < file.data.size(); offset += codes.blockSize) {
        const std::size_t length = std::min(codes.blockSize, file.data.size() - offset);
        code = write_block(file, codes, offset, length);
        if (code != QM_OK && codes.reports) say("dataLen-oldLen ======= %d \n", static_cast<int>(length));
    }
    return code;
}

int ON_command::write_block(const FileToWrite& file, const WriteCodes& codes, std::size_t offset,
                            std::size_t length) {
    const bool last = offset + length == file.data.size();
    m_block.clear();
    ByteWriter(m_block)
        .text(file.name, kFileNameSize)
        .u8(last)
        .u32(static_cast<Ouint32>(offset))
        .bytes(file.data.subspan(offset, length));
    return send_cmd(hv_GRP_OFSConf, codes.block, m_block);
}

int ON_command::start_read(Ouint8 code, char* fileName, Ouint32* fileSize, Ouint32* fileCrc) {
    Ouint8 buffer[12];
    Answer answer{buffer};
    ByteBuffer name;
    ByteWriter(name).text(fileName, kFileNameSize);
    const int status = send_recv_cmd(hv_GRP_OFSConf, code, name, answer);
    ByteReader reader(answer.received());
    reader.update(fileName, kFileNameSize);
    if (fileSize) reader.update(*fileSize);
    if (fileCrc) reader.update(*fileCrc);
    return status;
}

// Size and CRC are not delivered here.
int ON_command::hv_cmd_ofs_startReedFile(char* fileName) {
    return start_read(hv_ofs_StartReadFile, fileName, nullptr, nullptr);
}

int ON_command::hv_cmd_conf_startReedFile(char* fileName, Ouint32& fileSize, Ouint32& fileCrc) {
    return start_read(hv_ofs_other_StartReadFile, fileName, &fileSize, &fileCrc);
}

// Only the first block is ever asked for, since a proper answer to it ends the call.
int ON_command::read_block(Ouint8 code, const char* fileName) {
    ByteBuffer payload;
    ByteWriter(payload).text(fileName, kFileNameSize).u32(0);
    Answer none;
    return send_recv_cmd(hv_GRP_OFSConf, code, payload, none);
}

int ON_command::hv_cmd_ofs_reedFileBlock(const char* fileName) {
    return read_block(hv_ofs_ReadFileBlock, fileName);
}

int ON_command::hv_cmd_conf_reedFileBlock(const char* fileName) {
    return read_block(hv_ofs_other_ReadFileBlock, fileName);
}

int ON_command::hv_cmd_ofs_reedDirBlock(GetDirBlock_G56& dirBlock) {
    const Ouint8 request[] = {dirBlock.fileType, 0x20};
    Ouint8 buffer[1024];
    Answer answer{buffer};
    if (const int code = send_recv_cmd(hv_GRP_OFSConf, hv_ofs_StartReadDir, request, answer); code != QM_OK)
        return code;
    ByteReader reader(answer.received());
    const Ouint16 announced = reader.u16();
    if (!reader.ok()) return fail(QM_FAILED, "The answer does not say how many files there are.");

    ByteBuffer entries;
    Ouint16 count = 0;
    const int code = read_directory(announced, entries, count);
    // What came before a failure is the caller's, too.
    auto* data = static_cast<Ouint8*>(std::malloc(std::max<std::size_t>(entries.size(), 1)));
    if (!data) return fail_by_memory();
    std::copy(entries.begin(), entries.end(), data);
    dirBlock.dataAddre = data;
    dirBlock.fileNumber = count;
    return code;
}

// Block answer: last-block flag, two bytes of no use here, entries in this block, one more byte; the entries.
// A controller may send more or fewer entries than it announced.
int ON_command::read_directory(std::size_t announced, ByteBuffer& entries, Ouint16& count) {
    entries.reserve(announced * kEntry);
    for (std::size_t empty = 0; empty < kEmptyBlocks;) {
        const Ouint8 next[] = {static_cast<Ouint8>(count), static_cast<Ouint8>(count >> 8U)};
        Ouint8 buffer[1024];
        Answer answer{buffer};
        if (const int code = send_recv_cmd(hv_GRP_OFSConf, hv_ofs_ReadDirBlock, next, answer); code != QM_OK)
            return code;
        const Bytes block = answer.received();
        if (block.size() < kDirBlockHeader)
            return fail(QM_FAILED, "A block of the directory has %zu bytes, and begins with %zu at least.",
                        block.size(), kDirBlockHeader);
        const std::size_t held = block[3];
        if (held == 0) ++empty;
        if (count + held > 0xFFFF) return fail(QM_FAILED, "The directory has more than 65535 entries.");
        const Bytes data = block.subspan(kDirBlockHeader);
        entries.insert(entries.end(), data.begin(),
                       data.begin() + static_cast<std::ptrdiff_t>(std::min(data.size(), held * kEntry)));
        count = static_cast<Ouint16>(count + held);
        entries.resize(count * kEntry); // entries that did not come are zero
        if (block[0] != 0) return QM_OK;
    }
    return fail(QM_FAILED, "The controller sent %zu blocks of the directory without entries.", kEmptyBlocks);
}

int ON_command::hv_cmd_ofs_getTransStatus(Ouint8& rw, char* fileName, Ouint32& fileCrc, Ouint32& fileOffset) {
    Ouint8 buffer[13] = {};
    Answer answer{buffer};
    const int code = send_recv_cmd(hv_GRP_OFSConf, hv_ofs_GetTransStatus, {}, answer);
    ByteReader reader(buffer); // whole, whatever came: the rest is zero
    rw = reader.u8();
    reader.update(fileName, kFileNameSize);
    fileCrc = reader.u32();
    fileOffset = reader.u32();
    return code;
}

} // namespace qm
