// Verbs for the files of a controller.
#include "Progress.h"
#include "Verb.h"
#include "device_arguments.h"
#include "record_text.h"

#include <filesystem>
#include <fstream>

namespace qm::ctl {
namespace {

constexpr int kMostNames = 8191;          // that one command carries
constexpr unsigned kLargestBlock = 32758; // that one frame carries
constexpr std::uintmax_t kLongest = 0xFFFFFFFF;

class List : public Verb {
  public:
    void add_arguments(ArgumentList& command) override {
        add_number(command, "--type", m_type, 0, 255,
                   "Kind of files, in the controller's numbers (default 0, programs)");
    }
    Report run(const Session& session) const override {
        const auto files = require(session.controller.files(static_cast<Ouint8>(m_type)));
        Report report = session.report();
        report.add("Files", std::to_string(files.size()), "type", m_type);
        return list_files(report, files);
    }

  private:
    unsigned m_type = 0;
};

std::vector<Ouint8> content_of(const std::string& path) {
    std::error_code error;
    const auto size = std::filesystem::file_size(path, error);
    if (error) throw UsageError("FILE: expected a file that can be read, not '" + path + "'");
    if (size > kLongest) throw UsageError("FILE: expected at most 4294967295 bytes in '" + path + "'");
    std::ifstream file(path, std::ios::binary);
    std::vector<Ouint8> content(size);
    file.read(reinterpret_cast<char*>(content.data()), static_cast<std::streamsize>(size));
    if (!file) throw UsageError("FILE: '" + path + "' cannot be read");
    return content;
}

class Put : public Verb {
  public:
    void add_arguments(ArgumentList& command) override {
        add_value(command, "FILE", m_path, "", "The file to write", read_path).required();
        add_value(command, "NAME", m_file.name, "",
                  "Its name there, 4 characters (default the name of FILE up to its dot)", read_name);
        add_number(command, "--type", m_type, 0, 255,
                   "Kind of file, in the controller's numbers (default 0, a program)");
        command.add_flag("--no-overwrite", m_no_overwrite, "Leave a file of that name as it is, and fail");
        add_number(command, "--block", m_block, 1, kLargestBlock,
                   "Bytes sent at once, 1 to 32758 (default 1024)");
        command.add_flag("--no-progress", m_no_progress,
                         "No bar, and no questions about it to the controller");
    }
    void prepare() override {
        if (m_file.name.empty()) m_file.name = name_of(m_path);
        m_file.type = static_cast<Ouint8>(m_type);
        m_file.bytes = content_of(m_path);
    }
    Report run(const Session& session) const override {
        set_packetLen(static_cast<Ouint16>(m_block));
        {
            const auto bar = m_no_progress ? nullptr : Progress::of(session, m_file);
            require(session.controller.write(m_file, !m_no_overwrite));
        }
        return session.report()
            .add("File", "file", m_path)
            .add("Name", "name", m_file.name)
            .add("Type", "type", m_type)
            .add("Bytes", "size", m_file.bytes.size());
    }

  private:
    static std::string name_of(const std::string& path) {
        std::string stem = std::filesystem::path(path).stem();
        if (stem.size() != 4)
            throw UsageError("NAME: expected a name of 4 characters, such as P001, not '" + stem + "'");
        return stem;
    }

    std::string m_path;
    File m_file;
    unsigned m_type = 0, m_block = 1024;
    bool m_no_overwrite = false, m_no_progress = false;
};

class Remove : public Verb {
  public:
    void add_arguments(ArgumentList& command) override {
        add_values(command, "NAME", m_names, kMostNames, "Names of 4 characters", read_name);
    }
    Report run(const Session& session) const override {
        require(session.controller.remove_files(m_names));
        return session.report().add("Removed", "removed", m_names);
    }

  private:
    std::vector<std::string> m_names;
};

class ShowVolume : public Verb {
  public:
    Report run(const Session& session) const override {
        const Volume volume = require(session.controller.volume());
        return session.report()
            .add("Total", std::to_string(volume.total) + " bytes", "total", volume.total)
            .add("Available", std::to_string(volume.available) + " bytes", "available", volume.available);
    }
};

class Format : public Verb {
  public:
    void add_arguments(ArgumentList& command) override {
        command.add_flag("--yes", m_yes, "Really erase all files");
    }
    void prepare() override {
        if (!m_yes) throw UsageError("fs format erases all files of the controller: expected --yes");
    }
    Report run(const Session& session) const override {
        require(session.controller.format());
        return session.report().add("Files", "all erased", "formatted", true);
    }

  private:
    bool m_yes = false;
};

constexpr VerbEntry kFileVerbs[] = {
    {"fs ls", "List files", "Examples:\n  qmctl fs ls\n  qmctl --json fs ls --type 1", make_verb<List>},
    {"fs put", "Write a file",
     "On a terminal a bar shows how many bytes the controller says it has; it is asked for that on a second\n"
     "connection. When it does not tell, size and elapsed time are shown.\n\n"
     "Examples:\n  qmctl fs put P001.bin\n  qmctl fs put new.bin P002 --no-overwrite --block 512",
     make_verb<Put>},
    {"fs rm", "Remove files", "Example:\n  qmctl fs rm P001 P002", make_verb<Remove>},
    {"fs df", "Show the memory for files", "Example:\n  qmctl fs df", make_verb<ShowVolume>},
    {"fs format", "Erase all files", "Example:\n  qmctl fs format --yes", make_verb<Format>}};

} // namespace

Family file_verbs() { return kFileVerbs; }

} // namespace qm::ctl
