// What becomes of a text in its area, before it is sent.
#pragma once

#include "ProgramDescription.h"

#include <map>

namespace qm::sign {

struct DrawnText {
    unsigned points = 0, pages = 0;
    std::string family;               // of the font that draws most of it
    std::vector<std::string> remarks; // on what is not drawn as it was meant
};

// Throws Failure when the library cannot measure it.
[[nodiscard]] DrawnText drawn_text(const std::string& text, const TextStyle& style, const Rect& area,
                                   const Effect& effect);

// Of all areas that have a text; the remarks say which area they are on.
struct DrawnTexts {
    std::map<unsigned, unsigned> pages; // by the areas' numbers
    std::vector<std::string> remarks;
};
[[nodiscard]] DrawnTexts drawn_texts(const std::vector<AreaDescription>& areas, const Size& screen);

} // namespace qm::sign
