#include "AreaSource.h"

#include "program_reading.h"
#include "target.h"

namespace qm::sign {
namespace {

// What no dynamic area can be is refused.
void require_dynamic(const AreaDescription& area, bool with_programs) {
    const auto refuse = [&](const std::string& why) { throw JsonError(area.where + ": " + why); };
    if (area.id > 0xFF) refuse("a dynamic area has a number from 0 to 255");
    if (area.border) refuse("a dynamic area has no border");
    if (area.flags.background_flag || area.flags.transparency || area.flags.equal)
        refuse("a dynamic area has no background_flag, transparency or equal");
    if (area.text.empty() == area.pictures.empty() || area.pictures.size() > 1)
        refuse("a dynamic area has either a text or one picture");
    if (area.speech && area.speech->text.size() > kLongestSpeech)
        refuse("a dynamic area speaks a text of at most 65515 bytes");
    if (with_programs && area.speech && area.text.empty())
        refuse("a picture with speech cannot be related to programs");
}

} // namespace

Rect area_rect(const std::optional<Rect>& given, const Size& screen, const std::string& where) {
    const bool known = screen.width > 0 && screen.height > 0;
    if (!given && !known) throw Failure("the controller says that its screen has no pixels; give " + where);
    if (!given) return whole(screen);
    if (const std::string wrong = known ? beyond(*given, screen) : ""; !wrong.empty())
        throw UsageError(where + ": " + wrong);
    return *given;
}

void AreaSource::read(const std::string& path, bool with_programs) {
    m_path = path;
    name_description(path, [&] {
        m_areas = read_program(path).areas;
        for (const AreaDescription& area : m_areas) require_dynamic(area, with_programs);
        for (const AreaDescription& area : m_areas)
            for (const PicturePage& page : area.pictures) require_decodable(page);
    });
    if (m_areas.empty()) throw UsageError(path + ": areas: expected at least one");
}

std::vector<unsigned> AreaSource::ids() const {
    std::vector<unsigned> ids;
    for (const AreaDescription& area : m_areas) ids.push_back(area.id);
    return ids;
}

const FittedAreas& AreaSource::fitted(const Screen& screen) const {
    return m_fitted.get({screen.size.width, screen.size.height, screen.color}, [&] {
        FittedAreas fitted;
        for (const AreaDescription& described : m_areas)
            fitted.areas.push_back(name_description(m_path, [&] { return area_for(described, screen); }));
        fitted.texts = drawn_texts(m_areas, screen.size);
        return fitted;
    });
}

Area AreaSource::area_for(const AreaDescription& described, const Screen& screen) const {
    Area area;
    area.id = static_cast<Ouint8>(described.id);
    area.rect = area_rect(described.rect, screen.size, m_path + ": " + described.where + ".rect");
    area.text = described.text;
    area.style = described.style;
    area.effect = described.effect;
    area.speech = described.speech;
    for (const PicturePage& page : described.pictures) {
        area.effect = page.effect;
        area.picture = m_pictures.path_of(page, {area.rect->width, area.rect->height}, screen.color);
    }
    return area;
}

} // namespace qm::sign
