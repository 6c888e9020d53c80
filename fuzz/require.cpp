#include "require.h"

#include <cstdio>
#include <cstdlib>

namespace qm::fuzz {

void require(bool kept, const char* file, int line) {
    if (kept) return;
    std::fprintf(stderr, "%s:%d: not as promised\n", file, line);
    std::abort();
}

} // namespace qm::fuzz
