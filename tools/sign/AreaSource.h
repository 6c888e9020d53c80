// Areas that are shown at once, for screens of several kinds: made once for each.
#pragma once

#include "Kept.h"
#include "PictureFiles.h"
#include "drawn_text.h"

namespace qm::sign {

inline constexpr std::size_t kLongestSpeech = 65515; // bytes, of dynamic areas

// The given rectangle or, without one, the whole screen. Throws UsageError when it reaches beyond the screen,
// and Failure when the screen's size is needed and not known; both name where it is given.
[[nodiscard]] Rect area_rect(const std::optional<Rect>& given, const Size& screen, const std::string& where);

struct FittedAreas {
    std::vector<Area> areas;
    DrawnTexts texts;
};

// All threads may ask at once.
class AreaSource {
  public:
    // Reads the areas of a program's description, perhaps to be shown together with programs. Throws
    // UsageError with the file's name.
    void read(const std::string& path, bool with_programs);

    [[nodiscard]] std::vector<unsigned> ids() const;
    // Their pictures last as long as the object. Throws likewise, and Failure.
    [[nodiscard]] const FittedAreas& fitted(const Screen& screen) const;

  private:
    [[nodiscard]] Area area_for(const AreaDescription& described, const Screen& screen) const;

    std::string m_path;
    std::vector<AreaDescription> m_areas;
    mutable PictureFiles m_pictures;
    Kept<std::array<unsigned, 3>, FittedAreas> m_fitted; // by size and colours of the screen
};

} // namespace qm::sign
