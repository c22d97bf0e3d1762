#pragma once
// Exact arithmetic of the program: typed numbers, rounding, and conversions that may fail. A step
// that fails gives nothing, and the caller keeps what its target held (keepOnFailure).
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kvo::core {

// Lenient number of a text box: blanks passed over, sign, digits, one point; ends at the first
// other character; 0 if there is none, the largest double for a number that is larger.
double Val(std::string_view text);
// Strict number: sign, digits, one point, blanks around it; nothing for anything else, and for a
// number that is too large for a double.
std::optional<double> strictNumber(std::string_view text);

// Rounded to the nearest whole number, ties to even; nothing outside 16 (CInt) or 32 bits (CLng)
// and for a NaN.
std::optional<std::int16_t> CInt(double value);
std::optional<std::int32_t> CLng(double value);
// The same for a byte, 0 to 255.
std::optional<std::uint8_t> CByte(double value);
// The nearest single; nothing for a value that is too large for one.
std::optional<float> CSng(double value);
// The value of a sum; nothing where it overflowed or a division by 0 left no number.
std::optional<double> finite(double value);
// Cut toward zero. A value beyond 64 bits or a NaN comes back as it is.
double Fix(double value);
// a \ b on whole numbers, cut toward zero; nothing for b = 0 and for a result outside 32 bits.
std::optional<std::int32_t> intDiv(std::int32_t a, std::int32_t b);
// a \ b where the operands may have decimals: each rounded to 32 bits first.
std::optional<std::int32_t> intDivRounded(double a, double b);

// The visible idiom for "a failed statement leaves its target as it was".
template <typename Field, typename Value>
bool keepOnFailure(Field& field, const std::optional<Value>& value) {
    if (!value) return false;
    field = static_cast<Field>(*value);
    return true;
}

// Number to text: 15 digits for a double, 7 for a single. Str has a leading blank for a number that
// is not negative and writes .5 as " .5"; CStr has no blank and writes "0.5".
std::string Str(double value);
std::string Str(float value);
std::string Str(int value);
std::string CStr(double value);
std::string CStr(float value);
std::string CStr(int value);

// Blanks off the left end; what is left of `text` itself.
std::string_view leftTrimmed(std::string_view text);
// Blanks off the right end.
std::string rightTrimmed(std::string_view text);
// Exactly `width` characters: blanks added behind, or cut.
std::string padded(std::string_view text, std::size_t width);

} // namespace kvo::core
