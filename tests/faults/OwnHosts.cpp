#include "OwnHosts.h"

#include "open_descriptors.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <sched.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace qm::test {
namespace {

constexpr int kHosts = 24; // most of which wait
constexpr std::size_t kMostCases = 8192;
constexpr char kNetwork[] =
    "ip link set lo up && ip link add to1 type veth peer name port && "
    "ip address add 10.77.1.1/24 dev to1 && ip link set port up && ip link set to1 up";
enum Exit { done, no_host, left_open };

// What a process tells the one that has started it.
struct Told {
    bool done;
    int status, next;
    double seconds;
    char reason[512];
};

struct Shared {
    std::atomic<std::size_t> next;
    std::array<Told, kMostCases> told;
};

void tell(Told& told, const Met& met) {
    told = {true, met.status, met.next, met.seconds, {}};
    met.reason.copy(told.reason, sizeof told.reason - 1);
}

Exit work(Shared& shared, const std::vector<Case>& cases) {
    if (::unshare(CLONE_NEWNET) != 0 || std::system(kNetwork) != 0) return no_host;
    qm_set_message_handler([](const char*, void*) {}, nullptr);
    for (std::size_t at; (at = shared.next++) < cases.size();) {
        const std::size_t before = open_descriptors();
        tell(shared.told[at], cases[at].run());
        if (open_descriptors() != before) return left_open;
    }
    return done;
}

} // namespace

std::optional<std::vector<Met>> run_on_own_hosts(const std::vector<Case>& cases) {
    void* const memory =
        ::mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED || cases.size() > kMostCases) throw std::bad_alloc();
    Shared& shared = *static_cast<Shared*>(memory);
    std::vector<pid_t> children;
    for (int i = 0; i < kHosts; ++i)
        if (children.push_back(::fork()); children.back() == 0) ::_exit(work(shared, cases));
    bool hosts = true;
    for (const pid_t child : children) {
        int ended = 0;
        ::waitpid(child, &ended, 0);
        hosts = hosts && !(WIFEXITED(ended) && WEXITSTATUS(ended) == no_host);
        EXPECT_TRUE(!hosts || ended == 0) << "a process died, or left descriptors open";
    }
    std::vector<Met> met;
    for (const Told& told : std::span(shared.told).first(cases.size())) {
        EXPECT_TRUE(!hosts || told.done);
        met.push_back({told.status, told.reason, told.seconds, told.next});
    }
    ::munmap(memory, sizeof(Shared));
    return hosts ? std::optional(met) : std::nullopt;
}

} // namespace qm::test
