#include "simulator/show/GifWriter.h"

#include "simulator/show/changes.h"

#include <algorithm>
#include <gif_lib.h>
#include <stdexcept>
#include <string>
#include <utility>

namespace qm::sim {
namespace {

constexpr std::chrono::milliseconds kShortest{20};
constexpr int kMost = 65535, kLongest = 65000; // hundredths of a second; what is left over is no short one

void check(int result) {
    if (result == GIF_ERROR) throw std::runtime_error("cannot write the animation");
}

// More colours than a frame can have come down to those that tell it best.
IndexedPart quantized(const Image& image, const Rect& part) {
    std::vector<GifByteType> planes[3];
    for (int y = part.y; y < part.y + part.height; ++y)
        for (int x = part.x; x < part.x + part.width; ++x) {
            const Rgb color = image.at(x, y);
            planes[0].push_back(color.r);
            planes[1].push_back(color.g);
            planes[2].push_back(color.b);
        }
    IndexedPart indexed{{}, std::vector<std::uint8_t>(planes[0].size())};
    GifColorType colors[kMostIndexed];
    int count = kMostIndexed;
    check(GifQuantizeBuffer(static_cast<unsigned>(part.width), static_cast<unsigned>(part.height), &count,
                            planes[0].data(), planes[1].data(), planes[2].data(), indexed.indices.data(),
                            colors));
    for (int i = 0; i < count; ++i)
        indexed.colors.push_back({colors[i].Red, colors[i].Green, colors[i].Blue});
    return indexed;
}

// As a number of colours that the format knows: a power of two.
std::unique_ptr<ColorMapObject, void (*)(ColorMapObject*)> color_map(const std::vector<Rgb>& colors) {
    int count = 2;
    while (static_cast<std::size_t>(count) < colors.size()) count *= 2;
    std::vector<GifColorType> table(static_cast<std::size_t>(count));
    std::ranges::transform(colors, table.begin(), [](Rgb color) {
        return GifColorType{color.r, color.g, color.b};
    });
    ColorMapObject* const map = GifMakeMapObject(count, table.data());
    if (!map) throw std::runtime_error("cannot write the animation");
    return {map, GifFreeMapObject};
}

} // namespace

struct GifWriter::File {
    explicit File(Sink to) : sink(std::move(to)) {
        int error = 0;
        gif = EGifOpen(this, write, &error);
        if (!gif) throw std::runtime_error("cannot begin the animation");
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    ~File() { close(); }

    static int write(GifFileType* gif, const GifByteType* bytes, int length) {
        const auto* file = static_cast<const File*>(gif->UserData);
        return file->sink({bytes, static_cast<std::size_t>(length)}) ? length : 0;
    }

    int close() {
        int error = 0;
        return gif ? EGifCloseFile(std::exchange(gif, nullptr), &error) : GIF_OK;
    }

    // The size, and that it begins anew for ever.
    void begin(const Image& image) {
        EGifSetGifVersion(gif, true);
        check(EGifPutScreenDesc(gif, image.width, image.height, 8, 0, nullptr));
        constexpr GifByteType kAnew[] = {1, 0, 0};
        check(EGifPutExtensionLeader(gif, APPLICATION_EXT_FUNC_CODE));
        check(EGifPutExtensionBlock(gif, 11, "NETSCAPE2.0"));
        check(EGifPutExtensionBlock(gif, sizeof kAnew, kAnew));
        check(EGifPutExtensionTrailer(gif));
    }

    void add(const Image& image, const Rect& part, int hundredths) {
        GifByteType block[4];
        const GraphicsControlBlock control{DISPOSE_DO_NOT, false, hundredths, NO_TRANSPARENT_COLOR};
        EGifGCBToExtension(&control, block);
        check(EGifPutExtension(gif, GRAPHICS_EXT_FUNC_CODE, sizeof block, block));
        auto indexed = indexed_part(image, part);
        if (!indexed) indexed = quantized(image, part);
        const auto map = color_map(indexed->colors);
        check(EGifPutImageDesc(gif, part.x, part.y, part.width, part.height, false, map.get()));
        for (std::size_t at = 0; at < indexed->indices.size(); at += static_cast<std::size_t>(part.width))
            check(EGifPutLine(gif, &indexed->indices[at], part.width));
    }

    const Sink sink;
    GifFileType* gif = nullptr;
};

GifWriter::GifWriter(Sink sink) : m_file(std::make_unique<File>(std::move(sink))) {}
GifWriter::~GifWriter() = default;

void GifWriter::add(std::shared_ptr<const Image> picture, Time now) {
    if (m_next && now >= m_next->since) {
        write(m_next->since);
        m_shown = std::exchange(m_next, std::nullopt);
    }
    if (!m_shown) {
        m_file->begin(*picture);
        m_begin = now;
        m_shown = {std::move(picture), now};
    } else if (now >= m_shown->since + kShortest) {
        write(now);
        m_shown = {std::move(picture), now};
    } else {
        m_next = {std::move(picture), m_shown->since + kShortest};
    }
}

void GifWriter::finish(Time now) {
    if (m_next) {
        write(m_next->since);
        m_shown = std::exchange(m_next, std::nullopt);
    }
    if (m_shown) write(std::max(now, m_shown->since + kShortest));
    m_shown.reset();
    check(m_file->close());
}

// Times are rounded from the beginning on, so that no error adds up.
void GifWriter::write(Time end) {
    using Hundredths = std::chrono::duration<int, std::centi>;
    const auto since_begin = [&](Time time) {
        return std::chrono::round<Hundredths>(time - *m_begin).count();
    };
    const Image& image = *m_shown->picture;
    int hundredths = since_begin(end) - since_begin(m_shown->since);
    constexpr Rect kNothing{0, 0, 1, 1}; // a frame that changes nothing still takes its time
    Rect part{0, 0, image.width, image.height};
    if (m_written) part = changed_part(*m_written, image).value_or(kNothing);
    for (; hundredths > kMost; hundredths -= kLongest) {
        m_file->add(image, part, kLongest);
        part = kNothing;
    }
    m_file->add(image, part, hundredths);
    m_written = m_shown->picture;
}

} // namespace qm::sim
