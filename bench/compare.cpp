#include "compare.h"

#include <benchmark/benchmark.h>

#include <random>
#include <stdexcept>

namespace qm::bench {
namespace {

using Settings = std::function<void(benchmark::internal::Benchmark*)>;

void add(const std::string& name, std::size_t bytes, const Run& run, const Settings& settings) {
    const auto timed = [=](benchmark::State& state) {
        for (auto _ : state) {
            run();
            benchmark::ClobberMemory();
        }
        if (bytes != 0)
            state.SetBytesProcessed(static_cast<std::int64_t>(bytes) *
                                    static_cast<std::int64_t>(state.iterations()));
    };
    settings(benchmark::RegisterBenchmark(name.c_str(), timed)->ReportAggregatesOnly());
}

void compare(const std::string& work, std::size_t bytes, const Run& ours, const std::vector<Peer>& peers,
             const Settings& settings) {
    add(work + "/ours", bytes, ours, settings);
    for (const Peer& peer : peers) add(work + "/" + peer.name, bytes, peer.run, settings);
}

} // namespace

void compare_speed(const std::string& work, std::size_t bytes, const Run& ours,
                   const std::vector<Peer>& peers) {
    compare(work, bytes, ours, peers, [](auto* b) { b->MinTime(0.02)->Repetitions(15); });
}

void compare_time(const std::string& work, const Run& ours, const std::vector<Peer>& peers) {
    compare(work, 0, ours, peers,
            [](auto* b) { b->UseRealTime()->Iterations(1)->Repetitions(61)->Unit(benchmark::kMillisecond); });
}

void require(bool right, const std::string& what) {
    if (!right) throw std::runtime_error(what);
}

Frame random_bytes(std::size_t count) {
    std::mt19937 random(1);
    Frame bytes(count);
    for (Ouint8& b : bytes) b = static_cast<Ouint8>(random());
    return bytes;
}

} // namespace qm::bench
