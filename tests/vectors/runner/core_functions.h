#pragma once
// What the files of core's golden vectors share.
#include "platform/clock.h"
#include "vector_tools.h"

namespace kvo::vectors {

// The moment of "y", "mo", "d" and, where they are there, "h" and "mi".
platform::DateTime momentOf(const Json& in);

void addCoreConfigFunctions();
void addCoreFileFunctions();
void addCoreInfoFunctions();

} // namespace kvo::vectors
