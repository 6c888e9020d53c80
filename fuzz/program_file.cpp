// Program files are played or refused in words, whatever is in them; a picture has the screen's size, is the
// same at the same moment, and stays until it is said to change.
#include "global.h"
#include "require.h"
#include "screens.h"
#include "simulator/playback/ProgramPlayer.h"
#include "simulator/playback/program_parser.h"

namespace qm::sim {
namespace {

// As if nothing had happened to it on its way.
ByteBuffer sealed(Bytes body) {
    ByteBuffer file(body.begin(), body.end());
    ByteWriter(file).u32(calc_crc32(body));
    return file;
}

// The length of the program file, that, and the data file; of generation 5 the program file alone.
ParsedProgram parse(const Model& model, ByteReader in) {
    const auto& [type, screen, search] = model;
    if (generation_of(type) == Generation::five) return parse_program(sealed(in.rest()), screen.format);
    const std::size_t length = in.u16();
    const Bytes program = in.bytes(std::min(length, in.left()));
    return parse_program(sealed(program), sealed(in.rest()), screen.format);
}

void play(const ScreenShape& screen, StoredProgram program) {
    const auto has_clock = [](const ProgramArea& area) { return area.clock.has_value(); };
    const bool steady = std::ranges::none_of(program.areas, has_clock);
    const ProgramPlayer player(program, screen), other(std::move(program), screen);
    Milliseconds at{0};
    for (int i = 0; i < 8; ++i) {
        const Moment now{at, fuzz::day() + std::chrono::floor<std::chrono::seconds>(at)};
        const Image picture = player.picture(at, now);
        fuzz::require(picture == other.picture(at, now) && picture.rgb.size() == std::size_t{64} * 16 * 3);
        const auto next = player.next_picture(at);
        fuzz::require(!next || *next > at);
        const Milliseconds last = (next ? *next : at + player.once()) - Milliseconds(1);
        fuzz::require(!steady || picture == player.picture(last, {last, now.clock}));
        at = i == 5 ? player.once() : last + Milliseconds(1);
    }
}

} // namespace
} // namespace qm::sim

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    qm::ByteReader in({data, size});
    const auto model = qm::fuzz::model_of(in.u8());
    auto parsed = qm::sim::parse(model, in);
    const auto* const words = std::get_if<std::string>(&parsed);
    if (words)
        qm::fuzz::require(words->size() > 10 && words->size() < 200);
    else
        qm::sim::play(model.screen, std::get<qm::sim::StoredProgram>(std::move(parsed)));
    return 0;
}
