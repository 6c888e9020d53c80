#include "compare.h"

#include "heap.h"

#include <benchmark/benchmark.h>

#include <random>
#include <stdexcept>

namespace qm::bench {
namespace {

using Settings = std::function<void(benchmark::internal::Benchmark*)>;

void add(const std::string& name, std::size_t bytes, const Run& run, double mark, const Settings& settings) {
    const auto timed = [=](benchmark::State& state) {
        for (auto _ : state) {
            run();
            benchmark::ClobberMemory();
        }
        if (mark != 0) state.counters["mark"] = mark;
        if (bytes != 0)
            state.SetBytesProcessed(static_cast<std::int64_t>(bytes) *
                                    static_cast<std::int64_t>(state.iterations()));
    };
    settings(benchmark::RegisterBenchmark(name.c_str(), timed)->ReportAggregatesOnly());
}

void compare(const std::string& work, std::size_t bytes, const Run& ours, const std::vector<Peer>& peers,
             const Settings& settings) {
    add(work + "/ours", bytes, ours, 0, settings);
    for (const Peer& peer : peers) add(work + "/" + peer.name, bytes, peer.run, peer.mark, settings);
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

void compare_memory(const std::string& work, const Run& ours, const std::string& peer, std::size_t bytes) {
    const auto measure = [](const std::string& name, const std::function<std::size_t()>& size) {
        const auto counted = [size](benchmark::State& state) {
            for (auto _ : state) state.counters["bytes"] = static_cast<double>(size());
        };
        benchmark::RegisterBenchmark(name.c_str(), counted)
            ->Iterations(1)
            ->Repetitions(3)
            ->ReportAggregatesOnly();
    };
    measure(work + "/ours", [ours] { return heap_peak(ours); });
    measure(work + "/" + peer, [bytes] { return bytes; });
}

void require(bool right, const std::string& what) {
    if (!right) throw std::runtime_error(what);
}

ByteBuffer random_bytes(std::size_t count) {
    std::mt19937 random(1);
    ByteBuffer bytes(count);
    for (Ouint8& b : bytes) b = static_cast<Ouint8>(random());
    return bytes;
}

} // namespace qm::bench
