// Dynamic areas as an application sends them: arguments, messages, sizes.
#include "drawing.h"
#include "simulator/Simulator.h"

#include <gtest/gtest.h>

namespace qm::test {
namespace {

constexpr char kHost[] = "127.0.0.1";
constexpr char kFont[] = "DejaVu Sans";

int send_text(Ouint16 port, const char* text, HVareaHeader_G6 area, HVpageHeader_G6 page,
              E_ScreenColor_G56 color = SCREEN_COLOR_DOUBLE) {
    return dynamicArea_AddAreaTxtDetails_6G(kHost, port, color, 0, &area, &page, kFont, text);
}

TEST(DynamicArea, PrintsItsMessages) {
    const sim::Simulator sim;
    testing::internal::CaptureStdout();
    EXPECT_EQ(send_text(sim.port(), "", rectangle(0, 0, 64, 16), still_text(12, 1)), 0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "retdata.ControllerType == 0x262 \n"
                                                      "ret =====cmd_tcpPing===== 0 \n"
                                                      "Error:no string has been added.\n"
                                                      "HV_Client init\xBA\xF3\xA3\xAC"
                                                      "Client.m_DeviceType == 0x262 \n");
    ASSERT_EQ(sim.dynamic_areas().size(), 1U);
    EXPECT_TRUE(sim.dynamic_areas()[0].pages.empty()) << "an empty text is an area without pages";
}

TEST(DynamicArea, SendsNothingForAPictureThatCannotBeRead) {
    const sim::Simulator sim;
    auto page = still_text(12, 1);
    EXPECT_EQ(dynamicArea_AddAreaPic_6G(kHost, sim.port(), SCREEN_COLOR_DOUBLE, 0, 0, 0, 64, 16, &page,
                                        "/no/such/picture.png"),
              -1);
    EXPECT_STREQ(qm_last_error(), "Picture /no/such/picture.png: No such file or directory.");
    EXPECT_EQ(sim.connections(), 1U) << "the ping only";
    EXPECT_TRUE(sim.payloads().empty());
}

TEST(DynamicArea, CarriesTheHeadersAndTheSpeech) {
    const sim::Simulator sim;
    auto area = rectangle(8, 4, 64, 16);
    area.AreaType = 2; // not what goes out
    area.stSoundData.SoundFlag = 1;
    area.stSoundData.SoundVolum = 7;
    area.stSoundData.SoundDataLen = 3;
    area.stSoundData.SoundData = reinterpret_cast<const Ouint8*>("abc");
    auto page = still_text(12, 1);
    page.Speed = 9;
    page.StayTime = 300;
    page.ValidLen = 60;
    ASSERT_EQ(dynamicArea_AddAreaTxtDetails_6G(kHost, sim.port(), SCREEN_COLOR_DOUBLE, 200, &area, &page,
                                               kFont, "x"),
              0);
    const auto areas = sim.dynamic_areas();
    ASSERT_EQ(areas.size(), 1U);
    EXPECT_EQ(areas[0].id, 200);
    EXPECT_EQ(sim.payloads().back()[23], 0x10);
    ASSERT_TRUE(areas[0].sound);
    EXPECT_EQ(areas[0].sound->volume, 7);
    EXPECT_EQ(areas[0].sound->text, (ByteBuffer{'a', 'b', 'c'}));
    ASSERT_EQ(areas[0].pages.size(), 1U);
    EXPECT_EQ(areas[0].pages[0].speed, 9);
    EXPECT_EQ(areas[0].pages[0].stay_time, 300);
    EXPECT_EQ(areas[0].pages[0].valid_len, 60);
}

TEST(DynamicArea, SendsTextsOfAnyLength) {
    const sim::Simulator sim;
    for (const std::size_t length : {1U, 1000U, 30000U}) {
        std::string text;
        while (text.size() < length) text += "many words ";
        ASSERT_EQ(send_text(sim.port(), text.c_str(), rectangle(0, 0, 128, 32), still_text(9, 1)), 0)
            << length;
        const auto areas = sim.dynamic_areas();
        ASSERT_EQ(areas.size(), 1U);
        std::size_t shown = 0;
        for (const auto& page : areas[0].pages) shown += page.pixels.size();
        EXPECT_EQ(shown, areas[0].pages.size() * (2 * 128 * 32 / 8));
        EXPECT_EQ(sim.payloads().back().size(), 44 + 30 * areas[0].pages.size() + shown);
    }
    EXPECT_GT(sim.payloads().back().size(), 32768U) << "more than one envelope of the short kind holds";
}

TEST(DynamicArea, SurvivesAHundredThousandCharacters) {
    const sim::Simulator sim;
    std::string text;
    while (text.size() < 100000) text += "LED \xE5\xB1\x8F ";
    EXPECT_EQ(send_text(sim.port(), text.c_str(), rectangle(0, 0, 128, 32), still_text(9, 1)), 0);
    auto running = still_text(9, 1);
    running.arrMode = SINGLELINE;
    running.DisplayMode = 4;
    EXPECT_EQ(send_text(sim.port(), text.c_str(), rectangle(0, 0, 64, 16), running), 0);
}

} // namespace
} // namespace qm::test
