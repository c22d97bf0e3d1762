// Golden vectors of the files: names, index, runs, vehicle setup and analog tables.
#include "core/analog_tables.h"
#include "core/basic/byte_writer.h"
#include "core/basic/numbers.h"
#include "core/run_file.h"
#include "core/run_index.h"
#include "core/run_records.h"
#include "core/vehicle_setup.h"
#include "core_functions.h"
#include "tests/support/memory_files.h"

#include <array>
#include <memory>

namespace kvo::vectors {

using namespace kvo::core;
using testing::MemoryFiles;

static Json textsOf(const FromOne<std::string, 8>& texts) {
    Json list = Json::array();
    for (const std::string& text : texts) list.push_back(toJson(padded(text, 8)));
    return list;
}

Json headerOf(const RunHeader& h) {
    return {{"EnginePickups", h.EnginePickups}, {"InputPickups", h.InputPickups},
        {"OutputPickups", h.OutputPickups}, {"FrontWheelPickups", h.FrontWheelPickups},
        {"RecordOnRpm", h.RecordOnRpm}, {"CrankGearTeeth", h.CrankGearTeeth},
        {"BasketGearTeeth", h.BasketGearTeeth}, {"PreStartRpm", h.PreStartRpm},
        {"ShiftLightRpm1", h.ShiftLightRpm1}, {"ShiftLightTime1", h.ShiftLightTime1},
        {"ShiftLightRpm2", h.ShiftLightRpm2}, {"ShiftLightTime2", h.ShiftLightTime2},
        {"ShiftLightRpm3", h.ShiftLightRpm3}, {"ShiftLightTime3", h.ShiftLightTime3},
        {"ShiftLightRpm4", h.ShiftLightRpm4}, {"ShiftLightTime4", h.ShiftLightTime4}};
}

Json setupOf(const RunSetupBlock& block) {
    return {{"GearRatio", listOf(block.GearRatio)}, {"AnalogName", textsOf(block.AnalogName)}};
}

Json analogOf(const RunAnalogBlock& block) {
    return {{"AnalogDecimals", listOf(block.AnalogDecimals)},
        {"AnalogScale", listOf(block.AnalogScale)}, {"AnalogOffset", listOf(block.AnalogOffset)},
        {"RearWheelDiameter", block.RearWheelDiameter}, {"CrownTeeth", block.CrownTeeth},
        {"PinionTeeth", block.PinionTeeth}};
}

namespace {

Json tailOf(const RunTailBlock& block) {
    const platform::Bytes reserved(block.reserved.begin(), block.reserved.end());
    return {{"AnalogTypes", listOf(block.AnalogTypes)}, {"reserved", hexOf(reserved)},
        {"GearCount", block.GearCount}, {"GearRatio6", block.GearRatio6},
        {"TimeOffset", block.TimeOffset}};
}

Json rowOf(const RunSample& s) {
    return {{"Index", s.Index}, {"EngineRpm", s.EngineRpm}, {"InputRpm", s.InputRpm},
        {"OutputRpm", s.OutputRpm}, {"SpeedRaw", s.SpeedRaw}, {"Status", s.Status},
        {"Analog", listOf(s.Analog)}, {"Aux", s.Aux}, {"Exhaust", listOf(s.Exhaust)}};
}

template <typename Part> std::string hexOfPart(const Part& part) {
    ByteWriter writer;
    encode(writer, part);
    return hexOf(writer.bytes());
}

// What both loads give: N is the number of rows that the load is about.
Json imageOf(const RunImage& image, int rows, const Json& expected) {
    ByteWriter packed;
    for (int i = 1; i <= rows; ++i) encode(packed, image.samples[i]);
    Json picked = Json::object();
    if (expected.contains("rows")) {
        for (const auto& [number, row] : expected["rows"].items()) {
            picked[number] = rowOf(image.rowOrZero(std::stoi(number)));
        }
    }
    return {{"N", rows}, {"RunHeader", headerOf(image.header)},
        {"RunSetupBlock", setupOf(image.setup)}, {"RunSetupBlock_hex", hexOfPart(image.setup)},
        {"RunAnalogBlock", analogOf(image.analog)}, {"RunAnalogBlock_hex", hexOfPart(image.analog)},
        {"RunTailBlock", tailOf(image.tail)}, {"rows", picked},
        {"rows_crc32", crc32(packed.bytes())}};
}

// A single that is no finite number is null in a line and not compared.
void dropNulls(Json& expected, Json& got) {
    if (expected.is_array() && got.is_array() && expected.size() == got.size()) {
        for (std::size_t i = 0; i < expected.size(); ++i) {
            if (expected[i].is_null()) got[i] = nullptr;
        }
    }
    if (!expected.is_object() || !got.is_object()) return;
    for (auto& [key, value] : expected.items()) {
        if (!got.contains(key)) continue;
        if (value.is_null()) got[key] = nullptr;
        dropNulls(value, got[key]);
    }
}

// A run and a disk that holds the files of the line.
struct Bench {
    std::unique_ptr<OpenRun> run = std::make_unique<OpenRun>();
    MemoryFiles files;

    template <typename Loader>
    LoadOutcome load(const Case& c, const std::string& name, Loader loader) {
        const std::string path = std::string(folder) + "/Data/" + name;
        if (std::filesystem::exists(c.files / name)) files.put(path, fileBytes(c.files / name));
        return loader(path, *run, files);
    }
};

int statusOf(const LoadOutcome& outcome) {
    return outcome ? 0 : -1;
}

Json loadRun(const Case& c) {
    Bench bench;
    if (c.in.contains("preload")) bench.load(c, c.in["preload"], LoadRun);
    const LoadOutcome outcome = bench.load(c, c.in.at("file"), LoadRun);
    const OpenRun& run = *bench.run;
    Json got{{"LoadStatus", statusOf(outcome)}, {"DataType", outcome.DataType}};
    if (outcome) {
        got.update(imageOf(run.image, run.SampleCount, c.expected));
        got["SampleCount"] = run.SampleCount;
        got["PeakSpeedRaw"] = run.PeakSpeedRaw;
        got["RunHeaderLine"] = toJson(run.headerLine);
        got["TimeOffset"] = run.image.tail.TimeOffset;
    }
    dropNulls(c.expected, got);
    return got;
}

Json loadOverlayRun(const Case& c) {
    Bench bench;
    if (c.in.contains("preload")) bench.load(c, c.in["preload"], LoadOverlayRun);
    const LoadOutcome outcome = bench.load(c, c.in.at("file"), LoadOverlayRun);
    const OpenRun& overlay = *bench.run;
    Json got{{"LoadStatus", statusOf(outcome)}, {"OverlayDataType", outcome.DataType}};
    if (outcome) {
        got.update(imageOf(overlay.image, overlay.SampleCount, c.expected));
        got["OverlayTimeOffset"] = overlay.image.tail.TimeOffset;
    }
    dropNulls(c.expected, got);
    return got;
}

LoggerIdentity loggerOf(const Json& from) {
    return {from.at("LoggerModel").get<std::uint8_t>(),
        from.at("LoggerVersion").get<std::uint8_t>(), from.at("LoggerMemory").get<std::uint8_t>(),
        from.at("LoggerSerial").get<std::int16_t>()};
}

template <typename Values> void takeList(const Json& from, Values& values) {
    for (int c = 1; c <= Values::size; ++c)
        from.at(static_cast<std::size_t>(c - 1)).get_to(values[c]);
}

void takeConfig(const Json& from, AppConfig& config) {
    from.at("First_Ratio").get_to(config.First_Ratio);
    from.at("Second_Ratio").get_to(config.Second_Ratio);
    from.at("Third_Ratio").get_to(config.Third_Ratio);
    from.at("Forth_Ratio").get_to(config.Forth_Ratio);
    from.at("Fifth_Ratio").get_to(config.Fifth_Ratio);
    from.at("Sixth_Ratio").get_to(config.Sixth_Ratio);
    for (int c = 1; c <= 8; ++c) {
        config.AnalogName[c] = textOf(from.at("AnalogName").at(static_cast<std::size_t>(c - 1)));
    }
    takeList(from.at("AnalogScale"), config.AnalogScale);
    takeList(from.at("AnalogOffset"), config.AnalogOffset);
    takeList(from.at("Decimals"), config.Decimals);
    takeList(from.at("Analog_Type"), config.Analog_Type);
    from.at("RWheel").get_to(config.RWheel);
    from.at("Crown_F").get_to(config.Crown_F);
    from.at("Pinion_F").get_to(config.Pinion_F);
}

Json saveRun(const Case& c) {
    Bench bench;
    bench.load(c, c.in.at("file"), LoadRun);
    OpenRun& run = *bench.run;
    RunIndexEntry entry; // only a fresh run has one
    if (c.in.at("SaveMode").get<int>() == 0) {
        const Json& state = c.in.at("state");
        AppConfig config;
        takeConfig(c.in.at("config"), config);
        const std::string text = textOf(state.at("RunText"));
        run.path = std::string(folder) + "/Data/" + textOf(state.at("DataFileName"));
        if (!SaveRun(run, {loggerOf(state), text, config}, folder, bench.files)) return {};
        entry = indexEntryOf(run.path, text);
    } else {
        run.path = std::string(folder) + "/Data/saved.bin";
        if (!SaveRun(run, folder, bench.files)) return {};
    }
    platform::Bytes file = bench.files.read(run.path).value_or(platform::Bytes{});
    const std::size_t last = (file.size() - 1) / runRecordWidth;
    const auto part = [&](std::size_t record, std::size_t width) {
        return hexOf(std::span(file).subspan(record * runRecordWidth, width));
    };
    Json got{{"records", last + 1}, {"record1_hex", part(0, 84)}, {"setup_hex", part(last - 2, 84)},
        {"analog_hex", part(last - 1, 84)}, {"tail_hex", part(last, 20)}};
    file.resize((last + 1) * runRecordWidth);
    got["padded_length"] = file.size();
    got["padded_sha256"] = sha256(file);
    if (c.expected.contains("RunIndexBuffer1")) {
        trimRight(c.expected["RunIndexBuffer1"], "FileName");
        trimRight(c.expected["RunIndexBuffer1"], "Description");
    }
    got["RunIndexBuffer1"] = {{"FileName", toJson(rightTrimmed(entry.FileName))},
        {"Description", toJson(rightTrimmed(entry.Description))}};
    return got;
}

Json headerLineOf(const Case& c) {
    return {{"text", toJson(headerLine(c.in.at("DataType").get<std::uint8_t>(), loggerOf(c.in),
                         textOf(c.in.at("RunText"))))}};
}

RunIndexEntry entryOf(const Json& entry) {
    return {textOf(entry.at("FileName")), textOf(entry.at("Description"))};
}

Json addRunToIndex(const Case& c) {
    MemoryFiles files;
    std::vector<RunIndexEntry> existing;
    for (const Json& entry : c.in.at("existing")) existing.push_back(entryOf(entry));
    if (!existing.empty() && !writeRunIndex(folder, existing, files)) return {};
    const bool unsorted = c.in.at("IndexNoSort").get<int>() == -1;
    if (!AddRunToIndex(folder, entryOf(c.in.at("new")),
            unsorted ? IndexOrder::asItIs : IndexOrder::sorted, files)) {
        return {};
    }
    const std::string path = indexPath(folder, files);
    const platform::Bytes file = files.read(path).value_or(platform::Bytes{});
    Json entries = Json::array();
    for (const RunIndexEntry& entry : readRunIndex(path, files)) {
        entries.push_back(
            {{"FileName", toJson(entry.FileName)}, {"Description", toJson(entry.Description)}});
    }
    for (Json& entry : c.expected["entries"]) {
        trimRight(entry, "FileName");
        trimRight(entry, "Description");
    }
    return {{"entries", entries}, {"length", file.size()}, {"sha256", sha256(file)}};
}

Json suggestTitleOf(const Case& c) {
    const Json& descriptions = c.in.at("descriptions");
    const std::string last = descriptions.empty() ? "" : textOf(descriptions.back());
    return {{"text", toJson(suggestTitle(last, momentOf(c.in.at("today"))))}};
}

Json runTextOf(const Case& c) {
    return {{"text", toJson(runText(textOf(c.in.at("title")), textOf(c.in.at("date"))))}};
}

VehicleSetup setupOfPairs(const Json& pairs) {
    VehicleSetup setup;
    for (int i = 1; i <= VehicleSetup::size; ++i) {
        const Json& pair = pairs.at(static_cast<std::size_t>(i - 1));
        setup[i] = {textOf(pair.at(0)), textOf(pair.at(1))};
    }
    return setup;
}

Json saveVehicleSetup(const Case& c) {
    MemoryFiles files;
    if (!SaveVehicleSetup(folder, setupOfPairs(c.in.at("pairs")), files)) return {};
    const auto file = files.read(std::string(folder) + "/VSetup.Dat");
    return {{"file", hexOf(file.value_or(platform::Bytes{}))}};
}

Json loadVehicleSetup(const Case& c) {
    MemoryFiles files;
    if (!c.in.at("file").is_null()) {
        files.put(std::string(folder) + "/VSetup.Dat", bytesOfHex(c.in["file"]));
    }
    Json pairs = Json::array();
    for (const VehicleSetupLine& line : LoadVehicleSetup(folder, files)) {
        pairs.push_back({toJson(line.Name), toJson(line.Value)});
    }
    return {{"pairs", pairs}};
}

std::array<double, 256> tableOf(const Json& numbers) {
    std::array<double, 256> table{};
    for (std::size_t r = 0; r < table.size(); ++r) numbers.at(r).get_to(table[r]);
    return table;
}

Json saveAnalogTable(const Case& c) {
    MemoryFiles files;
    AnalogTables tables;
    tables[3] = tableOf(c.in.at("table"));
    if (!SaveAnalogTable(folder, analogTableName(3), 3, tables, files)) return {};
    const auto file = files.read(std::string(folder) + "/Analog3.Dat");
    return {{"file", hexOf(file.value_or(platform::Bytes{}))}};
}

Json loadAnalogTable(const Case& c) {
    MemoryFiles files;
    if (!c.in.at("file").is_null()) {
        files.put(std::string(folder) + "/Analog3.Dat", bytesOfHex(c.in["file"]));
    }
    AnalogTables tables;
    tables[3].fill(c.in.value("before", 0.0));
    LoadAnalogTable(folder, analogTableName(3), 3, tables, files);
    return {{"table", listOf(tables[3])}};
}

Json applyAnalogTableOf(const Case& c) {
    const auto table = tableOf(c.in.at("table"));
    const auto scale = c.in.at("scale").get<float>();
    platform::Bytes bytes;
    for (const std::uint8_t raw : bytesOfHex(c.in.at("raws"))) {
        bytes.push_back(applyAnalogTable(table, scale, raw));
    }
    return {{"bytes", hexOf(bytes)}};
}

void addIndexFunctions() {
    add("RunFileName", [](const Case& c) {
        return Json{{"name", toJson(runFileName(momentOf(c.in)))}};
    });
    add("RunDateKey", [](const Case& c) {
        return Json{{"key", RunDateKey(textOf(c.in.at("description")))}};
    });
    add("RunText", runTextOf);
    add("IndexDescription", [](const Case& c) {
        trimRight(c.expected, "text");
        return Json{{"text", toJson(rightTrimmed(indexDescription(textOf(c.in.at("RunText")))))}};
    });
    // The link has lines of the same name that say the last description only.
    add("SuggestTitle", suggestTitleOf, [](const Json& in) { return in.contains("descriptions"); });
    add("AddRunToIndex", addRunToIndex);
}

} // namespace

void addCoreFileFunctions() {
    addIndexFunctions();
    add("HeaderLine", headerLineOf);
    add("LoadRun", loadRun);
    add("LoadOverlayRun", loadOverlayRun);
    add("SaveRun", saveRun);
    add("SaveVehicleSetup", saveVehicleSetup);
    add("LoadVehicleSetup", loadVehicleSetup);
    add("SaveAnalogTable", saveAnalogTable);
    add("LoadAnalogTable", loadAnalogTable);
    add("ApplyAnalogTable", applyAnalogTableOf);
}

} // namespace kvo::vectors
