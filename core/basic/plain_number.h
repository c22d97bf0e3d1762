#pragma once
// Numbers as the boxes of the setup form show them.
#include <string>

namespace kvo::setup {

// A number to its shortest text without an exponent, since a box reads none: 7 digits of a single
// and 15 of a double as far as that is how it is written. What is no number is "0".
std::string plainNumber(float value);
std::string plainNumber(double value);

} // namespace kvo::setup
