#pragma once
// Feeds bytes of any kind to what reads them and writes nothing, fast enough for millions of
// inputs: the disk is one file, and what is large is made once and kept from input to input. Each
// entry point ends the program where a reader leaves its rules.
#include "tests/fuzz/readers.h"

namespace kvo::fuzz {

void lookAtRun(Input file);
void lookAtOverlay(Input file);
void lookAtIndex(Input file);
void lookAtConfig(Input file);
void lookAtInfo(Input file);
void lookAtTimes(Input file);
void lookAtTable(Input file); // of an analog channel
void lookAtSetup(Input file); // the vehicle's
void lookAtText(Input file);
// What a logger sends: the header, then a transfer in the mode that the first byte names.
void lookAtSerial(Input bytes);
// The raw session of a download, as a file whose check sum is right, and its replay.
void lookAtRaw(Input file);

// The entry point of this name ("run", "overlay" ...), or nothing.
Reader lookerNamed(std::string_view name);

} // namespace kvo::fuzz
