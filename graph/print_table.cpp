#include "graph/print_table.h"

#include "channels/derived.h"
#include "core/basic/format.h"
#include "core/basic/numbers.h"
#include "core/data_types.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <optional>
#include <span>

namespace kvo::graph {

using namespace channels;
namespace {

using core::CStr;
using core::Format;
using core::RunSample;

constexpr std::string_view headerOfOne =
    " Time     Eng     CRpm  PRpm   Ratio    Slip% RoCoS   Mph        A1        A2        A3       "
    " "
    "A4        A5        A6        A7        A8        E1      E2      E3       E4       E5       "
    "E6       E7       E8";
constexpr std::string_view headerOfTwo =
    " Time     Eng    CRpm PRpm  Ratio   Slip% RoCo  Mph      A1      A2      A3      A4           "
    " "
    "        Time     Eng   CRpm PRpm  Ratio  Slip%  RoCo  Mph      A1     A2       A3       A4";

// Where the cells of a sample begin: Time to Mph, the analogs, the exhausts.
constexpr std::array<float, 24> columnsOfOne{0, 11, 22, 33, 44, 55, 66, 77, 88, 98, 108, 118, 128,
    138, 148, 158, 168, 177, 186, 195, 204, 213, 222, 231};
constexpr std::array<float, 24> columnsOfTwo{0, 11, 22, 33, 44, 55, 66, 77, 88, 98, 108, 118, 128,
    138, 148, 158, 168, 178, 188, 198, 208, 218, 228, 238};
constexpr int cellsOfHalfALine = 12;
constexpr int firstAnalogCell = 8;
constexpr int firstExhaustCell = 16;

// Between a cell and the next column; the column's rule stands in it.
constexpr float columnGap = 1.5F;
// The last column may reach over the edge of the scale into the margin of the paper, six
// millimetres, but not into the part of it that no printer reaches.
constexpr float intoTheMargin = 5;

// The temperature of the table, whatever unit the user sees elsewhere.
constexpr int fahrenheit = -1;

constexpr int allAnalogs = 8;
constexpr int analogsOfTwoALine = 4;

std::vector<PrintColumn> columnsAt(std::span<const float> places) {
    std::vector<PrintColumn> columns;
    for (std::size_t i = 0; i + 1 < places.size(); ++i)
        columns.push_back({places[i], places[i + 1] - places[i] - columnGap});
    columns.push_back({places.back(), tableWidth + intoTheMargin - places.back()});
    return columns;
}

// Forms the cells of one sample after the other.
class CellMaker {
public:
    CellMaker(const RunView& run, std::string& analogPicture)
        : m_run(run), m_type(run.labelType), m_facts(core::dataTypeFacts(run.labelType)),
          m_analogPicture(analogPicture) {}

    bool twoALine() const { return m_facts != nullptr && m_facts->printedSamplesALine == 2; }

    // Adds the cells of a sample to a line, from a column on. False on a run-time failure.
    bool add(int sample, int column, std::vector<PrintCell>& line) {
        m_line = &line;
        m_column = column;
        return addRpm(sample) && addAnalogs(m_run.row(sample)) && addExhausts(m_run.row(sample));
    }

private:
    void put(int cell, std::string text) {
        if (!text.empty()) m_line->push_back({m_column + cell, std::move(text)});
    }

    bool addRpm(int sample) {
        const RunSample& row = m_run.row(sample);
        const bool both = m_type != 8; // Required: its header names Input and Mph all the same
        const TextReading slip = slipPrinted(m_run.ownDrive(), row.EngineRpm, row.InputRpm);
        const TextReading rocos = RoCoS_Cal(*m_run.image, m_run.rows, sample);
        if (slip.hasFailed() || rocos.hasFailed()) return false;
        // Required: the time zero that the user has set is not looked at.
        const int base = m_facts != nullptr ? m_facts->printedTimeBase : 0;
        put(0, Format((sample - base) / core::samplesPerSecond, "#0.00"));
        put(1, CStr(row.EngineRpm));
        if (both) put(2, CStr(row.InputRpm));
        put(3, CStr(row.OutputRpm));
        put(4, ratioPrinted(row.EngineRpm, row.OutputRpm));
        put(5, slip.text);
        put(6, rocos.text);
        if (both) put(7, mphRead(mph(row.SpeedRaw)));
        return true;
    }

    // Required: the type of the sensor is not looked at.
    bool addAnalogs(const RunSample& row) {
        const int count = twoALine() ? analogsOfTwoALine : allAnalogs;
        for (int n = 1; n <= count; ++n) {
            const auto text = analogPrinted(analogSetup(*m_run.image, n), row.Analog[n]);
            if (!text) return false;
            put(firstAnalogCell + n - 1, *text);
        }
        return true;
    }

    std::optional<std::string> analogPrinted(const AnalogSetup& setup, int raw) {
        const float product = static_cast<float>(raw) * setup.scale;
        const float value = product + setup.offset;
        if (!std::isfinite(value)) return std::nullopt;
        core::AnalogFormat(setup.decimals, m_analogPicture);
        return Format(static_cast<double>(value), m_analogPicture);
    }

    // Required: a type whose exhausts are time-shared prints the bytes of its rows, which are 0.
    bool addExhausts(const RunSample& row) {
        if (core::exhaustsOf(m_type) == core::Exhausts::none) return true;
        for (int n = 1; n <= 8; ++n)
            put(firstExhaustCell + n - 1, CStr(temperature(row.Exhaust[n], fahrenheit)));
        return true;
    }

    const RunView& m_run;
    int m_type;
    const core::DataTypeFacts* m_facts;
    std::string& m_analogPicture;
    std::vector<PrintCell>* m_line = nullptr;
    int m_column = 0;
};

} // namespace

PrintTable makePrintTable(const RunView& run, std::string& analogPicture) {
    CellMaker cells(run, analogPicture);
    const bool two = cells.twoALine();
    PrintTable table;
    table.header = two ? headerOfTwo : headerOfOne;
    table.columns = columnsAt(two ? columnsOfTwo : columnsOfOne);
    const int step = two ? 2 : 1;
    table.lines.reserve(static_cast<std::size_t>((run.rows + step - 1) / step));
    for (int sample = 1; sample <= run.rows && !table.failed; sample += step) {
        std::vector<PrintCell>& line = table.lines.emplace_back();
        line.reserve(table.columns.size());
        table.failed = !cells.add(sample, 0, line);
        if (two && sample < run.rows && !table.failed)
            table.failed = !cells.add(sample + 1, cellsOfHalfALine, line);
    }
    return table;
}

std::vector<std::string_view> namesOf(std::string_view header) {
    std::vector<std::string_view> names;
    for (std::size_t at = header.find_first_not_of(' '); at != std::string_view::npos;) {
        const std::size_t end = std::min(header.find(' ', at), header.size());
        names.push_back(header.substr(at, end - at));
        at = header.find_first_not_of(' ', end);
    }
    return names;
}

} // namespace kvo::graph
