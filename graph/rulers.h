#pragma once
// The rulers of an enlarged surface: the grid's rpm and mph at the left edge of the frame, its
// times at the upper one, from where the surface's own are scrolled out of view. Everything is in
// device pixels of the frame, so that a tick meets its line of the grid at any scale factor.
#include "core/config_record.h"
#include "graph/grid.h"
#include "platform/draw/pixel_scale.h"

#include <functional>
#include <string>
#include <vector>

namespace kvo::graph {

// What the grid in the window was drawn by; no samples without one.
struct RulerScales {
    GridInput grid;
    bool withRpm = false;
    bool withMph = false;
};
RulerScales rulerScales(const core::AppConfig& config, const GridInput& grid);

// Which part of the surface the frame shows.
struct RulerRoom {
    platform::SurfaceSize surface;
    platform::PixelPoint scrolledTo; // of the surface, at the left top of the frame
    int widthPx = 0;                 // of the frame
    int heightPx = 0;
};

struct RulerLetters {
    int linePx = 0; // height of a line
    std::function<int(const std::string&)> widthPx;
};

struct RulerText {
    platform::PixelPoint leftTop;
    std::string text;
    friend bool operator==(const RulerText&, const RulerText&) = default;
};

struct Ruler {
    platform::PixelRect ground; // empty: the surface's own numbers are in view
    std::vector<int> ticks;     // y or x of the lines, at the inner edge of the ground
    std::vector<RulerText> texts;
    friend bool operator==(const Ruler&, const Ruler&) = default;
};

struct Rulers {
    Ruler heights; // rpm under its tick, mph above it
    Ruler times;   // over the upper end of `heights`
};

// No text is cut, and none touches another: a step of 1, 2 or 5 is chosen that leaves room, finer
// than the grid's where its lines are far apart.
Rulers makeRulers(const RulerScales& scales, const RulerRoom& room, const RulerLetters& letters);

} // namespace kvo::graph
