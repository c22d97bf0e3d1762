#include "graph/export_csv.h"

#include "channels/channels.h"
#include "channels/derived.h"
#include "channels/sample_place.h"
#include "core/basic/format.h"
#include "core/basic/numbers.h"
#include "core/data_types.h"
#include "core/setup_kinds.h"
#include "platform/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <optional>
#include <vector>

namespace kvo::graph {

using namespace channels;
namespace {

using core::RunSample;

constexpr std::string_view lineEnd = "\r\n";
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

struct SwitchColumn {
    std::string_view name;
    core::StatusBit bit;
};
constexpr std::array<SwitchColumn, 4> switchColumns{
    {{"Trans Brake", core::TransBrake}, {"Wide Open Throttle", core::WideOpenThrottle},
        {"Shift Light", core::ShiftLight}, {"Dyna 2 Step", core::Dyna2Step}}};

// The names of the channels that stand for themselves, as their buttons bear them, with units.
std::string_view nameOf(int channel) {
    switch (channel) {
    case engineChannel:
        return "Engine (rpm)";
    case clutchChannel:
        return "Clutch (rpm)";
    case inputChannel:
        return "Input (rpm)";
    case outputChannel:
        return "Output (rpm)";
    case slipChannel:
        return "Slip (%)";
    case ratioChannel:
        return "Ratio";
    case rocosChannel:
        return "RoCoS (g)";
    case mphChannel:
        return "Speed (mph)";
    default:
        return "Tyre Growth (in)";
    }
}

// The texts of the 256 values that a byte has, each made when it first comes up.
class ByteTexts {
public:
    template <class Make> const std::string& of(std::uint8_t value, Make&& make) {
        std::optional<std::string>& text = m_texts[value];
        if (!text) text = make(value);
        return *text;
    }

private:
    std::array<std::optional<std::string>, 256> m_texts;
};

// Which columns there are, and the line of each sample.
class CsvWriter {
public:
    CsvWriter(const RunView& run, const core::AppConfig& config, const CsvLook& look)
        : m_run(run), m_config(config), m_look(look), m_exhausts(core::exhaustsOf(run.labelType)),
          m_drive(primaryRatio(run.ownDrive())) {
        std::string picture = "####0"; // of an input with decimals that no picture has
        for (int n = 1; n <= 8; ++n) {
            core::AnalogFormat(analogSetup(*run.image, n).decimals, picture);
            m_pictures[n] = picture;
        }
        for (const int channel : labelOrder())
            if (has(channel)) m_channels.push_back(channel);
    }

    void addHeader() {
        m_text += "Time (s)";
        for (const int channel : m_channels) {
            m_text += m_look.separator;
            m_text += csvCell(headerOf(channel), m_look.separator);
        }
        for (const SwitchColumn& one : switchColumns) {
            m_text += m_look.separator;
            m_text += one.name;
        }
        m_text += lineEnd;
    }

    void addSample(int sample) {
        const RunSample& row = m_run.row(sample);
        addNumber(core::Format(
            (row.Index - m_run.image->tail.TimeOffset) / core::samplesPerSecond, "##0.00"));
        for (const int channel : m_channels) {
            m_text += m_look.separator;
            addValue(channel, sample, row);
        }
        for (const SwitchColumn& one : switchColumns) {
            m_text += m_look.separator;
            m_text += (row.Status & one.bit) != 0 ? '1' : '0';
        }
        m_text += lineEnd;
    }

    // A row of a time-shared type says the temperature of one exhaust.
    void noteShared(int sample) {
        if (m_exhausts != core::Exhausts::timeShared) return;
        const RunSample& row = m_run.row(sample);
        m_shared[sharedExhaust(row)] = row.Analog[7];
    }

    void reserve(std::size_t bytes) { m_text.reserve(bytes); }
    const std::string& text() const { return m_text; }

private:
    bool has(int channel) const {
        const ChannelFacts& facts = channelFacts(channel);
        switch (facts.kind) {
        case ChannelKind::clutch:
            return m_config.Vehicle_Type != core::car;
        case ChannelKind::analog:
            return facts.number <= core::analogsOf(m_run.labelType);
        case ChannelKind::exhaust:
            return m_exhausts != core::Exhausts::none;
        default:
            return true;
        }
    }

    std::string degrees() const {
        return m_config.Exhaust == core::flagOn ? " (Deg F)" : " (Deg C)";
    }

    // UTF-8.
    std::string headerOf(int channel) const {
        const ChannelFacts& facts = channelFacts(channel);
        if (facts.kind == ChannelKind::exhaust)
            return std::string(facts.option.caption) + degrees();
        if (facts.kind != ChannelKind::analog) return std::string(nameOf(channel));
        const std::string& kept = m_run.image->setup.AnalogName[facts.number];
        std::string name = core::rightTrimmed(kept.substr(0, kept.find('\0')));
        if (name.empty()) name = facts.option.caption;
        const bool warm = analogSetup(*m_run.image, facts.number).type == core::exhaustInput;
        return platform::fromFile(name) + (warm ? degrees() : "");
    }

    void addValue(int channel, int sample, const RunSample& row) {
        const ChannelFacts& facts = channelFacts(channel);
        switch (facts.kind) {
        case ChannelKind::engine:
            return addWhole(row.EngineRpm);
        case ChannelKind::clutch:
            if (m_drive) addNumber(core::CStr(clutchRpm(*m_drive, row.EngineRpm)));
            return;
        case ChannelKind::input:
            return addWhole(row.InputRpm);
        case ChannelKind::output:
            return addWhole(row.OutputRpm);
        case ChannelKind::slip:
            if (m_drive) addNumber(slipRead(*m_drive, row.EngineRpm, row.InputRpm));
            return;
        case ChannelKind::ratio:
            return addNumber(ratioRead(row.EngineRpm, row.OutputRpm));
        case ChannelKind::rocos:
            return addText(RoCoS_Cal(*m_run.image, m_run.rows, sample));
        case ChannelKind::mph:
            return addNumber(mphRead(mph(row.SpeedRaw)));
        case ChannelKind::analog:
            return addNumber(analogText(facts.number, row.Analog[facts.number]));
        case ChannelKind::exhaust:
            return addExhaust(facts.number, row);
        case ChannelKind::tyreGrowth:
            return addGrowth(row);
        }
    }

    const std::string& analogText(int n, std::uint8_t raw) {
        return m_analogTexts[n].of(raw, [&](std::uint8_t value) {
            return analogRead(analogSetup(*m_run.image, n), value, m_config.Exhaust, m_pictures[n])
                .text;
        });
    }

    void addExhaust(int n, const RunSample& row) {
        const bool shared = m_exhausts == core::Exhausts::timeShared;
        const std::optional<std::uint8_t> raw =
            shared ? m_shared[n] : std::optional<std::uint8_t>(row.Exhaust[n]);
        if (!raw) return;
        addNumber(m_exhaustTexts.of(*raw, [this](std::uint8_t value) {
            return core::CStr(temperature(value, m_config.Exhaust));
        }));
    }

    void addGrowth(const RunSample& row) {
        const double speed = mph(row.SpeedRaw);
        const TextReading growth =
            tyreGrowthRead(speed, row.OutputRpm, mphRead(speed), m_run.image->analog, "##0.00");
        // What the label says where the wheel stands is no number.
        if (growth.text != "N/A") addText(growth);
    }

    void addText(const TextReading& reading) {
        if (reading.hasText()) addNumber(reading.text);
    }

    void addWhole(int value) {
        char digits[16];
        const auto end = std::to_chars(digits, digits + sizeof digits, value);
        m_text.append(digits, end.ptr);
    }

    void addNumber(std::string_view number) {
        const std::size_t at = m_text.size();
        m_text += number;
        if (m_look.decimalSign == '.') return;
        if (const auto point = number.find('.'); point != std::string_view::npos)
            m_text[at + point] = m_look.decimalSign;
    }

    const RunView& m_run;
    const core::AppConfig& m_config;
    CsvLook m_look;
    core::Exhausts m_exhausts;
    std::optional<double> m_drive;
    std::vector<int> m_channels;
    core::FromOne<std::string, 8> m_pictures;
    core::FromOne<ByteTexts, 8> m_analogTexts;
    ByteTexts m_exhaustTexts;
    core::FromOne<std::optional<std::uint8_t>, 8> m_shared;
    std::string m_text;
};

bool isAscii(std::string_view text) {
    return std::all_of(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

} // namespace

CsvLook csvLookOf(char32_t decimalSign) {
    return decimalSign == U',' ? CsvLook{',', ';'} : CsvLook{};
}

SampleStretch wholeRun(const RunView& run) {
    return {1, run.rows};
}

SampleStretch stretchInView(
    const RunView& run, const platform::UserScale& scale, const SurfacePart& part) {
    const auto edge = [&scale](float at) {
        return static_cast<double>(scale.left) +
               static_cast<double>(at) * (scale.right - scale.left);
    };
    const double first = std::ceil(edge(part.left));
    const double last = std::floor(edge(part.right));
    return {static_cast<int>(std::clamp(first, 1.0, run.rows + 1.0)),
        static_cast<int>(std::clamp(last, 0.0, static_cast<double>(run.rows)))};
}

std::string csvCell(std::string_view text, char separator) {
    const bool formula =
        !text.empty() && std::string_view("=+-@\t\r").find(text.front()) != std::string_view::npos;
    const bool quoted = formula || text.find(separator) != std::string_view::npos ||
                        text.find_first_of("\"\r\n") != std::string_view::npos;
    if (!quoted) return std::string(text);
    std::string cell = formula ? "\"'" : "\"";
    for (const char c : text) {
        if (c == '"') cell += '"';
        cell += c;
    }
    return cell + '"';
}

platform::Bytes runAsCsv(const RunView& run, const core::AppConfig& config,
    const SampleStretch& stretch, const CsvLook& look) {
    CsvWriter table(run, config, look);
    constexpr std::size_t bytesALine = 160;
    table.reserve(
        static_cast<std::size_t>(std::max(0, stretch.to - stretch.from + 2)) * bytesALine);
    table.addHeader();
    const bool mark = !isAscii(table.text());
    for (int sample = 1; sample <= stretch.to; ++sample) {
        table.noteShared(sample);
        if (sample >= stretch.from) table.addSample(sample);
    }
    platform::Bytes bytes;
    bytes.reserve(table.text().size() + byteOrderMark.size());
    if (mark) bytes.insert(bytes.end(), byteOrderMark.begin(), byteOrderMark.end());
    bytes.insert(bytes.end(), table.text().begin(), table.text().end());
    return bytes;
}

} // namespace kvo::graph
