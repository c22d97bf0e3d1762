#pragma once
// Times that can be compared on a machine that does other things too: the contenders take turns,
// round by round, and the median of each one's rounds counts. Time of the wall would hold the
// slices that others get in between.
#include <functional>
#include <vector>

namespace kvo::bench {

// A frame at 60 a second.
inline constexpr double frameSeconds = 1.0 / 60;

// What is measured, and what puts things back before each call of it, which is not measured.
struct Contender {
    std::function<void()> work;
    std::function<void()> prepare = {};
};

// Seconds of processor time, of all threads, that one call of each contender takes. A round calls a
// contender as often as fills about twenty milliseconds.
std::vector<double> medianSeconds(const std::vector<Contender>& contenders, int rounds);

// The same by the clock on the wall, for work that waits for a disk: a call a round.
std::vector<double> medianWallSeconds(const std::vector<Contender>& contenders, int rounds);

// Seconds of processor time this thread has used.
double threadSeconds();
// Seconds of a clock that only goes forward.
double wallSeconds();

// Keeps the compiler from leaving out a result that nobody reads.
template <typename T> void keep(const T& value) {
    asm volatile("" : : "g"(&value) : "memory");
}

} // namespace kvo::bench
