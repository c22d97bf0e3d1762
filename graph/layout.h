#pragma once
// The sizes of the graph window: how large Trend is in each setting, where its frame stands, how
// far the scroll bars go. The form's and Trend's sizes are twips (15 a pixel), the frame's and the
// form's inner size are pixels.
#include <optional>
#include <string>

namespace kvo::graph {

struct Size {
    double width = 0;
    double height = 0;
    friend bool operator==(const Size&, const Size&) = default;
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

inline constexpr const char* captionFull = "&Graph Scale(Full)  ";
inline constexpr const char* captionHalf = "&Graph Scale(1/2)  ";
inline constexpr const char* captionQuarter = "&Graph Scale(1/4)  ";
inline constexpr const char* captionCustom = "&Graph Scale(Custom)";

struct GraphScaling {
    std::optional<Size> trend;          // twips; nothing: not touched
    std::optional<std::string> caption; // of Mnu_Scale; nothing: as it was
    bool openCustomDialog = false;      // setting 3
    bool disableScaleMenu = false;      // setting 4
    bool scrollBars = false;            // shown; hidden and set to 0 otherwise
    Box frame;                          // Frame1, pixels
    Box vScroll;                        // pixels
};
// `form` and `trend` in twips, `inner` in pixels; `factor` belongs to setting 4.
GraphScaling Graph_scale(
    int setting, const Size& form, const Size& inner, const Size& trend, double factor = 1);

struct CustomArrangement {
    Size trend; // twips
    Box frame;  // pixels
    int hScrollMax = 0;
    int vScrollMax = 0;
    std::string caption;
};
// ArrangeGraph for ScaleCustom 3; every other setting is Graph_scale's.
CustomArrangement arrangeCustom(
    const Size& form, const Size& inner, int customScaleLow, int customScaleHigh);

struct ResizeArrangement {
    Box frame;                 // pixels
    std::optional<Size> trend; // twips; nothing: Trend keeps its size
    Box vScroll;               // pixels
};
// Form_Resize by the caption of Mnu_Scale.
ResizeArrangement arrangeResize(
    const std::string& scaleCaption, const Size& form, const Size& inner);

struct ScrollPlace {
    int hScrollMax = 0;
    int vScrollMax = 0;
    double trendLeft = 0; // twips
    double trendTop = 0;  // twips
};
// HScroll Change and VScroll Change: `trend` in twips, `frame` in pixels, values of both bars.
ScrollPlace scrollPlace(const Size& trend, const Size& frame, int hValue, int vValue);
// Value of HScroll that brings the cursor into view; nothing without samples or a cursor.
std::optional<int> ScrollToCursor(int hScrollMax, int sampleCount, int cursorSample);

} // namespace kvo::graph
