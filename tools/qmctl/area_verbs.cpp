// Verbs that put text and pictures on the screen at once, without a program being written.
#include "AreaOptions.h"
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

class Text : public Verb {
  public:
    void add_arguments(ArgumentList& command) override {
        add_value(command, "TEXT", m_text, "", "The text in UTF-8; - reads it from standard input", read_text)
            .required();
        m_area.add_to(command);
        m_look.add_to(command);
    }

    void run(Session& session) override {
        const std::string text = m_text == "-" ? read_standard_input() : m_text;
        const Target target = m_area.target(session);
        HVpageHeader_G6 page = m_area.page(target.rect);
        m_look.apply_to(page, text, target.rect, m_area.running());
        send(session.controller, target, page, text);
        Result result = describe(session, target);
        result.add("Font", "font", m_look.font())
            .add("Size", std::to_string(page.fontSize) + " points", "size", unsigned{page.fontSize});
        session.print(result);
    }

  private:
    void send(const Controller& to, const Target& target, HVpageHeader_G6& page,
              const std::string& text) const {
        HVareaHeader_G6 area{};
        area.AreaX = target.rect.x;
        area.AreaY = target.rect.y;
        area.AreaWidth = target.rect.width;
        area.AreaHeight = target.rect.height;
        Session::require(dynamicArea_AddAreaTxtDetails_6G(to.ip.c_str(), to.port, target.color, target.id,
                                                          &area, &page, m_look.font().c_str(), text.c_str()));
    }

    std::string m_text;
    AreaOptions m_area;
    TextOptions m_look;
};

class Picture : public Verb {
  public:
    void add_arguments(ArgumentList& command) override {
        add_value(command, "FILE", m_path, "", "A PNG picture", read_png_path).required();
        m_area.add_to(command);
    }

    void run(Session& session) override {
        const Target target = m_area.target(session);
        HVpageHeader_G6 page = m_area.page(target.rect);
        const Controller& to = session.controller;
        Session::require(dynamicArea_AddAreaPic_6G(to.ip.c_str(), to.port, target.color, target.id,
                                                   target.rect.x, target.rect.y, target.rect.width,
                                                   target.rect.height, &page, m_path.c_str()));
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
