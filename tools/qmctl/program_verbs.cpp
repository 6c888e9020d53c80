// Verbs that make a program from its description.
#include "AreaOptions.h"
#include "Progress.h"
#include "Verb.h"
#include "arguments.h"
#include "record_text.h"
#include "running.h"
#include "sign/ProgramOverview.h"
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

    void prepare(const Session&) final {
        name_description(m_path, [this] {
            m_program = read_program(m_path);
            (void)generation_for(m_wishes, m_program);
        });
        run_check([this] { name_description(m_path, [this] { require_drawable(m_program); }); });
    }

    Report run(Session& session) final {
        return name_description(m_path, [&] { return make(session); });
    }

  protected:
    virtual Report make(Session& session) = 0;

    // A builder for the screen; what generation 5 has not is told and left out.
    ProgramBuilder build(const Session& session, bool sending) {
        m_screen = target_for(m_wishes, m_program, session.controller, sending);
        const std::vector<std::string> notes = fit_to(m_program, m_screen);
        m_texts = drawn_texts(m_program.areas, m_screen.size);
        m_remarks.tell(session, m_texts.remarks);
        for (const std::string& note : notes) session.note(note);
        m_texts.remarks.insert(m_texts.remarks.begin(), notes.begin(), notes.end());
        return {m_program, m_screen};
    }

    Report& describe(Report& report) const {
        report.add("Generation", "generation", m_screen.generation)
            .add("Type", hex(m_screen.type, 4), "type", unsigned{m_screen.type})
            .add("Screen", to_string(m_screen.size) + " pixels, " + word_for(kScreenColors, m_screen.color),
                 "screen", word_for(kScreenColors, m_screen.color))
            .add("width", m_screen.size.width)
            .add("height", m_screen.size.height);
        return add_texts(report, m_texts);
    }

    [[nodiscard]] const ProgramDescription& program() const { return m_program; }
    [[nodiscard]] const Screen& screen() const { return m_screen; }

  private:
    static constexpr const char *kGeneration = "--generation", *kType = "--type", *kScreen = "--screen";

    std::string m_path;
    ScreenWishes m_wishes{kGeneration, kType, kScreen};
    ProgramDescription m_program;
    Screen m_screen;
    Remarks m_remarks;
    DrawnTexts m_texts;
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
    Report make(Session& session) override {
        const auto files = build(session, false).files();
        for (const File& file : files) write_file(m_folder, file.name, text_of(file.bytes));
        Report report;
        return list_files(describe(report).add("Folder", "folder", m_folder), entries_of(files));
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
    Report make(Session& session) override {
        const auto areas = build(session, false).pages();
        Report report;
        describe(report).add("Folder", "folder", m_folder);
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
        write_file(m_folder, kOverview, draw_overview(program(), screen(), areas));
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
    Report make(Session& session) override {
        const auto files = build(session, true).files();
        require(
            session.controller.upload(files, [&](const File& file) { return Progress::of(session, file); }));
        Report report = session.report();
        return list_files(describe(report), entries_of(files));
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
