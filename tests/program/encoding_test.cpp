// Conversions between text encodings.
#include "program/text/encoding.h"

#include <gtest/gtest.h>

namespace qm {
namespace {

TEST(Encoding, TextsAreConvertedInPlaceUpToWhatCannotBe) {
    using namespace std::string_literals;
    const std::string unicode = "A\0\x60\x4F"s, utf8 = "A你", gb2312 = "A\xC4\xE3";
    const struct {
        long (*convert)(std::string&);
        std::string from, to;
        long result;
    } cases[] = {
        {GB2312ToUTF8, gb2312, utf8, 0},
        {GB2312ToUnicode, gb2312, unicode, 0},
        {UTF8ToUnicode, utf8, unicode, 0},
        {UnicodeToUTF8, unicode, utf8, 0},
        {UTF8ToGB2312, utf8, gb2312, 0},
        {UnicodeToGB2312, unicode, gb2312, 0},
        {UTF8ToGB2312, "", "", 0},
        {UTF8ToGB2312, utf8 + "😀", gb2312, -1},
        {GB2312ToUTF8, gb2312 + "\xC4", utf8, -1},
        {UTF8ToUnicode,
         utf8 + "\xFF"
                "B",
         unicode, -1},
    };
    for (const auto& c : cases) {
        std::string text = c.from;
        EXPECT_EQ(c.convert(text), c.result) << &c - cases;
        EXPECT_EQ(text, c.to) << &c - cases;
    }
}

TEST(Encoding, UnknownOneIsRefusedAndTellsWhatIsLeft) {
    char out[4] = {};
    std::size_t in_left = 1, out_left = sizeof out;
    EXPECT_EQ(ChangeCode("no such encoding", "UTF-8", "A", in_left, out, out_left), -1);
    EXPECT_EQ(ChangeCode("UTF-8", "UCS-2LE", "A", in_left, out, out_left), 0);
    EXPECT_EQ(in_left, 0U);
    EXPECT_EQ(out_left, 2U);
}

} // namespace
} // namespace qm
