// The file system of a controller. Each command has a TCP and a serial form: the same command on another
// connection.
#include "global.h"
#include "qm_sdk_dual/exports.h"

#include <cstddef>

using namespace qm;

namespace {

template <class Route>
int delete_files(const Route& route, int (ON_command::*command)(std::int16_t, const char*),
                 std::int16_t count, const char* names) {
    return guarded({{"fileName", names}}, [&] {
        if (!ON_command::can_name_files(count)) return QM_FAILED + 0;
        return on_connection(route, [=](ON_command& c) { return (c.*command)(count, names); });
    });
}

template <class Route> int memory_volume(const Route& route, Ouint32* total, Ouint32* available) {
    return run(route, {{"totalMemVolume", total}, {"availableMemVolume", available}},
               [=](ON_command& c) { return c.hv_cmd_ofs_getMemoryVolume(*total, *available); });
}

template <class Route>
int write_file(const Route& route, int (ON_command::*command)(const FileToWrite&), const char* name,
               Ouint8 type, Ouint32 length, Ouint8 overwrite, const Ouint8* data) {
    return guarded({{"fileName", name}, {"fileAddre", data, length != 0}}, [&] {
        if (command == &ON_command::hv_cmd_ofs_writeFile && !ON_command::can_send_blocks())
            return QM_FAILED + 0;
        const FileToWrite file{name, type, overwrite, {data, length}};
        return on_connection(route, [&](ON_command& c) { return (c.*command)(file); });
    });
}

template <class Route>
int start_read(const Route& route, char* name, const Ouint32* size, const Ouint32* crc) {
    return run(route, {{"fileName", name}, {"fileSize", size}, {"fileCrc", crc}},
               [=](ON_command& c) { return c.hv_cmd_ofs_startReedFile(name); });
}

template <class Route> int start_read_conf(const Route& route, char* name, Ouint32* size, Ouint32* crc) {
    return run(route, {{"fileName", name}, {"fileSize", size}, {"fileCrc", crc}},
               [=](ON_command& c) { return c.hv_cmd_conf_startReedFile(name, *size, *crc); });
}

template <class Route>
int read_block(const Route& route, int (ON_command::*command)(const char*), const char* name,
               const Ouint8* data) {
    return run(route, {{"fileName", name}, {"fileAddre", data}},
               [=](ON_command& c) { return (c.*command)(name); });
}

template <class Route> int read_directory(const Route& route, GetDirBlock_G56* listing) {
    return run(route, {{"dirBlock", listing}},
               [=](ON_command& c) { return c.hv_cmd_ofs_reedDirBlock(*listing); });
}

template <class Route>
int transfer_status(const Route& route, Ouint8* r_w, char* name, Ouint32* crc, Ouint32* offset) {
    return run(route, {{"r_w", r_w}, {"fileName", name}, {"fileCrc", crc}, {"fileOffset", offset}},
               [=](ON_command& c) { return c.hv_cmd_ofs_getTransStatus(*r_w, name, *crc, *offset); });
}

// Stores the CRC of the record in it, once the controller is there, and writes it as the configuration file.
template <class Route, class Record> int send_config(const Route& route, Record* config) {
    return run(route, {{"configData", config}}, [=](ON_command& c) {
        const Bytes bytes(reinterpret_cast<const Ouint8*>(config), sizeof *config);
        config->CRC16 = calc_crc(bytes.first(offsetof(Record, CRC16)));
        return c.hv_cmd_conf_writeFile({"C000", 1, 1, bytes});
    });
}

} // namespace

int cmd_ofsFormat(const char* ip, Ouint16 port) noexcept {
    return run(Tcp{ip, port}, [](ON_command& c) { return c.hv_cmd_ofs_format(); });
}

int cmd_uart_ofsFormat(const char* uartPort, Ouint8 baudRate) noexcept {
    return run(Serial{uartPort, baudRate}, [](ON_command& c) { return c.hv_cmd_ofs_format(); });
}

int cmd_ofsStartFileTransf(const char* ip, Ouint16 port) noexcept {
    return run(Tcp{ip, port}, [](ON_command& c) { return c.hv_cmd_ofs_startFileTransf(); });
}

int cmd_uart_ofsStartFileTransf(const char* uartPort, Ouint8 baudRate) noexcept {
    return run(Serial{uartPort, baudRate}, [](ON_command& c) { return c.hv_cmd_ofs_startFileTransf(); });
}

int cmd_ofsEndFileTransf(const char* ip, Ouint16 port) noexcept {
    return run(Tcp{ip, port}, [](ON_command& c) { return c.hv_cmd_ofs_endFileTransf(); });
}

int cmd_uart_ofsEndFileTransf(const char* uartPort, Ouint8 baudRate) noexcept {
    return run(Serial{uartPort, baudRate}, [](ON_command& c) { return c.hv_cmd_ofs_endFileTransf(); });
}

int cmd_ofsDeleteFormatFile(const char* ip, Ouint16 port, int16_t fileNub, const char* fileName) noexcept {
    return delete_files(Tcp{ip, port}, &ON_command::hv_cmd_ofs_deleteFile, fileNub, fileName);
}

int cmd_uart_ofsDeleteFormatFile(const char* uartPort, Ouint8 baudRate, int16_t fileNub,
                                 const char* fileName) noexcept {
    return delete_files(Serial{uartPort, baudRate}, &ON_command::hv_cmd_ofs_deleteFile, fileNub, fileName);
}

int cmd_confDeleteFormatFile(const char* ip, Ouint16 port, int16_t fileNub, const char* fileName) noexcept {
    return delete_files(Tcp{ip, port}, &ON_command::hv_cmd_conf_deleteFile, fileNub, fileName);
}

int cmd_uart_confDeleteFormatFile(const char* uartPort, Ouint8 baudRate, int16_t fileNub,
                                  const char* fileName) noexcept {
    return delete_files(Serial{uartPort, baudRate}, &ON_command::hv_cmd_conf_deleteFile, fileNub, fileName);
}

int cmd_ofsGetMemoryVolume(const char* ip, Ouint16 port, Ouint32* totalMemVolume,
                           Ouint32* availableMemVolume) noexcept {
    return memory_volume(Tcp{ip, port}, totalMemVolume, availableMemVolume);
}

int cmd_uart_ofsGetMemoryVolume(const char* uartPort, Ouint8 baudRate, Ouint32* totalMemVolume,
                                Ouint32* availableMemVolume) noexcept {
    return memory_volume(Serial{uartPort, baudRate}, totalMemVolume, availableMemVolume);
}

int cmd_ofsWriteFile(const char* ip, Ouint16 port, const char* fileName, Ouint8 fileType, Ouint32 fileLen,
                     Ouint8 overwrite, const Ouint8* fileAddre) noexcept {
    return write_file(Tcp{ip, port}, &ON_command::hv_cmd_ofs_writeFile, fileName, fileType, fileLen,
                      overwrite, fileAddre);
}

int cmd_uart_ofsWriteFile(const char* uartPort, Ouint8 baudRate, const char* fileName, Ouint8 fileType,
                          Ouint32 fileLen, Ouint8 overwrite, const Ouint8* fileAddre) noexcept {
    return write_file(Serial{uartPort, baudRate}, &ON_command::hv_cmd_ofs_writeFile, fileName, fileType,
                      fileLen, overwrite, fileAddre);
}

int cmd_confWriteFile(const char* ip, Ouint16 port, const char* fileName, Ouint8 fileType, Ouint32 fileLen,
                      Ouint8 overwrite, const Ouint8* fileAddre) noexcept {
    return write_file(Tcp{ip, port}, &ON_command::hv_cmd_conf_writeFile, fileName, fileType, fileLen,
                      overwrite, fileAddre);
}

int cmd_uart_confWriteFile(const char* uartPort, Ouint8 baudRate, const char* fileName, Ouint8 fileType,
                           Ouint32 fileLen, Ouint8 overwrite, const Ouint8* fileAddre) noexcept {
    return write_file(Serial{uartPort, baudRate}, &ON_command::hv_cmd_conf_writeFile, fileName, fileType,
                      fileLen, overwrite, fileAddre);
}

int cmd_ofsStartReedFile(const char* ip, Ouint16 port, char* fileName, Ouint32* fileSize,
                         Ouint32* fileCrc) noexcept {
    return start_read(Tcp{ip, port}, fileName, fileSize, fileCrc);
}

int cmd_uart_ofsStartReedFile(const char* uartPort, Ouint8 baudRate, char* fileName, Ouint32* fileSize,
                              Ouint32* fileCrc) noexcept {
    return start_read(Serial{uartPort, baudRate}, fileName, fileSize, fileCrc);
}

int cmd_confStartReedFile(const char* ip, Ouint16 port, char* fileName, Ouint32* fileSize,
                          Ouint32* fileCrc) noexcept {
    return start_read_conf(Tcp{ip, port}, fileName, fileSize, fileCrc);
}

int cmd_uart_confStartReedFile(const char* uartPort, Ouint8 baudRate, char* fileName, Ouint32* fileSize,
                               Ouint32* fileCrc) noexcept {
    return start_read_conf(Serial{uartPort, baudRate}, fileName, fileSize, fileCrc);
}

int cmd_ofsReedFileBlock(const char* ip, Ouint16 port, const char* fileName, Ouint8* fileAddre) noexcept {
    return read_block(Tcp{ip, port}, &ON_command::hv_cmd_ofs_reedFileBlock, fileName, fileAddre);
}

int cmd_uart_ofsReedFileBlock(const char* uartPort, Ouint8 baudRate, const char* fileName,
                              Ouint8* fileAddre) noexcept {
    return read_block(Serial{uartPort, baudRate}, &ON_command::hv_cmd_ofs_reedFileBlock, fileName, fileAddre);
}

int cmd_confReedFileBlock(const char* ip, Ouint16 port, const char* fileName, Ouint8* fileAddre) noexcept {
    return read_block(Tcp{ip, port}, &ON_command::hv_cmd_conf_reedFileBlock, fileName, fileAddre);
}

int cmd_uart_confReedFileBlock(const char* uartPort, Ouint8 baudRate, const char* fileName,
                               Ouint8* fileAddre) noexcept {
    return read_block(Serial{uartPort, baudRate}, &ON_command::hv_cmd_conf_reedFileBlock, fileName,
                      fileAddre);
}

int cmd_ofsReedDirBlock(const char* ip, Ouint16 port, GetDirBlock_G56* dirBlock) noexcept {
    return read_directory(Tcp{ip, port}, dirBlock);
}

int qm_list_files(const char* ip, Ouint16 port, GetDirBlock_G56* listings, Ouint8 count) noexcept {
    return run(Tcp{ip, port}, {{"listings", listings, count != 0}}, [=](ON_command& c) {
        int status = QM_OK;
        for (unsigned i = 0; i < count && status == QM_OK; ++i)
            status = c.hv_cmd_ofs_reedDirBlock(listings[i]);
        return status;
    });
}

int cmd_uart_ofsReedDirBlock(const char* uartPort, Ouint8 baudRate, GetDirBlock_G56* dirBlock) noexcept {
    return read_directory(Serial{uartPort, baudRate}, dirBlock);
}

int cmd_ofsGetTransStatus(const char* ip, Ouint16 port, Ouint8* r_w, char* fileName, Ouint32* fileCrc,
                          Ouint32* fileOffset) noexcept {
    return transfer_status(Tcp{ip, port}, r_w, fileName, fileCrc, fileOffset);
}

int cmd_uart_ofsGetTransStatus(const char* uartPort, Ouint8 baudRate, Ouint8* r_w, char* fileName,
                               Ouint32* fileCrc, Ouint32* fileOffset) noexcept {
    return transfer_status(Serial{uartPort, baudRate}, r_w, fileName, fileCrc, fileOffset);
}

int cmd_sendConfigFile(const char* ip, Ouint16 port, ConfigFile* configData) noexcept {
    return send_config(Tcp{ip, port}, configData);
}

int cmd_uart_sendConfigFile(const char* uartPort, Ouint8 baudRate, ConfigFile* configData) noexcept {
    return send_config(Serial{uartPort, baudRate}, configData);
}

int cmd_sendConfigFile_G6(const char* ip, Ouint16 port, ConfigFile_G6* configData) noexcept {
    return send_config(Tcp{ip, port}, configData);
}

int cmd_getFileAttr(const GetDirBlock_G56* dirBlock, Ouint16 number, FileAttribute_G56* fileAttr) noexcept {
    return guarded({{"dirBlock", dirBlock}, {"fileAttr", fileAttr}}, [&] {
        if (number >= dirBlock->fileNumber)
            return fail(QM_FAILED, "Argument number is %d, and the listing has %d entries, counted from 0.",
                        number, dirBlock->fileNumber);
        if (!given({{"dataAddre", dirBlock->dataAddre}})) return QM_FAILED + 0;
        std::memcpy(fileAttr, dirBlock->dataAddre + number * sizeof *fileAttr, sizeof *fileAttr);
        return QM_OK + 0;
    });
}

int cmd_ofs_freeDirBlock(GetDirBlock_G56* dirBlock) noexcept {
    return guarded({{"dirBlock", dirBlock}},
                   [&] { return ON_command::hv_cmd_freeDirBlock(dirBlock->dataAddre); });
}

int cmd_uart_ofsFreeDirBlock(const char*, Ouint8, GetDirBlock_G56*) noexcept {
    return guarded([] { return SerialPortPeer::not_implemented(); });
}
