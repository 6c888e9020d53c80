// What a controller reads out of the payload of dynamic areas, and that it takes no contradictory one.
#include "simulator/playback/ReceivedArea.h"

#include "hex.h"
#include "samples.h"

#include <random>

namespace qm::sim {
namespace {

using qm::test::hex;
using qm::test::is_hex;

// Area 7 with two programs, a sound and two pages of 1 and 2 bytes: 33 + 4 + 22 + 60 bytes of description.
// Area 8 with every program, whose 3 program numbers are counted but not there, and one page of 3 bytes.
constexpr const char* kTwoAreas = //
    "02 00 "
    "77 00 00 00 07 01 2C 01 00 02 00 02 00 03 01 00 00*4 10 01 00 02 00 0A 00 04 00 00 05 06 09 01 "
    "01 02 03 04 05 00 00 00 06 00 00 00 07 08 09 0A 02 00 00 00 68 69 00*5 02 00 "
    "1A 00 00 00 01 04 02 20 2C 01 03 0A 00 00*9 00 00 00 00 01 00 00 00 "
    "1A 00 00 00 00 26 00 10 00 00 01 05 00 00*9 01 00 00 00 02 00 00 00 "
    "3F 00 00 00 08 00 05 00 01 03 00 01 00*4 10 00 00 00 00 40 00 20 00 00 00 00 00 00 00*5 01 00 "
    "1A 00 00 00 00 04 00 20 00 00 01 40 00 00*9 03 00 00 00 03 00 00 00 "
    "D1 D2 D3 D4 D5 D6";

// One area without sound, with one page of 4 bytes.
const ByteBuffer kOneArea = test::content_of({{1, {0, 0, 8, 1}, {ByteBuffer(4, 0xFF)}}});

std::optional<ErrorValue> error_of(Bytes content) {
    const auto parsed = parse_dynamic_areas(content);
    if (const auto* error = std::get_if<ErrorValue>(&parsed)) return *error;
    return std::nullopt;
}

TEST(DynamicAreas, EveryFieldIsKept) {
    const auto parsed = parse_dynamic_areas(hex(kTwoAreas));
    ASSERT_TRUE(std::holds_alternative<std::vector<ReceivedArea>>(parsed));
    const auto& areas = std::get<std::vector<ReceivedArea>>(parsed);
    ASSERT_EQ(areas.size(), 2U);

    const ReceivedArea& first = areas[0];
    EXPECT_EQ(first.id, 7);
    EXPECT_EQ(first.run_mode, 1);
    EXPECT_EQ(first.timeout, 300);
    EXPECT_FALSE(first.with_all_programs);
    EXPECT_EQ(first.programs, (std::vector<std::uint16_t>{2, 0x0103}));
    EXPECT_FALSE(first.play_at_once);
    EXPECT_EQ(first.rect, (Rect{1, 2, 10, 4}));
    EXPECT_EQ(first.background_flag, 5);
    EXPECT_EQ(first.transparency, 6);
    EXPECT_EQ(first.equal, 9);

    ASSERT_TRUE(first.sound);
    const SpokenText& sound = *first.sound;
    EXPECT_THAT(ByteBuffer({sound.person, sound.volume, sound.speed, sound.data_mode}),
                is_hex("01 02 03 04"));
    EXPECT_EQ(sound.replay_times, 5U);
    EXPECT_EQ(sound.replay_delay, 6U);
    EXPECT_THAT(ByteBuffer({sound.reserved_para_len, sound.num_deal, sound.languages, sound.word_style}),
                is_hex("07 08 09 0A"));
    EXPECT_THAT(sound.text, is_hex("68 69"));

    ASSERT_EQ(first.pages.size(), 2U);
    const Page& page = first.pages[0];
    EXPECT_THAT(ByteBuffer({page.style, page.display_mode, page.clear_mode, page.speed, page.repeat_time}),
                is_hex("01 04 02 20 03"));
    EXPECT_EQ(page.stay_time, 300);
    EXPECT_EQ(page.valid_len, 10);
    EXPECT_THAT(page.pixels, is_hex("D1"));
    EXPECT_THAT(first.pages[1].pixels, is_hex("D2 D3"));

    EXPECT_TRUE(areas[1].with_all_programs);
    EXPECT_TRUE(areas[1].programs.empty());
    EXPECT_FALSE(areas[1].sound);
    EXPECT_EQ(areas[1].rect, (Rect{0, 0, 64, 32}));
    ASSERT_EQ(areas[1].pages.size(), 1U);
    EXPECT_THAT(areas[1].pages[0].pixels, is_hex("D4 D5 D6"));
}

TEST(DynamicAreas, MayHaveNoPages) {
    const auto parsed = parse_dynamic_areas(test::content_of({{9, {0, 0, 8, 8}, {}}}));
    ASSERT_TRUE(std::holds_alternative<std::vector<ReceivedArea>>(parsed));
    EXPECT_TRUE(std::get<std::vector<ReceivedArea>>(parsed)[0].pages.empty());
}

TEST(DynamicAreas, CutAnywhereOrLengthenedTheyAreRefused) {
    for (const ByteBuffer& whole : {hex(kTwoAreas), kOneArea}) {
        for (std::size_t length = 0; length < whole.size(); ++length)
            EXPECT_EQ(error_of(Bytes(whole).first(length)), ErrorValue::malformed) << "cut after " << length;
        ByteBuffer longer = whole;
        longer.push_back(0);
        EXPECT_EQ(error_of(longer), ErrorValue::malformed);
    }
}

TEST(DynamicAreas, ContradictionsAreRefused) {
    struct Spoil {
        const char* name;
        std::size_t offset;
        const char* bytes;
        ErrorValue error;
    };
    // Offsets into kOneArea: the count, then the description from 2 on, its page record from 39 on.
    const Spoil spoils[] = {
        {"no area", 0, "00 00", ErrorValue::malformed},
        {"more areas than there are", 0, "02 00", ErrorValue::malformed},
        {"description shorter than its fields", 2, "3E 00 00 00", ErrorValue::malformed},
        {"description longer than its fields", 2, "40 00 00 00", ErrorValue::malformed},
        {"description longer than memory", 2, "FF FF FF FF", ErrorValue::malformed},
        {"program numbers that are not there", 10, "00 FF FF", ErrorValue::malformed},
        {"neither all programs nor some", 10, "02", ErrorValue::bad_value},
        {"another kind of area", 18, "00", ErrorValue::bad_value},
        {"no width", 23, "00 00", ErrorValue::bad_value},
        {"no height", 25, "00 00", ErrorValue::bad_value},
        {"a border", 27, "01", ErrorValue::bad_value},
        {"a sound that is not there", 31, "01", ErrorValue::malformed},
        {"fewer pages than there are", 37, "00 00", ErrorValue::malformed},
        {"more pages than there are", 37, "FF FF", ErrorValue::malformed},
        {"another page record", 39, "1B", ErrorValue::malformed},
        {"page data after the end", 61, "01 00 00 00", ErrorValue::malformed},
        {"page data far after the end", 61, "FF FF FF FF", ErrorValue::malformed},
        {"page data shorter than the block", 65, "03 00 00 00", ErrorValue::malformed},
        {"page data longer than the block", 65, "05 00 00 00", ErrorValue::malformed},
        {"page data longer than memory", 65, "FF FF FF FF", ErrorValue::malformed},
    };
    ASSERT_EQ(error_of(kOneArea), std::nullopt);
    for (const Spoil& spoil : spoils) {
        ByteBuffer content = kOneArea;
        const ByteBuffer bytes = hex(spoil.bytes);
        std::copy(bytes.begin(), bytes.end(), content.begin() + static_cast<std::ptrdiff_t>(spoil.offset));
        EXPECT_EQ(error_of(content), spoil.error) << spoil.name;
    }
}

TEST(DynamicAreas, OfAnyBytesAreReadWithinTheirBounds) {
    std::mt19937 random(2);
    const ByteBuffer whole = hex(kTwoAreas);
    int refused = 0;
    for (int round = 0; round < 20000; ++round) {
        ByteBuffer content = whole;
        for (auto changes = random() % 3 + 1; changes > 0; --changes)
            content[random() % content.size()] = static_cast<std::uint8_t>(random());
        const auto parsed = parse_dynamic_areas(content);
        if (const auto* areas = std::get_if<std::vector<ReceivedArea>>(&parsed))
            for (const ReceivedArea& area : *areas)
                for (const Page& page : area.pages) ASSERT_LE(page.pixels.size(), content.size());
        else
            ++refused;
    }
    EXPECT_GT(refused, 1000);
    EXPECT_LT(refused, 19000);
}

} // namespace
} // namespace qm::sim
