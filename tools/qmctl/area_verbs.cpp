// Verbs that put text and pictures on the screen at once, without a program being written.
#include "AreaOptions.h"
#include "arguments.h"
#include "record_text.h"
#include "sign/Kept.h"
#include "sign/PictureFiles.h"

#include <atomic>
#include <future>
#include <iostream>
#include <mutex>
#include <set>

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

class ShowText : public AreaVerb {
  public:
    explicit ShowText(unsigned id = 0) : m_options(id) {}
    void add_arguments(ArgumentList& command) override {
        add_value(command, "TEXT", m_area.text, "", "The text in UTF-8; - reads it from standard input",
                  read_text)
            .required();
        m_options.add_to(command);
        add_text_options(command, m_area.style);
        m_remarks.add_to(command);
        add_value(command, "--say", m_speech.text, "TEXT", "A text to speak with it (generation 6)",
                  read_speech);
        add_speech_options(command, m_speech);
    }
    void prepare() override {
        if (m_area.text == "-") m_area.text = read_standard_input();
        if (!m_speech.text.empty()) m_area.speech = m_speech;
        // Fonts are found and loaded while the process's first connection rests. What goes wrong goes wrong
        // again.
        static std::atomic_flag found;
        if (found.test_and_set()) return;
        m_fonts = std::async([this] { (void)measure(m_area.text, m_area.style, kUsual, m_area.effect); });
    }
    Report run(const Session& session) const override {
        Area area = m_area;
        const Screen screen = m_options.place(session, area);
        const DrawnText& drawn = m_drawn.get({area.rect->width, area.rect->height}, [&] {
            return drawn_text(area.text, area.style, *area.rect, area.effect);
        });
        m_remarks.tell(session, drawn.remarks);
        area.style.size = static_cast<std::uint16_t>(drawn.points);
        begin_to_show(session);
        Report report = m_options.show(session, area, screen);
        report.add("Font", "font", drawn.family)
            .add("Size", std::to_string(drawn.points) + " points", "size", drawn.points)
            .add("Pages", "pages", drawn.pages);
        if (!drawn.remarks.empty()) report.add("notes", drawn.remarks);
        if (area.speech) report.add("Says", "speech", m_speech.text);
        return report;
    }

  protected:
    // From here on the area may be there, whatever is answered.
    virtual void begin_to_show(const Session&) const {}
    [[nodiscard]] const AreaOptions& options() const { return m_options; }

  private:
    Area m_area;
    Speech m_speech;
    AreaOptions m_options;
    Remarks m_remarks;
    Kept<std::array<unsigned, 2>, DrawnText> m_drawn; // by the size of the area
    static constexpr Rect kUsual{0, 0, 128, 32};
    std::future<void> m_fonts; // which looks at the area
};

// The end of an override.
class TakeAway : public Verb {
  public:
    explicit TakeAway(const AreaOptions& shown) : m_shown(shown) {}
    Report run(const Session& session) const override {
        const Identity identity = require(session.controller.ping());
        require(session.controller.remove_areas({m_shown.id()}, identity.type.generation));
        return session.report().add("Deleted", "deleted", nlohmann::ordered_json::array({m_shown.id()}));
    }

  private:
    const AreaOptions& m_shown;
};

class Override : public ShowText {
  public:
    Override() : ShowText(kOverride) {}
    void add_arguments(ArgumentList& command) override {
        ShowText::add_arguments(command);
        add_value(command, "--for", m_time, "TIME", "How long, such as 90s, 10m or 2h30m",
                  [](const auto& text) { return read_duration(text, kDay); })
            .required();
    }
    std::optional<Ending> ending() const override {
        return Ending{m_time, m_end, [this](const NamedController& controller) {
                          const std::lock_guard lock(m_mutex);
                          return m_shown_at.contains(controller.address());
                      }};
    }
    Report run(const Session& session) const override {
        Report report = ShowText::run(session);
        const std::time_t end = std::time(nullptr) + m_time.count();
        return report.add("Until", local_time(end, "%T"), "until", timestamp(end));
    }

  protected:
    void begin_to_show(const Session& session) const override {
        const std::lock_guard lock(m_mutex);
        m_shown_at.insert(session.target.address());
    }

  private:
    static constexpr unsigned kOverride = 31; // beside areas that are numbered from 0 on

    std::chrono::seconds m_time{0};
    const TakeAway m_end{options()};
    mutable std::mutex m_mutex;
    mutable std::set<std::string> m_shown_at; // addresses
};

class ShowPicture : public AreaVerb {
  public:
    void add_arguments(ArgumentList& command) override {
        m_page.picture.where = "FILE";
        add_value(
            command, "FILE", m_page.picture.path, "",
            "A picture: PNG, JPEG, GIF (the first of several), WebP, SVG and what else gdk-pixbuf reads",
            read_path)
            .required();
        m_options.add_to(command);
        add_value(command, "--fit", m_page.fit.fit, "WORD",
                  "none (default): in its own size, cut to the rectangle; contain: all of it, in the\n"
                  "middle of black; cover: all over the rectangle, cut around the middle; stretch",
                  read_fit);
        command.add_flag("--dither", m_page.fit.dither,
                         "Shades as dots of the colours that the screen has; nothing in full colour");
    }
    void prepare() override { require_decodable(m_page); }
    Report run(const Session& session) const override {
        Area area;
        const Screen screen = m_options.place(session, area);
        const Size size{area.rect->width, area.rect->height};
        area.picture = m_pictures.get({size.width, size.height, screen.color},
                                      [&] { return m_files.path_of(m_page, size, screen.color); });
        return m_options.show(session, area, screen).add("Picture", "picture", m_page.picture.path);
    }

  private:
    PicturePage m_page;
    AreaOptions m_options;
    mutable PictureFiles m_files;
    Kept<std::array<unsigned, 3>, std::string> m_pictures; // by the size of the area and the screen's colours
};

constexpr VerbEntry kAreaVerbs[] = {
    {"text", "Show a text",
     "Examples:\n"
     "  qmctl text Hello\n"
     "  qmctl text --color '#00FF00' --mode left --font 'DejaVu Sans' 'A long line that runs'\n"
     "  date | qmctl -c 192.168.0.199 text --area 1 --rect 0,16,128,16 -\n"
     "A text that begins with a dash stands behind two: qmctl text -- '--> Exit'",
     make_verb<ShowText>},
    {"override", "Show a text over all else for some time",
     "Stays for that time, then deletes the area; so it does when it is interrupted, as with Ctrl-C. What\n"
     "ends it otherwise leaves the text: qmctl area rm 31 deletes that.\n\n"
     "Example:\n  qmctl -c tag:hall override --for 10m 'Closed today'",
     make_verb<Override>},
    {"picture", "Show a picture",
     "Examples:\n"
     "  qmctl picture --rect 0,0,32,32 logo.png\n"
     "  qmctl picture --fit cover --dither photo.jpg\n"
     "A picture that is enlarged by whole numbers keeps its dots; any other scaling is smooth.",
     make_verb<ShowPicture>}};

} // namespace

Family area_verbs() { return kAreaVerbs; }

} // namespace qm::ctl
