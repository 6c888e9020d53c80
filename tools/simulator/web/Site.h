// What all connections of the server share.
#pragma once

#include "simulator/device/Fleet.h"
#include "simulator/web/Feed.h"

namespace qm::sim {

struct Site {
    // One of those that may be open at once, until it is destroyed.
    using Seat = std::shared_ptr<const int>;

    explicit Site(Fleet& of) : fleet(of) {}

    // Null when all are taken.
    [[nodiscard]] Seat take_seat() const { return seats.use_count() > kMostConnections ? nullptr : seats; }

    static constexpr long kMostConnections = 256;

    Fleet& fleet;
    std::string place; // ADDRESS:PORT
    std::vector<std::unique_ptr<Feed>> feeds;
    int recordings = 0; // under way
    const Seat seats = std::make_shared<const int>(0);
};

} // namespace qm::sim
