#include "program/HVframe.h"

#include "program/pixels/ScreenSettings.h"
#include "support/files.h"
#include "support/message.h"
#include "support/reason.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>
#include <string_view>
#include <unistd.h>

namespace qm {
namespace {

constexpr std::uint64_t kMostPicturePixels = 64'000'000;

// A small file can unpack to more than the memory holds: the size stands in its first 24 bytes, behind
// signature and chunk header, as two big-endian numbers.
using Head = std::array<char, 24>;

bool is_png(const Head& head) { return std::string_view(head.data(), 8) == "\x89PNG\r\n\x1A\n"; }

std::uint64_t pixels(const Head& head) {
    const auto number = [&head](std::size_t at) {
        std::uint64_t value = 0;
        for (std::size_t i = 0; i < 4; ++i) value = value << 8U | static_cast<Ouint8>(head[at + i]);
        return value;
    };
    return number(16) * number(20);
}

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

// Why what is open cannot be a picture, in words; null when nothing speaks against it.
const char* fault_of(std::FILE* file, Head& head) {
    const bool whole = std::fread(head.data(), 1, head.size(), file) == head.size();
    if (std::ferror(file)) return error_text(errno);
    if (!whole || !is_png(head)) return "it is no PNG file";
    return pixels(head) > kMostPicturePixels ? "it has more than 64 million pixels" : nullptr;
}

// Why a file was not opened, likewise, behind what has just failed.
const char* fault_of(const std::string& path, bool ordinary) {
    if (!ordinary && ::access(path.c_str(), F_OK) == 0) return "it is no ordinary file";
    if (errno == ENOMEM) throw std::bad_alloc();
    return error_text(errno);
}

cairo_status_t read_on(void* file, unsigned char* data, unsigned length) {
    const bool whole = std::fread(data, 1, length, static_cast<std::FILE*>(file)) == length;
    return whole ? CAIRO_STATUS_SUCCESS : CAIRO_STATUS_READ_ERROR;
}

SurfacePtr decoded(std::FILE* file) {
    std::rewind(file);
    return SurfacePtr(cairo_image_surface_create_from_png_stream(read_on, file));
}

void require_room(std::size_t bytes) {
    void* volatile room = std::malloc(bytes); // which the compiler would leave out otherwise
    if (!room) throw std::bad_alloc();
    std::free(room);
}

SurfacePtr no_picture(const std::string& path, const char* why) {
    const char* const end = last_part(path.c_str());
    (void)fail(QM_FAILED, "Picture %s%s: %s.", end == path.c_str() ? "" : "...", end, why);
    return nullptr;
}

} // namespace

SurfacePtr load_picture(const std::string& picPath) {
    const bool ordinary = is_ordinary_file(picPath);
    const File file(ordinary ? std::fopen(picPath.c_str(), "rbe") : nullptr);
    Head head{};
    if (const char* why = file ? fault_of(file.get(), head) : fault_of(picPath, ordinary))
        return no_picture(picPath, why);
    SurfacePtr picture = decoded(file.get());
    // Cairo calls it exhausted memory, too, when a file is damaged.
    if (cairo_surface_status(picture.get()) == CAIRO_STATUS_NO_MEMORY) {
        require_room(4 * pixels(head));
        picture = decoded(file.get());
    }
    const cairo_status_t status = cairo_surface_status(picture.get());
    if (status == CAIRO_STATUS_SUCCESS) return picture;
    const bool damaged = status == CAIRO_STATUS_NO_MEMORY || status == CAIRO_STATUS_PNG_ERROR;
    return no_picture(picPath, damaged ? "it is damaged" : cairo_status_to_string(status));
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
