#pragma once
// The one block of state that more than one form uses. Forms and main reach it through state();
// logic gets what it needs handed in.
#include "core/analog_tables.h"
#include "core/config_record.h"
#include "core/open_run.h"

#include <string>

namespace kvo::core {

struct SharedState {
    AppConfig Config;         // the record AppConfig
    bool ConfigKnown = false; // whether it came from a file, or from the user's setup
    std::string AppFolder;    // current directory at start, no separator behind it
    bool LookOnly = false; // whether another program has that folder, so that this one only looks
    OpenRun Run;           // main run
    OpenRun Overlay;       // overlay run
    AnalogTables Tables;
    std::string AnalogPicture; // result slot of AnalogFormat; survives decimals it does not know

    // What the titles of the windows end with.
    const char* titleMark() const { return LookOnly ? " - looking only" : ""; }
};

// The state of the program.
SharedState& state();

} // namespace kvo::core
