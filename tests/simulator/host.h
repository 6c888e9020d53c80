// A host that sends bare commands and takes the answers apart.
#pragma once

#include "client.h"
#include "samples.h"

#include "hex.h"
#include "simulator/Simulator.h"

namespace qm::sim::test {

using qm::test::hex;
using qm::test::is_hex;

struct Answer {
    std::uint8_t group = 0, cmd = 0;
    std::uint16_t error = 0;
    ByteBuffer payload;

    [[nodiscard]] bool acknowledged() const { return group == 0xA0 && cmd == 0 && error == 0; }
    [[nodiscard]] bool refused() const { return group == 0xA0 && cmd == 1 && error != 0; }
};

class Host {
  public:
    explicit Host(const Simulator& sim) : m_client(sim.port()) {}

    Answer ask(std::uint8_t group, std::uint8_t cmd, Bytes payload);
    Answer file(std::uint8_t cmd, std::string_view payload) { return ask(0xA1, cmd, hex(payload)); }
    Answer control(std::uint8_t cmd, std::string_view payload) { return ask(0xA2, cmd, hex(payload)); }
    Answer network(std::uint8_t cmd, std::string_view payload) { return ask(0xA4, cmd, hex(payload)); }

    // Writes a whole file as one block: 0, or the error value.
    unsigned write(const std::string& name, Bytes data, std::uint8_t type = 0, bool overwrite = true,
                   bool configuration = false);

  private:
    Client m_client;
};

// Takes a frame apart that comes over UDP or TCP.
Answer answer_in(Bytes frame);
ByteBuffer command_frame(std::uint8_t group, std::uint8_t cmd, Bytes payload);

} // namespace qm::sim::test
