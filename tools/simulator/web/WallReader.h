// The pictures of all controllers.
#pragma once

#include "simulator/web/Reader.h"

namespace qm::sim {

class WallReader : public Reader {
  public:
    // The feeds outlive it.
    WallReader(const std::vector<std::unique_ptr<Feed>>& feeds, std::function<void()> wake);

    std::optional<Message> next(Time now) override;
    [[nodiscard]] Time again() const override;

  private:
    class Tile : public Listener {
      public:
        Tile(WallReader& wall, Feed& feed) : m_wall(wall), m_feed(feed) { m_feed.add(*this); }
        Tile(const Tile&) = delete;
        Tile& operator=(const Tile&) = delete;
        ~Tile() override { m_feed.remove(*this); }

        void changed() override;
        // Null when it was the same after all.
        Feed::Text take(Time now);

      private:
        WallReader& m_wall;
        Feed& m_feed;
        std::shared_ptr<const Image> m_picture; // that was sent last
        Time m_due{};                           // of the next one
    };

    std::function<void()> m_wake;
    std::set<std::pair<Time, Tile*>> m_waiting; // by when they are due
    std::vector<std::unique_ptr<Tile>> m_tiles;
};

} // namespace qm::sim
