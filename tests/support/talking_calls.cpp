#include "talking_calls.h"

#include <array>
#include <cstdio>

namespace qm::test {
namespace {

constexpr char kHost[] = "127.0.0.1", kFont[] = "DejaVu Sans", kText[] = "Hello", kPicture[] = QM_PICTURE;
constexpr E_ScreenColor_G56 kDual = SCREEN_COLOR_DOUBLE;
constexpr Talks k5 = Talks::to_generation_5, k6 = Talks::to_generation_6, kAll = Talks::by_broadcast,
                kWifi = Talks::to_wifi_module;

template <class Record> using AskedFor = int (*)(const char*, Ouint16, Record*);

template <class Record> int ask(AskedFor<Record> call, Ouint16 port) {
    Record record{};
    return call(kHost, port, &record);
}

template <class Record> int ask_all(int (*call)(Record*)) {
    Record record{};
    return call(&record);
}

const Ouint8* bytes_of(const char* text) { return reinterpret_cast<const Ouint8*>(text); }

// More than two blocks.
const std::array<Ouint8, 2100> kFile{1, 2, 3};

using Writes = int (*)(const char*, Ouint16, const char*, Ouint8, Ouint32, Ouint8, const Ouint8*);
int write(Writes call, Ouint16 port, const char* name) {
    return call(kHost, port, name, 0, kFile.size(), 1, kFile.data());
}

using Opens = int (*)(const char*, Ouint16, char*, Ouint32*, Ouint32*);
int open(Opens call, Ouint16 port) {
    char name[] = "P001";
    Ouint32 size = 0, crc = 0;
    return call(kHost, port, name, &size, &crc);
}

using ReadsBlock = int (*)(const char*, Ouint16, const char*, Ouint8*);
int read_block(ReadsBlock call, Ouint16 port) {
    Ouint8 data[1024];
    return call(kHost, port, "P001", data);
}

Given list(Ouint16 port) {
    GetDirBlock_G56 directory{};
    const Given given = cmd_ofsReedDirBlock(kHost, port, &directory);
    cmd_ofs_freeDirBlock(&directory);
    return given;
}

Given list_two_kinds(Ouint16 port) {
    GetDirBlock_G56 listings[2] = {};
    const Given given = qm_list_files(kHost, port, listings, 2);
    for (GetDirBlock_G56& listing : listings) cmd_ofs_freeDirBlock(&listing);
    return given;
}

Given transfer_status(Ouint16 port) {
    Ouint8 direction = 0;
    char name[4];
    Ouint32 crc = 0, offset = 0;
    return cmd_ofsGetTransStatus(kHost, port, &direction, name, &crc, &offset);
}

Given read_id(Ouint16 port) {
    Ouint8 id[8];
    return cmd_readControllerID(kHost, port, id);
}

Given battle_time(Ouint16 port) {
    BattleTime time{};
    return cmd_battieTime(kHost, port, 0, &time);
}

Given stopwatch(Ouint16 port) {
    Ouint32 time = 0;
    return cmd_getStopwatch(kHost, port, 0, &time);
}

Given memory_volume(Ouint16 port) {
    Ouint32 total = 0, available = 0;
    return cmd_ofsGetMemoryVolume(kHost, port, &total, &available);
}

Given set_timing(Ouint16 port) {
    constexpr Ouint8 kTimes[] = {8, 0, 18, 0};
    return cmd_timingOnOff(kHost, port, 1, kTimes);
}

HVareaHeader_G6 area() {
    HVareaHeader_G6 header{};
    header.AreaWidth = 64;
    header.AreaHeight = 16;
    return header;
}

HVpageHeader_G6 page() {
    HVpageHeader_G6 header{};
    header.fontSize = 12;
    header.color = eRed;
    return header;
}

HVfontData font5() {
    HVfontData font{};
    font.fontSize = 12;
    font.color = eRed;
    return font;
}

HVSoundDepend_6G speech() {
    HVSoundDepend_6G sound{};
    sound.stSound.SoundFlag = 1;
    sound.stSound.SoundDataLen = sizeof kText - 1;
    sound.stSound.SoundData = bytes_of(kText);
    return sound;
}

Given text6(Ouint16 port) {
    return dynamicArea_AddAreaTxt_6G(kHost, port, kDual, 0, 0, 0, 64, 16, kFont, 12, kText);
}

Given text6_of_assumed_type(Ouint16 port) {
    const Ouint16 before = qm_assume_controller_type(0x0262);
    const Given given = text6(port);
    qm_assume_controller_type(before);
    return given;
}

// More than a short envelope takes.
Given large_text6(Ouint16 port) {
    HVareaHeader_G6 where = area();
    HVpageHeader_G6 look = page();
    where.AreaWidth = where.AreaHeight = 512;
    return dynamicArea_AddAreaTxtDetails_6G(kHost, port, kDual, 0, &where, &look, kFont, kText);
}

Given details6(Ouint16 port) {
    HVareaHeader_G6 where = area();
    HVpageHeader_G6 look = page();
    return dynamicArea_AddAreaTxtDetails_6G(kHost, port, kDual, 0, &where, &look, kFont, kText);
}

Given details6_with_program(Ouint16 port) {
    HVareaHeader_G6 where = area();
    HVpageHeader_G6 look = page();
    Ouint16 programs[] = {1};
    return dynamicArea_AddAreaTxtDetails_WithProgram_6G(kHost, port, kDual, 0, &where, &look, kFont, kText, 1,
                                                        programs);
}

Given picture6(Ouint16 port) {
    HVpageHeader_G6 look = page();
    return dynamicArea_AddAreaPic_6G(kHost, port, kDual, 0, 0, 0, 64, 16, &look, kPicture);
}

Given picture6_with_program(Ouint16 port) {
    HVpageHeader_G6 look = page();
    Ouint16 programs[] = {1};
    return dynamicArea_AddAreaPic_WithProgram_6G(kHost, port, kDual, 0, 0, 0, 64, 16, &look, kPicture, 1,
                                                 programs);
}

using SendsAreas = int (*)(const char*, Ouint32, E_ScreenColor_G56, Ouint8, DynamicAreaParams*);
int areas6(SendsAreas call, Ouint16 port, const char* content) {
    DynamicAreaParams one{1, area(), page(), bytes_of(kFont), bytes_of(content)};
    return call(kHost, port, kDual, 1, &one);
}

using SendsAreasOfPrograms = int (*)(const char*, Ouint32, E_ScreenColor_G56, Ouint8, DynamicAreaParams*,
                                     Ouint16, Ouint16*);
int areas6_with_program(SendsAreasOfPrograms call, Ouint16 port, const char* content) {
    DynamicAreaParams one{1, area(), page(), bytes_of(kFont), bytes_of(content)};
    Ouint16 programs[] = {1};
    return call(kHost, port, kDual, 1, &one, 1, programs);
}

Given text5(Ouint16 port) {
    return dynamicArea_AddAreaWithTxt_5G(kHost, port, kDual, 0, 0, 0, 1, 0, nullptr, 1, 0, 0, 64, 16, {}, 0,
                                         0, 0, 300, 1, font5(), kFont, kText);
}

Given picture5(Ouint16 port) {
    return dynamicArea_AddAreaWithPic_5G(kHost, port, kDual, 0, 0, 0, 1, 0, nullptr, 1, 0, 0, 64, 16, {}, 0,
                                         0, 0, 300, 1, kPicture);
}

Given items5(Ouint16 port) {
    DynamicAreaBaseInfo_5G item{1, 0, 0, 0, 300, 1, font5(), bytes_of(kFont), bytes_of(kText), nullptr};
    DynamicAreaBaseInfo_5G* items[] = {&item};
    return dynamicArea_AddAreaInfos_5G(kHost, port, kDual, 0, 0, 0, 1, 0, nullptr, 1, 0, 0, 64, 16, {}, 1,
                                       items);
}

using DeletesAreas = int (*)(const char*, Ouint32, Oint8, Oint8*);
int delete_areas(DeletesAreas call, Ouint16 port) {
    Oint8 ids[] = {1, 2};
    return call(kHost, port, 2, ids);
}

Given update_sounds(Ouint16 port) {
    HVSoundDepend_6G sound = speech();
    return dynamicArea_UpdateSoundIndepend(kHost, port, &sound, 1, 0);
}

Given set_network(Ouint16) {
    return cmd_udpSetIP(1, "10.1.2.3", "255.255.0.0", "10.1.0.1", 6005, 2, "10.9.9.9", 7005, "password", 60,
                        "0123456789AB");
}

Given wifi_settings(Ouint16) {
    char ssid[512] = {}, password[512] = {};
    return cmd_AT_getWifiSsidPwd(ssid, password);
}

#define QM_CALL(expression) [](Ouint16 port) -> Given { return expression; }
#define QM_BROADCAST(expression) [](Ouint16) -> Given { return expression; }

constexpr TalkingCall kCalls[] = {
    {"cmd_tcpPing", k6, QM_CALL(ask(cmd_tcpPing, port))},
    {"cmd_tcpNetworkSearch_6G", k6, QM_CALL(ask(cmd_tcpNetworkSearch_6G, port))},
    {"cmd_tcpNetworkSearch_6G_Web", k6, QM_CALL(ask(cmd_tcpNetworkSearch_6G_Web, port))},
    {"cmd_sysReset", k6, QM_CALL(cmd_sysReset(kHost, port))},
    {"cmd_check_time", k6, QM_CALL(cmd_check_time(kHost, port))},
    {"qm_set_clock", k6, QM_CALL(qm_set_clock(kHost, port, 2026, 11, 21, 10, 20, 30))},
    {"cmd_coerceOnOff", k6, QM_CALL(cmd_coerceOnOff(kHost, port, 1))},
    {"cmd_timingOnOff", k6, set_timing},
    {"cmd_cancelTimingOnOff", k6, QM_CALL(cmd_cancelTimingOnOff(kHost, port))},
    {"cmd_setBrightness", k6, QM_CALL(ask<const Brightness>(cmd_setBrightness, port))},
    {"cmd_readControllerID", k6, read_id},
    {"cmd_screenLock", k6, QM_CALL(cmd_screenLock(kHost, port, 0, 0))},
    {"cmd_programLock", k6, QM_CALL(cmd_programLock(kHost, port, 0, 0, "P001", 0))},
    {"cmd_check_controllerStatus", k6, QM_CALL(ask(cmd_check_controllerStatus, port))},
    {"cmd_setPassword", k6, QM_CALL(cmd_setPassword(kHost, port, "secret", "secret"))},
    {"cmd_deletePassword", k6, QM_CALL(cmd_deletePassword(kHost, port, "secret"))},
    {"cmd_setDelayTime", k6, QM_CALL(cmd_setDelayTime(kHost, port, 5))},
    {"cmd_setBtnFunc", k6, QM_CALL(cmd_setBtnFunc(kHost, port, 1))},
    {"cmd_setTimingReset", k6, QM_CALL(ask<const TimingReset>(cmd_setTimingReset, port))},
    {"cmd_setDispMode", k6, QM_CALL(cmd_setDispMode(kHost, port, 1))},
    {"cmd_battieTime", k6, battle_time},
    {"cmd_getStopwatch", k6, stopwatch},
    {"cmd_getSensorBrightnessValue", k6, QM_CALL(ask(cmd_getSensorBrightnessValue, port))},
    {"cmd_setSpeedAdjust", k6, QM_CALL(cmd_setSpeedAdjust(kHost, port, 3))},
    {"cmd_setScreenAddress", k6, QM_CALL(cmd_setScreenAddress(kHost, port, 7))},
    {"cmd_firmwareActivate", k6, QM_CALL(cmd_firmwareActivate(kHost, port, "P001"))},
    {"cmd_ofsFormat", k6, QM_CALL(cmd_ofsFormat(kHost, port))},
    {"cmd_ofsStartFileTransf", k6, QM_CALL(cmd_ofsStartFileTransf(kHost, port))},
    {"cmd_ofsEndFileTransf", k6, QM_CALL(cmd_ofsEndFileTransf(kHost, port))},
    {"cmd_ofsDeleteFormatFile", k6, QM_CALL(cmd_ofsDeleteFormatFile(kHost, port, 1, "P001"))},
    {"cmd_confDeleteFormatFile", k6, QM_CALL(cmd_confDeleteFormatFile(kHost, port, 1, "P001"))},
    {"cmd_ofsGetMemoryVolume", k6, memory_volume},
    {"cmd_ofsWriteFile", k6, QM_CALL(write(cmd_ofsWriteFile, port, "P001"))},
    {"cmd_confWriteFile", k6, QM_CALL(write(cmd_confWriteFile, port, "P001"))},
    {"cmd_ofsStartReedFile", k6, QM_CALL(open(cmd_ofsStartReedFile, port))},
    {"cmd_confStartReedFile", k6, QM_CALL(open(cmd_confStartReedFile, port))},
    {"cmd_ofsReedFileBlock", k6, QM_CALL(read_block(cmd_ofsReedFileBlock, port))},
    {"cmd_confReedFileBlock", k6, QM_CALL(read_block(cmd_confReedFileBlock, port))},
    {"cmd_ofsReedDirBlock", k6, list},
    {"qm_list_files", k6, list_two_kinds},
    {"cmd_ofsGetTransStatus", k6, transfer_status},
    {"cmd_sendConfigFile", k5, QM_CALL(ask(cmd_sendConfigFile, port))},
    {"cmd_sendConfigFile_G6", k6, QM_CALL(ask(cmd_sendConfigFile_G6, port))},
    {"program_pictureArea", k5, QM_CALL(program_pictureArea(0, kHost, port))},
    {"dynamicArea_AddAreaTxt_6G", k6, text6},
    {"dynamicArea_AddAreaTxt_6G, type assumed", k6, text6_of_assumed_type},
    {"dynamicArea_AddAreaTxtDetails_6G", k6, details6},
    {"dynamicArea_AddAreaTxtDetails_6G, large", k6, large_text6},
    {"dynamicArea_AddAreaPic_6G", k6, picture6},
    {"dynamicArea_AddAreaTxtDetails_WithProgram_6G", k6, details6_with_program},
    {"dynamicArea_AddAreaPic_WithProgram_6G", k6, picture6_with_program},
    {"dynamicAreaS_AddTxtDetails_6G", k6, QM_CALL(areas6(dynamicAreaS_AddTxtDetails_6G, port, kText))},
    {"dynamicAreaS_AddAreaPic_6G", k6, QM_CALL(areas6(dynamicAreaS_AddAreaPic_6G, port, kPicture))},
    {"dynamicAreaS_AddTxtDetails_WithProgram_6G", k6,
     QM_CALL(areas6_with_program(dynamicAreaS_AddTxtDetails_WithProgram_6G, port, kText))},
    {"dynamicAreaS_AddAreaPic_WithProgram_6G", k6,
     QM_CALL(areas6_with_program(dynamicAreaS_AddAreaPic_WithProgram_6G, port, kPicture))},
    {"dynamicArea_AddAreaWithTxt_5G", k5, text5},
    {"dynamicArea_AddAreaWithPic_5G", k5, picture5},
    {"dynamicArea_AddAreaInfos_5G", k5, items5},
    {"dynamicArea_DelArea_6G", k6, QM_CALL(dynamicArea_DelArea_6G(kHost, port, 1))},
    {"dynamicArea_DelAreas_6G", k6, QM_CALL(delete_areas(dynamicArea_DelAreas_6G, port))},
    {"dynamicArea_DelArea_5G", k5, QM_CALL(dynamicArea_DelArea_5G(kHost, port, 1))},
    {"dynamicArea_DelAreaS_5G", k5, QM_CALL(delete_areas(dynamicArea_DelAreaS_5G, port))},
    {"dynamicArea_InsertSoundIndepend", k6,
     QM_CALL(dynamicArea_InsertSoundIndepend(kHost, port, speech(), 0, 0))},
    {"dynamicArea_UpdateSoundIndepend", k6, update_sounds},
    {"cmd_udpPing", kAll, QM_BROADCAST(ask_all(cmd_udpPing))},
    {"cmd_udpNetworkSearch", kAll, QM_BROADCAST(ask_all(cmd_udpNetworkSearch))},
    {"cmd_udpNetworkSearch_6G", kAll, QM_BROADCAST(ask_all(cmd_udpNetworkSearch_6G))},
    {"cmd_udpNetworkSearch_6G_Web", kAll, QM_BROADCAST(ask_all(cmd_udpNetworkSearch_6G_Web))},
    {"cmd_udpSetIP", kAll, set_network},
    {"cmd_udpSetMac", kAll, QM_BROADCAST(cmd_udpSetMac("0-26-43-60-77-94"))},
    {"cmd_AT_setWifiSsidPwd", kWifi, QM_BROADCAST(cmd_AT_setWifiSsidPwd("lobby", "secret99"))},
    {"cmd_AT_getWifiSsidPwd", kWifi, wifi_settings},
};

} // namespace

Given::Given(int code) : status(code) { std::snprintf(reason, sizeof reason, "%s", qm_last_error()); }

std::span<const TalkingCall> talking_calls() { return kCalls; }

int prepare_for_calls(Ouint16 port) {
    for (const int code : {write(cmd_ofsWriteFile, port, "P001"), write(cmd_confWriteFile, port, "P001")})
        if (code != QM_OK) return code;
    return cmd_deletePassword(kHost, port, "secret");
}

} // namespace qm::test
