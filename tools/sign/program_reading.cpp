#include "program_reading.h"

#include "JsonReader.h"
#include "PlayTimes.h"
#include "clock_reading.h"
#include "files.h"

#include <set>

namespace qm::sign {
namespace {

constexpr unsigned kByte = 0xFF, kWord = 0xFFFF;
constexpr unsigned kLargestScreen = 8192;    // pixels
constexpr std::size_t kMostAreas = 254;      // a byte counts them, the background included
constexpr unsigned kLargestAreaId = 0xFFFE;  // the last one is the background's
constexpr std::size_t kLongestText = 0xFFFF; // bytes
constexpr std::size_t kMostPictures = 1000;  // of an area

class ProgramReader {
  public:
    explicit ProgramReader(std::filesystem::path folder) : m_folder(std::move(folder)) {}

    ProgramDescription program(const Field& field) const {
        ProgramDescription program;
        read_object(field, [&](Object& object) {
            object.take_number("generation", program.generation, 5, 6);
            object.take("screen", program.screen, [&](const Field& f) { return screen(f); });
            program.id = object.require("id").number(0, 9999);
            play_rules(object, program.rules);
            object.take("border", program.border, [&](const Field& f) { return border(f); });
            object.take("background", program.background, [&](const Field& f) { return background(f); });
            for (const Field& area_field : object.require("areas").list(0, kMostAreas))
                program.areas.push_back(area(area_field));
        });
        require_distinct(program.areas);
        return program;
    }

  private:
    static ScreenDescription screen(const Field& field) {
        ScreenDescription screen;
        read_object(field, [&](Object& object) {
            object.take("type", screen.type, [](const Field& type) {
                return type.value().is_number() ? type.number(0, kWord) : type.read(read_type);
            });
            object.take_text("color", screen.color,
                             [](const std::string& text) { return read_word(text, kScreenColors); });
            object.take("size", screen.size, [](const Field& size) {
                const auto values = size.list(2, 2);
                return Size{values[0].number(1, kLargestScreen), values[1].number(1, kLargestScreen)};
            });
            object.take_number("wiring", screen.wiring, 1, 2);
        });
        return screen;
    }

    static void play_rules(Object& object, PlayRules& rules) {
        object.take_number("style", rules.style);
        object.take_number("priority", rules.priority);
        object.take_number("play_times", rules.play_times);
        object.take_number("time_span", rules.time_span);
        read_play_times(object).replace(rules);
    }

    PatternBorder border(const Field& field) const {
        PatternBorder border;
        read_object(field, [&](Object& object) {
            PictureFile pattern = picture(object.require("picture"));
            border.picture = pattern.path;
            border.size = pattern.size;
            border.where = pattern.where;
            object.take_number("style", border.style);
            object.take_number("speed", border.speed);
            object.take_number("step", border.step);
        });
        if (border.size.width > kByte || border.size.height > kByte)
            throw JsonError(border.where + ": a border's pattern has at most 255 x 255 pixels, not " +
                            to_string(border.size));
        return border;
    }

    Background background(const Field& field) const {
        Background background;
        read_object(field, [&](Object& object) {
            object.take_text("color", background.color, read_color);
            const PictureFit usual = fit(object, PictureFit());
            object.take("pictures", background.pictures,
                        [&](const Field& list) { return pictures(list, Effect(), usual); });
        });
        if (background.color.has_value() == !background.pictures.empty())
            field.refuse("needs either color or pictures");
        return background;
    }

    AreaDescription area(const Field& field) const {
        AreaDescription area;
        area.where = field.path();
        read_object(field, [&](Object& object) {
            area.id = object.require("id").number(0, kLargestAreaId);
            object.take("rect", area.rect, rect);
            clock(object, area);
            texts(object, area);
            area.style = style(object);
            if (area.digital) area.digital->style = area.style;
            area.effect = effect(object, Effect(), area.text);
            const PictureFit usual = fit(object, PictureFit());
            object.take("pictures", area.pictures,
                        [&](const Field& list) { return pictures(list, area.effect, usual); });
            object.take("border", area.border, [&](const Field& f) { return border(f); });
            object.take("sound", area.speech, speech);
            object.take_number("background_flag", area.flags.background_flag);
            object.take_number("transparency", area.flags.transparency);
            object.take_number("equal", area.flags.equal);
        });
        if (area.text.empty() && area.pictures.empty() && !area.is_clock())
            field.refuse("needs text, texts, pictures, digital or analog");
        return area;
    }

    void clock(Object& object, AreaDescription& area) const {
        object.take("digital", area.digital, read_digital);
        object.take("analog", area.analog, [&](const Field& field) {
            return read_analog(field, [&](const Field& file) { return picture(file); });
        });
        object.take_text("battle", area.battle, read_moment);
        if (area.digital && area.analog) object.require("analog").refuse("digital is given, too");
        if (area.battle && !area.is_clock()) object.require("battle").refuse("needs digital or analog");
        if (area.is_clock()) refuse_beside_clock(object, area.digital.has_value());
    }

    static Rect rect(const Field& field) {
        const auto values = field.list(4, 4);
        const auto u16 = [&](std::size_t i) {
            return static_cast<Ouint16>(values[i].number(i < 2 ? 0 : 1, kWord));
        };
        return {u16(0), u16(1), u16(2), u16(3)};
    }

    static void texts(Object& object, AreaDescription& area) {
        const auto one = object.find("text"), several = object.find("texts");
        if (one && several) several->refuse("text is given, too");
        if (one) area.text = one->text();
        if (several)
            for (const Field& line : several->list(1, kWord))
                area.text.append(area.text.empty() ? "" : "\n").append(line.text());
        if (area.text.size() > kLongestText) (one ? one : several)->refuse("has more than 65535 bytes");
    }

    TextStyle style(Object& object) const {
        TextStyle style;
        object.take("font", style.font, [&](const Field& field) { return font(field); });
        object.take_number("size", style.size, 1, kLargestSize);
        object.take_text("color", style.color, read_color);
        object.take("bold", style.bold, &Field::flag);
        object.take("italic", style.italic, &Field::flag);
        object.take("vertical", style.vertical, &Field::flag);
        object.take("one_line", style.one_line, &Field::flag);
        object.take_number("spacing", style.spacing, 0, kByte);
        object.take_text("align", style.halign,
                         [](const std::string& text) { return read_align(text, kHorizontal); });
        object.take_text("valign", style.valign,
                         [](const std::string& text) { return read_align(text, kVertical); });
        return style;
    }

    std::string font(const Field& field) const {
        return field.read([&](const std::string& text) {
            return read_font(qm_is_font_file(text.c_str()) ? (m_folder / text).string() : text);
        });
    }

    static Effect effect(Object& object, Effect effect, const std::string& shown = "") {
        object.take("mode", effect.mode, [&](const Field& mode) {
            return mode_for(shown, mode.value().is_number() ? mode.number(0, kByte) : mode.read(read_mode));
        });
        object.take_number("speed", effect.speed);
        object.take_number("stay", effect.stay);
        object.take_number("repeat", effect.repeat);
        return effect;
    }

    static PictureFit fit(Object& object, PictureFit fit) {
        object.take_text("fit", fit.fit, [](const std::string& text) { return read_fit(text); });
        object.take("dither", fit.dither, &Field::flag);
        return fit;
    }

    // Each a path, or an object with an effect and a fit of its own.
    std::vector<PicturePage> pictures(const Field& field, const Effect& effect_there,
                                      const PictureFit& fit_there) const {
        std::vector<PicturePage> pages;
        for (const Field& page : field.list(1, kMostPictures)) {
            if (page.value().is_string()) {
                pages.push_back({file(page, read_path), effect_there, fit_there});
                continue;
            }
            read_object(page, [&](Object& object) {
                PictureFile picture = file(object.require("file"), read_path);
                pages.push_back({std::move(picture), effect(object, effect_there), fit(object, fit_there)});
            });
        }
        return pages;
    }

    PictureFile picture(const Field& field) const { return file(field, read_png_path); }

    PictureFile file(const Field& field, std::string (*read)(const std::string& path)) const {
        PictureFile file;
        file.where = field.path();
        file.path = field.read([&](const std::string& text) { return read((m_folder / text).string()); });
        file.size = png_size(file.path);
        return file;
    }

    static Speech speech(const Field& field) {
        Speech speech;
        read_object(field, [&](Object& object) {
            speech.text = object.require("text").text();
            object.take_number("voice", speech.voice);
            object.take_number("volume", speech.volume);
            object.take_number("speed", speech.speed);
            object.take_number("encoding", speech.encoding);
            object.take_number("repeat", speech.repeat);
            object.take_number("delay", speech.delay);
            object.take_number("digits", speech.digits);
            object.take_number("language", speech.language);
            object.take_number("word_style", speech.word_style);
        });
        return speech;
    }

    static void require_distinct(const std::vector<AreaDescription>& areas) {
        std::set<unsigned> ids;
        for (const AreaDescription& area : areas)
            if (!ids.insert(area.id).second)
                throw JsonError(area.where + ".id: another area has the number " + std::to_string(area.id));
    }

    std::filesystem::path m_folder; // absolute
};

} // namespace

ProgramDescription read_program(const std::string& path) {
    const nlohmann::json json = read_json(path);
    return ProgramReader(std::filesystem::absolute(path).parent_path()).program(Field(json, ""));
}

} // namespace qm::sign
