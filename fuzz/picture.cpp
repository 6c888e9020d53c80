// Any bytes as a picture's file: the library draws it or says why not, and so do the tools, which make a PNG
// of it that the library draws. What is declared huge takes no memory.
#include "OwnFolder.h"
#include "qm_sdk_dual.hpp"
#include "require.h"
#include "sealed_png.h"
#include "sign/picture_reading.h"

namespace qm::fuzz {
namespace {

constexpr char kFile[] = "picture", kFitted[] = "fitted";
constexpr Rect kRect{0, 0, 40, 24};

bool told(const Result<>& result) { return result || !result.error().reason.empty(); }

// Whether it is drawn as a page, perhaps in a border of it.
bool draw(const char* path, const Screen& screen, bool bordered) {
    Program program(screen);
    require(program.set_rules(1) && program.add_area(0, ePicturesArea, kRect));
    if (bordered)
        require(told(program.set_border({.picture = path})) &&
                told(program.set_area_border(0, {.picture = path})));
    require(bool(program.add_picture(0, 1, path, {})));
    const bool drawn = Program::has_page(0, 0);
    require(drawn == (*qm_last_error() == 0));
    const auto first = program.files(), again = program.files();
    require(first && again && first->back().bytes == again->back().bytes);
    return drawn;
}

void fit(sign::PictureFit how, E_ScreenColor_G56 color) try {
    const std::string png = sign::fitted_png(kFile, {kRect.width, kRect.height}, how, color);
    write_file(kFitted, png);
    require(draw(kFitted, {}, false));
} catch (const sign::PictureError& error) {
    require(*error.what() != 0);
}

} // namespace
} // namespace qm::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace qm;
    static const fuzz::OwnFolder folder;
    const fuzz::OwnFolder::Entered entered(folder);
    ByteReader in({data, size});
    const Ouint8 how = in.u8();
    const std::string file(in.rest().begin(), in.rest().end());
    fuzz::write_file(fuzz::kFile, how & 64 ? fuzz::sealed_png(file) : file);
    const auto color = static_cast<E_ScreenColor_G56>(1 + (how >> 1 & 3));
    if (how & 1)
        fuzz::draw(fuzz::kFile, {.generation = how & 8 ? 5U : 6U, .color = color}, (how & 16) != 0);
    else
        fuzz::fit({static_cast<sign::Fit>(how >> 3 & 3), (how & 32) != 0}, color);
    return 0;
}
