// Which screen a program is made for, and whether it fits.
#pragma once

#include "ProgramDescription.h"

namespace qm::sign {

// What goes before the description, and how errors call it.
struct ScreenWishes {
    const char *generation_name = "", *type_name = "", *color_name = "";
    std::optional<unsigned> generation{}, type{}, color{};
};

// As wishes or description say. Throws UsageError for wishes, and JsonError for a description, that
// contradict themselves.
[[nodiscard]] std::optional<unsigned> generation_for(const ScreenWishes& wishes,
                                                     const ProgramDescription& program);

// Wishes go before the description, and the description before the controller, which is asked when something
// is open. Throws likewise, and Failure.
[[nodiscard]] Screen target_for(const ScreenWishes& wishes, const ProgramDescription& program,
                                const Controller& controller);
// Before a program is sent to a controller, which then goes before the description. Throws likewise.
[[nodiscard]] Screen target_for(const ScreenWishes& wishes, const ProgramDescription& program,
                                const Identity& controller);
// Whether generation, colours and size are the controller's, as far as the description says them.
[[nodiscard]] bool is_made_for(const ProgramDescription& program, const Identity& controller);

// Fills what the description left to the screen, and takes out what the generation does not have; returns a
// line for everything taken out. Throws JsonError for what does not fit the screen.
std::vector<std::string> fit_to(ProgramDescription& program, const Screen& screen);

[[nodiscard]] Rect whole(const Size& screen);
// What a border leaves of a rectangle, if there is one.
[[nodiscard]] Rect inside(const Rect& rect, const std::optional<PatternBorder>& border);

} // namespace qm::sign
