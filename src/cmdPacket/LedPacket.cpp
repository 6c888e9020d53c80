#include "cmdPacket/LedPacket.h"

#include "cmdPacket/stuffing.h"
#include "support/local_time.h"

#include <cstdlib>

namespace qm {
namespace {

constexpr std::size_t kStartBytes = 8;

// Splits text at the separator into count decimal numbers. A field of more than max_field characters ends
// early, and what is left of it begins the next one.
void decimal_fields(const char* text, char separator, std::size_t max_field, std::span<Ouint8> out) {
    for (Ouint8& field : out) {
        char digits[8] = {};
        std::size_t n = 0;
        while (*text && *text != separator && n < max_field) digits[n++] = *text++;
        if (*text == separator) ++text;
        field = static_cast<Ouint8>(std::atoi(digits));
    }
}

} // namespace

std::size_t LedPacket::Need_Transfer_Count(Bytes bytes) { return stuffing_kernels().count(bytes); }

std::size_t LedPacket::Transfer_Packet(Bytes body, Ouint8* out) {
    Ouint8* p = std::fill_n(out, kStartBytes, Ouint8{0xA5});
    p += stuffing_kernels().stuff(body, p);
    *p++ = 0x5A;
    return static_cast<std::size_t>(p - out);
}

// To count the escapes first would take a pass over the body as long as stuffing it.
Bytes LedPacket::Transfer_Packet(Bytes body, ByteBuffer& room) {
    const std::size_t most = kStartBytes + 2 * body.size() + 1;
    if (room.size() < most) room.resize(most);
    return Bytes(room).first(Transfer_Packet(body, room.data()));
}

std::size_t LedPacket::Restore_Data(Bytes stuffed, Ouint8* out) {
    return stuffing_kernels().restore(stuffed, out);
}

void LedPacket::Restore_Packet(Bytes frame, ByteBuffer& body) const {
    const auto first = std::find_if(frame.begin(), frame.end(), [&](Ouint8 b) { return b != begin_flag; });
    const auto begin = static_cast<std::size_t>(first - frame.begin());
    std::size_t end = frame.size();
    while (end > 1 && frame[end - 1] == end_flag) --end;
    if (end == 1) end = frame.size(); // nothing but end bytes behind the first: taken as it came
    const Bytes stuffed = frame.subspan(begin, std::max(end, begin) - begin);
    body.resize(stuffed.size());
    body.resize(Restore_Data(stuffed, body.data()));
}

void LedPacket::strIPtoHex(const char* text, Ouint8 out[4]) { decimal_fields(text, '.', 4, {out, 4}); }

void LedPacket::strMacToHex(const char* text, Ouint8 out[6]) { decimal_fields(text, '-', 5, {out, 6}); }

int LedPacket::intToBcd(int value) {
    int bcd = 0;
    for (int shift = 0; value != 0 && shift < 32; value /= 10, shift += 4) bcd |= (value % 10) << shift;
    return bcd;
}

int LedPacket::bcdToInt(int bcd) {
    int value = 0;
    for (int shift = 0; shift < 32; shift += 4) value |= bcd & (0xF << shift);
    return value;
}

void LedPacket::put_time(const std::tm& time, Ouint8 out[8]) {
    const int year = intToBcd(time.tm_year + 1900);
    out[0] = static_cast<Ouint8>(year);
    out[1] = static_cast<Ouint8>(year >> 8);
    const int fields[] = {time.tm_mon + 1, time.tm_mday, time.tm_hour,
                          time.tm_min,     time.tm_sec,  time.tm_wday};
    for (std::size_t i = 0; i < std::size(fields); ++i)
        out[2 + i] = charToBcd(static_cast<Ouint8>(fields[i]));
}

void LedPacket::get_time(Ouint8 out[8]) { put_time(local_time(), out); }

} // namespace qm
