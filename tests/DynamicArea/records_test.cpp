#include "DynamicArea/DynamicArea_6G.h"
#include "hex.h"

#include <gtest/gtest.h>

namespace qm {
namespace {

using test::hex;
using test::is_hex;

const qm_G5_area_header kRectangle{2, 0x0102, 0x0304, 0x0506, 0x0708};

qm_G6_page_header page_header() {
    qm_G6_page_header page;
    page.PageStyle = 0x11;
    page.DisplayMode = 0x22;
    page.ClearMode = 0x33;
    page.Speed = 0x44;
    page.StayTime = 0x5566;
    page.RepeatTime = 0x77;
    page.ValidLen = 0x8899;
    page.CartoonFrameRate = 0xFF; // not sent
    return page;
}

HVSound_6G sound(Oint8 flag, std::string_view text) {
    HVSound_6G s{};
    s.SoundFlag = flag;
    s.SoundPerson = 1;
    s.SoundVolum = 2;
    s.SoundSpeed = 3;
    s.SoundDataMode = 4;
    s.SoundReplayTimes = 0x01020304;
    s.SoundReplayDelay = -1;
    s.SoundReservedParaLen = 5;
    s.Soundnumdeal = 6;
    s.Soundlanguages = 7;
    s.Soundwordstyle = 8;
    s.SoundDataLen = static_cast<Ouint32>(text.size());
    s.SoundData = reinterpret_cast<const Ouint8*>(text.data());
    return s;
}

// An area as the exports ask for it.
AreaRequest area(Ouint8 id) { return {id, kRectangle, {}, {}, nullptr, nullptr}; }

std::vector<Page> pages(std::initializer_list<Ouint32> sizes) {
    std::vector<Page> all;
    for (const Ouint32 size : sizes) all.push_back({{}, CData(size)});
    return all;
}

TEST(DynamicArea6G, LaysOutOneTextUpdateByteForByte) {
    CDynamicArea_ALL_6G all;
    ASSERT_EQ(all.AddArea(area(9)), 0);
    all.m_vctDynamicArea[0].AreaFFlag = 1;
    ASSERT_EQ(all.AddPages(9, {{page_header(), CData(hex("AA BB CC"))}, {page_header(), CData(hex("DD"))}}),
              0);
    EXPECT_THAT(all.GetDynamicAreaData().bytes(),
                is_hex("01 A7 00 00 00 "                         // command header
                       "01 00 "                                  // one area
                       "5D 00 00 00 "                            // 33 + 2 x 30
                       "09 00 05 00 01 00 00 01 00 00 00 00 "    // id ... ImmePlay, reserved
                       "10 02 01 04 03 06 05 08 07 "             // the wire's own type, rectangle
                       "00 00 00 00 00 "                         // no border although asked for, no sound
                       "00 00 00 00 00 02 00 "                   // reserved, two pages
                       "1A 00 00 00 11 22 33 44 66 55 77 99 88 " // first page
                       "00 00 00 00 00 00 00 00 00 00 00 00 00 03 00 00 00 "
                       "1A 00 00 00 11 22 33 44 66 55 77 99 88 " // second page, 3 bytes further on
                       "00 00 00 00 00 00 00 00 00 03 00 00 00 01 00 00 00 "
                       "AA BB CC DD"));
}

TEST(DynamicArea6G, PagesOfAnAreaStandBehindThoseOfTheAreasBeforeIt) {
    CDynamicArea_ALL_6G all;
    for (const Ouint8 id : {Ouint8{9}, Ouint8{3}}) ASSERT_EQ(all.AddArea(area(id)), 0);
    ASSERT_EQ(all.AddPages(9, pages({2, 1})), 0);
    ASSERT_EQ(all.AddPages(3, pages({5})), 0);
    ASSERT_EQ(all.AddPages(9, pages({4})), 0);
    ASSERT_EQ(all.m_vctDynamicArea[0].vctPageStyle.size(), 3U);
    EXPECT_EQ(all.m_vctDynamicArea[0].vctPageStyle[2].Dataoffset, 3U);
    EXPECT_EQ(all.m_vctDynamicArea[1].vctPageStyle[0].Dataoffset, 3U);
}

TEST(DynamicArea6G, NamesProgramsOnlyWhenNotRelatedToAll) {
    CVemarProtocol_DynamicArea_6G related;
    related.RelateProNum = 3;
    related.vctRelateProSerial = {1, 2, 0x0300};
    EXPECT_EQ(related.GetDataSize_NotIncludePageData(), 37U);
    EXPECT_EQ(related.AreaDataLen, 33U);
    related.RelateAllPro = 0;
    EXPECT_EQ(related.GetDataSize_NotIncludePageData(), 43U);
    const CData data = related.GetData_NotIncludePageData();
    ASSERT_EQ(data.m_nDataLen, 43U);
    EXPECT_THAT(data.bytes().first(18), is_hex("27 00 00 00 00 00 05 00 00 03 00 01 00 02 00 00 03 01"));
}

TEST(DynamicArea6G, CarriesSpeechOnlyWhenItIsOn) {
    for (const Oint8 flag : {Oint8{0}, Oint8{1}, Oint8{2}}) {
        CDynamicArea_ALL_6G all;
        AreaRequest speaking = area(0);
        speaking.sound = sound(flag, "abc");
        ASSERT_EQ(all.AddArea(speaking), 0);
        const CData payload = all.GetDynamicAreaData();
        const bool speaks = flag == 1;
        ASSERT_EQ(payload.m_nDataLen, 7U + 37U + (speaks ? 23U : 0U)) << int{flag};
        EXPECT_EQ(payload.m_pData[36], speaks);
        if (!speaks) continue;
        EXPECT_THAT(payload.bytes().subspan(37, 23),
                    is_hex("01 02 03 04 04 03 02 01 FF FF FF FF 05 06 07 08 03 00 00 00 61 62 63"));
    }
}

TEST(DynamicArea6G, ReportsTakenAndUnknownAreaNumbers) {
    CDynamicArea_ALL_6G all;
    testing::internal::CaptureStdout();
    EXPECT_EQ(all.AddPages(7, pages({1})), -1);
    all.AddArea(area(3));
    EXPECT_EQ(all.AddArea(area(3)), -1);
    // GB2312
    const std::string printed = testing::internal::GetCapturedStdout();
    EXPECT_THAT(ByteBuffer(printed.begin(), printed.end()),
                is_hex("20 C7 F8 D3 F2 49 44 A3 BA 37 20 B2 BB B4 E6 D4 DA A3 A1 CE DE B7 A8 D4 F6 BC D3 D2 "
                       "B3 C3 E6 CA FD BE DD A3 A1 0A "
                       "20 C7 F8 D3 F2 49 44 A3 BA 33 20 D2 D1 B4 E6 D4 DA A3 A1 0A"));
    EXPECT_EQ(all.AddPages(99, pages({1})), 0) << "a page without its area goes to the last one";
    EXPECT_EQ(all.m_vctDynamicArea.size(), 1U);
    EXPECT_EQ(all.m_vctDynamicArea[0].vctPageStyle.size(), 1U);
}

TEST(DynamicArea6G, RefusesSpeechThatItsSizeFieldCannotHold) {
    HVSound_6G s = sound(1, "abc");
    EXPECT_TRUE(is_sendable(s));
    s.SoundDataLen = 65515;
    EXPECT_TRUE(is_sendable(s));
    s.SoundDataLen = 65516;
    EXPECT_FALSE(is_sendable(s));
    s.SoundDataLen = 1;
    s.SoundData = nullptr;
    EXPECT_FALSE(is_sendable(s));
}

} // namespace
} // namespace qm
