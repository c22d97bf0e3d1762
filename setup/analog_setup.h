#pragma once
// The editor of one analog input: the pop-up frame Analog_Setup of the setup form. What is wired to
// the input becomes a scale, or a table of 256 readings in the channel's file. All texts are those
// of the controls, list indexes are -1 without a selection.
#include "core/analog_tables.h"
#include "core/config_record.h"
#include "core/setup_kinds.h"
#include "platform/files.h"
#include "setup/analog_curve.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace kvo::setup {

// The list Analog_Type, by its number.
using core::customInput;
using core::exhaustInput;
using core::lambdaInput;
using core::mappedInput;
using core::pressureInput;
inline constexpr std::array<std::string_view, 5> analogKinds{
    "Custum Input", "Exhaust Input", "Mapped Input", "KVO Lambda Sensor", "KVO Pressure Sensor"};
inline constexpr std::array<std::string_view, 5> fuelList{
    "Unleaded Petrol", "Propane", "Methanol", "Ethanol", "Lambda"};
inline constexpr std::array<std::string_view, 3> decimalsList{"0", "1", "2"};

// The captions of the boxes, by which a message names them too.
inline constexpr std::string_view rangeCaption = "Reading at 0 Volts:";
inline constexpr std::string_view factorCaption = "Reading at 5 Volts:";
inline constexpr std::string_view zeroCaption = "Number required to Zero Reading:";

// Bytes of a channel's name; what is typed behind them is cut.
inline constexpr int analogNameLength = 8;

// The frame keeps what it held from one opening to the next.
struct AnalogEditor {
    int channel = 0;    // 1 to 8; 0 until it is opened
    std::string Analog; // the name
    int Analog_Type = -1;
    std::string RangeText1;
    std::string AFactor;
    int Decimals = -1;
    std::string Zero;
    bool SmoothOption = false;
    int Sensor_Combo = -1;
    int Fuel_Combo = -1;
    PointTexts Text9;
    friend bool operator==(const AnalogEditor&, const AnalogEditor&) = default;
};

// Which controls a kind of input has on view, besides name, kind and SmoothOption.
struct AnalogParts {
    bool range = false; // RangeText1 and AFactor
    bool Decimals = false;
    bool Zero = false;
    bool table = false; // Text9
    bool Sensor_Combo = false;
    bool Fuel_Combo = false;
    friend bool operator==(const AnalogParts&, const AnalogParts&) = default;
};
AnalogParts analogParts(int Analog_Type);

// "Analog 1 Name:"
std::string Txt_Analog(int channel);

// Opens the editor on a channel, 1 to 8, whose button bears `caption`. A setting that its control
// cannot show leaves the control as it was. The channel's file is read into row 1 of the tables; a
// missing one is created empty, and what a file does not hold reads 0.
void AnalogSetup_Click(AnalogEditor& editor, int channel, const std::string& caption,
    const core::AppConfig& config, const std::string& appFolder, core::AnalogTables& tables,
    platform::Files& files);
// A pick in the list of kinds.
void Analog_Type_Click(AnalogEditor& editor);
// A change of AFactor: the last point of the table is its reading.
void AFactor_Change(AnalogEditor& editor);

// The curve of a mapped input as the editor stands; nothing where it cannot be drawn. `before` is
// row 1 of the tables.
std::optional<AnalogCurve> mappedCurve(AnalogEditor editor, AnalogTable before);

// Step 2 of the save: the larger of both texts becomes the scale, then the table is built. Gives
// what buildAnalogTable gives.
[[nodiscard]] int buildMappedTable(AnalogEditor& editor, AnalogTable& table);

// What came of "Ok".
struct AnalogSave {
    std::string message; // of a critical box under the program's name; empty: everything is taken
    std::string caption; // of the channel's button from now on
    std::string control; // whose text does not fit; empty where it is no text
    bool taken() const { return message.empty(); }
};
// "Ok": the channel's settings go to the configuration, row 1 to the channel's file, of which the
// old content is kept in Backup/. A number that does not fit and a file that cannot be written
// leave these and the editor as they were. Writing Kvo.Cfg is the setup form's.
AnalogSave Command2_Click(AnalogEditor& editor, core::AppConfig& config,
    const std::string& appFolder, core::AnalogTables& tables, platform::Files& files);

} // namespace kvo::setup
