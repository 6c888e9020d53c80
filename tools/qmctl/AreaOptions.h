// What the verbs that fill a dynamic area have in common: where on the screen, and how it appears.
#pragma once

#include "appearance.h"

namespace qm::ctl {

// What a controller says of its screen.
struct Screen {
    E_ScreenColor_G56 color;
    unsigned generation; // of the controller, 0 when its type is not known
    Rect rect;           // without pixels when it does not say
};
[[nodiscard]] Screen screen_of(const Ping_data& ping);

// The library takes no others for dynamic areas and speech.
void require_area_port(const Session& session);

// The given rectangle or, without one, the whole screen. Throws UsageError when it reaches beyond the screen,
// and Failure when the screen's size is needed and not known; both name where it is given.
[[nodiscard]] Rect area_rect(const std::optional<Rect>& given, const Screen& screen,
                             const std::string& where);

// Where an area goes and what its pixels are converted for.
struct Target {
    Ouint8 id;
    Rect rect;
    Screen screen;
};

// The programs that areas are shown with.
class ProgramOption {
  public:
    void add_to(ArgumentList& command);
    [[nodiscard]] const std::optional<std::vector<Ouint16>>& value() const { return m_programs; }

  private:
    std::optional<std::vector<Ouint16>> m_programs;
};

class AreaOptions {
  public:
    void add_to(ArgumentList& command);

    // Fills what the command line left open from the controller's ping.
    [[nodiscard]] Target target(const Session& session) const;
    [[nodiscard]] HVpageHeader_G6 page(const Rect& rect) const;
    [[nodiscard]] const std::optional<std::vector<Ouint16>>& programs() const { return m_programs.value(); }
    // The text runs through the area instead of standing in it.
    [[nodiscard]] bool running() const { return m_effect.running(); }

  private:
    unsigned m_id = 0;
    std::optional<Rect> m_rect;
    std::optional<unsigned> m_color;
    Effect m_effect;
    ProgramOption m_programs;
};

// The values that every area's result begins with.
[[nodiscard]] Result describe(const Session& session, const Target& target);

} // namespace qm::ctl
