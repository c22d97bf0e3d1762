#pragma once
// How light a colour is and how well two of them are told apart, by the formulas of WCAG 2.
#include "platform/draw/colour.h"

namespace kvo::platform {

// The light of one channel of a colour, 0 to 255, as sRGB has it: 0 to 1. And back, cut.
double lightOfChannel(int channel);
int channelOfLight(double light);
// Relative luminance, 0 for black to 1 for white.
double luminance(Colour colour);
// From 1 for the same luminance to 21 for black on white, in either order.
double contrast(Colour one, Colour other);
// Black or white, whichever reads better on a ground; black where both do.
Colour readableOn(Colour ground);

} // namespace kvo::platform
