#include "calc/conversions.h"

#include "core/basic/format.h"
#include "core/basic/numbers.h"

#include <cassert>
#include <cstddef>

namespace kvo::calc {

namespace {

constexpr double hpToKw = 1.36; // as a divisor
constexpr std::string_view twoDecimals = "#####0.00";

// clang-format off
constexpr std::array<UnitPair, 8> table{{
    {"Cu.in / Cc", "Cu.In to Cc", "Cu.In", "Cc",
        [](double x) { return x * cuInToCc; }, [](double x) { return x * ccToCuIn; }, twoDecimals},
    {"In / Cm", "In to Cm", "In", "Cm",
        [](double x) { return x * inToCm; }, [](double x) { return x * cmToIn; }, twoDecimals},
    {"Feet / Metres", "Feet to Metres", "Ft", "M",
        [](double x) { return x * feetToMetres; }, [](double x) { return x * metresToFeet; },
        twoDecimals},
    {"Lbs / Kg", "Lbs to Kg", "Lbs", "Kg",
        [](double x) { return x * lbsToKg; }, [](double x) { return x * kgToLbs; }, twoDecimals},
    {"Psi / Kpa", "Psi to Kpa", "Psi", "Kpa",
        [](double x) { return x * 6.895; }, [](double x) { return x * 0.1450326; }, twoDecimals},
    {"Mph / Kph", "Mph to Kph", "Mph", "Kph",
        [](double x) { return x * mphToKph; }, [](double x) { return x * kphToMph; }, twoDecimals},
    {"Hp / Kw", "Hp to Kw", "Hp", "Kw",
        [](double x) { return x / hpToKw; }, [](double x) { return x * hpToKw; }, twoDecimals},
    {"Deg F / Deg C", "Farenheit to Celcius", "\xB0" "F", "\xB0" "C",
        [](double x) { return (x - 32) / 1.8; }, [](double x) { return x * 1.8 + 32; },
        "#####0.0"},
}};
// clang-format on

} // namespace

std::span<const UnitPair> unitPairs() {
    return table;
}

void Command1_Click(Conversions& form, int index) {
    assert(index >= 0 && index < static_cast<int>(table.size()));
    form.pair = index;
    form.Text1 = {};
    form.shown = true;
}

void Text1_KeyUp(Conversions& form, int box) {
    assert(box == 0 || box == 1);
    const auto typedIn = static_cast<std::size_t>(box);
    const std::string& typed = form.Text1[typedIn];
    if (!(core::Val(typed) > 0)) {
        form.Text1 = {};
        return;
    }
    const auto value = core::strictNumber(typed);
    if (!value) return;
    const UnitPair& pair = table[static_cast<std::size_t>(form.pair)];
    const auto other = core::finite(box == 0 ? pair.forward(*value) : pair.backward(*value));
    if (other) form.Text1[1 - typedIn] = core::Format(*other, pair.picture);
}

} // namespace kvo::calc
