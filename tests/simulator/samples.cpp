#include "samples.h"

#include "hex.h"
#include "wire.h"

namespace qm::sim::test {
namespace {

void page_record(ByteWriter& out, std::uint8_t mode, std::size_t offset, std::size_t length) {
    out.u32(26).u8(0).u8(mode).u8(0).u8(32).u16(300).u8(1).u16(8).zeros(9);
    out.u32(static_cast<Ouint32>(offset)).u32(static_cast<Ouint32>(length));
}

void description(ByteWriter& out, const AreaSample& area, std::size_t offset) {
    const auto u16 = [](int value) { return static_cast<unsigned>(value); };
    out.u32(static_cast<Ouint32>(33 + 30 * area.pages.size()));
    out.u8(area.id).u8(0).u16(5).u8(1).u16(0).u8(1).u32(0).u8(0x10);
    out.u16(u16(area.rect.x)).u16(u16(area.rect.y)).u16(u16(area.rect.width)).u16(u16(area.rect.height));
    out.u8(0).u8(0).u8(0).u8(0).u8(0).zeros(5).u16(static_cast<unsigned>(area.pages.size()));
    for (const ByteBuffer& page : area.pages) {
        page_record(out, area.mode, offset, page.size());
        offset += page.size();
    }
}

} // namespace

ByteBuffer content_of(const std::vector<AreaSample>& areas) {
    ByteBuffer content, pixels;
    ByteWriter out(content);
    out.u16(static_cast<unsigned>(areas.size()));
    for (const AreaSample& area : areas) {
        description(out, area, pixels.size());
        for (const ByteBuffer& page : area.pages) ByteWriter(pixels).bytes(page);
    }
    out.bytes(pixels);
    return content;
}

ByteBuffer payload_of(const std::vector<AreaSample>& areas) {
    ByteBuffer payload = qm::test::hex("01 A7 00 00 00");
    ByteWriter(payload).bytes(content_of(areas));
    return payload;
}

ByteBuffer handshake(std::uint16_t sequence) {
    ByteBuffer body = qm::test::hex("FE FF 00 80 00 00 FE 01");
    ByteWriter(body).u16(sequence).u16(4).u16(0xB823); // CRC of A2 00 00 00
    std::uint8_t sum = 0;
    for (const std::uint8_t b : body) sum ^= b;
    ByteWriter(body).u8(sum).bytes(qm::test::hex("A2 00 00 00"));
    return qm::test::stuff(body);
}

ByteBuffer envelope_around(Bytes bytes) {
    ByteBuffer body = qm::test::hex("FE FF 00 80 F0 00 62 02 00*4");
    ByteWriter out(body);
    out.u32(static_cast<Ouint32>(bytes.size())).bytes(bytes);
    out.u16(qm::test::crc16(body));
    return qm::test::stuff(body);
}

std::string letters(const Image& image) {
    std::string text;
    for (int y = 0; y < image.height; ++y) {
        if (y > 0) text += '/';
        for (int x = 0; x < image.width; ++x) {
            const Rgb pixel = image.at(x, y);
            const auto known = [](std::uint8_t level) { return level == 0 || level == 255; };
            const bool pure = known(pixel.r) && known(pixel.g) && known(pixel.b);
            const int code = (pixel.r ? 1 : 0) + (pixel.g ? 2 : 0) + (pixel.b ? 4 : 0);
            text += pure ? ".RGYBMCW"[code] : '?';
        }
    }
    return text;
}

} // namespace qm::sim::test
