// Base of all packet codecs: byte stuffing and the small conversions of the command builders.
#pragma once

#include "support/bytes.h"

#include <ctime>

namespace qm {

class LedPacket {
  public:
    virtual ~LedPacket() = default;

    Ouint8 begin_flag = 0xA5;
    Ouint8 end_flag = 0x5A;
    Ouint16 m_DstAddr = 0xFFFE;
    Ouint16 m_DeviceType = 0xFFFE; // learnt from the answer to the first ping

    // How many of the bytes need an escape.
    static std::size_t Need_Transfer_Count(Bytes bytes);

    // Length of a body once stuffed: 8 start bytes, the escaped body, the end byte.
    static std::size_t stuffed_length(Bytes body) { return 8 + body.size() + Need_Transfer_Count(body) + 1; }

    // Stuffs a whole frame body into out, which holds stuffed_length(body) bytes; returns the bytes written.
    static std::size_t Transfer_Packet(Bytes body, Ouint8* out);
    // The same into room, which grows to the most that a body of this length can take, and only then. Gives
    // the frame, which is valid until the room is used again.
    static Bytes Transfer_Packet(Bytes body, ByteBuffer& room);

    // Undoes the escapes; out holds at least as many bytes as come in. Returns the bytes written.
    static std::size_t Restore_Data(Bytes stuffed, Ouint8* out);

    // Strips start and end bytes of a received frame, any number of each, and undoes the escapes.
    void Restore_Packet(Bytes frame, ByteBuffer& body) const;

    // Dotted IPv4 text to 4 bytes.
    static void strIPtoHex(const char* text, Ouint8 out[4]);
    // Six fields separated by "-" to 6 bytes. Each field is read as a decimal number, not a hexadecimal one.
    static void strMacToHex(const char* text, Ouint8 out[6]);

    static Ouint8 charToBcd(Ouint8 value) { return static_cast<Ouint8>(((value / 10) << 4) + value % 10); }
    static Ouint8 bcdTochar(Ouint8 bcd) { return static_cast<Ouint8>((bcd >> 4) * 10 + (bcd & 0x0F)); }
    static int intToBcd(int value);
    // Puts the nibbles back together in base 16: a value that is not negative comes back unchanged.
    static int bcdToInt(int bcd);

    // A time as the controllers' 8-byte clock record, all BCD: year (u16), month, day, hour, minute, second,
    // day of the week from 0 for Sunday.
    static void put_time(const std::tm& time, Ouint8 out[8]);
    // The local time likewise.
    static void get_time(Ouint8 out[8]);
};

} // namespace qm
