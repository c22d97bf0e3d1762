#pragma once
// The Graph tab of the setup form: the defaults of the graph's look, as lists and rows of values,
// loaded from and saved to the configuration in mirrored order.
#include "core/config_record.h"
#include "setup/graph_options.h"
#include "setup/models.h"
#include "setup/ordered_save.h"

#include <array>
#include <string_view>

namespace kvo::setup {

inline constexpr std::array<std::string_view, 3> resolutionList{"High", "Med", "Low"};
inline constexpr std::array<std::string_view, 12> maxRpmList{"6000", "7000", "8000", "9000",
    "10000", "11000", "12000", "13000", "14000", "15000", "16000", "17000"};
inline constexpr std::array<std::string_view, 2> temperatureList{"Deg C", "Deg F"};
// Of GridStyle and of OverlayStyle.
inline constexpr std::array<std::string_view, 5> lineStyleList{
    "Solid", "Dashs", "Dots", "Dash Dot Dash", "Dash Dot Dot"};
inline constexpr std::array<std::string_view, 2> overlayColoursList{
    "Same as Graph", "Invert of Graph"};

// A stored list index as the list can select it: -1 where it has no such entry.
int listIndex(int stored, std::size_t entries);

// List indexes, -1 without a selection.
struct GraphTabValues {
    int G_Res = 0;
    int MaxRpm = 0;
    int Exhaust = 0;
    int GridStyle = 0;
    int OverlayStyle = 0;
    int OverlayColours = 0;
    ScaleValues scales;
    friend bool operator==(const GraphTabValues&, const GraphTabValues&) = default;
};

GraphTabValues loadGraphTab(const core::AppConfig& config);
// The lists; one without a selection leaves its field.
void saveGraphLists(const GraphTabValues& values, core::AppConfig& config, OrderedSave& save);
// Raise and magnification of each channel, the latter read leniently.
void saveScales(const ScaleValues& values, core::AppConfig& config, OrderedSave& save);

// A click on TabStrip2: the rows of the tab, then the routine of the vehicle.
void TabStrip2_Click(SetupRows& rows, RowsTab tab, int D_Modal, int Vehicle_Type);

} // namespace kvo::setup
