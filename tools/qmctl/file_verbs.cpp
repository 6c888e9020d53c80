// Verbs for the files of a controller.
#include "Progress.h"
#include "Verb.h"
#include "device_arguments.h"
#include "record_text.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace qm::ctl {
namespace {

constexpr int kMostNames = 8191;          // that one command carries
constexpr unsigned kLargestBlock = 32758; // that one frame carries
constexpr std::uintmax_t kLongest = 0xFFFFFFFF;

// A listing, released at the end.
class Directory {
  public:
    Directory(const Session& session, unsigned type)
        : Directory() { // so that a listing cut short is released
        m_block.fileType = static_cast<Ouint8>(type);
        session.command(cmd_ofsReedDirBlock, &m_block);
    }
    ~Directory() { cmd_ofs_freeDirBlock(&m_block); }
    Directory(const Directory&) = delete;
    Directory& operator=(const Directory&) = delete;

    [[nodiscard]] std::vector<FileAttribute_G56> files() const {
        std::vector<FileAttribute_G56> files(m_block.fileNumber);
        for (std::size_t i = 0; i < files.size(); ++i)
            Session::require(cmd_getFileAttr(&m_block, static_cast<Ouint16>(i), &files[i]));
        return files;
    }

  private:
    Directory() = default;

    GetDirBlock_G56 m_block{};
};

class List : public Verb {
  public:
    void add_arguments(ArgumentList& command) override {
        add_number(command, "--type", m_type, 0, 255,
                   "Kind of files, in the controller's numbers (default 0, programs)");
    }
    void run(Session& session) override {
        std::vector<std::vector<std::string>> lines{{"Name", "Type", "Bytes", "CRC-32"}};
        auto values = nlohmann::ordered_json::array();
        for (const FileAttribute_G56& file : Directory(session, m_type).files()) {
            const std::string name = printable(octets(file.fileName));
            const unsigned type = file.fileType, size = file.fileLen, crc = file.fileCRC;
            lines.push_back({name, std::to_string(type), std::to_string(size), hex(crc, 8)});
            values.push_back({{"name", name}, {"type", type}, {"size", size}, {"crc32", crc}});
        }
        Result result = session.result();
        result.add("Files", std::to_string(values.size()), "type", m_type)
            .list(std::move(lines), "files", values);
        session.print(result);
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
        add_value(command, "NAME", m_name, "",
                  "Its name there, 4 characters (default the name of FILE up to its dot)", read_name);
        add_number(command, "--type", m_type, 0, 255,
                   "Kind of file, in the controller's numbers (default 0, a program)");
        command.add_flag("--no-overwrite", m_no_overwrite, "Leave a file of that name as it is, and fail");
        add_number(command, "--block", m_block, 1, kLargestBlock,
                   "Bytes sent at once, 1 to 32758 (default 1024)");
        command.add_flag("--no-progress", m_no_progress,
                         "No bar, and no questions about it to the controller");
    }
    void prepare(const Session&) override {
        if (m_name.empty()) m_name = name_of(m_path);
        m_content = content_of(m_path);
    }
    void run(Session& session) override {
        set_packetLen(static_cast<Ouint16>(m_block));
        {
            std::optional<Progress> progress;
            if (!m_no_progress && !session.json && !session.verbose && session.output.is_terminal())
                progress.emplace(session, m_name, m_content.size());
            session.command(cmd_ofsWriteFile, m_name.c_str(), m_type, m_content.size(), !m_no_overwrite,
                            m_content.data());
        }
        Result result = session.result();
        result.add("File", "file", m_path)
            .add("Name", "name", m_name)
            .add("Type", "type", m_type)
            .add("Bytes", "size", m_content.size());
        session.print(result);
    }

  private:
    static std::string name_of(const std::string& path) {
        std::string stem = std::filesystem::path(path).stem();
        if (stem.size() != 4)
            throw UsageError("NAME: expected a name of 4 characters, such as P001, not '" + stem + "'");
        return stem;
    }

    std::string m_path, m_name;
    std::vector<Ouint8> m_content;
    unsigned m_type = 0, m_block = 1024;
    bool m_no_overwrite = false, m_no_progress = false;
};

class Remove : public Verb {
  public:
    void add_arguments(ArgumentList& command) override {
        add_values(command, "NAME", m_names, kMostNames, "Names of 4 characters", read_name);
    }
    void run(Session& session) override {
        std::string names, words;
        for (const std::string& name : m_names) {
            names += name;
            words += (words.empty() ? "" : ", ") + name;
        }
        session.command(cmd_ofsDeleteFormatFile, m_names.size(), names.data());
        Result result = session.result();
        result.add("Removed", words, "removed", m_names);
        session.print(result);
    }

  private:
    std::vector<std::string> m_names;
};

class Volume : public Verb {
  public:
    void add_arguments(ArgumentList&) override {}
    void run(Session& session) override {
        Ouint32 total = 0, available = 0;
        session.command(cmd_ofsGetMemoryVolume, &total, &available);
        Result result = session.result();
        result.add("Total", std::to_string(total) + " bytes", "total", total)
            .add("Available", std::to_string(available) + " bytes", "available", available);
        session.print(result);
    }
};

class Format : public Verb {
  public:
    void add_arguments(ArgumentList& command) override {
        command.add_flag("--yes", m_yes, "Really erase all files");
    }
    void prepare(const Session&) override {
        if (!m_yes) throw UsageError("fs format erases all files of the controller: expected --yes");
    }
    void run(Session& session) override {
        session.command(cmd_ofsFormat);
        Result result = session.result();
        result.add("Files", "all erased", "formatted", true);
        session.print(result);
    }

  private:
    bool m_yes = false;
};

constexpr VerbEntry kVerbs[] = {
    {"fs ls", "List files", "Examples:\n  qmctl fs ls\n  qmctl --json fs ls --type 1", make_verb<List>},
    {"fs put", "Write a file",
     "On a terminal a bar shows how many bytes the controller says it has; it is asked for that on a second\n"
     "connection. When it does not tell, size and elapsed time are shown.\n\n"
     "Examples:\n  qmctl fs put P001.bin\n  qmctl fs put new.bin P002 --no-overwrite --block 512",
     make_verb<Put>},
    {"fs rm", "Remove files", "Example:\n  qmctl fs rm P001 P002", make_verb<Remove>},
    {"fs df", "Show the memory for files", "Example:\n  qmctl fs df", make_verb<Volume>},
    {"fs format", "Erase all files", "Example:\n  qmctl fs format --yes", make_verb<Format>}};

} // namespace

Family file_verbs() { return kVerbs; }

} // namespace qm::ctl
