#include "core/run_info.h"

#include "core/backup.h"
#include "core/basic/byte_reader.h"
#include "core/basic/byte_writer.h"
#include "core/basic/numbers.h"
#include "core/own_file.h"
#include "core/run_records.h"

#include <algorithm>
#include <array>

namespace kvo::core {

namespace {

constexpr std::size_t infoWidth = 400;
constexpr std::size_t longestText = 398;
constexpr std::size_t firstPair = 12; // record of the first name; its value stands behind it
constexpr std::size_t notesRecord = 1;
constexpr std::size_t speedRecord = 11;
constexpr std::size_t records = firstPair - 1 + 2 * 25;

// Records 1 to 11 in their order.
template <typename Info> auto head(Info& info) {
    return std::array{&info.Info_Text, &info.Text_AirTemp, &info.Text_Barometric,
        &info.Text_Humidity, &info.Text_60FootTime, &info.Text_330FootTime, &info.Text_660FootTime,
        &info.Text_660FootSpeed, &info.Text_1000FootTime, &info.Text_ET, &info.Text_Mph};
}

// The text of record n, counted from 1; empty where it is not there whole.
std::string textOf(const platform::Bytes& file, std::size_t n) {
    const std::size_t start = (n - 1) * infoWidth;
    if (start >= file.size()) return {};
    ByteReader reader(RecordBytes(file).subspan(start, std::min(infoWidth, file.size() - start)));
    const auto length = reader.u16le();
    return length ? reader.text(*length).value_or("") : "";
}

TrackTimes timesOf(const platform::Bytes& file) {
    return {textOf(file, 5), textOf(file, 6), textOf(file, 7), textOf(file, 8), textOf(file, 9),
        textOf(file, 10)};
}

void takeUnlessEmpty(std::string& target, std::string text) {
    if (!text.empty()) target = std::move(text);
}

void writeText(ByteWriter& writer, const std::string& text) {
    const std::size_t end = writer.size() + infoWidth;
    const std::string cut = rightTrimmed(text).substr(0, longestText);
    writer.u16le(static_cast<std::uint16_t>(cut.size()));
    writer.characters(cut);
    writer.fillTo(end);
}

// Without its line nothing says which run it is, and no entry may be made up for it.
InfoWriteResult lineNotRead(const std::string& runPath, const platform::ReadResult& run) {
    const std::string reason = run ? runPath + "\nhas no header line." : run.message;
    return {{false, reason, run.failure}};
}

platform::Bytes encodeInfo(const RunInfo& info) {
    ByteWriter writer(records * infoWidth);
    for (const std::string* text : head(info)) writeText(writer, *text);
    for (const VehicleSetupLine& line : info.setup) {
        writeText(writer, line.Name);
        writeText(writer, line.Value);
    }
    return writer.take();
}

} // namespace

std::string infoFilePath(const std::string& dataFilePath) {
    std::string path = rightTrimmed(dataFilePath);
    if (!path.empty()) path.back() = 'i';
    return path;
}

RunInfo LoadRunInfo(const std::string& infoPath, const VehicleSetup& defaults,
    platform::Files& files, std::string* unread) {
    const platform::Bytes file = readOrCreate(infoPath, files, unread);
    RunInfo info;
    std::size_t record = 1;
    for (std::string* text : head(info)) *text = textOf(file, record++);
    info.setup = defaults;
    for (VehicleSetupLine& line : info.setup) {
        takeUnlessEmpty(line.Name, textOf(file, record++));
        takeUnlessEmpty(line.Value, textOf(file, record++));
    }
    return info;
}

TrackTimes LoadRunTimes(const std::string& infoPath, platform::Files& files) {
    const platform::Bytes file = readOrCreate(infoPath, files);
    return timesOf(file);
}

RunNotes readRunNotes(const std::string& infoPath, const platform::Files& files) {
    platform::ReadResult file = files.readAsNamed(infoPath);
    // Of a run's name the last letter is the only one, so this is its name in another case.
    if (!file && infoPath.ends_with('i'))
        file = files.readAsNamed(infoPath.substr(0, infoPath.size() - 1) + 'I');
    if (!file) return {};
    return {textOf(*file.content, notesRecord), timesOf(*file.content),
        textOf(*file.content, speedRecord)};
}

InfoWriteResult SaveRunInfo(const std::string& appFolder, const std::string& infoPath,
    const std::string& runPath, const RunInfo& info, platform::Files& files) {
    if (auto saved = replaceKept(appFolder, infoPath, encodeInfo(info), files); !saved)
        return {std::move(saved), false};
    if (rightTrimmed(info.Text_ET).empty()) return {};
    const auto run = files.readOrReason(runPath);
    const auto line = run ? decodeHeaderLine(runRecord(*run.content, 1)) : std::nullopt;
    if (!line) return lineNotRead(runPath, run);
    const TypedTimes times{info.Text_60FootTime, info.Text_330FootTime, info.Text_660FootTime,
        info.Text_1000FootTime, info.Text_ET};
    return {updateTimesTable(appFolder, *line, times, files)};
}

} // namespace kvo::core
