#pragma once
// What the program knows of the vehicle: weight, wheels, final drive, corrections and gears, as the
// Data Logger tab shows and takes them, and the pop-up frame Edit_Gears. All texts are those of the
// controls.
#include "core/basic/from_one.h"
#include "core/config_record.h"
#include "setup/models.h"
#include "setup/option_rows.h"
#include "setup/ordered_save.h"

#include <string>
#include <string_view>

namespace kvo::setup {

inline constexpr int mostGears = 6;

struct GearingValues {
    std::string Weight_F;
    std::string Wheel;
    std::string RWheel;
    std::string Pinion_F;
    std::string Crown_F;
    std::string Engine_Correction;
    std::string Clutch_Correction;
    std::string Pinion_Correction;
    std::string Speed_Correction;
    std::string Gears;                           // caption
    core::FromOne<std::string, mostGears> Ratio; // captions of First_Ratio to Sixth_Ratio
    int gearsShown = 1; // gears whose labels are on view, from the first on
    friend bool operator==(const GearingValues&, const GearingValues&) = default;
};

GearingValues loadGearing(const core::AppConfig& config);
// The boxes of the tab, read leniently but for Engine_Correction.
// `captions` are those of the vehicle on the form.
void saveVehicle(const GearingValues& values, const VehicleCaptions& captions,
    core::AppConfig& config, OrderedSave& save);
// Number of gears and their ratios, from the labels.
void saveGears(const GearingValues& values, core::AppConfig& config, OrderedSave& save);

// The final drive from the texts of both boxes; empty unless both are above 0.
std::string Label_Diff_Ratio(std::string_view Crown_F, std::string_view Pinion_F);
// Leaving one of the four correction boxes: a number from 1 to 5 stays.
BoxCheck Correction_LostFocus(std::string_view text);

// The frame Edit_Gears. It keeps what it held from one opening to the next.
struct EditGears {
    int Number_Of_Gears = 0;                   // list index, -1 without a selection
    core::FromOne<std::string, mostGears> box; // FirstG to SixthG
    core::FromOne<bool, mostGears> boxShown;
    friend bool operator==(const EditGears&, const EditGears&) = default;
};
// As the form opens: the number of gears is selected, "1" where it is none of the list.
EditGears loadEditGears(const core::AppConfig& config);
void GearRatios_Click(EditGears& edit, const GearingValues& values);
void Number_Of_Gears_Click(EditGears& edit);
// "Save" of the frame: number and ratios go to the labels.
void Ok_Click(const EditGears& edit, GearingValues& values);

} // namespace kvo::setup
