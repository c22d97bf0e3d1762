#include "bench/timing.h"

#include <algorithm>
#include <chrono>
#include <ctime>

namespace kvo::bench {
namespace {

constexpr double roundSeconds = 20e-3;

double secondsOf(const std::function<void()>& contender, int calls) {
    const double begin = wallSeconds();
    for (int i = 0; i < calls; ++i) contender();
    return (wallSeconds() - begin) / calls;
}

int callsPerRound(const std::function<void()>& contender) {
    contender(); // the first call warms caches and is not counted
    const double once = secondsOf(contender, 1);
    return std::clamp(static_cast<int>(roundSeconds / std::max(once, 1e-7)), 1, 10'000);
}

} // namespace

double wallSeconds() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

double threadSeconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

std::vector<double> medianSeconds(
    const std::vector<std::function<void()>>& contenders, int rounds) {
    std::vector<int> calls;
    for (const auto& contender : contenders) calls.push_back(callsPerRound(contender));
    std::vector<std::vector<double>> times(contenders.size());
    for (int round = 0; round < rounds; ++round)
        for (std::size_t n = 0; n < contenders.size(); ++n) {
            const std::size_t i = (n + static_cast<std::size_t>(round)) % contenders.size();
            times[i].push_back(secondsOf(contenders[i], calls[i]));
        }
    std::vector<double> medians;
    for (auto& list : times) {
        const auto middle = list.begin() + static_cast<std::ptrdiff_t>(list.size() / 2);
        std::nth_element(list.begin(), middle, list.end());
        medians.push_back(*middle);
    }
    return medians;
}

} // namespace kvo::bench
