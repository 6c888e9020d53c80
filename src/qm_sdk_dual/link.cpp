// Checksums and link settings.
#include "cmdPacket/command.h"
#include "global.h"

using namespace qm;

int get_crc16(FileCRC16_G56* data) noexcept {
    if (!data || (!data->fileAddre && data->fileLen != 0)) return QM_FAILED;
    data->fileCRC16 = calc_crc({data->fileAddre, data->fileLen});
    return QM_OK;
}

int get_crc32(FileCRC32_G56* data) noexcept {
    if (!data || (!data->fileAddre && data->fileLen != 0)) return QM_FAILED;
    data->fileCRC32 = calc_crc32({data->fileAddre, data->fileLen});
    return QM_OK;
}

int set_packetLen(Ouint16 len) noexcept {
    set_packet_len(len);
    return QM_OK;
}
