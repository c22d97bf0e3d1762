#include "core/run_file.h"

#include "core/backup.h"
#include "core/basic/numbers.h"
#include "core/data_types.h"
#include "core/paths.h"
#include "core/run_info.h"
#include "core/run_records.h"
#include "platform/dialogs.h"
#include "platform/memory.h"

#include <algorithm>
#include <array>
#include <new>
#include <optional>
#include <utility>

namespace kvo::core {

namespace {

constexpr int missingStyle = 416;

// A time base below 1 is never honoured.
void repairTimeOffset(RunTailBlock& tail, int type) {
    const DataTypeFacts* facts = dataTypeFacts(type);
    if (tail.TimeOffset < 1 && facts != nullptr)
        tail.TimeOffset = static_cast<std::int16_t>(facts->timeOffset);
}

// The blocks behind `rows` rows. The tail alone starts from zeros, so that a run without one never
// takes the time base of the run before; the others keep what they held.
void readBlocks(RecordBytes file, int rows, RunImage& image) {
    const auto behind = static_cast<std::size_t>(rows) + 2;
    decode(runRecord(file, behind + 1), image.setup);
    decode(runRecord(file, behind + 2), image.analog);
    image.tail = {};
    decode(runRecord(file, behind + 3), image.tail);
}

// Rows 1 to N of the main run and their largest speed; rows that the file does not hold stay as
// they are and take no part in the speed.
void readRows(RecordBytes file, int rows, OpenRun& run) {
    run.PeakSpeedRaw = 0;
    for (int i = 1; i <= rows; ++i) {
        const RecordBytes record = runRecord(file, static_cast<std::size_t>(i) + 2);
        if (record.empty()) break;
        if (!decode(record, run.image.samples[i])) continue;
        run.PeakSpeedRaw = std::max(run.PeakSpeedRaw, run.image.samples[i].SpeedRaw);
    }
    run.SampleCount = static_cast<std::uint16_t>(rows);
}

// A fresh run keeps the setup of its day, so that later changes of the setup do not touch it.
void takeSetup(const AppConfig& config, RunImage& run) {
    const std::array<double, 5> ratios{config.First_Ratio, config.Second_Ratio, config.Third_Ratio,
        config.Forth_Ratio, config.Fifth_Ratio};
    for (int g = 1; g <= 5; ++g) {
        keepOnFailure(run.setup.GearRatio[g], CSng(ratios[static_cast<std::size_t>(g - 1)]));
    }
    keepOnFailure(run.tail.GearRatio6, CSng(config.Sixth_Ratio));
    run.setup.AnalogName = config.AnalogName;
    takeAnalogs(config, run.analog);
    takeDrive(config, run.analog);
    run.tail.AnalogTypes = config.Analog_Type;
}

enum class Tail { written, none };

// All records but the last are filled up with zero bytes; the file ends behind the last block.
platform::Bytes encodeRun(const OpenRun& run, int sampleCount, Tail tail) {
    const int rows = std::min(sampleCount, maxSamples);
    const auto behind = static_cast<std::size_t>(rows) + 2;
    ByteWriter writer((behind + 3) * runRecordWidth);
    encodeHeaderLine(writer, run.headerLine);
    writer.fillTo(runRecordWidth);
    encode(writer, run.image.header);
    writer.fillTo(2 * runRecordWidth);
    for (int i = 1; i <= rows; ++i) {
        encode(writer, run.image.samples[i]);
        writer.fillTo((static_cast<std::size_t>(i) + 2) * runRecordWidth);
    }
    encode(writer, run.image.setup);
    writer.fillTo((behind + 1) * runRecordWidth);
    encode(writer, run.image.analog);
    if (tail == Tail::none) return writer.take();
    writer.fillTo((behind + 2) * runRecordWidth);
    encode(writer, run.image.tail);
    return writer.take();
}

// Required: a size of code 4 is left out of a run's header, and the "k" behind it stays.
std::string memoryOfHeader(std::uint8_t code) {
    constexpr std::uint8_t lastNamed = 3;
    return code <= lastNamed ? loggerMemoryText(code) : "";
}

// The Data folder, made where the run belongs there and it is not there yet. A run that the user
// saves elsewhere must not fail for want of the program's own folder.
platform::WriteResult makeFolderOf(
    const std::string& path, const std::string& appFolder, platform::Files& files) {
    const std::string folder = dataFolder(appFolder, files);
    const bool ownPlace = path.rfind(folder, 0) == 0;
    if (!ownPlace || files.folderExists(folder)) return {};
    return files.makeFolder(folder);
}

platform::WriteResult writeRecords(
    const OpenRun& run, int sampleCount, const std::string& appFolder, platform::Files& files) {
    return platform::writtenWithinMemory(run.path, [&] {
        if (auto made = makeFolderOf(run.path, appFolder, files); !made) return made;
        const platform::Bytes records = encodeRun(run, sampleCount, Tail::written);
        return replaceBeginningKept(appFolder, run.path, records, files);
    });
}

} // namespace

std::string loggerVersionText(std::uint8_t code) {
    constexpr std::uint8_t lastVersion = 10;
    return code >= 1 && code <= lastVersion ? "1." + std::to_string(code - 1) : "";
}

std::string loggerMemoryText(std::uint8_t code) {
    constexpr std::array<const char*, 4> memories{"32", "128", "512", "60"};
    return code >= 1 && code <= memories.size() ? memories[code - 1U] : "";
}

std::string upperCased(std::string text) {
    for (char& c : text) {
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    }
    return text;
}

std::uint8_t typeInFront(const std::string& line) {
    const std::size_t blank = line.find(' ');
    if (blank == std::string::npos) return 0;
    return CByte(Val(line.substr(0, blank))).value_or(0);
}

void takeAnalogs(const AppConfig& config, RunAnalogBlock& block) {
    block.AnalogScale = config.AnalogScale;
    block.AnalogOffset = config.AnalogOffset;
    block.AnalogDecimals = config.Decimals;
}

void takeDrive(const AppConfig& config, RunAnalogBlock& block) {
    keepOnFailure(block.RearWheelDiameter, CSng(config.RWheel));
    block.CrownTeeth = config.Crown_F;
    block.PinionTeeth = config.Pinion_F;
}

std::string headerLine(std::uint8_t DataType, const LoggerIdentity& logger, std::string RunText) {
    constexpr std::size_t longestWholeText = 48;
    if (RunText.size() > longestWholeText) RunText = RunText.substr(0, longestWholeText - 1) + "#";
    const std::string line = CStr(DataType) + " VRN" + CStr(logger.LoggerModel) + " Ver " +
                             loggerVersionText(logger.LoggerVersion) + " " +
                             memoryOfHeader(logger.LoggerMemory) + "k Serial No" +
                             Str(logger.LoggerSerial) + " " + RunText;
    return line.substr(0, longestHeaderLine);
}

RunIndexEntry indexEntryOf(const std::string& path, const std::string& RunText) {
    constexpr std::size_t nameLength = 12;
    return {
        path.substr(path.size() - std::min(path.size(), nameLength)), indexDescription(RunText)};
}

namespace {

LoadOutcome notRead(platform::FileFailure why) {
    return {why == platform::FileFailure::noMemory ? LoadResult::noMemory : LoadResult::missing, 0};
}

// `timesOf` gives the track times of an info file, by its path.
template <class TimesOf>
LoadOutcome readMainRun(
    const std::string& path, OpenRun& run, const platform::Files& files, TimesOf&& timesOf) {
    std::string trimmed = rightTrimmed(path);
    const auto read = files.readOrReason(trimmed);
    if (!read) return notRead(read.failure);
    const auto& file = read.content;
    // A file without any record counts as having an empty first one, so that it never passes for
    // the run that was loaded before it.
    std::string line = file->empty()
                           ? std::string()
                           : decodeHeaderLine(runRecord(*file, 1)).value_or(run.headerLine);
    const std::uint8_t type = typeInFront(line);
    const DataTypeFacts* facts = dataTypeFacts(type);
    if (facts == nullptr || facts->rows == 0) return {LoadResult::notARun, type};
    std::string infoPath = infoFilePath(trimmed);
    TrackTimes times = timesOf(infoPath);
    // From here on nothing takes memory, so a run is never half of the one before.
    run.path = std::move(trimmed);
    run.infoPath = std::move(infoPath);
    run.headerLine = std::move(line);
    run.times = std::move(times);
    run.DataType = type;
    decode(runRecord(*file, 2), run.image.header);
    readRows(*file, facts->rows, run);
    readBlocks(*file, facts->rows, run.image);
    repairTimeOffset(run.image.tail, type);
    return {LoadResult::loaded, type};
}

LoadOutcome readOverlayRun(
    const std::string& path, OpenRun& overlay, const platform::Files& files) {
    std::string trimmed = rightTrimmed(path);
    const auto read = files.readOrReason(trimmed);
    if (!read) return notRead(read.failure);
    const auto& file = read.content;
    std::string line = decodeHeaderLine(runRecord(*file, 1)).value_or("");
    const std::uint8_t type = typeInFront(line);
    const DataTypeFacts* facts = dataTypeFacts(type);
    if (facts == nullptr || facts->overlayRows == 0) return {LoadResult::notARun, type};
    std::string infoPath = infoFilePath(trimmed);
    overlay = {};
    overlay.path = std::move(trimmed);
    overlay.infoPath = std::move(infoPath);
    overlay.headerLine = std::move(line);
    overlay.DataType = type;
    decode(runRecord(*file, 2), overlay.image.header);
    // Required: the loop has no test for the end of the file, and takes blocks for rows where its
    // count is past those of the file.
    for (int i = 1; i <= facts->overlayRows; ++i) {
        decode(runRecord(*file, static_cast<std::size_t>(i) + 2), overlay.image.samples[i]);
    }
    overlay.SampleCount = static_cast<std::uint16_t>(facts->overlayRows);
    readBlocks(*file, facts->overlayRows, overlay.image);
    repairTimeOffset(overlay.image.tail, type);
    return {LoadResult::loaded, type};
}

LoadMessage noMemoryMessage(const std::string& path) {
    return {
        "Not enough memory to load\n" + rightTrimmed(path), platform::boxStyle::critical, false};
}

} // namespace

LoadOutcome LoadRun(const std::string& path, OpenRun& run, platform::Files& files) {
    try {
        return readMainRun(path, run, files,
            [&](const std::string& infoPath) { return LoadRunTimes(infoPath, files); });
    } catch (const std::bad_alloc&) {
        return {LoadResult::noMemory, 0};
    }
}

LoadOutcome LoadRunAlone(const std::string& path, OpenRun& run, const platform::Files& files) {
    try {
        return readMainRun(path, run, files, [](const std::string&) { return TrackTimes{}; });
    } catch (const std::bad_alloc&) {
        return {LoadResult::noMemory, 0};
    }
}

LoadOutcome LoadOverlayRun(
    const std::string& path, OpenRun& overlay, const platform::Files& files) {
    try {
        return readOverlayRun(path, overlay, files);
    } catch (const std::bad_alloc&) {
        return {LoadResult::noMemory, 0};
    }
}

LoadMessage loadMessage(LoadResult result, const std::string& path) {
    if (result == LoadResult::noMemory) return noMemoryMessage(path);
    const std::string trimmed = rightTrimmed(path);
    if (result == LoadResult::missing) {
        return {"File no Found                  \n" + trimmed, missingStyle, false};
    }
    return {upperCased(trimmed) + "\n\nIs Corrupt or Not a Kvo Data File\nand can't be lodded.",
        platform::boxStyle::warning, true};
}

LoadMessage overlayLoadMessage(LoadResult result, const std::string& path) {
    if (result == LoadResult::noMemory) return noMemoryMessage(path);
    if (result == LoadResult::missing) {
        return {" File no Found\n" + rightTrimmed(path), missingStyle, false};
    }
    return {"Not a Kvo Data File", platform::boxStyle::warning, false};
}

platform::WriteResult SaveRun(
    OpenRun& run, const FreshRun& fresh, const std::string& appFolder, platform::Files& files) {
    run.headerLine = headerLine(run.DataType, fresh.logger, fresh.RunText);
    takeSetup(fresh.Config, run.image);
    return writeRecords(run, run.SampleCount, appFolder, files);
}

platform::WriteResult SaveRun(
    const OpenRun& run, const std::string& appFolder, platform::Files& files) {
    const DataTypeFacts* facts = dataTypeFacts(run.DataType);
    const int ofType = facts != nullptr ? facts->rows : 0;
    return writeRecords(run, std::max<int>(run.SampleCount, ofType), appFolder, files);
}

platform::WriteResult SaveImportedRun(
    const OpenRun& run, const std::string& appFolder, platform::Files& files) {
    const DataTypeFacts* facts = dataTypeFacts(run.DataType);
    const int rows = facts != nullptr ? facts->importRows : 0;
    return platform::writtenWithinMemory(run.path, [&] {
        if (auto made = makeFolderOf(run.path, appFolder, files); !made) return made;
        return replaceKept(appFolder, run.path, encodeRun(run, rows, Tail::none), files);
    });
}

} // namespace kvo::core
