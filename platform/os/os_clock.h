#pragma once
// The local time of this machine.
#include "platform/clock.h"

#include <ctime>

namespace kvo::platform_os {

// A moment of the epoch as the clocks of this machine show it.
platform::DateTime localTime(std::time_t seconds);

class OsClock : public platform::Clock {
public:
    platform::DateTime now() const override;
};

} // namespace kvo::platform_os
