#pragma once
// The live display in the pits: what of the form a data type shows, how a frame is taken off the
// line, and what its bytes say. The layout follows from the data type that the user has set up; the
// logger is not asked.
#include "core/analog_tables.h"
#include "core/basic/from_one.h"
#include "core/config_record.h"
#include "platform/files.h"
#include "platform/serial_port.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace kvo::link {

// What a data type means for a pit run.
struct PitRunType {
    int DataType;
    int frameBytes;  // and so InputLen
    int analogsRead; // analog channels that a frame of this type is read for
    int exhaustAt;   // position of the first of eight exhaust bytes, from 1; 0 for none
    // What of the form is shown.
    bool type12;    // analogs 5 to 8
    bool type17;    // the exhausts
    int lastAnalog; // the analogs behind it are hidden in either case
};

// The row of a data type, nothing for one that has no pit run.
std::optional<PitRunType> pitRunType(int dataType);

// What of the form is there; as it was designed, all.
struct PitRunLayout {
    PitRunLayout() {
        Analog.fill(true);
        T.fill(true);
    }
    bool canRun = false;
    core::FromOne<bool, 8> Analog; // the pair Text_Analog(c), Analog(c)
    core::FromOne<bool, 8> T;      // the pair Text_T(i), T(i)
    bool Temps_Label = true;
};
// Shows or hides analogs 5 to 8 and the heading of the exhausts.
void Type12(PitRunLayout& layout, bool shown);
// Shows or hides the exhausts and their heading.
void Type17(PitRunLayout& layout, bool shown);
PitRunLayout pitRunLayout(const core::AppConfig& config);

// Reads the table of each channel in use that goes through one. Gives why the first that is there
// could not be read; empty where all were.
std::string loadPitRunTables(const core::AppConfig& config, core::AnalogTables& tables,
    const std::string& appFolder, platform::Files& files);

// The longest whole part of a table's readings, a sign included: the room in front of the point
// with which the point of its channel stays in its place.
std::string widestWhole(const std::array<double, 256>& table);

// How many frames one turn takes of so many waiting bytes: none, one, or four where the display has
// fallen behind.
int pitFramesToTake(int inBufferCount, int inputLen);
// Takes them. The last one is what counts; nothing where none was taken.
std::optional<std::string> takePitFrame(platform::SerialPort& port);

// The labels that a frame writes, each by its name. Nothing for a label that stays as it was.
struct PitRunReadings {
    std::string LineNumber; // with a leading blank
    std::optional<std::string> ERpm;
    std::optional<std::string> CRpm;
    std::optional<std::string> PRpm;
    std::optional<std::string> Mph;
    core::FromOne<std::optional<std::string>, 8> Analog;
    core::FromOne<std::optional<std::string>, 8> T;
};
// Nothing for a frame that is shorter than the frames of the configuration's data type, and for a
// type without a pit run.
std::optional<PitRunReadings> decodePitFrame(
    std::string_view frame, const core::AppConfig& config, const core::AnalogTables& tables);

} // namespace kvo::link
