#include "platform/os/heap.h"

#include <cstdlib>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace kvo::platform_os {

void keepFreedMemory() {
#ifdef __GLIBC__
    constexpr int largestBuffer = 32 << 20; // a larger one goes back at once
    constexpr int keptBytes = 2 * largestBuffer;
    (void)mallopt(M_TRIM_THRESHOLD, keptBytes);
    (void)mallopt(M_MMAP_THRESHOLD, largestBuffer);
#endif
}

} // namespace kvo::platform_os
