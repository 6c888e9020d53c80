#include "compare.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <exception>

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    try {
        qm::bench::conversion();
        qm::bench::checksums();
        qm::bench::stuffing();
        qm::bench::programs();
        qm::bench::files();
        qm::bench::transfer();
        qm::bench::exchanges();
        benchmark::RunSpecifiedBenchmarks();
        benchmark::ClearRegisteredBenchmarks(); // and with them what they run on
    } catch (const std::exception& error) {
        std::fprintf(stderr, "qm_bench: %s\n", error.what());
        return 1;
    }
}
