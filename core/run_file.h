#pragma once
// Run files: 84-byte records, read as main run or overlay, and written. Layout in
// docs/file-formats.md. What a load has to say to the user is given as a value; nobody is asked or
// told here.
#include "core/config_record.h"
#include "core/open_run.h"
#include "core/run_index.h"
#include "platform/files.h"

#include <cstdint>
#include <string>

namespace kvo::core {

enum class LoadResult {
    loaded,
    missing, // the file cannot be opened: nothing was read
    notARun, // no known data type stands in front of its header line
    noMemory // there is not enough of it for the file
};

struct LoadOutcome {
    LoadResult result = LoadResult::loaded;
    std::uint8_t DataType = 0; // what stands in front of the header line, also of a file refused
    explicit operator bool() const { return result == LoadResult::loaded; }
};

// Reads the file at `path` as the main run, with its track times. Rows and blocks that the file
// does not hold stay as they were in `run`, but for the tail block. Unless loaded, `run` is as it
// was. A missing info file is created empty.
LoadOutcome LoadRun(const std::string& path, OpenRun& run, platform::Files& files);
// The same for who only looks at a run: without its track times, and nothing is created.
LoadOutcome LoadRunAlone(const std::string& path, OpenRun& run, const platform::Files& files);
// The same for the overlay, into a fresh image, so that a shorter one shows none of the rows, names
// and scales of the one before: no track times and no largest speed, and SampleCount is the count
// of the overlay's own reader.
LoadOutcome LoadOverlayRun(const std::string& path, OpenRun& overlay, const platform::Files& files);

// What the user is told of a file that did not load.
struct LoadMessage {
    std::string text;
    int style = 0; // of the message box
    bool beep = false;
};
LoadMessage loadMessage(LoadResult result, const std::string& path);
LoadMessage overlayLoadMessage(LoadResult result, const std::string& path);

// What a logger says of itself in a header line.
struct LoggerIdentity {
    std::uint8_t LoggerModel = 0;
    std::uint8_t LoggerVersion = 0; // 1 to 10 stand for "1.0" to "1.9"
    std::uint8_t LoggerMemory = 0;  // 1 is 32k, 2 is 128k, 3 is 512k, 4 is 60k
    std::int16_t LoggerSerial = 0;
};

// "1.0" to "1.9" of a version code; "32", "128", "512" and "60" of a memory code. Empty for any
// other.
std::string loggerVersionText(std::uint8_t code);
std::string loggerMemoryText(std::uint8_t code);

// What makes a run of a download: its logger, its text, and the setup of the day.
struct FreshRun {
    const LoggerIdentity& logger;
    const std::string& RunText;
    const AppConfig& Config;
};

// Writes a run that was just downloaded to run.path: it takes the setup of the configuration and a
// header line of its own. `appFolder` is the program's folder, where copies of what is overwritten
// are kept. On failure the file is as it was and the run is still in memory.
[[nodiscard]] platform::WriteResult SaveRun(
    OpenRun& run, const FreshRun& fresh, const std::string& appFolder, platform::Files& files);
// Writes a run that was read from run.path and changed, under its own header line and with all rows
// of its data type, also where the graph shows fewer. On failure the file is as it was.
[[nodiscard]] platform::WriteResult SaveRun(
    const OpenRun& run, const std::string& appFolder, platform::Files& files);

// Writes a run that was imported from a text to run.path, with all rows that its data type has
// there and without a tail block. A file that is there is replaced as a whole, also where it is
// longer. On failure the file is as it was.
[[nodiscard]] platform::WriteResult SaveImportedRun(
    const OpenRun& run, const std::string& appFolder, platform::Files& files);

// The parts of the setup that a run keeps of its day: the scales of its analogs, and wheel and
// teeth for its tyre growth. A diameter beyond a single leaves what stands there.
void takeAnalogs(const AppConfig& config, RunAnalogBlock& block);
void takeDrive(const AppConfig& config, RunAnalogBlock& block);

// The number in front of a header line: what stands up to its first blank, 0 to 255. A line
// without any blank, and a number that is no byte, give 0, which is no data type.
std::uint8_t typeInFront(const std::string& line);
// A path as the messages about it show it: its letters a to z as capitals.
std::string upperCased(std::string text);

// The text of record 1 for a fresh run; at most 82 characters.
std::string headerLine(std::uint8_t DataType, const LoggerIdentity& logger, std::string RunText);
// The index entry of a fresh run: the last 12 characters of its path, and its text.
RunIndexEntry indexEntryOf(const std::string& path, const std::string& RunText);

} // namespace kvo::core
