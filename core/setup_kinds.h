#pragma once
// Numbers of the configuration that stand for a kind, as Kvo.Cfg and every run hold them.

namespace kvo::core {

// Analog_Type: what is wired to an analog input.
inline constexpr int customInput = 0;
inline constexpr int exhaustInput = 1; // a temperature like those of the exhausts
inline constexpr int mappedInput = 2;  // through the channel's table
inline constexpr int lambdaInput = 3;
inline constexpr int pressureInput = 4;

// Vehicle_Type; every other number is a motorcycle.
inline constexpr int car = 1;

} // namespace kvo::core
