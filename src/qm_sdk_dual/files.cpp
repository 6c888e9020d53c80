// The file system of a controller, over TCP and over a serial line: the same command, another connection.
#include "global.h"
#include "qm_sdk_dual/exports.h"

#include <cstddef>
#include <cstdlib>

using namespace qm;

namespace {

// The commands, each with its arguments checked and ready to run on any connection.

auto delete_files(int (ON_command::*command)(std::int16_t, const char*), std::int16_t count,
                  const char* names) {
    return [=](ON_command& c) { return (c.*command)(count, names); };
}

auto write_file(int (ON_command::*command)(const FileToWrite&), const FileToWrite& file) {
    return [=](ON_command& c) { return (c.*command)(file); };
}

FileToWrite file_to_write(const char* name, Ouint8 type, Ouint32 length, Ouint8 overwrite,
                          const Ouint8* data) {
    return {name, type, overwrite, {data, length}};
}

bool is_file(const char* name, Ouint32 length, const Ouint8* data) { return name && (data || length == 0); }

auto read_directory(GetDirBlock_G56& listing) {
    listing.fileNumber = 0;
    listing.dataAddre = nullptr;
    return [&listing](ON_command& c) { return c.hv_cmd_ofs_reedDirBlock(listing); };
}

auto transfer_status(Ouint8* r_w, char* fileName, Ouint32* fileCrc, Ouint32* fileOffset) {
    return [=](ON_command& c) {
        Ouint32 crc, offset;
        std::memcpy(&crc, fileCrc, sizeof crc);
        std::memcpy(&offset, fileOffset, sizeof offset);
        const int code = c.hv_cmd_ofs_getTransStatus(*r_w, fileName, crc, offset);
        std::memcpy(fileCrc, &crc, sizeof crc);
        std::memcpy(fileOffset, &offset, sizeof offset);
        return code;
    };
}

// Stores the CRC of the record in it and writes it as the configuration file.
template <class Record>
auto send_config(Record& config) {
    return [&config](ON_command& c) {
        const Bytes bytes(reinterpret_cast<const Ouint8*>(&config), sizeof config);
        config.CRC16 = calc_crc(bytes.first(offsetof(Record, CRC16)));
        return c.hv_cmd_conf_writeFile({"C000", 1, 1, bytes});
    };
}

} // namespace

int cmd_ofsFormat(const char* ip, Ouint16 port) noexcept {
    return over_tcp(ip, port, [](ON_command& c) { return c.hv_cmd_ofs_format(); });
}

int cmd_uart_ofsFormat(const char* uartPort, Ouint8 baudRate) noexcept {
    return over_serial(uartPort, baudRate, [](ON_command& c) { return c.hv_cmd_ofs_format(); });
}

int cmd_ofsStartFileTransf(const char* ip, Ouint16 port) noexcept {
    return over_tcp(ip, port, [](ON_command& c) { return c.hv_cmd_ofs_startFileTransf(); });
}

int cmd_uart_ofsStartFileTransf(const char* uartPort, Ouint8 baudRate) noexcept {
    return over_serial(uartPort, baudRate, [](ON_command& c) { return c.hv_cmd_ofs_startFileTransf(); });
}

int cmd_ofsEndFileTransf(const char* ip, Ouint16 port) noexcept {
    return over_tcp(ip, port, [](ON_command& c) { return c.hv_cmd_ofs_endFileTransf(); });
}

int cmd_uart_ofsEndFileTransf(const char* uartPort, Ouint8 baudRate) noexcept {
    return over_serial(uartPort, baudRate, [](ON_command& c) { return c.hv_cmd_ofs_endFileTransf(); });
}

int cmd_ofsDeleteFormatFile(const char* ip, Ouint16 port, int16_t fileNub, const char* fileName) noexcept {
    if (!fileName) return QM_FAILED;
    return over_tcp(ip, port, delete_files(&ON_command::hv_cmd_ofs_deleteFile, fileNub, fileName));
}

int cmd_uart_ofsDeleteFormatFile(const char* uartPort, Ouint8 baudRate, int16_t fileNub,
                                 const char* fileName) noexcept {
    if (!fileName) return QM_FAILED;
    return over_serial(uartPort, baudRate,
                       delete_files(&ON_command::hv_cmd_ofs_deleteFile, fileNub, fileName));
}

int cmd_confDeleteFormatFile(const char* ip, Ouint16 port, int16_t fileNub, const char* fileName) noexcept {
    if (!fileName) return QM_FAILED;
    return over_tcp(ip, port, delete_files(&ON_command::hv_cmd_conf_deleteFile, fileNub, fileName));
}

int cmd_uart_confDeleteFormatFile(const char* uartPort, Ouint8 baudRate, int16_t fileNub,
                                  const char* fileName) noexcept {
    if (!fileName) return QM_FAILED;
    return over_serial(uartPort, baudRate,
                       delete_files(&ON_command::hv_cmd_conf_deleteFile, fileNub, fileName));
}

int cmd_ofsGetMemoryVolume(const char* ip, Ouint16 port, Ouint32* totalMemVolume,
                           Ouint32* availableMemVolume) noexcept {
    if (!given(totalMemVolume, availableMemVolume)) return QM_FAILED;
    return over_tcp(ip, port, [&](ON_command& c) {
        return c.hv_cmd_ofs_getMemoryVolume(*totalMemVolume, *availableMemVolume);
    });
}

int cmd_uart_ofsGetMemoryVolume(const char* uartPort, Ouint8 baudRate, Ouint32* totalMemVolume,
                                Ouint32* availableMemVolume) noexcept {
    if (!given(totalMemVolume, availableMemVolume)) return QM_FAILED;
    return over_serial(uartPort, baudRate, [&](ON_command& c) {
        return c.hv_cmd_ofs_getMemoryVolume(*totalMemVolume, *availableMemVolume);
    });
}

int cmd_ofsWriteFile(const char* ip, Ouint16 port, const char* fileName, Ouint8 fileType, Ouint32 fileLen,
                     Ouint8 overwrite, const Ouint8* fileAddre) noexcept {
    if (!is_file(fileName, fileLen, fileAddre)) return QM_FAILED;
    return over_tcp(ip, port,
                    write_file(&ON_command::hv_cmd_ofs_writeFile,
                               file_to_write(fileName, fileType, fileLen, overwrite, fileAddre)));
}

int cmd_uart_ofsWriteFile(const char* uartPort, Ouint8 baudRate, const char* fileName, Ouint8 fileType,
                          Ouint32 fileLen, Ouint8 overwrite, const Ouint8* fileAddre) noexcept {
    if (!is_file(fileName, fileLen, fileAddre)) return QM_FAILED;
    return over_serial(uartPort, baudRate,
                       write_file(&ON_command::hv_cmd_ofs_writeFile,
                                  file_to_write(fileName, fileType, fileLen, overwrite, fileAddre)));
}

int cmd_confWriteFile(const char* ip, Ouint16 port, const char* fileName, Ouint8 fileType, Ouint32 fileLen,
                      Ouint8 overwrite, const Ouint8* fileAddre) noexcept {
    if (!is_file(fileName, fileLen, fileAddre)) return QM_FAILED;
    return over_tcp(ip, port,
                    write_file(&ON_command::hv_cmd_conf_writeFile,
                               file_to_write(fileName, fileType, fileLen, overwrite, fileAddre)));
}

int cmd_uart_confWriteFile(const char* uartPort, Ouint8 baudRate, const char* fileName, Ouint8 fileType,
                           Ouint32 fileLen, Ouint8 overwrite, const Ouint8* fileAddre) noexcept {
    if (!is_file(fileName, fileLen, fileAddre)) return QM_FAILED;
    return over_serial(uartPort, baudRate,
                       write_file(&ON_command::hv_cmd_conf_writeFile,
                                  file_to_write(fileName, fileType, fileLen, overwrite, fileAddre)));
}

int cmd_ofsStartReedFile(const char* ip, Ouint16 port, char* fileName, Ouint32* fileSize,
                         Ouint32* fileCrc) noexcept {
    if (!given(fileName, fileSize, fileCrc)) return QM_FAILED;
    return over_tcp(ip, port, [&](ON_command& c) { return c.hv_cmd_ofs_startReedFile(fileName); });
}

int cmd_uart_ofsStartReedFile(const char* uartPort, Ouint8 baudRate, char* fileName, Ouint32* fileSize,
                              Ouint32* fileCrc) noexcept {
    if (!given(fileName, fileSize, fileCrc)) return QM_FAILED;
    return over_serial(uartPort, baudRate,
                       [&](ON_command& c) { return c.hv_cmd_ofs_startReedFile(fileName); });
}

int cmd_confStartReedFile(const char* ip, Ouint16 port, char* fileName, Ouint32* fileSize,
                          Ouint32* fileCrc) noexcept {
    if (!given(fileName, fileSize, fileCrc)) return QM_FAILED;
    return over_tcp(
        ip, port, [&](ON_command& c) { return c.hv_cmd_conf_startReedFile(fileName, *fileSize, *fileCrc); });
}

int cmd_uart_confStartReedFile(const char* uartPort, Ouint8 baudRate, char* fileName, Ouint32* fileSize,
                               Ouint32* fileCrc) noexcept {
    if (!given(fileName, fileSize, fileCrc)) return QM_FAILED;
    return over_serial(uartPort, baudRate, [&](ON_command& c) {
        return c.hv_cmd_conf_startReedFile(fileName, *fileSize, *fileCrc);
    });
}

int cmd_ofsReedFileBlock(const char* ip, Ouint16 port, const char* fileName, Ouint8* fileAddre) noexcept {
    if (!given(fileName, fileAddre)) return QM_FAILED;
    return over_tcp(ip, port, [&](ON_command& c) { return c.hv_cmd_ofs_reedFileBlock(fileName); });
}

int cmd_uart_ofsReedFileBlock(const char* uartPort, Ouint8 baudRate, const char* fileName,
                              Ouint8* fileAddre) noexcept {
    if (!given(fileName, fileAddre)) return QM_FAILED;
    return over_serial(uartPort, baudRate,
                       [&](ON_command& c) { return c.hv_cmd_ofs_reedFileBlock(fileName); });
}

int cmd_confReedFileBlock(const char* ip, Ouint16 port, const char* fileName, Ouint8* fileAddre) noexcept {
    if (!given(fileName, fileAddre)) return QM_FAILED;
    return over_tcp(ip, port, [&](ON_command& c) { return c.hv_cmd_conf_reedFileBlock(fileName); });
}

int cmd_uart_confReedFileBlock(const char* uartPort, Ouint8 baudRate, const char* fileName,
                               Ouint8* fileAddre) noexcept {
    if (!given(fileName, fileAddre)) return QM_FAILED;
    return over_serial(uartPort, baudRate,
                       [&](ON_command& c) { return c.hv_cmd_conf_reedFileBlock(fileName); });
}

int cmd_ofsReedDirBlock(const char* ip, Ouint16 port, GetDirBlock_G56* dirBlock) noexcept {
    if (!given(ip, dirBlock)) return QM_FAILED;
    return over_tcp(ip, port, read_directory(*dirBlock));
}

int cmd_uart_ofsReedDirBlock(const char* uartPort, Ouint8 baudRate, GetDirBlock_G56* dirBlock) noexcept {
    if (!given(uartPort, dirBlock)) return QM_FAILED;
    return over_serial(uartPort, baudRate, read_directory(*dirBlock));
}

int cmd_getFileAttr(const GetDirBlock_G56* dirBlock, Ouint16 number, FileAttribute_G56* fileAttr) noexcept {
    if (!given(dirBlock, fileAttr) || number >= dirBlock->fileNumber || !dirBlock->dataAddre)
        return QM_FAILED;
    std::memcpy(fileAttr, dirBlock->dataAddre + number * sizeof *fileAttr, sizeof *fileAttr);
    return QM_OK;
}

int cmd_ofs_freeDirBlock(GetDirBlock_G56* dirBlock) noexcept {
    if (!dirBlock) return QM_FAILED;
    std::free(dirBlock->dataAddre);
    return QM_OK;
}

int cmd_uart_ofsFreeDirBlock(const char*, Ouint8, GetDirBlock_G56*) noexcept { return QM_FAILED; }

int cmd_ofsGetTransStatus(const char* ip, Ouint16 port, Ouint8* r_w, char* fileName, Ouint32* fileCrc,
                          Ouint32* fileOffset) noexcept {
    if (!given(r_w, fileName, fileCrc, fileOffset)) return QM_FAILED;
    return over_tcp(ip, port, transfer_status(r_w, fileName, fileCrc, fileOffset));
}

int cmd_uart_ofsGetTransStatus(const char* uartPort, Ouint8 baudRate, Ouint8* r_w, char* fileName,
                               Ouint32* fileCrc, Ouint32* fileOffset) noexcept {
    if (!given(r_w, fileName, fileCrc, fileOffset)) return QM_FAILED;
    return over_serial(uartPort, baudRate, transfer_status(r_w, fileName, fileCrc, fileOffset));
}

int cmd_sendConfigFile(const char* ip, Ouint16 port, ConfigFile* configData) noexcept {
    if (!configData) return QM_FAILED;
    return over_tcp(ip, port, send_config(*configData));
}

int cmd_uart_sendConfigFile(const char* uartPort, Ouint8 baudRate, ConfigFile* configData) noexcept {
    if (!configData) return QM_FAILED;
    return over_serial(uartPort, baudRate, send_config(*configData));
}

int cmd_sendConfigFile_G6(const char* ip, Ouint16 port, ConfigFile_G6* configData) noexcept {
    if (!configData) return QM_FAILED;
    return over_tcp(ip, port, send_config(*configData));
}
