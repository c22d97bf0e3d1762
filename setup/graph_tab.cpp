#include "setup/graph_tab.h"

#include "core/basic/numbers.h"

#include <algorithm>

namespace kvo::setup {

namespace {

constexpr std::array<std::uint8_t, 3> samplesAStep{1, 4, 8}; // by resolutionList
constexpr std::int16_t celsius = 0;
constexpr std::int16_t fahrenheit = -1;

// Whatever is neither of the first two shows as the last.
int resolutionIndex(std::uint8_t G_Res) {
    const auto last = samplesAStep.end() - 1;
    return static_cast<int>(std::find(samplesAStep.begin(), last, G_Res) - samplesAStep.begin());
}

} // namespace

int listIndex(int stored, std::size_t entries) {
    return stored >= 0 && stored < static_cast<int>(entries) ? stored : -1;
}

GraphTabValues loadGraphTab(const core::AppConfig& config) {
    GraphTabValues values;
    values.G_Res = resolutionIndex(config.G_Res);
    values.MaxRpm = listIndex(config.MaxRpm, maxRpmList.size());
    values.Exhaust = config.Exhaust == fahrenheit ? 1 : 0;
    values.GridStyle = listIndex(config.GridStyle, lineStyleList.size());
    values.OverlayStyle = listIndex(config.OverlayStyle, lineStyleList.size());
    values.OverlayColours = listIndex(config.OverlayColours, overlayColoursList.size());
    for (std::size_t i = 0; i < config.ComboScale.size(); ++i) {
        values.scales.ComboScale[i] = raiseIndex(config.ComboScale[i]);
        values.scales.Text_Magnify[i] = magnifyInSetup(config.Text_Magnify[i]);
    }
    return values;
}

void saveGraphLists(const GraphTabValues& values, core::AppConfig& config, OrderedSave& save) {
    if (values.G_Res >= 0)
        save.take(config.G_Res, samplesAStep.at(static_cast<std::size_t>(values.G_Res)));
    save.takeIndex(config.MaxRpm, values.MaxRpm);
    save.take(config.Exhaust, values.Exhaust == 1 ? fahrenheit : celsius);
    save.takeIndex(config.GridStyle, values.GridStyle);
    save.takeIndex(config.OverlayStyle, values.OverlayStyle);
    save.takeIndex(config.OverlayColours, values.OverlayColours);
}

void saveScales(const ScaleValues& values, core::AppConfig& config, OrderedSave& save) {
    for (std::size_t i = 0; i < config.ComboScale.size(); ++i) {
        if (const auto raise = storedRaise(values.ComboScale[i]))
            save.take(config.ComboScale[i], *raise);
        save.take(config.Text_Magnify[i], core::CByte(core::Val(values.Text_Magnify[i]) + 1),
            rowsTabs[0], "Text_Magnify(" + std::to_string(i) + ")");
    }
}

void TabStrip2_Click(SetupRows& rows, RowsTab tab, int D_Modal, int Vehicle_Type) {
    rows.TabStrip2 = tab;
    SetupTabStrip2(rows.options, tab, D_Modal);
    Vehicle_Type_Change(rows, Vehicle_Type);
}

} // namespace kvo::setup
