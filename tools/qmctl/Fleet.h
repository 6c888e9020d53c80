// Runs a verb at every controller, many at once.
#pragma once

#include "AwaitedSignals.h"
#include "Session.h"
#include "Verb.h"

#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <functional>
#include <map>
#include <optional>
#include <thread>

namespace qm::ctl {

struct FleetTerms {
    unsigned retries = 0;         // of what may pass
    std::string report;           // file to which a JSON object for each controller is appended; empty: none
    std::chrono::seconds deaf{0}; // from the start on, in which nothing interrupts it
};

// What comes of a verb at the session's target, whose address it looks up.
[[nodiscard]] Outcome outcome_of(const Verb& verb, Session& session);

// Each controller's result is printed as soon as it is there. What may pass, such as no answer, is tried
// again after pauses in which others have their turn.
class Fleet {
  public:
    // All but the session outlive it. Throws UsageError when the report cannot be written.
    Fleet(Session session, const Verb& verb, const std::vector<NamedController>& controllers,
          const FleetTerms& terms);
    // When the user interrupted and calls go on that cannot be broken off, this ends the process.
    ~Fleet();
    Fleet(const Fleet&) = delete;
    Fleet& operator=(const Fleet&) = delete;

    // Gives the exit status that all have in common, else kFailed. When one of the signals comes, it ends
    // what goes on, says what was left undone and gives kInterrupted; null: a single controller, in this
    // thread.
    int run(const AwaitedSignals* signals);

  private:
    using Clock = std::chrono::steady_clock;
    struct Job {
        const NamedController* target;
        unsigned tries = 0;
        Clock::time_point begun{};
        std::optional<int> status{}; // once it has ended
    };

    void work();
    // The next job when it is due; null when there is none any more.
    Job* next();
    // Puts the job back when it is to be tried again, else prints what came of it.
    void take(Job& job, const Session& session, const Outcome& outcome);
    void keep(const Job& job, nlohmann::ordered_json result);
    void watch(const AwaitedSignals& signals);
    std::vector<std::thread> start_workers();
    [[nodiscard]] bool all_left();
    void interrupt();
    void show_counts();
    void tell_failed();
    void tell_interrupted();
    [[nodiscard]] std::string labels(const std::function<bool(const Job&)>& wanted) const;
    [[nodiscard]] int common_status() const;

    const Session m_session;
    const Verb& m_verb;
    const FleetTerms& m_terms;
    const Clock::time_point m_start = Clock::now();
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> m_report{nullptr, std::fclose};

    std::mutex m_mutex; // of all that follows
    std::condition_variable m_changed, m_left;
    std::vector<Job> m_jobs;
    std::multimap<Clock::time_point, Job*> m_waiting; // by the time at which they are due
    std::size_t m_working = 0;                        // threads
    std::size_t m_ended = 0;                          // jobs
    bool m_interrupted = false, m_abandoned = false, m_report_failed = false;
};

} // namespace qm::ctl
