#pragma once
// Numbers as boxes and the cells of a pit run show them.
#include <string>

namespace kvo::core {

// A number to its shortest text without an exponent, which no box reads: 7 digits of a single and
// 15 of a double as far as that is how it is written. What is no number is "0".
std::string plainNumber(float value);
std::string plainNumber(double value);

} // namespace kvo::core
