// Stands between those who broadcast and a controller, or a Wi-Fi module, and cuts an answer.
#pragma once

#include "Replay.h"

namespace qm::test {

class CuttingRelay {
  public:
    // Takes what comes to the first port to the second one of 127.0.0.1.
    CuttingRelay(Ouint16 port, Ouint16 controller);
    ~CuttingRelay();
    CuttingRelay(const CuttingRelay&) = delete;
    CuttingRelay& operator=(const CuttingRelay&) = delete;

    // For the next call. Of an answer behind which there is to be silence nothing is sent.
    void begin(std::optional<Cut> cut);
    // Of the answers since then.
    [[nodiscard]] std::vector<std::size_t> lengths();

  private:
    void relay();
    std::optional<std::size_t> length_sent(std::size_t whole);

    std::mutex m_mutex; // guards the next two
    std::vector<std::size_t> m_lengths;
    std::optional<Cut> m_cut;
    Descriptor m_controller, m_socket;
    std::thread m_thread;
};

} // namespace qm::test
