// Pictures of every kind on their way to the screen.
#include "fixture.h"
#include "read_png.h"

#include <gmock/gmock.h>

namespace qm::test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

// JPEG: 16 x 8 gray pixels, the left half white, the right one black.
constexpr const char* kJpeg =
    "FF DB 00 43 00 08*64 FF C0 00 0B 08 00 08 00 10 01 01 11 00 FF C4 00 15 00 01 01 00*14 07 08 "
    "FF C4 00 14 10 01 00*15 00 FF DA 00 08 01 01 00 00 3F 00 7F 40 0F FF D9";
// In front of it: the camera was held upright, its left side down.
constexpr const char* kTurned = "FF E1 00 22 45 78 69 66 00 00 4D 4D 00 2A 00 00 00 08 00 01 "
                                "01 12 00 03 00 00 00 01 00 06 00 00 00 00 00 00 ";
// WebP: 2 x 1 red pixels.
constexpr const char* kWebp =
    "52 49 46 46 3C 00 00 00 57 45 42 50 56 50 38 20 30 00 00 00 D0 01 00 9D 01 2A 02 00 "
    "01 00 01 40 26 25 A0 02 74 BA 01 F8 00 03 B0 00 FE F2 EB 7F FC D8 15 CD 73 EF F7 FF "
    "D2 E0 FD 2E 0F D2 E0 FF D2 90 00 00";
// GIF: 2 x 1 pixels, both red, then both green.
constexpr const char* kGif = "47 49 46 38 39 61 02 00 01 00 91 00 00 00 00 00 FF 00 00 00 FF 00 FF FF 00 "
                             "21 F9 04 00 0A 00 00 00 2C 00 00 00 00 02 00 01 00 00 02 02 4C 0A 00 "
                             "21 F9 04 00 0A 00 00 00 2C 00 00 00 00 02 00 01 00 00 02 02 94 0A 00 3B";

std::string text_of(const ByteBuffer& bytes) { return {bytes.begin(), bytes.end()}; }
std::string jpeg(const char* behind_start = "") {
    return text_of(hex("FF D8 " + std::string(behind_start) + kJpeg));
}
// A quarter of it red, the rest transparent.
std::string svg(const std::string& size) {
    return R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 4 2" )" + size +
           R"(><rect width="1" height="2" fill="#F00"/></svg>)";
}

// Red, green, yellow and dark pixels of a corner, a line each.
std::string sketch(const sim::Image& screen, int width, int height) {
    std::string text;
    for (int y = 0; y < height; ++y, text += '/')
        for (int x = 0; x < width; ++x) {
            const sim::Rgb color = screen.at(x, y);
            text += ".RGY"[(color.r ? 1 : 0) + (color.g ? 2 : 0)];
        }
    return text;
}

using Pictures = ControllerTest;

TEST_F(Pictures, OfEveryKindFillTheirRectangle) {
    const struct {
        const char* name;
        std::string content;
        const char *options, *shown;
    } cases[] = {
        {"logo.png", text_of(hex(kPicture)), "", "RGY...../.RG...../......../......../"},
        {"logo.png", text_of(hex(kPicture)), "--fit contain", ".RRGGYY./.RRGGYY./...RRGG./...RRGG./"},
        {"a.jpg", jpeg(), "", "YYYYYYYY/YYYYYYYY/YYYYYYYY/YYYYYYYY/"},
        {"a.jpg", jpeg(), "--fit contain", "YYYY..../YYYY..../YYYY..../YYYY..../"},
        {"a.jpg", jpeg(), "--rect 0,0,4,4 --fit cover", "YY....../YY....../YY....../YY....../"},
        {"turned.jpg", jpeg(kTurned), "--fit contain", "...YY.../...YY.../......../......../"},
        {"turned.jpg", jpeg(kTurned), "--fit stretch", "YYYYYYYY/YYYYYYYY/......../......../"},
        {"two.gif", text_of(hex(kGif)), "--fit contain", "RRRRRRRR/RRRRRRRR/RRRRRRRR/RRRRRRRR/"},
        {"a.webp", text_of(hex(kWebp)), "", "RR....../......../......../......../"},
        {"a.svg", svg(R"(width="4" height="2")"), "", "R......./R......./......../......../"},
        {"no size.svg", svg(""), "--fit contain --dither", "RR....../RR....../RR....../RR....../"},
        // Drawn in that size: a pixel of it would have a quarter of the red, and stay dark.
        {"small.svg", svg(R"(width="2" height="1")"), "--fit contain",
         "RR....../RR....../RR....../RR....../"},
        {"huge.svg", svg(R"(width="200000" height="100000")"), "--rect 0,0,4,4 --fit cover",
         "......../......../......../......../"},
    };
    for (const auto& c : cases) {
        done("area rm all");
        const TemporaryFile file(c.name, c.content);
        const bool placed = std::string_view(c.options).starts_with("--rect");
        done(Words{"picture", file.path()} + (placed ? "" : "--rect 0,0,8,4") + c.options);
        EXPECT_EQ(sketch(controller.screen(), 8, 4), c.shown) << c.name << " " << c.options;
    }
}

TEST_F(Pictures, ThatCannotBeDrawnAreNamedAndNothingIsSent) {
    ByteBuffer bomb = hex(kGif);
    std::fill_n(bomb.begin() + 6, 4, Ouint8{0xFF}); // width and height
    const struct {
        const char* name;
        std::string content;
        const char* why;
    } cases[] = {
        {"text.jpg", "no picture at all", "is no picture of a known kind"},
        {"empty.webp", "", "is no picture of a known kind"},
        {"cut.jpg", jpeg(kTurned).substr(0, jpeg(kTurned).size() - 3), "is cut off"},
        {"cut.webp", text_of(hex(kWebp)).substr(0, 60), "is cut off"},
        {"cut.png", text_of(hex(kPicture)).substr(0, 60), "is cut off"},
        {"cut.gif", text_of(hex(kGif)).substr(0, 40), "is damaged: "},
        {"cut.svg", svg("").substr(0, 80), "is damaged: "},
        {"damaged.jpg", jpeg("FF C0 00 02 "), "is damaged: "},
        {"empty.svg", svg(R"(width="0" height="0")"), "has no pixels"},
        {"bomb.gif", text_of(bomb), "has more than 64 million pixels"},
    };
    for (const auto& c : cases) {
        const TemporaryFile file(c.name, c.content);
        const TemporaryFile json(
            "it.json",
            R"({"generation": 6, "screen": {"size": [64, 16], "color": "double"}, "id": 7, "areas": [{"id": 0,
                "fit": "cover", "pictures": [")" +
                file.path() + R"("]}]})");
        const std::string wrong = file.path() + " " + c.why, field = "areas[0].pictures[0]: ";
        for (const auto& [verb, where] :
             {std::pair(Words{"picture", "--fit", "cover", file.path()}, "FILE: "),
              {{"area", "send", json.path()}, field.c_str()},
              {{"program", "send", json.path()}, field.c_str()}}) {
            const Outcome outcome = run(verb);
            EXPECT_EQ(outcome.status, 1) << c.name << " " << verb[0];
            EXPECT_THAT(outcome.err, HasSubstr(where + wrong)) << verb[0];
        }
    }
    const Outcome drawn =
        run({"picture", TemporaryFile("huge.svg", svg(R"(width="9000" height="9000")")).path()});
    EXPECT_THAT(drawn.err, HasSubstr("huge.svg has more than 64 million pixels"));
    EXPECT_TRUE(controller.payloads().empty());
}

TEST_F(Pictures, WithoutALoaderNameItsPackage) {
    const TemporaryFile file("a.svg", svg(""));
    ::setenv("GDK_PIXBUF_MODULE_FILE", "/dev/null", 1);
    const Outcome outcome = run({"picture", file.path()});
    ::unsetenv("GDK_PIXBUF_MODULE_FILE");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("SVG needs the package librsvg2-common"));
}

// Rectangles that nobody gives are the screen's: as it is previewed, the program is sent, and so is the area.
TEST_F(Pictures, FillTheScreenAsPreviewed) {
    const TemporaryFile photo("a.jpg", jpeg());
    const TemporaryFile json("it.json", R"({"id": 7, "generation": 6, "areas": [{"id": 0, "fit": "contain",
        "dither": true, "pictures": [{"file": ")" +
                                            photo.path() + R"(", "fit": "stretch"}]}]})");
    const fs::path folder = fs::path(json.path()).parent_path();
    const fs::path temporary = folder / "temporary";
    fs::create_directory(temporary);
    ::setenv("TMPDIR", temporary.c_str(), 1);
    done({"program", "preview", json.path(), "-o", folder});
    const sim::Image page = read_png(folder / "area-0-page-1.png");
    EXPECT_EQ(page.width, 128);
    EXPECT_EQ(sketch(page, 128, 1), std::string(64, 'Y') + std::string(64, '.') + "/");
    for (const char* verb : {"area", "program"}) {
        done({verb, "send", json.path()});
        EXPECT_EQ(sketch(controller.screen(), 128, 32), sketch(page, 128, 32)) << verb;
        done("area rm all");
    }
    ::unsetenv("TMPDIR");
    EXPECT_TRUE(fs::is_empty(temporary));
}

// Which has a process for each, while the decoder of drawings has threads.
TEST_F(Pictures, ReachManyControllers) {
    const sim::Simulator other;
    const TemporaryFile noise("a.svg", std::string(R"_(<svg xmlns="http://www.w3.org/2000/svg" width="400"
        height="400"><filter id="f" x="0" y="0" width="1" height="1"><feTurbulence baseFrequency=".1"/>
        <feGaussianBlur stdDeviation="5"/></filter><rect width="400" height="400" filter="url(#f)"/></svg>)_"));
    const std::string both = address(controller.port()) + "," + address(other.port());
    const Outcome outcome = qmctl({"-c", both, "picture", noise.path()});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
}

} // namespace
} // namespace qm::test
