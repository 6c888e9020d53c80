// Verbs that make a program from its description.
#include "AreaOptions.h"
#include "Progress.h"
#include "Verb.h"
#include "arguments.h"
#include "record_text.h"
#include "sign/ProgramOverview.h"
#include "sign/ProgramSource.h"
#include "sign/files.h"
#include "sign/program_reading.h"

namespace qm::ctl {
namespace {

using Json = nlohmann::ordered_json;

// What the three verbs begin with.
class ProgramVerb : public Verb {
  public:
    void add_arguments(ArgumentList& command) override {
        add_value(command, "FILE.json", m_path, "", "The description of the program", read_path).required();
        add_number(command, kGeneration, m_wishes.generation, 5, 6,
                   "Generation of the controller, 5 or 6 (default as the description says)");
        add_value(command, kType, m_wishes.type, "TYPE", "Type of the controller, such as 0x0262 (likewise)",
                  read_type);
        add_word(command, kScreen, m_wishes.color, kScreenColors,
                 "Colours of the screen: single, double, three or full (likewise)");
        m_remarks.add_to(command);
    }

    void prepare() final {
        m_source.read(m_path);
        name_description(m_path, [this] { (void)generation_for(m_wishes, m_source.program()); });
    }

    Report run(const Session& session) const final {
        return name_description(m_path, [&] { return make(session); });
    }

  protected:
    virtual Report make(const Session& session) const = 0;

    [[nodiscard]] Screen target(const Session& session, bool sending) const {
        return target_for(m_wishes, m_source.program(), session.controller, sending);
    }

    // For the screen; what generation 5 has not is told and left out.
    const FittedProgram& fitted(const Session& session, const Screen& screen) const {
        const FittedProgram& fitted = m_source.fitted(screen);
        m_remarks.tell(session, std::span(fitted.texts.remarks).subspan(fitted.notes.size()));
        for (const std::string& note : fitted.notes) session.note(note);
        return fitted;
    }

    [[nodiscard]] const std::vector<File>& files(const Screen& screen) const {
        return m_source.files(screen);
    }

    static Report& describe(Report& report, const FittedProgram& fitted) {
        const Screen& screen = fitted.screen;
        report.add("Generation", "generation", screen.generation)
            .add("Type", hex(screen.type, 4), "type", unsigned{screen.type})
            .add("Screen", to_string(screen.size) + " pixels, " + word_for(kScreenColors, screen.color),
                 "screen", word_for(kScreenColors, screen.color))
            .add("width", screen.size.width)
            .add("height", screen.size.height);
        return add_texts(report, fitted.texts);
    }

  private:
    static constexpr const char *kGeneration = "--generation", *kType = "--type", *kScreen = "--screen";

    std::string m_path;
    ScreenWishes m_wishes{kGeneration, kType, kScreen};
    ProgramSource m_source;
    Remarks m_remarks;
};

std::vector<FileEntry> entries_of(const std::vector<File>& files) {
    std::vector<FileEntry> entries;
    for (const auto& [name, type, bytes] : files)
        entries.push_back({name, type, static_cast<std::uint32_t>(bytes.size()), crc_at_end(bytes)});
    return entries;
}

std::string_view text_of(const std::vector<Ouint8>& bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

class Build : public ProgramVerb {
  public:
    void add_arguments(ArgumentList& command) override {
        ProgramVerb::add_arguments(command);
        add_value(command, "-o,--output", m_folder, "DIR", "Folder for the files (default the current one)",
                  read_text);
    }

  protected:
    Report make(const Session& session) const override {
        const Screen screen = target(session, false);
        const FittedProgram& program = fitted(session, screen);
        for (const File& file : files(screen)) write_file(m_folder, file.name, text_of(file.bytes));
        Report report;
        return list_files(describe(report, program).add("Folder", "folder", m_folder),
                          entries_of(files(screen)));
    }

  private:
    std::string m_folder = ".";
};

class Preview : public ProgramVerb {
  public:
    void add_arguments(ArgumentList& command) override {
        ProgramVerb::add_arguments(command);
        add_value(command, "-o,--output", m_folder, "DIR",
                  "Folder for the pictures (default the current one)", read_text);
    }

  protected:
    Report make(const Session& session) const override {
        const FittedProgram& made = fitted(session, target(session, false));
        const auto areas = ProgramBuilder(made.program, made.screen).pages();
        Report report;
        describe(report, made).add("Folder", "folder", m_folder);
        std::vector<std::vector<std::string>> lines{{"Area", "Pages", "Pixels"}};
        Json values = Json::array();
        for (const AreaPages& area : areas) {
            const Size size{area.rect.width, area.rect.height};
            values.push_back({{"area", area.name},
                              {"width", size.width},
                              {"height", size.height},
                              {"pages", write_pages(area)}});
            lines.push_back({area.name, std::to_string(area.pages.size()), to_string(size)});
        }
        write_file(m_folder, kOverview, draw_overview(made.program, made.screen, areas));
        return report.add("Overview", "overview", kOverview)
            .list(std::move(lines), "areas", std::move(values));
    }

  private:
    static constexpr const char* kOverview = "overview.png";

    // Their names.
    std::vector<std::string> write_pages(const AreaPages& area) const {
        std::vector<std::string> names;
        for (const std::string& page : area.pages) {
            names.push_back(area.name + "-page-" + std::to_string(names.size() + 1) + ".png");
            write_file(m_folder, names.back(), page);
        }
        return names;
    }

    std::string m_folder = ".";
};

class Send : public ProgramVerb {
  protected:
    Report make(const Session& session) const override {
        const Screen screen = target(session, true);
        const FittedProgram& program = fitted(session, screen);
        require(session.controller.upload(files(screen),
                                          [&](const File& file) { return Progress::of(session, file); }));
        Report report = session.report();
        return list_files(describe(report, program), entries_of(files(screen)));
    }
};

constexpr VerbEntry kVerbs[] = {
    {"program build", "Write a program's files to a folder",
     "The controller is asked only for what neither the description nor the options say.\n\n"
     "Example:\n  qmctl program build -o out examples/program/shop.json",
     make_verb<Build>, Reach::one},
    {"program preview", "Draw every page of a program, and an overview, as PNG pictures",
     "Example:\n  qmctl program preview -o out examples/program/shop.json", make_verb<Preview>, Reach::one},
    {"program send", "Write a program's files to the controller",
     "The program is made for the controller's type, colours and size.\n\n"
     "Example:\n  qmctl -c 192.168.0.199 program send examples/program/shop.json",
     make_verb<Send>}};

} // namespace

Family program_verbs() { return kVerbs; }

} // namespace qm::ctl
