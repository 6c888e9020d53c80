#include "AreaOptions.h"

#include "program_values.h"

namespace qm::ctl {
namespace {

E_ScreenColor_G56 color_of(const Ping_data& screen) {
    const bool known = screen.Color >= SCREEN_COLOR_SINGLE && screen.Color <= SCREEN_COLOR_FULLCOLOR;
    return known ? static_cast<E_ScreenColor_G56>(screen.Color) : SCREEN_COLOR_DOUBLE;
}

std::vector<Ouint16> read_programs(const std::string& text) {
    constexpr std::size_t kMost = 512;
    std::vector<Ouint16> programs;
    if (text == "all") return programs;
    for (const std::string_view number : split(text, ','))
        programs.push_back(static_cast<Ouint16>(read_number(std::string(number), 0, 9999)));
    if (programs.size() > kMost) expected("at most 512 programs");
    return programs;
}

} // namespace

Screen screen_of(const Ping_data& ping) {
    return {color_of(ping), generation_of(ping.ControllerType), {0, 0, ping.ScreenWidth, ping.ScreenHeight}};
}

void ProgramOption::add_to(ArgumentList& command) {
    add_value(command, "--with-program", m_programs, "N[,N...]",
              "Show it only together with these programs, or with all, without interrupting what is\n"
              "being played (default with all, at once)",
              read_programs);
}

void AreaOptions::add_to(ArgumentList& command) {
    add_number(command, "--area", m_id, 0, 255,
               "Number of the area, 0 to 255; it replaces the area of that number (default 0)");
    add_value(command, "--rect", m_rect, "X,Y,W,H", "Rectangle in pixels, on the screen (default all of it)",
              read_rect);
    add_word(command, "--screen", m_color, kScreenColors,
             "Colours of the screen: single, double, three or full (default as the controller says)");
    const auto read_mode = [](const std::string& text) { return read_word_or_number(text, kModes, 255); };
    add_value(command, "--mode", m_effect.mode, "MODE",
              "How a page appears: static (1), left (4) and right (38) run, or the number of\n"
              "an effect of the controller's, 0 to 255 (default static)",
              read_mode);
    add_number(command, "--speed", m_effect.speed, 0, 255, "Speed of the effect, 0 to 255 (default 32)");
    add_number(command, "--stay", m_effect.stay, 0, 65535,
               "How long a page stays, in the controller's unit (default 300; 0 when running)");
    add_number(command, "--repeat", m_effect.repeat, 0, 255, "Repetitions of a page, 0 to 255 (default 1)");
    m_programs.add_to(command);
}

void require_area_port(const Session& session) {
    for (const Controller& controller : session.controllers)
        if (controller.port < 1024)
            throw UsageError("--controller: this verb needs a port from 1024 to 65535, not " +
                             std::to_string(controller.port));
}

Rect area_rect(const std::optional<Rect>& given, const Screen& screen, const std::string& where) {
    const PixelSize size{screen.rect.width, screen.rect.height};
    const bool known = size.width > 0 && size.height > 0;
    if (!given && !known) throw Failure("the controller says that its screen has no pixels; give " + where);
    if (!given) return screen.rect;
    if (const std::string wrong = known ? beyond(*given, size) : ""; !wrong.empty())
        throw UsageError(where + ": " + wrong);
    return *given;
}

Target AreaOptions::target(const Session& session) const {
    Target target{static_cast<Ouint8>(m_id), {}, screen_of(session.ping())};
    target.rect = area_rect(m_rect, target.screen, "--rect");
    if (m_color) target.screen.color = static_cast<E_ScreenColor_G56>(*m_color);
    return target;
}

HVpageHeader_G6 AreaOptions::page(const Rect& rect) const {
    HVpageHeader_G6 page{};
    m_effect.apply_to(page);
    page.ValidLen = rect.width;
    return page;
}

Result describe(const Session& session, const Target& target) {
    const unsigned x = target.rect.x, y = target.rect.y;
    const unsigned width = target.rect.width, height = target.rect.height;
    Result result = session.result();
    result.add("Area", "area", unsigned{target.id})
        .add("Rectangle",
             std::to_string(width) + " x " + std::to_string(height) + " pixels at " + std::to_string(x) +
                 "," + std::to_string(y),
             "rect", {x, y, width, height})
        .add("Screen", "screen", word_for(kScreenColors, target.screen.color));
    return result;
}

} // namespace qm::ctl
