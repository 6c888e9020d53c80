#include "simulator/web/LiveSession.h"

#include "simulator/web/access.h"
#include "simulator/web/api.h"

#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/websocket.hpp>

namespace qm::sim {
namespace {

namespace beast = boost::beast;
namespace websocket = beast::websocket;

constexpr std::size_t kLongestMessage = 1024; // nothing is expected
constexpr int kSendBuffer = 32 << 10;         // what is in there can no longer be replaced by something newer

// Of a handshake that is none, the answer tells why as all others do.
void say_in_our_way(websocket::response_type& response) {
    response.set(beast::http::field::server, "qm_simulator");
    for (const auto& [name, value] : kSafetyHeaders) response.set(name, value);
    if (response.result() == beast::http::status::switching_protocols) return;
    WebAnswer answer = web_error(response.result_int(), "this is no WebSocket: " + response.body());
    response.set(beast::http::field::content_type, answer.type);
    response.body() = std::move(answer.body);
    response.prepare_payload();
}

class LiveSession : public std::enable_shared_from_this<LiveSession> {
  public:
    LiveSession(beast::tcp_stream stream, ReaderMaker make, Site::Seat seat)
        : m_stream(std::move(stream)), m_timer(m_stream.get_executor()), m_make(std::move(make)),
          m_seat(std::move(seat)) {}

    void start(const HttpRequest& request) {
        NetworkError ignored;
        auto& stream = m_stream.next_layer();
        stream.expires_never(); // from here on the WebSocket has its own
        stream.socket().set_option(asio::socket_base::send_buffer_size(kSendBuffer), ignored);
        stream.socket().set_option(asio::ip::tcp::no_delay(true), ignored);
        m_stream.set_option(
            websocket::stream_base::timeout{std::chrono::seconds(10), std::chrono::seconds(30), true});
        m_stream.set_option(websocket::stream_base::decorator(say_in_our_way));
        m_stream.read_message_max(kLongestMessage);
        m_stream.auto_fragment(false);
        m_stream.async_accept(request, [self = shared_from_this()](NetworkError error) {
            if (!error) self->begin();
        });
    }

  private:
    // The reader goes before the session does, and wakes nobody then.
    void begin() {
        m_reader = m_make([this] { send(); });
        read();
        send();
    }

    void read() {
        m_stream.async_read(m_received, [self = shared_from_this()](NetworkError error, std::size_t) {
            if (error) return self->end();
            self->m_received.clear();
            self->read();
        });
    }

    void send() {
        if (m_sending || !m_reader) return;
        const auto now = std::chrono::steady_clock::now();
        auto message = m_reader->next(now);
        if (!message) return send_later();
        m_sending = true;
        m_stream.text(message->text);
        const asio::const_buffer bytes(message->bytes->data(), message->bytes->size());
        m_stream.async_write(bytes, [self = shared_from_this(),
                                     kept = std::move(message->bytes)](NetworkError error, std::size_t) {
            self->m_sending = false;
            if (error) return self->end();
            self->send();
        });
    }

    void send_later() {
        m_timer.expires_at(m_reader->again());
        m_timer.async_wait([self = shared_from_this()](NetworkError error) {
            if (!error) self->send();
        });
    }

    void end() {
        m_reader.reset();
        m_timer.cancel();
    }

    websocket::stream<beast::tcp_stream> m_stream;
    asio::steady_timer m_timer;
    const ReaderMaker m_make;
    const Site::Seat m_seat;
    beast::flat_buffer m_received;
    bool m_sending = false;
    std::unique_ptr<Reader> m_reader;
};

} // namespace

void start_live_session(beast::tcp_stream stream, HttpRequest request, ReaderMaker make, Site::Seat seat) {
    std::make_shared<LiveSession>(std::move(stream), std::move(make), std::move(seat))->start(request);
}

} // namespace qm::sim
