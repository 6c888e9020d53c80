// The one program under construction in a process, and the thread that owns it.
#pragma once

#include "program/ProgramObj_g6.h"

#include <mutex>

namespace qm {

// The caller's program for the time of one operation: nobody can delete it meanwhile.
class ProgramAccess {
  public:
    // Waits, without limit, for the slot to be free or the caller's, and puts an empty program of that
    // generation into a free one.
    static ProgramAccess generation5();
    static ProgramAccess generation6();
    // Waits likewise, and leaves a free slot free.
    static ProgramAccess existing();

    // The program in the slot, or null when it is of the other generation.
    [[nodiscard]] ProgramObj* g5() const;
    [[nodiscard]] ProgramObj_g6* g6() const;
    // The program, whatever its generation; null when there is none.
    [[nodiscard]] ProgramObj* any() const;

  private:
    explicit ProgramAccess(std::unique_lock<std::mutex> lock) : m_lock(std::move(lock)) {}
    template <class Program> static ProgramAccess take();

    std::unique_lock<std::mutex> m_lock;
};

// Deletes the program and frees the slot, whoever owns it.
void delete_program();

} // namespace qm
