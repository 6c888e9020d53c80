// What a screen shows for a while, as an animation in memory.
#pragma once

#include "simulator/show/GifWriter.h"
#include "simulator/web/Feed.h"

namespace qm::sim {

class Recording : private Listener {
  public:
    // The feed outlives it. Enough is called when it is to finish: no more goes in, or somebody asked.
    Recording(Feed& feed, std::function<void()> enough);
    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;
    ~Recording() override { m_feed.remove(*this); }

    // The file; nothing when it came to nothing.
    [[nodiscard]] std::optional<std::string> finish();

  private:
    void changed() override;
    void enough() override { m_on_enough(); }

    Feed& m_feed;
    const std::function<void()> m_on_enough;
    std::string m_bytes;
    GifWriter m_gif;
    std::shared_ptr<const Image> m_latest;
    bool m_full = false;
};

} // namespace qm::sim
