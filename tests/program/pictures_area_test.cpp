#include "program/PicturesArea.h"
#include "program/text/encoding.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>

namespace qm {
namespace {

constexpr Ouint16 kFullColour24 = 0x8166; // controller type with 24-bit pixels
constexpr char kFontFile[] = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

class Area : public PicturesArea {
  public:
    Area(Ouint16 width, Ouint16 height) { setGeometry({0, 0, 0, width, height}); }
    void prepare() {
        screen_settings().set(SCREEN_COLOR_FULLCOLOR, kFullColour24, DOUBLE_COLOR_PIXTYPE_1);
        complete = PreparePageData();
    }
    bool complete = false;
};

qm_G5_G6_fontData font_data(Ouint16 points = 12, bool bold = false) {
    qm_G5_G6_fontData data;
    data.arrMode = MULTILINE;
    data.fontSize = points;
    data.color = eWhite;
    data.fontBold = bold;
    return data;
}

ByteBuffer bytes_of(const Page& page) { return {page.pixels.bytes().begin(), page.pixels.bytes().end()}; }

std::vector<Ouint8> page_from_file(bool bold) {
    Area area(96, 32);
    area.AreaAddTxt("Signs", kFontFile, font_data(12, bold), {});
    area.prepare();
    return bytes_of(area.pages.at(0));
}

TEST(PicturesArea, KeepsPlainAndBoldOfOneFontFileApart) {
    const auto plain = page_from_file(false), bold = page_from_file(true);
    EXPECT_NE(plain, bold);
    EXPECT_EQ(page_from_file(false), plain) << "plain after bold";
    EXPECT_EQ(page_from_file(true), bold) << "bold after plain";
}

TEST(PicturesArea, PrefersTheFamilyAndReportsAFontFileThatCannotBeOpened) {
    for (int i = 0; i < 2; ++i) {
        testing::internal::CaptureStdout();
        Area area(64, 32);
        area.AreaAddTxt("x", "/no/such/font.ttf", font_data(), {});
        area._fontStyle = "DejaVu Sans";
        area.Reload();
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "Error 1 opening font.\n") << "not a second time";
        area.prepare();
        EXPECT_EQ(area.pages.size(), 1U);
    }
}

TEST(PicturesArea, ReportsWhatItCannotShow) {
    Area area(64, 32);
    auto data = font_data();
    data.arrMode = 7;
    testing::internal::CaptureStdout();
    area.AreaAddTxt("x", "DejaVu Sans", data, {});
    area.AreaAddTxt("", "DejaVu Sans", font_data(), {});
    area.AreaAddPic(5, "/no/such/picture.png", {});
    area.AreaAddPic(6, kFontFile, {});
    area.prepare();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Error: no arrMode is specified.Use MULTILINE Mode\n"
                                                      "Error:no string has been added.\n"
                                                      "Error:The picture does not exist.ID:5\n"
                                                      "Error:The picture does not exist.ID:6\n");
    EXPECT_FALSE(area.complete);
    EXPECT_TRUE(area.pages.empty());
}

TEST(PicturesArea, CutsAPictureToTheAreaAndFillsWithBlack) {
    const std::string path = testing::TempDir() + "qm_picture.png";
    Canvas32 picture(3, 5);
    cairo_set_source_rgb(picture.context(), 0, 1, 0);
    cairo_paint(picture.context());
    cairo_surface_write_to_png(picture.surface(), path.c_str());
    Area area(4, 2);
    area.AreaAddPic(0, path.c_str(), {});
    area.prepare();
    std::filesystem::remove(path);
    ASSERT_TRUE(area.complete);
    const std::vector<Ouint8> row{0, 255, 0, 0, 255, 0, 0, 255, 0, 0, 0, 0};
    std::vector<Ouint8> expected = row;
    expected.insert(expected.end(), row.begin(), row.end());
    EXPECT_EQ(bytes_of(area.pages.at(0)), expected);
}

TEST(TextRepair, ReplacesWhatUcs2CannotHold) {
    const struct {
        std::string_view given, repaired;
    } cases[] = {
        {"plain \xE4\xBD\xA0", "plain \xE4\xBD\xA0"},
        {"\xED\x9F\xBF\xF4\x8F\xBF\xBD", "\xED\x9F\xBF\xF4\x8F\xBF\xBD"},
        {"a\xFF"
         "b",
         "a\xEF\xBF\xBD"
         "b"},
        {"\xE4\xBD", "\xEF\xBF\xBD"},                                             // cut at the end
        {"\xE4\xBD!", "\xEF\xBF\xBD!"},                                           // cut in the middle
        {"\xC0\xAF", "\xEF\xBF\xBD\xEF\xBF\xBD"},                                 // overlong
        {"\xED\xA0\x80", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"},                 // surrogate
        {"\xF0\x9F\x98\x80.", "\xF0\x9F\x98\x80."},                               // outside the basic plane
        {"\xF4\x90\x80\x80", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"}, // outside all planes
    };
    for (const auto& c : cases) {
        EXPECT_EQ(repair_utf8(c.given), c.repaired);
        EXPECT_EQ(utf32_of(c.given), utf32_of(c.repaired));
    }
    EXPECT_EQ(utf32_of("\xFF\x7F\xC2\x80\xE4\xBD\xA0\xF0\x9F\x98\x80"), U"\uFFFD\x7F\x80\u4F60\U0001F600");
}

} // namespace
} // namespace qm
