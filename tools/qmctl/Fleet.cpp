#include "Fleet.h"

#include "AwaitedSignals.h"
#include "record_text.h"

#include <algorithm>
#include <ctime>
#include <system_error>
#include <thread>

namespace qm::ctl {
namespace {

using namespace std::chrono_literals;

constexpr auto kBetweenCounts = 1s;
constexpr auto kFirstPause = 1s, kLongestPause = 60s;
constexpr auto kGrace = 3s; // for jobs that run when the user interrupts, which is as long as a call waits

std::chrono::seconds pause_after(unsigned tries) {
    return std::min<std::chrono::seconds>(kFirstPause * (1U << std::min(tries - 1, 6U)), kLongestPause);
}

bool may_pass(const Outcome& outcome) {
    const auto* failure = std::get_if<Failure>(&outcome);
    return failure && failure->may_pass();
}

bool is_failure(int status) { return status == kUsage || status == kFailed; }

// When some have been sent to and others not, it is a failure.
int common_status(const std::vector<int>& statuses) {
    if (std::ranges::adjacent_find(statuses, std::not_equal_to()) == statuses.end()) return statuses.front();
    return std::ranges::any_of(statuses, is_failure) ? kFailed : std::ranges::max(statuses);
}

double seconds(std::chrono::steady_clock::duration time) {
    return static_cast<double>(std::chrono::duration_cast<std::chrono::milliseconds>(time).count()) / 1000;
}

constexpr int kAllEnded = SIGUSR1; // from the last thread, and never ignored while it is blocked

} // namespace

Outcome outcome_of(const Verb& verb, Session& session) {
    try {
        if (!session.broadcast) session.controller = session.target.controller();
        return verb.run(session);
    } catch (const UsageError& error) {
        return error;
    } catch (const Failure& failure) {
        return failure;
    } catch (const std::exception& error) {
        return Failure(error.what());
    }
}

Fleet::Fleet(Session session, const Verb& verb, const std::vector<NamedController>& controllers,
             const FleetTerms& terms)
    : m_session(std::move(session)), m_verb(verb), m_terms(terms) {
    for (const NamedController& controller : controllers) m_jobs.push_back({&controller});
    for (Job& job : m_jobs) m_waiting.emplace(m_start, &job);
    if (terms.report.empty()) return;
    m_report.reset(std::fopen(terms.report.c_str(), "ae"));
    if (!m_report) throw UsageError("--report: '" + terms.report + "' cannot be written");
}

// Calls of the library cannot be broken off, but the process can.
Fleet::~Fleet() {
    if (m_abandoned) std::_Exit(kInterrupted);
}

int Fleet::run() {
    if (m_jobs.size() == 1)
        work();
    else
        watch();
    const std::lock_guard lock(m_mutex);
    return m_interrupted ? kInterrupted : common_status(m_statuses);
}

std::vector<NamedController> Fleet::done() {
    const std::lock_guard lock(m_mutex);
    return m_done;
}

void Fleet::watch() {
    const AwaitedSignals signals{kAllEnded};
    std::vector<std::thread> workers = start_workers();
    if (workers.empty()) return work(); // one after the other, where no thread can be had
    for (int signal = 0; (signal = signals.wait(m_interrupted ? kGrace : kBetweenCounts)) != kAllEnded;) {
        m_abandoned = m_interrupted; // for the second time, or in vain
        if (m_abandoned) break;
        if (signal != 0) interrupt();
        show_counts();
    }
    for (std::thread& worker : workers) m_abandoned ? worker.detach() : worker.join();
    m_session.output->pass("");
    if (m_interrupted) tell_interrupted();
}

// As many as there are to be, or as can be had.
std::vector<std::thread> Fleet::start_workers() {
    std::vector<std::thread> workers;
    m_working = 1; // this one, which starts the others
    try {
        while (workers.size() < std::min<std::size_t>(m_session.jobs, m_jobs.size())) {
            ++m_working;
            workers.emplace_back([this] {
                work();
                leave();
            });
        }
    } catch (const std::system_error&) {
        --m_working;
    }
    if (!workers.empty()) leave();
    return workers;
}

void Fleet::leave() {
    if (--m_working == 0) ::pthread_kill(m_watcher, kAllEnded);
}

void Fleet::interrupt() {
    const std::lock_guard lock(m_mutex);
    m_interrupted = true;
    m_changed.notify_all();
}

void Fleet::work() {
    while (Job* const job = next()) {
        Session session = m_session;
        session.target = *job->target;
        const Outcome outcome = outcome_of(m_verb, session);
        take(*job, session, outcome);
    }
}

Fleet::Job* Fleet::next() {
    std::unique_lock lock(m_mutex);
    while (!m_interrupted && m_statuses.size() < m_jobs.size()) {
        const auto first = m_waiting.begin();
        if (first == m_waiting.end()) {
            m_changed.wait(lock); // those that run may come back
        } else if (const auto due = first->first; due > Clock::now()) {
            m_changed.wait_until(lock, due);
        } else {
            Job* const job = first->second;
            m_waiting.erase(first);
            if (job->tries++ == 0) job->begun = Clock::now();
            return job;
        }
    }
    return nullptr;
}

void Fleet::take(Job& job, const Session& session, const Outcome& outcome) {
    if (job.tries <= m_terms.retries && may_pass(outcome)) {
        const std::lock_guard lock(m_mutex);
        m_waiting.emplace(Clock::now() + pause_after(job.tries), &job);
        return m_changed.notify_one();
    }
    int status = exit_status(outcome);
    try {
        session.print(outcome);
    } catch (const std::exception& error) {
        session.print(Failure(error.what()));
        status = kFailed;
    }
    const std::lock_guard lock(m_mutex);
    keep(job, session, outcome);
    job.ended = true;
    m_statuses.push_back(status);
    if (!is_failure(status)) m_done.push_back(*job.target);
    if (m_statuses.size() == m_jobs.size()) m_changed.notify_all();
}

void Fleet::keep(const Job& job, const Session& session, const Outcome& outcome) {
    if (!m_report) return;
    nlohmann::ordered_json line{{"time", local_time(std::time(nullptr), kTimestamp)},
                                {"verb", session.verb},
                                {"tries", job.tries},
                                {"seconds", seconds(Clock::now() - job.begun)}};
    line.update(session.object_of(outcome));
    std::fputs(one_line(line).c_str(), m_report.get());
    std::fflush(m_report.get());
}

// The time that is left is as long for each controller as it was so far.
void Fleet::show_counts() {
    if (!m_session.output->is_terminal()) return;
    const std::lock_guard lock(m_mutex);
    const auto ended = m_statuses.size(), left = m_jobs.size() - ended;
    const auto failed = static_cast<std::size_t>(std::ranges::count_if(m_statuses, is_failure));
    std::string line = std::to_string(ended - failed) + " done, " + std::to_string(failed) + " failed, " +
                       std::to_string(left) + " waiting";
    if (m_interrupted)
        line += "; interrupted, ending";
    else if (ended > 0)
        line += "; about " +
                std::to_string(static_cast<long>(seconds(Clock::now() - m_start) * static_cast<double>(left) /
                                                 static_cast<double>(ended)) +
                               1) +
                " s left";
    m_session.output->pass(std::move(line));
}

void Fleet::tell_interrupted() {
    const std::lock_guard lock(m_mutex);
    std::string left;
    for (const Job& job : m_jobs)
        if (!job.ended) left += (left.empty() ? "" : ", ") + job.target->label();
    m_session.output->remark("qmctl: interrupted; " + (left.empty() ? "all done" : "not done: " + left) +
                             "\n");
}

} // namespace qm::ctl
