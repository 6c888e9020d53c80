#include "film/film.h"

#include "simulator/Simulator.h"
#include "simulator/show/GifWriter.h"
#include "simulator/show/picture.h"

#include <atomic>
#include <stdexcept>

namespace qm::film {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kFrame{40}; // shorter ones make files large, and can hardly be told apart

// Its time stands still unless it is set.
class Stage {
  public:
    Stage(const Scene& scene, std::chrono::local_seconds begin)
        : m_begin(begin), m_simulator(options(scene)) {
        const Controller controller("127.0.0.1", m_simulator.port());
        require(controller.upload(scene.files));
        static constexpr std::optional<ProgramNumbers> kAtOnce;
        if (!scene.areas.empty()) require(controller.show(scene.areas, scene.screen, kAtOnce));
        for (const auto& [name, error] : m_simulator.program_errors())
            throw std::runtime_error(name + " cannot be played: " + error);
    }

    void set(milliseconds played) { m_played = played; }
    [[nodiscard]] sim::Image picture() const { return m_simulator.screen(); }

  private:
    static void require(const Result<>& done) {
        if (!done) throw std::runtime_error(done.error().text());
    }
    sim::Options options(const Scene& scene) {
        sim::Options options;
        options.type = scene.screen.type;
        options.width = static_cast<int>(scene.screen.size.width);
        options.height = static_cast<int>(scene.screen.size.height);
        options.color = static_cast<sim::ScreenColor>(scene.screen.color);
        options.uptime = [this] { return m_played.load(); };
        options.clock = [this] {
            return m_begin + std::chrono::duration_cast<std::chrono::seconds>(m_played.load());
        };
        return options;
    }

    const std::chrono::local_seconds m_begin;
    std::atomic<milliseconds> m_played{milliseconds(0)}; // the simulator's thread looks, too
    sim::Simulator m_simulator;
};

} // namespace

std::string gif_of(const Scene& scene, std::chrono::seconds length, std::chrono::local_seconds begin,
                   unsigned scale) {
    Stage stage(scene, begin);
    std::string file;
    sim::GifWriter gif([&](std::span<const std::uint8_t> bytes) {
        file.append(bytes.begin(), bytes.end());
        return true;
    });
    const auto at = [](milliseconds played) { return sim::GifWriter::Time(played); };
    std::optional<sim::Image> shown;
    for (milliseconds played{0}; played < length; played += kFrame) {
        stage.set(played);
        sim::Image picture = stage.picture();
        if (picture == shown) continue;
        gif.add(std::make_shared<const sim::Image>(led_panel(picture, static_cast<int>(scale))), at(played));
        shown = std::move(picture);
    }
    gif.finish(at(length));
    return file;
}

} // namespace qm::film
