#include "running.h"

#include "Session.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace qm::ctl {
namespace {

struct Job {
    ::pid_t pid;
    std::FILE* result;
    const Controller* controller;
};

std::string content_of(std::FILE* file) {
    std::string text;
    std::rewind(file);
    char buffer[4096];
    for (std::size_t count; (count = std::fread(buffer, 1, sizeof buffer, file)) != 0;)
        text.append(buffer, count);
    std::fclose(file);
    return text;
}

// A child, which takes a step and leaves with the status that this gives.
template <class Step> pid_t start_process(std::FILE* result, Step step) {
    const ::pid_t pid = ::fork();
    if (pid > 0) return pid;
    if (pid < 0) {
        const int error = errno;
        std::fclose(result);
        throw std::system_error(error, std::generic_category(), "cannot start a process");
    }
    try {
        ::_exit(step());
    } catch (...) { // the parent's code is not the child's
        ::_exit(kFailed);
    }
}

// An unlinked file, through which a child says what it has to say; so it waits for nobody to read.
std::FILE* make_file() {
    std::FILE* file = std::tmpfile();
    if (!file) throw std::system_error(errno, std::generic_category(), "cannot make a temporary file");
    return file;
}

Job start(Session& session, Verb& verb, const Controller& controller) {
    std::FILE* result = make_file();
    const ::pid_t pid = start_process(result, [&] {
        session.controller = controller;
        session.output.redirect(result);
        return run_verb(session, verb);
    });
    return {pid, result, &controller};
}

// Waits for one of the jobs, and writes its line; returns its exit status.
int finish_one(Session& session, std::vector<Job>& jobs) {
    for (;;) {
        int state = 0;
        const ::pid_t pid = ::waitpid(-1, &state, 0);
        if (pid < 0 && errno != EINTR)
            throw std::system_error(errno, std::generic_category(), "cannot wait for a process");
        const auto job = std::find_if(jobs.begin(), jobs.end(), [pid](const Job& j) { return j.pid == pid; });
        if (pid < 0 || job == jobs.end()) continue;
        const std::string line = content_of(job->result);
        session.controller = *job->controller;
        jobs.erase(job);
        if (line.empty())
            session.tell(Failure("ended without a result"));
        else
            session.output.write(line);
        return WIFEXITED(state) ? WEXITSTATUS(state) : kFailed;
    }
}

// The status of them all. When some have been sent to and others not, it is a failure.
int common_status(const std::vector<int>& statuses) {
    const bool alike = std::ranges::adjacent_find(statuses, std::not_equal_to()) == statuses.end();
    return alike ? statuses.front() : kFailed;
}

} // namespace

int run_verb(Session& session, Verb& verb) {
    try {
        const Report report = verb.run(session);
        session.print(report);
        return report.ok() ? kDone : kFailed;
    } catch (const UsageError& error) {
        session.refuse(error);
        return kUsage;
    } catch (const Failure& failure) {
        session.tell(failure);
    } catch (const std::exception& error) {
        session.tell(Failure(error.what()));
    }
    return kFailed;
}

int run_on_all(Session& session, Verb& verb) {
    ::signal(SIGCHLD, SIG_DFL); // or what was inherited may let no child be waited for
    session.one_of_many = true;
    std::vector<int> statuses;
    std::vector<Job> jobs;
    for (const Controller& controller : session.controllers) {
        if (jobs.size() >= session.jobs) statuses.push_back(finish_one(session, jobs));
        try {
            jobs.push_back(start(session, verb, controller));
        } catch (const std::system_error& error) { // the others get theirs
            session.controller = controller;
            session.tell(Failure(error.what()));
            statuses.push_back(kFailed);
        }
    }
    while (!jobs.empty()) statuses.push_back(finish_one(session, jobs));
    return common_status(statuses);
}

void run_check(const std::function<void()>& check) {
    ::signal(SIGCHLD, SIG_DFL); // or what was inherited may let no child be waited for
    std::FILE* result = make_file();
    const ::pid_t pid = start_process(result, [&] {
        try {
            check();
            return kDone;
        } catch (const UsageError& error) {
            std::fputs(error.what(), result);
            std::fflush(result);
            return kUsage;
        }
    });
    int state = 0;
    while (::waitpid(pid, &state, 0) < 0 && errno == EINTR) continue;
    const std::string wrong = content_of(result);
    if (!wrong.empty()) throw UsageError(wrong);
    if (!WIFEXITED(state) || WEXITSTATUS(state) != kDone)
        throw Failure("checking the pictures ended without a result");
}

} // namespace qm::ctl
