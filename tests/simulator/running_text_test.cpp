// Text that runs comes onto the screen whole and in reading order, whatever calls bring it there.
#include "../e2e/drawing.h"
#include "../program_file/fixture.h"

#include "simulator/Simulator.h"

#include <algorithm>
#include <atomic>

namespace qm::test {
namespace {

constexpr char kHost[] = "127.0.0.1";
constexpr E_ScreenColor_G56 kDual = SCREEN_COLOR_DOUBLE;
constexpr Ouint16 kWidth = 48, kHeight = 16; // of an area
constexpr Ouint8 kSpeed = 3;
constexpr std::chrono::milliseconds kPixel{4}; // at that speed

// A text, and behind it a picture when there is a path, in the same display mode.
struct Content {
    const char* text;
    Ouint8 mode;
    std::string picture{};
    E_arrMode lines = SINGLELINE;
};

// How a content gets to a controller of that type, and how many areas show it, side by side.
struct Way {
    const char* name;
    Ouint16 type;
    int (*send)(Ouint16 port, const Content& content);
    bool takesPictures = false;
    int areas = 1;
};

HVpageHeader_G6 page_g6(const Content& content) {
    HVpageHeader_G6 page = page_header_g6(content.mode, content.lines);
    page.ValidLen = kWidth;
    return page;
}

HVfontData font_g5(const Content& content) {
    HVfontData font{};
    font.arrMode = content.lines;
    font.fontSize = 9;
    font.color = eRed;
    return font;
}

const Ouint8* bytes_of(const char* text) { return reinterpret_cast<const Ouint8*>(text); }

int send_g6(Ouint16 port, const Content& content) {
    HVareaHeader_G6 area = rectangle(0, 0, kWidth, kHeight);
    HVpageHeader_G6 page = page_g6(content);
    return dynamicArea_AddAreaTxtDetails_6G(kHost, port, kDual, 1, &area, &page, kFont, content.text);
}

int send_several_g6(Ouint16 port, const Content& content) {
    DynamicAreaParams areas[2];
    for (Ouint8 i = 0; i < 2; ++i)
        areas[i] = {i, rectangle(i * kWidth, 0, kWidth, kHeight), page_g6(content), bytes_of(kFont),
                    bytes_of(content.text)};
    return dynamicAreaS_AddTxtDetails_6G(kHost, port, kDual, 2, areas);
}

int send_g5(Ouint16 port, const Content& content) {
    return dynamicArea_AddAreaWithTxt_5G(kHost, port, kDual, 1, 0, 5, 1, 0, nullptr, 1, 0, 0, kWidth, kHeight,
                                         {}, content.mode, 0, kSpeed, 0, 1, font_g5(content), kFont,
                                         content.text);
}

int send_items_g5(Ouint16 port, const Content& content) {
    DynamicAreaBaseInfo_5G text{
        1, content.mode, 0, kSpeed, 0, 1, font_g5(content), bytes_of(kFont), bytes_of(content.text), nullptr},
        drawn = text, *items[] = {&text, &drawn};
    drawn.nType = 2;
    drawn.filePath = bytes_of(content.picture.c_str());
    return dynamicArea_AddAreaInfos_5G(kHost, port, kDual, 1, 0, 5, 1, 0, nullptr, 1, 0, 0, kWidth, kHeight,
                                       {}, content.picture.empty() ? 1 : 2, items);
}

int write_file(Ouint16 port, const char* name, Ouint8 type, Ouint32 size, const Ouint8* data) {
    return cmd_ofsWriteFile(kHost, port, name, type, size, 1, data);
}

int write_program_g5(Ouint16 port, const Content& content) {
    const HVprogramHeader header = program_header(1);
    const HVareaHeader area = area_header(ePicturesArea, 0, 0, kWidth, kHeight);
    const HVpageHeader page = page_header(content.mode, content.lines);
    program_addProgram(&header);
    program_AddArea(1, &area);
    program_picturesAreaAddTxt(1, content.text, kFont, &page);
    if (!content.picture.empty()) program_pictureAreaAddPic(1, 1, &page, content.picture.c_str());
    HVprogram file{};
    program_IntegrateProgramFile(&file);
    const int code = write_file(port, "P001", file.fileType, file.fileLen, file.fileAddre);
    program_freeBuffer(&file);
    program_deleteProgram();
    return code;
}

int write_program_g6(Ouint16 port, const Content& content) {
    const HVprogramHeader_G6 header = program_header_g6(1);
    const HVareaHeader_G6 area = area_header_g6(ePicturesArea, 0, 0, kWidth, kHeight);
    const HVpageHeader_G6 page = page_g6(content);
    program_addProgram_G6(&header);
    program_addArea_G6(1, &area);
    program_picturesAreaAddTxt_G6(1, content.text, kFont, &page);
    if (!content.picture.empty()) program_pictureAreaAddPic_G6(1, 1, &page, content.picture.c_str());
    HVprogram_G6 files{};
    program_IntegrateProgramFile_G6(&files);
    const int data = write_file(port, "D001", files.dfileType, files.dfileLen, files.dfileAddre);
    const int code = write_file(port, "P001", files.fileType, files.fileLen, files.fileAddre);
    program_freeBuffer_G6(&files);
    program_deleteProgram_G6();
    return data == 0 ? code : data;
}

// Columns of pixels, each from the top: R, G, and . for black.
using Columns = std::vector<std::string>;
const std::string kDark(kHeight, '.'), kGreen(kHeight, 'G');

std::string column_of(const sim::Image& image, int x) {
    std::string column;
    for (int y = 0; y < kHeight; ++y) {
        const sim::Rgb pixel = image.at(x, y);
        column += pixel == sim::Rgb{} ? '.' : pixel == sim::Rgb{255, 0, 0} ? 'R' : 'G';
    }
    return column;
}

// Without the dark columns at its ends.
Columns trimmed(Columns columns) {
    const auto dark = [](const std::string& column) { return column == kDark; };
    columns.erase(columns.begin(), std::find_if_not(columns.begin(), columns.end(), dark));
    columns.erase(std::find_if_not(columns.rbegin(), columns.rend(), dark).base(), columns.end());
    return columns;
}

// The text as cairo alone draws it.
Columns strip_of(const char* text) {
    const sim::Image drawn = text_image(kFont, 12, text, {255, 0, 0}, 6 * kWidth, kHeight);
    Columns columns;
    for (int x = 0; x < drawn.width; ++x) columns.push_back(column_of(drawn, x));
    return trimmed(columns);
}

class RunningText : public Program, public testing::WithParamInterface<Way> {
  protected:
    RunningText() {
        m_options.type = GetParam().type;
        m_options.width = 2 * kWidth;
        m_options.height = kHeight;
        m_options.uptime = [this] { return m_up.load(); };
        program_setScreenParams_G56(kDual, GetParam().type, DOUBLE_COLOR_PIXTYPE_1);
    }

    // What comes in at the edge of an area, column after column, until it is empty and has shown everything.
    Columns come_in(const sim::Simulator& sim, const Content& content, int area) {
        const std::string last = content.picture.empty() ? "R" : "G";
        const int edge = area * kWidth + (content.mode == 4 ? kWidth - 1 : 0);
        Columns came;
        bool complete = false;
        int dark = 0;
        for (m_up = kPixel; came.size() < 8 * kWidth && !(complete && dark >= kWidth);
             m_up = m_up.load() + kPixel) {
            came.push_back(column_of(sim.screen(), edge));
            complete |= came.back().find(last) != came.back().npos;
            dark = came.back() == kDark ? dark + 1 : 0;
        }
        return trimmed(came);
    }

    void expect_whole(const Content& content) {
        m_up = std::chrono::milliseconds(0);
        const sim::Simulator sim(m_options);
        ASSERT_EQ(GetParam().send(sim.port(), content), 0);
        for (int area = 0; area < GetParam().areas; ++area) {
            Columns text = come_in(sim, content, area);
            const auto picture = std::find(text.begin(), text.end(), kGreen);
            EXPECT_EQ(Columns(picture, text.end()), Columns(content.picture.empty() ? 0 : kWidth, kGreen));
            text.erase(picture, text.end());
            if (content.mode != 4) std::reverse(text.begin(), text.end());
            EXPECT_EQ(trimmed(text), strip_of(content.text));
        }
    }

  private:
    std::atomic<std::chrono::milliseconds> m_up{};
    sim::Options m_options;
};

TEST_P(RunningText, ComesInWholeAndInReadingOrder) {
    constexpr const char* kTexts[] = {"Sale", "Welcome to", "Welcome to our shop",
                                      "Welcome to our shop today", "Welcome to our shop today only"};
    const std::string green = picture("green.png", kWidth, kHeight, 0x00FF00);
    std::size_t pages = 0;
    for (const char* text : kTexts) {
        ASSERT_EQ((strip_of(text).size() + kWidth - 1) / kWidth, ++pages);
        for (const Ouint8 mode : {Ouint8{4}, Ouint8{38}, Ouint8{40}}) {
            SCOPED_TRACE("mode " + std::to_string(mode) + ", " + text);
            expect_whole({text, mode});
            if (GetParam().takesPictures) expect_whole({text, mode, green});
        }
    }
}

constexpr Way kWays[] = {{"Area6", kMode4, send_g6},
                         {"SeveralAreas6", kMode4, send_several_g6, false, 2},
                         {"Area5", kMode0, send_g5},
                         {"Items5", kMode0, send_items_g5, true},
                         {"Program5", kMode0, write_program_g5, true},
                         {"Program6", kMode4, write_program_g6, true}};

INSTANTIATE_TEST_SUITE_P(, RunningText, testing::ValuesIn(kWays),
                         [](const auto& way) { return way.param.name; });

// Where pages go out as they are listed, pages of several lines are those of a text that stands still.
TEST(RunningLines, StayInReadingOrder) {
    const struct {
        Way way;
        Ouint8 mode;
    } cases[] = {{kWays[0], 38}, {kWays[0], 40}, {kWays[2], 40}, {kWays[3], 38}, {kWays[3], 40}};
    for (const auto& c : cases) {
        const sim::Simulator sim({.type = c.way.type});
        const auto pages = [&](Ouint8 mode) {
            EXPECT_EQ(c.way.send(sim.port(), {"a text of many words", mode, {}, MULTILINE}), 0);
            return sim.dynamic_areas().at(0).pages;
        };
        const auto running = pages(c.mode), still = pages(1);
        ASSERT_GT(still.size(), 1U);
        ASSERT_EQ(running.size(), still.size());
        for (std::size_t i = 0; i < still.size(); ++i) {
            EXPECT_EQ(running[i].pixels, still[i].pixels) << c.way.name << i;
            EXPECT_EQ(running[i].valid_len, still[i].valid_len) << c.way.name << i;
        }
    }
}

} // namespace
} // namespace qm::test
