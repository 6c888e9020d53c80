// Verbs that make a program from its description.
#include "AreaOptions.h"
#include "Progress.h"
#include "Verb.h"
#include "device_arguments.h"
#include "record_text.h"
#include "sign/ProgramOverview.h"
#include "sign/ProgramSource.h"
#include "sign/files.h"
#include "sign/program_files.h"
#include "sign/program_reading.h"

#include <deque>
#include <map>

namespace qm::ctl {
namespace {

using Json = nlohmann::ordered_json;

// What the verbs begin with that take descriptions.
class ProgramVerb : public Verb {
  public:
    explicit ProgramVerb(int most = 1) : m_most(most) {}

    void add_arguments(ArgumentList& command) override {
        add_values(command, "FILE.json", m_paths, m_most,
                   m_most == 1 ? "The description of the program" : "Descriptions of programs", read_path);
        add_number(command, kGeneration, m_wishes.generation, 5, 6,
                   "Generation of the controller, 5 or 6 (default as the description says)");
        add_value(command, kType, m_wishes.type, "TYPE", "Type of the controller, such as 0x0262 (likewise)",
                  read_type);
        add_word(command, kScreen, m_wishes.color, kScreenColors,
                 "Colours of the screen: single, double, three or full (likewise)");
        m_remarks.add_to(command);
    }

    void prepare() override {
        for (const std::string& path : m_paths) {
            const ProgramSource& source = m_sources.emplace_back();
            m_sources.back().read(path);
            name_description(path, [&] { (void)generation_for(m_wishes, source.program()); });
        }
    }

  protected:
    // What generation 5 has not is told and left out.
    const FittedProgram& fitted(const Session& session, const ProgramSource& source,
                                const Screen& screen) const {
        const FittedProgram& fitted = source.fitted(screen);
        m_remarks.tell(session, fitted);
        return fitted;
    }
    // The only one, for the screen that the description and the controller say.
    const FittedProgram& fitted(const Session& session) const {
        const ProgramSource& source = m_sources.front();
        return fitted(session, source, name_description(source.path(), [&] {
                          return target_for(m_wishes, source.program(), session.controller);
                      }));
    }

    static Report& describe(Report& report, const Screen& screen) {
        return report.add("Generation", "generation", screen.generation)
            .add("Type", hex(screen.type, 4), "type", unsigned{screen.type})
            .add("Screen", to_string(screen.size) + " pixels, " + word_for(kScreenColors, screen.color),
                 "screen", word_for(kScreenColors, screen.color))
            .add("width", screen.size.width)
            .add("height", screen.size.height);
    }
    static Report& describe(Report& report, const FittedProgram& fitted) {
        return add_texts(describe(report, fitted.screen), fitted.texts);
    }

    [[nodiscard]] const ScreenWishes& wishes() const { return m_wishes; }
    [[nodiscard]] const std::deque<ProgramSource>& sources() const { return m_sources; }

  private:
    static constexpr const char *kGeneration = "--generation", *kType = "--type", *kScreen = "--screen";

    const int m_most; // descriptions
    std::vector<std::string> m_paths;
    ScreenWishes m_wishes{kGeneration, kType, kScreen};
    std::deque<ProgramSource> m_sources;
    Remarks m_remarks;
};

std::vector<FileEntry> entries_of(const std::vector<File>& files) {
    std::vector<FileEntry> entries;
    std::ranges::transform(files, std::back_inserter(entries), entry_of);
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

    Report run(const Session& session) const override {
        const FittedProgram& program = fitted(session);
        const std::vector<File>& files = sources().front().files(program.screen);
        for (const File& file : files) write_file(m_folder, file.name, text_of(file.bytes));
        Report report;
        return list_files(describe(report, program).add("Folder", "folder", m_folder), entries_of(files));
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

    Report run(const Session& session) const override {
        const FittedProgram& made = fitted(session);
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

constexpr int kMostPrograms = 1000; // at once

class Send : public ProgramVerb {
  public:
    Send() : ProgramVerb(kMostPrograms) {}

    void prepare() override {
        ProgramVerb::prepare();
        std::map<std::string, std::string>
            paths; // by the names of data, which are those of programs, shortened
        for (const ProgramSource& source : sources()) {
            const std::string name = program_name(source.program().id);
            if (const auto [other, fresh] = paths.emplace(data_name(name), source.path()); !fresh)
                throw UsageError(source.path() + ": id: " + name + " has a file in common with " +
                                 other->second);
        }
    }
    Report run(const Session& session) const override {
        const Identity identity = require(session.controller.ping());
        const FittedProgram* program = nullptr;
        std::vector<std::string> names;
        std::vector<File> files;
        for (const ProgramSource& source : sources()) {
            program = &fitted(session, source, name_description(source.path(), [&] {
                                  return target_for(wishes(), source.program(), identity);
                              }));
            names.push_back(program_name(source.program().id));
            std::ranges::copy(source.files(program->screen), std::back_inserter(files));
        }
        require(
            session.controller.upload(files, [&](const File& file) { return Progress::of(session, file); }));
        Report report = session.report();
        if (names.size() == 1)
            describe(report, *program);
        else
            describe(report, program->screen).add("Programs", "programs", names);
        return list_files(report, entries_of(files));
    }
};

class ListPrograms : public Verb {
  public:
    Report run(const Session& session) const override {
        const auto held = list_program_files(session.controller, require(session.controller.ping()));
        std::vector<std::vector<std::string>> lines{{"Program", "Files", "Bytes"}};
        Json programs = Json::array();
        for (const FileEntry& file : held) {
            if (!is_program(file)) continue;
            const FileEntry* data = data_of(file, held);
            const std::uint64_t size = std::uint64_t{file.size} + (data ? data->size : 0);
            lines.push_back(
                {file.name, data ? file.name + ", " + data->name : file.name, std::to_string(size)});
            Json files = Json::array({described(file)});
            if (data) files.push_back(described(*data));
            programs.push_back({{"name", file.name}, {"size", size}, {"files", std::move(files)}});
        }
        Report report = session.report();
        return report.add("Programs", std::to_string(programs.size()), "count", programs.size())
            .list(std::move(lines), "programs", std::move(programs));
    }

  private:
    static const FileEntry* data_of(const FileEntry& program, const std::vector<FileEntry>& held) {
        const auto found = std::ranges::find_if(held, [&](const FileEntry& file) {
            return is_data(file) && file.name == data_name(program.name);
        });
        return found == held.end() ? nullptr : &*found;
    }
    static Json described(const FileEntry& file) {
        return {{"name", file.name}, {"type", file.type}, {"size", file.size}, {"crc32", file.checksum}};
    }
};

class RemovePrograms : public Verb {
  public:
    void add_arguments(ArgumentList& command) override {
        add_values(command, "NAME", m_names, kMostPrograms, "Programs by name or number, such as P007 or 7",
                   [](const std::string& text) {
                       const auto number = to_number(text, 0, 9999);
                       return number ? program_name(*number) : read_name(text);
                   });
    }
    // Data goes with the last program that it is of.
    Report run(const Session& session) const override {
        const auto held = list_program_files(session.controller, require(session.controller.ping()));
        std::vector<std::string> names = m_names;
        const auto stays = [&](const FileEntry& file) {
            return is_program(file) && std::ranges::find(m_names, file.name) == m_names.end();
        };
        for (const FileEntry& file : held) {
            if (!is_data(file)) continue;
            const auto uses = [&](const std::string& name) { return data_name(name) == file.name; };
            const bool kept =
                std::ranges::any_of(held, [&](const FileEntry& one) { return stays(one) && uses(one.name); });
            if (!kept && std::ranges::any_of(m_names, uses)) names.push_back(file.name);
        }
        require(session.controller.remove_files(names));
        return session.report().add("Removed", "removed", names);
    }

  private:
    std::vector<std::string> m_names;
};

constexpr VerbEntry kProgramVerbs[] = {
    {"program build", "Write a program's files to a folder",
     "The controller is asked only for what neither the description nor the options say.\n\n"
     "Example:\n  qmctl program build -o out examples/program/shop.json",
     make_verb<Build>, Reach::one},
    {"program preview", "Draw every page of a program, and an overview, as PNG pictures",
     "Example:\n  qmctl program preview -o out examples/program/shop.json", make_verb<Preview>, Reach::one},
    {"program send", "Write programs to the controller",
     "Programs are made for the controller's type, colours and size, and go as one transfer.\n\n"
     "Example:\n  qmctl -c 192.168.0.199 program send examples/program/shop.json",
     make_verb<Send>},
    {"program ls", "List programs, with the files that each is made of", "Example:\n  qmctl program ls",
     make_verb<ListPrograms>},
    {"program rm", "Remove programs, with all their files", "Example:\n  qmctl program rm P001 7",
     make_verb<RemovePrograms>}};

} // namespace

Family program_verbs() { return kProgramVerbs; }

} // namespace qm::ctl
