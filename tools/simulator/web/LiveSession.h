// A WebSocket by which a reader is told what happens.
#pragma once

#include "simulator/web/Reader.h"
#include "simulator/web/Site.h"

#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/http/message.hpp>
#include <boost/beast/http/string_body.hpp>

namespace qm::sim {

using HttpRequest = boost::beast::http::request<boost::beast::http::string_body>;

// Makes the reader, which calls wake when there may be more to send.
using ReaderMaker = std::function<std::unique_ptr<Reader>(std::function<void()> wake)>;

// Answers the request to become one, and serves it until it ends.
void start_live_session(boost::beast::tcp_stream stream, HttpRequest request, ReaderMaker make,
                        Site::Seat seat);

} // namespace qm::sim
