#pragma once
// The options of the graph: the rules of the form Visible_Options, of the form CustomScale, and
// what the Graph tab of the setup form shares with them. Everything goes in and out as values: a
// form copies its controls into them, calls a routine and shows what came back.
#include "core/config_record.h"
#include "setup/option_rows.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kvo::setup {

// Tabs of TabStrip2 in the order of RowsTab, of TabStrip1 in that of VisibleTab.
inline constexpr std::array<std::string_view, 4> visibleTabs{
    "Graph Line/s ( On/ Off )", "Magnify Data", "Raise Scale (0) Point", "Smooth Graph Line/s"};
inline constexpr std::array<std::string_view, 2> rowsTabs{visibleTabs[1], visibleTabs[2]};
// The list of each ComboScale; an entry is worth 20 graph units.
inline constexpr std::array<std::string_view, 11> raiseList{
    "0%", "1%", "2%", "3%", "4%", "5%", "6%", "7%", "8%", "9%", "10%"};

// The groups in which both forms show the channels.
enum class OptionGroup { channels, analogs, exhausts };
OptionGroup optionGroup(int channel);

// What the rows of both forms hold.
struct ScaleValues {
    ByChannel<std::string> Text_Magnify;
    ByChannel<int> ComboScale{}; // list index, -1 without a selection
    friend bool operator==(const ScaleValues&, const ScaleValues&) = default;
};

// Captions of Label_Magnify; an analog's row bears the name of its input.
ByChannel<std::string> rowCaptions(const core::FromOne<std::string, 8>& analogNames);

// A stored magnification as each form shows it.
std::string magnifyInSetup(std::uint8_t stored);
std::string magnifyInVisibleOptions(std::uint8_t stored);
// List index of a stored raise, -1 where the list has no such entry; and the other way, with
// nothing for -1.
int raiseIndex(std::uint8_t stored);
std::optional<std::uint8_t> storedRaise(int index);

// Leaving a Text_Magnify: a whole or broken number from 0 to 50 stays.
BoxCheck Text_Magnify_LostFocus(std::string_view text);

// Command3, "Restore Defaults": the half of the rows that is on view. Changes the values only.
void restoreDefaults(ScaleValues& values, const OptionRows& rows);

// TabStrip2 of the setup form, before the routine of the vehicle; `D_Modal` is its list index.
void SetupTabStrip2(OptionRows& rows, RowsTab tab, int D_Modal);

// The tabs of Visible_Options.
enum class VisibleTab { onOff, magnify, raise, smooth };

// Whether each control of Visible_Options is on view. As designed, all boxes and frames are.
struct VisibleOptionsShown {
    OptionRows rows;
    std::array<bool, 50> Check1{};
    std::array<bool, 3> EGTFrame{true, true, true};
    int Frame = 0; // the one of three that is on view

    VisibleOptionsShown() { Check1.fill(true); }
};

// The frame and the controls of a tab.
void VisibleTabStrip1(VisibleOptionsShown& shown, VisibleTab tab);
// The model by whose inputs rows are hidden: the loaded run's (0 for none), else the setup's.
int optionsModel(int dataTypeOfRun, int LoggerDataType);
// Hides what the model and the vehicle (1 is a car) do not have; shows nothing.
void HideUnusedOptions(VisibleOptionsShown& shown, int model, int Vehicle_Type);
// A click on a tab: both of these.
void TabStrip1_Click(VisibleOptionsShown& shown, VisibleTab tab, int model, int Vehicle_Type);

// The boxes Check1: up to 24 those that have a channel drawn, from here on SmoothOption.
inline constexpr int firstSmoothBox = 25;
// The channel of a box, 0 to 49.
int channelOfBox(int box);

struct VisibleOptionsValues {
    std::array<bool, 50> Check1{};
    ScaleValues scales;
    friend bool operator==(const VisibleOptionsValues&, const VisibleOptionsValues&) = default;
};

// Captions of the boxes; `analogNames` are those of Text_Analog on the graph.
std::array<std::string, 50> boxCaptions(const core::FromOne<std::string, 8>& analogNames);

// The form as Form_Load leaves it; Apply is disabled and Command2 reads "Cancel".
struct VisibleOptions {
    VisibleOptionsShown shown;
    VisibleOptionsValues values;
    bool Command1_1_Enabled = false; // "Apply"
    std::string Command2 = "Cancel";
};
VisibleOptions loadVisibleOptions(const core::AppConfig& config, int model);

// Command3, "Restore Defaults"; what changes is for Apply to take.
void Command3_Click(VisibleOptions& form);
// "All Off" (0) and "All On" (1) of the exhausts and of the analogs.
void EGTCommand_Click(VisibleOptions& form, int index);
void AnalogCommand_Click(VisibleOptions& form, int index);

// Takes the values into the configuration. A magnification that is no number or does not fit a byte
// leaves its field as it was, and so does a list without a selection.
void applyOptions(const VisibleOptionsValues& values, core::AppConfig& config);

// What the graph and the form have to do after Save or Apply.
struct OptionsOutcome {
    bool redraw = false;     // ChanaleEnable, DrawTrend, OverLayDraw if loaded, TimeLine
    bool graphDirty = false; // the configuration is to be saved with the graph
    bool unload = false;     // the form closes
};
// Command1: 0 is "Save", 1 is "Apply".
OptionsOutcome Command1_Click(VisibleOptions& form, int index, core::AppConfig& config);

// The form CustomScale. Where both sliders begin and end.
inline constexpr int leastCustomScale = 1;
inline constexpr int mostCustomScale = 15;
struct CustomScaleValues {
    int Slider1 = leastCustomScale; // "Height :"
    int Slider2 = leastCustomScale; // "Width :"
};
// A stored position that the sliders do not have leaves them where they begin.
CustomScaleValues loadCustomScale(const core::AppConfig& config);

struct CustomSurface {
    double Height = 0; // of Trend, twips
    double Width = 0;
    const char* scaleCaption = ""; // of Mnu_Scale
};
// OKButton: keeps both positions in the configuration. The inner sizes are the graph's, in twips.
CustomSurface CustomScaleOK(const CustomScaleValues& values, double innerHeight, double innerWidth,
    core::AppConfig& config);

} // namespace kvo::setup
