// The one program under construction in a process, and the thread that owns it.
#pragma once

#include "program/ProgramObj_g6.h"

#include <mutex>
#include <type_traits>

namespace qm {

// The caller's program for the time of one operation: nobody can delete it meanwhile.
class ProgramAccess {
  public:
    // Waits, without limit, for the slot to be free or the caller's, and puts an empty program of that
    // generation, a ProgramObj or a ProgramObj_g6, into a free one.
    template <class Program> static ProgramAccess acquire();
    // Waits likewise, and leaves a free slot free.
    static ProgramAccess existing();

    // The program in the slot, or null when it is of the other generation.
    template <class Program> [[nodiscard]] Program* of_generation() const {
        auto* const six = dynamic_cast<ProgramObj_g6*>(any());
        if constexpr (std::is_same_v<Program, ProgramObj_g6>)
            return six;
        else
            return six ? nullptr : any();
    }
    // The program, whatever its generation; null when there is none.
    [[nodiscard]] ProgramObj* any() const;

  private:
    explicit ProgramAccess(std::unique_lock<std::mutex> lock) : m_lock(std::move(lock)) {}

    std::unique_lock<std::mutex> m_lock;
};

// Deletes the program and frees the slot, whoever owns it.
void delete_program();

} // namespace qm
