// Pictures in the files that the library takes.
#pragma once

#include "ProgramDescription.h"
#include "files.h"

namespace qm::sign {

// Throws JsonError for a picture that cannot be drawn, unless the library itself draws its file.
void require_decodable(const PicturePage& page);

// The files last as long as the object.
class PictureFiles {
  public:
    // The picture's own file when the library draws it as it is to be; else a PNG of the area's size. Throws
    // likewise.
    [[nodiscard]] std::string path_of(const PicturePage& page, const Size& area, E_ScreenColor_G56 screen);

  private:
    std::optional<TemporaryFolder> m_folder;
    unsigned m_count = 0;
};

} // namespace qm::sign
