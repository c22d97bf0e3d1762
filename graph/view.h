#pragma once
// GraphView, the state of the graph window, and the plain rules of the window: what a data type
// decides, which labels show, captions, and the colours that a new background forces.
#include "channels/channels.h"
#include "core/basic/from_one.h"
#include "core/config_record.h"
#include "graph/zoom_history.h"
#include "platform/draw/colour.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kvo::graph {

// The caption of the window while it shows no run.
inline constexpr const char* captionWithoutRun = "Data Graph";

inline constexpr std::int32_t switchDynaDefault = 0xFF0009;
inline constexpr std::int32_t switchShiftDefault = 255;
inline constexpr std::int32_t switchThrottleDefault = 0xFF00FF;
inline constexpr std::int32_t switchBrakeDefault = 65408;

// Samples that the user has marked beside the cursor; each has a line of its own.
struct Marks {
    std::optional<int> reference;   // that the read-outs are compared to
    std::optional<int> averageFrom; // where an average by the keys begins
    bool any() const { return reference || averageFrom; }
    friend bool operator==(const Marks&, const Marks&) = default;
};

struct GraphView {
    std::int16_t CursorSample = 0; // sample number under the time line
    std::int16_t RpmScale = 0;     // rpm a vertical unit; MaxRpm + 6 from DrawTrend on
    double MphScale = 0;           // vertical units a mph; set by DrawGrid
    double ProgressCount = 0;      // running total of the loading bar
    std::int32_t OverlayChannelColour = 0;
    std::int16_t LoadingBar = 0; // -1 while a redraw belongs to a load
    std::string RocosText;       // result of RoCoS_Cal
    float DragStartX = 0;        // where the right button went down
    Marks marks;
    ZoomHistory zooms;
    std::int32_t SwitchColourDyna = switchDynaDefault;
    std::int32_t SwitchColourShift = switchShiftDefault;
    std::int32_t SwitchColourThrottle = switchThrottleDefault;
    std::int32_t SwitchColourBrake = switchBrakeDefault;
    int LineWidthPx = 1;            // of the curves on the screen, 1 to 3
    std::int16_t OverlayLoaded = 0; // -1 while the overlay is in memory
    int ScaleShown = 0;             // setting that Mnu_Scale names, 0 to 3; a zoom starts from it
    bool CancelZoomOffered = false; // from the end of a zoom to its cancelling
    std::int16_t GraphDirty = 0;    // -1: the configuration is saved when the window goes
};

// The y scale of Trend in every case.
inline constexpr float trendTop = 1100;
// Of a window that has had no run yet: the right edge of the scale, and the size of the grid's
// numbers in points, which every run keeps.
inline constexpr int trendRightAtFirst = 1361;
inline constexpr float trendPoints = 7;

// What a routine does to a group of labels.
enum class Show { leave, hide, show };
struct LabelVisibility {
    Show clutch = Show::leave;           // Label10(1), Clutch, OverlayClutch
    core::FromOne<Show, 8> analogToggle; // Text_Analog(n)
    core::FromOne<Show, 8> analogValue;  // Analog(n) and OverlayAnalog(n)
    Show exhaustToggle = Show::leave;    // Label9(1..8)
    Show exhaustValue = Show::leave;     // Exhaust(1..8), OverlayExhaust(1..8)
    Show exhaustHeading = Show::leave;   // Label15
    friend bool operator==(const LabelVisibility&, const LabelVisibility&) = default;
};
// A car (vehicleType 1) has no clutch labels; unknown types and 23, 29 leave the rest alone.
LabelVisibility ShowChannelsForType(int type, int vehicleType);
// What DrawTrend does to the labels on its own.
LabelVisibility drawTrendLabels(int type, const core::AppConfig& config);

struct ResolutionChoice {
    std::string caption; // of Mnu_Resolution
    int checkedItem;     // 1, 4 or 8
};
ResolutionChoice Resolution_Change(int step);

// What Change_Colour makes of a background: all colours after it, the channels that were repaired
// in the order of the routine, and whether a switch colour fell to white.
struct ColourChange {
    std::array<std::int32_t, channels::channelCount> colours{};
    std::vector<int> repaired;
    std::int32_t switchDyna = 0;
    std::int32_t switchShift = 0;
    std::int32_t switchThrottle = 0;
    std::int32_t switchBrake = 0;
    bool barsRepainted = false;
};
ColourChange changeColour(const core::AppConfig& config);

// The colour of a channel of the overlay in "Invert of Graph".
std::int32_t InvertColour(std::int32_t colour, std::int32_t graphBackColour);

// The colour of a channel's overlay as OverlayColours has it.
std::int32_t overlayColour(const core::AppConfig& config, int channel);

// Colour dialog of a channel: where it starts (nothing for a colour that is none), and whether the
// choice is the background's own, which is refused.
std::optional<platform::Colour> colourDialogStart(std::int32_t colour);

} // namespace kvo::graph
