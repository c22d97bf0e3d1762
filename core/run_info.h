#pragma once
// Info files: the notes, the measured times and the vehicle's setup of one run, beside its run
// file. 61 texts in records of 400 bytes.
#include "core/open_run.h"
#include "core/run_times.h"
#include "core/vehicle_setup.h"
#include "platform/files.h"

#include <string>

namespace kvo::core {

// What a run's info form holds; each text is the one of the control of its name.
struct RunInfo {
    std::string Info_Text; // notes
    std::string Text_AirTemp;
    std::string Text_Barometric;
    std::string Text_Humidity;
    std::string Text_60FootTime;
    std::string Text_330FootTime;
    std::string Text_660FootTime;
    std::string Text_660FootSpeed;
    std::string Text_1000FootTime;
    std::string Text_ET;
    std::string Text_Mph;
    VehicleSetup setup; // InfoText(i) and Text(i)
};

// Path of the info file: that of the run with "i" as its last character.
std::string infoFilePath(const std::string& dataFilePath);

// The whole info file. Names and values that it leaves empty are those of `defaults`. A missing
// file is created empty. `unread` as in readOrCreate().
RunInfo LoadRunInfo(const std::string& infoPath, const VehicleSetup& defaults,
    platform::Files& files, std::string* unread = nullptr);
// Records 5 to 10, as LoadRun shows them. A missing file is created empty.
TrackTimes LoadRunTimes(const std::string& infoPath, platform::Files& files);
// What a list of runs tells of each of them.
struct RunNotes {
    std::string Info_Text;
    TrackTimes times;
    std::string Text_Mph;
};
// Records 1, 5 to 10 and 11, for a list of many runs: all is empty where there is no info file or
// it cannot be read, and nothing is created.
RunNotes readRunNotes(const std::string& infoPath, const platform::Files& files);
// What became of the two files that hold a run's notes and times.
struct InfoWriteResult : platform::WriteResult {
    bool notesDone = true; // only the times may be missing then
};
// Writes the info file, then, if there is an elapsed time, the run's entry in KvoTimes; a run whose
// line cannot be read fails, since nothing says which entry is its. Texts are right-trimmed, and
// cut to the 398 characters of a record.
[[nodiscard]] InfoWriteResult SaveRunInfo(const std::string& appFolder, const std::string& infoPath,
    const std::string& runPath, const RunInfo& info, platform::Files& files);

} // namespace kvo::core
