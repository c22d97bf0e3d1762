#pragma once
// The unit convertor: eight pairs of units, of which the user picks one and types in either box.
// The form keeps a Conversions and shows what the routines make of it.
#include <array>
#include <span>
#include <string>
#include <string_view>

namespace kvo::calc {

// Factors from the first unit to the second.
// Required: those of a pair and its way back are no exact inverses.
inline constexpr double cuInToCc = 16.3872;
inline constexpr double ccToCuIn = 0.06102;
inline constexpr double inToCm = 2.54;
inline constexpr double cmToIn = 0.3937007;
inline constexpr double feetToMetres = 0.3048;
inline constexpr double metresToFeet = 3.2808398;
inline constexpr double lbsToKg = 0.4536;
inline constexpr double kgToLbs = 2.2045855;
inline constexpr double mphToKph = 1.6093;
inline constexpr double kphToMph = 0.6213881;

struct UnitPair {
    std::string_view button;              // caption of Command1(index)
    std::string_view title;               // of the form
    std::string_view left;                // Label2(0), one byte a character (Windows-1252)
    std::string_view right;               // Label2(1)
    double (*forward)(double) = nullptr;  // left to right
    double (*backward)(double) = nullptr; // right to left
    std::string_view picture;
};
// The eight, by the index of their button.
std::span<const UnitPair> unitPairs();

struct Conversions {
    int pair = 0;                     // whose captions Label2 shows
    std::array<std::string, 2> Text1; // left, right
    bool shown = false;               // the boxes and the "=" between them
};

// A button, 0 to 7: its pair, with both boxes empty.
void Command1_Click(Conversions& form, int index);
// A key was released in a box, 0 left or 1 right: the other box follows. A value of 0 or less
// empties both; a text that only begins with a number leaves the other box as it was.
void Text1_KeyUp(Conversions& form, int box);

} // namespace kvo::calc
