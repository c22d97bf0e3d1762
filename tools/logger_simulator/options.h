#pragma once
// The command line of the simulator.
#include "tools/logger_simulator/faults.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kvo::simulator {

struct Options {
    int dataType = 25;
    std::string linkPath;   // empty: no link
    std::string streamPath; // empty: a modelled run
    Fault fault;
    bool paced = true;
    std::uint32_t seed = 1;
    bool help = false;
};

// Reads the arguments behind the program's name; on failure nothing, and `error` says why.
std::optional<Options> parseOptions(const std::vector<std::string>& arguments, std::string& error);
std::string helpText();

} // namespace kvo::simulator
