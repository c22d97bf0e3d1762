#pragma once
// The sizes of the graph window: how large Trend is in each setting, where its frame stands, how
// far the scroll bars go. The form's and Trend's sizes are twips (15 a pixel), the frame's and the
// form's inner size are pixels.
#include <optional>

namespace kvo::graph {

struct Size {
    double width = 0;
    double height = 0;
    friend bool operator==(const Size&, const Size&) = default;
};
// A part of the surface, 0 to 1 in both directions, from its left top.
struct SurfacePart {
    float left = 0;
    float top = 0;
    float right = 1;
    float bottom = 1;
    friend bool operator==(const SurfacePart&, const SurfacePart&) = default;
};

struct Box {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
    friend bool operator==(const Box&, const Box&) = default;
};

inline constexpr int scaleFull = 0;
inline constexpr int scaleHalf = 1;
inline constexpr int scaleQuarter = 2;
inline constexpr int scaleCustom = 3;
inline constexpr int scaleZoomed = 4;

// Caption of Mnu_Scale for a setting from 0 to 3.
const char* scaleCaption(int setting);

// Height of the toolbar above Frame1, and width of a scroll bar, pixels.
inline constexpr int toolbarHeightPx = 34;
inline constexpr int scrollBarWidthPx = 17;

// The lowest that the window gets, and the least width, twips, at which the text under the pointer
// has a label; on a narrower window it is a tool tip.
inline constexpr int lowestWindowPx = 420;
inline constexpr int widestWithToolTip = 15400;
bool pointerHasLabel(int windowWidthTwips);
// The side of a window that opens, of the screen's.
int openedSidePx(int screenPx);

// The room between toolbar and panel, pixels.
struct Room {
    int widthPx = 0;
    int heightPx = 0;
    friend bool operator==(const Room&, const Room&) = default;
};
// The room that a window of an inner height leaves under its menu and over a panel that needs
// `panelNeedsPx`. Below a lowest height the surface is not pressed.
int surfaceHeightPx(int innerHeightPx, int aboveInnerPx, int panelNeedsPx);
// The form as the rules measure it, twips: what our menu, toolbar and panel take is to them what
// the form's height loses to everything but Trend.
Size formSize(const Room& room);
// The form's inside, pixels. With scroll bars the rules count on a part of Frame1 that is in view:
// 1.0038 of its width and 0.9413 of its height. It is measured so that the ends of Trend come just
// into view.
Size innerSize(const Room& room, bool scrollBars);
// The same in twips and without scroll bars, as the question for a custom size takes it.
Size innerTwips(const Room& room);
// Where a surface begins that has no size yet.
Size wholeRoom(const Room& room);

struct GraphScaling {
    std::optional<Size> trend;     // twips; none: not touched
    bool openCustomDialog = false; // setting 3
    bool disableScaleMenu = false; // setting 4
    bool scrollBars = false;       // shown; hidden and set to 0 otherwise
    Box frame;                     // Frame1, pixels
    Box vScroll;                   // pixels
};
// `form` and `trend` in twips, `inner` in pixels; `factor` belongs to setting 4.
GraphScaling Graph_scale(
    int setting, const Size& form, const Size& inner, const Size& trend, double factor = 1);

struct CustomArrangement {
    Size trend; // twips
    Box frame;  // pixels
    int hScrollMax = 0;
    int vScrollMax = 0;
};
// ArrangeGraph for ScaleCustom 3; every other setting is Graph_scale's.
CustomArrangement arrangeCustom(
    const Size& form, const Size& inner, int customScaleLow, int customScaleHigh);

struct ResizeArrangement {
    Box frame;                 // pixels
    std::optional<Size> trend; // twips; none: Trend keeps its size
    Box vScroll;               // pixels
};
// Form_Resize by the setting that Mnu_Scale names.
ResizeArrangement arrangeResize(int setting, const Size& form, const Size& inner);

struct ScrollPlace {
    int hScrollMax = 0;
    int vScrollMax = 0;
    double trendLeft = 0; // twips
    double trendTop = 0;  // twips
};
// HScroll Change and VScroll Change: `trend` in twips, `frame` in pixels, values of both bars.
ScrollPlace scrollPlace(const Size& trend, const Size& frame, int hValue, int vValue);
// Steps of the bars for a frame of so many pixels.
struct ScrollSteps {
    int hPage = 0;
    int vPage = 0;
    int hSingle = 0;
    int vSingle = 0;
};
ScrollSteps scrollSteps(int frameWidthPx, int frameHeightPx);
// Values of both bars.
struct ScrollValues {
    int h = 0;
    int v = 0;
    friend bool operator==(const ScrollValues&, const ScrollValues&) = default;
};
// A place of the surface, 0 to 1 from its left top, and where in its frame it is seen.
struct SeenPlace {
    double along = 0;
    double down = 0;
    double frameXPx = 0;
    double frameYPx = 0;
};
// The values that keep a place where it is seen, on a surface of another size, twips. They may lie
// beyond the ends of the bars.
ScrollValues scrollToKeep(const Size& trend, const SeenPlace& place);
// Value of HScroll that brings the cursor into view; nothing without samples or a cursor.
std::optional<int> ScrollToCursor(int hScrollMax, int sampleCount, int cursorSample);

// --- The panel under the surface, pixels

// Rows of the panel: few where there is width for all columns, more where there is not.
inline constexpr int fewRows = 5;
inline constexpr int manyRows = 8;
// Columns that so many channels take.
int panelColumns(int channelCount, int rows);

inline constexpr int groupGapPx = 10;  // between two groups of channels
inline constexpr int columnGapPx = 6;  // between two columns of a group
inline constexpr int sideMarginPx = 6; // of the panel
inline constexpr int lineGapPx = 3;    // above, below and under the line of time and read-out
inline constexpr int timesGapPx = 2;   // between two lines of the track times
// Width of all columns in their groups, each column as wide as a cell; `timesPx` is that of the
// track times, none where they do not show.
int panelWidthPx(int columns, int groups, int cellPx, std::optional<int> timesPx);
int groupWidthPx(int columns, int cellPx);

struct BoxPx {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    friend bool operator==(const BoxPx&, const BoxPx&) = default;
};

// The cell of a channel: a toggle with a square of the channel's colour, a value, an overlay's
// value.
inline constexpr int squareSidePx = 11;
inline constexpr int squareGapPx = 5;
inline constexpr int squareLeftPx = squareGapPx - 2;
inline constexpr int cellPaddingPx = 4; // above and below the letters together
inline constexpr int cellSparePx = 70;  // of width that a cell takes beyond what it needs
inline constexpr int cellGrowthPx = 6;  // of height likewise
// Left and right of a value's letters, and those of a time's both together.
inline constexpr int valueLeftPx = 1;
inline constexpr int valueRightPx = 3;
inline constexpr int timePaddingPx = 6;
// Width of a toggle whose caption takes `textPx`, and of a cell whose longest value takes
// `valuePx`.
int toggleWidthPx(int textPx);
int cellWidthPx(int togglePx, int valuePx, bool withOverlay);
struct CellPlaces {
    BoxPx toggle;
    BoxPx value; // over the overlay's where that does not show
    BoxPx overlay;
};
CellPlaces cellPlaces(int widthPx, int heightPx, int togglePx, bool withOverlay);

// The line of time and read-out, with the loading panel at its right end.
inline constexpr int leastReadOutPx = 400;
struct ReadOutPlaces {
    BoxPx time;
    BoxPx between; // the time from a reference, where there is one
    BoxPx pointer;
    BoxPx runTitle;     // these two at the right end; the loading panel covers them
    BoxPx overlayTitle; // where there is one
    BoxPx loading;      // the next three lie in it
    BoxPx loadingText;
    BoxPx loadingFile;
    BoxPx progress;
};
// Of the texts; 0 for what does not show. The titles give way to the text under the pointer, and a
// long one to a short one.
struct ReadOutWidths {
    int timePx = 0;
    int betweenPx = 0;
    int pointerPx = 0;
    int runTitlePx = 0;
    int overlayTitlePx = 0;
    int loadingTextPx = 0;
    int loadingFilePx = 0;
};
ReadOutPlaces readOutPlaces(int widthPx, int heightPx, const ReadOutWidths& texts);

} // namespace kvo::graph
