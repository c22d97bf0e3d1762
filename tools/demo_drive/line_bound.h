#pragma once
// The time that a download cannot do without, from the bytes that pass the line.
#include "core/shared_state.h"

namespace kvo::demo {

// Seconds for the header and all samples of the run that was downloaded last, at 9600 baud and with
// a logger and a program that need no time of their own; `greeting` adds the first exchange.
double lineSeconds(const core::SharedState& state, bool greeting);

} // namespace kvo::demo
