#pragma once
// What the programs of tests/faults share: their arguments, and the row of figures each of them
// ends with, which script/night gathers into a table.
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace kvo::faults {

// The arguments of such a program: --count N --seed N.
struct Options {
    std::int64_t count = 0; // cases to try; 0 is the program's own short form
    std::uint32_t seed = 1;
};

// Ends the program where an argument is unknown or is no number.
inline Options optionsOf(int argc, char* argv[]) {
    Options options;
    for (int at = 1; at < argc; at += 2) {
        const std::string_view name = argv[at];
        char* end = nullptr;
        const long long value = at + 1 < argc ? std::strtoll(argv[at + 1], &end, 10) : 0;
        const bool isNumber = end != nullptr && end != argv[at + 1] && *end == '\0' && value >= 0;
        if (name == "--count" && isNumber) {
            options.count = value;
        } else if (name == "--seed" && isNumber) {
            options.seed = static_cast<std::uint32_t>(value);
        } else {
            std::fprintf(stderr, "usage: %s [--count N] [--seed N]\n", argv[0]);
            std::exit(name == "--help" ? 0 : 2);
        }
    }
    return options;
}

// Counts the faults of a program, tells the first of them, and prints its row at the end.
class Proof {
public:
    explicit Proof(Options options) : m_options(options) {}

    // A case that broke its promise: `what` says which, so that it can be repeated.
    void fault(const std::string& what) {
        if (++m_faults <= 20) std::fprintf(stderr, "FAULT %s\n", what.c_str());
    }
    bool check(bool holds, const std::string& what) {
        if (!holds) fault(what);
        return holds;
    }

    // Prints "figure: what | cases | finding | seconds | seed"; gives the program's exit value.
    // `unit` names the cases: "kills", "sessions"; `finding` what was found besides the faults.
    int end(const std::string& what, std::int64_t cases, const std::string& unit,
        const std::string& finding) const {
        const std::chrono::duration<double> time = std::chrono::steady_clock::now() - m_begin;
        std::printf("figure: %s | %lld %s | %lld faults; %s | %.0f s | %u\n", what.c_str(),
            static_cast<long long>(cases), unit.c_str(), static_cast<long long>(m_faults),
            finding.c_str(), time.count(), m_options.seed);
        return m_faults == 0 && cases > 0 ? 0 : 1;
    }

private:
    Options m_options;
    std::int64_t m_faults = 0;
    std::chrono::steady_clock::time_point m_begin = std::chrono::steady_clock::now();
};

} // namespace kvo::faults
