#pragma once
// What lies on top of the kept picture until the next refresh: the time line, and the mark of a
// stretch that is averaged.
#include "graph/view.h"
#include "platform/draw/surface.h"

#include <cstdint>

namespace kvo::graph {

// Colour of all of it.
platform::Colour timeLineColour(std::int32_t graphBackColour);

// Colour of the reference line: white, or black on a light background.
platform::Colour referenceColour(std::int32_t graphBackColour);

// The line at a sample, in place of what lay there before. The surface's position ends at its foot,
// where the arrow keys start from. The lines of the marks lie below it: a dashed one of the
// reference, a dotted one where an average begins.
void drawTimeLine(
    platform::Surface& trend, int sample, std::int32_t graphBackColour, const Marks& marks = {});

// The right button's drag: a dotted line where it begins, in place of what lay there before but the
// line of the reference.
void drawAverageStart(
    platform::Surface& trend, float x, std::int32_t graphBackColour, const Marks& marks = {});
// Its end: a cross over the stretch with the closing edge, and the word.
void drawAverage(platform::Surface& trend, float from, float to, std::int32_t graphBackColour);

} // namespace kvo::graph
