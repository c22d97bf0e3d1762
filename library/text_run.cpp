#include "library/text_run.h"

#include "core/basic/format.h"
#include "core/basic/numbers.h"
#include "core/data_types.h"
#include "core/run_file.h"
#include "core/run_records.h"

#include <algorithm>
#include <array>
#include <optional>

namespace kvo::library {
namespace {

using core::keepOnFailure;

constexpr int largestByte = 255;
constexpr int keptAnalogs = 8;
constexpr int gearLines = 5;
constexpr int nameLines = 8;
constexpr int linesBehindRows = gearLines + nameLines + 8;
constexpr std::size_t nameLength = 8;

// The lines of a text, ended by CR LF, CR or LF; the last one perhaps by nothing.
class Lines {
public:
    explicit Lines(std::string_view text) : m_rest(text) {}
    std::optional<std::string_view> next() {
        if (m_rest.empty()) return std::nullopt;
        const auto ends = [](char c) { return c == '\r' || c == '\n'; };
        const auto at = std::find_if(m_rest.begin(), m_rest.end(), ends);
        const auto end = static_cast<std::size_t>(at - m_rest.begin());
        const std::string_view line = m_rest.substr(0, end);
        m_rest.remove_prefix(end);
        m_rest.remove_prefix(m_rest.starts_with("\r\n") ? 2 : m_rest.empty() ? 0 : 1);
        return line;
    }

private:
    std::string_view m_rest;
};

// The numbers of a line one after another, each into a field. One that is missing, is no number or
// does not fit is noted, and its field stays.
class Tokens {
public:
    Tokens(std::string_view line, bool& corrupt) : m_rest(line), m_corrupt(corrupt) {}

    void skip() { (void)next(); }
    std::optional<double> number() {
        const auto value = core::strictNumber(next());
        if (!value) m_corrupt = true;
        return value;
    }
    void into(std::int16_t& field) { take(field, core::CInt); }
    void into(std::int32_t& field) { take(field, core::CLng); }
    void into(std::uint8_t& field) { take(field, core::CByte); }
    void into(float& field) { take(field, core::CSng); }
    // A byte of a channel: what is too large goes as 0 to `cleared`.
    void channel(std::uint8_t& field, std::uint8_t& cleared) {
        const auto value = number();
        if (!value) return;
        if (*value > largestByte) {
            cleared = 0;
            m_corrupt = true;
        } else if (!keepOnFailure(field, core::CByte(*value))) {
            m_corrupt = true;
        }
    }

private:
    std::string_view next() {
        // A token is a few letters long, too few for find() to pay.
        const auto at = std::find(m_rest.begin(), m_rest.end(), ' ');
        const auto end = static_cast<std::size_t>(at - m_rest.begin());
        const std::string_view token = m_rest.substr(0, end);
        m_rest.remove_prefix(std::min(end + 1, m_rest.size()));
        return token;
    }
    template <class Field, class Conversion> void take(Field& field, Conversion conversion) {
        const auto value = number();
        if (value && !keepOnFailure(field, conversion(*value))) m_corrupt = true;
    }

    std::string_view m_rest;
    bool& m_corrupt;
};

void readHeader(Tokens tokens, core::RunHeader& h) {
    for (std::uint8_t* field :
        {&h.EnginePickups, &h.InputPickups, &h.OutputPickups, &h.FrontWheelPickups})
        tokens.into(*field);
    tokens.into(h.RecordOnRpm);
    tokens.into(h.CrankGearTeeth);
    tokens.into(h.BasketGearTeeth);
    tokens.into(h.PreStartRpm);
    tokens.into(h.ShiftLightRpm1);
    tokens.into(h.ShiftLightTime1);
    tokens.into(h.ShiftLightRpm2);
    tokens.into(h.ShiftLightTime2);
    tokens.into(h.ShiftLightRpm3);
    tokens.into(h.ShiftLightTime3);
    tokens.into(h.ShiftLightRpm4);
    tokens.into(h.ShiftLightTime4);
}

void readRow(Tokens tokens, const core::DataTypeFacts& facts, core::RunSample& row) {
    for (std::int16_t* field : {&row.Index, &row.EngineRpm, &row.InputRpm, &row.OutputRpm})
        tokens.into(*field);
    tokens.into(row.SpeedRaw);
    tokens.into(row.Status);
    // Required: an analog that is too large clears the first one, and keeps what its own place
    // held.
    for (int k = 1; k <= std::min(facts.importAnalogTokens, keptAnalogs); ++k)
        tokens.channel(row.Analog[k], row.Analog[1]);
    for (int k = keptAnalogs; k < facts.importAnalogTokens; ++k) tokens.skip();
    tokens.into(row.Aux);
    if (facts.exhausts != core::Exhausts::own) return;
    for (std::uint8_t& exhaust : row.Exhaust) tokens.channel(exhaust, exhaust);
}

// Line n of those behind the rows, from 1.
void readLineBehind(int n, std::string_view line, core::RunImage& image, bool& corrupt) {
    Tokens tokens(line, corrupt);
    if (n <= gearLines) {
        tokens.into(image.setup.GearRatio[n]);
    } else if (n <= gearLines + nameLines) {
        image.setup.AnalogName[n - gearLines] = core::padded(line, nameLength);
    } else {
        const int c = n - gearLines - nameLines;
        tokens.into(image.analog.AnalogDecimals[c]);
        tokens.into(image.analog.AnalogScale[c]);
        tokens.into(image.analog.AnalogOffset[c]);
    }
}

void readBehind(Lines& lines, const core::AppConfig& config, core::RunImage& image, bool& corrupt) {
    int n = 0;
    while (n < linesBehindRows) {
        const auto line = lines.next();
        if (!line) break;
        readLineBehind(++n, *line, image, corrupt);
        core::takeDrive(config, image.analog);
    }
    if (n < linesBehindRows) {
        core::takeAnalogs(config, image.analog);
        core::takeDrive(config, image.analog);
    }
    image.tail.AnalogTypes = config.Analog_Type;
}

} // namespace

TextRunOutcome readTextRun(std::string_view text, const core::AppConfig& config, core::OpenRun& run,
    const RowProgress& progress) {
    Lines lines(text);
    const std::string first(lines.next().value_or(""));
    const std::uint8_t type = core::typeInFront(first);
    const core::DataTypeFacts* facts = core::dataTypeFacts(type);
    TextRunOutcome outcome;
    outcome.known = facts != nullptr && facts->importRows > 0;
    if (!outcome.known) return outcome;

    core::RunImage& image = run.image;
    const auto settings = lines.next();
    auto line = lines.next();
    outcome.known = line.has_value();
    if (!outcome.known) return outcome;
    for (std::string& name : image.setup.AnalogName) name = core::padded({}, nameLength);
    readHeader({*settings, outcome.corrupt}, image.header);
    run.headerLine = first;
    run.DataType = type;
    run.SampleCount = 0;
    for (int i = 1; line; line = lines.next(), ++i) {
        readRow({*line, outcome.corrupt}, *facts, image.samples[i]);
        run.SampleCount = static_cast<std::uint16_t>(i);
        outcome.stopped = progress && !progress(i, facts->importRows);
        if (outcome.stopped) return outcome;
        if (i == facts->importRows) break;
    }
    if (run.SampleCount < facts->importRows) outcome.corrupt = true;
    readBehind(lines, config, image, outcome.corrupt);
    return outcome;
}

std::string importName(const platform::DateTime& date, std::string_view sourceName) {
    constexpr std::size_t numbered = 3;
    const std::string_view number =
        sourceName.substr(sourceName.size() - std::min(sourceName.size(), numbered));
    return core::Format(date, "yymmdd") + core::Format(core::Val(number) / 100, "00.00\\d");
}

std::string importDescription(std::string_view dateText, std::string_view answer) {
    return std::string(dateText) + " Run: " + std::string(answer);
}

std::string importHeaderLine(std::string_view firstLine, std::string_view description) {
    const std::string line = std::string(firstLine) + " Date:" + std::string(description) + "#";
    return line.substr(0, core::longestHeaderLine);
}

} // namespace kvo::library
