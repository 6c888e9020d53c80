#include "simulator/show/changes.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace qm::sim {
namespace {

std::size_t row_bytes(const Image& image) { return static_cast<std::size_t>(image.width) * 3; }

const std::uint8_t* row_of(const Image& image, int y) {
    return image.rgb.data() + static_cast<std::size_t>(y) * row_bytes(image);
}

bool same_row(const Image& one, const Image& other, int y) {
    return std::memcmp(row_of(one, y), row_of(other, y), row_bytes(one)) == 0;
}

// Finds colours again by a hash of open places, for there are a few colours and many pixels.
class ColorTable {
  public:
    // Its index, or nothing when it is one too many.
    std::optional<std::uint8_t> index_of(Rgb color) {
        const std::uint32_t key = std::uint32_t{color.r} << 16U | std::uint32_t{color.g} << 8U | color.b;
        if (key == m_latest) return m_latest_index;
        std::size_t place = (key * 2654435761U) >> 22U;
        while (m_places[place] != 0 && colors[m_places[place] - 1U] != color)
            place = (place + 1) % m_places.size();
        if (m_places[place] == 0) {
            if (colors.size() == kMostIndexed) return std::nullopt;
            colors.push_back(color);
            m_places[place] = static_cast<std::uint16_t>(colors.size());
        }
        m_latest = key;
        return m_latest_index = static_cast<std::uint8_t>(m_places[place] - 1U);
    }

    std::vector<Rgb> colors;

  private:
    std::array<std::uint16_t, 1024> m_places{}; // one more than the index; 0: free
    std::uint32_t m_latest = ~0U;
    std::uint8_t m_latest_index = 0;
};

} // namespace

std::optional<Rect> changed_part(const Image& before, const Image& now) {
    int top = 0, bottom = now.height - 1;
    while (top <= bottom && same_row(before, now, top)) ++top;
    if (top > bottom) return std::nullopt;
    while (same_row(before, now, bottom)) --bottom;
    const std::size_t length = row_bytes(now);
    std::size_t first = length, end = 0; // bytes of a row
    for (int y = top; y <= bottom; ++y) {
        const std::uint8_t *one = row_of(before, y), *other = row_of(now, y);
        first = static_cast<std::size_t>(std::mismatch(one, one + first, other).first - one);
        std::size_t last = length;
        while (last > end && one[last - 1] == other[last - 1]) --last;
        end = last;
    }
    const int left = static_cast<int>(first / 3), right = static_cast<int>((end + 2) / 3);
    return Rect{left, top, right - left, bottom - top + 1};
}

std::optional<IndexedPart> indexed_part(const Image& image, const Rect& part) {
    ColorTable table;
    std::vector<std::uint8_t> indices;
    indices.reserve(static_cast<std::size_t>(part.width) * static_cast<std::size_t>(part.height));
    for (int y = part.y; y < part.y + part.height; ++y)
        for (int x = part.x; x < part.x + part.width; ++x) {
            const auto index = table.index_of(image.at(x, y));
            if (!index) return std::nullopt;
            indices.push_back(*index);
        }
    return IndexedPart{std::move(table.colors), std::move(indices)};
}

} // namespace qm::sim
