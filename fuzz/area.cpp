// Dynamic areas of both generations are read whole or refused; what they show is the same at the same moment,
// and stays until it is said to change.
#include "require.h"
#include "screens.h"
#include "simulator/playback/PlayedArea.h"

namespace qm::sim {
namespace {

using fuzz::require;

std::vector<PlayedArea> begin(const std::vector<ReceivedArea>& areas, PixelFormat format) {
    std::vector<PlayedArea> played;
    for (const ReceivedArea& area : areas) played.emplace_back(area, format, Milliseconds{0});
    return played;
}

Image picture(const ScreenShape& screen, std::span<const PlayedArea> areas, Milliseconds at) {
    Image image(screen.width, screen.height);
    draw(image, areas, at, "P007");
    return image;
}

// Moments from one change to the next, and what is shown until then.
void play(const ScreenShape& screen, const std::vector<ReceivedArea>& areas) {
    const auto played = begin(areas, screen.format), again = begin(areas, screen.format);
    Milliseconds at{0};
    for (int i = 0; i < 6; ++i) {
        const Image shown = picture(screen, played, at);
        require(shown == picture(screen, again, at));
        const auto next = next_change(played, at, "P007");
        require(!next || *next > at);
        at = next.value_or(at + std::chrono::hours(24));
        require(shown == picture(screen, played, at - Milliseconds(1)));
    }
}

} // namespace
} // namespace qm::sim

// The controller and the payload.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const auto [type, screen, search] = qm::fuzz::model_of(data[0]);
    const qm::Bytes payload(data + 1, size - 1);
    const auto parsed = qm::generation_of(type) == qm::Generation::five
                            ? qm::sim::parse_dynamic_area_5(payload)
                            : qm::sim::parse_dynamic_areas(payload);
    const auto* const areas = std::get_if<std::vector<qm::sim::ReceivedArea>>(&parsed);
    if (areas) qm::sim::play(screen, *areas);
    return 0;
}
