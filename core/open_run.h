#pragma once
// A run in memory with all that belongs to it: the file that it is in, what that file says of
// itself, the rows and blocks, and its track times. The main run and the overlay are one each.
#include "core/records.h"

#include <cstdint>
#include <string>

namespace kvo::core {

// The six track times that the graph shows, as typed.
struct TrackTimes {
    std::string Text_60FootTime;
    std::string Text_330FootTime;
    std::string Text_660FootTime;
    std::string Text_660FootSpeed;
    std::string Text_1000FootTime;
    std::string Text_ET;
    friend bool operator==(const TrackTimes&, const TrackTimes&) = default;
};

// What the chooser gives back.
struct ChosenRun {
    std::string path;     // of the run file
    std::string infoPath; // of its info file
    std::string fileName;
    std::string description;
};

struct OpenRun {
    std::string path;              // of the run file
    std::string infoPath;          // of its info file
    std::string headerLine;        // text of record 1
    std::uint8_t DataType = 0;     // the number in front of the header line
    std::uint16_t SampleCount = 0; // rows; 0 while there is no run
    std::int32_t PeakSpeedRaw = 0; // largest SpeedRaw of the main run
    RunImage image;
    TrackTimes times; // of the main run
};

} // namespace kvo::core
