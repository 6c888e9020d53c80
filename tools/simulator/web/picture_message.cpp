#include "simulator/web/picture_message.h"

#include "simulator/show/changes.h"
#include "support/bytes.h"

namespace qm::sim {
namespace {

constexpr unsigned kOne = 1, kOfMany = 2;

unsigned depth_for(std::size_t colors) {
    for (const unsigned depth : {1U, 2U, 4U})
        if (colors <= std::size_t{1} << depth) return depth;
    return 8;
}

ByteBuffer header(const Image& image, const Rect& part, std::optional<std::size_t> controller) {
    ByteBuffer bytes;
    ByteWriter out(bytes);
    out.u8(controller ? kOfMany : kOne);
    if (controller) out.u16(static_cast<Ouint16>(*controller));
    for (const int number : {image.width, image.height, part.x, part.y, part.width, part.height})
        out.u16(static_cast<Ouint16>(number));
    return bytes;
}

void add_indices(ByteBuffer& bytes, const IndexedPart& indexed, std::size_t width, unsigned depth) {
    for (std::size_t row = 0; row < indexed.indices.size(); row += width) {
        unsigned byte = 0, filled = 0;
        for (std::size_t i = row; i < row + width; ++i) {
            byte = byte << depth | indexed.indices[i];
            filled += depth;
            if (filled < 8) continue;
            bytes.push_back(static_cast<Ouint8>(byte));
            byte = filled = 0;
        }
        if (filled > 0) bytes.push_back(static_cast<Ouint8>(byte << (8 - filled)));
    }
}

void add_indexed(ByteBuffer& bytes, const IndexedPart& indexed, std::size_t width) {
    const unsigned depth = depth_for(indexed.colors.size());
    ByteWriter(bytes).u8(depth).u16(static_cast<Ouint16>(indexed.colors.size()));
    for (const Rgb color : indexed.colors) ByteWriter(bytes).u8(color.r).u8(color.g).u8(color.b);
    add_indices(bytes, indexed, width, depth);
}

void add_colors(ByteBuffer& bytes, const Image& image, const Rect& part) {
    constexpr unsigned kFullColor = 24;
    bytes.push_back(kFullColor);
    for (int y = part.y; y < part.y + part.height; ++y) {
        const std::size_t from = static_cast<std::size_t>(y * image.width + part.x) * 3;
        const Bytes row = Bytes(image.rgb).subspan(from, static_cast<std::size_t>(part.width) * 3);
        bytes.insert(bytes.end(), row.begin(), row.end());
    }
}

} // namespace

std::optional<std::string> picture_message(const Image* before, const Image& now,
                                           std::optional<std::size_t> controller) {
    const auto part = before ? changed_part(*before, now) : Rect{0, 0, now.width, now.height};
    if (!part) return std::nullopt;
    ByteBuffer bytes = header(now, *part, controller);
    if (const auto indexed = indexed_part(now, *part))
        add_indexed(bytes, *indexed, static_cast<std::size_t>(part->width));
    else
        add_colors(bytes, now, *part);
    return std::string(bytes.begin(), bytes.end());
}

} // namespace qm::sim
