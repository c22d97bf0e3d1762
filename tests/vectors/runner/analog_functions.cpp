// Golden vectors of the analog inputs: the editor's save, its table, and the logger's own supply.
#include "setup/analog_setup.h"
#include "setup/setup_values.h"
#include "tests/support/memory_files.h"
#include "vector_tools.h"

#include <memory>
#include <stdexcept>

namespace kvo::vectors {

using namespace kvo::setup;
using testing::MemoryFiles;

static int whole(const Json& in, const char* key) {
    return in.at(key).get<int>();
}

static Json builtTable(const Case& c) {
    AnalogEditor editor;
    editor.AFactor = textOf(c.in.at("AFactor"));
    for (int point = 1; point <= tablePoints; ++point)
        editor.Text9[point] = textOf(c.in.at("Text9").at(static_cast<std::size_t>(point - 1)));
    AnalogTable row{};
    row[0] = c.in.at("row0").get<double>();
    if (buildMappedTable(editor, row) != 0) throw std::runtime_error("the table was refused");
    return Json{{"row", row}, {"AFactor", toJson(editor.AFactor)}};
}

static Json channelSaved(const Case& c) {
    AnalogEditor editor;
    for (int channel = 1; channel <= 8; ++channel)
        if (Txt_Analog(channel) == textOf(c.in.at("Txt_Analog"))) editor.channel = channel;
    if (editor.channel == 0) throw std::runtime_error("no channel has this caption");
    editor.Analog = textOf(c.in.at("Analog"));
    editor.Analog_Type = whole(c.in, "Analog_Type");
    editor.RangeText1 = textOf(c.in.at("RangeText1"));
    editor.AFactor = textOf(c.in.at("AFactor"));
    editor.Zero = textOf(c.in.at("Zero"));
    editor.Decimals = whole(c.in, "Decimals");
    editor.SmoothOption = whole(c.in, "SmoothOption") != 0;
    editor.Sensor_Combo = whole(c.in, "Sensor_Combo");
    editor.Fuel_Combo = whole(c.in, "Fuel_Combo");
    core::AppConfig config;
    const auto tables = std::make_unique<core::AnalogTables>();
    MemoryFiles files;
    const AnalogSave save = Command2_Click(editor, config, "/kvo", *tables, files);
    if (!save.taken()) throw std::runtime_error(save.message);
    const int n = editor.channel;
    return Json{{"channel", n}, {"button_caption", toJson(save.caption)},
        {"Analog_Type", config.Analog_Type[n]}, {"AnalogRangeLow", config.AnalogRangeLow[n]},
        {"AnalogScale", config.AnalogScale[n]}, {"Decimals", config.Decimals[n]},
        {"AnalogOffset", config.AnalogOffset[n]},
        {"SmoothOption", config.SmoothOption[static_cast<std::size_t>(16 + n)]},
        {"Sensor_Combo", config.Sensor_Combo[n]}, {"Fuel_Combo", config.Fuel_Combo}};
}

static Json batterySaved(const Case& c) {
    constexpr int battery = 6;
    const Json& before = c.in.at("channel6");
    core::AppConfig config;
    SetupValues values = loadSetup(config);
    values.D_Modal = whole(c.in, "D_Modal");
    values.AnalogSetup[battery] = textOf(before.at("caption"));
    config.Analog_Type[battery] = before.at("Analog_Type").get<std::uint8_t>();
    config.AnalogScale[battery] = before.at("AnalogScale").get<float>();
    config.Decimals[battery] = before.at("Decimals").get<std::uint8_t>();
    config.AnalogOffset[battery] = before.at("AnalogOffset").get<float>();
    const SetupSave save = saveSetup(values, config);
    if (!save.taken()) throw std::runtime_error(save.message);
    return Json{{"caption", toJson(values.AnalogSetup[battery])},
        {"Analog_Type", config.Analog_Type[battery]}, {"AnalogScale", config.AnalogScale[battery]},
        {"Decimals", config.Decimals[battery]}, {"AnalogOffset", config.AnalogOffset[battery]},
        {"AnalogName", toJson(config.AnalogName[battery])},
        {"LoggerDataType", config.LoggerDataType}};
}

void addAnalogFunctions() {
    add("AnalogText9Entry", [](const Case& c) {
        return Json{{"entry", tableEntry(whole(c.in, "k"))}};
    });
    add("BuildAnalogTable", builtTable);
    add("AnalogCommand2", channelSaved);
    add("BatteryChannel", batterySaved);
}

} // namespace kvo::vectors
