#pragma once
// A window as it is printed: what it says, in dark letters on white whatever the desktop's colours
// are, without what is only there to be pressed.
#include "platform/printer.h"

class QWidget;

namespace kvo::platform_qt {

// The picture of it, cut to what is left. The window on the screen stays as it is.
platform::PixelImage paperPictureOf(QWidget& window);

} // namespace kvo::platform_qt
