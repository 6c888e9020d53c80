// soak QMCTL MINUTES [SEED]: uses controllers that fault at random from 32 threads and 8 processes, and looks
// whether in the end they are what those calls that succeeded say, and whether memory and descriptors are as
// they were.
#include "Controllers.h"
#include "process.h"
#include "verbs.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <mutex>
#include <thread>
#include <unistd.h>

namespace qm::test {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kThreadsEach = 4; // of a controller; one process more
constexpr std::size_t kMayGrow = 8192;  // KB, beside a tenth
constexpr std::chrono::milliseconds kBetweenSamples{200};

class TemporaryFolder {
  public:
    TemporaryFolder() {
        if (!::mkdtemp(m_path)) throw std::runtime_error("no temporary folder");
    }
    ~TemporaryFolder() { std::filesystem::remove_all(m_path); }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    [[nodiscard]] std::string path() const { return m_path; }

  private:
    char m_path[32] = "/tmp/qm-soak-XXXXXX";
};

// What went wrong; said as it happens.
class Troubles {
  public:
    void add(const std::string& sentence) {
        const std::lock_guard lock(m_mutex);
        std::printf("TROUBLE: %s\n", sentence.c_str());
        any = true;
    }
    std::atomic<bool> any = false;

  private:
    std::mutex m_mutex;
};

// A process from its warm-up on.
class Watch {
  public:
    Watch(std::string name, pid_t process) : m_name(std::move(name)), m_process(process) {}

    void sample() { m_memory.push_back(memory_of(m_process)); }

    // Waits a little for connections to end.
    void judge(Troubles& troubles) const {
        std::size_t open = 0;
        for (int i = 0; i < 50 && (open = descriptors_of(m_process)) > m_descriptors; ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        const std::size_t early = median(1), late = median(3);
        std::printf("%s: %zu KB after the warm-up, %zu KB in the end; %zu descriptors before, %zu after\n",
                    m_name.c_str(), early, late, m_descriptors, open);
        if (open > m_descriptors) troubles.add(m_name + " has left descriptors open");
        if (m_memory.size() > 100 && late > early + early / 10 + kMayGrow)
            troubles.add(m_name + " has grown");
    }

  private:
    // Of a quarter of the time.
    [[nodiscard]] std::size_t median(std::size_t quarter) const {
        const std::size_t size = m_memory.size() / 4;
        std::vector<std::size_t> part(m_memory.begin() + static_cast<std::ptrdiff_t>(quarter * size),
                                      m_memory.begin() + static_cast<std::ptrdiff_t>((quarter + 1) * size));
        std::ranges::sort(part);
        return part.empty() ? 0 : part[part.size() / 2];
    }

    const std::string m_name;
    const pid_t m_process;
    const std::size_t m_descriptors = descriptors_of(m_process);
    std::vector<std::size_t> m_memory;
};

struct Crew {
    std::vector<std::unique_ptr<Owner>> library, qmctl;
};

Crew crew_of(const Controllers& controllers, unsigned seed, const std::string& qmctl,
             const std::string& folder) {
    Crew crew;
    for (std::size_t i = 0; i < kControllers; ++i) {
        const bool five = Controllers::is_of_generation_5(i);
        for (std::size_t place = 0; place < kThreadsEach; ++place)
            crew.library.push_back(library_owner({++seed, place, controllers.port(i), five}));
        crew.qmctl.push_back(qmctl_owner({++seed, kThreadsEach, controllers.port(i), five}, qmctl, folder));
    }
    return crew;
}

void work(Crew& crew, std::chrono::duration<double> time, Troubles& troubles, std::vector<Watch>& watches) {
    const auto end = Clock::now() + time;
    std::vector<std::thread> threads;
    for (auto* const owners : {&crew.library, &crew.qmctl})
        for (const auto& owner : *owners)
            threads.emplace_back([&, one = owner.get()] {
                try {
                    while (Clock::now() < end && !troubles.any) one->do_something();
                } catch (const std::exception& error) {
                    troubles.add(error.what());
                }
            });
    for (; Clock::now() < end && !troubles.any; std::this_thread::sleep_for(kBetweenSamples))
        for (Watch& watch : watches) watch.sample();
    for (std::thread& thread : threads) thread.join();
}

void repeat_on_twins(const Crew& crew, const Controllers& controllers, Troubles& troubles) {
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < kControllers; ++i)
        threads.emplace_back([&, i] {
            for (std::size_t place = 0; place <= kThreadsEach; ++place) {
                const Owner& owner =
                    place == kThreadsEach ? *crew.qmctl[i] : *crew.library[kThreadsEach * i + place];
                if (const int status = owner.repeat_on(controllers.twin(i)); status != QM_OK)
                    troubles.add("status " + std::to_string(status) + " where there are no faults");
            }
        });
    for (std::thread& thread : threads) thread.join();
}

void print(const char* who, const std::vector<std::unique_ptr<Owner>>& owners) {
    std::map<int, unsigned long> all;
    unsigned long count = 0;
    for (const auto& owner : owners)
        for (const auto& [status, times] : owner->statuses()) all[status] += times, count += times;
    std::printf("%s: %lu;", who, count);
    for (const auto& [status, times] : all) std::printf(" %lu gave %d,", times, status);
    std::printf("\n");
}

int soak(const std::string& qmctl, double minutes, unsigned seed) {
    const TemporaryFolder folder;
    std::filesystem::current_path(folder.path()); // programs of generation 5 leave a file
    std::printf("seed %u, %g minutes\n", seed, minutes);
    std::fflush(stdout);
    Controllers controllers(seed, folder.path());
    qm_set_message_handler([](const char*, void*) {}, nullptr);
    Crew crew = crew_of(controllers, seed, qmctl, folder.path());
    std::vector<Watch> watches = {{"the driver", ::getpid()}, {"the controllers", controllers.process()}};
    Troubles troubles;
    work(crew, std::chrono::duration<double>(60 * minutes), troubles, watches);
    controllers.heal();
    repeat_on_twins(crew, controllers, troubles);
    if (const std::string differences = controllers.compare(); !differences.empty())
        troubles.add(differences);
    print("calls", crew.library);
    print("processes", crew.qmctl);
    for (const Watch& watch : watches) watch.judge(troubles);
    std::printf("%s\n", troubles.any ? "NOT as it should be" : "all as it should be");
    return troubles.any ? 1 : 0;
}

} // namespace
} // namespace qm::test

int main(int argc, char** argv) try {
    if (argc < 3) throw std::runtime_error("soak QMCTL MINUTES [SEED]");
    const auto now = static_cast<unsigned>(std::chrono::system_clock::now().time_since_epoch().count());
    return qm::test::soak(std::filesystem::absolute(argv[1]), std::atof(argv[2]),
                          argc > 3 ? static_cast<unsigned>(std::strtoul(argv[3], nullptr, 10))
                                   : now % 1000000);
} catch (const std::exception& error) {
    std::fprintf(stderr, "soak: %s\n", error.what());
    return 2;
}
