// What text and picture put on the screen.
#include "TemporaryFile.h"
#include "child.h"
#include "hex.h"
#include "simulator/Simulator.h"

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

// 3 x 2 pixels: red, green, yellow; black, red, green.
constexpr const char* kPicture =
    "89 50 4E 47 0D 0A 1A 0A 00 00 00 0D 49 48 44 52 00 00 00 03 00 00 00 02 08 02 00 00 00 12 16 F1 4D "
    "00 00 00 15 49 44 41 54 78 DA 63 F8 CF C0 C0 F0 9F E1 3F 88 02 31 40 18 00 42 D1 05 FB 5F E3 83 F9 "
    "00 00 00 00 49 45 4E 44 AE 42 60 82";

// A controller with a screen of 128 x 32 red and green LEDs, and qmctl talking to it.
class Area : public testing::Test {
  protected:
    void run(std::vector<std::string> arguments, const std::string& input = "") {
        arguments.insert(arguments.begin(), {"-c", address(controller.port())});
        const Outcome outcome = qmctl(arguments, input);
        EXPECT_EQ(outcome.status, 0) << outcome.err;
    }
    Lit show(std::vector<std::string> options, const std::string& text = "Hello") {
        options.insert(options.begin(), {"text", text});
        run(options);
        return Lit(controller.screen());
    }

    sim::Simulator controller;
};

TEST_F(Area, TextAloneIsEnough) {
    const Lit lit = show({});
    EXPECT_GT(lit.height(), 16) << "as large as one line can be";
    EXPECT_NEAR(lit.left + lit.right, 128, 6) << "in the middle";
    EXPECT_EQ(controller.dynamic_areas().at(0).pages.size(), 1U);
}

TEST_F(Area, GivenLinesFitTheHeightTogether) {
    for (const char* lines : {"Hello\n你好", "Hello\r\n你好\n"}) {
        const Lit lit = show({}, lines);
        EXPECT_LT(lit.top, 8);
        EXPECT_GT(lit.bottom, 24);
        EXPECT_EQ(controller.dynamic_areas().at(0).pages.size(), 1U);
    }
}

TEST_F(Area, ColumnsAreAsLargeAsTheWholeTextFits) {
    const struct {
        std::string text;
        std::vector<std::string> options;
    } cases[] = {{"新鲜咖啡和蛋糕", {}},
                 {"新鲜咖啡和蛋糕", {"--rect", "0,0,52,32", "--spacing", "1"}},
                 {"你好\n再见", {"--rect", "0,0,32,32"}},
                 {"你好", {"--single", "--rect", "40,0,32,32"}}};
    for (const auto& c : cases) {
        const auto pages = [&](const std::vector<std::string>& size) {
            std::vector<std::string> options = c.options;
            options.emplace_back("--vertical");
            options.insert(options.end(), size.begin(), size.end());
            show(options, c.text);
            return controller.dynamic_areas().at(0).pages.size();
        };
        std::vector<std::string> arguments{"text", c.text, "--vertical"};
        arguments.insert(arguments.end(), c.options.begin(), c.options.end());
        const unsigned size = qmctl_json(controller.port(), arguments)["size"];
        EXPECT_EQ(pages({}), 1U) << c.text << " " << size;
        EXPECT_GT(pages({"--size", std::to_string(size + 1)}), 1U) << c.text << " " << size;
    }
}

TEST_F(Area, RectangleThatReachesBeyondTheScreenIsRefused) {
    const TemporaryFile picture("picture.png", hex(kPicture));
    for (const char* rect : {"100,0,29,8", "0,25,8,8", "128,0,1,1", "0,32,1,1", "65535,65535,65535,65535"})
        for (const std::vector<std::string>& verb :
             {std::vector<std::string>{"text", "x"}, {"picture", picture.path()}}) {
            std::vector<std::string> arguments = verb;
            arguments.insert(arguments.end(), {"--rect", rect, "-c", address(controller.port())});
            const Outcome outcome = qmctl(arguments);
            EXPECT_EQ(outcome.status, 1) << rect;
            EXPECT_THAT(outcome.err,
                        testing::HasSubstr("--rect: reaches beyond the screen of 128 x 32 pixels"));
        }
    EXPECT_TRUE(controller.payloads().empty());
    run({"text", "x", "--rect", "120,24,8,8"});
}

TEST_F(Area, TextIsTakenLiterally) {
    for (const std::string text : {"{}", "[1,2]", "a,b", "ping", "-5", "--json", "++", "%s", "\xFFz"}) {
        run({"text", "--", text});
        run({"text", "-"}, text + "\n"); // which no parser of arguments has touched
        const auto payloads = controller.payloads();
        EXPECT_EQ(payloads.back(), payloads[payloads.size() - 2]) << text;
        EXPECT_GT(Lit(controller.screen()).count, 0) << text;
    }
}

TEST_F(Area, PlaceAndEffectReachTheController) {
    const struct {
        std::vector<std::string> options;
        int id;
        sim::Rect rect;
        int mode, speed, stay, repeat;
    } cases[] = {
        {{}, 0, {0, 0, 128, 32}, 1, 32, 300, 1},
        {{"--area", "255", "--rect", "8,4,64,16", "--mode", "left"}, 255, {8, 4, 64, 16}, 4, 32, 0, 1},
        {{"--mode", "right", "--speed", "5", "--repeat", "3"}, 0, {0, 0, 128, 32}, 38, 5, 0, 3},
        {{"--mode", "9", "--stay", "65535", "--screen", "double"}, 0, {0, 0, 128, 32}, 9, 32, 65535, 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.options));
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

TEST_F(Area, OneLineIsCutIntoPagesAndLinesAreWrapped) {
    const std::string text = "one two three four five six seven eight nine ten";
    const auto pages = [&](std::vector<std::string> options) {
        options.insert(options.end(), {"--size", "6"});
        show(options, text);
        return controller.dynamic_areas().at(0).pages.size();
    };
    const std::size_t wrapped = pages({}), one_line = pages({"--single"});
    EXPECT_LT(wrapped, one_line);
    EXPECT_EQ(pages({"--mode", "left", "--multi"}), wrapped);
    EXPECT_GT(pages({"--mode", "left"}), wrapped) << "running text is one line";
}

TEST_F(Area, ResultIsToldToScripts) {
    const auto result = qmctl_json(controller.port(), {"text", "Hi", "--rect", "8,4,64,16", "--area", "3"});
    const nlohmann::json expected{{"ok", true},
                                  {"status", 0},
                                  {"controller", address(controller.port())},
                                  {"area", 3},
                                  {"rect", {8, 4, 64, 16}},
                                  {"screen", "double"},
                                  {"font", "WenQuanYi Micro Hei"},
                                  {"size", 9}};
    EXPECT_EQ(result, expected) << result;
}

TEST_F(Area, PictureAppearsAtItsPlace) {
    const TemporaryFile picture(" picture.png", hex(kPicture));
    run({"picture", picture.path(), "--rect", "5,3,40,20"});
    const sim::Image screen = controller.screen();
    const Rgb black, red{255, 0, 0}, green{0, 255, 0}, yellow{255, 255, 0};
    const Rgb rows[2][3] = {{red, green, yellow}, {black, red, green}};
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 3; ++x) EXPECT_EQ(screen.at(5 + x, 3 + y), rows[y][x]) << x << "," << y;
    EXPECT_EQ(Lit(screen).count, 5);
}

TEST_F(Area, PictureThatIsCutShortIsAFailureAndLeavesTheScreen) {
    show({});
    const sim::Image before = controller.screen();
    ByteBuffer bytes = hex(kPicture);
    bytes.resize(40);
    const TemporaryFile picture("cut.png", bytes);
    const Outcome outcome = qmctl({"-c", address(controller.port()), "picture", picture.path()});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(controller.screen(), before);
}

} // namespace
} // namespace qm::test
