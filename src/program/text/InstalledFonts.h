// The fonts of the system by their families.
#pragma once

#include "program/text/FontChoice.h"

#include <memory>
#include <vector>

namespace qm {

class Face;

// What fontconfig takes for a family in the style of a choice.
struct InstalledFont {
    std::string family, file;
    int index = 0;        // in the file
    bool named = false;   // of that family, not in its place
    bool upright = false; // where an italic one was asked for
    bool thin = false;    // where a bold one was asked for, which serves in small sizes
};
[[nodiscard]] InstalledFont installed_font(const FontChoice& choice);

// The bitmaps of a family for a choice, also where fontconfig leaves them out of its lists: of exactly its
// pixels, or else of the next smaller ones, or the smallest. Nothing when the family has none.
[[nodiscard]] std::unique_ptr<Face> installed_strike(const FontChoice& choice, bool onlyExact);

// The families that serve a text of so many pixels best, in this order; those of scripts that take turns
// stand one behind the other, as each has what the one before lacks.
[[nodiscard]] std::vector<const char*> preferred_families(double pixels);

} // namespace qm
