#include "platform/os/os_clock.h"

namespace kvo::platform_os {

platform::DateTime localTime(std::time_t seconds) {
    std::tm local{};
#ifdef _WIN32
    localtime_s(&local, &seconds);
#else
    localtime_r(&seconds, &local);
#endif
    // The 60 of a leap second is no minute of its own here.
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
        local.tm_sec > 59 ? 59 : local.tm_sec};
}

platform::DateTime OsClock::now() const {
    return localTime(std::time(nullptr));
}

} // namespace kvo::platform_os
