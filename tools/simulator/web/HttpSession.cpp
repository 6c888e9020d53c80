#include "simulator/web/HttpSession.h"

#include "simulator/web/LiveSession.h"
#include "simulator/web/Recording.h"
#include "simulator/web/ScreenReader.h"
#include "simulator/web/WallReader.h"
#include "simulator/web/access.h"
#include "simulator/web/api.h"

#include "options/readers.h"

#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http.hpp>
#include <boost/beast/websocket/rfc6455.hpp>

namespace qm::sim {
namespace {

namespace beast = boost::beast;
namespace http = beast::http;

constexpr std::size_t kLongestBody = std::size_t{64} << 10U, kLongestHeader = std::size_t{8} << 10U,
                      kPiece = 4096;
constexpr std::chrono::seconds kPatience{30}; // with a request on its way, and with an answer
constexpr std::chrono::seconds kIdle{3};      // until the next request begins: a browser holds several
constexpr std::chrono::seconds kFarewell{
    2}; // for what nobody reads, which would reset the answer's connection
constexpr std::size_t kMostUnread = std::size_t{4} << 20U;
constexpr unsigned kLongestRecording = 60; // seconds
constexpr int kMostRecordings = 8;

std::string text_of(beast::string_view text) { return {text.data(), text.size()}; }

class HttpSession : public std::enable_shared_from_this<HttpSession> {
  public:
    HttpSession(asio::ip::tcp::socket socket, Site& site, Site::Seat seat)
        : m_stream(std::move(socket)), m_timer(m_stream.get_executor()), m_site(site),
          m_seat(std::move(seat)) {
        NetworkError ignored;
        m_peer = sim::text_of(m_stream.socket().remote_endpoint(ignored));
        m_here = sim::text_of(m_stream.socket().local_endpoint(ignored));
    }
    HttpSession(const HttpSession&) = delete;
    HttpSession& operator=(const HttpSession&) = delete;
    ~HttpSession() { stop_recording(); }

    void read() {
        m_parser.emplace();
        m_parser->body_limit(kLongestBody);
        m_parser->header_limit(kLongestHeader);
        m_stream.expires_after(kPatience);
        http::async_read_header(
            m_stream, m_received, *m_parser,
            [self = shared_from_this()](NetworkError error, std::size_t) { self->take_header(error); });
    }

    void turn_away() { refuse(web_error(503, "there are too many connections")); }

  private:
    void read_next() {
        if (m_received.size() > 0) return read();
        m_stream.expires_after(kIdle);
        m_stream.async_read_some(m_received.prepare(kPiece),
                                 [self = shared_from_this()](NetworkError error, std::size_t length) {
                                     if (error) return;
                                     self->m_received.commit(length);
                                     self->read();
                                 });
    }

    // Some send a body only when they are asked to.
    void take_header(NetworkError error) {
        static constexpr char kGoOn[] = "HTTP/1.1 100 Continue\r\n\r\n";
        if (error) return take(error);
        if (!beast::iequals(m_parser->get()[http::field::expect], "100-continue")) return read_body();
        asio::async_write(m_stream, asio::buffer(kGoOn, sizeof kGoOn - 1),
                          [self = shared_from_this()](NetworkError failed, std::size_t) {
                              if (!failed) self->read_body();
                          });
    }

    void read_body() {
        http::async_read(m_stream, m_received, *m_parser,
                         [self = shared_from_this()](NetworkError error, std::size_t) { self->take(error); });
    }

    void take(NetworkError error) {
        if (error == http::error::body_limit || error == http::error::header_limit)
            return refuse(web_error(413, "the request is too long"));
        if (error == http::error::end_of_stream || error == http::error::partial_message) return;
        if (error.category() == make_error_code(http::error::bad_method).category())
            return refuse(web_error(400, "this is no HTTP request: " + error.message()));
        if (error) return;
        m_request = m_parser->release();
        serve();
    }

    // Where the next request would begin nobody knows.
    void refuse(const WebAnswer& answer) {
        m_request = {};
        m_request.keep_alive(false);
        send(answer);
    }

    void serve() {
        WebRequest request{
            .method = m_request.method() == http::verb::head ? "GET" : text_of(m_request.method_string()),
            .path = {},
            .peer = m_peer};
        request.set_target(sim_view(m_request.target()));
        request.content_type = text_of(m_request[http::field::content_type]);
        request.body = std::move(m_request.body());
        const Caller caller{text_of(m_request[http::field::host]), text_of(m_request[http::field::origin])};
        for (const auto field : {http::field::host, http::field::origin})
            if (m_request.count(field) > 1)
                return send(web_error(400, "there may be one " + text_of(http::to_string(field))));
        if (const auto why = refused(caller, m_site.place, m_here)) return send(web_error(403, *why));
        try {
            if (beast::websocket::is_upgrade(m_request)) return go_live(request);
            if (request.path == "/api/live") return send(web_error(426, "expected a WebSocket"));
            if (request.path == "/api/recording.gif") return record(request);
            send(answer_to(request, m_site));
        } catch (WebAnswer& answer) {
            send(std::move(answer));
        }
    }

    static std::string_view sim_view(beast::string_view text) { return {text.data(), text.size()}; }

    void go_live(const WebRequest& request) {
        if (request.path != "/api/live")
            throw web_error(404, "there is no " + request.path + " to listen to");
        start_live_session(std::move(m_stream), std::move(m_request), reader_for(request), m_seat);
    }

    ReaderMaker reader_for(const WebRequest& request) {
        if (request.query.contains("wall"))
            return [&feeds = m_site.feeds](std::function<void()> wake) {
                return std::make_unique<WallReader>(feeds, std::move(wake));
            };
        return [&feed = *m_site.feeds[controller_in(request, m_site.fleet)]](std::function<void()> wake) {
            return std::make_unique<ScreenReader>(feed, std::move(wake));
        };
    }

    void record(const WebRequest& request) {
        if (request.method != "GET") return send(answer_to(request, m_site));
        Feed& feed = *m_site.feeds[controller_in(request, m_site.fleet)];
        const auto given = request.query.find("seconds");
        const auto seconds =
            options::to_number(given == request.query.end() ? "" : given->second, 1, kLongestRecording);
        if (!seconds) throw web_error(400, "seconds: expected a whole number from 1 to 60");
        if (m_site.recordings >= kMostRecordings) throw web_error(503, "there are too many recordings");
        m_stream.expires_never();
        ++m_site.recordings;
        m_recording = std::make_unique<Recording>(feed, [this] { answer_after(std::chrono::seconds(0)); });
        answer_after(std::chrono::seconds(*seconds));
        notice_leaving();
    }

    // Whoever asked may go before the end. Until then the beginning of a next request may come.
    void notice_leaving() {
        m_stream.socket().async_read_some(
            m_received.prepare(kPiece), [self = shared_from_this()](NetworkError error, std::size_t length) {
                self->m_received.commit(length);
                if (!self->m_recording) return;
                if (error) return self->leave();
                if (self->m_received.size() < kLongestHeader) self->notice_leaving();
            });
    }

    void leave() {
        stop_recording();
        m_timer.cancel();
    }

    void answer_after(std::chrono::seconds wait) {
        m_timer.expires_after(wait);
        m_timer.async_wait([self = shared_from_this()](NetworkError error) {
            if (!error) self->send_recording();
        });
    }

    void send_recording() {
        if (!m_recording) return;
        NetworkError ignored;
        m_stream.socket().cancel(ignored);
        auto gif = m_recording->finish();
        stop_recording();
        if (!gif) return send(web_error(500, "there is no recording"));
        send({.type = "image/gif", .body = std::move(*gif)});
    }

    void stop_recording() {
        if (m_recording) --m_site.recordings;
        m_recording.reset();
    }

    void send(WebAnswer answer) {
        const auto response = std::make_shared<http::response<http::string_body>>(
            static_cast<http::status>(answer.status), m_request.version());
        response->set(http::field::content_type, answer.type);
        if (!answer.allowed.empty()) response->set(http::field::allow, answer.allowed);
        for (const auto& [name, value] : kSafetyHeaders) response->set(name, value);
        response->keep_alive(m_request.keep_alive());
        if (answer.status == 426) {
            response->set(http::field::upgrade, "websocket");
            response->set(http::field::connection, "upgrade, close");
        }
        response->body() = std::move(answer.body);
        response->prepare_payload();
        if (m_request.method() == http::verb::head) response->body().clear(); // its length stays
        m_stream.expires_after(kPatience);
        http::async_write(m_stream, *response,
                          [self = shared_from_this(), response](NetworkError error, std::size_t) {
                              if (error) return;
                              if (response->keep_alive()) return self->read_next();
                              self->part();
                          });
    }

    void part() {
        NetworkError ignored;
        m_stream.socket().shutdown(asio::ip::tcp::socket::shutdown_send, ignored);
        m_stream.expires_after(kFarewell);
        discard();
    }

    void discard() {
        m_received.clear();
        m_stream.async_read_some(m_received.prepare(std::size_t{64} << 10U),
                                 [self = shared_from_this()](NetworkError error, std::size_t length) {
                                     if (!error && (self->m_unread += length) < kMostUnread) self->discard();
                                 });
    }

    beast::tcp_stream m_stream;
    asio::steady_timer m_timer; // of a recording
    Site& m_site;
    const Site::Seat m_seat;
    std::string m_peer, m_here;
    beast::flat_buffer m_received;
    std::size_t m_unread = 0;
    std::optional<http::request_parser<http::string_body>> m_parser;
    HttpRequest m_request;
    std::unique_ptr<Recording> m_recording;
};

} // namespace

void start_http_session(asio::ip::tcp::socket socket, Site& site, Site::Seat seat) {
    std::make_shared<HttpSession>(std::move(socket), site, std::move(seat))->read();
}

void turn_away(asio::ip::tcp::socket socket, Site& site, Site::Seat seat) {
    std::make_shared<HttpSession>(std::move(socket), site, std::move(seat))->turn_away();
}

} // namespace qm::sim
