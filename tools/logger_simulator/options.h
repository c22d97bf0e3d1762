#pragma once
// The command line of the simulator.
#include "tools/command_line/command_line.h"
#include "tools/logger_simulator/faults.h"

#include <cstdint>
#include <optional>
#include <string>

namespace kvo::simulator {

struct Options {
    int dataType = 25;
    std::string linkPath;   // empty: no link
    std::string streamPath; // empty: a modelled run
    std::string statePath;  // empty: settings that are written are gone at the end
    Fault fault;
    bool paced = true;
    std::uint32_t seed = 1;
};

const command_line::Syntax& syntax();
// What the arguments ask for; nothing where a value is wrong, and `error` says which.
std::optional<Options> optionsOf(const command_line::Arguments& arguments, std::string& error);

} // namespace kvo::simulator
