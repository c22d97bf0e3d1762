#include "bench/timing.h"

#include <algorithm>
#include <chrono>
#include <ctime>

namespace kvo::bench {
namespace {

constexpr double roundSeconds = 20e-3;

double processSeconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

using Clock = double (*)();

double secondsOf(const Contender& contender, int calls, Clock clock) {
    double seconds = 0;
    if (!contender.prepare) {
        const double begin = clock();
        for (int i = 0; i < calls; ++i) contender.work();
        seconds = clock() - begin;
    }
    for (int i = 0; contender.prepare && i < calls; ++i) {
        contender.prepare();
        const double begin = clock();
        contender.work();
        seconds += clock() - begin;
    }
    return seconds / calls;
}

int callsPerRound(const Contender& contender) {
    secondsOf(contender, 1, processSeconds); // the first call warms caches and is not counted
    const double once = secondsOf(contender, 1, processSeconds);
    return std::clamp(static_cast<int>(roundSeconds / std::max(once, 1e-7)), 1, 10'000);
}

// In turns, so that each meets what else the machine does; the first of a round changes.
std::vector<double> medians(const std::vector<Contender>& contenders, const std::vector<int>& calls,
    int rounds, Clock clock) {
    std::vector<std::vector<double>> times(contenders.size());
    for (int round = 0; round < rounds; ++round)
        for (std::size_t n = 0; n < contenders.size(); ++n) {
            const std::size_t i = (n + static_cast<std::size_t>(round)) % contenders.size();
            times[i].push_back(secondsOf(contenders[i], calls[i], clock));
        }
    std::vector<double> middles;
    for (auto& list : times) {
        const auto middle = list.begin() + static_cast<std::ptrdiff_t>(list.size() / 2);
        std::nth_element(list.begin(), middle, list.end());
        middles.push_back(*middle);
    }
    return middles;
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

std::vector<double> medianSeconds(const std::vector<Contender>& contenders, int rounds) {
    std::vector<int> calls;
    for (const Contender& contender : contenders) calls.push_back(callsPerRound(contender));
    return medians(contenders, calls, rounds, processSeconds);
}

std::vector<double> medianWallSeconds(const std::vector<Contender>& contenders, int rounds) {
    for (const Contender& contender : contenders) secondsOf(contender, 1, wallSeconds);
    return medians(contenders, std::vector<int>(contenders.size(), 1), rounds, wallSeconds);
}

} // namespace kvo::bench
