// Golden vectors of the configuration record.
#include "core/basic/numbers.h"
#include "core/config.h"
#include "core_functions.h"

#include <cstddef>
#include <stdexcept>
#include <type_traits>

namespace kvo::vectors {

using core::AppConfig;

namespace {

// Calls `visit` with the name, the field and, for a text, its width.
template <typename Config, typename Visit> void visitNumbers(Config& c, Visit&& visit) {
    visit("EngineColour", c.EngineColour);
    visit("InputColour", c.InputColour);
    visit("OutputColour", c.OutputColour);
    visit("ClutchColour", c.ClutchColour);
    visit("MphColour", c.MphColour);
    visit("SlipColour", c.SlipColour);
    visit("RatioColour", c.RatioColour);
    visit("RoCoSColour", c.RoCoSColour);
    visit("DriverNo", c.DriverNo);
    visit("CommPort", c.CommPort);
    visit("Gears", c.Gears);
    visit("First_Ratio", c.First_Ratio);
    visit("Second_Ratio", c.Second_Ratio);
    visit("Third_Ratio", c.Third_Ratio);
    visit("Forth_Ratio", c.Forth_Ratio);
    visit("Fifth_Ratio", c.Fifth_Ratio);
    visit("Weight_F", c.Weight_F);
    visit("Wheel", c.Wheel);
    visit("Pinion_F", c.Pinion_F);
    visit("Crown_F", c.Crown_F);
    visit("Engine_Correction", c.Engine_Correction);
    visit("Clutch_Correction", c.Clutch_Correction);
    visit("Pinion_Correction", c.Pinion_Correction);
    visit("EngineVisible", c.EngineVisible);
    visit("InputVisible", c.InputVisible);
    visit("OutputVisible", c.OutputVisible);
    visit("RoCoSVisible", c.RoCoSVisible);
    visit("RatioVisible", c.RatioVisible);
    visit("SlipVisible", c.SlipVisible);
    visit("MphVisible", c.MphVisible);
    visit("ClutchVisible", c.ClutchVisible);
    visit("RWheel", c.RWheel);
    visit("MaxRpm", c.MaxRpm);
    visit("G_Res", c.G_Res);
    visit("FlowRange", c.FlowRange);
    visit("Speed_Correction", c.Speed_Correction);
    visit("LoggerDataType", c.LoggerDataType);
    visit("Exhaust", c.Exhaust);
    visit("ScaleCustom", c.ScaleCustom);
    visit("GraphBackColour", c.GraphBackColour);
    visit("Sixth_Ratio", c.Sixth_Ratio);
    visit("Date_Prompt", c.Date_Prompt);
    visit("SpeedWheel_Prompt", c.SpeedWheel_Prompt);
    visit("Check_Password", c.Check_Password);
    visit("CustomScaleLow", c.CustomScaleLow);
    visit("CustomScaleHigh", c.CustomScaleHigh);
    visit("Vehicle_Type", c.Vehicle_Type);
    visit("Fuel_Combo", c.Fuel_Combo);
    visit("TyreGrowthVisible", c.TyreGrowthVisible);
    visit("TyreGrowthColour", c.TyreGrowthColour);
    visit("GridStyle", c.GridStyle);
    visit("OverlayStyle", c.OverlayStyle);
    visit("OverlayColours", c.OverlayColours);
}

template <typename Config, typename Visit> void visitArrays(Config& c, Visit&& visit) {
    visit("AnalogColour", c.AnalogColour);
    visit("ExhaustColour", c.ExhaustColour);
    visit("AnalogScale", c.AnalogScale);
    visit("AnalogOffset", c.AnalogOffset);
    visit("AnalogVisible", c.AnalogVisible);
    visit("ExhaustVisible", c.ExhaustVisible);
    visit("Decimals", c.Decimals);
    visit("Analog_Type", c.Analog_Type);
    visit("Analog_Check", c.Analog_Check);
    visit("Sensor_Combo", c.Sensor_Combo);
    visit("ComboScale", c.ComboScale);
    visit("Text_Magnify", c.Text_Magnify);
    visit("AnalogRangeLow", c.AnalogRangeLow);
    visit("SmoothOption", c.SmoothOption);
    visit("CheckBits", c.CheckBits);
}

Json fieldsOf(const AppConfig& config) {
    Json fields;
    visitNumbers(config, [&](const char* name, const auto& value) { fields[name] = value; });
    visitArrays(config, [&](const char* name, const auto& values) {
        Json list = Json::array();
        for (const auto value : values) list.push_back(value);
        fields[name] = list;
    });
    fields["Driver"] = toJson(config.Driver);
    fields["Password"] = toJson(config.Password);
    fields["AnalogName"] = Json::array();
    for (const std::string& name : config.AnalogName) fields["AnalogName"].push_back(toJson(name));
    return fields;
}

bool changeTexts(AppConfig& config, const std::string& key, const Json& value) {
    if (key == "Driver") {
        config.Driver = textOf(value);
    } else if (key == "Password") {
        config.Password = textOf(value);
    } else if (key == "AnalogName") {
        for (int c = 1; c <= 8; ++c) {
            config.AnalogName[c] = textOf(value.at(static_cast<std::size_t>(c - 1)));
        }
    } else {
        return false;
    }
    return true;
}

void change(AppConfig& config, const std::string& key, const Json& value) {
    bool done = changeTexts(config, key, value);
    visitNumbers(config, [&](const std::string& name, auto& field) {
        if (name != key) return;
        value.get_to(field);
        done = true;
    });
    visitArrays(config, [&](const std::string& name, auto& fields) {
        if (name != key) return;
        std::size_t i = 0;
        for (auto& field : fields) value.at(i++).get_to(field);
        done = true;
    });
    if (!done) throw std::runtime_error("no field " + key);
}

Json loadConfig(const Case& c) {
    AppConfig config;
    const bool whole = core::decodeConfig(bytesOfHex(c.in.at("file")), config);
    return {{"failed", !whole}, {"fields", fieldsOf(config)}};
}

Json saveConfig(const Case& c) {
    AppConfig config;
    core::decodeConfig(bytesOfHex(c.in.at("file")), config);
    for (const auto& [key, value] : c.in.at("changes").items()) change(config, key, value);
    return {{"file", hexOf(core::encodeConfig(config))}};
}

} // namespace

void addCoreConfigFunctions() {
    add("LoadConfig", loadConfig);
    add("SaveConfig", saveConfig);
}

} // namespace kvo::vectors
