#pragma once
// Number and date pictures, such as "##0.00" and "ddd dd mmm yyyy".
#include "platform/clock.h"

#include <string>
#include <string_view>

namespace kvo::core {

// # an optional digit, 0 a required one, a backslash quotes; every other character is itself.
// Rounds half away from zero on the 15-digit decimal form; a value that rounds to zero has no
// minus.
std::string Format(double value, std::string_view picture);

// d, dd, ddd, dddd, m, mm, mmm, mmmm, yy, yyyy, h, hh, n, nn (mm behind hh is minutes), backslash
// quotes. English names always.
std::string Format(const platform::DateTime& moment, std::string_view picture);

// Decimals 0, 1, 2 put "####0", "####0.0", "####0.00" into the slot; any other leaves it.
void AnalogFormat(int decimals, std::string& slot);

// Raw exhaust byte to degrees: 4 Celsius a count, or (exhaustUnit = -1) the whole part of
// raw x 36 / 5 + 32 Fahrenheit. Below 1 gives 0.
int ExhaustToDegrees(int raw, int exhaustUnit);

} // namespace kvo::core
