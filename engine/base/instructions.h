// Inner loops that are worth more than the instructions that every machine of the kind has. A room
// writes such a loop once, as a function that is always inlined, into one function as it is and one
// marked QRB_WIDE, and asks wideInstructions() which of them to call. Both give the same results.
#pragma once

#include <atomic>

#if defined(__x86_64__) && defined(__GNUC__)
#define QRB_WIDE __attribute__((target("avx2,bmi2")))
#define QRB_HAS_WIDE 1
#else
#define QRB_WIDE
#define QRB_HAS_WIDE 0
#endif

namespace tarvo::engine {

inline bool machineHasWideInstructions() {
#if QRB_HAS_WIDE
    return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi2");
#else
    return false;
#endif
}

// May be set to false, and back to what the machine has, by whoever wants to see that it makes no
// difference.
inline std::atomic<bool>& wideInstructions() {
    static std::atomic<bool> wide = machineHasWideInstructions();
    return wide;
}

}  // namespace tarvo::engine
