#include "core/default_config.h"

#include <array>
#include <string>

namespace kvo::core {
namespace {

// A colour as one writes it, red first; the record has red in the lowest byte.
constexpr std::int32_t colour(int rgb) {
    return (rgb & 0xFF) << 16 | (rgb & 0xFF00) | rgb >> 16;
}

// 25 colours that stay apart from one another, from the black ground and from the light grey grid.
void setColours(AppConfig& c) {
    constexpr std::array<int, 8> analog{
        0xFF88DD, 0xAAFF55, 0x8877BB, 0xFFCC88, 0x00BBFF, 0xEE0077, 0x33FF99, 0xAAAA00};
    constexpr std::array<int, 8> exhaust{
        0xFF9999, 0x119977, 0xFFCCFF, 0x887733, 0xAA55DD, 0x99EEBB, 0x448811, 0xFF00BB};
    c.EngineColour = colour(0xFF4444);
    c.ClutchColour = colour(0xCC8800);
    c.InputColour = colour(0xFFFF00);
    c.OutputColour = colour(0x00FF00);
    c.MphColour = colour(0xFFFFFF);
    c.SlipColour = colour(0xFF00FF);
    c.RatioColour = colour(0x00FFFF);
    c.RoCoSColour = colour(0x0077FF);
    c.TyreGrowthColour = colour(0xEEFF99);
    for (int n = 1; n <= 8; ++n) {
        c.AnalogColour[n] = colour(analog[static_cast<std::size_t>(n - 1)]);
        c.ExhaustColour[n] = colour(exhaust[static_cast<std::size_t>(n - 1)]);
    }
    c.GraphBackColour = colour(0x000000);
}

// Everything is drawn, since nobody looks for a channel that was never seen.
void setChannels(AppConfig& c) {
    constexpr std::int16_t on = -1;
    c.EngineVisible = c.ClutchVisible = c.InputVisible = c.OutputVisible = on;
    c.SlipVisible = c.RatioVisible = c.RoCoSVisible = c.MphVisible = c.TyreGrowthVisible = on;
    c.AnalogVisible.fill(on);
    c.ExhaustVisible.fill(on);
    for (int n = 1; n <= 8; ++n) {
        c.AnalogName[n] = "Analog " + std::to_string(n);
        c.AnalogScale[n] = 1; // raw counts, until the user says what is wired to the input
        c.Analog_Check[n] = 1;
    }
}

void setGraph(AppConfig& c) {
    c.MaxRpm = 6; // 12,000 rpm at the 1000th of 1100 units, above what a motorcycle turns
    c.G_Res = 1;
    c.GridStyle = 2; // dots
    // Dots tell an overlay from the run in the same colours. Dashes of two curves at one height, as
    // of the shafts in the top gear, fill each other's gaps.
    c.OverlayStyle = 2;
    c.CustomScaleLow = 1;
    c.CustomScaleHigh = 1;
    c.Text_Magnify.fill(1);
    c.Text_Magnify[4] = 10;  // slip
    c.Text_Magnify[5] = 50;  // ratio
    c.Text_Magnify[24] = 10; // tyre growth
}

// A two-speed car. The figures are plausible only; the first setup brings the vehicle's own.
void setVehicle(AppConfig& c) {
    c.Vehicle_Type = 1;
    c.Gears = 2;
    c.First_Ratio = 1.8;
    c.Second_Ratio = 1;
    c.Wheel = 25;
    c.RWheel = 33;
    c.Crown_F = 41;
    c.Pinion_F = 10;
    c.Weight_F = 2300;
    c.Engine_Correction = c.Clutch_Correction = c.Pinion_Correction = c.Speed_Correction = 1;
}

void setLogger(AppConfig& c) {
    c.LoggerDataType = 32;
    c.CommPort = 1;
    c.DriverNo = 1;
    c.CheckBits = {0, -1}; // fast download mode
}

} // namespace

AppConfig defaultConfig() {
    AppConfig config;
    setColours(config);
    setChannels(config);
    setGraph(config);
    setVehicle(config);
    setLogger(config);
    return config;
}

} // namespace kvo::core
