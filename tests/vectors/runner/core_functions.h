#pragma once
// What the files of core's golden vectors share.
#include "core/records.h"
#include "platform/clock.h"
#include "vector_tools.h"

namespace kvo::vectors {

// The moment of "y", "mo", "d" and, where they are there, "h" and "mi".
platform::DateTime momentOf(const Json& in);

template <typename Numbers> Json listOf(const Numbers& numbers) {
    Json list = Json::array();
    for (const auto number : numbers) list.push_back(number);
    return list;
}

// The parts of a run under the names of their fields.
Json headerOf(const core::RunHeader& h);
Json setupOf(const core::RunSetupBlock& block);
Json analogOf(const core::RunAnalogBlock& block);

void addCoreConfigFunctions();
void addCoreFileFunctions();
void addCoreInfoFunctions();

} // namespace kvo::vectors
