#include "cmdPacket/LedPacket.h"

#include <cstdlib>
#include <ctime>

namespace qm {
namespace {

constexpr int kStartBytes = 8;

// The escape byte and its second byte, for the four byte values that a body must not carry.
struct Escape {
    Ouint8 plain, first, second;
};
constexpr Escape kEscapes[] = {{0x5A, 0x5B, 2}, {0x5B, 0x5B, 1}, {0xA5, 0xA6, 2}, {0xA6, 0xA6, 1}};

constexpr bool needs_escape(Ouint8 b) { return b == 0x5A || b == 0x5B || b == 0xA5 || b == 0xA6; }

const Escape& escape_of(Ouint8 plain) {
    const Escape* entry = kEscapes;
    while (entry->plain != plain) ++entry;
    return *entry;
}

// The plain byte behind an escape pair, or -1 when the two are no pair.
int unescape(Ouint8 first, Ouint8 second) {
    for (const Escape& e : kEscapes)
        if (e.first == first && e.second == second) return e.plain;
    return -1;
}

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

std::size_t LedPacket::Need_Transfer_Count(Bytes bytes) {
    std::size_t count = 0;
    for (const Ouint8 b : bytes) count += needs_escape(b);
    return count;
}

std::size_t LedPacket::Transfer_Packet(Bytes body, Ouint8* out) {
    Ouint8* p = std::fill_n(out, kStartBytes, Ouint8{0xA5});
    for (const Ouint8 b : body) {
        if (needs_escape(b)) {
            const Escape& escape = escape_of(b);
            *p++ = escape.first;
            *p++ = escape.second;
        } else {
            *p++ = b;
        }
    }
    *p++ = 0x5A;
    return static_cast<std::size_t>(p - out);
}

void LedPacket::Transfer_Packet(Bytes body, Frame& out) {
    out.resize(stuffed_length(body));
    Transfer_Packet(body, out.data());
}

std::size_t LedPacket::Restore_Data(Bytes stuffed, Ouint8* out) {
    Ouint8* p = out;
    for (std::size_t i = 0; i < stuffed.size(); ++i) {
        const int plain = i + 1 < stuffed.size() ? unescape(stuffed[i], stuffed[i + 1]) : -1;
        *p++ = plain < 0 ? stuffed[i] : static_cast<Ouint8>(plain);
        if (plain >= 0) ++i;
    }
    return static_cast<std::size_t>(p - out);
}

void LedPacket::Restore_Packet(Bytes frame, Frame& body) const {
    const auto first = std::find_if(frame.begin(), frame.end(), [&](Ouint8 b) { return b != begin_flag; });
    const Bytes rest = frame.subspan(static_cast<std::size_t>(first - frame.begin()));
    std::size_t end = rest.size();
    while (end > 1 && rest[end - 1] == end_flag) --end;
    if (end == 1) end = rest.size(); // nothing but end bytes behind the first: taken as it came
    body.resize(end);
    body.resize(Restore_Data(rest.first(end), body.data()));
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

void LedPacket::get_time(Ouint8 out[8]) {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    const int year = intToBcd(local.tm_year + 1900);
    out[0] = static_cast<Ouint8>(year);
    out[1] = static_cast<Ouint8>(year >> 8);
    const int fields[] = {local.tm_mon + 1, local.tm_mday, local.tm_hour,
                          local.tm_min,     local.tm_sec,  local.tm_wday};
    for (std::size_t i = 0; i < std::size(fields); ++i)
        out[2 + i] = charToBcd(static_cast<Ouint8>(fields[i]));
}

} // namespace qm
