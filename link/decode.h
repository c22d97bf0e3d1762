#pragma once
// From raw readings to engineering values, in place. It takes arrays, not a line: a recorded
// session is as good as a logger.
#include "core/shared_state.h"
#include "link/download.h"
#include "platform/files.h"

namespace kvo::link {

// Rows 1 to SampleCount: periods become rpm, the raw front wheel period becomes 1/200 mph, and
// PeakSpeedRaw the largest of them. A value that does not fit leaves its field as it was.
void convertPulses(core::SharedState& state, const PulsePeriods& periods);

// Analog channels of type 2 go through their table, read from the program's folder. A quotient
// outside 0 to 255 leaves the raw byte.
void convertAnalogTables(core::SharedState& state, platform::Files& files);
// The same for the rows alone, with the table of `channel` as it stands in memory.
void convertAnalogChannel(core::SharedState& state, int channel);
// How many analog channels may go through a table.
int analogChannelsWithTables(int dataType);

} // namespace kvo::link
