// Instructions that not every processor has; kernels with them are chosen while the program runs.
#pragma once

namespace qm {

#ifdef __x86_64__
inline bool has_avx2() { return __builtin_cpu_supports("avx2"); }
inline bool has_carryless_multiply() { return __builtin_cpu_supports("pclmul"); }
#else
inline bool has_avx2() { return false; }
inline bool has_carryless_multiply() { return false; }
#endif

} // namespace qm
