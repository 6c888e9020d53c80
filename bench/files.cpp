// Writing a file: what the library itself takes, without a network.
#include "acknowledging.h"
#include "compare.h"
#include "silence.h"

#include <chrono>
#include <memory>

namespace qm::bench {
namespace {

constexpr std::size_t kFile = 1 << 20, kBlock = 1024;
constexpr std::chrono::microseconds kMark{40}; // of processor a block

void spin(std::chrono::microseconds time) {
    const auto end = std::chrono::steady_clock::now() + time;
    while (std::chrono::steady_clock::now() < end) {
    }
}

} // namespace

void files() {
    const auto content = std::make_shared<const ByteBuffer>(random_bytes(kFile));
    const auto write = [content] {
        const Silence silence;
        Acknowledging controller;
        const int code = controller.hv_cmd_ofs_writeFile({"F001", 0, 1, *content});
        require(code == QM_OK && controller.frames().size() == kFile / kBlock + 1, "file write: refused");
    };
    write();
    compare_speed("1 MiB file in blocks of 1,024, no network", kFile, write,
                  {{"40 us a block", [] { spin(kMark * (kFile / kBlock)); }, 1}});
}

} // namespace qm::bench
