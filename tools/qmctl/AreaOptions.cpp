#include "AreaOptions.h"

namespace qm::ctl {
namespace {

ProgramNumbers read_programs(const std::string& text) {
    constexpr std::size_t kMost = 512;
    ProgramNumbers programs;
    if (text == "all") return programs;
    for (const std::string_view number : split(text, ','))
        programs.push_back(static_cast<Ouint16>(read_number(std::string(number), 0, 9999)));
    if (programs.size() > kMost) expected("at most 512 programs");
    return programs;
}

} // namespace

void require_area_port(const NamedController& target) {
    if (target.port < 1024)
        throw UsageError("--controller: this verb needs a port from 1024 to 65535, not " +
                         std::to_string(target.port));
}

void Remarks::tell(const Session& session, std::span<const std::string> remarks) const {
    if (m_strict && !remarks.empty()) throw Failure(joined(remarks));
    for (const std::string& remark : remarks) session.note(remark);
}

void Remarks::tell(const Session& session, const FittedProgram& fitted, const std::string& name) const {
    tell(session, std::span(fitted.texts.remarks).subspan(fitted.notes.size()));
    for (const std::string& note : fitted.notes) session.note(name.empty() ? note : name + ": " + note);
}

Report& add_texts(Report& report, const DrawnTexts& texts) {
    auto pages = nlohmann::ordered_json::object();
    for (const auto& [area, count] : texts.pages) pages[std::to_string(area)] = count;
    report.add("pages", std::move(pages));
    return texts.remarks.empty() ? report : report.add("notes", texts.remarks);
}

void require_voice(const std::vector<Area>& areas, const Screen& screen) {
    for (const Area& area : areas)
        if (area.speech && screen.generation == 5)
            throw UsageError("speech needs a controller of generation 6");
}

void show_areas(const Session& session, const std::vector<Area>& areas, const Screen& screen,
                const std::optional<ProgramNumbers>& programs) {
    require_voice(areas, screen);
    require(session.controller.show(areas, screen, programs));
}

void add_program_option(ArgumentList& command, std::optional<ProgramNumbers>& programs) {
    add_value(command, "--with-program", programs, "N[,N...]",
              "Show it only together with these programs, or with all, without interrupting what is\n"
              "being played (default with all, at once)",
              read_programs);
}

void add_text_options(ArgumentList& command, TextStyle& style) {
    add_value(command, "--font", style.font, "FONT",
              "Font family, or a .ttf, .ttc, .otf, .otb, .pcf, .pcf.gz or .bdf file\n(default auto: the best "
              "that is installed for the size)",
              read_font);
    add_number(command, "--size", style.size, 1, kLargestSize,
               "Points, 1 to 1000; 12 points are 16 pixels (default the largest with which the whole\n"
               "text fits without a word being broken; at least 6)");
    add_value(command, "--color", style.color, "COLOR",
              "black, red, green, yellow, blue, magenta, cyan, white or #RRGGBB (default red)", read_color);
    const auto single = command.add_flag("--single", "One line, cut into pages (default when running)",
                                         [&style] { style.one_line = true; });
    command
        .add_flag("--multi", "Lines wrapped to the width (default otherwise)",
                  [&style] { style.one_line = false; })
        .excludes(single);
    add_value(command, "--halign", style.halign, "WORD", "left, center or right (default center)",
              [](const std::string& text) { return read_align(text, kHorizontal); });
    add_value(command, "--valign", style.valign, "WORD", "top, center or bottom (default center)",
              [](const std::string& text) { return read_align(text, kVertical); });
    command.add_flag("--bold", style.bold, "Bold");
    command.add_flag("--italic", style.italic, "Italic; slanted where a family has none");
    add_number(command, "--spacing", style.spacing, 0, 255, "Pixels added between characters (default 0)");
    command.add_flag("--vertical", style.vertical, "Characters stacked into columns");
}

std::string read_speech(const std::string& text) {
    if (text.empty() || text.size() > kLongestSpeech) expected("a text of 1 to 65515 bytes");
    return text;
}

void add_speech_options(ArgumentList& command, Speech& speech) {
    add_number(command, "--voice", speech.voice, "Voice of the speech unit (default 0)");
    add_number(command, "--volume", speech.volume, "Volume (default 10)");
    add_number(command, "--speech-speed", speech.speed, "Speed of speech (default 5)");
    add_number(command, "--encoding", speech.encoding,
               "How the speech unit reads the bytes of the text (default 0)");
    add_number(command, "--speech-repeat", speech.repeat, "Repetitions (default 0)");
    add_number(command, "--delay", speech.delay, "Pause between them (default 0)");
    add_number(command, "--digits", speech.digits, "How digits are spoken (default 0)");
    add_number(command, "--language", speech.language, "Language (default 0)");
    add_number(command, "--word-style", speech.word_style, "Word style (default 0)");
}

void AreaOptions::add_to(ArgumentList& command) {
    add_number(command, "--area", m_id, 0, 255,
               "Number of the area, 0 to 255; it replaces the area of that number (default " +
                   std::to_string(m_id) + ")");
    add_value(command, "--rect", m_rect, "X,Y,W,H", "Rectangle in pixels, on the screen (default all of it)",
              read_rect);
    add_word(command, "--screen", m_color, kScreenColors,
             "Colours of the screen: single, double, three or full (default as the controller says)");
    add_value(command, "--mode", m_mode, "MODE",
              "How a page appears: static (1), left (4) and right (38) run, run is right for a\n"
              "text that is read from right to left and else left, or the number of an effect\n"
              "of the controller's, 0 to 255 (default static)",
              read_mode);
    add_number(command, "--speed", m_effect.speed, "Speed of the effect, 0 to 255 (default 32)");
    add_number(command, "--stay", m_effect.stay,
               "How long a page stays, in the controller's unit (default 300; 0 when running)");
    add_number(command, "--repeat", m_effect.repeat, "Repetitions of a page, 0 to 255 (default 1)");
    add_program_option(command, m_programs);
}

Screen AreaOptions::place(const Session& session, Area& area) const {
    Screen screen = Screen::of(require(session.controller.ping()));
    area.rect = area_rect(m_rect, screen.size, "--rect");
    if (m_color) screen.color = static_cast<E_ScreenColor_G56>(*m_color);
    area.id = static_cast<Ouint8>(m_id);
    area.effect = m_effect;
    area.effect.mode = mode_for(area.text, m_mode);
    return screen;
}

Report AreaOptions::show(const Session& session, const Area& area, const Screen& screen) const {
    const Rect rect = *area.rect;
    show_areas(session, {area}, screen, m_programs);
    return session.report()
        .add("Area", "area", m_id)
        .add("Rectangle",
             to_string({rect.width, rect.height}) + " pixels at " + std::to_string(rect.x) + "," +
                 std::to_string(rect.y),
             "rect", {unsigned{rect.x}, unsigned{rect.y}, unsigned{rect.width}, unsigned{rect.height}})
        .add("Screen", "screen", word_for(kScreenColors, screen.color));
}

} // namespace qm::ctl
