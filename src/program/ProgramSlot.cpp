#include "program/ProgramSlot.h"

#include <sys/syscall.h>
#include <unistd.h>

namespace qm {
namespace {

constexpr useconds_t kPoll = 100;

std::mutex g_slot; // guards both
std::unique_ptr<ProgramObj> P_programObj;
long g_threadID = 0; // of the owner; 0 while the slot is free

long calling_thread() { return ::syscall(SYS_gettid); }

void pause(std::unique_lock<std::mutex>& lock) {
    lock.unlock();
    ::usleep(kPoll);
    lock.lock();
}

} // namespace

template <class Program> ProgramAccess ProgramAccess::take() {
    const long caller = calling_thread();
    std::unique_lock lock(g_slot);
    while (g_threadID != caller) {
        pause(lock);
        if (P_programObj) continue;
        P_programObj = std::make_unique<Program>();
        g_threadID = caller;
    }
    return ProgramAccess(std::move(lock));
}

ProgramAccess ProgramAccess::generation5() { return take<ProgramObj>(); }
ProgramAccess ProgramAccess::generation6() { return take<ProgramObj_g6>(); }

ProgramAccess ProgramAccess::existing() {
    const long caller = calling_thread();
    std::unique_lock lock(g_slot);
    while (P_programObj && g_threadID != caller) pause(lock);
    return ProgramAccess(std::move(lock));
}

ProgramObj* ProgramAccess::g5() const { return g6() ? nullptr : P_programObj.get(); }
ProgramObj_g6* ProgramAccess::g6() const { return dynamic_cast<ProgramObj_g6*>(P_programObj.get()); }
ProgramObj* ProgramAccess::any() const { return P_programObj.get(); }

void delete_program() {
    const std::lock_guard lock(g_slot);
    const auto renderer = lock_renderer(); // fonts may go with it
    P_programObj.reset();
    g_threadID = 0;
}

} // namespace qm
