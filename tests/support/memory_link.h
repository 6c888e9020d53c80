// A transport without a network: keeps what is sent and plays back what a controller would answer.
#pragma once

#include "cmdPacket/command.h"

#include <deque>

namespace qm::test {

class MemoryLink : public ON_command {
  public:
    explicit MemoryLink(Ouint16 controllerType = 0x0262) { m_DeviceType = controllerType; }

    int Send(const Ouint8* data, int len) override {
        if (pieces.size() == sends_until_failure) return QM_FAILED;
        pieces.emplace_back(data, data + len);
        return QM_OK;
    }

    int Recv(Ouint8* buff, int& dataLen, int iTimeout) override {
        capacity = dataLen;
        timeout = iTimeout;
        if (answers.empty()) return QM_FAILED;
        dataLen = static_cast<int>(std::min(answers.front().size(), static_cast<std::size_t>(capacity)));
        std::copy_n(answers.front().begin(), dataLen, buff);
        answers.pop_front();
        return QM_OK;
    }

    [[nodiscard]] ByteBuffer sent() const {
        ByteBuffer all;
        for (const ByteBuffer& piece : pieces) all.insert(all.end(), piece.begin(), piece.end());
        return all;
    }

    std::size_t sends_until_failure = static_cast<std::size_t>(-1);
    std::vector<ByteBuffer> pieces;
    std::deque<ByteBuffer> answers;  // without one, a receive fails
    int capacity = -1, timeout = -1; // of the latest receive
};

} // namespace qm::test
