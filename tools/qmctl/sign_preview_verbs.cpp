// Pictures of what a sign shows.
#include "AreaOptions.h"
#include "Verb.h"
#include "arguments.h"
#include "film/film.h"
#include "sign/ProgramOverview.h"
#include "sign/SignSource.h"
#include "sign/files.h"
#include "sign/program_files.h"
#include "sign/time_zone.h"

namespace qm::ctl {
namespace {

using Json = nlohmann::ordered_json;
using std::chrono::local_seconds;

local_seconds moment_of(const Time& time) {
    using namespace std::chrono;
    const year_month_day day{year(static_cast<int>(time.date.year)), month(time.date.month),
                             std::chrono::day(time.date.day)};
    return local_days(day) + hours(time.hour) + minutes(time.minute) + seconds(time.second);
}

class PreviewSign : public Verb {
  public:
    void add_arguments(ArgumentList& command) override {
        add_value(command, "SIGN.json", m_path, "", "The description of the sign", read_path).required();
        add_value(
            command, "-o,--output", m_folder, "DIR",
            "Folder for the pictures (default the current one); of several controllers each has a folder "
            "in\nit, named as the controller",
            read_text);
        const Argument film = add_value(command, "--film", m_length, "TIME",
                                        "Film what plays for so long, such as 30s, at most 10m, as sign.gif",
                                        [](const auto& text) { return read_duration(text, film::kLongest); });
        add_value(command, "--at", m_begin, "TIME",
                  "When the film begins, such as '2026-12-24 17:30' (default now)", read_moment)
            .needs(film);
        add_number(command, "--scale", m_scale, 1, film::kLargestScale,
                   "Pixels each way for an LED of the film, 1 to 16 (default 4)")
            .needs(film);
        const Argument size = add_value(
            command, "--size", m_size, "WxH",
            "Pixels of the screen; then no controller is asked, but that of --type taken for it", read_size);
        add_value(command, "--type", m_type, "TYPE", "Type of that controller (default 0x0262)", read_type)
            .needs(size);
        add_word(command, "--screen", m_color, kScreenColors,
                 "Colours of its screen: single, double, three or full (default double)")
            .needs(size);
        m_remarks.add_to(command);
    }
    void prepare() override { m_source.read(m_path); }
    std::vector<std::string> controllers() const override {
        return m_size ? std::vector<std::string>() : m_source.sign().controllers;
    }

    Report run(const Session& session) const override {
        const Identity identity = m_size ? imagined() : require(session.controller.ping());
        const Screen screen = Screen::of(identity);
        const auto folder = session.one_of_many ? std::filesystem::path(m_folder) / folder_of(session.target)
                                                : std::filesystem::path(m_folder);
        film::Scene scene{screen, {}, {}};
        std::vector<std::vector<std::string>> lines{{"Picture", "Program"}};
        Json pictures = Json::array();
        for (const auto& [source, fitted, files] : m_source.programs(identity)) {
            m_remarks.tell(session, *fitted, source->path());
            const std::string name = program_name(fitted->program.id) + ".png";
            const auto pages = ProgramBuilder(fitted->program, fitted->screen).pages();
            write_file(folder, name, draw_overview(fitted->program, fitted->screen, pages));
            lines.push_back({name, source->path()});
            pictures.push_back({{"picture", name}, {"program", source->path()}});
            std::ranges::copy(*files, std::back_inserter(scene.files));
        }
        if (m_source.areas()) {
            const auto& [areas, texts] = m_source.areas()->fitted(screen);
            m_remarks.tell(session, texts.remarks);
            scene.areas = areas;
        }
        Report report = m_size ? Report() : session.report();
        report.add("Folder", "folder", folder.string());
        if (m_length) {
            write_file(folder, kFilm, film::gif_of(scene, *m_length, begin(), m_scale));
            report.add("Film", "film", kFilm);
        }
        return report.list(std::move(lines), "pictures", std::move(pictures));
    }

  private:
    static constexpr const char* kFilm = "sign.gif";

    // Names may have slashes.
    static std::string folder_of(const NamedController& controller) {
        std::string name = controller.label();
        std::ranges::replace(name, '/', '-');
        return name;
    }
    [[nodiscard]] Identity imagined() const {
        Identity identity;
        identity.type = ControllerType::of(static_cast<std::uint16_t>(m_type));
        identity.screen = {(*m_size)[0], (*m_size)[1]};
        identity.color = m_color;
        return identity;
    }
    [[nodiscard]] local_seconds begin() const { return moment_of(m_begin ? *m_begin : time_in("", 0)); }

    std::string m_path, m_folder = ".";
    std::optional<std::chrono::seconds> m_length;
    std::optional<Time> m_begin;
    unsigned m_scale = 4;
    std::optional<std::array<unsigned, 2>> m_size;
    unsigned m_type = Screen().type, m_color = SCREEN_COLOR_DOUBLE;
    SignSource m_source;
    Remarks m_remarks;
};

constexpr VerbEntry kSignPreviewVerbs[] = {
    {"preview", "Draw what a sign shows, as PNG pictures and as a film",
     "A picture of each program has all its pages. The film is what a controller plays that has nothing "
     "else:\n"
     "the playlist, with its areas over it; timer and brightness are left out.\n\n"
     "Example:\n  qmctl preview --film 30s --size 128x32 -o out examples/shops/sign.json",
     make_verb<PreviewSign>}};

} // namespace

Family sign_preview_verbs() { return kSignPreviewVerbs; }

} // namespace qm::ctl
