#include <qm_sdk_dual.h>

#include <cstdio>

int main() {
    const char text[] = "123456789";
    FileCRC16_G56 data = {reinterpret_cast<const Ouint8*>(text), 9, 0};
    const int status = get_crc16(&data);
    std::printf("status %d, CRC-16/ARC 0x%04X\n", status, unsigned{data.fileCRC16});
    return status == QM_OK && data.fileCRC16 == 0xBB3D ? 0 : 1;
}
