#include "ProgramBuilder.h"

#include "JsonReader.h"
#include "clock_preview.h"
#include "errors.h"
#include "files.h"
#include "panel_picture.h"

#include <chrono>

namespace qm::sign {
namespace {

constexpr std::uint16_t kBackgroundId = 0xFFFF;
constexpr std::int32_t kMostPages = 0xFFFF; // of an area

// Where in the description the library met something that it does not take.
void at(const std::string& where, const Result<>& done) {
    require(done, where + ": the library does not take it");
}

void require_drawable(const PictureFile& picture) {
    if (!is_drawable(picture.path, picture.size))
        throw JsonError(picture.where + ": " + picture.path + " is damaged or too large");
}

void require_drawable(const std::optional<PatternBorder>& border) {
    if (border) require_drawable(PictureFile{border->where, border->picture, border->size});
}

unsigned weekday_of(const Date& date) {
    using namespace std::chrono;
    return weekday(sys_days(year(static_cast<int>(date.year)) / month(date.month) / day(date.day)))
        .c_encoding();
}

} // namespace

std::uint32_t crc_at_end(const std::vector<std::uint8_t>& file) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) value = value << 8U | file[file.size() - 1 - i];
    return value;
}

void require_drawable(const ProgramDescription& program) {
    const auto all = [](const std::vector<PicturePage>& pages) {
        for (const PicturePage& page : pages) {
            require_decodable(page);
            if (starts_as_png(page.picture.path)) require_drawable(page.picture);
        }
    };
    require_drawable(program.border);
    if (program.background) all(program.background->pictures);
    for (const AreaDescription& area : program.areas) {
        all(area.pictures);
        if (area.analog && area.analog->dial) require_drawable(*area.analog->dial);
        require_drawable(area.border);
    }
}

ProgramBuilder::ProgramBuilder(const ProgramDescription& program, const Screen& screen)
    : m_program(program), m_screen(screen), m_built(screen) {
    at("id", m_built.set_rules(program.id, program.rules));
    if (program.border) at(program.border->where, m_built.set_border(*program.border));
    if (program.background) add(*program.background);
    for (const AreaDescription& area : program.areas) add(area);
}

void ProgramBuilder::add(const Background& background) {
    at("background", m_built.add_area(kBackgroundId, eGlobalBackGroundArea, whole(m_screen.size)));
    if (background.color) at("background.color", m_built.set_background(kBackgroundId, *background.color));
    std::uint16_t number = 0;
    for (const PicturePage& page : background.pictures)
        at(page.picture.where,
           m_built.add_background(kBackgroundId, number++,
                                  m_pictures.path_of(page, m_screen.size, m_screen.color), page.effect));
}

void ProgramBuilder::add(const AreaDescription& area) {
    const auto id = static_cast<std::uint16_t>(area.id);
    const E_areaType type = area.is_clock() ? eTimeClockArea : ePicturesArea;
    at(area.where, m_built.add_area(id, type, *area.rect, area.flags));
    if (area.is_clock()) return add_clock(id, area);
    if (area.border) at(area.border->where, m_built.set_area_border(id, *area.border));
    if (!area.text.empty()) add_text(id, area);
    std::uint16_t number = 0;
    const Rect rect = inside(*area.rect, area.border);
    for (const PicturePage& page : area.pictures) {
        const std::string path = m_pictures.path_of(page, {rect.width, rect.height}, m_screen.color);
        at(page.picture.where, m_built.add_picture(id, number++, path, page.effect));
    }
    if (area.speech) at(area.where + ".sound", m_built.set_speech(id, *area.speech));
}

void ProgramBuilder::add_text(std::uint16_t id, const AreaDescription& area) {
    at(area.where, m_built.add_text(id, area.text, area.style, area.effect, inside(*area.rect, area.border)));
    if (Program::has_page(id, kMostPages - static_cast<std::int32_t>(area.pictures.size())))
        throw JsonError(area.where + ": makes more than 65535 pages");
}

void ProgramBuilder::add_clock(std::uint16_t id, const AreaDescription& area) {
    if (area.digital) at(area.where, m_built.add_clock(id, *area.digital, *area.rect));
    if (area.analog) {
        at(area.where, m_built.add_clock(id, *area.analog, *area.rect));
        if (const auto& dial = area.analog->dial) at(dial->where, m_built.set_dial(id, dial->path));
    }
    if (area.battle)
        at(area.where + ".battle", m_built.set_battle_time(id, *area.battle, weekday_of(area.battle->date)));
}

std::vector<File> ProgramBuilder::files() const {
    std::optional<TemporaryCurrentFolder> folder;
    if (m_screen.generation == 5) folder.emplace(); // which leaves a copy in the current one
    return require(m_built.files(), "the program: the library does not take it");
}

std::vector<AreaPages> ProgramBuilder::pages() const {
    std::vector<AreaPages> areas;
    const auto add = [&](std::uint16_t id, const std::string& where, std::string name, const Rect& rect,
                         const std::optional<ClockFace>& analog = {}) {
        std::vector<std::string> pages =
            require(Program::pages(id), where + ": the library does not take it");
        if (analog) pages.front() = with_hands(pages.front(), *analog, rect);
        for (std::string& page : pages) page = on_panel(page, m_screen.color);
        areas.push_back({std::move(name), rect, std::move(pages)});
    };
    if (m_program.background) add(kBackgroundId, "background", "background", whole(m_screen.size));
    for (const AreaDescription& area : m_program.areas)
        add(static_cast<std::uint16_t>(area.id), area.where, "area-" + std::to_string(area.id),
            inside(*area.rect, area.border), area.analog);
    return areas;
}

} // namespace qm::sign
