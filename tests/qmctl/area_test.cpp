// What text and picture put on the screen.
#include "fixture.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace qm::test {
namespace {

using sim::Rgb;

// The lit pixels of a screen: how many, and the rectangle around them.
struct Lit {
    explicit Lit(const sim::Image& screen) : left(screen.width), top(screen.height) {
        for (int y = 0; y < screen.height; ++y)
            for (int x = 0; x < screen.width; ++x)
                if (screen.at(x, y) != Rgb{}) add(x, y);
    }
    [[nodiscard]] int width() const { return right - left; }
    [[nodiscard]] int height() const { return bottom - top; }

    int left, top, right = 0, bottom = 0, count = 0;

  private:
    void add(int x, int y) {
        left = std::min(left, x);
        top = std::min(top, y);
        right = std::max(right, x + 1);
        bottom = std::max(bottom, y + 1);
        ++count;
    }
};

class Area : public ControllerTest {
  protected:
    Lit show(const Words& options, const std::string& text = "Hello") {
        done(Words{"text", text} + options);
        return Lit(controller.screen());
    }
    [[nodiscard]] std::size_t pages() const { return controller.dynamic_areas().at(0).pages.size(); }
};

TEST_F(Area, TextAloneIsEnough) {
    const Lit lit = show({});
    EXPECT_GT(lit.height(), 16) << "as large as one line can be";
    EXPECT_NEAR(lit.left + lit.right, 128, 6) << "in the middle";
    EXPECT_EQ(pages(), 1U);
}

TEST_F(Area, GivenLinesFitTheHeightTogether) {
    for (const char* lines : {"Hello\n你好", "Hello\r\n你好\n"}) {
        const Lit lit = show({}, lines);
        EXPECT_LT(lit.top, 8);
        EXPECT_GT(lit.bottom, 24);
        EXPECT_EQ(pages(), 1U);
    }
}

TEST_F(Area, ColumnsAreAsLargeAsTheWholeTextFits) {
    const struct {
        std::string text;
        const char* options;
    } cases[] = {{"新鲜咖啡和蛋糕", ""},
                 {"新鲜咖啡和蛋糕", "--rect 0,0,52,32 --spacing 1"},
                 {"你好\n再见", "--rect 0,0,32,32"},
                 {"你好", "--single --rect 40,0,32,32"}};
    for (const auto& c : cases) {
        const Words column = Words{"text", c.text, "--vertical"} + c.options;
        const unsigned size = json(column)["size"];
        EXPECT_EQ(pages(), 1U) << c.text << " " << size;
        done(column + Words{"--size", std::to_string(size + 1)});
        EXPECT_GT(pages(), 1U) << c.text << " " << size;
    }
}

TEST_F(Area, WordThatIsAloneIsNeverBroken) {
    for (const char* word : {"Screen", "Closed"})
        for (const int width : {36, 48, 60}) {
            const Words rect{"--rect", "0,0," + std::to_string(width) + ",32"};
            const unsigned size = json(Words{"text", word} + rect)["size"];
            const sim::Image wrapped = controller.screen();
            done(Words{"text", word, "--single", "--size", std::to_string(size)} + rect);
            EXPECT_EQ(controller.screen(), wrapped) << word << " " << width << " " << size;
        }
}

TEST_F(Area, RectangleThatReachesBeyondTheScreenIsRefused) {
    const TemporaryFile picture("picture.png", hex(kPicture));
    for (const char* rect : {"100,0,29,8", "0,25,8,8", "128,0,1,1", "0,32,1,1", "65535,65535,65535,65535"})
        for (const Words& verb : {Words{"text", "x"}, {"picture", picture.path()}}) {
            const Outcome outcome = run(verb + Words{"--rect", rect});
            EXPECT_EQ(outcome.status, 1) << rect;
            EXPECT_THAT(outcome.err,
                        testing::HasSubstr("--rect: reaches beyond the screen of 128 x 32 pixels"));
        }
    EXPECT_TRUE(controller.payloads().empty());
    done("text x --rect 120,24,8,8");
}

TEST_F(Area, TextIsTakenLiterally) {
    for (const std::string text : {"{}", "[1,2]", "a,b", "ping", "-5", "--json", "++", "%s", "\xFFz"}) {
        done({"text", "--", text});
        done({"text", "-"}, text + "\n"); // which no parser of arguments has touched
        const auto payloads = controller.payloads();
        EXPECT_EQ(payloads.back(), payloads[payloads.size() - 2]) << text;
        EXPECT_GT(Lit(controller.screen()).count, 0) << text;
    }
}

TEST_F(Area, PlaceAndEffectReachTheController) {
    const struct {
        const char* options;
        int id;
        sim::Rect rect;
        int mode, speed, stay, repeat;
    } cases[] = {
        {"", 0, {0, 0, 128, 32}, 1, 32, 300, 1},
        {"--area 255 --rect 8,4,64,16 --mode left", 255, {8, 4, 64, 16}, 4, 32, 0, 1},
        {"--mode right --speed 5 --repeat 3", 0, {0, 0, 128, 32}, 38, 5, 0, 3},
        {"--mode 9 --stay 65535 --screen double", 0, {0, 0, 128, 32}, 9, 32, 65535, 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.options);
        show(c.options);
        const auto areas = controller.dynamic_areas();
        const auto area = std::ranges::find(areas, c.id, &sim::ReceivedArea::id);
        ASSERT_NE(area, areas.end());
        EXPECT_EQ(area->rect, c.rect);
        const sim::Page& page = area->pages.at(0);
        EXPECT_EQ(page.display_mode, c.mode);
        EXPECT_EQ(page.speed, c.speed);
        EXPECT_EQ(page.stay_time, c.stay);
        EXPECT_EQ(page.repeat_time, c.repeat);
    }
}

TEST_F(Area, ColorsAreNamedOrMixed) {
    const struct {
        const char* option;
        Rgb shown;
    } cases[] = {{"red", {255, 0, 0}},
                 {"green", {0, 255, 0}},
                 {"yellow", {255, 255, 0}},
                 {"#FF0000", {255, 0, 0}},
                 {"#ffff00", {255, 255, 0}}};
    for (const auto& c : cases) {
        const int lit = show({"--color", c.option}).count;
        const sim::Image screen = controller.screen();
        int as_asked = 0;
        for (int y = 0; y < screen.height; ++y)
            for (int x = 0; x < screen.width; ++x) as_asked += screen.at(x, y) == c.shown;
        EXPECT_GT(lit, 0);
        EXPECT_EQ(as_asked, lit) << c.option;
    }
    EXPECT_EQ(show({"--color", "#000000"}).count, 0);
}

TEST_F(Area, AlignmentMovesTheText) {
    const auto at = [&](const char* option, const char* where) {
        return show({"--size", "9", option, where});
    };
    EXPECT_LT(at("--halign", "left").left, 4);
    EXPECT_GT(at("--halign", "right").right, 124);
    EXPECT_LT(at("--valign", "top").bottom, 16);
    EXPECT_GT(at("--valign", "bottom").top, 16);
}

TEST_F(Area, LookOfTheTextFollowsTheOptions) {
    const Lit plain = show({"--size", "9"});
    EXPECT_GT(show({"--size", "9", "--bold"}).count, plain.count);
    EXPECT_EQ(show({"--size", "9", "--spacing", "5"}).width(), plain.width() + 4 * 5);
    EXPECT_GT(show({"--size", "18"}).height(), plain.height() * 3 / 2);
    const sim::Image usual = controller.screen();
    show({"--size", "18", "--font", "DejaVu Sans"});
    const sim::Image upright = controller.screen();
    EXPECT_NE(upright, usual);
    show({"--size", "18", "--font", "DejaVu Sans", "--italic"});
    EXPECT_NE(controller.screen(), upright);
    const Lit column = show({"--size", "6", "--vertical"}, "Hi");
    EXPECT_GT(column.height(), column.width());
}

TEST_F(Area, RunsToTheSideThatItIsReadFrom) {
    const struct {
        const char* text;
        int mode;
    } cases[] = {{"Hello", 4},    {"12: Hello שלום", 4}, {"12: שלום Hello", 38},
                 {"(مرحبا)", 38}, {"\xF0", 4},           {"12", 4}};
    for (const auto& c : cases) {
        show("--mode run", c.text);
        const sim::Page page = controller.dynamic_areas().at(0).pages.at(0);
        EXPECT_EQ(page.display_mode, c.mode) << c.text;
        EXPECT_EQ(page.stay_time, 0) << "as running text";
    }
}

TEST_F(Area, OneLineIsCutIntoPagesAndLinesAreWrapped) {
    const std::string text = "one two three four five six seven eight nine ten";
    const auto pages_with = [&](const char* options) {
        show(Words("--size 6") + options, text);
        return pages();
    };
    const std::size_t wrapped = pages_with("");
    EXPECT_GT(pages_with("--single"), wrapped);
    EXPECT_EQ(pages_with("--mode left --multi"), wrapped);
    EXPECT_GT(pages_with("--mode left"), wrapped) << "running text is one line";
}

TEST_F(Area, ResultIsToldToScripts) {
    const auto result = json("text Hi --rect 8,4,64,16 --area 3");
    const nlohmann::json expected{{"ok", true},
                                  {"status", 0},
                                  {"controller", address(controller.port())},
                                  {"area", 3},
                                  {"rect", {8, 4, 64, 16}},
                                  {"screen", "double"},
                                  {"font", "Go"},
                                  {"size", 16},
                                  {"pages", 1}};
    EXPECT_EQ(result, expected) << result;
}

TEST_F(Area, WhatIsNotDrawnAsItWasMeantIsToldAndStrictlyRefused) {
    const Outcome told = run({"--json", "text", "--font", "No Such Font", "a\xF4\x8F\xBF\xBD"});
    EXPECT_EQ(told.status, 0);
    EXPECT_THAT(told.err, testing::HasSubstr("\"No Such Font\" is not installed; drawn in "));
    EXPECT_THAT(told.err, testing::HasSubstr("no font has U+10FFFD; drawn as a box"));
    EXPECT_EQ(nlohmann::json::parse(told.out)["notes"].size(), 2U);
    const sim::Image before = controller.screen();
    EXPECT_EQ(run({"text", "--strict", "\xF4\x8F\xBF\xBD"}).status, 2);
    EXPECT_EQ(controller.screen(), before);
}

TEST_F(Area, PictureAppearsAtItsPlace) {
    const TemporaryFile picture(" picture.png", hex(kPicture));
    done({"picture", picture.path(), "--rect", "5,3,40,20"});
    const sim::Image screen = controller.screen();
    expect_picture(screen, 5, 3);
    EXPECT_EQ(Lit(screen).count, 5);
}

TEST_F(Area, PictureThatIsCutShortIsAFailureAndLeavesTheScreen) {
    show({});
    const sim::Image before = controller.screen();
    ByteBuffer bytes = hex(kPicture);
    bytes.resize(40);
    const TemporaryFile picture("cut.png", bytes);
    const Outcome outcome = run({"picture", picture.path()});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(controller.screen(), before);
}

} // namespace
} // namespace qm::test
