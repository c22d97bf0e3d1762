#pragma once
// From raw readings to engineering values, in place. It takes arrays, not a line: a recorded
// session is as good as a logger.
#include "core/analog_tables.h"
#include "core/config_record.h"
#include "core/open_run.h"
#include "link/download.h"
#include "platform/files.h"

#include <string>

namespace kvo::link {

// Rows 1 to SampleCount: periods become rpm, the raw front wheel period becomes 1/200 mph, and
// PeakSpeedRaw the largest of them. A value that does not fit leaves its field as it was.
void convertPulses(core::OpenRun& run, const core::AppConfig& config, const PulsePeriods& periods);

// What a reason why a table could not be read goes on with.
inline constexpr const char* tableUnread =
    "\r\n\r\nThe values of its channel are not those of the table. Mend the file and start again.";

// Analog channels of type 2 go through their table, read from the program's folder. A quotient
// outside 0 to 255 leaves the raw byte. Gives why the first table that is there could not be read;
// empty where all were.
std::string convertAnalogTables(core::OpenRun& run, const core::AppConfig& config,
    core::AnalogTables& tables, const std::string& appFolder, platform::Files& files);
// The same for the rows alone, with the table of `channel` as it stands in memory.
void convertAnalogChannel(core::OpenRun& run, const core::AppConfig& config,
    const core::AnalogTables& tables, int channel);
// How many analog channels may go through a table.
int analogChannelsWithTables(int dataType);

} // namespace kvo::link
