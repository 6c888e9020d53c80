// Runs a verb at every controller, many at once.
#pragma once

#include "Session.h"
#include "Verb.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <map>
#include <pthread.h>
#include <thread>

namespace qm::ctl {

struct FleetTerms {
    unsigned retries = 0; // of what may pass
    std::string report;   // file to which a JSON object for each controller is appended; empty: none
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

    // Gives the exit status that all have in common, else kFailed. When the user interrupts what goes to
    // many, it says what was left undone and gives kInterrupted.
    int run();
    // Those for which it was done.
    [[nodiscard]] std::vector<NamedController> done();

  private:
    using Clock = std::chrono::steady_clock;
    struct Job {
        const NamedController* target;
        unsigned tries = 0;
        Clock::time_point begun{};
        bool ended = false;
    };

    void work();
    // The next job when it is due; null when there is none any more.
    Job* next();
    // Puts the job back when it is to be tried again, else prints what came of it.
    void take(Job& job, const Session& session, const Outcome& outcome);
    void keep(const Job& job, const Session& session, const Outcome& outcome);
    void watch();
    void tell_interrupted();
    std::vector<std::thread> start_workers();
    void leave();
    void interrupt();
    void show_counts();

    const Session m_session;
    const Verb& m_verb;
    const FleetTerms& m_terms;
    const Clock::time_point m_start = Clock::now();
    const ::pthread_t m_watcher = ::pthread_self();
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> m_report{nullptr, std::fclose};

    std::atomic<std::size_t> m_working{0}; // threads

    std::mutex m_mutex; // of all that follows
    std::condition_variable m_changed;
    std::vector<Job> m_jobs;
    std::multimap<Clock::time_point, Job*> m_waiting; // by the time at which they are due
    std::vector<int> m_statuses;                      // of those that have ended
    std::vector<NamedController> m_done;
    bool m_interrupted = false, m_abandoned = false;
};

} // namespace qm::ctl
