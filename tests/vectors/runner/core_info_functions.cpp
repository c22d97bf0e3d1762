// Golden vectors of the info files and of the table of timed runs.
#include "core/basic/byte_writer.h"
#include "core/run_info.h"
#include "core/run_records.h"
#include "core_functions.h"
#include "tests/support/memory_files.h"

#include <algorithm>
#include <array>

namespace kvo::vectors {

using namespace kvo::core;
using testing::MemoryFiles;

namespace {

constexpr const char* timesPath = "/kvo/KvoTimes";
constexpr const char* runPath = "/kvo/Data/26111514.52d";
constexpr const char* infoPath = "/kvo/Data/26111514.52i";
constexpr std::size_t timesRecord = 44;
constexpr std::size_t infoRecord = 400;

// The info file of texts in record order.
platform::Bytes infoFileOf(const Json& texts) {
    ByteWriter writer;
    for (const Json& text : texts) {
        const std::size_t end = writer.size() + infoRecord;
        const std::string characters = textOf(text);
        writer.u16le(static_cast<std::uint16_t>(characters.size()));
        writer.characters(characters);
        writer.fillTo(end);
    }
    return writer.take();
}

void putInfo(const Json& texts, MemoryFiles& files) {
    if (!texts.empty()) files.put(infoPath, infoFileOf(texts));
}

std::array<std::string*, 11> headOf(RunInfo& info) {
    return {&info.Info_Text, &info.Text_AirTemp, &info.Text_Barometric, &info.Text_Humidity,
        &info.Text_60FootTime, &info.Text_330FootTime, &info.Text_660FootTime,
        &info.Text_660FootSpeed, &info.Text_1000FootTime, &info.Text_ET, &info.Text_Mph};
}

Json pairsOf(const VehicleSetup& setup) {
    Json pairs = Json::array();
    for (const VehicleSetupLine& line : setup) {
        pairs.push_back({toJson(line.Name), toJson(line.Value)});
    }
    return pairs;
}

Json loadRunInfo(const Case& c) {
    MemoryFiles files;
    putInfo(c.in.at("records"), files);
    VehicleSetup defaults;
    for (int i = 1; i <= VehicleSetup::size; ++i) {
        const Json& pair = c.in.at("defaults").at(static_cast<std::size_t>(i - 1));
        defaults[i] = {textOf(pair.at(0)), textOf(pair.at(1))};
    }
    RunInfo info = LoadRunInfo(infoPath, defaults, files);
    Json head = Json::array();
    for (const std::string* text : headOf(info)) head.push_back(toJson(*text));
    return {{"head", head}, {"pairs", pairsOf(info.setup)}};
}

Json loadRunTimes(const Case& c) {
    MemoryFiles files;
    putInfo(c.in.at("records"), files);
    const TrackTimes times = LoadRunTimes(infoPath, files);
    return {{"Text_60FootTime", toJson(times.Text_60FootTime)},
        {"Text_330FootTime", toJson(times.Text_330FootTime)},
        {"Text_660FootTime", toJson(times.Text_660FootTime)},
        {"Text_660FootSpeed", toJson(times.Text_660FootSpeed)},
        {"Text_1000FootTime", toJson(times.Text_1000FootTime)}, {"Text_ET", toJson(times.Text_ET)}};
}

Json saveInfoFile(const Case& c) {
    MemoryFiles files;
    const Json& texts = c.in.at("texts");
    RunInfo info;
    std::size_t at = 0;
    for (std::string* text : headOf(info)) *text = textOf(texts.at(at++));
    for (VehicleSetupLine& line : info.setup) {
        line.Name = textOf(texts.at(at++));
        line.Value = textOf(texts.at(at++));
    }
    if (!SaveRunInfo(folder, infoPath, runPath, info, files).notesDone) return {};
    const platform::Bytes file = files.read(infoPath).value_or(platform::Bytes{});
    Json payloads = Json::array();
    for (std::size_t i = 0; i < at; ++i) {
        const std::size_t width =
            c.expected.at("payloads").at(i).get_ref<const std::string&>().size() / 2;
        payloads.push_back(hexOf(std::span(file).subspan(i * infoRecord, width)));
    }
    return {{"payloads", payloads}};
}

Json timesOf(const TimedRun& run) {
    return {run.Time60, run.Time330, run.Time660, run.Time1000, run.TimeET};
}

Json entryOf(const TimedRun& run) {
    return {{"Key", run.Key}, {"Label", toJson(trimmed(run.Label))}, {"Times", timesOf(run)}};
}

// All records of KvoTimes: the table in memory has 26, so it is read piece by piece.
Json recordsOf(const MemoryFiles& files) {
    const platform::Bytes file = files.read(timesPath).value_or(platform::Bytes{});
    Json records = Json::array();
    for (std::size_t at = 0; at + timesRecord <= file.size(); at += timesRecord) {
        MemoryFiles one;
        const auto start = file.begin() + static_cast<std::ptrdiff_t>(at);
        one.put(timesPath, {start, start + static_cast<std::ptrdiff_t>(timesRecord)});
        records.push_back(entryOf(LoadTimesTable(folder, one).entries[1]));
    }
    return records;
}

void putRun(const Json& run, MemoryFiles& files) {
    ByteWriter writer;
    encodeHeaderLine(writer, textOf(run.at("header")));
    writer.fillTo(runRecordWidth);
    files.put(runPath, writer.take());
}

RunInfo infoOf(const Json& times) {
    RunInfo info;
    info.Text_60FootTime = textOf(times.at(0));
    info.Text_330FootTime = textOf(times.at(1));
    info.Text_660FootTime = textOf(times.at(2));
    info.Text_1000FootTime = textOf(times.at(3));
    info.Text_ET = textOf(times.at(4));
    return info;
}

void trimLabels(Json& records) {
    for (Json& record : records) record["Label"] = toJson(trimmed(textOf(record.at("Label"))));
}

Json saveRunInfo(const Case& c) {
    MemoryFiles files;
    const platform::Bytes initial = bytesOfHex(c.in.at("initial"));
    if (!initial.empty()) files.put(timesPath, initial);
    Json counts = Json::array();
    for (const Json& run : c.in.at("runs")) {
        putRun(run, files);
        if (!SaveRunInfo(folder, infoPath, runPath, infoOf(run.at("times")), files).notesDone)
            return {};
        counts.push_back(recordsOf(files).size());
    }
    const Json records = recordsOf(files);
    Json got{{"counts", counts}, {"count", records.size()}, {"records", records}};
    if (!records.empty()) got["last"] = records.back();
    if (c.expected.contains("records")) trimLabels(c.expected["records"]);
    if (c.expected.contains("absent_key")) {
        const Json absent = c.expected["absent_key"];
        const bool there = std::any_of(records.begin(), records.end(),
            [&](const Json& record) { return record.at("Key") == absent; });
        got["absent_key"] = there ? Json("is there") : absent;
    }
    return got;
}

Json loadTimesTable(const Case& c) {
    MemoryFiles files;
    const platform::Bytes file = bytesOfHex(c.in.at("file"));
    if (!file.empty()) files.put(timesPath, file);
    const RunTimesTable table = LoadTimesTable(folder, files);
    trimLabels(c.expected.at("entries"));
    Json entries = Json::array();
    for (int i = 1; i <= static_cast<int>(c.expected["entries"].size()); ++i) {
        entries.push_back(entryOf(table.entries[i]));
    }
    return {{"RunTimesCount", table.RunTimesCount}, {"entries", entries}};
}

} // namespace

void addCoreInfoFunctions() {
    add("LoadRunInfo", loadRunInfo);
    add("LoadRunTimes", loadRunTimes);
    add("SaveInfoFile", saveInfoFile);
    add("SaveRunInfo", saveRunInfo);
    add("LoadTimesTable", loadTimesTable);
}

} // namespace kvo::vectors
