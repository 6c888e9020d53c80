// A controller on loopback that runs inside the calling process, in a thread of its own:
//
//     qm::sim::Simulator sim({.type = 0x0262, .width = 64, .height = 16});
//     dynamicArea_AddAreaPic_6G("127.0.0.1", sim.port(), ...);
//     EXPECT_EQ(sim.screen().at(3, 5), (qm::sim::Rgb{255, 0, 0}));
//
// Running text is not on the screen yet when it has been sent: Options::uptime moves it.
//
// A request has been carried out before its answer is sent: when a call of the library has returned 0, the
// screen and the counters show it. Every member may be called from any thread.
#pragma once

#include "simulator/device/Options.h"

#include <memory>

namespace qm::sim {

class Simulator {
  public:
    // Listens when it returns. Throws std::invalid_argument for options out of range, std::system_error when
    // the address cannot be had, std::runtime_error when a UDP port or the store cannot.
    explicit Simulator(Options options = {});
    Simulator(const Simulator&) = delete;
    Simulator& operator=(const Simulator&) = delete;
    // Closes every connection and joins the thread.
    ~Simulator();

    [[nodiscard]] std::uint16_t port() const;
    // 0 without UDP.
    [[nodiscard]] std::uint16_t udp_port() const;
    [[nodiscard]] std::uint16_t wifi_port() const;

    // What the screen shows now.
    [[nodiscard]] Image screen() const;
    // The dynamic areas that the controller keeps, in the order in which they are drawn.
    [[nodiscard]] std::vector<ReceivedArea> dynamic_areas() const;
    // The dynamic-area payloads received (01 A7 ...), refused ones included, byte for byte, most recent last.
    // The latest 64 are kept, and fewer when they are large.
    [[nodiscard]] std::vector<ByteBuffer> payloads() const;

    // Why programs cannot be played, by their names: they are files that are not what they should be.
    [[nodiscard]] std::map<std::string, std::string> program_errors() const;

    // What the controller has been told, and what follows from it now.
    [[nodiscard]] Snapshot state() const;
    // Its whole files, ordinary ones first, in the order of their names.
    [[nodiscard]] std::vector<StoredFile> files() const;
    // The file of that name of 4 characters, an ordinary one rather than a configuration.
    [[nodiscard]] std::optional<StoredFile> file(const std::string& name) const;

    [[nodiscard]] std::size_t connections() const;      // accepted so far
    [[nodiscard]] std::size_t open_connections() const; // at this moment
    [[nodiscard]] std::size_t requests() const;         // well-formed ones so far, handshakes included
    [[nodiscard]] std::size_t bad_frames() const;       // spoilt or foreign frames, which get no answer

    // Waits until no connection is open; false when one still is after the time.
    [[nodiscard]] bool wait_idle(std::chrono::milliseconds limit = std::chrono::seconds(5)) const;

    // Sets the fault of the requests from now on, or ends it. Its count of good answers starts anew.
    void set_fault(std::optional<Fault> fault);

  private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace qm::sim
