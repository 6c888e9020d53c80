// Which font a text is set in.
#pragma once

#include <compare>
#include <string>

namespace qm {

// The family that stands for the best of those that are installed: preferred_families.
constexpr char kAutomaticFont[] = "auto";

// Which font, as the caller described it: a family name wins over a file path.
struct FontChoice {
    std::string style; // family name
    std::string path;  // font file
    double size = 0;   // pixels
    bool bold = false;
    bool italic = false;

    auto operator<=>(const FontChoice&) const = default; // NOLINT(modernize-use-nullptr)
};

} // namespace qm
