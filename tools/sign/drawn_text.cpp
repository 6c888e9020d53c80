#include "drawn_text.h"

#include "errors.h"
#include "target.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>

namespace qm::sign {
namespace {

bool same_name(const std::string& a, const std::string& b) {
    return std::ranges::equal(
        a, b, [](unsigned char x, unsigned char y) { return std::tolower(x) == std::tolower(y); });
}

// Names that stand for whatever is installed.
bool is_generic(const std::string& family) {
    constexpr const char* kGeneric[] = {"auto",      "sans",    "sans-serif", "serif",    "mono",
                                        "monospace", "cursive", "fantasy",    "system-ui"};
    return std::ranges::any_of(kGeneric, [&](const char* name) { return same_name(family, name); });
}

std::string missing_words(const TextExtent& extent) {
    std::array<char, 16> code{};
    std::snprintf(code.data(), code.size(), "U+%04X", static_cast<unsigned>(extent.first_missing));
    if (extent.missing == 1) return std::string("no font has ") + code.data() + "; drawn as a box";
    return "no font has " + std::to_string(extent.missing) + " of the characters, " + code.data() +
           " the first; drawn as boxes";
}

} // namespace

DrawnText drawn_text(const std::string& text, const TextStyle& style, const Rect& area,
                     const Effect& effect) {
    const TextExtent extent = require(measure(text, style, area, effect));
    DrawnText drawn{extent.points, extent.pages, extent.family, {}};
    if (!qm_is_font_file(style.font.c_str()) && !is_generic(style.font)) {
        const TextExtent chosen = require(measure(" ", style, area, effect)); // which every font has
        if (!same_name(chosen.family, style.font))
            drawn.remarks.push_back("\"" + style.font + "\" is not installed; drawn in " + extent.family);
    }
    const bool runs = effect.mode != Effect().mode;
    if (!style.vertical && (extent.height > area.height || (!runs && extent.width > area.width)))
        drawn.remarks.push_back("the text is larger than its area and is cut");
    if (extent.missing > 0) drawn.remarks.push_back(missing_words(extent));
    return drawn;
}

DrawnTexts drawn_texts(const std::vector<AreaDescription>& areas, const Size& screen) {
    DrawnTexts all;
    for (const AreaDescription& area : areas) {
        if (area.text.empty()) continue;
        const Rect rect = inside(area.rect.value_or(whole(screen)), area.border);
        const DrawnText drawn = drawn_text(area.text, area.style, rect, area.effect);
        all.pages[area.id] = drawn.pages;
        for (const std::string& remark : drawn.remarks) all.remarks.push_back(area.where + ": " + remark);
    }
    return all;
}

} // namespace qm::sign
