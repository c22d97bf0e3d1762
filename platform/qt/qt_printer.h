#pragma once
// Printing through the desktop: the user's printers, or a PDF file where there is none.
#include "platform/printer.h"

class QWidget;

namespace kvo::platform_qt {

class QtPrinter : public platform::Printer {
public:
    platform::Printed printPicture(
        const platform::PixelImage& picture, const std::string& documentName) override;
};

// What a window shows, pixel for pixel.
platform::PixelImage pictureOf(QWidget& window);

} // namespace kvo::platform_qt
