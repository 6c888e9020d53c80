#include "heap.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace {

std::atomic<std::size_t> held{0}, most{0};

void* counted(void* memory) {
    if (memory == nullptr) throw std::bad_alloc();
    const std::size_t now = held += ::malloc_usable_size(memory);
    std::size_t before = most;
    while (before < now && !most.compare_exchange_weak(before, now)) {
    }
    return memory;
}

void give_back(void* memory) {
    held -= ::malloc_usable_size(memory);
    std::free(memory);
}

} // namespace

void* operator new(std::size_t size) { return counted(std::malloc(std::max<std::size_t>(1, size))); }
void operator delete(void* memory) noexcept { give_back(memory); }
void operator delete(void* memory, std::size_t) noexcept { give_back(memory); }

namespace qm::bench {

std::size_t heap_peak(const Run& run) {
    const std::size_t start = held;
    most = start;
    run();
    return most - start;
}

} // namespace qm::bench
