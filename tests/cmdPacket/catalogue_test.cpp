// What every command puts on the wire, in both generations, and what it makes of its answer.
#include "hex.h"
#include "memory_link.h"
#include "support/reason.h"
#include "wire.h"

#include <gtest/gtest.h>

#include <functional>

namespace qm::test {
namespace {

constexpr Ouint16 kG5 = 0x0051, kG6 = 0x0262;
constexpr Ouint8 kOfs = 0xA1, kConf = 0xA2;

// "group code | payload" of a request of the right generation.
std::string request_text(const ByteBuffer& frame, Ouint16 type) {
    const SentRequest request = parse_request(frame);
    if (request.version != (type == kG5 ? 5 : 7)) return "no request";
    return hex_text(ByteBuffer{request.group, request.code}) + " | " + hex_text(request.payload);
}

struct Command {
    const char* request; // group and code | payload
    std::function<int(MemoryLink&)> send;
};

Brightness brightness() {
    Brightness table{};
    table.BrightnessMode = 1;
    table.HalfHourValue[0] = 0x10;
    table.HalfHourValue[47] = 0x2F;
    return table;
}

TimingReset timing_reset() { return {2, 0x01020304, 5, 6, 7, 8, 9, 10}; }

const Ouint8 kTimes[] = {7, 30, 22, 59, 0, 0, 23, 45};

const Command kCommands[] = {
    {"A2 01 | ", [](MemoryLink& c) { return c.hv_cmd_sys_reset(); }},
    {"A2 03 | 46 57 30 31", [](MemoryLink& c) { return c.hv_cmd_firmwareActivate("FW01"); }},
    {"A2 05 | 01", [](MemoryLink& c) { return c.hv_cmd_coerce_OnOff(1); }},
    {"A2 06 | 02 07 30 22 59 00 00 23 45", [](MemoryLink& c) { return c.hv_cmd_timing_onOff(2, kTimes); }},
    {"A2 06 | 00", [](MemoryLink& c) { return c.hv_cmd_timing_onOff(0, nullptr); }},
    {"A2 07 | 01 10*1 00*46 2F", [](MemoryLink& c) { return c.hv_cmd_set_brightness(brightness()); }},
    {"A2 08 | ", [](MemoryLink& c) { return c.hv_cmd_cancel_timingOnOff(); }},
    {"A2 0D | 01 00", [](MemoryLink& c) { return c.hv_cmd_screen_lock(1, 0); }},
    {"A2 0E | 00 01 50 30 30 37 04 03 02 01",
     [](MemoryLink& c) { return c.hv_cmd_program_lock(0, 1, "P007", 0x01020304); }},
    {"A2 0E | 00 01 50 30 30 37 00 04 03 02 01",
     [](MemoryLink& c) { return c.hv_cmd_program_lock_6G(0, 1, "P007", 0x01020304); }},
    {"A2 10 | 61 62 63 64 65 66 41 42 43 44 45 46",
     [](MemoryLink& c) { return c.hv_cmd_set_password("abcdef", "ABCDEF"); }},
    {"A2 11 | 61 62 63 64 65 66", [](MemoryLink& c) { return c.hv_cmd_delete_password("abcdef"); }},
    {"A2 12 | FE FF", [](MemoryLink& c) { return c.hv_cmd_set_delayTime(-2); }},
    {"A2 13 | 03 00*5", [](MemoryLink& c) { return c.hv_cmd_set_btnFunc(3); }},
    {"A2 14 | 02 04 03 02 01 05 06 07 08 09 0A",
     [](MemoryLink& c) { return c.hv_cmd_set_timingReset(timing_reset()); }},
    {"A2 15 | 04 00*5", [](MemoryLink& c) { return c.hv_cmd_set_dispMode(4); }},
    {"A2 18 | 01", [](MemoryLink& c) { return c.hv_cmd_get_stopwatch(1); }},
    {"A2 19 | ", [](MemoryLink& c) { return c.hv_cmd_get_sensorBrightnessValue(); }},
    {"A2 1A | 2C 01", [](MemoryLink& c) { return c.hv_cmd_set_speedAdjust(300); }},
    {"A2 1B | 34 12", [](MemoryLink& c) { return c.hv_cmd_set_screenAddress(0x1234); }},
    {"A4 00 | 00 1A 2B 3C 4D 5E", [](MemoryLink& c) { return c.hv_cmd_setMac("0-26-43-60-77-94"); }},
    {"A4 01 | 01 C0 A8 00 C7 FF FF FF 00 C0 A8 00 01 8D 13 02 0A 00 00 05 90 1F 70*8 3C 00 6E*12 00*7",
     [](MemoryLink& c) {
         return c.hv_cmd_setIP({1, "192.168.0.199", "255.255.255.0", "192.168.0.1", 5005, 2, "10.0.0.5", 8080,
                                "pppppppp", 60, "nnnnnnnnnnnn"});
     }},
    {"A1 00 | ", [](MemoryLink& c) { return c.hv_cmd_ofs_format(); }},
    {"A1 08 | ", [](MemoryLink& c) { return c.hv_cmd_ofs_startFileTransf(); }},
    {"A1 09 | ", [](MemoryLink& c) { return c.hv_cmd_ofs_endFileTransf(); }},
    {"A1 01 | 02 00 50 30 30 31 50 30 30 32",
     [](MemoryLink& c) { return c.hv_cmd_ofs_deleteFile(2, "P001P002"); }},
    {"A1 0A | 01 00 43 30 30", [](MemoryLink& c) { return c.hv_cmd_conf_deleteFile(1, "C000"); }},
    {"A1 05 | 50 30 30 31 00 00 00 00", [](MemoryLink& c) { return c.hv_cmd_ofs_reedFileBlock("P001"); }},
    {"A1 0E | 43 30 30 30 00 00 00 00", [](MemoryLink& c) { return c.hv_cmd_conf_reedFileBlock("C000"); }},
};

std::string expected_text(const char* request) {
    const std::string text = request;
    const auto bar = text.find(" | ");
    return text.substr(0, bar + 3) + hex_text(hex(text.substr(bar + 3)));
}

TEST(Catalogue, PutsEveryCommandOnTheWireInBothGenerations) {
    for (const Ouint16 type : {kG5, kG6}) {
        for (const Command& command : kCommands) {
            MemoryLink link(type);
            link.answers = {ack()};
            EXPECT_EQ(command.send(link), 0) << command.request;
            EXPECT_EQ(request_text(link.sent(), type), expected_text(command.request));
            EXPECT_EQ(link.timeout, 3);
        }
    }
}

TEST(Catalogue, PassesEveryRefusalOn) {
    for (const Command& command : kCommands) {
        MemoryLink link(kG6);
        link.answers = {nack(0x0102)};
        EXPECT_EQ(command.send(link), 0x0102) << command.request;
    }
}

TEST(Catalogue, SendsTheLocalTimeAsBcd) {
    MemoryLink link(kG6);
    link.answers = {ack()};
    EXPECT_EQ(link.hv_cmd_check_time(), 0);
    const std::string text = request_text(link.sent(), kG6);
    EXPECT_THAT(text,
                testing::MatchesRegex("A2 02 . [0-9][0-9] 20 [01][0-9] [0-3][0-9] [0-2][0-9] [0-5][0-9] "
                                      "[0-6][0-9] 0[0-6]"));
}

TEST(Catalogue, DeliversNoValueWhereThereIsNoRoomForOne) {
    const struct {
        Ouint8 group, code;
        int (*send)(MemoryLink&);
    } cases[] = {
        {kConf, 24, [](MemoryLink& c) { return c.hv_cmd_get_stopwatch(0); }},
        {kConf, 25, [](MemoryLink& c) { return c.hv_cmd_get_sensorBrightnessValue(); }},
        {kOfs, 5, [](MemoryLink& c) { return c.hv_cmd_ofs_reedFileBlock("P001"); }},
        {kOfs, 14, [](MemoryLink& c) { return c.hv_cmd_conf_reedFileBlock("C000"); }},
    };
    for (const auto& c : cases) {
        MemoryLink link(kG6);
        link.answers = {answer_to(c.group, c.code, {1, 2, 3, 4})};
        EXPECT_EQ(printed_by([&] { EXPECT_EQ(c.send(link), -1) << int{c.code}; }), "nCmdDataLen <= 0 \n ");
    }
}

TEST(Catalogue, ReadsTheBattleTime) {
    const struct {
        ByteBuffer payload;
        int status;
        BattleTime time;
    } cases[] = {
        {hex("24 20 12 31 23 59 58 06"), 0, {0x2024, 12, 31, 23, 59, 58, 6}},
        {hex("24 20 12"), 0, {0x2024, 12, 77, 77, 77, 77, 77}}, // what did not come stays as it was
        {hex("24"), 0, {0x4D24, 77, 77, 77, 77, 77, 77}},
        {hex("24 20 01 02 03 04 05 06 99*20"), 1, {0x2024, 1, 2, 3, 4, 5, 6}},
    };
    for (const auto& c : cases) {
        MemoryLink link(kG6);
        link.answers = {answer_to(kConf, 23, c.payload)};
        BattleTime time;
        std::memset(&time, 77, sizeof time);
        EXPECT_EQ(link.hv_cmd_battie_time(0, time), c.status);
        EXPECT_EQ(std::memcmp(&time, &c.time, sizeof time), 0) << hex_text(c.payload);
    }
}

TEST(Catalogue, DeliversAsMuchOfAnAnswerAsCame) {
    constexpr Ouint32 kOld = 0xEEEEEEEE;
    Ouint32 total = kOld, available = kOld;
    MemoryLink volume(kG6);
    volume.answers = {answer_to(kOfs, 18, hex("01 02 03 04 05 06"))};
    EXPECT_EQ(volume.hv_cmd_ofs_getMemoryVolume(total, available), 0);
    EXPECT_EQ(total, 0x04030201U);
    EXPECT_EQ(available, kOld);

    Ouint8 id[9] = {0, 0, 0, 0, 0, 0, 0, 0, 0x77};
    MemoryLink identity(kG6);
    identity.answers = {answer_to(kConf, 10, hex("01 02 03 04 05 06 07 08 09 0A"))};
    EXPECT_EQ(identity.hv_cmd_read_controllerID(id), 1);
    EXPECT_THAT(Bytes(id), is_hex("01 02 03 04 05 06 07 08 77"));
}

TEST(Catalogue, WritesTheWholeTransferStatusWhateverCame) {
    const struct {
        ByteBuffer answer;
        int status;
        const char* fields;
    } cases[] = {
        {answer_to(kOfs, 19, hex("01 50 30 30 37 0A 00 00 00 0B 00 00 00")), 0,
         "01 50 30 30 37 0A 00 00 00 0B 00 00 00"},
        {answer_to(kOfs, 19, hex("01 50 30 30 37 0A")), 0, "01 50 30 30 37 0A 00*7"},
        {answer_to(kOfs, 19, hex("02*14")), 1, "02*13"},
        {ack(), 0, "00*13"},
        {AnswerFrame{.group = kOfs, .cmd = 0}.bytes(), -5, "00*13"},
        {{}, -1, "00*13"},
    };
    for (const auto& c : cases) {
        MemoryLink link(kG6);
        link.answers = {c.answer};
        Ouint8 rw = 9;
        char name[] = "name";
        Ouint32 crc = 0xEEEEEEEE, offset = 0xEEEEEEEE;
        EXPECT_EQ(link.hv_cmd_ofs_getTransStatus(rw, name, crc, offset), c.status) << c.fields;
        ByteBuffer fields;
        ByteWriter(fields).u8(rw).text(name, 4).u32(crc).u32(offset);
        EXPECT_THAT(fields, is_hex(c.fields));
    }
}

TEST(Catalogue, OpensFilesForReading) {
    const ByteBuffer payload = hex("50 30 30 38 0A 00 00 00 EF BE AD DE");
    char name[] = "P007";
    MemoryLink ofs(kG6);
    ofs.answers = {answer_to(kOfs, 4, payload)};
    EXPECT_EQ(ofs.hv_cmd_ofs_startReedFile(name), 0);
    EXPECT_STREQ(name, "P008");
    EXPECT_EQ(request_text(ofs.sent(), kG6), "A1 04 | 50 30 30 37");

    Ouint32 size = 0, crc = 0;
    MemoryLink conf(kG6);
    conf.answers = {answer_to(kOfs, 13, payload)};
    EXPECT_EQ(conf.hv_cmd_conf_startReedFile(name, size, crc), 0);
    EXPECT_EQ(size, 10U);
    EXPECT_EQ(crc, 0xDEADBEEFU);
}

TEST(Catalogue, RefusesWhatAFrameCannotCarry) {
    MemoryLink link(kG6);
    link.answers = {ack(), ack()};
    const std::string names(4 * 8192, 'x');
    EXPECT_EQ(link.hv_cmd_ofs_deleteFile(-1, names.c_str()), -1);
    clear_reason();
    EXPECT_EQ(link.hv_cmd_ofs_deleteFile(8192, names.c_str()), -1);
    EXPECT_STREQ(reason(), "Argument fileNub is 8192, and may be 0 to 8191.");
    EXPECT_TRUE(link.pieces.empty());
    EXPECT_EQ(link.hv_cmd_ofs_deleteFile(8191, names.c_str()), 0);
}

} // namespace
} // namespace qm::test
