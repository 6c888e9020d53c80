#include "Fleet.h"

#include "exception_reason.h"
#include "record_text.h"

#include <algorithm>
#include <ctime>
#include <set>
#include <thread>

namespace qm::ctl {
namespace {

using namespace std::chrono_literals;

constexpr auto kBetweenLooks = 100ms;
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
constexpr auto has_failed = [](const auto& job) { return job.status && is_failure(*job.status); };

double seconds(std::chrono::steady_clock::duration time) {
    return static_cast<double>(std::chrono::duration_cast<std::chrono::milliseconds>(time).count()) / 1000;
}

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
        return Failure(reason_of(error));
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

int Fleet::run(const AwaitedSignals* signals) {
    if (signals)
        watch(*signals);
    else
        work();
    const std::lock_guard lock(m_mutex);
    if (m_interrupted && m_ended < m_jobs.size()) return kInterrupted;
    return m_report_failed ? kFailed : common_status();
}

// When some have been sent to and others not, it is a failure.
int Fleet::common_status() const {
    std::set<int> statuses;
    for (const Job& job : m_jobs) statuses.insert(job.status.value_or(kFailed));
    if (statuses.size() == 1) return *statuses.begin();
    return std::ranges::any_of(statuses, is_failure) ? kFailed : *statuses.rbegin();
}

void Fleet::watch(const AwaitedSignals& signals) {
    std::vector<std::thread> workers = start_workers();
    if (workers.empty()) return work(); // one after the other, where no thread can be had
    auto deadline = Clock::time_point::max(), counts = m_start + kBetweenCounts;
    while (!all_left() && !m_abandoned) {
        const auto now = Clock::now();
        if (signals.wait(0s) && now >= m_start + m_terms.deaf) {
            m_abandoned = m_interrupted; // for the second time
            if (!m_interrupted) deadline = now + kGrace;
            interrupt();
            counts = now;
        }
        m_abandoned = m_abandoned || now >= deadline; // in vain
        if (now < counts) continue;
        show_counts();
        counts = now + kBetweenCounts;
    }
    for (std::thread& worker : workers) m_abandoned ? worker.detach() : worker.join();
    m_session.output->pass("");
    if (m_interrupted)
        tell_interrupted();
    else
        tell_failed();
}

// As many as there are to be, or as can be had.
std::vector<std::thread> Fleet::start_workers() {
    std::vector<std::thread> workers;
    const std::size_t wanted = std::min<std::size_t>(m_session.jobs, m_jobs.size());
    try {
        while (workers.size() < wanted)
            workers.emplace_back([this] {
                work();
                const std::lock_guard lock(m_mutex);
                --m_working;
                m_left.notify_all();
            });
    } catch (const std::exception&) { // fewer will do
    }
    const std::lock_guard lock(m_mutex);
    m_working += workers.size();
    return workers;
}

// Whether all workers have, at once or in a moment.
bool Fleet::all_left() {
    std::unique_lock lock(m_mutex);
    return m_left.wait_for(lock, kBetweenLooks, [this] { return m_working == 0; });
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
    while (!m_interrupted && m_ended < m_jobs.size()) {
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
        session.print(Failure(reason_of(error)));
        status = kFailed;
    }
    const std::lock_guard lock(m_mutex);
    keep(job, session.object_of(outcome));
    job.status = status;
    if (++m_ended == m_jobs.size()) m_changed.notify_all();
}

void Fleet::keep(const Job& job, nlohmann::ordered_json result) {
    if (!m_report || m_report_failed) return;
    nlohmann::ordered_json line{{"time", timestamp(std::time(nullptr))}, {"verb", m_session.verb}};
    line["tries"] = job.tries;
    line["seconds"] = job.tries == 0 ? 0 : seconds(Clock::now() - job.begun);
    line["controller"] = job.target->address();
    line.update(result);
    m_report_failed =
        std::fputs(one_line(line).c_str(), m_report.get()) < 0 || std::fflush(m_report.get()) != 0;
    if (m_report_failed)
        m_session.output->remark("qmctl: --report: '" + m_terms.report + "' cannot be written any more\n");
}

// The time that is left is as long for each controller as it was so far.
void Fleet::show_counts() {
    if (!m_session.output->is_terminal()) return;
    const std::lock_guard lock(m_mutex);
    const auto ended = m_ended, left = m_jobs.size() - ended;
    const auto failed = static_cast<std::size_t>(std::ranges::count_if(m_jobs, has_failed));
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

// Where results go to a file, or scroll away, nobody would see.
void Fleet::tell_failed() {
    const std::lock_guard lock(m_mutex);
    const auto count = static_cast<std::size_t>(std::ranges::count_if(m_jobs, has_failed));
    if (count > 0 && m_jobs.size() > 1)
        m_session.output->remark("qmctl: " + std::to_string(m_jobs.size() - count) + " done, " +
                                 std::to_string(count) + " failed: " + labels(has_failed) + "\n");
}

std::string Fleet::labels(const std::function<bool(const Job&)>& wanted) const {
    std::string text;
    for (const Job& job : m_jobs)
        if (wanted(job)) text += (text.empty() ? "" : ", ") + job.target->label();
    return text;
}

void Fleet::tell_interrupted() {
    const std::lock_guard lock(m_mutex);
    for (const Job& job : m_jobs)
        if (!job.status) keep(job, {{"ok", false}, {"error", "interrupted"}});
    const std::string left = labels([](const Job& job) { return !job.status; });
    m_session.output->remark("qmctl: interrupted; " + (left.empty() ? "all done" : "not done: " + left) +
                             "\n");
}

} // namespace qm::ctl
