#pragma once
// What the commands of the graph window need; each bit is met or not by the state of the window.
#include "platform/qt/commands.h"

namespace kvo::forms::graphNeeds {

inline constexpr platform_qt::Needs run = 1;        // a run in the window
inline constexpr platform_qt::Needs noOverlay = 2;  // no second run over it
inline constexpr platform_qt::Needs runBefore = 4;  // a run before the choice of the list
inline constexpr platform_qt::Needs runBehind = 8;  // and one behind it
inline constexpr platform_qt::Needs zoomed = 16;    // a zoom that can be cancelled
inline constexpr platform_qt::Needs notZoomed = 32; // one of the sizes of Mnu_Scale

} // namespace kvo::forms::graphNeeds
