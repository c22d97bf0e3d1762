#pragma once
// The setup form whole: what its controls show of the configuration, and what its Save takes back,
// in mirrored order. The form copies its controls into SetupValues, calls a routine and shows them.
#include "core/config_record.h"
#include "setup/gearing.h"
#include "setup/graph_tab.h"
#include "setup/models.h"
#include "setup/password.h"

#include <array>
#include <string>
#include <string_view>

namespace kvo::setup {

inline constexpr int comPorts = 16; // "COM1" to "COM16"

// Controls that are disabled while a pop-up frame is open; of an array, all members.
inline constexpr std::array<std::string_view, 17> lockedControls{"SaveSetup", "CancelSetup",
    "AnalogSetup", "Analog_Check", "GearRatios", "SpeedWheel_Prompt", "Engine_Correction",
    "Clutch_Correction", "Pinion_Correction", "Speed_Correction", "FlowRange", "RWheel", "Wheel",
    "Weight_F", "Pinion_F", "Crown_F", "TabStrip1"};

// Texts are those of the controls, right-trimmed where the field is padded; list indexes are -1
// without a selection.
struct SetupValues {
    std::string Driver;
    std::string DriverNo;
    int D_Modal = -1;
    core::FromOne<std::string, 8> AnalogSetup; // captions: the names of the analog channels
    core::FromOne<bool, 8> Analog_Check;
    int ComPort = -1;
    int Vehicle_Type = -1;
    GearingValues gearing;
    EditGears editGears;
    std::string FlowRange;
    GraphTabValues graph;
    ByChannel<std::string> Label_Magnify; // captions
    bool Date_Prompt = false;
    bool SpeedWheel_Prompt = false;
    std::array<bool, 2> OptionDownloadMode{}; // safe, fast; one of them at most
    PasswordFrame password;
    SetupRows rows; // what is on view
    friend bool operator==(const SetupValues&, const SetupValues&) = default;
};

// Form_Load.
SetupValues loadSetup(const core::AppConfig& config);

// Why SaveSetup stopped, if it did.
struct SetupSave {
    std::string message; // of a critical box under the program's name; empty: everything is taken
    std::string box;     // the control that is to be looked at then
    bool taken() const { return message.empty(); }
};
// SaveSetup up to the writing of the file. A refused password and a number that does not fit leave
// the configuration as it was but for analog channel 6 of a model with a battery. Nothing may be
// written then and the form stays.
SetupSave saveSetup(SetupValues& values, core::AppConfig& config);

// Leaving DriverNo: a number above 0 stays.
BoxCheck DriverNo_LostFocus(std::string_view text);

} // namespace kvo::setup
