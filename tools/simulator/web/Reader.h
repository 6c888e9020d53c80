// What one reader is to be sent next: always the latest, so that nothing piles up before a slow one.
#pragma once

#include "simulator/web/Feed.h"

#include <functional>

namespace qm::sim {

class Reader {
  public:
    using Time = Feed::Time;
    struct Message {
        Feed::Text bytes;
        bool text = false;
    };

    virtual ~Reader() = default;
    // Nothing when there is nothing yet: then ask at that time, or when woken.
    virtual std::optional<Message> next(Time now) = 0;
    [[nodiscard]] virtual Time again() const = 0;
};

} // namespace qm::sim
