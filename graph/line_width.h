#pragma once
// How wide the curves are drawn on the screen. It is the user's and not the folder's: what suits a
// screen suits every run that is looked at on it.
#include "platform/settings.h"

namespace kvo::graph {

inline constexpr int thinnestLinePx = 1;
inline constexpr int thickestLinePx = 3;

// The width that was chosen last; the thinnest where none was, or what is kept is none.
int keptLineWidth(const platform::Settings& settings);
void keepLineWidth(platform::Settings& settings, int widthPx);

} // namespace kvo::graph
