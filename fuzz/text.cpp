// Any bytes as the text of a program, in any size and style: pages as many as measured, in files that the
// simulator reads, the same when they are made again; or -1 and a reason.
#include "OwnFolder.h"
#include "WantedText.h"
#include "require.h"
#include "simulator/playback/program_parser.h"

namespace qm::fuzz {
namespace {

using Files = std::vector<File>;

bool is_read(const WantedText& wanted, const Files& files, std::size_t pages) {
    const sim::PixelFormat format{sim::packing_of(wanted.screen.type),
                                  static_cast<sim::ScreenColor>(wanted.screen.color)};
    const auto read = files.size() == 1 ? sim::parse_program(files[0].bytes, format)
                                        : sim::parse_program(files[1].bytes, files[0].bytes, format);
    const auto* program = std::get_if<sim::StoredProgram>(&read);
    return program && program->areas.at(0).pages.size() == pages;
}

// Without files, when they cannot be.
Files built(const WantedText& wanted) {
    Program program(wanted.screen);
    require(program.set_rules(1) && program.add_area(0, ePicturesArea, wanted.rect));
    const auto added = program.add_text(0, wanted.text, wanted.style, wanted.effect, wanted.rect);
    require(added ? added.error().reason.empty()
                  : added.status() == QM_FAILED && !added.error().reason.empty());
    if (!added) return {};
    getPageData page{};
    const bool first = program_pictureAreaGetOnePage(0, 0, &page) == QM_OK;
    require(first == (page.allPageNub > 0) && first == (page.pageLen > 0) &&
            first == (*qm_last_error() == 0));
    require(!Program::has_page(0, page.allPageNub) && !Program::has_page(0, -1));
    const auto measured = measure(wanted.text, wanted.style, wanted.rect, wanted.effect);
    require(measured && (wanted.text.empty() || measured->pages == page.allPageNub));
    const Files files = program.files().value();
    require(is_read(wanted, files, page.allPageNub));
    return files;
}

} // namespace
} // namespace qm::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace qm::fuzz;
    static const OwnFolder folder;
    const OwnFolder::Entered entered(folder); // where generation 5 leaves a copy
    const WantedText wanted(qm::ByteReader({data, size}));
    const auto same = [](const qm::File& a, const qm::File& b) {
        return a.name == b.name && a.bytes == b.bytes;
    };
    require(std::ranges::equal(built(wanted), built(wanted), same));
    return 0;
}
