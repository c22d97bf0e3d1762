#pragma once
// What lies on top of the kept picture until the next refresh: the time line, and the mark of a
// stretch that is averaged.
#include "platform/draw/surface.h"

#include <cstdint>
#include <optional>

namespace kvo::graph {

// Colour of all of it.
platform::Colour timeLineColour(std::int32_t graphBackColour);

// Colour of the reference line: white, or black on a light background.
platform::Colour referenceColour(std::int32_t graphBackColour);

// The line at a sample, in place of what lay there before. The surface's position ends at its foot,
// where the arrow keys start from. The line of a reference, where there is one, lies below it.
void drawTimeLine(platform::Surface& trend, int sample, std::int32_t graphBackColour,
    std::optional<int> reference = {});

// The right button's drag: a dotted line where it begins, in place of what lay there before. The
// reference line stays.
void drawAverageStart(platform::Surface& trend, float x, std::int32_t graphBackColour,
    std::optional<int> reference = {});
// Its end: a cross over the stretch with the closing edge, and the word.
void drawAverage(platform::Surface& trend, float from, float to, std::int32_t graphBackColour);

} // namespace kvo::graph
