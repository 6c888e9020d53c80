#include "simulator/Simulator.h"

#include "simulator/device/Fleet.h"

namespace qm::sim {

struct Simulator::Impl {
    explicit Impl(Options options) : fleet({std::move(options)}) {}

    template <class Look> [[nodiscard]] auto look(Look at) const { return device.exchange().look(at); }

    Fleet fleet;
    Device& device = fleet.device(0);
};

Simulator::Simulator(Options options) : m_impl(std::make_unique<Impl>(std::move(options))) {}
Simulator::~Simulator() = default;

std::uint16_t Simulator::port() const { return m_impl->fleet.ports(0).tcp(); }
std::uint16_t Simulator::udp_port() const { return m_impl->fleet.ports(0).udp(); }
std::uint16_t Simulator::wifi_port() const { return m_impl->fleet.ports(0).wifi(); }

Image Simulator::screen() const {
    return m_impl->look([](const auto& controller, Now now) { return controller.screen(now); });
}

std::vector<ReceivedArea> Simulator::dynamic_areas() const {
    return m_impl->look([](const auto& controller, Now) {
        std::vector<ReceivedArea> areas;
        for (const PlayedArea& played : controller.state().areas) areas.push_back(played.area);
        return areas;
    });
}

std::vector<ByteBuffer> Simulator::payloads() const {
    return m_impl->look([](const auto& controller, Now) {
        const auto& payloads = controller.state().payloads;
        return std::vector(payloads.begin(), payloads.end());
    });
}

Snapshot Simulator::state() const {
    return m_impl->look([](const auto& controller, Now now) { return controller.snapshot(now); });
}

std::map<std::string, std::string> Simulator::program_errors() const { return state().program_errors; }

std::vector<StoredFile> Simulator::files() const {
    return m_impl->look([](const auto& controller, Now) { return controller.state().files.copies(); });
}

std::optional<StoredFile> Simulator::file(const std::string& name) const {
    for (StoredFile& file : files()) // ordinary ones come first
        if (file.name == name) return std::move(file);
    return std::nullopt;
}

std::size_t Simulator::connections() const { return m_impl->device.connections().accepted(); }
std::size_t Simulator::open_connections() const { return m_impl->device.connections().open(); }
std::size_t Simulator::requests() const { return m_impl->device.exchange().requests(); }
std::size_t Simulator::bad_frames() const { return m_impl->device.exchange().bad_frames(); }
bool Simulator::wait_idle(std::chrono::milliseconds limit) const {
    return m_impl->device.connections().wait_idle(limit);
}
void Simulator::set_fault(std::optional<Fault> fault) { m_impl->device.exchange().set_fault(fault, {}); }

} // namespace qm::sim
