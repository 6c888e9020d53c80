// Writing a file: what the library itself takes, without a network.
#include "compare.h"
#include "silence.h"

#include "cmdPacket/command.h"

#include <chrono>
#include <memory>

namespace qm::bench {
namespace {

constexpr std::size_t kFile = 1 << 20, kBlock = 1024;
constexpr std::chrono::microseconds kMark{40}; // of processor a block

// A controller that acknowledges whatever it is sent.
class Acknowledging : public ON_command {
  public:
    Acknowledging() {
        m_DeviceType = 0x0262;
        // An answer of generation 6: link header, then group 0xA0, code 0.
        LedHVPacket codec;
        codec.m_DeviceType = m_DeviceType;
        const Ouint8 application[] = {0, hv_GRP_Global, hv_ACK, 0, 0, 0, 0, 0, 0};
        codec.Pack6_OnlyHeader(application, m_ack);
    }
    int Send(const Ouint8*, int len) override {
        m_sent += static_cast<std::size_t>(len);
        return QM_OK;
    }
    int Recv(Ouint8* buff, int& dataLen, int) override {
        std::copy(m_ack.begin(), m_ack.end(), buff);
        dataLen = static_cast<int>(m_ack.size());
        return QM_OK;
    }
    [[nodiscard]] std::size_t sent() const { return m_sent; }

  private:
    Frame m_ack;
    std::size_t m_sent = 0;
};

void spin(std::chrono::microseconds time) {
    const auto end = std::chrono::steady_clock::now() + time;
    while (std::chrono::steady_clock::now() < end) {
    }
}

} // namespace

void files() {
    const auto content = std::make_shared<const Frame>(random_bytes(kFile));
    const auto write = [content] {
        const Silence silence;
        Acknowledging controller;
        const int code = controller.hv_cmd_ofs_writeFile({"F001", 0, 1, *content});
        require(code == QM_OK && controller.sent() > kFile, "file write: refused");
    };
    write();
    compare_speed("1 MiB file in blocks of 1,024, no network", kFile, write,
                  {{"40 us a block", [] { spin(kMark * (kFile / kBlock)); }}});
}

} // namespace qm::bench
