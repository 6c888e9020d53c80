#include "PictureFiles.h"

#include "JsonReader.h"
#include "picture_reading.h"

namespace qm::sign {
namespace {

bool is_as_wanted(const PicturePage& page, bool dither) {
    return page.fit.fit == Fit::none && !dither && starts_as_png(page.picture.path);
}

// What is wrong with the file is told with its field.
template <class Step> auto at(const PictureFile& picture, Step step) -> decltype(step()) {
    try {
        return step();
    } catch (const PictureError& wrong) {
        throw JsonError(picture.where + ": " + picture.path + " " + wrong.what());
    }
}

} // namespace

void require_decodable(const PicturePage& page) {
    if (!is_as_wanted(page, page.fit.dither))
        at(page.picture, [&] { require_decodable(page.picture.path, page.fit.fit); });
}

std::string PictureFiles::path_of(const PicturePage& page, const Size& area, E_ScreenColor_G56 screen) {
    if (is_as_wanted(page, page.fit.dither && screen != SCREEN_COLOR_FULLCOLOR)) return page.picture.path;
    const std::string png =
        at(page.picture, [&] { return fitted_png(page.picture.path, area, page.fit, screen); });
    if (!m_folder) m_folder.emplace();
    const std::string name = std::to_string(++m_count) + ".png";
    write_file(m_folder->path(), name, png);
    return m_folder->path() / name;
}

} // namespace qm::sign
