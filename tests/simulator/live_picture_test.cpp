// Pictures on their way to readers and into animations.
#include "samples.h"

#include "simulator/show/GifWriter.h"
#include "simulator/web/ScreenReader.h"
#include "simulator/web/picture_message.h"
#include "support/bytes.h"
#include "wire.h"

#include <gif_lib.h>
#include <gmock/gmock.h>

namespace qm::sim {
namespace {

using namespace std::chrono_literals;

Rgb color_at(std::size_t i) { return {static_cast<std::uint8_t>(i), static_cast<std::uint8_t>(i >> 8U), 7}; }

// So many colours, one after the other, over and over.
Image colorful(int width, int height, std::size_t colors) {
    Image image(width, height);
    for (int i = 0; i < width * height; ++i)
        image.set(i % width, i / width, color_at(static_cast<std::size_t>(i) % colors));
    return image;
}

Rgb next_color(ByteReader& in) {
    Rgb color;
    for (std::uint8_t* value : {&color.r, &color.g, &color.b}) *value = in.u8();
    return color;
}

// What a reader has behind the message; gives its depth.
unsigned take(Bytes message, Image& image) {
    ByteReader in(message);
    EXPECT_EQ(in.u8(), 1);
    EXPECT_EQ(in.u16(), image.width);
    EXPECT_EQ(in.u16(), image.height);
    const int left = in.u16(), top = in.u16(), width = in.u16(), height = in.u16();
    const unsigned depth = in.u8();
    std::vector<Rgb> palette(depth == 24 ? 0 : in.u16());
    for (Rgb& color : palette) color = next_color(in);
    for (int y = top; y < top + height; ++y)
        for (int x = left, bits = 0, byte = 0; x < left + width; ++x) {
            if (depth < 24 && bits == 0) byte = in.u8(), bits = 8;
            bits -= static_cast<int>(depth);
            const auto index =
                static_cast<std::size_t>(byte >> std::max(bits, 0)) & ((std::size_t{1} << depth) - 1);
            image.set(x, y, depth == 24 ? next_color(in) : palette.at(index));
        }
    EXPECT_TRUE(in.ok() && in.left() == 0);
    return depth;
}

unsigned arrives(const Image& before, const Image& now) {
    const auto message = picture_message(&before, now, std::nullopt);
    Image image = before;
    const ByteBuffer bytes(message->begin(), message->end());
    const unsigned depth = take(bytes, image);
    EXPECT_EQ(image, now);
    return depth;
}

TEST(PictureMessage, TakesTheSmallestDepthThatHoldsTheColours) {
    const std::pair<std::size_t, unsigned> rows[] = {{1, 1},  {2, 1},  {3, 2},   {4, 2},   {5, 4},
                                                     {16, 4}, {17, 8}, {256, 8}, {257, 24}};
    for (const auto& [colors, depth] : rows)
        EXPECT_EQ(arrives(Image(37, 11), colorful(37, 11, colors)), depth);
}

TEST(PictureMessage, HoldsWhatDiffersAndNoMore) {
    const Image before = colorful(37, 11, 300);
    EXPECT_EQ(picture_message(&before, before, std::nullopt), std::nullopt);
    Image now = before;
    now.set(36, 0, {1, 2, 3});
    now.set(3, 10, {1, 2, 3});
    now.set(20, 5, {1, 2, 3});
    const auto message = picture_message(&before, now, std::nullopt);
    EXPECT_EQ(message->substr(5, 8), std::string("\x03\0\0\0\x22\0\x0B\0", 8)) << "from column 3, 34 x 11";
    arrives(before, now);
}

TEST(ScreenReader, SlowOneGetsABitOfEach) {
    auto clock = LocalSeconds(std::chrono::hours(24 * 365 * 50));
    const Options options{
        .width = 8, .height = 1, .color = ScreenColor::single, .keeps_log = true, .clock = [&] {
            return clock;
        }};
    Exchange exchange(options);
    asio::io_context context;
    Feed feed(context, exchange, 0);
    ScreenReader reader(feed, [] {});
    Reader::Time now{};
    std::string kinds;
    for (int i = 0; i < 9; ++i) { // state, picture and log have changed each time
        const ByteBuffer pixels(4, i % 2 ? 0x55 : 0xAA);
        const ByteBuffer update = test::payload_of({{1, {0, 0, 8, 1}, {pixels}}});
        (void)exchange.answer({qm::test::unstuff(test::envelope_around(update))}, "");
        clock += std::chrono::seconds(2);
        context.restart();
        context.run_for(30ms);
        const auto message = reader.next(now += 2s);
        kinds += !message->text ? "picture " : message->bytes->starts_with("{\"log\"") ? "log " : "state ";
    }
    EXPECT_EQ(kinds, "state picture log state picture log state picture log ");
}

struct Animation {
    explicit Animation(std::string& bytes) {
        const auto take = [](GifFileType* file, GifByteType* to, int count) {
            auto& from = *static_cast<std::string*>(file->UserData);
            const std::size_t length =
                from.copy(reinterpret_cast<char*>(to), static_cast<std::size_t>(count));
            from.erase(0, length);
            return static_cast<int>(length);
        };
        int error = 0;
        gif = DGifOpen(&bytes, take, &error);
        EXPECT_TRUE(gif && DGifSlurp(gif) == GIF_OK);
    }
    Animation(const Animation&) = delete;
    Animation& operator=(const Animation&) = delete;
    ~Animation() { DGifCloseFile(gif, nullptr); }

    [[nodiscard]] int delay(int frame) const {
        GraphicsControlBlock control{};
        DGifSavedExtensionToGCB(gif, frame, &control);
        return control.DelayTime;
    }
    void draw(int frame, Image& image) const {
        const SavedImage& saved = gif->SavedImages[frame];
        const GifImageDesc& place = saved.ImageDesc;
        for (int i = 0; i < place.Width * place.Height; ++i) {
            const GifColorType& color = place.ColorMap->Colors[saved.RasterBits[i]];
            image.set(place.Left + i % place.Width, place.Top + i / place.Width,
                      {color.Red, color.Green, color.Blue});
        }
    }

    GifFileType* gif = nullptr;
};

// Pictures with the times at which they came, and the end.
std::string recorded(const std::vector<std::pair<Image, std::chrono::milliseconds>>& pictures,
                     std::chrono::milliseconds end) {
    std::string bytes;
    GifWriter writer([&](std::span<const std::uint8_t> more) {
        bytes.append(more.begin(), more.end());
        return true;
    });
    const GifWriter::Time begin{};
    for (const auto& [image, time] : pictures) writer.add(std::make_shared<const Image>(image), begin + time);
    writer.finish(begin + end);
    return bytes;
}

TEST(Gif, HoldsThePicturesAtTheirTimes) {
    Image other = colorful(20, 6, 200);
    other.set(4, 3, {255, 255, 255});
    const Image pictures[] = {colorful(20, 6, 200), other, Image(20, 6)};
    std::string bytes = recorded({{pictures[0], 0ms}, {pictures[1], 33ms}, {pictures[2], 66ms}}, 1s);
    const Animation animation(bytes);
    ASSERT_EQ(animation.gif->ImageCount, 3);
    const int delays[] = {3, 4, 93}; // rounded from the beginning on
    Image image(20, 6);
    for (int i = 0; i < 3; ++i) {
        animation.draw(i, image);
        EXPECT_EQ(image, pictures[i]) << i;
        EXPECT_EQ(animation.delay(i), delays[i]) << i;
    }
}

TEST(Gif, LeavesOutWhatViewersCannotShow) {
    std::vector<std::pair<Image, std::chrono::milliseconds>> pictures;
    for (int i = 0; i < 100; ++i)
        pictures.emplace_back(colorful(8, 8, static_cast<std::size_t>(i % 60 + 1)), 5ms * i);
    std::string bytes = recorded(pictures, 500ms);
    const Animation animation(bytes);
    int sum = 0;
    for (int i = 0; i < animation.gif->ImageCount; ++i) {
        EXPECT_GE(animation.delay(i), 2);
        sum += animation.delay(i);
    }
    EXPECT_THAT(animation.gif->ImageCount, testing::AllOf(testing::Gt(20), testing::Le(26)));
    EXPECT_THAT(sum, testing::AllOf(testing::Ge(50), testing::Le(52)));
}

TEST(Gif, ShowsAPictureForAsLongAsItStood) {
    const Image one = colorful(8, 8, 4), other = colorful(8, 8, 3);
    std::string bytes = recorded({{one, 0ms}, {other, 1h}}, 2h);
    const Animation animation(bytes);
    int sums[] = {0, 0};
    Image image(8, 8);
    for (int i = 0; i < animation.gif->ImageCount; ++i) {
        animation.draw(i, image);
        sums[image == one ? 0 : 1] += animation.delay(i);
    }
    EXPECT_THAT(sums, testing::ElementsAre(360000, 360000));
    EXPECT_EQ(image, other);
}

TEST(Gif, BringsManyColoursDownToThoseThatTellThem) {
    const Image many = colorful(64, 64, 4096);
    std::string bytes = recorded({{many, 0ms}}, 1s);
    Image image(64, 64);
    Animation(bytes).draw(0, image);
    for (std::size_t i = 0; i < image.rgb.size(); ++i) EXPECT_NEAR(image.rgb[i], many.rgb[i], 40) << i;
}

} // namespace
} // namespace qm::sim
