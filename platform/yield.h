#pragma once
// The one place where a wait gives way to the window system.
namespace kvo::platform {

// One turn of a counted wait is 1/32 ms of line time: 8,000 turns are 250 ms, 32,000 are 1 s.
inline constexpr int turnsPerMillisecond = 32;

class Yield {
public:
    virtual ~Yield() = default;
    // Lets events run and sleeps until something happened on the port or `limit` turns (1 or more)
    // are over. Gives the turns that went by, at least 1 and at most `limit`. Any event handler may
    // run inside.
    virtual int turns(int limit) = 0;
};

} // namespace kvo::platform
