// Any bytes as the description of a program, of areas or of a sign, or as a list of controllers: made, the
// same when it is read again, or a sentence of what is wrong. It finds no files but those beside it.
#include "described.h"
#include "sign/errors.h"

namespace qm::fuzz {
namespace {

constexpr std::string (*kReaders[])(const Identity&) = {program, areas, playlist, controllers};

std::string made(std::string (*read)(const Identity&), const Identity& controller) try {
    return read(controller);
} catch (const sign::UsageError& error) {
    return require(*error.what() != 0), error.what();
} catch (const sign::Failure& error) {
    return require(*error.what() != 0), "failed";
}

bool leads_outside(std::string_view text) {
    constexpr std::string_view kWays[] = {"..", "\"/", "\\/", "\\u002"};
    return std::ranges::any_of(kWays, [&](std::string_view way) { return text.find(way) != text.npos; });
}

} // namespace
} // namespace qm::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace qm;
    static const fuzz::DescribedFolder folder;
    const fuzz::OwnFolder::Entered entered(folder);
    if (size == 0) return 0;
    const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
    if (fuzz::leads_outside(text)) return 0;
    fuzz::write_file(fuzz::kPath, text);
    Identity controller;
    controller.type = ControllerType::of((data[0] & 4) != 0 ? 0x0051 : 0x0262);
    controller.screen = {64, 32};
    const auto read = fuzz::kReaders[data[0] % 4];
    fuzz::require(fuzz::made(read, controller) == fuzz::made(read, controller));
    return 0;
}
