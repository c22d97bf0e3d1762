#include "setup/setup_values.h"

#include "core/config.h"

#include <gtest/gtest.h>

#include <cmath>
#include <iterator>
#include <random>
#include <string>
#include <utility>

namespace kvo::setup {
namespace {

core::AppConfig someSetup() {
    core::AppConfig config;
    config.Driver = core::padded("A. Driver", 25);
    config.DriverNo = 123;
    config.LoggerDataType = 43;
    for (int n = 1; n <= 8; ++n) {
        config.AnalogName[n] = core::padded("Input " + std::to_string(n), 8);
        config.Analog_Check[n] = static_cast<std::uint8_t>(n % 2);
    }
    config.CommPort = 16;
    config.Vehicle_Type = 1;
    config.Engine_Correction = config.Clutch_Correction = 1;
    config.Pinion_Correction = config.Speed_Correction = 1;
    config.Gears = 2;
    config.FlowRange = 100.0F / 255;
    config.G_Res = 1;
    config.Date_Prompt = 1;
    config.SpeedWheel_Prompt = 1;
    config.CheckBits = {0, -1};
    config.Text_Magnify.fill(1);
    return config;
}

TEST(SetupValues, ShowTheGeneralTab) {
    const SetupValues values = loadSetup(someSetup());
    EXPECT_EQ(values.Driver, "A. Driver");
    EXPECT_EQ(values.DriverNo, "123");
    EXPECT_EQ(values.D_Modal, 6);
    EXPECT_EQ(values.AnalogSetup[8], "Input 8");
    EXPECT_TRUE(values.Analog_Check[7]);
    EXPECT_FALSE(values.Analog_Check[8]);
    EXPECT_EQ(values.Label_Magnify[8], "Input 1");
    EXPECT_EQ(values.Label_Magnify[0], "Eng. RPM");
    EXPECT_EQ(values.ComPort, 15);
    EXPECT_EQ(values.Vehicle_Type, 1);
    EXPECT_EQ(values.FlowRange, "100");
    EXPECT_TRUE(values.Date_Prompt);
    EXPECT_TRUE(values.SpeedWheel_Prompt);
    EXPECT_FALSE(values.OptionDownloadMode[0]);
    EXPECT_TRUE(values.OptionDownloadMode[1]);
    EXPECT_TRUE(values.password.newShown);
    EXPECT_EQ(values.editGears.Number_Of_Gears, 1);
    EXPECT_EQ(values.gearing.gearsShown, 2);
}

TEST(SetupValues, ShowTheRowsOfModelAndVehicle) {
    core::AppConfig config = someSetup();
    config.LoggerDataType = 12;
    const SetupRows rows = loadSetup(config).rows;
    EXPECT_FALSE(rows.FrameExhaust);
    EXPECT_FALSE(rows.analog[5]);
    EXPECT_FALSE(rowOf(rows.options.Label_Magnify, channels::clutchChannel));
    EXPECT_EQ(rows.TabStrip2, RowsTab::magnify);
}

TEST(SetupValues, SaveWhatTheyLoad) {
    const core::AppConfig before = someSetup();
    core::AppConfig config = before;
    SetupValues values = loadSetup(config);
    EXPECT_EQ(saveSetup(values, config).message, "");
    EXPECT_EQ(config, before);
}

TEST(SetupValues, SaveEveryControl) {
    core::AppConfig config = someSetup();
    SetupValues values = loadSetup(config);
    values.Driver = std::string(30, 'x');
    values.DriverNo = "77 b";
    values.D_Modal = 4;
    values.AnalogSetup[2] = "Oil pressure";
    values.Analog_Check[2] = true;
    values.ComPort = 3;
    values.Vehicle_Type = 0;
    values.gearing.Weight_F = "555";
    values.gearing.Ratio[6] = "0.5";
    values.FlowRange = "51";
    values.graph.MaxRpm = 3;
    values.graph.scales.Text_Magnify[24] = "9";
    values.Date_Prompt = false;
    values.SpeedWheel_Prompt = false;
    values.OptionDownloadMode = {true, false};
    values.password.Check_Password = true;
    values.password.NPassword = values.password.VPassword = "new";
    EXPECT_TRUE(saveSetup(values, config).taken());
    EXPECT_EQ(config.Driver, std::string(25, 'x'));
    EXPECT_EQ(config.DriverNo, 77);
    EXPECT_EQ(config.LoggerDataType, 25);
    EXPECT_EQ(config.AnalogName[2], "Oil pres");
    EXPECT_EQ(config.Analog_Check[2], 1);
    EXPECT_EQ(config.CommPort, 4);
    EXPECT_EQ(config.Vehicle_Type, 0);
    EXPECT_EQ(config.Weight_F, 555);
    EXPECT_EQ(config.Sixth_Ratio, 0.5);
    EXPECT_EQ(config.FlowRange, 0.2F);
    EXPECT_EQ(config.MaxRpm, 3);
    EXPECT_EQ(config.Text_Magnify[24], 10);
    EXPECT_EQ(config.Date_Prompt, 0);
    EXPECT_EQ(config.SpeedWheel_Prompt, 0);
    EXPECT_EQ(config.CheckBits[0], -1);
    EXPECT_EQ(config.CheckBits[1], 0);
    EXPECT_EQ(config.Check_Password, 1);
    EXPECT_EQ(config.Password, "new");
}

TEST(SetupValues, WithoutASelectionAFieldStays) {
    core::AppConfig config = someSetup();
    config.LoggerDataType = 23;
    config.Vehicle_Type = 9;
    config.CommPort = 0;
    SetupValues values = loadSetup(config);
    EXPECT_EQ(values.D_Modal, -1);
    EXPECT_EQ(values.Vehicle_Type, -1);
    EXPECT_EQ(values.ComPort, -1);
    EXPECT_TRUE(saveSetup(values, config).taken());
    EXPECT_EQ(config.LoggerDataType, 23);
    EXPECT_EQ(config.Vehicle_Type, 9);
    EXPECT_EQ(config.CommPort, 0);
    config.CommPort = 17;
    EXPECT_EQ(loadSetup(config).ComPort, -1);
    config.Vehicle_Type = 2;
    EXPECT_EQ(loadSetup(config).Vehicle_Type, -1);
}

TEST(SetupValues, OneDownloadModeHasTheDot) {
    core::AppConfig config = someSetup();
    config.CheckBits = {-1, -1};
    EXPECT_EQ(loadSetup(config).OptionDownloadMode, (std::array<bool, 2>{false, true}));
    config.CheckBits = {-1, 0};
    EXPECT_EQ(loadSetup(config).OptionDownloadMode, (std::array<bool, 2>{true, false}));
    config.CheckBits = {0, 0};
    EXPECT_EQ(loadSetup(config).OptionDownloadMode, (std::array<bool, 2>{false, false}));
}

TEST(SetupValues, ARefusedPasswordSavesTheBatteryOnly) {
    core::AppConfig config = someSetup();
    config.Password = "secret";
    config.Check_Password = 1;
    config.Analog_Type[6] = 2;
    config.Decimals[6] = 2;
    config.AnalogOffset[6] = 4;
    SetupValues values = loadSetup(config);
    values.D_Modal = 3;
    values.Driver = "Somebody";
    core::AppConfig expected = config;
    expected.Analog_Type[6] = 0;
    expected.AnalogScale[6] = 0.1F;
    expected.Decimals[6] = 1;
    expected.AnalogOffset[6] = 0;
    const SetupSave save = saveSetup(values, config);
    EXPECT_FALSE(save.taken());
    EXPECT_TRUE(save.message.starts_with("You can't have a blank password"));
    EXPECT_EQ(values.AnalogSetup[6], "Battery");
    EXPECT_EQ(config, expected);
}

TEST(SetupValues, ClearingTheCheckBehindTheOldPasswordSaves) {
    core::AppConfig config = someSetup();
    config.Password = "secret";
    config.Check_Password = 1;
    SetupValues values = loadSetup(config);
    values.password.OPassword = "secret";
    OPassword_Change(values.password, config);
    ASSERT_TRUE(values.password.Check_Password_Enabled);
    values.password.Check_Password = false;
    EXPECT_TRUE(saveSetup(values, config).taken());
    EXPECT_EQ(config.Check_Password, 0);
    EXPECT_EQ(config.Password, "secret");
    EXPECT_TRUE(loadSetup(config).password.newShown);
}

TEST(SetupValues, ANumberThatDoesNotFitNamesItsBox) {
    core::AppConfig config = someSetup();
    SetupValues values = loadSetup(config);
    const core::AppConfig before = config;
    values.Driver = "Somebody";
    values.DriverNo = "40000";
    values.password.Check_Password = true;
    values.password.NPassword = values.password.VPassword = "dropped";
    values.ComPort = 0;
    const SetupSave save = saveSetup(values, config);
    EXPECT_FALSE(save.taken());
    EXPECT_NE(save.message.find("\"Serial Number:\""), std::string::npos);
    EXPECT_EQ(config, before) << "nothing is taken of a save that was refused";
    values.DriverNo = "1";
    values.FlowRange = std::string(60, '9');
    EXPECT_NE(saveSetup(values, config).message.find("\"Flow Range\""), std::string::npos);
}

// The box is read up to the first letter that no number has, so an exponent would be lost.
TEST(SetupValues, TheFlowRangePassesThroughWithoutAnExponent) {
    const std::pair<float, const char*> cases[] = {
        {1e-7F, "0.0000255"}, {5e4F, "12750000"}, {NAN, "0"}, {0.1F, "25.5"}};
    for (const auto& [stored, shown] : cases) {
        core::AppConfig config = someSetup();
        config.FlowRange = stored;
        SetupValues values = loadSetup(config);
        EXPECT_EQ(values.FlowRange, shown);
        ASSERT_TRUE(saveSetup(values, config).taken());
        EXPECT_FLOAT_EQ(config.FlowRange, std::isnan(stored) ? 0 : stored);
    }
}

TEST(SetupValues, ASerialNumberIsAboveZero) {
    EXPECT_EQ(DriverNo_LostFocus("12 x"), (BoxCheck{"12 x", false, false}));
    for (const char* bad : {"", "0", "-5", "x", "0.0"})
        EXPECT_EQ(DriverNo_LostFocus(bad), (BoxCheck{"", true, false})) << bad;
}

int pick(std::mt19937& random, int limit) {
    return std::uniform_int_distribution<int>(0, limit - 1)(random);
}

std::string anyWord(std::mt19937& random, int longest) {
    std::string text(static_cast<std::size_t>(pick(random, longest + 1)), ' ');
    for (char& letter : text) letter = static_cast<char>('!' + pick(random, 90));
    return text;
}

std::string anyNumber(std::mt19937& random) {
    return core::CStr(pick(random, 99999) / 100.0);
}

using Step = void (*)(SetupValues& values, std::mt19937& random);

// What a user can set.
const Step steps[] = {
    [](SetupValues& v, std::mt19937& r) { v.Driver = anyWord(r, 25); },
    [](SetupValues& v, std::mt19937& r) { v.DriverNo = std::to_string(pick(r, 32767) + 1); },
    [](SetupValues& v, std::mt19937& r) { v.D_Modal = pick(r, 7); },
    [](SetupValues& v, std::mt19937& r) { v.AnalogSetup[pick(r, 8) + 1] = anyWord(r, 8); },
    [](SetupValues& v, std::mt19937& r) { v.Analog_Check[pick(r, 8) + 1] = pick(r, 2) == 1; },
    [](SetupValues& v, std::mt19937& r) { v.ComPort = pick(r, comPorts); },
    [](SetupValues& v, std::mt19937& r) { v.Vehicle_Type = pick(r, 2); },
    [](SetupValues& v, std::mt19937& r) { v.gearing.Weight_F = v.gearing.RWheel = anyNumber(r); },
    [](SetupValues& v, std::mt19937& r) { v.gearing.Crown_F = v.gearing.Wheel = anyNumber(r); },
    [](SetupValues& v, std::mt19937& r) {
        v.gearing.Engine_Correction = core::CStr(pick(r, 4) + 1) + ".25";
        v.gearing.Speed_Correction = core::CStr(pick(r, 4) + 1) + ".50";
    },
    [](SetupValues& v, std::mt19937& r) {
        GearRatios_Click(v.editGears, v.gearing);
        v.editGears.box[6] = anyNumber(r);
        v.editGears.Number_Of_Gears = pick(r, 6);
        Number_Of_Gears_Click(v.editGears);
        v.editGears.box[1] = anyNumber(r);
        Ok_Click(v.editGears, v.gearing);
    },
    [](SetupValues& v, std::mt19937& r) {
        const int channel = pick(r, channels::channelCount);
        rowOf(v.graph.scales.Text_Magnify, channel) = std::to_string(pick(r, 51));
        rowOf(v.graph.scales.ComboScale, channel) = pick(r, 11);
    },
    [](SetupValues& v, std::mt19937& r) { v.graph.MaxRpm = pick(r, 12); },
    [](SetupValues& v, std::mt19937& r) { v.graph.G_Res = pick(r, 3); },
    [](SetupValues& v, std::mt19937& r) { v.graph.Exhaust = pick(r, 2); },
    [](SetupValues& v, std::mt19937& r) { v.graph.GridStyle = pick(r, 5); },
    [](SetupValues& v, std::mt19937& r) { v.graph.OverlayStyle = pick(r, 5); },
    [](SetupValues& v, std::mt19937& r) { v.graph.OverlayColours = pick(r, 2); },
    [](SetupValues& v, std::mt19937& r) { v.Date_Prompt = pick(r, 2) == 1; },
    [](SetupValues& v, std::mt19937& r) { v.SpeedWheel_Prompt = pick(r, 2) == 1; },
    [](SetupValues& v, std::mt19937& r) {
        v.OptionDownloadMode = {false, false};
        v.OptionDownloadMode.at(static_cast<std::size_t>(pick(r, 2))) = true;
    },
};

TEST(SetupValues, AWalkOfSettingsLoadsBackToTheSameControls) {
    std::mt19937 random(1);
    core::AppConfig config = someSetup();
    SetupValues values = loadSetup(config);
    for (int round = 0; round < 1000; ++round) {
        steps[static_cast<std::size_t>(pick(random, static_cast<int>(std::size(steps))))](
            values, random);
        ASSERT_EQ(saveSetup(values, config).message, "") << round;
        core::AppConfig reread;
        ASSERT_TRUE(core::decodeConfig(core::encodeConfig(config), reread));
        ASSERT_EQ(reread, config) << round;
        const SetupValues shown = loadSetup(reread);
        // What opening the form works out from the rest.
        values.rows = shown.rows;
        values.Label_Magnify = shown.Label_Magnify;
        values.editGears = shown.editGears;
        ASSERT_EQ(shown, values) << round;
    }
}

} // namespace
} // namespace kvo::setup
