// The screen in a terminal and in files, and pixel data that ends early.
#include "read_png.h"
#include "simulator/playback/PixelReader.h"
#include "simulator/show/picture.h"
#include "simulator/show/terminal.h"
#include "support/Descriptor.h"

#include <array>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <poll.h>
#include <stdexcept>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

namespace qm::sim {
namespace {

TEST(Terminal, PutsTwoRowsOnALineAndSetsColoursWhereTheyChange) {
    Image screen(3, 3); // the last line has no lower row
    screen.set(0, 0, {255, 0, 0});
    screen.set(1, 0, {255, 0, 0});
    screen.set(1, 1, {0, 128, 7});
    screen.set(2, 2, {1, 2, 3});
    EXPECT_EQ(half_blocks(screen), "\x1b[?7l"
                                   "\x1b[38;2;255;0;0m\x1b[48;2;0;0;0m▀"
                                   "\x1b[48;2;0;128;7m▀"
                                   "\x1b[38;2;0;0;0m\x1b[48;2;0;0;0m▀\x1b[0m\n"
                                   "\x1b[38;2;0;0;0m\x1b[48;2;0;0;0m▀▀"
                                   "\x1b[38;2;1;2;3m▀\x1b[0m\n"
                                   "\x1b[?7h");
}

class Printing : public testing::Test {
  protected:
    Printing() {
        int ends[2];
        if (::pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
        m_out = Descriptor(ends[0]);
        m_in = Descriptor(ends[1]);
    }
    // What is printed until it ends so, or until nothing comes for long.
    std::string printed(std::string_view end) {
        std::string text;
        const auto deadline = Clock::now() + std::chrono::seconds(20);
        while (!text.ends_with(end) && wait_ready(m_out.get(), POLLIN, deadline) > 0) {
            std::array<char, 4096> piece{};
            const auto size = ::read(m_out.get(), piece.data(), piece.size());
            if (size <= 0) break;
            text.append(piece.data(), static_cast<std::size_t>(size));
        }
        return text;
    }

    Descriptor m_out, m_in;
};

TEST_F(Printing, ANarrowTerminalShowsAllScaledAndSaysSo) {
    m_out = Descriptor(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC));
    ::unlockpt(m_out.get());
    m_in = Descriptor(::open(::ptsname(m_out.get()), O_RDWR | O_NOCTTY | O_CLOEXEC));
    const winsize size{.ws_row = 24, .ws_col = 20, .ws_xpixel = 0, .ws_ypixel = 0};
    ASSERT_EQ(::ioctl(m_in.get(), TIOCSWINSZ, &size), 0);
    termios mode{};
    ::tcgetattr(m_in.get(), &mode);
    ::cfmakeraw(&mode); // lines end as they are written
    ::tcsetattr(m_in.get(), TCSANOW, &mode);
    Image screen(40, 8), scaled(20, 4);
    screen.set(39, 7, {9, 0, 0});
    screen.set(38, 6, {0, 8, 0});
    scaled.set(19, 3, {9, 8, 0});
    const std::string text = half_blocks(scaled) + "40x8 scaled to 20x4\n";
    Printer printer(m_in.get(), true);
    printer.print(screen);
    EXPECT_EQ(printed(text), text);
    printer.print(screen);
    EXPECT_EQ(printed(text), "\x1b[3A" + text);
}

TEST_F(Printing, OneScreenTakesThePlaceOfTheOtherUntilALineComesBetween) {
    const Image screen(3, 3);
    const std::string text = half_blocks(screen);
    Printer printer(m_in.get(), true), kept(m_in.get(), false);
    printer.print(screen);
    EXPECT_EQ(printed(text), text);
    printer.print(screen);
    EXPECT_EQ(printed(text), "\x1b[2A" + text);
    printer.print_line(m_in.get(), "a line");
    printer.print(screen);
    EXPECT_EQ(printed(text), "a line\n" + text);
    for (int i = 0; i < 2; ++i) {
        kept.print(screen);
        EXPECT_EQ(printed(text), text);
    }
}

TEST_F(Printing, AReaderWhoDoesNotKeepUpMissesScreensButNotTheLatest) {
    Image screen(120, 40);
    Printer printer(m_in.get(), false);
    for (int n = 0; n < 50; ++n) { // each is more than a pipe takes
        for (int i = 0; i < 120 * 40; ++i)
            screen.set(i % 120, i / 120, {static_cast<std::uint8_t>(i + n), 0, 0});
        printer.print(screen);
    }
    const std::string text = half_blocks(screen);
    ASSERT_GT(text.size(), 65536U);
    printer.print_line(m_in.get(), "the end");
    const std::string all = printed("the end\n");
    EXPECT_THAT(all, testing::EndsWith(text + "the end\n"));
    EXPECT_LE(all.size(), 3 * text.size());
}

TEST(LedPanel, EnlargesEveryLedAsADotOnABlackBoard) {
    Image screen(2, 1);
    screen.set(0, 0, {255, 0, 0});
    const Image panel = led_panel(screen, 9);
    ASSERT_EQ(panel.width, 18);
    ASSERT_EQ(panel.height, 9);
    EXPECT_EQ(panel.at(4, 4).r, 255); // a lit LED
    EXPECT_LT(panel.at(13, 4).r, 60); // a dark one can be made out
    EXPECT_GT(panel.at(13, 4).r, panel.at(17, 8).r);
    EXPECT_LT(panel.at(0, 0).r, 60); // the board between them
    EXPECT_EQ(led_panel(screen, 1), screen);
    screen.set(0, 0, {20, 0, 0});
    EXPECT_GT(led_panel(screen, 9).at(4, 4).r, panel.at(13, 4).r); // the faintest light, beside a dark one
}

TEST(PixelReaderBounds, MissingBytesAreDark) {
    for (const PixelFormat format : {PixelFormat{TransferMode::planes8, ScreenColor::dual},
                                     {TransferMode::planes32, ScreenColor::three},
                                     {TransferMode::rgb565, ScreenColor::full},
                                     {TransferMode::rgb888, ScreenColor::full}}) {
        const ByteBuffer cut(1, 0x00);
        const PixelReader reader(format, {0, 0, 4000, 4000}, cut);
        EXPECT_EQ(reader.at(3999, 3999), Rgb{});
    }
}

TEST(Png, HoldsTheScreenPixelByPixel) {
    const auto path = std::filesystem::path(testing::TempDir()) / "qm_simulator_picture_test.png";
    Image screen(2, 1);
    screen.set(0, 0, {255, 128, 3});
    write_png(screen, path);
    write_png(screen, path); // in the place of the first
    EXPECT_EQ(qm::test::read_png(path), screen);
    std::filesystem::remove(path);
}

TEST(Png, SaysWhichFileCannotBeWritten) {
    try {
        write_png(Image(1, 1), "/nowhere/at/all.png");
        FAIL() << "nothing was thrown";
    } catch (const std::runtime_error& error) {
        EXPECT_THAT(error.what(), testing::HasSubstr("/nowhere/at/all.png"));
    }
}

} // namespace
} // namespace qm::sim
