#include "setup/setup_values.h"

#include "core/basic/numbers.h"
#include "core/basic/plain_number.h"

#include <cstdint>
#include <utility>

namespace kvo::setup {

namespace {

using core::AppConfig;
using core::CInt;
using core::CSng;
using core::CStr;
using core::plainNumber;
using core::rightTrimmed;
using core::Val;

constexpr float countsOfFlow = 255; // FlowRange is kept a count

bool isTicked(std::uint8_t stored) {
    return stored == 1;
}

std::uint8_t tick(bool ticked) {
    return ticked ? 1 : 0;
}

// The logger of such a model measures its own supply on analog 6, a tenth of a volt a count.
void forceBattery(SetupValues& values, AppConfig& config) {
    constexpr int batteryChannel = 6;
    const ModelFacts* model = modelAt(values.D_Modal);
    if (!model || !model->hasBattery) return;
    values.AnalogSetup[batteryChannel] = "Battery";
    config.Analog_Type[batteryChannel] = 0;
    config.AnalogScale[batteryChannel] = 0.1F;
    config.Decimals[batteryChannel] = 1;
    config.AnalogOffset[batteryChannel] = 0;
}

void loadGeneral(SetupValues& values, const AppConfig& config) {
    values.Driver = rightTrimmed(config.Driver);
    values.DriverNo = CStr(config.DriverNo);
    values.D_Modal = modelIndex(config.LoggerDataType);
    for (int n = 1; n <= 8; ++n) {
        values.AnalogSetup[n] = rightTrimmed(config.AnalogName[n]);
        values.Analog_Check[n] = isTicked(config.Analog_Check[n]);
    }
    values.Label_Magnify = rowCaptions(values.AnalogSetup);
    values.ComPort = listIndex(config.CommPort - 1, comPorts);
    values.Vehicle_Type = listIndex(config.Vehicle_Type, vehicleList.size());
}

void saveGeneral(const SetupValues& values, AppConfig& config, OrderedSave& save) {
    save.take(config.Driver, core::padded(values.Driver, 25));
    save.take(config.DriverNo, CInt(Val(values.DriverNo)), "Serial Number:", "DriverNo");
    if (const ModelFacts* model = modelAt(values.D_Modal))
        save.take(config.LoggerDataType, static_cast<std::int16_t>(model->type));
    for (int n = 1; n <= 8; ++n)
        save.take(config.AnalogName[n], core::padded(values.AnalogSetup[n], 8));
    save.take(config.CommPort, static_cast<std::int16_t>(values.ComPort + 1));
    save.take(config.Date_Prompt, tick(values.Date_Prompt));
    for (std::size_t mode = 0; mode < 2; ++mode)
        save.take(config.CheckBits[mode],
            static_cast<std::int16_t>(values.OptionDownloadMode[mode] ? -1 : 0));
    save.takeIndex(config.Vehicle_Type, values.Vehicle_Type);
    save.take(config.SpeedWheel_Prompt, tick(values.SpeedWheel_Prompt));
    save.take(config.Check_Password, tick(values.password.Check_Password));
}

SetupSave stoppedAt(const OrderedSave& save) {
    return {"The text of \"" + save.failedBox() +
                "\" is not a number that can be saved.\n\nCorrect it and try "
                "again. Nothing has been written to Kvo.Cfg.",
        save.failedControl()};
}

} // namespace

SetupValues loadSetup(const AppConfig& config) {
    SetupValues values;
    values.editGears = loadEditGears(config);
    loadGeneral(values, config);
    D_Modal_Change(values.rows, values.D_Modal);
    Vehicle_Type_Change(values.rows, values.Vehicle_Type);
    values.gearing = loadGearing(config);
    values.graph = loadGraphTab(config);
    values.FlowRange = plainNumber(config.FlowRange * countsOfFlow);
    values.Date_Prompt = isTicked(config.Date_Prompt);
    values.SpeedWheel_Prompt = isTicked(config.SpeedWheel_Prompt);
    // Two option buttons of one group: the one set last takes the dot from the other.
    values.OptionDownloadMode[1] = config.CheckBits[1] != 0;
    values.OptionDownloadMode[0] = config.CheckBits[0] != 0 && !values.OptionDownloadMode[1];
    values.password = loadPassword(config);
    return values;
}

SetupSave saveSetup(SetupValues& values, AppConfig& config) {
    // Required: in front of the password, so that a refused save has changed the channel.
    forceBattery(values, config);
    AppConfig taken = config; // what is refused may not be left to the next writer of the file
    const std::string refusal = takePassword(values.password, taken);
    if (!refusal.empty()) return {refusal, "NPassword"};
    OrderedSave save;
    saveGeneral(values, taken, save);
    save.take(taken.FlowRange, CSng(Val(values.FlowRange) / 255), "Flow Range", "FlowRange");
    saveVehicle(values.gearing, vehicleCaptions(values.Vehicle_Type), taken, save);
    saveGraphLists(values.graph, taken, save);
    saveGears(values.gearing, taken, save);
    for (int n = 1; n <= 8; ++n) save.take(taken.Analog_Check[n], tick(values.Analog_Check[n]));
    saveScales(values.graph.scales, taken, save);
    if (save.ended()) return stoppedAt(save);
    config = std::move(taken);
    return {};
}

BoxCheck DriverNo_LostFocus(std::string_view text) {
    if (Val(text) > 0) return {std::string(text)};
    return {"", true, false};
}

} // namespace kvo::setup
