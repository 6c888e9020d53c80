#include "verbs.h"

#include <fcntl.h>
#include <fstream>
#include <spawn.h>
#include <sys/wait.h>

namespace qm::test {
namespace {

using Words = std::vector<std::string>;

// Its exit status; 128 and more when it was killed.
int run(const std::string& program, Words words, const std::string& errors) {
    words.insert(words.begin(), program);
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&files, 2, errors.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    pid_t child = -1;
    const int error = ::posix_spawn(&child, program.c_str(), &files, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&files);
    int status = 0;
    if (error != 0 || ::waitpid(child, &status, 0) != child) throw Broken("qmctl cannot be run");
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

class QmctlOwner : public Owner {
  public:
    QmctlOwner(const Place& at, std::string qmctl, const std::string& folder)
        : Owner(at.seed, at.number, at.port, at.generation_5), m_qmctl(std::move(qmctl)),
          m_file(folder + "/" + std::to_string(at.port)), m_errors(m_file + ".errors") {
        std::ofstream(m_file + ".json")
            << R"({"id": 7, "areas": [{"id": 0, "rect": [0, 0, 64, 16], "text": "OPEN"}]})";
    }

    void do_something() override {
        using Verb = void (QmctlOwner::*)();
        constexpr Verb kVerbs[] = {&QmctlOwner::show,        &QmctlOwner::show, &QmctlOwner::save,
                                   &QmctlOwner::remove_file, &QmctlOwner::set,  &QmctlOwner::ask,
                                   &QmctlOwner::program};
        (this->*kVerbs[random(std::size(kVerbs))])();
    }

  private:
    [[nodiscard]] Action qmctl(const Words& words) const {
        return [this, words](Ouint16 port) {
            Words all = {"-c", "127.0.0.1:" + std::to_string(port)};
            all.insert(all.end(), words.begin(), words.end());
            return run(m_qmctl, all, m_errors);
        };
    }

    void show() {
        const std::string id = std::to_string(2 * place());
        if (random(5) == 0) return give_up("area", qmctl({"area", "rm", id}), QM_OK);
        const std::string rectangle = "0," + std::to_string(12 * place()) + ",128,12";
        if (random(3) == 0)
            return keep("area", qmctl({"picture", "--area", id, "--rect", rectangle, "--fit", "stretch",
                                       QM_EXAMPLES "/sign/logo.png"}));
        keep("area", qmctl({"text", "--area", id, "--rect", rectangle, "--", random_text()}));
    }

    // The file is read again in the end: it must have what was written last.
    Action put(const std::string& name) {
        const std::vector<Ouint8> data = random_file();
        const std::string path = m_file + name;
        std::ofstream(path, std::ios::binary)
            .write(reinterpret_cast<const char*>(data.data()), static_cast<std::streamsize>(data.size()));
        return qmctl({"fs", "put", "--type", "1", "--no-progress", path, name});
    }

    void save() {
        const std::string name = file_name(random(3));
        keep("file " + name, put(name));
    }

    // What succeeds leaves nothing; a file that is not there cannot be told from a fault by the exit status.
    void remove_file() {
        const std::string name = file_name(random(3));
        give_up(
            "file " + name,
            [put = put(name), remove = qmctl({"fs", "rm", name})](Ouint16 port) {
                const int status = put(port);
                return status == 0 ? remove(port) : status;
            },
            QM_OK);
    }

    void program() {
        if (is_of_generation_5()) return ask(); // whose owners look at their listings
        give_up(
            "program",
            [send = qmctl({"program", "send", m_file + ".json"}),
             remove = qmctl({"program", "rm", "7"})](Ouint16 port) {
                const int status = send(port);
                return status == 0 ? remove(port) : status;
            },
            QM_OK);
    }

    void set() { keep("speed", qmctl({"speed", std::to_string(random(100))})); }

    void ask() {
        static constexpr const char* kQuestions[] = {"ping", "status", "clock", "id", "battle"};
        (void)once(qmctl({kQuestions[random(std::size(kQuestions))]}));
    }

    void check(int status) const override {
        std::string errors;
        std::getline(std::ifstream(m_errors), errors, '\0');
        if ((status != 0 && status != 2) || errors.empty() != (status == 0))
            throw Broken("qmctl ended with " + std::to_string(status) + ": " + errors);
    }

    const std::string m_qmctl, m_file, m_errors;
};

} // namespace

std::unique_ptr<Owner> qmctl_owner(const Place& place, const std::string& qmctl, const std::string& folder) {
    return std::make_unique<QmctlOwner>(place, qmctl, folder);
}

} // namespace qm::test
