// Any bytes as the file of a font: the text is drawn in it, or in another font, the same when it is drawn
// again; never is a page larger than its rectangle.
#include "OwnFolder.h"
#include "qm_sdk_dual.hpp"
#include "require.h"
#include "support/bytes.h"

namespace qm::fuzz {
namespace {

// Of few characters and sizes, since to find another font for one takes longer than all else.
constexpr char kText[] = "Ag1 \xC3\xA9 e\xCC\x81 fi A";
constexpr Ouint16 kPoints[] = {12, 9, 6, 60};
constexpr Rect kRect{0, 0, 64, 32};

std::vector<File> built(const TextStyle& style) {
    Program program{Screen()};
    require(program.set_rules(1) && program.add_area(0, ePicturesArea, kRect));
    const auto added = program.add_text(0, kText, style, {}, kRect);
    require(added || !added.error().reason.empty());
    const auto measured = measure(kText, style, kRect);
    const auto pages = program.pages(0);
    require(measured && (!added || measured->pages == pages.value().size()));
    return program.files().value();
}

} // namespace
} // namespace qm::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace qm;
    static const fuzz::OwnFolder folder;
    static unsigned number = 0; // since the library keeps what it has opened
    const fuzz::OwnFolder::Entered entered(folder);
    ByteReader in({data, size});
    TextStyle style;
    style.size = fuzz::kPoints[in.u8() % std::size(fuzz::kPoints)];
    const Ouint8 flags = in.u8();
    style.bold = (flags & 1) != 0;
    style.italic = (flags & 2) != 0;
    style.vertical = (flags & 4) != 0;
    style.font = std::to_string(++number) + ".ttf";
    fuzz::write_file(style.font, {reinterpret_cast<const char*>(in.rest().data()), in.left()});
    const auto first = fuzz::built(style), again = fuzz::built(style);
    fuzz::require(first.at(0).bytes == again.at(0).bytes && first.at(1).bytes == again.at(1).bytes);
    std::filesystem::remove(style.font);
    return 0;
}
