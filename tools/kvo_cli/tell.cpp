// list, info, stats and check: what is told of runs, for people or as JSON for programs.
#include "core/basic/numbers.h"
#include "core/paths.h"
#include "core/run_file.h"
#include "core/run_index.h"
#include "core/run_info.h"
#include "core/run_title.h"
#include "core/vehicle_setup.h"
#include "library/chooser_list.h"
#include "library/folder_check.h"
#include "library/statistics.h"
#include "platform/text.h"
#include "tools/kvo_cli/cli.h"
#include "tools/kvo_cli/run_place.h"

#include <iostream>
#include <nlohmann/json.hpp>
#include <set>

namespace kvo::cli {
namespace {

using Json = nlohmann::ordered_json;

// What is no UTF-8, such as a file's name from another system, is told with a mark in its place.
void tell(const Json& json) {
    std::cout << json.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

std::string utf8(const std::string& fileText) {
    return platform::fromFile(core::rightTrimmed(fileText));
}

std::string titleOf(const core::OpenRun& run) {
    return utf8(std::string(core::leftTrimmed(core::titleOf(run.headerLine))));
}

void tellPair(const std::string& name, const std::string& value) {
    constexpr std::size_t column = 16;
    if (value.empty()) return;
    const std::string gap(name.size() + 1 < column ? column - name.size() - 1 : 1, ' ');
    std::cout << name << ':' << gap << printable(value) << '\n';
}

std::string folderOperand(const command_line::Arguments& arguments) {
    return absolutePath(arguments.operands.empty() ? "." : arguments.operands.front());
}

// A field of JSON and its text.
using Fields = std::vector<std::pair<std::string, std::string>>;

Fields timesOf(const core::RunInfo& info) {
    return {{"time60", info.Text_60FootTime}, {"time330", info.Text_330FootTime},
        {"time660", info.Text_660FootTime}, {"mph660", info.Text_660FootSpeed},
        {"time1000", info.Text_1000FootTime}, {"elapsed", info.Text_ET}, {"mph", info.Text_Mph}};
}

Fields weatherOf(const core::RunInfo& info) {
    return {{"airTemperature", info.Text_AirTemp}, {"barometer", info.Text_Barometric},
        {"humidity", info.Text_Humidity}};
}

Json jsonOf(const Fields& fields) {
    Json json = Json::object();
    for (const auto& [name, text] : fields) json[name] = utf8(text);
    return json;
}

Json settingsOf(const core::RunHeader& header) {
    return {{"enginePickups", header.EnginePickups}, {"inputPickups", header.InputPickups},
        {"outputPickups", header.OutputPickups}, {"frontWheelPickups", header.FrontWheelPickups},
        {"recordOnRpm", header.RecordOnRpm}, {"crankGearTeeth", header.CrankGearTeeth},
        {"basketGearTeeth", header.BasketGearTeeth}};
}

void tellJson(const RunPlace& place, const core::OpenRun& run, const core::RunInfo& info) {
    Json setup = Json::array(); // two lines may have one name
    for (const core::VehicleSetupLine& line : info.setup)
        if (!core::rightTrimmed(line.Name).empty())
            setup.push_back({{"name", utf8(line.Name)}, {"value", utf8(line.Value)}});
    Json analogs = Json::array();
    for (const std::string& name : run.image.setup.AnalogName)
        analogs.push_back(utf8(name.substr(0, name.find('\0'))));
    tell({{"file", place.run}, {"title", titleOf(run)}, {"headerLine", utf8(run.headerLine)},
        {"dataType", run.DataType}, {"samples", run.SampleCount},
        {"timeZero", run.image.tail.TimeOffset}, {"settings", settingsOf(run.image.header)},
        {"analogs", analogs}, {"times", jsonOf(timesOf(info))},
        {"weather", jsonOf(weatherOf(info))}, {"notes", utf8(info.Info_Text)}, {"setup", setup}});
}

void tellText(const RunPlace& place, const core::OpenRun& run, const core::RunInfo& info) {
    tellPair("file", place.run);
    tellPair("title", titleOf(run));
    tellPair("logger", utf8(run.headerLine.substr(0, run.headerLine.find(" Date:"))));
    tellPair("samples", std::to_string(run.SampleCount));
    tellPair("time zero", "sample " + std::to_string(run.image.tail.TimeOffset));
    for (const Fields& fields : {timesOf(info), weatherOf(info)})
        for (const auto& [name, text] : fields) tellPair(name, utf8(text));
    tellPair("notes", utf8(info.Info_Text));
    for (const core::VehicleSetupLine& line : info.setup)
        if (!core::rightTrimmed(line.Name).empty()) tellPair(utf8(line.Name), utf8(line.Value));
}

// --- Statistics

struct NamedRow {
    std::string name;
    library::StatisticsRow row;
};

std::vector<NamedRow> rowsOf(const core::OpenRun& run, const library::StatisticsTexts& texts) {
    std::vector<NamedRow> rows{
        {"Engine", texts.Rpm}, {"Input", texts.Input}, {"Output", texts.Pinion}};
    for (int c = 1; c <= 8; ++c) {
        if (!texts.A[c].shown) continue;
        const std::string& kept = run.image.setup.AnalogName[c];
        const std::string name = utf8(kept.substr(0, kept.find('\0')));
        rows.push_back({name.empty() ? "Analog " + std::to_string(c) : name, texts.A[c]});
    }
    for (int c = 1; c <= 8; ++c)
        if (texts.E[c].shown) rows.push_back({"Exhaust " + std::to_string(c), texts.E[c]});
    return rows;
}

std::string trimmed(const std::string& number) {
    return std::string(core::leftTrimmed(number));
}

// A number that the window leaves empty is null.
Json numberOf(const std::string& text) {
    return trimmed(text).empty() ? Json() : Json(core::Val(text));
}

} // namespace

int listRuns(const Command&, const command_line::Arguments& arguments, const Place& place) {
    const std::string folder = folderOperand(arguments);
    if (auto there = place.look.enterable(folder); !there) return fail(there.message);
    const auto index = place.look.readOrReason(core::indexPath(folder, place.look));
    if (!index && index.failure != platform::FileFailure::notFound) return fail(index.message);
    const std::string data = core::dataFolder(folder, place.look);
    if (const std::string why = library::whyUnlisted(data, place.look); !why.empty())
        return fail(why);
    std::set<std::string> there;
    for (const std::string& name : place.look.list(data)) there.insert(core::upperCased(name));
    Json json = Json::array();
    std::string text;
    for (const core::RunIndexEntry& row :
        core::runIndexOf(index.content.value_or(platform::Bytes{}))) {
        const std::string name =
            core::baseName(library::dataFilePath(folder, row.FileName, place.look));
        const bool found = there.contains(core::upperCased(name));
        const std::string title = utf8(row.Description);
        if (arguments.has("--json")) {
            json.push_back({{"file", name}, {"title", title}, {"found", found}});
        } else {
            text += printable(name) + '\t' + printable(title) + (found ? "\n" : "\tmissing\n");
        }
    }
    if (arguments.has("--json")) {
        tell(json);
    } else {
        std::cout << text;
    }
    return done;
}

int tellInfo(const Command&, const command_line::Arguments& arguments, const Place& place) {
    const RunPlace at = runPlace(arguments, arguments.operands.front(), place.look);
    const auto run = openRun(at, place.look);
    if (!run) return failed;
    const core::RunInfo info = core::LoadRunInfo(at.info, {}, place.look);
    arguments.has("--json") ? tellJson(at, *run, info) : tellText(at, *run, info);
    return done;
}

int tellStatistics(const Command&, const command_line::Arguments& arguments, const Place& place) {
    const RunPlace at = runPlace(arguments, arguments.operands.front(), place.look);
    const auto run = openRun(at, place.look);
    if (!run) return failed;
    const core::AppConfig config = configOf(at.folder, place.look);
    std::string picture;
    const library::RunStatistics statistics = library::Cal(*run, run->times.Text_ET);
    if (statistics.failed) return fail(at.run + ": the figures of this run cannot be worked out");
    const library::StatisticsTexts texts =
        library::statisticsTexts(statistics, *run, config.Exhaust, picture);
    const auto power = library::horsepower(run->times.Text_ET, config.Weight_F);
    if (!arguments.has("--json")) {
        tellPair("title", titleOf(*run));
        tellPair("stretch", texts.Range);
        tellPair("max mph", texts.Mph_Max);
        tellPair("horsepower", power.value_or(""));
        for (const auto& [name, row] : rowsOf(*run, texts))
            tellPair(name,
                trimmed(row.Min) + " to " + trimmed(row.Max) + ", average " + trimmed(row.Ave));
        return done;
    }
    Json channels = Json::array();
    for (const auto& [name, row] : rowsOf(*run, texts))
        channels.push_back({{"name", name}, {"minimum", numberOf(row.Min)},
            {"maximum", numberOf(row.Max)}, {"average", numberOf(row.Ave)}});
    tell({{"file", at.run}, {"title", titleOf(*run)}, {"stretch", texts.Range},
        {"maxMph", numberOf(texts.Mph_Max)}, {"horsepower", numberOf(power.value_or(""))},
        {"temperatures", config.Exhaust == core::flagOn ? "F" : "C"}, {"channels", channels}});
    return done;
}

int checkFiles(const Command&, const command_line::Arguments& arguments, const Place& place) {
    const std::string folder = folderOperand(arguments);
    if (auto there = place.look.enterable(folder); !there) return fail(there.message);
    const library::FolderFindings found = library::checkFolder(folder, place.look);
    if (arguments.has("--json")) {
        const auto asJson = [](const std::vector<library::FileFinding>& findings) {
            Json json = Json::array();
            for (const auto& one : findings)
                json.push_back({{"file", one.file}, {"reason", one.reason}});
            return json;
        };
        tell({{"files", found.files}, {"damaged", asJson(found.damaged)},
            {"notes", asJson(found.notes)}});
    } else {
        for (const auto& one : found.damaged)
            std::cout << "damaged: " << printable(one.file) << ": " << printable(one.reason)
                      << '\n';
        for (const auto& one : found.notes)
            std::cout << "note: " << printable(one.file) << ": " << printable(one.reason) << '\n';
        std::cout << found.files << " files read, " << found.damaged.size() << " damaged\n";
    }
    return found.damaged.empty() ? done : failed;
}

} // namespace kvo::cli
