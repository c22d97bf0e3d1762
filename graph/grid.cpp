#include "graph/grid.h"

#include "core/basic/numbers.h"
#include "core/data_types.h"

namespace kvo::graph {

using namespace channels;
namespace {

using core::AppConfig;

constexpr platform::Colour lightGrey = 0xC0C0C0;

GridMark lineMark(float x1, float y1, float x2, float y2) {
    return {GridMark::Kind::line, true, x1, y1, x2, y2, {}};
}

GridMark textMark(float x, float y, std::string text) {
    return {GridMark::Kind::text, true, x, y, 0, 0, std::move(text)};
}

// False where a division by nothing ends it.
bool makeHorizontals(
    const AppConfig& config, const GridInput& input, std::vector<GridMark>& marks) {
    const bool withRpm = gridBearsRpm(config);
    const bool withMph = gridBearsMph(config);
    const float step = static_cast<float>(1000.0 / input.rpmScale);
    int wholeRpm = 1000; // of the line; its height is a sum of singles and only near it
    for (float y = step; y <= gridTop; y += step, wholeRpm += 1000) {
        const float rpm = static_cast<float>(static_cast<double>(input.rpmScale) * y);
        const float x = rpm <= 9000 ? 10 : 5;
        if (withRpm) {
            // Required: the topmost line bears a word instead of its number.
            const bool low = y <= bangAbove;
            marks.push_back(textMark(x, y - 3, low ? core::Str(wholeRpm) + " Rpm" : " Bang"));
        }
        if (withMph) {
            const auto mph = core::intDivRounded(y, input.mphScale);
            if (!mph) return false;
            marks.push_back(textMark(x, y + 26, core::Str(*mph) + "   Mph"));
            // Behind the rpm label the surface stands at the left edge.
            marks.back().setsX = !withRpm;
        }
        marks.push_back(lineMark(0, y, input.scaleWidth, y));
    }
    return true;
}

void makeVerticals(const GridInput& input, std::vector<GridMark>& marks) {
    const bool narrow = core::timesStandNear(input.dataType);
    for (int x = input.timeOffset; x <= input.sampleCount; x += 100) {
        const int time = x - input.timeOffset;
        const float at = static_cast<float>(x);
        marks.push_back(lineMark(at, 0, at, 1000));
        const int shift = time > 999 ? (narrow ? 10 : 13) : (narrow ? 7 : 10);
        marks.push_back(textMark(static_cast<float>(x - shift), 1026, core::Str(time / 100)));
    }
}

// Which of four bars the low bits of a status byte light.
constexpr std::array<std::uint8_t, 16> barsOfStatus = [] {
    std::array<std::uint8_t, 16> bars{};
    for (unsigned status = 0; status < bars.size(); ++status) {
        unsigned mask = 0;
        if ((status & core::Dyna2Step) != 0) mask |= 1;
        if ((status & core::ShiftLight) != 0) mask |= 2;
        if ((status & core::WideOpenThrottle) != 0) mask |= 4;
        if ((status & core::TransBrake) != 0) mask |= 8;
        bars[status] = static_cast<std::uint8_t>(mask);
    }
    return bars;
}();

std::uint8_t barsOf(const core::RunSample& row) {
    return barsOfStatus[row.Status & 15];
}

} // namespace

double mphScaleFor(std::int32_t peakSpeedRaw) {
    if (peakSpeedRaw < 20000) return 10;
    if (peakSpeedRaw < 30000) return 6;
    if (peakSpeedRaw < 40000) return 5;
    return 3;
}

bool gridBearsRpm(const AppConfig& config) {
    return config.ComboScale[engineChannel] == 0 && config.ComboScale[clutchChannel] == 0 &&
           config.ComboScale[inputChannel] == 0 && config.ComboScale[outputChannel] == 0;
}

bool gridBearsMph(const AppConfig& config) {
    return config.ComboScale[mphChannel] == 0;
}

void makeGrid(const AppConfig& config, const GridInput& input, std::vector<GridMark>& marks) {
    marks.clear();
    if (input.rpmScale < 1) return;
    if (makeHorizontals(config, input, marks)) makeVerticals(input, marks);
}

platform::Colour gridColour(const AppConfig& config) {
    return config.GraphBackColour == static_cast<std::int32_t>(lightGrey) ? 0xFFFFF5 : lightGrey;
}

platform::Colour gridTextColour(const AppConfig& config) {
    return config.GraphBackColour == static_cast<std::int32_t>(platform::white) ? platform::black
                                                                                : platform::white;
}

std::array<platform::Bar, switchBarCount> switchBars(const GraphView& view) {
    const auto dyna = static_cast<platform::Colour>(view.SwitchColourDyna);
    const auto shift = static_cast<platform::Colour>(view.SwitchColourShift);
    const auto throttle = static_cast<platform::Colour>(view.SwitchColourThrottle);
    const auto brake = static_cast<platform::Colour>(view.SwitchColourBrake);
    return {{{1096, 1088, dyna}, {1078, 1070, shift}, {1060, 1052, throttle}, {1042, 1034, brake},
        {1087, 1079, dyna}, {1069, 1061, shift}, {1051, 1043, throttle}, {1033, 1025, brake}}};
}

void makeSwitchMasks(const ShownRuns& runs, std::vector<std::uint8_t>& masks) {
    masks.clear();
    masks.reserve(static_cast<std::size_t>(runs.run.rows));
    for (int i = 1; i <= runs.run.rows; ++i) {
        unsigned mask = barsOf(runs.run.row(i));
        const int own = i + (runs.overlay ? runs.overlay->shift : 0);
        if (runs.overlay && own >= 1 && own <= runs.overlay->barRows)
            mask |= static_cast<unsigned>(barsOf(runs.overlay->row(own))) << 4;
        masks.push_back(static_cast<std::uint8_t>(mask));
    }
}

} // namespace kvo::graph
