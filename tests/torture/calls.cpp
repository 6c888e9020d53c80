#include "calls.h"

#include "program_file/fixture.h"
#include "simulator/show/picture.h"

#include <cstdlib>
#include <fstream>
#include <utility>

namespace qm::test {
namespace {

constexpr char kHost[] = "127.0.0.1", kPng[] = "picture.png", kBorder[] = "border.png",
               kSerial[] = "/dev/ttyS0";
constexpr char kText[] = "Hello 你好 a longer line";
constexpr E_ScreenColor_G56 kDual = SCREEN_COLOR_DOUBLE;
enum Area : Ouint16 { texts = 1, digital, analog, background, added };

// Arguments.
Ouint8 bytes[3000];
char name[] = "P001";
Ouint32 word, other_word;
Ping_data ping;
NetSearchCmdRet found;
NetSearchCmdRet_Web found_web;
heartbeatData heartbeat;
GetDirBlock_G56 listings[2];
FileAttribute_G56 attribute;
ConfigFile config;
ConfigFile_G6 config6;
Brightness brightness;
TimingReset timing;
ControllerStatus_G56 status;
BattleTime battle;
HVprogram no_program5{};
HVprogram_G6 no_program6{};
FileCRC16_G56 crc16{bytes, 3000, 0};
FileCRC32_G56 crc32{bytes, 3000, 0};
getPageData page_data;
QM_ControllerType controller_type;
qm_text_extent extent;
Ouint16 programs[] = {1, 2};
Oint8 ids[] = {1, 2};

const HVprogramHeader header5 = program_header(1), other_header5 = program_header(2);
const HVprogramHeader_G6 header6 = program_header_g6(1), other_header6 = program_header_g6(2);
const HVprogramppGrp_G56 periods{1, {{8, 0, 0, 9, 0, 0}}};
const HVpageHeader page5 = page_header();
HVpageHeader_G6 page6 = page_header_g6();
const HVareaHeader area5 = area_header(ePicturesArea, 0, 16, 32, 16);
const HVareaHeader_G6 area6 = area_header_g6(ePicturesArea, 0, 16, 32, 16);
HVareaHeader_G6 shown6 = area_header_g6(0, 0, 0, 64, 16);
const HVscreenframeHeader border5{1, 1, 1, 1, 2, 0}, other_border5{1, 2, 2, 2, 8, 0};
const HVscreenframeHeader_G6 border6{1, 1, 1, 4, 2, 0}, other_border6{2, 2, 2, 8, 8, 0};
const HVareaframeHeader area_border{1, 1, 1, 1, 2, 0};
const HVtimeAreaData_G56 time_data = time_content();
const HVTimeAreaBattle_G6 battle_start{0x2024, 1, 1, 0, 0, 0, 1, 0};
const HVAnalogClockHeader_G56 hands{16, 16, 0, 2, 5, 1, 1, 8, 2, 1, 9, 3};
const ClockColor_G56 colours{1, 2, 0};
const HVPicAreaSoundHeader_G6 voice{}, other_voice{1, 2, 3, 0, 4, 5, 0, 0, 0, 0};
const HVfontData font5{SINGLELINE, 12, eRed, false, false, eHorizontal, 0, 0, 0};
const qm_text_style style{kFont, 12, false, false, MULTILINE, eHorizontal, 0, 1};

const Ouint8* bytes_of(const char* text) { return reinterpret_cast<const Ouint8*>(text); }

DynamicAreaParams params(const char* content) {
    return {1, shown6, page6, bytes_of(kFont), bytes_of(content)};
}
DynamicAreaParams text_params = params(kText), picture_params = params(kPng);
DynamicAreaBaseInfo_5G text_info{1, 4, 0, 9, 0, 1, font5, bytes_of(kFont), bytes_of(kText), nullptr},
    picture_info{2, 1, 0, 9, 0, 1, {}, nullptr, nullptr, bytes_of(kPng)};
DynamicAreaBaseInfo_5G* infos[] = {&text_info, &picture_info};

HVSoundDepend_6G speech() {
    HVSoundDepend_6G speech{};
    speech.stSound.SoundDataLen = 5;
    speech.stSound.SoundData = bytes_of(kText);
    return speech;
}
HVSoundDepend_6G spoken = speech();

const ByteBuffer& png_in_memory() {
    static const ByteBuffer content = [] {
        std::ifstream file(kPng, std::ios::binary);
        return ByteBuffer(std::istreambuf_iterator<char>(file), {});
    }();
    return content;
}

// Listings are released whatever became of the call.
int list(Ouint16 port, Ouint8 count) {
    listings[0] = {0, 0, nullptr};
    listings[1] = {1, 0, nullptr};
    const int code =
        count == 1 ? cmd_ofsReedDirBlock(kHost, port, listings) : qm_list_files(kHost, port, listings, 2);
    for (GetDirBlock_G56& listing : listings) std::free(std::exchange(listing.dataAddre, nullptr));
    return code;
}

int integrate5() {
    HVprogram program{};
    const int code = program_IntegrateProgramFile(&program);
    std::free(program.fileAddre);
    return code;
}

int integrate6() {
    HVprogram_G6 program{};
    const int code = program_IntegrateProgramFile_G6(&program);
    std::free(program.fileAddre);
    std::free(program.dfileAddre);
    return code;
}

int border_around_area() { return program_picturesAreaAddFrame(texts, &area_border, kBorder); }
int battle_time() { return program_timeAreaSetBattleTime_G6(digital, &battle_start); }
int dial5() { return program_timeAreaChangeDialPic(analog, kPng); }
int dial6() { return program_timeAreaChangeDialPic_G6(analog, kPng); }
int sound() { return program_pictureAreaEnableSound_G6(texts, voice, kText); }
int border_of_five() { return program_addFrame(&border5, kBorder); }
int border_of_six() { return program_addFrame_G6(&border6, kBorder); }

int handler() {
    qm_set_message_handler([](const char*, void*) {}, nullptr);
    return 0;
}

} // namespace

// A call at a stage; BEHIND: of a program that another call has changed before.
#define AT(stage, function, ...)                                                                             \
    {                                                                                                        \
#function, Stage::stage, [](Ouint16) -> int { return function(__VA_ARGS__); }                        \
    }
#define BEHIND(stage, change, function, ...)                                                                 \
    {                                                                                                        \
#function, Stage::stage, [](Ouint16) -> int { return function(__VA_ARGS__); }, change                \
    }
#define TO(stage, function, ...)                                                                             \
    {                                                                                                        \
#function, Stage::stage,                                                                             \
            [](Ouint16 port) -> int { return function(kHost, port __VA_OPT__(, ) __VA_ARGS__); }             \
    }
#define SERIAL(function, ...) AT(six, function, kSerial, 1 __VA_OPT__(, ) __VA_ARGS__)
#define DOES(stage, function, code)                                                                          \
    {                                                                                                        \
#function, Stage::stage, [](Ouint16 port) -> int { (void)port; return code; }                                \
    }

const std::vector<Call>& all_calls() {
    static const std::vector<Call> calls = {
        // clang-format off
        AT(six, get_crc16, &crc16), AT(six, get_crc32, &crc32), AT(six, set_packetLen, 1024),
        TO(six, cmd_tcpPing, &ping), TO(six, cmd_tcpNetworkSearch_6G, &found),
        TO(six, cmd_tcpNetworkSearch_6G_Web, &found_web), TO(six, cmd_sysReset),
        TO(six, cmd_check_time), TO(six, qm_set_clock, 2024, 1, 1, 0, 0, 0), TO(six, cmd_coerceOnOff, 1),
        TO(six, cmd_timingOnOff, 1, bytes), TO(six, cmd_cancelTimingOnOff), TO(six, cmd_setBrightness, &brightness),
        TO(six, cmd_readControllerID, bytes), TO(six, cmd_screenLock, 0, 0),
        TO(six, cmd_programLock, 0, 0, name, 0), TO(six, cmd_check_controllerStatus, &status),
        TO(six, cmd_setPassword, "      ", "secret"), TO(six, cmd_deletePassword, "secret"),
        TO(six, cmd_setDelayTime, 1), TO(six, cmd_setBtnFunc, 1), TO(six, cmd_setTimingReset, &timing),
        TO(six, cmd_setDispMode, 1), TO(six, cmd_battieTime, 0, &battle), TO(six, cmd_getStopwatch, 0, &word),
        TO(six, cmd_getSensorBrightnessValue, &word), TO(six, cmd_setSpeedAdjust, 1),
        TO(six, cmd_setScreenAddress, 1), TO(six, cmd_firmwareActivate, name), TO(six, update_firmware, name),
        TO(six, cmd_ofsFormat), TO(six, cmd_ofsStartFileTransf), TO(six, cmd_ofsEndFileTransf),
        TO(six, cmd_ofsWriteFile, name, 0, 3000, 1, bytes), TO(six, cmd_confWriteFile, "C001", 1, 3000, 1, bytes),
        TO(six, cmd_ofsGetMemoryVolume, &word, &other_word), TO(six, cmd_ofsStartReedFile, name, &word, &other_word),
        TO(six, cmd_confStartReedFile, name, &word, &other_word), TO(six, cmd_ofsReedFileBlock, name, bytes),
        TO(six, cmd_confReedFileBlock, name, bytes), DOES(six, cmd_ofsReedDirBlock, list(port, 1)),
        DOES(six, qm_list_files, list(port, 2)), DOES(six, cmd_ofs_freeDirBlock, cmd_ofs_freeDirBlock(listings)),
        AT(six, cmd_getFileAttr, listings, 0, &attribute),
        TO(six, cmd_ofsGetTransStatus, bytes, name, &word, &other_word), TO(six, cmd_sendConfigFile_G6, &config6),
        TO(six, cmd_ofsDeleteFormatFile, 1, name), TO(six, cmd_confDeleteFormatFile, 1, name),
        TO(five, cmd_sendConfigFile, &config),

        AT(six, cmd_uart_searchController, &ping, kSerial), AT(six, cmd_uart_search_Net_6G, &found, kSerial, 1),
        AT(six, cmd_uart_search_Net_6G_Web, &found_web, kSerial, 1), SERIAL(cmd_uart_programLock, 0, 1, name, 0),
        SERIAL(cmd_uart_programLock_6G, 0, 1, name, 0), SERIAL(cmd_uart_ofsFormat),
        SERIAL(cmd_uart_ofsStartFileTransf), SERIAL(cmd_uart_ofsEndFileTransf),
        SERIAL(cmd_uart_ofsDeleteFormatFile, 1, name), SERIAL(cmd_uart_confDeleteFormatFile, 1, name),
        SERIAL(cmd_uart_ofsGetMemoryVolume, &word, &word), SERIAL(cmd_uart_ofsWriteFile, name, 0, 1, 1, bytes),
        SERIAL(cmd_uart_confWriteFile, name, 0, 1, 1, bytes), SERIAL(cmd_uart_ofsStartReedFile, name, &word, &word),
        SERIAL(cmd_uart_confStartReedFile, name, &word, &word), SERIAL(cmd_uart_ofsReedFileBlock, name, bytes),
        SERIAL(cmd_uart_confReedFileBlock, name, bytes), SERIAL(cmd_uart_ofsReedDirBlock, listings),
        SERIAL(cmd_uart_ofsFreeDirBlock, listings), SERIAL(cmd_uart_ofsGetTransStatus, bytes, name, &word, &word),
        SERIAL(cmd_uart_sendConfigFile, &config),

        AT(six, program_setScreenParams_G56, kDual, kMode4, DOUBLE_COLOR_PIXTYPE_1),
        TO(six, dynamicArea_AddAreaTxt_6G, kDual, 1, 0, 0, 64, 16, kFont, 12, kText),
        TO(six, dynamicArea_AddAreaTxtDetails_6G, kDual, 1, &shown6, &page6, kFont, kText),
        TO(six, dynamicArea_AddAreaPic_6G, kDual, 1, 0, 0, 8, 8, &page6, kPng),
        TO(six, dynamicArea_AddAreaTxtDetails_WithProgram_6G, kDual, 1, &shown6, &page6, kFont, kText, 2, programs),
        TO(six, dynamicArea_AddAreaPic_WithProgram_6G, kDual, 1, 0, 0, 8, 8, &page6, kPng, 2, programs),
        TO(six, dynamicAreaS_AddTxtDetails_6G, kDual, 1, &text_params),
        TO(six, dynamicAreaS_AddTxtDetails_WithProgram_6G, kDual, 1, &text_params, 2, programs),
        TO(six, dynamicAreaS_AddAreaPic_6G, kDual, 1, &picture_params),
        TO(six, dynamicAreaS_AddAreaPic_WithProgram_6G, kDual, 1, &picture_params, 2, programs),
        TO(five, dynamicArea_AddAreaWithTxt_5G, kDual, 3, 0, 5, 0, 2, programs, 1, 0, 0, 64, 16, area_border, 4, 0,
           9, 300, 1, font5, kFont, kText),
        TO(five, dynamicArea_AddAreaWithPic_5G, kDual, 3, 0, 5, 1, 0, nullptr, 1, 0, 0, 64, 16, area_border, 1, 0,
           9, 300, 1, kPng),
        TO(five, dynamicArea_AddAreaInfos_5G, kDual, 3, 0, 5, 1, 0, nullptr, 1, 0, 0, 64, 16, area_border, 2, infos),
        TO(six, dynamicArea_DelArea_6G, 1), TO(six, dynamicArea_DelAreas_6G, 2, ids),
        TO(five, dynamicArea_DelArea_5G, 1), TO(five, dynamicArea_DelAreaS_5G, 2, ids),
        TO(six, dynamicArea_InsertSoundIndepend, spoken, 0, 0),
        TO(six, dynamicArea_UpdateSoundIndepend, &spoken, 1, 0),
        AT(six, dynamicArea_addDynamicArea, 1, nullptr), AT(six, dynamicArea_deleteDynamicArea, 1),
        AT(six, dynamicArea_addTxt, 1), AT(six, dynamicArea_fontPath_addTxt, 1), AT(six, dynamicArea_changeTxt, 1),
        AT(six, dynamicArea_fontPath_changeTxt, 1), AT(six, dynamicArea_addPic, 1), AT(six, dynamicArea_changePic, 1),
        AT(six, dynamicArea_addFrame, 1), AT(six, dynamicArea_changeFrame, 1), AT(six, dynamicArea_removeFrame, 1),
        AT(six, dynamicArea_integrateDAreaFile), AT(six, qm_assume_controller_type, 0),
        AT(six, qm_measure_text, kText, &style, 64, 16, &extent), DOES(six, qm_last_error, qm_last_error() == nullptr),
        DOES(six, qm_set_message_handler, handler()), AT(six, qm_controller_type, kMode4, &controller_type),
        DOES(six, qm_version, qm_version() == nullptr),

        AT(program_five, program_addProgram, &other_header5), AT(program_five, program_changeProgramParams, &other_header5),
        AT(program_five, program_addPlayPeriodGrp, &periods), AT(program_five, program_addFrame, &border5, kBorder),
        BEHIND(program_five, border_of_five, program_changeFrame, &other_border5, kPng),
        BEHIND(program_five, border_of_five, program_removeFrame), AT(program_five, program_AddArea, added, &area5),
        AT(program_five, program_deleteArea, texts), AT(program_five, program_MoveArea, texts, 0, 0, 48, 16),
        AT(program_five, program_AddArea, texts, &area5),
        {"program_IntegrateProgramFile", Stage::program_five, [](Ouint16) { return integrate5(); }, dial5}, AT(program_five, program_freeBuffer, &no_program5),
        DOES(five, program_pictureArea, program_pictureArea(1, kHost, port)),
        AT(program_five, program_picturesAreaAddTxt, texts, kText, kFont, &page5),
        AT(program_five, program_fontPath_picturesAreaAddTxt, texts, kText, kFontFile, &page5),
        AT(program_five, program_picturesAreaChangeTxt, texts, kText, &page5),
        AT(program_five, program_fontPath_picturesAreaChangeTxt, texts, kText, &page5),
        AT(program_five, program_pictureAreaAddPic, texts, 8, &page5, kPng),
        AT(program_five, program_picturesAreaAddFrame, texts, &area_border, kBorder),
        BEHIND(program_five, border_around_area, program_pictureAreaRemoveFrame, texts),
        AT(program_five, program_pictureAreaGetOnePage, texts, 0, &page_data),
        AT(program_five, program_timeAreaAddContent, digital, &time_data),
        AT(program_five, program_fontPath_timeAreaAddContent, digital, &time_data),
        AT(program_five, program_timeAreaChangeContent, digital, &time_data),
        AT(program_five, program_timeAreaAddAnalogClock, analog, &hands, eSQUARE, &colours),
        AT(program_five, program_timeAreaChangeAnalogClock, analog, &hands, eSQUARE, &colours),
        AT(program_five, program_timeAreaChangeDialPic, analog, kPng),
        BEHIND(program_five, dial5, program_timeAreaRemoveDialPic, analog),
        AT(program_five, program_deleteProgram),

        AT(program_six, program_addProgram_G6, &other_header6),
        AT(program_six, program_changeProgramParams_G6, &other_header6),
        AT(program_six, program_addPlayPeriodGrp_G6, &periods), AT(program_six, program_addFrame_G6, &border6, kBorder),
        BEHIND(program_six, border_of_six, program_changeFrame_G6, &other_border6, kPng),
        BEHIND(program_six, border_of_six, program_removeFrame_G6), AT(program_six, program_addArea_G6, added, &area6),
        AT(program_six, program_deleteArea_G6, texts), AT(program_six, program_MoveArea_G6, texts, 0, 0, 48, 16),
        AT(program_six, program_addArea_G6, texts, &area6), AT(program_six, program_pictureAreaGetOnePage, texts, 1, &page_data),
        BEHIND(program_six, dial6, program_pictureAreaGetOnePage, analog, 0, &page_data),
        {"program_IntegrateProgramFile_G6", Stage::program_six, [](Ouint16) { return integrate6(); }, dial6},
        AT(program_six, program_freeBuffer_G6, &no_program6),
        AT(program_six, program_picturesAreaAddTxt_G6, texts, kText, kFont, &page6),
        AT(program_six, program_fontPath_picturesAreaAddTxt_G6, texts, kText, kFontFile, &page6),
        AT(program_six, program_picturesAreaChangeTxt_G6, texts, kText, &page6),
        AT(program_six, program_fontPath_picturesAreaChangeTxt_G6, texts, kText, &page6),
        AT(program_six, program_pictureAreaAddPic_G6, texts, 8, &page6, kPng),
        AT(program_six, program_pictureAreaChangePic_G6, texts, 7, &page6, kBorder),
        AT(program_six, program_pictureAreaGetOnePage, analog, 0, &page_data),
        AT(program_six, program_pictureAreaEnableSound_G6, texts, voice, kText),
        BEHIND(program_six, sound, program_pictureAreaChangeSoundSettings_G6, texts, other_voice,
               "another text that is longer than a string holds by itself"),
        BEHIND(program_six, sound, program_pictureAreaDisableSound_G6, texts),
        AT(program_six, program_backGroundColor_G6, background, &page6, 1),
        AT(program_six, program_backGroundPic_G6, background, 2, &page6, kPng),
        AT(program_six, program_timeAreaAddContent_G6, digital, &time_data),
        AT(program_six, program_fontPath_timeAreaAddContent_G6, digital, &time_data),
        AT(program_six, program_timeAreaChangeContent_G6, digital, &time_data),
        AT(program_six, program_timeAreaSetBattleTime_G6, digital, &battle_start),
        BEHIND(program_six, battle_time, program_timeAreaCancleBattleTime_G6, digital),
        AT(program_six, program_timeAreaAddAnalogClock_G6, analog, &hands, eSQUARE, &colours),
        AT(program_six, program_timeAreaChangeAnalogClock_G6, analog, &hands, eSQUARE, &colours),
        AT(program_six, program_timeAreaChangeDialPic_G6, analog, kPng),
        AT(program_six, program_timeAreaChangeDialPicAdd_G56, analog, png_in_memory().data(),
           static_cast<Ouint32>(png_in_memory().size())),
        BEHIND(program_six, dial6, program_timeAreaRemoveDialPic_G6, analog),
        AT(program_six, program_deleteProgram_G6),

        AT(broadcast, cmd_searchController, &ping), AT(broadcast, cmd_udpPing, &ping),
        AT(broadcast, cmd_udpNetworkSearch, &heartbeat), AT(broadcast, cmd_udpNetworkSearch_6G, &found),
        AT(broadcast, cmd_udpNetworkSearch_6G_Web, &found_web),
        AT(broadcast, cmd_udpSetIP, 1, "10.77.1.2", "255.255.255.0", "10.77.1.1", 5005, 0, "10.77.1.1", 5005, "12345678",
           0, "network12345"),
        AT(broadcast, cmd_udpSetMac, "0-26-43-60-77-94"), AT(broadcast, cmd_AT_setWifiSsidPwd, "net", "password"),
        AT(broadcast, cmd_AT_getWifiSsidPwd, reinterpret_cast<char*>(bytes), reinterpret_cast<char*>(bytes) + 1024),
        // clang-format on
    };
    return calls;
}

void write_pictures() {
    for (const auto& [path, width, height] : {std::tuple{kPng, 8, 8}, {kBorder, 4, 2}}) {
        sim::Image image(width, height);
        for (int i = 0; i < width * height; i += 3) image.set(i % width, i / width, {255, 0, 0});
        write_png(image, path);
    }
}

void make_program(Stage stage) {
    const bool six = stage == Stage::program_six;
    const auto area = [&](Area id, Ouint8 kind, Ouint16 x) {
        const HVareaHeader five = area_header(kind, x, 0, 32, 32);
        const HVareaHeader_G6 of_six = area_header_g6(kind, x, 0, 32, 32);
        return six ? program_addArea_G6(id, &of_six) : program_AddArea(id, &five);
    };
    program_deleteProgram();
    program_setScreenParams_G56(kDual, six ? kMode4 : kMode0, DOUBLE_COLOR_PIXTYPE_1);
    EXPECT_EQ(six ? program_addProgram_G6(&header6) : program_addProgram(&header5), 0);
    EXPECT_EQ(area(texts, ePicturesArea, 0), 0);
    EXPECT_EQ(area(digital, eTimeClockArea, 32), 0);
    EXPECT_EQ(area(analog, eTimeClockArea, 64), 0);
    if (six) {
        EXPECT_EQ(area(background, eGlobalBackGroundArea, 0), 0);
    }
    EXPECT_EQ(six ? program_pictureAreaAddPic_G6(texts, 7, &page6, kPng)
                  : program_pictureAreaAddPic(texts, 7, &page5, kPng),
              0);
    EXPECT_EQ(six ? program_picturesAreaAddTxt_G6(texts, "Hi", kFont, &page6)
                  : program_picturesAreaAddTxt(texts, "Hi", kFont, &page5),
              0);
    EXPECT_EQ(six ? program_timeAreaAddContent_G6(digital, &time_data)
                  : program_timeAreaAddContent(digital, &time_data),
              0);
    EXPECT_EQ(six ? program_timeAreaAddAnalogClock_G6(analog, &hands, eLINE, &colours)
                  : program_timeAreaAddAnalogClock(analog, &hands, eLINE, &colours),
              0);
    if (six) {
        EXPECT_EQ(program_backGroundPic_G6(background, 1, &page6, kPng), 0);
    }
}

} // namespace qm::test
