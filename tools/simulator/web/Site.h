// What all connections of the server share.
#pragma once

#include "simulator/device/Fleet.h"
#include "simulator/web/Feed.h"

namespace qm::sim {

struct Site {
    // One of those that may be open at once, until it is destroyed.
    using Seat = std::shared_ptr<const int>;
    struct Seats {
        // Null when all are taken.
        [[nodiscard]] Seat take() const { return seat.use_count() > most ? nullptr : seat; }

        const long most;
        const Seat seat = std::make_shared<const int>(0);
    };

    explicit Site(Fleet& of) : fleet(of) {}

    Fleet& fleet;
    std::string place; // ADDRESS:PORT
    std::vector<std::unique_ptr<Feed>> feeds;
    int recordings = 0;                  // under way
    const Seats seats{256}, doorway{64}; // of connections; of those that are told that there is no seat
};

} // namespace qm::sim
