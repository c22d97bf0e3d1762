#include "core/basic/numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace kvo::core {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// Length of sign, digits and one point at the front of `text`; `digits` counts the digits in it.
std::size_t numberLength(std::string_view text, int& digits) {
    std::size_t i = 0;
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) ++i;
    bool point = false;
    digits = 0;
    for (; i < text.size(); ++i) {
        if (isDigit(text[i])) {
            ++digits;
        } else if (text[i] == '.' && !point) {
            point = true;
        } else {
            break;
        }
    }
    return i;
}

// A text of sign, digits and one point, with at least one digit, as the nearest double; nothing
// where it is too large for one.
std::optional<double> toDouble(std::string_view number) {
    const bool negative = number.front() == '-';
    if (negative || number.front() == '+') number.remove_prefix(1);
    double value = 0;
    const auto result = std::from_chars(
        number.data(), number.data() + number.size(), value, std::chars_format::fixed);
    if (result.ec == std::errc::result_out_of_range) {
        // Too large or too small: it is large if a digit other than 0 stands in front of the point.
        const std::size_t first = number.find_first_not_of('0');
        if (first != std::string_view::npos && number[first] != '.') return {};
        value = 0;
    }
    return negative ? -value : value;
}

template <typename Whole> std::optional<Whole> rounded(double value) {
    // The default rounding mode sends ties to the even neighbour.
    const double whole = std::nearbyint(value);
    if (!(whole >= static_cast<double>(std::numeric_limits<Whole>::min()) &&
            whole <= static_cast<double>(std::numeric_limits<Whole>::max()))) {
        return {};
    }
    return static_cast<Whole>(whole);
}

std::string significant(double value, int digits) {
    if (value == 0) return "0";
    char buffer[40];
    const auto result =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, digits);
    std::string text(buffer, result.ptr);
    for (char& c : text) {
        if (c == 'e') c = 'E';
    }
    return text;
}

// Up to nine digits and nothing else, as nearly all numbers of a text file are: exact as they
// stand.
std::optional<double> plainWhole(std::string_view text) {
    constexpr std::size_t mostDigits = 9;
    if (text.empty() || text.size() > mostDigits) return {};
    int value = 0;
    for (const char c : text) {
        if (c < '0' || c > '9') return {};
        value = value * 10 + (c - '0');
    }
    return value;
}

// "0.5" as ".5", and a blank where a minus would stand.
std::string withBlank(std::string text) {
    const bool negative = text.front() == '-';
    if (negative) text.erase(0, 1);
    if (text.starts_with("0.")) text.erase(0, 1);
    return (negative ? "-" : " ") + text;
}

} // namespace

double Val(std::string_view text) {
    const std::size_t start = text.find_first_not_of(' ');
    if (start == std::string_view::npos) return 0;
    text.remove_prefix(start);
    int digits = 0;
    const std::size_t length = numberLength(text, digits);
    if (digits == 0) return 0;
    constexpr double largest = std::numeric_limits<double>::max();
    return toDouble(text.substr(0, length)).value_or(text.front() == '-' ? -largest : largest);
}

std::optional<double> strictNumber(std::string_view text) {
    if (const auto whole = plainWhole(text)) return whole;
    const std::size_t start = text.find_first_not_of(' ');
    if (start == std::string_view::npos) return {};
    text = text.substr(start, text.find_last_not_of(' ') + 1 - start);
    int digits = 0;
    const std::size_t length = numberLength(text, digits);
    if (digits == 0 || length != text.size()) return {};
    return toDouble(text);
}

std::optional<std::int16_t> CInt(double value) {
    return rounded<std::int16_t>(value);
}

std::optional<std::int32_t> CLng(double value) {
    return rounded<std::int32_t>(value);
}

std::optional<std::uint8_t> CByte(double value) {
    return rounded<std::uint8_t>(value);
}

std::optional<float> CSng(double value) {
    const auto narrow = static_cast<float>(value);
    if (std::isinf(narrow) && !std::isinf(value)) return {};
    return narrow;
}

std::optional<double> finite(double value) {
    if (!std::isfinite(value)) return {};
    return value;
}

double Fix(double value) {
    return std::trunc(value);
}

std::optional<std::int32_t> intDiv(std::int32_t a, std::int32_t b) {
    if (b == 0) return {};
    if (b == -1 && a == std::numeric_limits<std::int32_t>::min()) return {};
    return a / b;
}

std::optional<std::int32_t> intDivRounded(double a, double b) {
    const auto wholeA = CLng(a);
    const auto wholeB = CLng(b);
    if (!wholeA || !wholeB) return {};
    return intDiv(*wholeA, *wholeB);
}

std::string CStr(double value) {
    return significant(value, 15);
}

std::string CStr(float value) {
    return significant(static_cast<double>(value), 7);
}

std::string CStr(int value) {
    return std::to_string(value);
}

std::string Str(double value) {
    return withBlank(CStr(value));
}

std::string Str(float value) {
    return withBlank(CStr(value));
}

std::string Str(int value) {
    return withBlank(CStr(value));
}

std::string_view leftTrimmed(std::string_view text) {
    return text.substr(std::min(text.find_first_not_of(' '), text.size()));
}

std::string rightTrimmed(std::string_view text) {
    return std::string(text.substr(0, text.find_last_not_of(' ') + 1));
}

std::string padded(std::string_view text, std::size_t width) {
    std::string result(text.substr(0, width));
    result.resize(width, ' ');
    return result;
}

} // namespace kvo::core
