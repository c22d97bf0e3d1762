#pragma once
// A clock that stands where the test has set it.
#include "platform/clock.h"

namespace kvo::testing {

class FixedClock : public platform::Clock {
public:
    explicit FixedClock(const platform::DateTime& moment) : m_now(moment) {}
    platform::DateTime now() const override { return m_now; }
    void set(const platform::DateTime& moment) { m_now = moment; }

private:
    platform::DateTime m_now;
};

} // namespace kvo::testing
