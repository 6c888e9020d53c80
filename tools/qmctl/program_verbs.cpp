// Verbs that make a program from its description.
#include "JsonReader.h"
#include "ProgramOverview.h"
#include "ProgramUpload.h"
#include "Verb.h"
#include "program_files.h"
#include "record_text.h"

#include <iostream>

namespace qm::ctl {
namespace {

using Json = nlohmann::ordered_json;

// What the three verbs begin with.
class ProgramVerb : public Verb {
  public:
    void add_arguments(ArgumentList& command) override {
        add_value(command, "FILE.json", m_path, "", "The description of the program", read_path).required();
        m_options.add_to(command);
    }

    void prepare(const Session&) final {
        name_the_file([this] {
            m_program = read_program(m_path);
            (void)m_options.generation(m_program);
            require_drawable(m_program);
        });
    }

    void run(Session& session) final {
        name_the_file([&] { make(session); });
    }

  protected:
    virtual void make(Session& session) = 0;

    void fit(const Session& session, bool sending) {
        m_target = m_options.target(session, m_program, sending);
        m_notes = fit_to(m_program, m_target);
        for (const std::string& note : m_notes) std::cerr << "qmctl: note: " << note << "\n";
    }

    void describe(Result& result) const {
        result.add("Generation", "generation", m_target.generation)
            .add("Type", hex(m_target.type, 4), "type", unsigned{m_target.type})
            .add("Screen", to_string(m_target.size) + " pixels, " + word_for(kScreenColors, m_target.color),
                 "screen", word_for(kScreenColors, m_target.color))
            .add("width", m_target.size.width)
            .add("height", m_target.size.height);
        if (!m_notes.empty()) result.add("notes", m_notes);
    }

    std::string m_path;
    ProgramTargetOptions m_options;
    ProgramDescription m_program;
    ProgramTarget m_target;
    std::vector<std::string> m_notes;

  private:
    // What is wrong with the description is told with its name.
    template <class Step> void name_the_file(Step step) const {
        try {
            step();
        } catch (const JsonError& error) {
            throw UsageError(m_path + ": " + error.what());
        }
    }
};

void list_files(Result& result, const std::vector<ProgramFile>& files) {
    std::vector<std::vector<std::string>> lines{{"Name", "Type", "Bytes", "CRC-32"}};
    Json values = Json::array();
    for (const ProgramFile& file : files) {
        lines.push_back(
            {file.name, std::to_string(file.type), std::to_string(file.bytes.size()), hex(file.crc(), 8)});
        values.push_back(
            {{"name", file.name}, {"type", file.type}, {"size", file.bytes.size()}, {"crc32", file.crc()}});
    }
    result.list(std::move(lines), "files", std::move(values));
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
    void make(Session& session) override {
        fit(session, false);
        const auto files = ProgramBuilder(m_program, m_target).files();
        for (const ProgramFile& file : files) write_file(m_folder, file.name, text_of(file.bytes));
        Result result;
        describe(result);
        result.add("Folder", "folder", m_folder);
        list_files(result, files);
        session.print(result);
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
    void make(Session& session) override {
        fit(session, false);
        const auto areas = ProgramBuilder(m_program, m_target).pages();
        Result result;
        describe(result);
        result.add("Folder", "folder", m_folder);
        std::vector<std::vector<std::string>> lines{{"Area", "Pages", "Pixels"}};
        Json values = Json::array();
        for (const AreaPages& area : areas) {
            const PixelSize size{area.rect.width, area.rect.height};
            values.push_back({{"area", area.name},
                              {"width", size.width},
                              {"height", size.height},
                              {"pages", write_pages(area)}});
            lines.push_back({area.name, std::to_string(area.pages.size()), to_string(size)});
        }
        write_file(m_folder, kOverview, draw_overview(m_program, m_target, areas));
        result.add("Overview", "overview", kOverview).list(std::move(lines), "areas", std::move(values));
        session.print(result);
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
    void make(Session& session) override {
        fit(session, true);
        const auto files = ProgramBuilder(m_program, m_target).files();
        upload(session, files);
        Result result = session.result();
        describe(result);
        list_files(result, files);
        session.print(result);
    }
};

constexpr VerbEntry kVerbs[] = {
    {"program build", "Write a program's files to a folder",
     "The controller is asked only for what neither the description nor the options say.\n\n"
     "Example:\n  qmctl program build -o out examples/program/shop.json",
     make_verb<Build>},
    {"program preview", "Draw every page of a program, and an overview, as PNG pictures",
     "Example:\n  qmctl program preview -o out examples/program/shop.json", make_verb<Preview>},
    {"program send", "Write a program's files to the controller",
     "The program is made for the controller's type, colours and size.\n\n"
     "Example:\n  qmctl -c 192.168.0.199 program send examples/program/shop.json",
     make_verb<Send>}};

} // namespace

Family program_verbs() { return kVerbs; }

} // namespace qm::ctl
