// Verbs that put text and pictures on the screen at once, without a program being written.
#include "AreaSending.h"
#include "Speech.h"
#include "TextOptions.h"
#include "Verb.h"

#include <iostream>
#include <iterator>

namespace qm::ctl {
namespace {

constexpr std::size_t kLongestText = 65535;

// All of standard input, without its last line end. What cannot be a text is refused.
std::string read_standard_input() {
    std::string text(kLongestText + 2, '\0');
    std::cin.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(std::cin.gcount()));
    if (std::cin.bad()) throw UsageError("expected a text on standard input, but it cannot be read");
    if (text.ends_with('\n')) text.pop_back();
    if (text.size() > kLongestText)
        throw UsageError("expected a text of at most 65535 bytes on standard input");
    if (text.find('\0') != std::string::npos)
        throw UsageError("expected a text on standard input, not binary data (it holds a zero byte)");
    return text;
}

AreaContent content_at(const Target& target, const AreaOptions& options) {
    AreaContent area;
    area.id = target.id;
    area.rect = target.rect;
    area.page = options.page(target.rect);
    return area;
}

class Text : public Verb {
  public:
    void add_arguments(ArgumentList& command) override {
        add_value(command, "TEXT", m_text, "", "The text in UTF-8; - reads it from standard input", read_text)
            .required();
        m_area.add_to(command);
        m_look.add_to(command);
        add_value(command, "--say", m_speech_text, "TEXT", "A text to speak with it (generation 6)",
                  read_speech);
        m_speech.add_to(command);
    }

    void prepare(const Session& session) override {
        require_area_port(session);
        if (m_text == "-") m_text = read_standard_input();
    }

    void run(Session& session) override {
        const Target target = m_area.target(session);
        AreaContent area = content_at(target, m_area);
        area.text = m_text;
        area.font = m_look.font();
        m_look.apply_to(area.page, m_text, target.rect, m_area.running());
        if (!m_speech_text.empty()) area.speech = m_speech.sound(m_speech_text);
        send_areas(session.controller, target.screen, {area}, m_area.programs());
        Result result = describe(session, target);
        result.add("Font", "font", m_look.font())
            .add("Size", std::to_string(area.page.fontSize) + " points", "size",
                 unsigned{area.page.fontSize});
        if (area.speech) result.add("Says", "speech", m_speech_text);
        session.print(result);
    }

  private:
    std::string m_text;
    std::string m_speech_text;
    AreaOptions m_area;
    TextOptions m_look;
    SpeechOptions m_speech;
};

class Picture : public Verb {
  public:
    void add_arguments(ArgumentList& command) override {
        add_value(command, "FILE", m_path, "", "A PNG picture", read_png_path).required();
        m_area.add_to(command);
    }

    void prepare(const Session& session) override { require_area_port(session); }

    void run(Session& session) override {
        const Target target = m_area.target(session);
        AreaContent area = content_at(target, m_area);
        area.picture = m_path;
        send_areas(session.controller, target.screen, {area}, m_area.programs());
        Result result = describe(session, target);
        result.add("Picture", "picture", m_path);
        session.print(result);
    }

  private:
    std::string m_path;
    AreaOptions m_area;
};

constexpr VerbEntry kVerbs[] = {
    {"text", "Show a text",
     "Examples:\n"
     "  qmctl text Hello\n"
     "  qmctl text --color '#00FF00' --mode left --font 'DejaVu Sans' 'A long line that runs'\n"
     "  date | qmctl -c 192.168.0.199 text --area 1 --rect 0,16,128,16 -\n"
     "A text that begins with a dash stands behind two: qmctl text -- '--> Exit'",
     make_verb<Text>},
    {"picture", "Show a PNG picture, from its top left corner",
     "Example:\n  qmctl picture --rect 0,0,32,32 logo.png", make_verb<Picture>}};

} // namespace

Family area_verbs() { return kVerbs; }

} // namespace qm::ctl
