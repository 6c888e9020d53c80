#include "program/HVframe.h"

#include "program/ScreenSettings.h"
#include "support/files.h"
#include "support/message.h"

#include <array>
#include <fstream>

namespace qm {
namespace {

constexpr std::uint64_t kMostPixels = 64'000'000;

// A small file can unpack to more than the memory holds: the size stands in its first 24 bytes, behind
// signature and chunk header, as two big-endian numbers.
bool has_bearable_size(const std::string& path) {
    if (!is_ordinary_file(path)) return false;
    std::array<char, 24> head{};
    if (!std::ifstream(path, std::ios::binary).read(head.data(), head.size())) return false;
    const auto number = [&head](std::size_t at) {
        std::uint64_t value = 0;
        for (std::size_t i = 0; i < 4; ++i) value = value << 8U | static_cast<Ouint8>(head[at + i]);
        return value;
    };
    return number(16) * number(20) <= kMostPixels;
}

} // namespace

SurfacePtr load_picture(const std::string& picPath) {
    if (!has_bearable_size(picPath)) return nullptr;
    SurfacePtr picture(cairo_image_surface_create_from_png(picPath.c_str()));
    if (cairo_surface_status(picture.get()) != CAIRO_STATUS_SUCCESS) return nullptr;
    return picture;
}

std::optional<HVframe> HVframe::load(const std::string& picPath) {
    const SurfacePtr picture = load_picture(picPath);
    if (!picture) {
        say("Error:Can't find frame png.\n");
        return std::nullopt;
    }
    Canvas32 canvas(cairo_image_surface_get_width(picture.get()),
                    cairo_image_surface_get_height(picture.get()));
    cairo_set_source_surface(canvas.context(), picture.get(), 0, 0);
    cairo_paint(canvas.context());
    return HVframe{canvas.width(), canvas.height(), convert_canvas(canvas, 0)};
}

} // namespace qm
