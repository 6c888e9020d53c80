#include "simulator/Simulator.h"

#include "simulator/Exchange.h"
#include "simulator/wire/Server.h"
#include "simulator/wire/UdpServer.h"

#include <boost/asio/post.hpp>
#include <new>
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

asio::ip::address_v4 address_of(const std::string& text) {
    NetworkError error;
    auto address = asio::ip::make_address_v4(text, error);
    if (error) throw std::invalid_argument("the address to listen on must be a dotted IPv4 address");
    return address;
}

// Answers every frame of a datagram.
std::vector<Datagram> answer_frames(Exchange& exchange, Bytes input) {
    std::vector<Datagram> answers;
    FrameSplitter splitter(input.size());
    while (const auto frame = splitter.next(input)) {
        Delivery delivery = exchange.answer(*frame);
        if (!delivery.bytes.empty()) answers.push_back({std::move(delivery.bytes), delivery.late});
    }
    return answers;
}

std::vector<Datagram> answer_text(Exchange& exchange, Bytes input) {
    const std::string answer = exchange.ask_wifi({reinterpret_cast<const char*>(input.data()), input.size()});
    return {{ByteBuffer(answer.begin(), answer.end())}};
}

} // namespace

// The order of the members counts: the context, in which the connections live, goes before what they use.
class Simulator::Impl {
  public:
    explicit Impl(Options options)
        : m_options(checked(std::move(options))), m_exchange(m_options), m_connections(m_options.on_closed),
          m_server(m_context, {address_of(m_options.listen), m_options.port}, m_exchange, m_connections),
          m_port(m_server.port()) {
        open_udp(m_udp, m_options.udp, answer_frames);
        open_udp(m_wifi, m_options.wifi, answer_text);
        m_udp_port = m_udp ? m_udp->port() : std::uint16_t{0};
        m_wifi_port = m_wifi ? m_wifi->port() : std::uint16_t{0};
        asio::post(m_context, [this] { tick(); });
        m_thread = std::thread([this] { run(); });
    }
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;
    ~Impl() {
        m_connections.mute();
        m_context.stop();
        m_thread.join();
    }

    void open_udp(std::unique_ptr<UdpServer>& server, std::optional<std::uint16_t> port,
                  std::vector<Datagram> (*handler)(Exchange&, Bytes)) {
        if (!port) return;
        try {
            const asio::ip::udp::endpoint endpoint(address_of(m_options.udp_listen), *port);
            server = std::make_unique<UdpServer>(
                m_context, endpoint, [this, handler](Bytes input) { return handler(m_exchange, input); });
        } catch (const std::system_error& error) {
            throw std::runtime_error("cannot listen on UDP " + m_options.udp_listen + ":" +
                                     std::to_string(*port) + ": " + error.code().message());
        }
    }

    // Programs change the screen without being asked to.
    void tick() {
        Milliseconds wait = std::chrono::seconds(1);
        try {
            wait = m_exchange.tick();
        } catch (const std::bad_alloc&) { // a later picture may find room again
        }
        m_timer.expires_after(wait);
        m_timer.async_wait([this](NetworkError error) {
            if (!error) tick();
        });
    }

    // A connection that ran out of memory is gone by the time its exception arrives here; the others go on.
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
    asio::steady_timer m_timer{m_context};
    Server m_server;
    const std::uint16_t m_port;
    std::unique_ptr<UdpServer> m_udp, m_wifi;
    std::uint16_t m_udp_port = 0, m_wifi_port = 0;
    std::thread m_thread;
};

Simulator::Simulator(Options options) : m_impl(std::make_unique<Impl>(std::move(options))) {}
Simulator::~Simulator() = default;

std::uint16_t Simulator::port() const { return m_impl->m_port; }
std::uint16_t Simulator::udp_port() const { return m_impl->m_udp_port; }
std::uint16_t Simulator::wifi_port() const { return m_impl->m_wifi_port; }

Image Simulator::screen() const {
    return m_impl->m_exchange.look([](const auto& controller, Now now) { return controller.screen(now); });
}

std::vector<ReceivedArea> Simulator::dynamic_areas() const {
    return m_impl->m_exchange.look([](const auto& controller, Now) {
        std::vector<ReceivedArea> areas;
        for (const PlayedArea& played : controller.state().areas) areas.push_back(played.area);
        return areas;
    });
}

std::vector<ByteBuffer> Simulator::payloads() const {
    return m_impl->m_exchange.look([](const auto& controller, Now) {
        const auto& payloads = controller.state().payloads;
        return std::vector(payloads.begin(), payloads.end());
    });
}

Snapshot Simulator::state() const {
    return m_impl->m_exchange.look([](const auto& controller, Now now) { return controller.snapshot(now); });
}

std::map<std::string, std::string> Simulator::program_errors() const { return state().program_errors; }

std::vector<StoredFile> Simulator::files() const {
    return m_impl->m_exchange.look(
        [](const auto& controller, Now) { return controller.state().files.copies(); });
}

std::optional<StoredFile> Simulator::file(const std::string& name) const {
    for (StoredFile& file : files()) // ordinary ones come first
        if (file.name == name) return std::move(file);
    return std::nullopt;
}

std::size_t Simulator::connections() const { return m_impl->m_connections.accepted(); }
std::size_t Simulator::open_connections() const { return m_impl->m_connections.open(); }
std::size_t Simulator::requests() const { return m_impl->m_exchange.requests(); }
std::size_t Simulator::bad_frames() const { return m_impl->m_exchange.bad_frames(); }
bool Simulator::wait_idle(std::chrono::milliseconds limit) const {
    return m_impl->m_connections.wait_idle(limit);
}
void Simulator::set_fault(std::optional<Fault> fault) { m_impl->m_exchange.set_fault(fault); }

} // namespace qm::sim
