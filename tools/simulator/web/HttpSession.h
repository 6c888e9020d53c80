// A connection of a browser or a script.
#pragma once

#include "simulator/web/Site.h"

namespace qm::sim {

// Serves it until it ends, or until it goes on as a WebSocket. The site outlives it.
void start_http_session(asio::ip::tcp::socket socket, Site& site, Site::Seat seat);

// Says that there are too many, and ends it.
void turn_away(asio::ip::tcp::socket socket, Site& site, Site::Seat seat);

} // namespace qm::sim
