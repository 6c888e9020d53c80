// Goes the first steps to a controller by itself, to tell them apart.
#pragma once

#include "Session.h"

namespace qm::ctl {

// Every step returns what it found, or throws std::runtime_error with what stands in the way.
class Probe {
  public:
    explicit Probe(const Controller& to) : m_to(to) {}
    Probe(const Probe&) = delete;
    Probe& operator=(const Probe&) = delete;
    ~Probe();

    // From which address, on which network, this host would send. Sends nothing.
    [[nodiscard]] std::string route() const;
    // Connects, for at most 3 s.
    std::string connect();
    // Asks for the controller's presence on the connection, which then ends, and waits 3 s for an answer.
    std::string shake_hands();

  private:
    void close();

    const Controller& m_to;
    int m_socket = -1;
};

} // namespace qm::ctl
