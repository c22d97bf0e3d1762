#pragma once
// The local time of this machine.
#include "platform/clock.h"

namespace kvo::platform_os {

class OsClock : public platform::Clock {
public:
    platform::DateTime now() const override;
};

} // namespace kvo::platform_os
