#include "setup/gearing.h"

#include "core/basic/format.h"
#include "core/basic/numbers.h"
#include "core/basic/plain_number.h"

#include <algorithm>
#include <optional>

namespace kvo::setup {

namespace {

using core::AppConfig;
using core::CSng;
using core::CStr;
using core::Format;
using core::Val;

constexpr std::string_view correctionPicture = "0.00";
constexpr std::string_view ratioPicture = "#0.00";

// The ratio of a gear, 1 to 6.
template <typename Config> auto& ratioOf(Config& config, int gear) {
    switch (gear) {
    case 1:
        return config.First_Ratio;
    case 2:
        return config.Second_Ratio;
    case 3:
        return config.Third_Ratio;
    case 4:
        return config.Forth_Ratio;
    case 5:
        return config.Fifth_Ratio;
    default:
        return config.Sixth_Ratio;
    }
}

// Required: the sixth gear shows for exactly six, the others for their number or more.
int gearsShownFor(int Gears) {
    if (Gears == mostGears) return mostGears;
    return std::clamp(Gears, 1, mostGears - 1);
}

// Added to what was typed: a "-0" is no other number than "0".
constexpr double positiveZero = 0;

std::optional<float> single(const std::string& text) {
    return CSng(Val(text) + positiveZero);
}

std::optional<float> strictSingle(const std::string& text) {
    const auto value = core::strictNumber(text);
    return value ? CSng(*value + positiveZero) : std::nullopt;
}

} // namespace

GearingValues loadGearing(const AppConfig& config) {
    GearingValues values;
    values.Weight_F = core::plainNumber(config.Weight_F);
    values.Wheel = core::plainNumber(config.Wheel);
    values.RWheel = core::plainNumber(config.RWheel);
    values.Pinion_F = core::plainNumber(config.Pinion_F);
    values.Crown_F = core::plainNumber(config.Crown_F);
    const auto correction = [](float value) { return Format(value, correctionPicture); };
    values.Engine_Correction = correction(config.Engine_Correction);
    values.Clutch_Correction = correction(config.Clutch_Correction);
    values.Pinion_Correction = correction(config.Pinion_Correction);
    values.Speed_Correction = correction(config.Speed_Correction);
    values.Gears = CStr(config.Gears);
    for (int gear = 1; gear <= mostGears; ++gear)
        values.Ratio[gear] = Format(ratioOf(config, gear), ratioPicture);
    values.gearsShown = gearsShownFor(config.Gears);
    return values;
}

void saveVehicle(const GearingValues& values, const VehicleCaptions& captions, AppConfig& config,
    OrderedSave& save) {
    save.take(config.Weight_F, single(values.Weight_F), captions.Weight_Label, "Weight_F");
    save.take(config.Wheel, single(values.Wheel), "Speed Wheel Diameter :", "Wheel");
    save.take(config.RWheel, Val(values.RWheel) + positiveZero);
    save.take(config.Pinion_F, single(values.Pinion_F), captions.Pteeth_Label, "Pinion_F");
    save.take(config.Crown_F, single(values.Crown_F), captions.Cteeth_Label, "Crown_F");
    // Required: this one alone must be a number.
    save.take(config.Engine_Correction, strictSingle(values.Engine_Correction),
        "Engine Correction:", "Engine_Correction");
    save.take(config.Clutch_Correction, single(values.Clutch_Correction),
        "Clutch Correction:", "Clutch_Correction");
    save.take(config.Pinion_Correction, single(values.Pinion_Correction), captions.Pinion_Label,
        "Pinion_Correction");
    save.take(config.Speed_Correction, single(values.Speed_Correction),
        "MPH Correction:", "Speed_Correction");
}

void saveGears(const GearingValues& values, AppConfig& config, OrderedSave& save) {
    save.take(config.Gears, core::CInt(Val(values.Gears)), "Gears", "Gears");
    for (int gear = 1; gear <= mostGears; ++gear)
        save.take(ratioOf(config, gear), Val(values.Ratio[gear]));
}

std::string Label_Diff_Ratio(std::string_view Crown_F, std::string_view Pinion_F) {
    const double crown = Val(Crown_F);
    const double pinion = Val(Pinion_F);
    if (!(pinion > 0) || !(crown > 0)) return {};
    const auto ratio = core::finite(crown / pinion);
    return ratio ? "Ratio = " + Format(*ratio, ratioPicture) : std::string();
}

BoxCheck Correction_LostFocus(std::string_view text) {
    constexpr double least = 1;
    constexpr double largest = 5;
    const auto value = core::strictNumber(text);
    if (value && *value >= least && *value <= largest) return {std::string(text)};
    return {"1", true, true};
}

EditGears loadEditGears(const AppConfig& config) {
    EditGears edit;
    const bool listed = config.Gears >= 1 && config.Gears <= mostGears;
    edit.Number_Of_Gears = listed ? config.Gears - 1 : 0;
    for (int gear = 1; gear <= mostGears; ++gear)
        edit.boxShown[gear] = gear <= edit.Number_Of_Gears + 1;
    return edit;
}

void GearRatios_Click(EditGears& edit, const GearingValues& values) {
    // Required: the sixth box takes nothing and keeps what it holds.
    for (int gear = 1; gear < mostGears; ++gear) edit.box[gear] = values.Ratio[gear];
}

void Number_Of_Gears_Click(EditGears& edit) {
    const int gears = edit.Number_Of_Gears + 1;
    for (int gear = 1; gear <= mostGears; ++gear) {
        edit.boxShown[gear] = gear <= gears;
        if (gear >= gears) edit.box[gear] = "1.00"; // Required: the last gear's too.
    }
}

void Ok_Click(const EditGears& edit, GearingValues& values) {
    if (edit.Number_Of_Gears >= 0) {
        values.gearsShown = edit.Number_Of_Gears + 1;
        values.Gears = CStr(values.gearsShown);
    }
    for (int gear = 1; gear <= mostGears; ++gear) {
        const auto ratio = core::strictNumber(edit.box[gear]);
        values.Ratio[gear] = ratio ? Format(*ratio, ratioPicture) : edit.box[gear];
    }
}

} // namespace kvo::setup
