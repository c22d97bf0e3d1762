#pragma once
// How much of the heap a program has in use, for the proofs that something does not grow.
#include <cstdint>
#include <malloc.h>

namespace kvo::faults {

// Bytes that were asked for and not given back, whatever the library keeps for later.
inline std::int64_t bytesInUse() {
    const struct mallinfo2 now = mallinfo2();
    return static_cast<std::int64_t>(now.uordblks + now.hblkhd);
}

} // namespace kvo::faults
