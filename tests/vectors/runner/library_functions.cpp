// Golden vectors of the forms that describe and compare runs.
#include "graph_functions.h"

#include "core/basic/numbers.h"
#include "library/statistics.h"
#include "library/time_graph.h"
#include "tests/support/memory_files.h"

namespace kvo::vectors {

using namespace kvo::library;

static Json cellOf(const StatisticsRow& row, std::string StatisticsRow::*cell) {
    return toJson(row.*cell);
}

// The shown rows of an array of channels, by number.
static Json shownCells(
    const core::FromOne<StatisticsRow, 8>& rows, std::string StatisticsRow::*cell) {
    Json cells = Json::object();
    for (int c = 1; c <= 8; ++c) {
        if (rows[c].shown) cells[std::to_string(c)] = cellOf(rows[c], cell);
    }
    return cells;
}

static void addRpmRow(Json& got, const std::string& name, const StatisticsRow& row) {
    got[name + "_Min"] = toJson(row.Min);
    got[name + "_Max"] = toJson(row.Max);
    got[name + "_Ave"] = toJson(row.Ave);
}

static void addTrackTexts(Json& got, const Json& texts) {
    const std::pair<const char*, const char*> boxes[] = {{"ET60", "Text_60FootTime"},
        {"Et330", "Text_330FootTime"}, {"ET660", "Text_660FootTime"},
        {"Et1000", "Text_1000FootTime"}, {"Et", "Text_ET"}, {"Speed660", "Text_660FootSpeed"}};
    for (const auto& [label, box] : boxes) got[label] = texts.at(box);
}

static Json horsepowerOf(const std::string& elapsed, float weight) {
    const auto text = horsepower(elapsed, weight);
    return text ? toJson(*text) : Json();
}

static Json statisticsOf(const Case& c) {
    const auto made = graphCase(c);
    core::SharedState* state = &made->state;
    const std::string elapsed = textOf(c.in.at("texts").at("Text_ET"));
    const RunStatistics statistics = Cal(state->Run, elapsed);
    if (statistics.failed) return Json{{"error", true}};
    const StatisticsTexts texts =
        statisticsTexts(statistics, state->Run, state->Config.Exhaust, state->AnalogPicture);
    Json got{{"Caption", toJson(statisticsCaption(textOf(c.in.at("caption"))))},
        {"FromSample", statistics.FromSample}, {"ToSample", statistics.ToSample},
        {"PeakSpeed", statistics.PeakSpeed}, {"Mph_Max", toJson(texts.Mph_Max)},
        {"Horsepower", horsepowerOf(elapsed, c.in.at("config").at("Weight_F").get<float>())}};
    addTrackTexts(got, c.in.at("texts"));
    addRpmRow(got, "Rpm", texts.Rpm);
    addRpmRow(got, "Input", texts.Input);
    addRpmRow(got, "Pinion", texts.Pinion);
    Json names = Json::object();
    Json analogShown = Json::array();
    for (int n = 1; n <= 8; ++n) {
        if (!texts.A[n].shown) continue;
        names[std::to_string(n)] = toJson(state->Run.image.setup.AnalogName[n]);
        analogShown.push_back(n);
    }
    got["Txt_A"] = names;
    got["AnalogShown"] = analogShown;
    got["ExhaustShown"] = texts.E[1].shown ? -1 : 0;
    got["A_Min"] = shownCells(texts.A, &StatisticsRow::Min);
    got["A_Max"] = shownCells(texts.A, &StatisticsRow::Max);
    got["A_Ave"] = shownCells(texts.A, &StatisticsRow::Ave);
    got["E_Min"] = shownCells(texts.E, &StatisticsRow::Min);
    got["E_Max"] = shownCells(texts.E, &StatisticsRow::Max);
    got["E_Ave"] = shownCells(texts.E, &StatisticsRow::Ave);
    return got;
}

static Json timeGraphOf(const Case& c) {
    testing::MemoryFiles files;
    files.put(std::string(folder) + "/KvoTimes",
        fileBytes(c.files / c.in.at("KvoTimes").get<std::string>()));
    const core::RunTimesTable table = core::LoadTimesTable(folder, files);
    Json rows = Json::array();
    for (const TimedRow& row : timedRows(table)) {
        Json marks = Json::array();
        for (const TimeMark& mark : row.marks) marks.push_back({mark.time, mark.colour});
        rows.push_back({{"row", row.row}, {"label", toJson(row.label)},
            {"tooltip", toJson(row.toolTip)}, {"marks", marks}});
    }
    return Json{{"RunTimesCount", table.RunTimesCount}, {"rows", rows}};
}

static Json timeGraphKeyOf(const Case& c) {
    const int x = c.in.at("x").get<int>();
    const int mask = c.in.at("shift").get<int>();
    const auto moved = movedLine(
        x, c.in.at("key").get<int>() == 39, (mask & 1) != 0, (mask & 2) != 0, (mask & 4) != 0);
    if (!moved) return Json{{"beep", -1}, {"x", x}};
    return Json{{"beep", 0}, {"x", *moved}, {"Time_Label", timeOfLine(*moved)}};
}

void addLibraryFunctions() {
    add("TimeGraph", timeGraphOf);
    add("TimeGraphKey", timeGraphKeyOf);
    add("Statistics", statisticsOf);
    add("Horsepower", [](const Case& c) {
        return Json{
            {"text", horsepowerOf(textOf(c.in.at("Et")), c.in.at("Weight_F").get<float>())}};
    });
}

} // namespace kvo::vectors
