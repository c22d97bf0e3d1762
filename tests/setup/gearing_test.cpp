#include "setup/gearing.h"

#include <gtest/gtest.h>

#include <cmath>

#include <string>

namespace kvo::setup {
namespace {

core::AppConfig dragster() {
    core::AppConfig config;
    config.Weight_F = 2300.5F;
    config.Wheel = 25.1F;
    config.RWheel = 33.25;
    config.Pinion_F = 16;
    config.Crown_F = 40;
    config.Engine_Correction = 1;
    config.Clutch_Correction = 1.25F;
    config.Pinion_Correction = 2.5F;
    config.Speed_Correction = 5;
    config.Gears = 3;
    config.First_Ratio = 2.6;
    config.Second_Ratio = 1.9;
    config.Third_Ratio = 1.5;
    config.Forth_Ratio = 1.2;
    config.Fifth_Ratio = 1;
    config.Sixth_Ratio = 0.75;
    return config;
}

std::string joined(const core::FromOne<std::string, mostGears>& texts) {
    std::string all;
    for (const std::string& text : texts) all += text + " ";
    return all;
}

int shownOf(const EditGears& edit) {
    int shown = 0;
    for (int gear = 1; gear <= mostGears; ++gear) {
        if (!edit.boxShown[gear]) break;
        shown = gear;
    }
    return shown;
}

// What is left of the configuration behind a save of its values, on a fresh one.
core::AppConfig saved(const GearingValues& values) {
    core::AppConfig config;
    OrderedSave save;
    saveVehicle(values, vehicleCaptions(car), config, save);
    saveGears(values, config, save);
    EXPECT_EQ(save.failedBox(), "");
    return config;
}

TEST(Gearing, ShowsPlainNumbersAndPictures) {
    const GearingValues values = loadGearing(dragster());
    EXPECT_EQ(values.Weight_F, "2300.5");
    EXPECT_EQ(values.Wheel, "25.1");
    EXPECT_EQ(values.RWheel, "33.25");
    EXPECT_EQ(values.Pinion_F, "16");
    EXPECT_EQ(values.Crown_F, "40");
    EXPECT_EQ(values.Engine_Correction, "1.00");
    EXPECT_EQ(values.Clutch_Correction, "1.25");
    EXPECT_EQ(values.Pinion_Correction, "2.50");
    EXPECT_EQ(values.Speed_Correction, "5.00");
    EXPECT_EQ(values.Gears, "3");
    EXPECT_EQ(joined(values.Ratio), "2.60 1.90 1.50 1.20 1.00 0.75 ");
    EXPECT_EQ(values.gearsShown, 3);
}

TEST(Gearing, SavesWhatItLoads) {
    EXPECT_EQ(saved(loadGearing(dragster())), dragster());
}

TEST(Gearing, ShowsTheGearsInUse) {
    const struct {
        int gears;
        int shown;
        int listed;
    } cases[] = {{0, 1, 0}, {-3, 1, 0}, {1, 1, 0}, {2, 2, 1}, {5, 5, 4}, {6, 6, 5}, {7, 5, 0}};
    for (const auto& [gears, shown, listed] : cases) {
        core::AppConfig config;
        config.Gears = static_cast<std::int16_t>(gears);
        EXPECT_EQ(loadGearing(config).gearsShown, shown) << gears;
        EXPECT_EQ(loadEditGears(config).Number_Of_Gears, listed) << gears;
        EXPECT_EQ(shownOf(loadEditGears(config)), listed + 1) << gears;
        EXPECT_EQ(loadGearing(config).Gears, std::to_string(gears)) << "the caption is as stored";
    }
}

TEST(Gearing, ReadsLeniently) {
    GearingValues values = loadGearing(dragster());
    values.Weight_F = "2100 lbs";
    values.RWheel = "x";
    values.Speed_Correction = "";
    values.Ratio[2] = "1.85a";
    const core::AppConfig config = saved(values);
    EXPECT_EQ(config.Weight_F, 2100);
    EXPECT_EQ(config.RWheel, 0);
    EXPECT_EQ(config.Speed_Correction, 0);
    EXPECT_EQ(config.Second_Ratio, 1.85);
}

TEST(Gearing, ASaveEndsAtTheFirstNumberThatDoesNotFit) {
    GearingValues values = loadGearing(dragster());
    values.Engine_Correction = "1.1 or so";
    values.Wheel = "20";
    values.Clutch_Correction = "4";
    values.Ratio[1] = "9";
    core::AppConfig config = dragster();
    OrderedSave save;
    saveVehicle(values, vehicleCaptions(car), config, save);
    saveGears(values, config, save);
    EXPECT_EQ(save.failedBox(), "Engine Correction:");
    EXPECT_EQ(save.failedControl(), "Engine_Correction");
    EXPECT_EQ(config.Wheel, 20) << "what came before is taken";
    EXPECT_EQ(config.Clutch_Correction, 1.25F) << "what comes behind is not";
    EXPECT_EQ(config.First_Ratio, 2.6);
    values.Wheel = std::string(40, '9');
    OrderedSave again;
    saveVehicle(values, vehicleCaptions(car), config, again);
    EXPECT_EQ(again.failedBox(), "Speed Wheel Diameter :");
}

// A box reads no exponent, so it is shown none.
TEST(Gearing, ANumberOfAnySizeIsShownAsItIsReadAgain) {
    for (const char* typed : {"12345678", "0.00001234", "123456789012345678901234567890", "-0"}) {
        core::AppConfig config = dragster();
        GearingValues values = loadGearing(config);
        values.Weight_F = typed;
        values.RWheel = typed;
        OrderedSave save;
        saveVehicle(values, vehicleCaptions(car), config, save);
        const float weight = config.Weight_F;
        const double wheel = config.RWheel;
        values = loadGearing(config);
        EXPECT_EQ(values.Weight_F.find_first_of("eE"), std::string::npos);
        OrderedSave again;
        saveVehicle(values, vehicleCaptions(car), config, again);
        EXPECT_EQ(config.Weight_F, weight) << typed;
        EXPECT_EQ(config.RWheel, wheel) << typed;
        EXPECT_FALSE(std::signbit(weight));
    }
}

TEST(Gearing, ABoxIsToldByTheCaptionOfItsVehicle) {
    GearingValues values = loadGearing(dragster());
    values.Weight_F = std::string(40, '9');
    core::AppConfig config = dragster();
    OrderedSave bike;
    saveVehicle(values, vehicleCaptions(motorcycle), config, bike);
    EXPECT_EQ(bike.failedBox(), "Bike Weight:");
    values = loadGearing(dragster());
    values.Crown_F = std::string(40, '9');
    OrderedSave crown;
    saveVehicle(values, vehicleCaptions(motorcycle), config, crown);
    EXPECT_EQ(crown.failedBox(), "Rear Wheel Sprocket:");
}

TEST(Gearing, ShowsTheFinalDrive) {
    EXPECT_EQ(Label_Diff_Ratio("40", "16"), "Ratio = 2.50");
    EXPECT_EQ(Label_Diff_Ratio("41 teeth", "10"), "Ratio = 4.10");
    for (const char* none : {"", "0", "-3", "x"}) {
        EXPECT_EQ(Label_Diff_Ratio(none, "16"), "") << none;
        EXPECT_EQ(Label_Diff_Ratio("40", none), "") << none;
    }
    EXPECT_EQ(Label_Diff_Ratio(std::string(308, '9'), "0.01"), "");
}

TEST(Gearing, ACorrectionIsANumberFromOneToFive) {
    for (const char* good : {"1", "1.00", "5.00", " 2.5 "})
        EXPECT_EQ(Correction_LostFocus(good), (BoxCheck{good, false, false})) << good;
    for (const char* bad : {"0.99", "5.01", "", "1.5x", "abc", "-1"})
        EXPECT_EQ(Correction_LostFocus(bad), (BoxCheck{"1", true, true})) << bad;
}

TEST(EditGears, OpensOnTheRatiosButTheSixth) {
    EditGears edit = loadEditGears(dragster());
    edit.box[6] = "0.6";
    GearRatios_Click(edit, loadGearing(dragster()));
    EXPECT_EQ(joined(edit.box), "2.60 1.90 1.50 1.20 1.00 0.6 ");
}

TEST(EditGears, ANewNumberResetsItsLastGearAndThoseAbove) {
    EditGears edit = loadEditGears(dragster());
    GearRatios_Click(edit, loadGearing(dragster()));
    edit.Number_Of_Gears = 3;
    Number_Of_Gears_Click(edit);
    EXPECT_EQ(joined(edit.box), "2.60 1.90 1.50 1.00 1.00 1.00 ");
    EXPECT_EQ(shownOf(edit), 4);
    EXPECT_FALSE(edit.boxShown[5]);
    EXPECT_FALSE(edit.boxShown[6]);
}

TEST(EditGears, OkBringsNumberAndRatiosToTheLabels) {
    EditGears edit = loadEditGears(dragster());
    GearingValues values = loadGearing(dragster());
    GearRatios_Click(edit, values);
    edit.Number_Of_Gears = 1;
    edit.box[1] = "1.8";
    edit.box[2] = "one";
    Ok_Click(edit, values);
    EXPECT_EQ(values.Gears, "2");
    EXPECT_EQ(values.gearsShown, 2);
    EXPECT_EQ(joined(values.Ratio), "1.80 one 1.50 1.20 1.00  ");
    EXPECT_EQ(saved(values).Second_Ratio, 0);
}

TEST(EditGears, OkOnAFirstOpeningEmptiesTheSixthRatio) {
    core::AppConfig config = dragster();
    config.Gears = 6;
    EditGears edit = loadEditGears(config);
    GearingValues values = loadGearing(config);
    GearRatios_Click(edit, values);
    Ok_Click(edit, values);
    EXPECT_EQ(values.Ratio[6], "");
    EXPECT_EQ(saved(values).Sixth_Ratio, 0);
}

TEST(EditGears, WithoutAChoiceTheLabelsStay) {
    EditGears edit = loadEditGears(dragster());
    GearingValues values = loadGearing(dragster());
    edit.Number_Of_Gears = -1;
    Ok_Click(edit, values);
    EXPECT_EQ(values.Gears, "3");
    EXPECT_EQ(values.gearsShown, 3);
}

} // namespace
} // namespace kvo::setup
