// Whatever a reader of the simulator's WebSocket sends, it changes nothing, is sent whole messages, and the
// connection ends soon.
#include "WebPage.h"
#include "require.h"

#include <nlohmann/json.hpp>

namespace qm::sim {
namespace {

using fuzz::require;

// Takes a frame off the front, unless it is cut.
bool take_frame(std::string_view& bytes, std::uint8_t& head, std::string_view& payload) {
    ByteReader in({reinterpret_cast<const Ouint8*>(bytes.data()), bytes.size()});
    head = in.u8();
    std::size_t length = in.u8();
    require(length < 127); // which would be more than there is to say; servers mask nothing
    if (length == 126) {
        length = std::size_t{in.u8()} << 8U;
        length += in.u8();
    }
    if (!in.ok() || in.left() < length) return false;
    payload = bytes.substr(bytes.size() - in.left(), length);
    bytes = bytes.substr(bytes.size() - in.left() + length);
    return true;
}

void check_messages(std::string_view bytes) {
    std::uint8_t head = 0;
    for (std::string_view payload; take_frame(bytes, head, payload);) {
        const bool text = head == 0x81 && nlohmann::json::accept(payload),
                   end_or_pong = head == 0x88 || head == 0x8A;
        require(text || (head == 0x82 && payload.size() > 13) || end_or_pong);
    }
}

} // namespace
} // namespace qm::sim

// What is listened to, and what is sent.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace qm::sim;
    if (size == 0) return 0;
    static WebPage page;
    const std::string query = data[0] % 2 ? "wall" : "controller=0", sent(data + 1, data + size);
    const auto before = page.changes();
    const std::string answer =
        page.answer_to("GET /api/live?" + query + " HTTP/1.1\r\nHost: " + WebPage::kPlace +
                       "\r\nUpgrade: websocket\r\nConnection: Upgrade\r\nSec-WebSocket-Version: 13\r\n"
                       "Sec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n\r\n" +
                       sent);
    require(answer.starts_with("HTTP/1.1 101 ") && page.changes() == before);
    check_messages(std::string_view(answer).substr(answer.find("\r\n\r\n") + 4));
    return 0;
}
