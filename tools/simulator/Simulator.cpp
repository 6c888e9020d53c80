#include "simulator/Simulator.h"

#include "simulator/Server.h"

#include <stdexcept>
#include <thread>

namespace qm::sim {
namespace {

constexpr int kLongestSide = 4096;

Options checked(Options options) {
    const auto fits = [](int side) { return side >= 1 && side <= kLongestSide; };
    if (!fits(options.width) || !fits(options.height))
        throw std::invalid_argument("the screen must have 1 to 4096 pixels in width and in height");
    if (options.color < ScreenColor::single || options.color > ScreenColor::full)
        throw std::invalid_argument("the screen colour must be 1 to 4");
    return options;
}

asio::ip::tcp::endpoint endpoint_of(const Options& options) {
    std::error_code error;
    const auto address = asio::ip::make_address_v4(options.listen, error);
    if (error) throw std::invalid_argument("the address to listen on must be a dotted IPv4 address");
    return {address, options.port};
}

} // namespace

// The context is destroyed before what its sessions use, which thus outlives them.
class Simulator::Impl {
  public:
    explicit Impl(Options options)
        : m_options(checked(std::move(options))), m_exchange(m_options), m_connections(m_options.on_closed),
          m_server(m_context, endpoint_of(m_options), m_exchange, m_connections), m_port(m_server.port()),
          m_thread([this] { run(); }) {}
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;
    ~Impl() {
        m_connections.mute();
        m_context.stop();
        m_thread.join();
    }

    // A session that ran out of memory is gone by the time its exception arrives here; the others go on.
    void run() {
        while (!m_context.stopped()) try {
                m_context.run();
            } catch (const std::bad_alloc&) {
            }
    }

    const Options m_options;
    Exchange m_exchange;
    Connections m_connections;
    asio::io_context m_context{1};
    Server m_server;
    const std::uint16_t m_port;
    std::thread m_thread;
};

Simulator::Simulator(Options options) : m_impl(std::make_unique<Impl>(std::move(options))) {}
Simulator::~Simulator() = default;

std::uint16_t Simulator::port() const { return m_impl->m_port; }
Image Simulator::screen() const { return m_impl->m_exchange.screen(); }
std::vector<DynamicArea> Simulator::dynamic_areas() const { return m_impl->m_exchange.dynamic_areas(); }
std::vector<Frame> Simulator::payloads() const { return m_impl->m_exchange.payloads(); }
std::size_t Simulator::connections() const { return m_impl->m_connections.accepted(); }
std::size_t Simulator::open_connections() const { return m_impl->m_connections.open(); }
std::size_t Simulator::requests() const { return m_impl->m_exchange.requests(); }
std::size_t Simulator::bad_frames() const { return m_impl->m_exchange.bad_frames(); }
bool Simulator::wait_idle(std::chrono::milliseconds limit) const {
    return m_impl->m_connections.wait_idle(limit);
}
void Simulator::set_fault(std::optional<Fault> fault) { m_impl->m_exchange.set_fault(fault); }

} // namespace qm::sim
