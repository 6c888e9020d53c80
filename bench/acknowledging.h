#pragma once

#include "cmdPacket/command.h"

#include <vector>

namespace qm::bench {

constexpr Ouint16 kAcknowledgingType = 0x0262; // generation 6

// A controller that acknowledges whatever it is sent, without a network.
class Acknowledging : public ON_command {
  public:
    Acknowledging();
    int Send(const Ouint8* data, int len) override;
    int Recv(Ouint8* buff, int& dataLen, int iTimeout) override;

    [[nodiscard]] const std::vector<std::size_t>& frames() const {
        return m_frames;
    } // sizes of what was sent
    [[nodiscard]] const ByteBuffer& answer() const { return m_answer; }

  private:
    ByteBuffer m_answer;
    std::vector<std::size_t> m_frames;
};

} // namespace qm::bench
