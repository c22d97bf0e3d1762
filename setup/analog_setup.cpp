#include "setup/analog_setup.h"

#include "core/basic/numbers.h"
#include "core/basic/plain_number.h"
#include "setup/graph_tab.h"
#include "setup/ordered_save.h"
#include "setup/sensor_models.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace kvo::setup {

namespace {

using core::AppConfig;
using core::CStr;
using core::plainNumber;
using core::Val;

constexpr int scratchRow = 1; // of the tables: the channel that is edited, whichever it is
constexpr double countsOfRange = 255;

std::size_t smoothEntry(int channel) {
    return 16 + static_cast<std::size_t>(channel);
}

// A list that has no such entry stays where it is.
void selectEntry(int& list, int stored, std::size_t entries) {
    const int index = listIndex(stored, entries);
    if (index >= 0) list = index;
}

void setAFactor(AnalogEditor& editor, const std::string& text) {
    if (editor.AFactor == text) return;
    editor.AFactor = text;
    AFactor_Change(editor);
}

// The single of a sum; nothing where it is too large for one. "-0" is no other number than "0".
std::optional<float> asSingle(double value) {
    const auto number = core::finite(value + 0.0);
    return number ? core::CSng(*number) : std::nullopt;
}

// Units a count between two readings.
std::optional<float> scaleOf(double top, double low) {
    return asSingle((top + std::abs(low)) / countsOfRange);
}

std::optional<float> scaleOf(const AnalogEditor& editor) {
    return scaleOf(Val(editor.AFactor), Val(editor.RangeText1));
}

// The reading at 5 volts, as a single: its 255th part is kept rounded, so the last of its seven
// digits may be another than the one that was typed.
void showScale(AnalogEditor& editor, const AppConfig& config, int channel) {
    const float scale = config.AnalogScale[channel];
    const double low = std::abs(int{config.AnalogRangeLow[channel]});
    const auto top = asSingle(static_cast<double>(scale) * countsOfRange - low);
    if (top) setAFactor(editor, plainNumber(*top));
}

// What is said of a text that does not fit. A box that the kind of input has not on view is said to
// be there all the same.
std::string noNumber(std::string_view box, bool onView) {
    std::string text = "The text of \"" + std::string(box) +
                       "\" is not a number that can be saved.\n\nCorrect it and try again. ";
    if (!onView) text += "It is on view with \"" + std::string(analogKinds[customInput]) + "\". ";
    return text + "Nothing has been changed.";
}

std::string pointName(int point) {
    return "Text9(" + CStr(point) + ")";
}

void takeSensor(AnalogEditor& editor) {
    const SensorModel* model = sensorModelAt(editor.Sensor_Combo);
    if (model == nullptr) return;
    editor.RangeText1 = "0";
    setAFactor(editor, CStr(model->atFiveVolts));
}

void takeFields(const AnalogEditor& editor, AppConfig& config, OrderedSave& save) {
    const int c = editor.channel;
    save.takeIndex(config.Analog_Type[c], editor.Analog_Type);
    save.take(
        config.AnalogRangeLow[c], core::CInt(Val(editor.RangeText1)), rangeCaption, "RangeText1");
    save.take(config.AnalogScale[c], scaleOf(editor), factorCaption, "AFactor");
    save.takeIndex(config.Decimals[c], editor.Decimals);
    save.take(config.AnalogOffset[c], asSingle(Val(editor.Zero)), zeroCaption, "Zero");
    save.take(config.SmoothOption[smoothEntry(c)],
        static_cast<std::uint8_t>(editor.SmoothOption ? 1 : 0));
    save.takeIndex(config.Sensor_Combo[c], editor.Sensor_Combo);
    save.takeIndex(config.Fuel_Combo, editor.Fuel_Combo);
}

} // namespace

AnalogParts analogParts(int Analog_Type) {
    AnalogParts parts;
    parts.range = Analog_Type == customInput;
    parts.table = Analog_Type == mappedInput;
    parts.Fuel_Combo = Analog_Type == lambdaInput;
    parts.Sensor_Combo = Analog_Type == pressureInput;
    parts.Decimals = parts.Zero = parts.range || parts.table || parts.Sensor_Combo;
    return parts;
}

std::string Txt_Analog(int channel) {
    return "Analog" + core::Str(channel) + " Name:";
}

void AnalogSetup_Click(AnalogEditor& editor, int channel, const std::string& caption,
    const AppConfig& config, const std::string& appFolder, core::AnalogTables& tables,
    platform::Files& files) {
    editor.channel = channel;
    editor.Analog = caption;
    selectEntry(editor.Analog_Type, config.Analog_Type[channel], analogKinds.size());
    editor.RangeText1 = CStr(config.AnalogRangeLow[channel]);
    showScale(editor, config, channel);
    selectEntry(editor.Decimals, config.Decimals[channel], decimalsList.size());
    editor.Zero = plainNumber(config.AnalogOffset[channel]);
    editor.SmoothOption = config.SmoothOption[smoothEntry(channel)] == 1;
    selectEntry(editor.Sensor_Combo, config.Sensor_Combo[channel], sensorModels().size());
    selectEntry(editor.Fuel_Combo, config.Fuel_Combo, fuelList.size());
    // A missing or short file has no readings of the channel that was edited before.
    tables[scratchRow].fill(0);
    core::LoadAnalogTable(appFolder, core::analogTableName(channel), scratchRow, tables, files);
    for (int point = 1; point <= tablePoints; ++point)
        editor.Text9[point] =
            plainNumber(tables[scratchRow][static_cast<std::size_t>(tableEntry(point))]);
}

void Analog_Type_Click(AnalogEditor& editor) {
    if (editor.Analog_Type != lambdaInput) return;
    // So the channel keeps the raw count.
    editor.RangeText1 = "0";
    setAFactor(editor, "255");
    editor.Zero = "0";
}

void AFactor_Change(AnalogEditor& editor) {
    editor.Text9[tablePoints] = editor.AFactor;
}

int buildMappedTable(AnalogEditor& editor, AnalogTable& table) {
    // Required: compared as texts, so "90" is greater than "100".
    if (editor.Text9[tablePoints] > editor.AFactor) setAFactor(editor, editor.Text9[tablePoints]);
    return buildAnalogTable(table, editor.Text9);
}

std::optional<AnalogCurve> mappedCurve(AnalogEditor editor, AnalogTable before) {
    if (buildMappedTable(editor, before) != 0) return {};
    const auto scale = scaleOf(editor);
    return scale ? analogCurve(before, *scale) : std::nullopt;
}

AnalogSave Command2_Click(AnalogEditor& editor, AppConfig& config, const std::string& appFolder,
    core::AnalogTables& tables, platform::Files& files) {
    AnalogEditor entries = editor;
    const AnalogTable before = tables[scratchRow];
    AnalogTable table = before;
    if (entries.Analog_Type == pressureInput) takeSensor(entries);
    if (entries.Analog_Type == mappedInput) {
        const int failed = buildMappedTable(entries, table);
        if (failed != 0) return {noNumber(Label32(failed), true), {}, pointName(failed)};
    }
    AppConfig taken = config;
    OrderedSave save;
    takeFields(entries, taken, save);
    if (save.ended()) {
        const AnalogParts parts = analogParts(entries.Analog_Type);
        const bool onView = save.failedBox() == zeroCaption ? parts.Zero : parts.range;
        return {noNumber(save.failedBox(), onView), {}, save.failedControl()};
    }
    tables[scratchRow] = table;
    const auto written = core::SaveAnalogTable(
        appFolder, core::analogTableName(entries.channel), scratchRow, tables, files);
    if (!written) {
        tables[scratchRow] = before;
        return {written.message, {}, {}};
    }
    editor = entries;
    config = taken;
    return {{}, editor.Analog.substr(0, analogNameLength), {}};
}

} // namespace kvo::setup
