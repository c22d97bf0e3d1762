#pragma once
// The one block of state that more than one form uses. Forms and main reach it through state();
// logic gets what it needs handed in.
#include "core/config_record.h"
#include "core/records.h"

#include <array>
#include <cstdint>
#include <string>

namespace kvo::core {

// One line of the run index: 80 and 160 characters in the file.
struct RunIndexEntry {
    std::string FileName;
    std::string Description;
    friend bool operator==(const RunIndexEntry&, const RunIndexEntry&) = default;
};

using AnalogTables = FromOne<std::array<double, 256>, 8>;

struct SharedState {
    AppConfig Config;         // the record AppConfig
    std::string AppFolder;    // current directory at start, no separator behind it
    std::string DataFilePath; // run file in work
    std::string InfoFilePath; // the same with "i" as its last character
    std::uint16_t SampleCount = 0;
    std::string RunHeaderLine;
    std::string RunText;
    std::uint8_t DataType = 0;
    std::int16_t OverlayDataType = 0;
    std::uint8_t LoggerModel = 0;
    std::uint8_t LoggerVersion = 0;
    std::uint8_t LoggerMemory = 0;
    std::int16_t LoggerSerial = 0;
    std::int32_t PeakSpeedRaw = 0;
    RunImage Run;     // main run
    RunImage Overlay; // overlay run
    std::int16_t OverlayLoaded = 0;
    FromOne<RunIndexEntry, 2> RunIndexBuffer;
    AnalogTables Tables;
    std::int16_t LoadStatus = 0;
    std::int16_t SaveMode = 0;
    std::int16_t ImportMode =
        0; // also ChangedFlag of the editing forms and GraphDirty of the graph
    std::int16_t IndexNoSort = 0;
    std::int16_t DeleteMode = 0;
    std::int16_t GraphReturnToMain = 0;
    std::int16_t TimeGraphFromGraph = 0;
    std::int16_t InfoNamesOnly = 0;
    std::int16_t GraphNeedsRedraw = 0;
    std::string AnalogPicture; // result slot of AnalogFormat; survives decimals it does not know
};

// The state of the program.
SharedState& state();

} // namespace kvo::core
