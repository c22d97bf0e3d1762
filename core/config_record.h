#pragma once
// AppConfig: everything the user sets up, as kept in Kvo.Cfg. Field names, order and widths are
// those of the file (see docs/file-formats.md).
#include "core/basic/from_one.h"

#include <array>
#include <cstdint>
#include <string>

namespace kvo::core {

// A flag that is set; flags of the stored records are 0 or -1.
inline constexpr std::int16_t flagOn = -1;

struct AppConfig {
    std::array<std::uint8_t, 4> reserved0{};
    std::int32_t EngineColour = 0;
    std::int32_t InputColour = 0;
    std::int32_t OutputColour = 0;
    std::int32_t ClutchColour = 0;
    std::int32_t MphColour = 0;
    FromOne<std::int32_t, 8> AnalogColour;
    FromOne<std::int32_t, 8> ExhaustColour;
    std::int32_t SlipColour = 0;
    std::int32_t RatioColour = 0;
    std::int32_t RoCoSColour = 0;
    std::string Driver;                 // 25 characters
    std::int16_t DriverNo = 0;          // the logger's number
    FromOne<std::string, 8> AnalogName; // 8 characters each
    FromOne<float, 8> AnalogScale;      // (full scale + |AnalogRangeLow|) / 255
    FromOne<float, 8> AnalogOffset;
    std::int16_t CommPort = 0; // 1 to 16
    std::int16_t Gears = 0;    // up to 6
    double First_Ratio = 0;
    double Second_Ratio = 0;
    double Third_Ratio = 0;
    double Forth_Ratio = 0;
    double Fifth_Ratio = 0;
    float Weight_F = 0;
    float Wheel = 0;    // front wheel diameter, inches
    float Pinion_F = 0; // teeth
    float Crown_F = 0;  // teeth
    float Engine_Correction = 0;
    float Clutch_Correction = 0;
    float Pinion_Correction = 0;
    std::int16_t EngineVisible = 0; // 0 or -1, as all flags here
    std::int16_t InputVisible = 0;
    std::int16_t OutputVisible = 0;
    std::int16_t RoCoSVisible = 0;
    std::int16_t RatioVisible = 0;
    std::int16_t SlipVisible = 0;
    FromOne<std::int16_t, 8> AnalogVisible;
    FromOne<std::int16_t, 8> ExhaustVisible;
    std::int16_t MphVisible = 0;
    std::array<std::uint8_t, 170> reserved373{};
    FromOne<std::uint8_t, 8> Decimals; // 0, 1, 2
    std::array<std::uint8_t, 4> reserved551{};
    std::int16_t ClutchVisible = 0;
    double RWheel = 0;                    // rear wheel diameter, inches
    std::uint8_t MaxRpm = 0;              // list index; rpm per unit is MaxRpm + 6
    std::uint8_t G_Res = 0;               // samples a step: 1, 4, 8
    FromOne<std::uint8_t, 8> Analog_Type; // 2: through its table
    float FlowRange = 0;
    float Speed_Correction = 0;
    std::int16_t LoggerDataType = 0; // 8, 12, 17, 20, 25, 32, 43
    FromOne<std::uint8_t, 8> Analog_Check;
    std::int16_t Exhaust = 0;     // 0 Celsius, -1 Fahrenheit
    std::int16_t ScaleCustom = 0; // 0 full, 1 half, 2 quarter, 3 custom, 4 zoomed
    std::int32_t GraphBackColour = 0;
    double Sixth_Ratio = 0;
    std::uint8_t Date_Prompt = 0;       // 1: no date check before a download
    std::uint8_t SpeedWheel_Prompt = 0; // 1: no wheel dialogue
    std::uint8_t Check_Password = 0;
    std::string Password; // variable length, readable
    std::uint8_t CustomScaleLow = 0;
    std::uint8_t CustomScaleHigh = 0;
    std::uint8_t Vehicle_Type = 0; // 1 car, else motorcycle
    std::uint8_t Fuel_Combo = 0;
    std::array<std::uint8_t, 6> reservedS4{};
    std::array<std::uint8_t, 1> reservedS10{};
    FromOne<std::uint8_t, 8> Sensor_Combo;
    std::int16_t TyreGrowthVisible = 0;
    std::int32_t TyreGrowthColour = 0;
    std::uint8_t GridStyle = 0;
    std::uint8_t OverlayStyle = 0;
    std::uint8_t OverlayColours = 0;           // 0 same as graph, 1 inverted
    std::array<std::uint8_t, 25> ComboScale{}; // graph units
    std::array<std::uint8_t, 25> Text_Magnify{};
    FromOne<std::int16_t, 8> AnalogRangeLow;
    std::array<std::uint8_t, 25> SmoothOption{}; // in an order of its own: see channels/channels.h
    std::array<std::int16_t, 2> CheckBits{};     // safe, fast download mode
    friend bool operator==(const AppConfig&, const AppConfig&) = default;
};

} // namespace kvo::core
