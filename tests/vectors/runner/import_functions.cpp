// Golden vectors of the runs that are imported from the older program's text.
#include "core_functions.h"
#include "link_functions.h"

#include "core/data_types.h"
#include "core/run_file.h"
#include "core/run_records.h"
#include "library/text_run.h"
#include "tests/support/memory_files.h"

#include <stdexcept>

namespace kvo::vectors {

using namespace kvo::library;

static core::AppConfig importConfig(const Json& in) {
    core::AppConfig config;
    config.RWheel = in.at("RWheel").get<double>();
    config.Crown_F = in.at("Crown_F").get<float>();
    config.Pinion_F = in.at("Pinion_F").get<float>();
    for (int c = 1; c <= 8; ++c) {
        const auto at = static_cast<std::size_t>(c - 1);
        config.Decimals[c] = in.at("Decimals")[at].get<std::uint8_t>();
        config.AnalogScale[c] = in.at("AnalogScale")[at].get<float>();
        config.AnalogOffset[c] = in.at("AnalogOffset")[at].get<float>();
        config.Analog_Type[c] = in.at("Analog_Type")[at].get<std::uint8_t>();
    }
    return config;
}

// What the file brought: of a file that ends early the names up to there are compared.
static Json broughtSetup(const core::RunImage& image, const Json& expected) {
    Json setup = setupOf(image.setup);
    if (expected.contains("RunSetupBlock") && expected["RunSetupBlock"].contains("AnalogName")) {
        while (setup["AnalogName"].size() > expected["RunSetupBlock"]["AnalogName"].size())
            setup["AnalogName"].erase(setup["AnalogName"].size() - 1);
    }
    return setup;
}

static void addWrittenFile(Json& got, core::OpenRun& run, int rows, const Case& c) {
    testing::MemoryFiles files;
    run.path = folderOfDownloads + "/Data/" + c.in.at("destination").get<std::string>();
    if (!core::SaveImportedRun(run, folderOfDownloads, files))
        throw std::runtime_error("the run was not written");
    const platform::Bytes file = *files.read(run.path);
    const platform::Bytes payload = payloads(file, rows, false);
    got["FileName"] = run.path.substr(run.path.rfind('/') + 1);
    got["records"] = (file.size() + core::runRecordWidth - 1) / core::runRecordWidth;
    got["payload_sha256"] = sha256(payload);
    got["payload_length"] = payload.size();
}

// What stood in memory before, in the fields that the file's type brings.
static void presetImport(int k, std::string_view source, core::OpenRun& run) {
    link::PulsePeriods periods;
    run.DataType = core::typeInFront(std::string(source.substr(0, source.find('\r'))));
    presetRun(k, run, periods);
    const auto* facts = core::dataTypeFacts(run.DataType);
    if (facts == nullptr) return;
    for (core::RunSample& row : run.image.samples) {
        for (int a = facts->importAnalogTokens + 1; a <= 8; ++a) row.Analog[a] = 0;
        if (facts->exhausts != core::Exhausts::own) row.Exhaust.fill(0);
    }
}

static Json dosImport(const Case& c) {
    const platform::Bytes bytes = fileBytes(c.files / c.in.at("source").get<std::string>());
    const std::string source(bytes.begin(), bytes.end());
    const core::AppConfig config = importConfig(c.in.at("config"));
    core::OpenRun run;
    presetImport(c.in.at("preset").get<int>(), source, run);
    const TextRunOutcome outcome = readTextRun(source, config, run);
    if (!outcome.known) return Json{{"rejected", -1}, {"message", textRunRefusal}};
    const int rows = core::dataTypeFacts(run.DataType)->importRows;
    const std::string description =
        importDescription(textOf(c.in.at("date")), textOf(c.in.at("answer")));
    run.headerLine = importHeaderLine(run.headerLine, description);
    Json types = Json::array();
    for (const auto type : run.image.tail.AnalogTypes) types.push_back(type);
    Json got{{"rejected", 0}, {"DataType", run.DataType}, {"N", rows},
        {"Description", toJson(description)}, {"header_line", toJson(run.headerLine)},
        {"RunHeader", headerOf(run.image.header)},
        {"RunSetupBlock", broughtSetup(run.image, c.expected)},
        {"RunAnalogBlock", analogOf(run.image.analog)}, {"AnalogTypes", types},
        {"rows_crc32", rowsCrc(run.image, rows)}, {"warning", outcome.corrupt ? -1 : 0},
        {"rows", Json::array()}};
    for (const auto& row : c.expected.at("rows"))
        got["rows"].push_back(rowFields(run.image, row.at("i").get<int>()));
    addWrittenFile(got, run, rows, c);
    return got;
}

void addImportFunctions() {
    add("DosImport", dosImport);
    add("ImportName", [](const Case& c) {
        platform::DateTime date;
        date.year = c.in.at("date")[0].get<int>();
        date.month = c.in.at("date")[1].get<int>();
        date.day = c.in.at("date")[2].get<int>();
        return Json{{"name", toJson(importName(date, textOf(c.in.at("source_name"))))}};
    });
}

} // namespace kvo::vectors
