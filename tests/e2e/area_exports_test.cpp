// The remaining calls of dynamic areas: several areas, programs, generation 5, deletion, speech.
#include "drawing.h"
#include "hex.h"
#include "open_descriptors.h"
#include "outcome.h"
#include "scripted_peer.h"
#include "simulator/Simulator.h"
#include "wire.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <malloc.h>
#include <thread>

namespace qm::test {
namespace {

constexpr char kHost[] = "127.0.0.1";
constexpr char kFont[] = "DejaVu Sans";
constexpr E_ScreenColor_G56 kDual = SCREEN_COLOR_DOUBLE;

const Ouint8* bytes_of(const char* text) { return reinterpret_cast<const Ouint8*>(text); }

DynamicAreaParams params(Ouint8 id, Ouint16 x, const char* content, bool picture = false) {
    DynamicAreaParams p{};
    p.uAreaId = id;
    p.oAreaHeader_G6 = rectangle(x, 0, 32, 16);
    p.stPageHeader = still_text(12, eRed);
    p.fontName = picture ? nullptr : bytes_of(kFont);
    p.strAreaTxtContent = bytes_of(content);
    return p;
}

HVSound_6G speech(const std::string& text) {
    HVSound_6G s{};
    s.SoundFlag = 1;
    s.SoundVolum = 5;
    s.SoundDataLen = static_cast<Ouint32>(text.size());
    s.SoundData = bytes_of(text.data());
    return s;
}

HVfontData font_g5() {
    HVfontData font{};
    font.arrMode = SINGLELINE;
    font.fontSize = 12;
    font.color = eRed;
    return font;
}

// A text of generation 5 at the top left; programs: null for all.
int send_g5(Ouint32 port, const char* text, Ouint8 mode, Ouint16 width, Ouint16 height,
            E_ScreenColor_G56 color = kDual, Ouint16 programs = 0, Ouint16* serials = nullptr) {
    return dynamicArea_AddAreaWithTxt_5G(kHost, port, color, 3, 0, 5, programs == 0, programs, serials, 1, 0,
                                         0, width, height, {1, 2, 3, 4, 5, 6}, mode, 0, 9, 300, 1, font_g5(),
                                         kFont, text);
}

// A folder with a red picture of 8 x 8 pixels.
class Picture {
  public:
    Picture() {
        sim::Image image(8, 8);
        for (int i = 0; i < 64; ++i) image.set(i % 8, i / 8, {255, 0, 0});
        write_png(image, path());
    }
    ~Picture() { std::filesystem::remove(path()); }
    Picture(const Picture&) = delete;
    Picture& operator=(const Picture&) = delete;
    [[nodiscard]] std::string path() const {
        return (std::filesystem::temp_directory_path() /
                std::string("qm-area-").append(std::to_string(::getpid())).append(".png"))
            .string();
    }
};

TEST(AreaExports, RefuseBadArgumentsBeforeTheyConnect) {
    const sim::Simulator sim;
    const Ouint16 port = sim.port();
    auto area = rectangle(0, 0, 64, 16);
    auto page = still_text(12, 1);
    DynamicAreaParams good = params(1, 0, "x"), fontless = good, contentless = good, flat = good, tall = good;
    fontless.fontName = nullptr;
    contentless.strAreaTxtContent = nullptr;
    flat.oAreaHeader_G6.AreaHeight = 0;
    tall.oAreaHeader_G6.AreaHeight = 32768;
    Ouint16 programs[513] = {};
    Oint8 ids[] = {1, 2};
    const std::string none, abc = "abc", long_text(65516, 'x');
    const HVSoundDepend_6G silent{1, speech(none)}, endless{1, speech(long_text)};
    auto lengthy = area, voiceless = area, hollow = rectangle(0, 0, 0, 16);
    voiceless.stSoundData.SoundFlag = 1;
    voiceless.stSoundData.SoundDataLen = 5; // and no text
    lengthy.stSoundData = endless.stSound;
    HVSoundDepend_6G spoken{1, speech(abc)}, missing = spoken, several[] = {spoken, endless};
    missing.stSound.SoundData = nullptr;
    DynamicAreaBaseInfo_5G info{}, *infos[] = {&info, nullptr};
    const Ouint32 beyond = 65536U + port; // of which 16 bits are the port
    const auto add_infos = [&](Ouint8 count, DynamicAreaBaseInfo_5G** list) {
        return dynamicArea_AddAreaInfos_5G(kHost, port, kDual, 1, 0, 0, 1, 0, nullptr, 1, 0, 0, 8, 8, {},
                                           count, list);
    };
    const auto add_text = [&](const char* ip, Ouint32 at, const char* font, const char* text, Ouint16 count) {
        return dynamicArea_AddAreaTxtDetails_WithProgram_6G(ip, at, kDual, 0, &area, &page, font, text, count,
                                                            programs);
    };
    const Outcome results[] = {
        add_text(nullptr, port, kFont, "x", 0),
        add_text(kHost, 1023, kFont, "x", 0),
        add_text(kHost, port, nullptr, "x", 0),
        add_text(kHost, port, kFont, nullptr, 0),
        add_text(kHost, port, kFont, "x", 513),
        dynamicArea_AddAreaTxt_6G(nullptr, port, kDual, 0, 0, 0, 64, 16, kFont, 12, "x"),
        dynamicArea_AddAreaTxt_6G(kHost, 1023, kDual, 0, 0, 0, 64, 16, kFont, 12, "x"),
        dynamicArea_AddAreaTxt_6G(kHost, 65536U + port, kDual, 0, 0, 0, 64, 16, kFont, 12, "x"),
        dynamicArea_AddAreaTxt_6G(kHost, port, kDual, 0, 0, 0, 64, 16, nullptr, 12, "x"),
        dynamicArea_AddAreaTxt_6G(kHost, port, kDual, 0, 0, 0, 64, 16, kFont, 12, nullptr),
        dynamicArea_AddAreaTxt_6G(kHost, port, kDual, 0, 0, 0, 64, 0, kFont, 12, "x"),
        dynamicArea_AddAreaTxtDetails_6G(kHost, port, kDual, 0, nullptr, &page, kFont, "x"),
        dynamicArea_AddAreaTxtDetails_6G(kHost, port, kDual, 0, &area, nullptr, kFont, "x"),
        dynamicArea_AddAreaTxtDetails_6G(kHost, port, kDual, 0, &hollow, &page, kFont, "x"),
        dynamicArea_AddAreaTxtDetails_6G(kHost, port, kDual, 0, &voiceless, &page, kFont, "x"),
        dynamicArea_AddAreaPic_6G(kHost, port, kDual, 0, 0, 0, 64, 16, nullptr, "x"),
        dynamicArea_AddAreaPic_6G(kHost, port, kDual, 0, 0, 0, 64, 16, &page, nullptr),
        dynamicArea_AddAreaPic_WithProgram_6G(kHost, port, kDual, 0, 0, 0, 8, 8, nullptr, "x", 0, nullptr),
        dynamicArea_AddAreaPic_WithProgram_6G(kHost, port, kDual, 0, 0, 0, 8, 8, &page, nullptr, 0, nullptr),
        dynamicArea_AddAreaPic_WithProgram_6G(kHost, port, kDual, 0, 0, 0, 8, 8, &page, "x", 513, programs),
        dynamicAreaS_AddTxtDetails_6G(kHost, 1023, kDual, 1, &good),
        dynamicAreaS_AddTxtDetails_6G(kHost, port, kDual, 0, &good),
        dynamicAreaS_AddTxtDetails_6G(kHost, port, kDual, 1, nullptr),
        dynamicAreaS_AddTxtDetails_6G(kHost, port, kDual, 1, &fontless),
        dynamicAreaS_AddTxtDetails_6G(kHost, port, kDual, 1, &contentless),
        dynamicAreaS_AddTxtDetails_6G(kHost, port, kDual, 1, &flat),
        dynamicAreaS_AddTxtDetails_6G(kHost, port, kDual, 1, &tall),
        dynamicAreaS_AddTxtDetails_6G(kHost, beyond, kDual, 1, &good),
        dynamicAreaS_AddAreaPic_6G(kHost, port, kDual, 1, &flat),
        dynamicAreaS_AddAreaPic_6G(kHost, port, kDual, 1, &tall),
        dynamicAreaS_AddAreaPic_6G(kHost, beyond, kDual, 1, &good),
        dynamicArea_AddAreaPic_6G(kHost, port, kDual, 0, 0, 0, 0, 8, &page, "x"),
        dynamicArea_AddAreaPic_6G(kHost, port, kDual, 0, 0, 0, 32768, 8, &page, "x"),
        dynamicArea_AddAreaPic_6G(kHost, beyond, kDual, 0, 0, 0, 8, 8, &page, "x"),
        dynamicArea_AddAreaTxtDetails_6G(kHost, port, kDual, 0, &lengthy, &page, kFont, "x"),
        dynamicAreaS_AddAreaPic_6G(kHost, port, kDual, 1, &contentless),
        dynamicAreaS_AddTxtDetails_WithProgram_6G(kHost, port, kDual, 1, &good, 1, nullptr),
        dynamicAreaS_AddAreaPic_WithProgram_6G(kHost, port, kDual, 1, &good, 1, nullptr),
        dynamicArea_DelArea_6G(nullptr, port, 1),
        dynamicArea_DelArea_6G(kHost, 1023, 1),
        dynamicArea_DelArea_6G(kHost, port, 65),
        dynamicArea_DelArea_6G(kHost, beyond, 1),
        dynamicArea_DelArea_5G(kHost, beyond, 1),
        dynamicArea_DelArea_5G(kHost, port, 127),
        dynamicArea_DelAreas_6G(kHost, 1023, 2, ids),
        dynamicArea_DelAreas_6G(kHost, port, 2, nullptr),
        dynamicArea_DelAreas_6G(kHost, beyond, 2, ids),
        dynamicArea_DelAreaS_5G(kHost, beyond, 2, ids),
        dynamicArea_DelAreaS_5G(kHost, port, 2, nullptr),
        dynamicArea_InsertSoundIndepend(nullptr, port, spoken, 0, 0),
        dynamicArea_InsertSoundIndepend(kHost, 1023, spoken, 0, 0),
        dynamicArea_InsertSoundIndepend(kHost, beyond, spoken, 0, 0),
        dynamicArea_InsertSoundIndepend(kHost, port, silent, 0, 0),
        dynamicArea_InsertSoundIndepend(kHost, port, missing, 0, 0),
        dynamicArea_InsertSoundIndepend(kHost, port, endless, 0, 0),
        dynamicArea_UpdateSoundIndepend(kHost, 1023, &spoken, 1, 0),
        dynamicArea_UpdateSoundIndepend(kHost, beyond, &spoken, 1, 0),
        dynamicArea_UpdateSoundIndepend(kHost, port, nullptr, 1, 0),
        dynamicArea_UpdateSoundIndepend(kHost, port, &spoken, 0, 0),
        dynamicArea_UpdateSoundIndepend(kHost, port, several, 2, 0),
        add_infos(0, infos),
        add_infos(1, nullptr),
        add_infos(2, infos),
        send_g5(port, nullptr, 1, 8, 8),
        send_g5(port, "x", 1, 0, 8),
        send_g5(port, "x", 1, 8, 32768),
        send_g5(beyond, "x", 1, 8, 8),
    };
    for (const Outcome& result : results) EXPECT_TRUE(refuses_an_argument(result)) << &result - results;
    EXPECT_EQ(sim.connections(), 0U);
}

TEST(AreaExports, RelateAnAreaToPrograms) {
    const sim::Simulator sim;
    auto area = rectangle(0, 0, 32, 16);
    auto page = still_text(12, 1);
    Ouint16 programs[512] = {7, 9};
    const std::string spoken = "abc";
    area.stSoundData = speech(spoken);
    const auto send = [&](Ouint16 count, Ouint16* list) {
        return dynamicArea_AddAreaTxtDetails_WithProgram_6G(kHost, sim.port(), kDual, 1, &area, &page, kFont,
                                                            "x", count, list);
    };
    ASSERT_EQ(send(2, programs), 0);
    EXPECT_THAT(Bytes(sim.payloads().back()).subspan(11, 12), is_hex("01 00 05 00 00 02 00 07 00 09 00 00"));
    EXPECT_EQ(sim.dynamic_areas()[0].sound->text, ByteBuffer(spoken.begin(), spoken.end()));
    ASSERT_EQ(send(0, nullptr), 0);
    EXPECT_THAT(Bytes(sim.payloads().back()).subspan(11, 8), is_hex("01 00 05 00 01 00 00 00"))
        << "all programs, but not at once";
    ASSERT_EQ(send(512, programs), 0);
    EXPECT_EQ(sim.dynamic_areas()[0].programs.size(), 512U);
    const std::size_t before = sim.payloads().size();
    EXPECT_EQ(send(1, nullptr), -1);
    EXPECT_EQ(sim.payloads().size(), before);

    const Picture picture;
    ASSERT_EQ(dynamicArea_AddAreaPic_WithProgram_6G(kHost, sim.port(), kDual, 2, 0, 0, 8, 8, &page,
                                                    picture.path().c_str(), 1, programs),
              0);
    EXPECT_EQ(sim.dynamic_areas().back().programs, std::vector<Ouint16>{7});
    EXPECT_EQ(lit_pixels(sim.screen()), 0) << "no program is played";
}

TEST(AreaExports, SendSeveralAreasInOneCommand) {
    const sim::Simulator sim;
    const Picture picture;
    DynamicAreaParams texts[] = {params(1, 0, "A"), params(2, 32, "B")};
    const std::string spoken = "hello";
    texts[1].oAreaHeader_G6.stSoundData = speech(spoken);
    ASSERT_EQ(dynamicAreaS_AddTxtDetails_6G(kHost, sim.port(), kDual, 2, texts), 0);
    auto areas = sim.dynamic_areas();
    ASSERT_EQ(areas.size(), 2U);
    EXPECT_FALSE(areas[0].sound);
    EXPECT_EQ(areas[1].sound->volume, 5);
    const sim::Image a = text_image(kFont, 16, "A", {255, 0, 0}, 32, 16), screen = sim.screen();
    EXPECT_EQ(differing_pixels(screen, on_screen(a, Leds::dual, 0, 0, 128, 32)),
              lit_pixels(text_image(kFont, 16, "B", {255, 0, 0}, 32, 16)))
        << "A at the left, and next to it B";

    Ouint16 programs[] = {1, 2, 3};
    ASSERT_EQ(dynamicAreaS_AddTxtDetails_WithProgram_6G(kHost, sim.port(), kDual, 2, texts, 3, programs), 0);
    areas = sim.dynamic_areas();
    for (const auto& area : areas) EXPECT_EQ(area.programs, (std::vector<Ouint16>{1, 2, 3}));
    EXPECT_FALSE(areas[1].sound);

    const std::string path = picture.path();
    DynamicAreaParams pictures[] = {params(1, 0, path.c_str(), true), params(2, 32, path.c_str(), true)};
    ASSERT_EQ(dynamicAreaS_AddAreaPic_6G(kHost, sim.port(), kDual, 2, pictures), 0);
    EXPECT_EQ(lit_pixels(sim.screen()), 2 * 64);
    ASSERT_EQ(dynamicAreaS_AddAreaPic_WithProgram_6G(kHost, sim.port(), kDual, 2, pictures, 0, nullptr), 0);
    EXPECT_TRUE(sim.dynamic_areas()[0].with_all_programs);
}

TEST(AreaExports, SendNothingWhenOneOfSeveralAreasCannotBeBuilt) {
    const sim::Simulator sim;
    DynamicAreaParams twins[] = {params(4, 0, "A"), params(4, 32, "B")},
                      pictures[] = {params(1, 0, "/no/such/picture.png", true)};
    const std::string printed =
        printed_by([&] { EXPECT_EQ(dynamicAreaS_AddTxtDetails_6G(kHost, sim.port(), kDual, 2, twins), -1); });
    EXPECT_NE(printed.find(" \xC7\xF8\xD3\xF2ID\xA3\xBA"
                           "4 \xD2\xD1\xB4\xE6\xD4\xDA\xA3\xA1\n"),
              printed.npos);
    EXPECT_EQ(dynamicAreaS_AddAreaPic_6G(kHost, sim.port(), kDual, 1, pictures), -1);
    EXPECT_TRUE(sim.payloads().empty());
}

TEST(AreaExports, CarryTextsAndPicturesToGeneration5) {
    const sim::Simulator sim({.type = 0x0051});
    const Picture picture;
    ASSERT_EQ(send_g5(sim.port(), "Hi", 1, 64, 16), 0);
    auto area = sim.dynamic_areas().at(0);
    EXPECT_EQ(area.id, 3);
    EXPECT_EQ(area.timeout, 5);
    EXPECT_EQ(area.pages.at(0).stay_time, 300);
    EXPECT_EQ(sim.payloads().back()[30], 0) << "the border is not sent";

    const std::string path = picture.path();
    DynamicAreaBaseInfo_5G text{
        1, 4, 0, 9, 0, 1, font_g5(), bytes_of(kFont), bytes_of("Hello world, a long text"), nullptr},
        drawn{2, 1, 0, 9, 100, 2, {}, nullptr, nullptr, bytes_of(path.c_str())}, neither{};
    DynamicAreaBaseInfo_5G* infos[] = {&drawn, &text, &neither};
    ASSERT_EQ(dynamicArea_AddAreaInfos_5G(kHost, sim.port(), kDual, 3, 0, 0, 1, 0, nullptr, 1, 0, 0, 64, 16,
                                          {}, 3, infos),
              0);
    area = sim.dynamic_areas().at(0);
    ASSERT_GT(area.pages.size(), 3U);
    EXPECT_EQ(area.pages[0].repeat_time, 2);
    EXPECT_EQ(area.pages[1].display_mode, 4);
    EXPECT_EQ(area.pages[1].valid_len, 64);
    EXPECT_LT(area.pages.back().valid_len, 64);
}

TEST(AreaExports, RefuseWhatGeneration5CannotCarry) {
    const sim::Simulator sim({.type = 0x0051, .width = 512, .height = 256});
    Ouint16 serial = 1;
    EXPECT_EQ(send_g5(sim.port(), "one page of 32,768 bytes", 1, 512, 256), 0);
    EXPECT_GT(sim.payloads().back().size(), 32768U);
    const std::string two(100, 'W');
    EXPECT_EQ(send_g5(sim.port(), two.c_str(), 1, 512, 256), -1) << "two pages";
    EXPECT_EQ(send_g5(sim.port(), "x", 1, 64, 16, kDual, 1, nullptr), -1) << "its program is missing";
    EXPECT_EQ(sim.payloads().size(), 1U);
    EXPECT_EQ(send_g5(sim.port(), "x", 1, 64, 16, kDual, 1, &serial), 0);
    EXPECT_EQ(sim.dynamic_areas()[0].programs, std::vector<Ouint16>{1});
}

TEST(AreaExports, DeleteOneSeveralOrAllAreas) {
    for (const Ouint16 type : {Ouint16{0x0051}, Ouint16{0x0262}}) {
        const sim::Simulator sim({.type = type});
        const bool five = type == 0x0051;
        Oint8 ids[] = {1, 2};
        const auto one = [&](int id) {
            return five ? dynamicArea_DelArea_5G(kHost, sim.port(), static_cast<Ouint8>(id))
                        : dynamicArea_DelArea_6G(kHost, sim.port(), static_cast<Oint8>(id));
        };
        const auto several = [&](Oint8 count) {
            return five ? dynamicArea_DelAreaS_5G(kHost, sim.port(), count, ids)
                        : dynamicArea_DelAreas_6G(kHost, sim.port(), count, ids);
        };
        const auto last = [&] { return sim.payloads().back(); };
        EXPECT_EQ(one(3), 0);
        EXPECT_THAT(last(), is_hex("01 A7 01 00 00 01 03"));
        EXPECT_EQ(one(64), 0);
        EXPECT_EQ(one(-2), 0);
        EXPECT_THAT(last(), is_hex("01 A7 01 00 00 01 FE"));
        EXPECT_EQ(one(-1), 0);
        EXPECT_THAT(last(), is_hex("01 A7 01 00 00 FF"));
        EXPECT_EQ(several(2), 0);
        EXPECT_THAT(last(), is_hex("01 A7 01 00 00 02 01 02"));
        EXPECT_EQ(several(-2), static_cast<int>(sim::ErrorValue::bad_value));
        EXPECT_THAT(last(), is_hex("01 A7 01 00 00 FE"));
        EXPECT_EQ(several(0), 0);
        EXPECT_THAT(last(), is_hex("01 A7 01 00 00 00"));
        EXPECT_EQ(several(-1), 0);
        EXPECT_THAT(last(), is_hex("01 A7 01 00 00 FF"));
    }
}

TEST(AreaExports, SayWhenTheControllerIsNotThere) {
    sim::Simulator sim;
    sim.set_fault(sim::Fault{.kind = sim::FaultKind::close});
    EXPECT_EQ(printed_by([&] {
                  EXPECT_EQ(dynamicArea_DelArea_6G(kHost, sim.port(), 1), -1);
              }).find("ret failed!!!!!!!!! =====cmd_tcpPing===== -1 \n") != std::string::npos,
              true);
    EXPECT_NE(printed_by([&] {
                  EXPECT_EQ(send_g5(sim.port(), "x", 1, 8, 8), -1);
              }).find("cmd_tcpPing run error...\n"),
              std::string::npos);
}

// The type is not judged: the ping has succeeded.
TEST(AreaExports, UseTheTypeThatThePingGives) {
    const ScriptedPeer controller(
        ScriptedPeer::answering({AnswerFrame{}.bytes(), AnswerFrame{.payload = ByteBuffer(52)}.bytes()}));
    const std::string expected = "retdata.ControllerType == 0x0 \nret =====cmd_tcpPing===== 0 \n";
    const std::string changed = "oClient.m_DeviceType != retdata.ControllerType \n";
    const std::function<void()> calls[] = {
        [&] { send_g5(controller.port(), "x", 1, 8, 8); },
        [&] { dynamicArea_DelArea_5G(kHost, controller.port(), 1); },
    };
    for (const auto& call : calls) {
        const std::string printed = printed_by(call);
        EXPECT_EQ(printed.substr(0, expected.size()), expected);
        EXPECT_NE(printed.find(changed), std::string::npos);
    }
}

TEST(IndependentSound, IsInsertedAndUpdated) {
    const sim::Simulator sim;
    const std::string ten = "0123456789";
    ASSERT_EQ(dynamicArea_InsertSoundIndepend(kHost, sim.port(), {9, speech(ten)}, 3, 4), 0);
    EXPECT_THAT(sim.payloads().back(), is_hex("01 A7 07 00 00 04 03 00 00 00 1E 00 00 00 "
                                              "00 05 00 00 00*8 00 00 00 00 0A 00 00 00 "
                                              "30 31 32 33 34 35 36 37 38 39"));
    EXPECT_EQ(sim.connections(), 1U) << "it is not pinged for";
    std::vector<HVSoundDepend_6G> many;
    for (int i = 0; i < 300; ++i) many.push_back({static_cast<Ouint8>(i), speech(ten)});
    ASSERT_EQ(dynamicArea_UpdateSoundIndepend(kHost, sim.port(), many.data(), 300, 1), 0);
    EXPECT_EQ(sim.payloads().back().size(), 7U + 300 * 35);
    EXPECT_EQ(sim.payloads().back()[6], 44);
    const auto voices = sim.state().voices;
    ASSERT_EQ(voices.size(), 257U) << "256 entries, and the text that was inserted";
    EXPECT_EQ(voices[255].id, 255);
    EXPECT_EQ(voices[256].flag, 3);
    EXPECT_EQ(voices[256].sound.text, ByteBuffer(ten.begin(), ten.end()));
}

// Payloads on both sides of the limit between the two exchanges, and the longest text of one sound.
TEST(AreaExports, DeliverPayloadsOfEverySizeUnchanged) {
    sim::Simulator sim;
    auto page = still_text(12, 1);
    for (const std::size_t size : {64U, 32768U, 32769U, 65579U}) {
        std::string text(size - 64, '\0');
        for (std::size_t i = 0; i < text.size(); ++i) text[i] = static_cast<char>(0xA0 + i % 16);
        auto area = rectangle(0, 0, 8, 8);
        area.stSoundData = speech(text);
        const auto send = [&] {
            return dynamicArea_AddAreaTxtDetails_6G(kHost, sim.port(), kDual, 1, &area, &page, kFont, "");
        };
        ASSERT_EQ(send(), 0) << size;
        const auto length = static_cast<Ouint32>(text.size());
        ByteBuffer expected = hex("01 A7 00 00 00 01 00");
        ByteWriter(expected)
            .u32(33 + 20 + length)
            .bytes(hex("01 00 05 00 01 00 00 01 00*4 10 00*4 08 00 08 00 00*4 01 00 05 00*14"))
            .u32(length)
            .text(text.data(), text.size())
            .zeros(7);
        EXPECT_EQ(expected.size(), size);
        EXPECT_TRUE(sim.payloads().back() == expected) << size;
        sim.set_fault(sim::Fault{.kind = sim::FaultKind::nack, .after = 3});
        const std::string printed = printed_by([&] { EXPECT_GT(send(), 0); });
        EXPECT_EQ(printed.ends_with("Unpack failed. nTotalLen ======= 0 \n"), size > 32768) << printed;
        sim.set_fault({});
    }
}

// A kind of controller and how it is updated.
struct Kind {
    Ouint16 type;
    E_ScreenColor_G56 color;
    bool five;
};
constexpr Kind kKinds[] = {{0x0051, SCREEN_COLOR_SINGLE, true},
                           {0x0051, SCREEN_COLOR_DOUBLE, true},
                           {0x0262, SCREEN_COLOR_DOUBLE, false},
                           {0x0063, SCREEN_COLOR_THREE, false},
                           {0x8166, SCREEN_COLOR_FULLCOLOR, false}};

ByteBuffer payload_on(const sim::Simulator& sim, const Kind& kind) {
    const int status = kind.five ? send_g5(sim.port(), "Many callers", 1, 128, 32, kind.color)
                                 : dynamicArea_AddAreaTxt_6G(kHost, sim.port(), kind.color, 3, 0, 0, 128, 32,
                                                             kFont, 12, "Many callers");
    EXPECT_EQ(status, 0);
    return sim.payloads().empty() ? ByteBuffer() : sim.payloads().back();
}

sim::Options options_of(const Kind& kind) {
    return {.type = kind.type, .color = static_cast<sim::ScreenColor>(kind.color)};
}

TEST(AreaExports, ServeSixtyFourThreadsEachExactly) {
    std::vector<ByteBuffer> expected;
    for (const Kind& kind : kKinds) expected.push_back(payload_on(sim::Simulator(options_of(kind)), kind));
    std::vector<std::unique_ptr<sim::Simulator>> sims;
    for (std::size_t i = 0; i < 64; ++i)
        sims.push_back(std::make_unique<sim::Simulator>(options_of(kKinds[i % std::size(kKinds)])));
    std::vector<std::thread> callers;
    std::atomic<int> wrong = 0;
    for (std::size_t i = 0; i < 64; ++i)
        callers.emplace_back([&, i] {
            for (int round = 0; round < 3; ++round)
                if (payload_on(*sims[i], kKinds[i % std::size(kKinds)]) != expected[i % std::size(kKinds)])
                    ++wrong;
        });
    for (std::thread& caller : callers) caller.join();
    EXPECT_EQ(wrong, 0);
}

TEST(AreaExports, KeepNothingOfAThousandUpdates) {
    const sim::Simulator sim;
    const auto update = [&](int count) {
        for (int i = 0; i < count; ++i)
            ASSERT_EQ(dynamicArea_AddAreaTxt_6G(kHost, sim.port(), kDual, 1, 0, 0, 64, 16, kFont, 12,
                                                std::to_string(i).c_str()),
                      0);
    };
    update(50);
    ASSERT_TRUE(sim.wait_idle());
    const std::size_t descriptors = open_descriptors(), memory = ::mallinfo2().uordblks;
    update(1000);
    ASSERT_TRUE(sim.wait_idle());
    EXPECT_EQ(open_descriptors(), descriptors);
    constexpr std::size_t kNoise = 64 * 1024; // of standard output and the font cache, 64 bytes an update
    EXPECT_LT(::mallinfo2().uordblks, memory + kNoise);
}

TEST(AreaExports, KeptForOlderCallersDoNothing) {
    for (const auto call :
         {dynamicArea_deleteDynamicArea, dynamicArea_addTxt, dynamicArea_fontPath_addTxt,
          dynamicArea_changeTxt, dynamicArea_fontPath_changeTxt, dynamicArea_addPic, dynamicArea_changePic,
          dynamicArea_addFrame, dynamicArea_changeFrame, dynamicArea_removeFrame})
        EXPECT_EQ(call(1), 0);
    EXPECT_EQ(dynamicArea_addDynamicArea(1, nullptr), 0);
    EXPECT_EQ(dynamicArea_integrateDAreaFile(), 0);
}

} // namespace
} // namespace qm::test
