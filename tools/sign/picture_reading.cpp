#include "picture_reading.h"

#include "dithering.h"

#include <algorithm>
#include <gdk-pixbuf/gdk-pixbuf.h>
#include <memory>
#include <new>

namespace qm::sign {
namespace {

constexpr std::int64_t kMostPixels = 64'000'000;
constexpr std::size_t kPiece = 65536; // bytes for a loader at once

struct Releaser {
    void operator()(gpointer object) const { g_object_unref(object); }
    void operator()(GMappedFile* file) const { g_mapped_file_unref(file); }
    void operator()(GError* error) const { g_error_free(error); }
};
using Pixbuf = std::unique_ptr<GdkPixbuf, Releaser>;
using Loader = std::unique_ptr<GdkPixbufLoader, Releaser>;
using MappedFile = std::unique_ptr<GMappedFile, Releaser>;
using Error = std::unique_ptr<GError, Releaser>;

// The kinds whose loaders are packages of their own.
constexpr struct {
    const char *name, *kind, *package;
} kExtraLoaders[] = {{"webp", "WebP", "webp-pixbuf-loader"}, {"svg", "SVG", "librsvg2-common"}};

bool has_loader(std::string_view name) {
    GSList* const formats = gdk_pixbuf_get_formats();
    bool found = false;
    for (const GSList* at = formats; at; at = at->next) {
        const std::unique_ptr<gchar, decltype(&g_free)> its(
            gdk_pixbuf_format_get_name(static_cast<GdkPixbufFormat*>(at->data)), g_free);
        found = found || name == its.get();
    }
    g_slist_free(formats);
    return found;
}

[[noreturn]] void refuse(const std::string& why) { throw PictureError(why); }

[[noreturn]] void refuse(const GError* error) {
    if (g_error_matches(error, GDK_PIXBUF_ERROR, GDK_PIXBUF_ERROR_UNKNOWN_TYPE)) {
        std::string why = "is no picture of a known kind";
        for (const auto& [name, kind, package] : kExtraLoaders)
            if (!has_loader(name)) why += std::string("; ") + kind + " needs the package " + package;
        refuse(why);
    }
    const std::string_view text = error->message;
    refuse("is damaged: " + std::string(text.substr(0, text.find('\n'))));
}

Size size_of(const GdkPixbuf* picture) {
    return {static_cast<unsigned>(gdk_pixbuf_get_width(picture)),
            static_cast<unsigned>(gdk_pixbuf_get_height(picture))};
}

// What is to become of a picture, which its loader asks once it knows the size.
struct Request {
    Size area;
    Fit fit;
    const char* refusal = nullptr;
};

// Drawings come in the size in which they are wanted.
void choose_size(GdkPixbufLoader* loader, int width, int height, Request* request) {
    Placement wanted{0, 0, width, height};
    if (width > 0 && height > 0 && gdk_pixbuf_format_is_scalable(gdk_pixbuf_loader_get_format(loader)))
        wanted =
            place({static_cast<unsigned>(width), static_cast<unsigned>(height)}, request->area, request->fit);
    if (wanted.width <= 0 || wanted.height <= 0)
        request->refusal = "has no pixels";
    else if (wanted.width > kMostPixels / wanted.height)
        request->refusal = "has more than 64 million pixels";
    if (request->refusal)
        gdk_pixbuf_loader_set_size(loader, 0, 0);
    else if (wanted.width != width || wanted.height != height)
        gdk_pixbuf_loader_set_size(loader, static_cast<int>(wanted.width), static_cast<int>(wanted.height));
}

// Hands the file to the loader; gives what that says is wrong with it.
Error load(GdkPixbufLoader* loader, std::string_view bytes, const Request& request) {
    GError* error = nullptr;
    bool good = true;
    for (; good && !bytes.empty() && !request.refusal; bytes.remove_prefix(std::min(bytes.size(), kPiece)))
        good = gdk_pixbuf_loader_write(loader, reinterpret_cast<const guchar*>(bytes.data()),
                                       std::min(bytes.size(), kPiece), &error);
    (void)gdk_pixbuf_loader_close(loader, error ? nullptr : &error);
    return Error(error);
}

// Of a whole JPEG file, an end follows the headers, in which a small picture with an end of its own may lie.
bool has_jpeg_end(std::string_view bytes) {
    const auto byte = [bytes](std::size_t at) { return static_cast<unsigned char>(bytes[at]); };
    std::size_t at = 2;
    while (at + 4 <= bytes.size() && byte(at) == 0xFF && byte(at + 1) != 0xDA)
        at += byte(at + 1) == 0xFF ? 1U : 2U + (byte(at + 2) << 8U | byte(at + 3));
    return bytes.find("\xFF\xD9", at) != std::string_view::npos;
}

// Loaders fill up what a file that was cut off lacks.
bool is_cut_off(std::string_view bytes) {
    if (bytes.starts_with("\xFF\xD8")) return !has_jpeg_end(bytes);
    if (bytes.starts_with("\x89PNG")) return bytes.rfind("IEND") == std::string_view::npos;
    if (!bytes.starts_with("RIFF") || bytes.size() < 8) return false;
    std::size_t length = 0;
    for (std::size_t i = 0; i < 4; ++i)
        length |= std::size_t{static_cast<unsigned char>(bytes[4 + i])} << 8 * i;
    return bytes.size() - 8 < length;
}

// The picture, or the first one of several, turned as its camera was held.
Pixbuf decode(const std::string& path, const Size& area, Fit fit) {
    const MappedFile file(g_mapped_file_new(path.c_str(), FALSE, nullptr));
    if (!file) refuse("cannot be read");
    const std::string_view bytes(g_mapped_file_get_contents(file.get()),
                                 g_mapped_file_get_length(file.get()));
    Request request{area, fit};
    const Loader loader(gdk_pixbuf_loader_new());
    g_signal_connect(loader.get(), "size-prepared", G_CALLBACK(choose_size), &request);
    const Error wrong = load(loader.get(), bytes, request);
    if (request.refusal) refuse(request.refusal);
    if (is_cut_off(bytes)) refuse("is cut off");
    if (wrong) refuse(wrong.get());
    GdkPixbuf* const picture = gdk_pixbuf_loader_get_pixbuf(loader.get());
    if (!picture) refuse("has no pixels");
    Pixbuf upright(gdk_pixbuf_apply_embedded_orientation(picture));
    if (!upright) throw std::bad_alloc();
    return upright;
}

Pixbuf fitted(const GdkPixbuf* picture, const Size& area, Fit fit) {
    Pixbuf canvas(gdk_pixbuf_new(GDK_COLORSPACE_RGB, FALSE, 8, static_cast<int>(area.width),
                                 static_cast<int>(area.height)));
    if (!canvas) throw std::bad_alloc();
    gdk_pixbuf_fill(canvas.get(), 0);
    const Size size = size_of(picture);
    const Placement placed = place(size, area, fit), part = visible(placed, area);
    // What is smaller than a sign and enlarged by whole numbers was drawn dot by dot, and keeps its dots.
    const bool dots = placed.width % size.width == 0 && placed.height % size.height == 0;
    gdk_pixbuf_composite(picture, canvas.get(), static_cast<int>(part.x), static_cast<int>(part.y),
                         static_cast<int>(part.width), static_cast<int>(part.height),
                         static_cast<double>(placed.x), static_cast<double>(placed.y),
                         static_cast<double>(placed.width) / size.width,
                         static_cast<double>(placed.height) / size.height,
                         dots ? GDK_INTERP_NEAREST : GDK_INTERP_BILINEAR, 255);
    return canvas;
}

std::string png_of(GdkPixbuf* picture) {
    gchar* bytes = nullptr;
    gsize size = 0;
    if (!gdk_pixbuf_save_to_buffer(picture, &bytes, &size, "png", nullptr, nullptr)) throw std::bad_alloc();
    const std::unique_ptr<gchar, decltype(&g_free)> owner(bytes, g_free);
    return {bytes, size};
}

} // namespace

void require_decodable(const std::string& path, Fit fit) { (void)decode(path, {16, 16}, fit); }

std::string fitted_png(const std::string& path, const Size& area, const PictureFit& how,
                       E_ScreenColor_G56 screen) {
    if (area.width > kMostPixels / area.height) refuse("is to fill more than 64 million pixels");
    const Pixbuf canvas = fitted(decode(path, area, how.fit).get(), area, how.fit);
    if (how.dither)
        dither({gdk_pixbuf_get_pixels(canvas.get()), area.width, area.height,
                static_cast<std::size_t>(gdk_pixbuf_get_rowstride(canvas.get()))},
               screen);
    return png_of(canvas.get());
}

} // namespace qm::sign
