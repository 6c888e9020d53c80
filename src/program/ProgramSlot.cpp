#include "program/ProgramSlot.h"

#include <sys/syscall.h>
#include <unistd.h>

namespace qm {
namespace {

constexpr useconds_t kPoll = 100;

std::mutex g_slot; // guards the program and its owner
std::unique_ptr<ProgramObj> P_programObj;
long g_threadID = 0; // of the owner; 0 while the slot is free

long calling_thread() { return ::syscall(SYS_gettid); }

void pause(std::unique_lock<std::mutex>& lock) {
    lock.unlock();
    ::usleep(kPoll);
    lock.lock();
}

} // namespace

template <class Program> ProgramAccess ProgramAccess::acquire() {
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

template ProgramAccess ProgramAccess::acquire<ProgramObj>();
template ProgramAccess ProgramAccess::acquire<ProgramObj_g6>();

ProgramAccess ProgramAccess::existing() {
    const long caller = calling_thread();
    std::unique_lock lock(g_slot);
    while (P_programObj && g_threadID != caller) pause(lock);
    return ProgramAccess(std::move(lock));
}

ProgramObj* ProgramAccess::any() const { return P_programObj.get(); }

void delete_program() {
    const std::lock_guard lock(g_slot);
    const auto renderer = lock_renderer(); // fonts may go with it
    P_programObj.reset();
    g_threadID = 0;
}

} // namespace qm
