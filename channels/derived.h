#pragma once
// What is computed from the recorded words of one sample. A channel has up to four computations
// that differ on purpose: what is drawn, what the value label shows, what counts under the mouse,
// and what is printed. They stand side by side here, one channel after the other.
#include "core/records.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kvo::channels {

// What a computation gives at one sample: a number, nothing at all (no point, test left out), or a
// run-time failure that ends the routine that asked.
struct Reading {
    enum class State { value, none, failed };
    State state = State::none;
    double value = 0;
    static constexpr Reading of(double v) { return {State::value, v}; }
    static constexpr Reading none() { return {State::none, 0}; }
    static constexpr Reading failed() { return {State::failed, 0}; }
    bool hasValue() const { return state == State::value; }
    bool hasFailed() const { return state == State::failed; }
};

// The same for a text. An empty text is a text; `left` means that the label keeps what it showed.
struct TextReading {
    enum class State { text, left, failed };
    State state = State::left;
    std::string text;
    static TextReading of(std::string t) { return {State::text, std::move(t)}; }
    static TextReading left() { return {State::left, {}}; }
    static TextReading failed() { return {State::failed, {}}; }
    bool hasText() const { return state == State::text; }
    bool hasFailed() const { return state == State::failed; }
};

// R, the primary drive: CrankGearTeeth / BasketGearTeeth; nothing for 0 basket teeth, which is a
// run-time failure of every routine that needs R.
std::optional<double> primaryRatio(const core::RunHeader& header);

// --- Clutch Rpm: one computation for all four, rpm

double clutchRpm(double ratio, std::int16_t engineRpm);

// --- Input Slip, percent

Reading slipDrawn(double ratio, std::int16_t engineRpm, std::int16_t inputRpm);
// Engine and input as numbers, since an average takes them from the labels. "##0.0" or empty.
std::string slipRead(double ratio, double engineRpm, double inputRpm);
// none: the test is left out.
Reading slipMouse(double ratio, std::int16_t engineRpm, std::int16_t inputRpm);
// "###" or empty.
TextReading slipPrinted(
    const core::RunHeader& header, std::int16_t engineRpm, std::int16_t inputRpm);

// --- Drive Ratio

double ratioDrawn(double ratio, std::int16_t engineRpm, std::int16_t outputRpm);
// The value label, without R.
std::string ratioRead(double engineRpm, double outputRpm);
// Height under the mouse: none where the output shaft stands.
Reading ratioMouse(double ratio, std::int16_t engineRpm, std::int16_t outputRpm);
std::string ratioPrinted(std::int16_t engineRpm, std::int16_t outputRpm);

// --- RoCoS

// None outside 13 < i < sampleCount - 13. Also what counts under the mouse.
Reading rocosDrawn(const core::RunImage& image, int sampleCount, int i);
// Text in units of g for 14 <= i < sampleCount - 13, else empty. failed: the text keeps what it
// was.
TextReading RoCoS_Cal(const core::RunImage& image, int sampleCount, int i);

// --- Mph

double mph(std::int32_t speedRaw);
// The label: "##0.00".
std::string mphRead(double mph);

// --- Tyre Growth, inches

Reading tyreGrowthDrawn(
    std::int32_t speedRaw, std::int16_t outputRpm, const core::RunAnalogBlock& block);
// The label: "N/A" unless outputRpm is 1 or more and `mphText`, the Mph label, reads above 0.
TextReading tyreGrowthRead(double mph, double outputRpm, std::string_view mphText,
    const core::RunAnalogBlock& block, std::string_view picture = "##0.00 in");
// Growth without the 10 of the drawing; none where there is no value.
Reading tyreGrowthMouse(
    std::int32_t speedRaw, std::int16_t outputRpm, const core::RunAnalogBlock& block);

// --- Analog channels and temperatures

// The setup of one analog channel of a run, 1 to 8.
struct AnalogSetup {
    int type = 0;
    float scale = 0;
    float offset = 0;
    int decimals = 0;
};
AnalogSetup analogSetup(const core::RunImage& image, int n);

// Raw byte that is drawn, before magnification: lambda sensors (type 3) stand 20 higher.
double analogDrawn(double raw, int type);
// `raw` is a byte or the mean of bytes; `exhaustUnit` -1 for Fahrenheit; `picture` is the shared
// slot of AnalogFormat. Types above 4 leave the label.
TextReading analogRead(const AnalogSetup& setup, double raw, int exhaustUnit, std::string& picture,
    int fuelSelector = 0);
// L of a lambda sensor's byte through the row of a fuel, 0 to 4.
double lambdaValue(double raw, int fuelSelector);
// Temperature of a byte or a mean of bytes, whole degrees.
int temperature(double raw, int exhaustUnit);

} // namespace kvo::channels
