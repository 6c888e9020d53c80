#include "program_samples.h"

#include "global.h"

namespace qm::sim::test {

using qm::test::hex;

ByteBuffer sealed(ByteBuffer body) {
    const auto crc = calc_crc32(body);
    ByteWriter(body).u32(crc);
    return body;
}

ByteBuffer sealed(std::string_view text) { return sealed(hex(text)); }

ByteBuffer file_g5() {
    return sealed("00 50 30 30 37  00 01 02 0A 00 FF  E8 07 01 02  FF FF 0C 1F" // header
                  " 01  08 1E 00 0C 00 00  01 00 00 02 00 00"                   // play periods
                  " 01 00 04 01 02 00 00  0F F0 F0 0F"                          // screen border
                  " 00 02"                                                      // no background, two areas
                  " 45 00 00 00  00 03 00 01 00 0A 00 06 00"                    // area
                  " 01 00 01 03 00 00 00  55"                                   // its border
                  " 02 00"                                                      // two pages
                  " 15 00 00 00  00 04 00 02 32 00 01 08 00 00*4  F7 FF FF*6"
                  " 15 00 00 00  00 04 00 02 32 00 01 03 00 00*4  F7 FF FF*6");
}

Files files_g6() {
    return {sealed("00 50 30 30 35  01 00 03 3C 00"                               // header
                   " 02 00 03 00 04 00 05 00 06 00  7F  E8 07 01 01  E9 07 0C 1F" //
                   " 00  00  01 02" // no periods, no border, background, two areas
                   " 33 00 00 00  0B 00 00 00 00 20 00 01 00  00  01 64 02  00  00*5  01 00"
                   " 1A 00 00 00  00 01 00 00 0A 00 01 20 00  00 07 00*6 00  0E 00 00 00 08 00 00 00"
                   " 49 00 00 00  00 20 00 00 00 20 00 01 00  00  00 00 00"
                   " 01 02 03 04 05  06 00 00 00  07 00 00 00  08 09 0A 0B  02 00 00 00 48 69"
                   " 00*5  01 00"
                   " 1A 00 00 00  00 01 00 00 0A 00 01 20 00  00 00 00*6 00  16 00 00 00 08 00 00 00"),
            sealed("09 44 30 30 35 00*8  FF FF FF 7F FF*4  FF*4 FE FF FF FF")};
}

ByteBuffer program_file(const std::string& name, const std::string& periods) {
    return sealed("00 " + name + " 00 00 01 00 00 00*10 FF 00*8 " + periods +
                  " 00 00 01"
                  " 51 00 00 00  00 00 00 00 00 08 00 01 00  00  00 00 00  00  00*5  02 00"
                  " 1A 00 00 00  00 01 00 00 14 00 01 08 00  00*9  0E 00 00 00 01 00 00 00"
                  " 1A 00 00 00  00 01 00 00 1E 00 01 08 00  00*9  0F 00 00 00 01 00 00 00");
}

ByteBuffer data_file(const std::string& pixels, const std::string& digits) {
    return sealed("09 44 " + digits + " 00*8 " + pixels);
}

} // namespace qm::sim::test
