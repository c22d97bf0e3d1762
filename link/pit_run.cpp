#include "link/pit_run.h"

#include "channels/derived.h"
#include "core/basic/format.h"
#include "core/basic/numbers.h"
#include "core/basic/plain_number.h"
#include "core/setup_kinds.h"
#include "link/logger_link.h"

#include <array>
#include <cassert>

namespace kvo::link {
namespace {

// Required: a type 20 hides analogs 7 and 8 and reads them all the same; type 23 shows exhausts
// that no frame of it brings.
constexpr std::array<PitRunType, 7> types{{
    // type bytes read exhaust type12 type17 last
    {12, 28, 4, 0, false, false, 8},
    {17, 28, 8, 0, true, false, 8},
    {20, 28, 8, 21, true, true, 6},
    {23, 28, 8, 0, true, true, 8},
    {25, 28, 8, 21, true, true, 8},
    {32, 46, 8, 24, true, true, 8},
    {43, 46, 8, 24, true, true, 8},
}};

constexpr int framesBehind = 4;
constexpr int firstAnalog = 12; // position in the frame

constexpr int mostDecimals = 2;

constexpr double speedUnits = 200; // of the speeds of a run, a mph

// A frame by its positions, counted from 1.
class Frame {
public:
    explicit Frame(std::string_view bytes) : m_bytes(bytes) {}
    int byte(int position) const {
        const auto at = static_cast<std::size_t>(position - 1);
        assert(at < m_bytes.size());
        return static_cast<std::uint8_t>(m_bytes[at]);
    }
    int word(int position) const { return byte(position) * 256 + byte(position + 1); }

private:
    std::string_view m_bytes;
};

std::optional<std::string> wholeText(double value) {
    const auto whole = core::finite(core::Fix(value));
    if (!whole) return std::nullopt;
    return core::CStr(*whole);
}

// Required: no threshold against noise, and cut where the download rounds.
std::optional<std::string> rpmText(int count, float correction, double pulsesARevolution) {
    const double seconds = count * tickSeconds;
    if (!(seconds > 0)) return "0";
    return wholeText(60 / seconds * static_cast<double>(correction) / pulsesARevolution);
}

std::optional<std::string> mphText(int count, const core::AppConfig& config) {
    // Required: the count has 16 bits and a sign here, and only here.
    const auto signedCount = static_cast<std::int16_t>(static_cast<std::uint16_t>(count));
    if (signedCount <= 0) return "0";
    const double frequency = 1 / (signedCount * tickSeconds);
    const auto raw = core::finite(frequency * static_cast<double>(config.Wheel) * wheelConstant *
                                  static_cast<double>(config.Speed_Correction));
    if (!raw) return std::nullopt;
    return core::Format(core::Fix(*raw) / speedUnits, "##0.00");
}

std::optional<std::string> linearText(int raw, const core::AppConfig& config, int channel) {
    const int decimals = config.Decimals[channel];
    const auto value = core::CSng(raw * static_cast<double>(config.AnalogScale[channel]) +
                                  static_cast<double>(config.AnalogOffset[channel]));
    if (!value || decimals > mostDecimals) return std::nullopt;
    std::string picture;
    core::AnalogFormat(decimals, picture);
    return core::Format(static_cast<double>(*value), picture);
}

std::optional<std::string> analogText(
    int raw, const core::AppConfig& config, const core::AnalogTables& tables, int channel) {
    const int kind = config.Analog_Type[channel];
    if (kind == core::exhaustInput) return core::Str(core::ExhaustToDegrees(raw, config.Exhaust));
    if (kind == core::mappedInput) {
        const auto entry = core::finite(tables[channel][static_cast<std::size_t>(raw)]);
        if (!entry) return std::nullopt;
        return core::plainNumber(*entry);
    }
    // Required: always the scale of the first fuel, whatever the setup says.
    if (kind == core::lambdaInput) return core::Format(channels::lambdaValue(raw, 0), "#0.0");
    if (kind > core::pressureInput) return std::nullopt;
    return linearText(raw, config, channel);
}

} // namespace

std::optional<PitRunType> pitRunType(int dataType) {
    for (const PitRunType& type : types)
        if (type.DataType == dataType) return type;
    return std::nullopt;
}

void Type12(PitRunLayout& layout, bool shown) {
    constexpr int firstOfMany = 5;
    for (int c = firstOfMany; c <= layout.Analog.size; ++c) layout.Analog[c] = shown;
    layout.Temps_Label = shown;
}

void Type17(PitRunLayout& layout, bool shown) {
    layout.Temps_Label = shown;
    layout.T.fill(shown);
}

PitRunLayout pitRunLayout(const core::AppConfig& config) {
    PitRunLayout layout;
    if (const auto type = pitRunType(config.LoggerDataType)) {
        layout.canRun = true;
        Type12(layout, type->type12);
        Type17(layout, type->type17);
        for (int c = type->lastAnalog + 1; c <= layout.Analog.size; ++c) layout.Analog[c] = false;
    }
    for (int c = 1; c <= layout.Analog.size; ++c)
        if (config.Analog_Check[c] == 0) layout.Analog[c] = false;
    return layout;
}

std::string loadPitRunTables(const core::AppConfig& config, core::AnalogTables& tables,
    const std::string& appFolder, platform::Files& files) {
    std::string unread;
    for (int c = 1; c <= config.Analog_Check.size; ++c) {
        if (config.Analog_Check[c] == 0 || config.Analog_Type[c] != core::mappedInput) continue;
        const std::string why =
            core::LoadAnalogTable(appFolder, core::analogTableName(c), c, tables, files);
        if (unread.empty()) unread = why;
    }
    return unread;
}

std::string widestWhole(const std::array<double, 256>& table) {
    std::string widest;
    for (const double reading : table) {
        const std::string text = core::plainNumber(reading);
        const std::string whole = text.substr(0, text.find('.'));
        if (whole.size() > widest.size()) widest = whole;
    }
    return widest;
}

// Required: one byte more than a frame must be there, and one more than four for the jump.
int pitFramesToTake(int inBufferCount, int inputLen) {
    if (inBufferCount > framesBehind * inputLen) return framesBehind;
    return inBufferCount > inputLen ? 1 : 0;
}

std::optional<std::string> takePitFrame(platform::SerialPort& port) {
    std::optional<std::string> last;
    for (int left = pitFramesToTake(port.inBufferCount(), port.inputLen()); left > 0; --left)
        last = port.input();
    return last;
}

std::optional<PitRunReadings> decodePitFrame(
    std::string_view frame, const core::AppConfig& config, const core::AnalogTables& tables) {
    const auto type = pitRunType(config.LoggerDataType);
    if (!type || frame.size() < static_cast<std::size_t>(type->frameBytes)) return std::nullopt;
    PitRunReadings readings;
    const Frame at(frame);
    readings.LineNumber = core::Str(at.word(1));
    readings.ERpm = rpmText(at.word(3), config.Engine_Correction, 1);
    readings.CRpm = rpmText(at.word(5), config.Clutch_Correction, 1);
    readings.PRpm = rpmText(at.word(7), config.Pinion_Correction, 2);
    readings.Mph = mphText(at.word(9), config);
    for (int c = 1; c <= type->analogsRead; ++c) {
        if (config.Analog_Check[c] == 1)
            readings.Analog[c] = analogText(at.byte(firstAnalog + c - 1), config, tables, c);
    }
    for (int i = 1; type->exhaustAt > 0 && i <= readings.T.size; ++i)
        readings.T[i] =
            core::CStr(core::ExhaustToDegrees(at.byte(type->exhaustAt + i - 1), config.Exhaust));
    return readings;
}

} // namespace kvo::link
