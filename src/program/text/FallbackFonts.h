// The installed fonts that stand in for a chosen one where it lacks a character.
#pragma once

#include "program/text/Face.h"
#include "program/text/FontChoice.h"
#include "program/text/font_patterns.h"
#include "qm_sdk_dual.h"

#include <memory>
#include <optional>

namespace qm {

// The fonts are put in order once: the best comes first. Which of them has a character then follows from the
// choice and the character alone, whatever was drawn before, and a character that none has costs no search.
class FallbackFonts {
  public:
    // For the style of a choice, in any size.
    explicit FallbackFonts(const FontChoice& choice);

    // The number of the first font, counted from a number on, that says it has the character.
    [[nodiscard]] std::optional<int> find(char32_t character, int from) const;
    // A font by its number, in the size of a choice; nothing when it cannot be used.
    [[nodiscard]] std::unique_ptr<Face> open(int number, const FontChoice& choice) const;

  private:
    FontconfigPtr<FcFontSet> m_fonts;
    FontconfigPtr<FcCharSet> m_characters; // of all fonts
};

} // namespace qm
