#include "platform/draw/wide_registers.h"

namespace kvo::platform {

#if defined(__GNUC__) && defined(__x86_64__)

namespace {

__attribute__((target("avx"))) void clearUpperHalves() {
    __builtin_ia32_vzeroupper();
}

} // namespace

void clearWideRegisters() {
    if (__builtin_cpu_supports("avx")) clearUpperHalves();
}

#else

void clearWideRegisters() {}

#endif

} // namespace kvo::platform
