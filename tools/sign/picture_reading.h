// Pictures of any kind, made fit for the library.
#pragma once

#include "PictureFit.h"

namespace qm::sign {

// What is wrong with a picture's file, such as "is cut off".
class PictureError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Decodes the file; throws PictureError when that cannot be done, or has more than 64 million pixels.
void require_decodable(const std::string& path, Fit fit);

// A PNG file of what a screen shows of the picture in an area of that size: transparent pixels and what the
// picture leaves are black. Throws likewise.
[[nodiscard]] std::string fitted_png(const std::string& path, const Size& area, const PictureFit& how,
                                     E_ScreenColor_G56 screen);

} // namespace qm::sign
