#pragma once
// The simulated logger on a pseudo-terminal until it is told to end: what a program does that is
// one.
#include "tools/logger_simulator/options.h"

namespace kvo::simulator {

// Prints the device and serves it until a signal says so (interrupt, terminate, hang-up) or the
// simulated cable is pulled out. SIGUSR1 switches the logger off and on. Gives the exit code.
int serve(const Options& options);

} // namespace kvo::simulator
