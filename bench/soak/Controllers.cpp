#include "Controllers.h"

#include "simulator/Simulator.h"

#include <algorithm>
#include <atomic>
#include <csignal>
#include <memory>
#include <random>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace qm::test {
namespace {

using namespace std::chrono_literals;
using Devices = std::vector<std::unique_ptr<sim::Simulator>>;

constexpr auto kBetweenFaults = 10ms;

sim::Options options(std::size_t place, const std::string& store) {
    sim::Options made{
        .type = static_cast<std::uint16_t>(Controllers::is_of_generation_5(place) ? 0x0051 : 0x0262),
        .width = kWidth,
        .height = kHeight,
        .store = store};
    made.clock = [] { return sim::LocalSeconds{std::chrono::days{20000}}; }; // time stands still
    made.uptime = [] { return 0ms; };
    return made;
}

std::string store_of(const std::string& folder, std::size_t place) {
    return folder + "/" + std::to_string(place);
}

std::optional<sim::Fault> random_fault(std::mt19937& random) {
    if (random() % 2 == 0) return std::nullopt;
    auto kind = static_cast<sim::FaultKind>(random() % (static_cast<unsigned>(sim::FaultKind::delay) + 1));
    if (kind == sim::FaultKind::silence && random() % 4 != 0)
        kind = sim::FaultKind::close; // silence takes long
    return sim::Fault{
        .kind = kind, .after = static_cast<unsigned>(random() % 7), .delay = (1 + random() % 30) * 1ms};
}

void cause_faults(const Devices& devices, unsigned seed, const std::atomic<bool>& on) {
    for (std::mt19937 random(seed); on; std::this_thread::sleep_for(kBetweenFaults))
        devices[random() % kControllers]->set_fault(random_fault(random));
    for (std::size_t i = 0; i < kControllers; ++i) devices[i]->set_fault(std::nullopt);
}

// Files without their numbers of versions.
std::string listing(const std::vector<sim::StoredFile>& files) {
    std::string text;
    for (const sim::StoredFile& file : files)
        text += " " + file.name + "," + std::to_string(file.type) + "," + std::to_string(file.data.size()) +
                "," + std::to_string(file.data_crc) + "," + std::to_string(file.crc);
    return text;
}

std::string kept_difference(const sim::Simulator& one, const sim::Simulator& twin) {
    const sim::ControllerState settings = one.state(), others = twin.state();
    std::string text;
    if (settings != others) text += " settings;";
    if (listing(one.files()) != listing(twin.files()))
        text += " files:" + listing(one.files()) + " instead of" + listing(twin.files()) + ";";
    return text;
}

std::string difference(const sim::Simulator& one, const sim::Simulator& twin) {
    std::string text = kept_difference(one, twin);
    if (one.screen() != twin.screen()) text += " screen;";
    if (one.dynamic_areas().size() != twin.dynamic_areas().size()) text += " number of areas;";
    return text;
}

std::string compare(const Devices& devices, const std::string& folder) {
    std::string all;
    for (std::size_t i = 0; i < kControllers; ++i) {
        const sim::Simulator& twin = *devices[kControllers + i];
        std::string text = difference(*devices[i], twin);
        const sim::Simulator restarted(options(i, store_of(folder, i)));
        if (const std::string kept = kept_difference(restarted, twin); !kept.empty())
            text += " store:" + kept;
        if (!text.empty()) all += "controller " + std::to_string(i) + " differs:" + text + "\n";
    }
    return all;
}

[[noreturn]] void serve(int line, unsigned seed, const std::string& folder) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    Devices devices;
    for (std::size_t i = 0; i < 2 * kControllers; ++i)
        devices.push_back(std::make_unique<sim::Simulator>(
            options(i % kControllers, i < kControllers ? store_of(folder, i) : std::string())));
    for (const auto& device : devices) {
        const Ouint16 port = device->port();
        (void)!::write(line, &port, sizeof port);
    }
    std::atomic<bool> on = true;
    std::thread chaos([&] { cause_faults(devices, seed, on); });
    for (char command; ::read(line, &command, 1) == 1;) {
        on = false;
        if (chaos.joinable()) chaos.join();
        const std::string answer = (command == 'c' ? compare(devices, folder) : "") + '\0';
        (void)!::write(line, answer.data(), answer.size());
    }
    on = false;
    if (chaos.joinable()) chaos.join();
    ::_exit(0);
}

} // namespace

Controllers::Controllers(unsigned seed, const std::string& folder) {
    int ends[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        throw std::runtime_error("no socket");
    m_process = ::fork();
    if (m_process == 0) {
        ::close(ends[0]);
        serve(ends[1], seed, folder);
    }
    ::close(ends[1]);
    m_line = ends[0];
    for (Ouint16 port;
         m_ports.size() < 2 * kControllers && ::read(m_line, &port, sizeof port) == sizeof port;)
        m_ports.push_back(port);
}

Controllers::~Controllers() {
    ::close(m_line);
    ::waitpid(m_process, nullptr, 0);
}

std::string Controllers::tell(char command) {
    std::string answer;
    if (::write(m_line, &command, 1) != 1) return "the controllers have died\n";
    for (char next;; answer += next) {
        if (::read(m_line, &next, 1) != 1) return "the controllers have died\n";
        if (next == 0) return answer;
    }
}

} // namespace qm::test
