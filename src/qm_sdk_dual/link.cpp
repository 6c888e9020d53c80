// Checksums and link settings.
#include "global.h"
#include "qm_sdk_dual/exports.h"

using namespace qm;

namespace {

// Hands a record's bytes over to be checked.
template <class Record, class Check> int check(Record* data, Check&& check_bytes) noexcept {
    return guarded({{"data", data}}, [&] {
        if (!given({{"fileAddre", data->fileAddre, data->fileLen != 0}})) return false;
        check_bytes({data->fileAddre, data->fileLen});
        return true;
    });
}

} // namespace

int get_crc16(FileCRC16_G56* data) noexcept {
    return check(data, [&](Bytes bytes) { data->fileCRC16 = calc_crc(bytes); });
}

int get_crc32(FileCRC32_G56* data) noexcept {
    return check(data, [&](Bytes bytes) { data->fileCRC32 = calc_crc32(bytes); });
}

int set_packetLen(Ouint16 len) noexcept {
    return guarded([=] { set_packet_len(len); });
}
