// What the verbs that fill a dynamic area have in common: where on the screen, and how it appears.
#pragma once

#include "appearance.h"

namespace qm::ctl {

// Where an area goes and what its pixels are converted for.
struct Target {
    Ouint8 id;
    Rect rect;
    E_ScreenColor_G56 color;
};

class AreaOptions {
  public:
    void add_to(ArgumentList& command);

    // Fills what the command line left open from the controller's ping.
    [[nodiscard]] Target target(const Session& session) const;
    [[nodiscard]] HVpageHeader_G6 page(const Rect& rect) const;
    // The text runs through the area instead of standing in it.
    [[nodiscard]] bool running() const { return m_effect.running(); }

  private:
    unsigned m_id = 0;
    std::optional<Rect> m_rect;
    std::optional<unsigned> m_color;
    Effect m_effect;
};

// The values that every area's result begins with.
[[nodiscard]] Result describe(const Session& session, const Target& target);

} // namespace qm::ctl
