#pragma once
// What lies on top of the kept picture until the next refresh: the time line, and the mark of a
// stretch that is averaged.
#include "platform/draw/surface.h"

#include <cstdint>

namespace kvo::graph {

// Colour of all of it.
platform::Colour timeLineColour(std::int32_t graphBackColour);

// The line at a sample, in place of what lay there before. The surface's position ends at its foot,
// where the arrow keys start from.
void drawTimeLine(platform::Surface& trend, int sample, std::int32_t graphBackColour);

// The right button's drag: a dotted line where it begins, in place of what lay there before.
void drawAverageStart(platform::Surface& trend, float x, std::int32_t graphBackColour);
// Its end: a cross over the stretch with the closing edge, and the word.
void drawAverage(platform::Surface& trend, float from, float to, std::int32_t graphBackColour);

} // namespace kvo::graph
