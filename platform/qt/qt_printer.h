#pragma once
// Printing through the desktop: the user's printers, or a PDF file where there is none.
#include "platform/printer.h"

class QWidget;

namespace kvo::platform_qt {

class QtPrinter : public platform::Printer {
public:
    platform::Printed printPicture(
        const platform::PixelPicture& picture, const std::string& documentName) override;
};

// What a window shows, pixel for pixel.
platform::PixelPicture pictureOf(QWidget& window);

} // namespace kvo::platform_qt
