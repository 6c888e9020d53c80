#include "acknowledging.h"

namespace qm::bench {

Acknowledging::Acknowledging() {
    m_DeviceType = kAcknowledgingType;
    // An answer of generation 6: link header, then group 0xA0, code 0.
    LedHVPacket codec;
    codec.m_DeviceType = m_DeviceType;
    const Ouint8 application[] = {0, hv_GRP_Global, hv_ACK, 0, 0, 0, 0, 0, 0};
    const Bytes answer = codec.Pack6_OnlyHeader(application);
    m_answer.assign(answer.begin(), answer.end());
}

int Acknowledging::Send(const Ouint8*, int len) {
    m_frames.push_back(static_cast<std::size_t>(len));
    return QM_OK;
}

int Acknowledging::Recv(Ouint8* buff, int& dataLen, int) {
    std::copy(m_answer.begin(), m_answer.end(), buff);
    dataLen = static_cast<int>(m_answer.size());
    return QM_OK;
}

} // namespace qm::bench
