#include "core/basic/format.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace kvo::core {

namespace {

// A number picture cut into what stands in front of the number, the number, and what follows.
struct NumberPicture {
    std::string before;
    std::string after;
    bool hasNumber = false;
    bool hasPoint = false;
    int wholeRequired = 0;    // digits that are always there in front of the point
    int decimals = 0;         // places behind the point
    int decimalsRequired = 0; // of these, how many are always there
};

void takeLiteral(std::string_view picture, std::size_t& i, std::string& into) {
    if (picture[i] == '\\' && i + 1 < picture.size()) ++i;
    into += picture[i];
    ++i;
}

NumberPicture parseNumberPicture(std::string_view picture) {
    NumberPicture parsed;
    const auto isPlace = [&](std::size_t at) {
        return at < picture.size() && (picture[at] == '#' || picture[at] == '0');
    };
    std::size_t i = 0;
    while (i < picture.size() && !isPlace(i) && !(picture[i] == '.' && isPlace(i + 1))) {
        takeLiteral(picture, i, parsed.before);
    }
    parsed.hasNumber = i < picture.size();
    for (; isPlace(i); ++i) {
        if (picture[i] == '0' || parsed.wholeRequired > 0) ++parsed.wholeRequired;
    }
    if (i < picture.size() && picture[i] == '.') {
        parsed.hasPoint = true;
        for (++i; isPlace(i); ++i) {
            ++parsed.decimals;
            if (picture[i] == '0') parsed.decimalsRequired = parsed.decimals;
        }
    }
    while (i < picture.size()) takeLiteral(picture, i, parsed.after);
    return parsed;
}

// The decimal digits of |value|, 15 of them, and where the point stands: behind `whole` digits.
struct Decimal {
    std::string digits;
    int whole = 0;
};

Decimal fifteenDigits(double value) {
    char buffer[40];
    const auto result = std::to_chars(
        buffer, buffer + sizeof buffer, std::abs(value), std::chars_format::scientific, 14);
    const std::string_view text(buffer, static_cast<std::size_t>(result.ptr - buffer));
    const std::size_t e = text.find('e');
    Decimal decimal;
    decimal.digits = text.substr(0, 1);
    decimal.digits += text.substr(2, e - 2);
    std::string_view exponent = text.substr(e + 1);
    if (exponent.front() == '+') exponent.remove_prefix(1);
    std::from_chars(exponent.data(), exponent.data() + exponent.size(), decimal.whole);
    ++decimal.whole;
    return decimal;
}

// Rounds half away from zero to `places` behind the point, and leaves exactly
// max(whole, 1) + places digits, the point behind max(whole, 1).
void roundTo(Decimal& decimal, int places) {
    if (decimal.whole < 1) {
        decimal.digits.insert(0, static_cast<std::size_t>(1 - decimal.whole), '0');
        decimal.whole = 1;
    }
    const auto kept = static_cast<std::size_t>(std::ptrdiff_t{decimal.whole} + places);
    const bool up = kept < decimal.digits.size() && decimal.digits[kept] >= '5';
    decimal.digits.resize(kept, '0');
    if (!up) return;
    std::size_t i = kept;
    while (i > 0 && decimal.digits[i - 1] == '9') decimal.digits[--i] = '0';
    if (i > 0) {
        ++decimal.digits[i - 1];
    } else {
        decimal.digits.insert(0, 1, '1');
        ++decimal.whole;
    }
}

// The same where whole numbers can tell how the 15 digits round, which saves working them out: far
// enough from the middle between two results, or right on it. Nothing where they cannot.
std::optional<Decimal> roundedFast(double value, int places) {
    constexpr double largest = 1e6; // the 15 digits of what is below lie within 1e-9 of it
    constexpr double nearMiddle = 1e-6;
    constexpr std::array<double, 3> powers{1, 10, 100};
    const double size = std::abs(value);
    if (!(size < largest) || places >= static_cast<int>(powers.size())) return {};
    const double power = powers[static_cast<std::size_t>(places)];
    const double scaled = size * power;
    const double down = std::floor(scaled);
    const double rest = scaled - down;
    // The double nearest to a middle has that middle as its 15 digits.
    const bool isMiddle = size == (down + 0.5) / power;
    if (!isMiddle && std::abs(rest - 0.5) < nearMiddle) return {};
    const auto whole = static_cast<std::int64_t>(down) + (isMiddle || rest > 0.5 ? 1 : 0);
    Decimal decimal;
    decimal.digits = std::to_string(whole);
    const auto least = static_cast<std::size_t>(places) + 1;
    if (decimal.digits.size() < least) decimal.digits.insert(0, least - decimal.digits.size(), '0');
    decimal.whole = static_cast<int>(decimal.digits.size()) - places;
    return decimal;
}

Decimal rounded(double value, int places) {
    if (auto decimal = roundedFast(value, places)) return *std::move(decimal);
    Decimal decimal = fifteenDigits(value);
    roundTo(decimal, places);
    return decimal;
}

std::string wholePart(const Decimal& decimal, int required) {
    std::string whole = decimal.digits.substr(0, static_cast<std::size_t>(decimal.whole));
    whole.erase(0, whole.find_first_not_of('0'));
    const auto least = static_cast<std::size_t>(required);
    if (whole.size() < least) whole.insert(0, least - whole.size(), '0');
    return whole;
}

constexpr std::array<std::string_view, 7> dayNames{
    "Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};
constexpr std::array<std::string_view, 12> monthNames{"January", "February", "March", "April",
    "May", "June", "July", "August", "September", "October", "November", "December"};

// Day of the week, 0 for Sunday, of any date of the Gregorian calendar.
std::size_t weekday(int year, int month, int day) {
    constexpr std::array<int, 12> offsets{0, 3, 2, 5, 0, 3, 5, 1, 4, 6, 2, 4};
    const int y = month < 3 ? year - 1 : year;
    const int sum =
        y + y / 4 - y / 100 + y / 400 + offsets[static_cast<std::size_t>(month - 1)] + day;
    return static_cast<std::size_t>((sum % 7 + 7) % 7);
}

std::string digits(int value, std::size_t width) {
    std::string text = std::to_string(value);
    if (text.size() < width) text.insert(0, width - text.size(), '0');
    return text;
}

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// One letter of a date picture repeated `count` times; nothing if it is no such letter.
std::optional<std::string> datePart(
    const platform::DateTime& moment, char letter, std::size_t count, bool behindHours) {
    const std::size_t month = static_cast<std::size_t>(moment.month - 1) % monthNames.size();
    switch (letter) {
    case 'd':
        if (count < 3) return digits(moment.day, count);
        return std::string(
            dayNames[weekday(moment.year, static_cast<int>(month) + 1, moment.day)].substr(
                0, count == 3 ? 3 : std::string_view::npos));
    case 'm':
        if (count < 3) return digits(behindHours ? moment.minute : moment.month, count);
        return std::string(monthNames[month].substr(0, count == 3 ? 3 : std::string_view::npos));
    case 'y':
        return count < 3 ? digits(moment.year % 100, 2) : digits(moment.year, 4);
    case 'h':
        return digits(moment.hour, count < 2 ? 1 : 2);
    case 'n':
        return digits(moment.minute, count < 2 ? 1 : 2);
    case 's':
        return digits(moment.second, count < 2 ? 1 : 2);
    default:
        return {};
    }
}

} // namespace

std::string Format(double value, std::string_view picture) {
    const NumberPicture parsed = parseNumberPicture(picture);
    if (!parsed.hasNumber || !std::isfinite(value)) return parsed.before + parsed.after;
    const Decimal decimal = rounded(value, parsed.decimals);
    const bool zero = decimal.digits.find_first_not_of('0') == std::string::npos;

    std::string number = wholePart(decimal, parsed.wholeRequired);
    if (parsed.hasPoint) {
        std::string behind = decimal.digits.substr(static_cast<std::size_t>(decimal.whole));
        const auto least = static_cast<std::size_t>(parsed.decimalsRequired);
        while (behind.size() > least && behind.back() == '0') behind.pop_back();
        number += "." + behind;
    }
    return (value < 0 && !zero ? "-" : "") + parsed.before + number + parsed.after;
}

std::string Format(const platform::DateTime& moment, std::string_view picture) {
    std::string text;
    bool behindHours = false;
    for (std::size_t i = 0; i < picture.size();) {
        const char letter = lower(picture[i]);
        std::size_t count = 1;
        while (i + count < picture.size() && lower(picture[i + count]) == letter) ++count;
        if (const auto part = datePart(moment, letter, count, behindHours)) {
            text += *part;
            behindHours = letter == 'h';
            i += count;
        } else {
            takeLiteral(picture, i, text);
        }
    }
    return text;
}

void AnalogFormat(int decimals, std::string& slot) {
    switch (decimals) {
    case 0:
        slot = "####0";
        break;
    case 1:
        slot = "####0.0";
        break;
    case 2:
        slot = "####0.00";
        break;
    default:
        break; // Required: any other number leaves the picture that was used last.
    }
}

int ExhaustToDegrees(int raw, int exhaustUnit) {
    if (raw < 1) return 0;
    if (exhaustUnit != -1) return raw * 4;
    // Over one denominator the whole part of raw x 36 / 5 + 32 is exact.
    return (raw * 36 + 32 * 5) / 5;
}

} // namespace kvo::core
