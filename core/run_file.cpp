#include "core/run_file.h"

#include "core/backup.h"
#include "core/basic/numbers.h"
#include "core/data_types.h"
#include "core/paths.h"
#include "core/run_index.h"
#include "core/run_records.h"

#include <algorithm>
#include <array>
#include <optional>

namespace kvo::core {

namespace {

constexpr int missingStyle = 416;

std::string upperCased(std::string text) {
    for (char& c : text) {
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    }
    return text;
}

// The number in front of a header line: what stands up to its first blank, 0 to 255. A line
// without any blank, and a number that is no byte, give 0, which is no data type.
std::uint8_t typeInFront(const std::string& line) {
    const std::size_t blank = line.find(' ');
    if (blank == std::string::npos) return 0;
    return CByte(Val(line.substr(0, blank))).value_or(0);
}

// A time base below 1 is never honoured.
void repairTimeOffset(RunTailBlock& tail, int type) {
    const auto facts = dataTypeFacts(type);
    if (tail.TimeOffset < 1 && facts)
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

// A name that was never read is all zero characters, and a caption ends at the first of them.
void showAnalogCaptions(const RunSetupBlock& setup, RunLoadView& view) {
    for (int c = 1; c <= 8; ++c) {
        const std::string& name = setup.AnalogName[c];
        view.setAnalogCaption(c, name.substr(0, name.find('\0')));
    }
}

// The hourglass and the progress control for as long as a load works.
class Working {
public:
    Working(platform::Dialogs& dialogs, RunLoadView& view) : m_dialogs(dialogs), m_view(view) {
        m_dialogs.setHourglass(true);
        m_view.showProgress(true);
    }
    ~Working() {
        m_view.showProgress(false);
        m_dialogs.setHourglass(false);
    }
    Working(const Working&) = delete;
    Working& operator=(const Working&) = delete;

private:
    platform::Dialogs& m_dialogs;
    RunLoadView& m_view;
};

void reject(SharedState& state, platform::Dialogs& dialogs, const std::string& text, int style) {
    dialogs.messageBox(text, style, programName);
    state.LoadStatus = -1;
}

// Rows 1 to N of the main run and their largest speed; rows that the file does not hold stay as
// they are and take no part in the speed.
void readRows(RecordBytes file, int rows, SharedState& state) {
    state.PeakSpeedRaw = 0;
    for (int i = 1; i <= rows; ++i) {
        const RecordBytes record = runRecord(file, static_cast<std::size_t>(i) + 2);
        if (record.empty()) break;
        if (!decode(record, state.Run.samples[i])) continue;
        state.PeakSpeedRaw = std::max(state.PeakSpeedRaw, state.Run.samples[i].SpeedRaw);
    }
    state.SampleCount = static_cast<std::uint16_t>(rows);
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
    run.analog.AnalogScale = config.AnalogScale;
    run.analog.AnalogOffset = config.AnalogOffset;
    run.analog.AnalogDecimals = config.Decimals;
    run.tail.AnalogTypes = config.Analog_Type;
    keepOnFailure(run.analog.RearWheelDiameter, CSng(config.RWheel));
    run.analog.CrownTeeth = config.Crown_F;
    run.analog.PinionTeeth = config.Pinion_F;
}

// All records but the last are filled up with zero bytes; the file ends behind the tail block.
platform::Bytes encodeRun(const SharedState& state) {
    const int rows = std::min<int>(state.SampleCount, maxSamples);
    const auto behind = static_cast<std::size_t>(rows) + 2;
    ByteWriter writer((behind + 3) * runRecordWidth);
    encodeHeaderLine(writer, state.RunHeaderLine);
    writer.fillTo(runRecordWidth);
    encode(writer, state.Run.header);
    writer.fillTo(2 * runRecordWidth);
    for (int i = 1; i <= rows; ++i) {
        encode(writer, state.Run.samples[i]);
        writer.fillTo((static_cast<std::size_t>(i) + 2) * runRecordWidth);
    }
    encode(writer, state.Run.setup);
    writer.fillTo((behind + 1) * runRecordWidth);
    encode(writer, state.Run.analog);
    writer.fillTo((behind + 2) * runRecordWidth);
    encode(writer, state.Run.tail);
    return writer.take();
}

std::string versionText(std::uint8_t code) {
    constexpr std::array<const char*, 10> versions{
        "1.0", "1.1", "1.2", "1.3", "1.4", "1.5", "1.6", "1.7", "1.8", "1.9"};
    return code >= 1 && code <= versions.size() ? versions[code - 1U] : "";
}

std::string memoryText(std::uint8_t code) {
    switch (code) {
    case 1:
        return "32";
    case 2:
        return "128";
    case 3:
        return "512";
    default:
        return ""; // Required: the blank in front of "k" stays.
    }
}

void prepareIndexEntry(SharedState& state) {
    constexpr std::size_t nameLength = 12;
    const std::string& path = state.DataFilePath;
    RunIndexEntry& entry = state.RunIndexBuffer[1];
    entry.FileName = path.substr(path.size() - std::min(path.size(), nameLength));
    entry.Description = indexDescription(state.RunText);
}

} // namespace

std::string headerLine(const SharedState& state) {
    constexpr std::size_t longestWholeText = 48;
    std::string text = state.RunText;
    if (text.size() > longestWholeText) text = text.substr(0, longestWholeText - 1) + "#";
    const std::string line = CStr(state.DataType) + " VRN" + CStr(state.LoggerModel) + " Ver " +
                             versionText(state.LoggerVersion) + " " +
                             memoryText(state.LoggerMemory) + "k Serial No" +
                             Str(state.LoggerSerial) + " " + text;
    return line.substr(0, longestHeaderLine);
}

void LoadRun(SharedState& state, const std::string& chosenName, const platform::Files& files,
    platform::Dialogs& dialogs, RunLoadView& view) {
    const std::string path = rightTrimmed(state.DataFilePath);
    const auto file = files.read(path);
    if (!file) {
        return reject(state, dialogs, "File no Found                  \n" + path, missingStyle);
    }
    view.setCaption("Data File: " + rightTrimmed(chosenName));
    // A file without any record counts as having an empty first one, so that it never passes for
    // the run that was loaded before it.
    if (file->empty()) {
        state.RunHeaderLine.clear();
    } else {
        keepOnFailure(state.RunHeaderLine, decodeHeaderLine(runRecord(*file, 1)));
    }
    state.DataType = typeInFront(state.RunHeaderLine);
    const auto facts = dataTypeFacts(state.DataType);
    if (!facts || facts->rows == 0) {
        dialogs.beep();
        return reject(state, dialogs,
            upperCased(path) + "\n\nIs Corrupt or Not a Kvo Data File\nand can't be lodded.",
            platform::boxStyle::warning);
    }
    view.setScaleRight(facts->rows + 1);
    {
        const Working working(dialogs, view);
        decode(runRecord(*file, 2), state.Run.header);
        readRows(*file, facts->rows, state);
        readBlocks(*file, facts->rows, state.Run);
        showAnalogCaptions(state.Run.setup, view);
        repairTimeOffset(state.Run.tail, state.DataType);
    }
    view.loadRunTimes();
}

void LoadOverlayRun(SharedState& state, const std::string& chosenName, const platform::Files& files,
    platform::Dialogs& dialogs, RunLoadView& view) {
    const std::string path = rightTrimmed(state.DataFilePath);
    const auto file = files.read(path);
    if (!file) return reject(state, dialogs, " File no Found\n" + path, missingStyle);
    view.appendOverlayCaption("    Overlay File: " + rightTrimmed(chosenName));
    state.OverlayDataType = typeInFront(decodeHeaderLine(runRecord(*file, 1)).value_or(""));
    const auto facts = dataTypeFacts(state.OverlayDataType);
    if (!facts || facts->overlayRows == 0) {
        return reject(state, dialogs, "Not a Kvo Data File", platform::boxStyle::warning);
    }
    const Working working(dialogs, view);
    decode(runRecord(*file, 2), state.Overlay.header);
    // Required: the loop has no test for the end of the file, and takes blocks for rows where its
    // count is past those of the file.
    for (int i = 1; i <= facts->overlayRows; ++i) {
        decode(runRecord(*file, static_cast<std::size_t>(i) + 2), state.Overlay.samples[i]);
    }
    readBlocks(*file, facts->overlayRows, state.Overlay);
    showAnalogCaptions(state.Overlay.setup, view);
    repairTimeOffset(state.Overlay.tail, state.OverlayDataType);
}

void ReadHeaderLine(SharedState& state, const platform::Files& files) {
    const auto file = files.read(rightTrimmed(state.DataFilePath));
    if (file) keepOnFailure(state.RunHeaderLine, decodeHeaderLine(runRecord(*file, 1)));
}

platform::WriteResult SaveRun(SharedState& state, platform::Files& files) {
    const std::string folder = dataFolder(state.AppFolder, files);
    // A run that the user saves elsewhere must not fail for want of the program's own folder.
    const bool ownPlace = state.DataFilePath.rfind(folder, 0) == 0;
    if (ownPlace && !files.folderExists(folder)) {
        if (auto made = files.makeFolder(folder); !made) return made;
    }
    if (state.SaveMode != -1) state.RunHeaderLine = headerLine(state);
    if (state.SaveMode == 0) takeSetup(state.Config, state.Run);
    platform::Bytes content = encodeRun(state);
    // As in any file of records, what lies behind the last one written stays.
    if (const auto old = files.read(state.DataFilePath); old && old->size() > content.size()) {
        content.insert(
            content.end(), old->begin() + static_cast<std::ptrdiff_t>(content.size()), old->end());
    }
    auto written = replaceKept(state.AppFolder, state.DataFilePath, content, files);
    if (written && state.SaveMode == 0) prepareIndexEntry(state);
    return written;
}

} // namespace kvo::core
