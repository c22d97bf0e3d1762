#pragma once
// The same curves through QCustomPlot, where it is on the machine.
#include "platform/draw/surface.h"

#include <functional>
#include <vector>

namespace kvo::bench {

using Curves = std::vector<std::vector<platform::Point>>;

// A full redraw of the curves on 1920x1080 with the trend's scale, `rows` samples wide; an empty
// function without QCustomPlot. `smooth` leaves its antialiasing as it comes.
std::function<void()> qcustomplotRedraw(
    const Curves& curves, int rows, bool smooth, int lineWidthPx);

} // namespace kvo::bench
