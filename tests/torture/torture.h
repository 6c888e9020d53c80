// What libqm_torture, between a process and the C library, lets fail there, and what it has counted.
#pragma once

#include <atomic>
#include <semaphore.h>
#include <sys/types.h>

namespace qm::test {

enum class Failing : int { nothing, allocations, calls };

// One way in which something fails.
struct Strike {
    Failing what = Failing::nothing;
    long at = 0;          // the number of the one that fails, from 1 on
    bool lasting = false; // and all behind it
    int way = 0;          // of the ways in which a system call fails, from 0 on
};

struct Torture {
    // Lets it happen to a thread from now on; 0: to any of the process.
    void arm(const Strike& strike, pid_t to) {
        seen = 0;
        sent = 0;
        ways = 1;
        to_fail = strike;
        thread = to;
        what = strike.what;
    }

    Strike to_fail;
    std::atomic<Failing> what;
    std::atomic<pid_t> thread;

    // What has been seen since.
    std::atomic<long> seen;     // allocations or calls
    int ways;                   // that the call which failed has
    int error;                  // that it failed with; 0: it carried less than it was to
    char name[32];              // the call
    std::atomic<unsigned> sent; // checksum of what went to the network

    // A process to be run again and again: each post of go is answered by done.
    sem_t go, done;
    std::atomic<pid_t> child;
    int status;
};

} // namespace qm::test

extern "C" {
// Of the calling process: its own, or the one that it shares with the process that started it, by the number
// of a descriptor in QM_TORTURE. The main function of such a process is run in a child of its own for every
// go.
qm::test::Torture* torture();
// Allocations of the calling thread, less those that it has freed.
long torture_live();
}
