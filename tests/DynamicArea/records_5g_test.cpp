// The payloads of generation 5, and of speech, byte for byte.
#include "DynamicArea/DynamicArea_5G.h"
#include "DynamicArea/DynamicArea_6G_records.h"
#include "hex.h"

#include <gtest/gtest.h>

namespace qm {
namespace {

using test::hex;
using test::is_hex;

constexpr Ouint16 kPrograms[] = {7, 0x0102};

AreaRequest_5G area_request() { return {9, 1, 0x0203, 1, 0, nullptr, 1, 0x0405, 0x0607, 0x0040, 0x0020}; }

using Items = std::vector<ST_PageDataA_ValieLen>;

ST_PageDataA_ValieLen pages(Ouint8 mode, std::initializer_list<const char*> contents, Ouint16 validLen) {
    ST_PageDataA_ValieLen result{{}, validLen};
    for (const char* content : contents)
        result.vctPicData.push_back({{0, mode, 0x22, 0x33, 0x4455, 0x66}, CData(hex(content))});
    return result;
}

// An area of one black page of that size.
CData payload_of(Ouint32 size) {
    Items items(1);
    items[0].vctPicData.push_back({{}, CData(size)});
    return CBuild_DynamicArea_5H::BuildDynamicAreaData(area_request(), items, PageOrder::playing);
}

TEST(DynamicArea5G, LaysOutAnAreaByteForByte) {
    AreaRequest_5G area = area_request();
    area.RelateAllPro = 0;
    area.RelateProNum = 2;
    area.RelateProSerial = kPrograms;
    const CData payload = CBuild_DynamicArea_5H::BuildDynamicAreaData(
        area, Items{pages(4, {"AA BB", "CC"}, 10)}, PageOrder::playing);
    EXPECT_THAT(payload.bytes(),
                is_hex("01 A7 00 00 00 "
                       "41 00 00 00 "                              // 24 + 2 x 2 + 2 x 17 + 3
                       "09 01 03 02 00 02 00 07 00 02 01 01 00*4 " // id ... programs, ImmePlay, reserved
                       "10 05 04 07 06 40 00 20 00 00 02 00 "      // no border, two pages
                       "0F 00 00 00 00 04 22 33 55 44 66 40 00 00*4 AA BB "
                       "0E 00 00 00 00 04 22 33 55 44 66 0A 00 00*4 CC"));
}

// The pixels of the pages as they are sent, and the valid length of each.
std::vector<std::pair<Ouint8, Ouint16>> order_of(const CData& payload) {
    std::vector<std::pair<Ouint8, Ouint16>> order;
    for (std::size_t at = 33; at + 18 <= payload.m_nDataLen; at += 18)
        order.emplace_back(payload.m_pData[at + 17],
                           static_cast<Ouint16>(payload.m_pData[at + 11] | payload.m_pData[at + 12] << 8));
    return order;
}

TEST(DynamicArea5G, SendsThePageThatEndsTheTextLastWithItsValidLength) {
    using Order = std::vector<std::pair<Ouint8, Ouint16>>;
    const auto build = [](const Items& items, PageOrder order) {
        return order_of(CBuild_DynamicArea_5H::BuildDynamicAreaData(area_request(), items, order));
    };
    const Items three{pages(4, {"01", "02", "03"}, 10)}, wide{pages(1, {"01", "02"}, 100)};
    EXPECT_EQ(build(three, PageOrder::playing), (Order{{1, 64}, {2, 64}, {3, 10}}));
    EXPECT_EQ(build(three, PageOrder::reading), (Order{{3, 64}, {2, 64}, {1, 10}}));
    EXPECT_EQ(build(wide, PageOrder::playing), (Order{{1, 64}, {2, 64}}))
        << "never more than the area is wide";
    EXPECT_EQ(build({pages(4, {"01", "02"}, 5), pages(38, {"03", "04"}, 6)}, PageOrder::playing),
              (Order{{1, 64}, {2, 5}, {3, 64}, {4, 6}}));
}

TEST(DynamicArea5G, IsEmptyWhenItCannotBeSent) {
    AreaRequest_5G area = area_request();
    area.RelateProNum = 1;
    EXPECT_EQ(CBuild_DynamicArea_5H::BuildDynamicAreaData(area, {}, PageOrder::playing).m_nDataLen, 0U)
        << "the numbers of its programs are missing";
    for (const Ouint32 size : {65535U, 65536U})
        EXPECT_EQ(payload_of(size - 50).m_nDataLen, size == 65535 ? size : 0);
}

TEST(IndependentSound, IsLaidOutByteForByte) {
    CProtocol_SoundData sound;
    sound.SoundPerson = 1;
    sound.SoundVolum = 2;
    sound.SoundSpeed = 3;
    sound.SoundDataMode = 4;
    sound.SoundReplayTimes = 5;
    sound.SoundReplayDelay = 0x01020304;
    sound.SoundReservedParaLen = 6;
    sound.Soundnumdeal = 7;
    sound.Soundlanguages = 8;
    sound.Soundwordstyle = 9;
    sound.SoundData = "abc";
    const std::string record = "01 02 03 04 05 00 00 00 04 03 02 01 06 07 08 09 03 00 00 00 61 62 63";
    CProtocol_InsertSoundIndepend_All_6G insertion;
    insertion.m_oSound = {0x11, 0x12, sound};
    EXPECT_EQ(insertion.m_oSound.GetSize(), 32U);
    EXPECT_THAT(insertion.GetData().bytes(),
                is_hex(std::string("01 A7 07 00 00 11 12 00 00 00 17 00 00 00 ").append(record)));
    CProtocol_UpdateSoundIndepend_All_6G update;
    update.StoreFlag = 0x11;
    update.VoiceNum = 2;
    update.m_vctSound = {{0x21, sound}, {0x22, sound}};
    EXPECT_EQ(update.m_vctSound[0].GetSize(), 28U);
    EXPECT_THAT(update.GetData().bytes(), is_hex(std::string("01 A7 02 00 00 11 02 21 17 00 00 00 ")
                                                     .append(record)
                                                     .append(" 22 17 00 00 00 ")
                                                     .append(record)));
}

} // namespace
} // namespace qm
