#include "core/config.h"

#include "core/backup.h"
#include "core/basic/byte_reader.h"
#include "core/basic/byte_writer.h"
#include "core/basic/numbers.h"
#include "core/paths.h"

namespace kvo::core {

namespace {

// Walks the record once for reading and once for writing, so that both have one order of fields.
// Each routine below takes one kind of field.
class Decoding {
public:
    explicit Decoding(const platform::Bytes& file) : m_reader(file) {}

    void field(std::uint8_t& value) { keepOnFailure(value, m_reader.u8()); }
    void field(std::int16_t& value) { keepOnFailure(value, m_reader.i16le()); }
    void field(std::int32_t& value) { keepOnFailure(value, m_reader.i32le()); }
    void field(float& value) { keepOnFailure(value, m_reader.f32le()); }
    void field(double& value) { keepOnFailure(value, m_reader.f64le()); }
    void text(std::string& value, std::size_t width) { keepOnFailure(value, m_reader.text(width)); }
    void raw(std::span<std::uint8_t> bytes) { m_reader.raw(bytes); }
    void password(std::string& value) {
        if (const auto length = m_reader.u16le()) text(value, *length);
    }
    // Once a field did not fit, what lies behind it has no place any more.
    bool stopped() const { return m_reader.failed(); }

private:
    ByteReader m_reader;
};

class Encoding {
public:
    void field(std::uint8_t value) { m_writer.u8(value); }
    void field(std::int16_t value) { m_writer.i16le(value); }
    void field(std::int32_t value) { m_writer.i32le(value); }
    void field(float value) { m_writer.f32le(value); }
    void field(double value) { m_writer.f64le(value); }
    void text(const std::string& value, std::size_t width) { m_writer.text(value, width); }
    void raw(std::span<const std::uint8_t> bytes) { m_writer.raw(bytes); }
    void password(const std::string& value) {
        const std::string cut = value.substr(0, 0xFFFF);
        m_writer.u16le(static_cast<std::uint16_t>(cut.size()));
        m_writer.characters(cut);
    }
    static bool stopped() { return false; }
    platform::Bytes take() { return m_writer.take(); }

private:
    ByteWriter m_writer;
};

template <typename Walk, typename... Fields> void fields(Walk& walk, Fields&... values) {
    ((walk.stopped() ? void() : walk.field(values)), ...);
}

template <typename Walk, typename Array> void array(Walk& walk, Array& values) {
    for (auto& value : values) fields(walk, value);
}

template <typename Walk> void text(Walk& walk, auto& value, std::size_t width) {
    if (!walk.stopped()) walk.text(value, width);
}

template <typename Walk> void raw(Walk& walk, auto& bytes) {
    if (!walk.stopped()) walk.raw(bytes);
}

// File offsets 0 to 254: colours, driver and analog channels.
void colours(auto& walk, auto& c) {
    raw(walk, c.reserved0);
    fields(walk, c.EngineColour, c.InputColour, c.OutputColour, c.ClutchColour, c.MphColour);
    array(walk, c.AnalogColour);
    array(walk, c.ExhaustColour);
    fields(walk, c.SlipColour, c.RatioColour, c.RoCoSColour);
    text(walk, c.Driver, 25);
    fields(walk, c.DriverNo);
    for (auto& name : c.AnalogName) text(walk, name, 8);
    array(walk, c.AnalogScale);
    array(walk, c.AnalogOffset);
}

// 255 to 542: port, drive train, corrections and visibility.
void vehicle(auto& walk, auto& c) {
    fields(walk, c.CommPort, c.Gears, c.First_Ratio, c.Second_Ratio, c.Third_Ratio, c.Forth_Ratio,
        c.Fifth_Ratio, c.Weight_F, c.Wheel, c.Pinion_F, c.Crown_F, c.Engine_Correction,
        c.Clutch_Correction, c.Pinion_Correction, c.EngineVisible, c.InputVisible, c.OutputVisible,
        c.RoCoSVisible, c.RatioVisible, c.SlipVisible);
    array(walk, c.AnalogVisible);
    array(walk, c.ExhaustVisible);
    fields(walk, c.MphVisible);
    raw(walk, c.reserved373);
}

// 543 to S - 1: graph, logger and prompts, up to the password.
void logger(auto& walk, auto& c) {
    array(walk, c.Decimals);
    raw(walk, c.reserved551);
    fields(walk, c.ClutchVisible, c.RWheel, c.MaxRpm, c.G_Res);
    array(walk, c.Analog_Type);
    fields(walk, c.FlowRange, c.Speed_Correction, c.LoggerDataType);
    array(walk, c.Analog_Check);
    fields(walk, c.Exhaust, c.ScaleCustom, c.GraphBackColour, c.Sixth_Ratio, c.Date_Prompt,
        c.SpeedWheel_Prompt, c.Check_Password);
    if (!walk.stopped()) walk.password(c.Password);
}

// Everything behind the password.
void graph(auto& walk, auto& c) {
    fields(walk, c.CustomScaleLow, c.CustomScaleHigh, c.Vehicle_Type, c.Fuel_Combo);
    raw(walk, c.reservedS4);
    raw(walk, c.reservedS10);
    array(walk, c.Sensor_Combo);
    fields(walk, c.TyreGrowthVisible, c.TyreGrowthColour, c.GridStyle, c.OverlayStyle,
        c.OverlayColours);
    array(walk, c.ComboScale);
    array(walk, c.Text_Magnify);
    array(walk, c.AnalogRangeLow);
    array(walk, c.SmoothOption);
    array(walk, c.CheckBits);
}

void wholeRecord(auto& walk, auto& config) {
    colours(walk, config);
    vehicle(walk, config);
    logger(walk, config);
    graph(walk, config);
}

constexpr const char* missingText =
    "      Kvo.CfgG file not found"
    "You will have to fix the Setup before downloading data. "; // Required: one line, this
                                                                // spelling.
constexpr const char* corruptText = "\n    Your Kvo.Cfg file is CORRUPT\n\n"
                                    "You Will have to Setup Kvo again. \n";
std::string configPath(const std::string& appFolder, const platform::Files& files) {
    return joined(appFolder, "Kvo.Cfg", files);
}

} // namespace

bool decodeConfig(const platform::Bytes& file, AppConfig& config) {
    Decoding walk(file);
    wholeRecord(walk, config);
    // Even after a cut: no channel is ever drawn with a magnification of 0.
    for (std::uint8_t& magnify : config.Text_Magnify) {
        if (magnify == 0) magnify = 1;
    }
    return !walk.stopped();
}

platform::Bytes encodeConfig(const AppConfig& config) {
    Encoding walk;
    wholeRecord(walk, config);
    return walk.take();
}

ConfigRead LoadConfig(
    const std::string& appFolder, AppConfig& config, const platform::Files& files) {
    const auto file = files.read(configPath(appFolder, files));
    if (!file) return {missingText};
    return {decodeConfig(*file, config) ? std::string() : corruptText};
}

platform::WriteResult SaveConfig(
    const std::string& appFolder, const AppConfig& config, platform::Files& files) {
    auto saved = replaceKept(appFolder, configPath(appFolder, files), encodeConfig(config), files);
    // Required: a read-only file stays without a word.
    if (!saved && saved.failure == platform::FileFailure::readOnly) return {};
    return saved;
}

} // namespace kvo::core
