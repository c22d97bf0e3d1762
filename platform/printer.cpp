#include "platform/printer.h"

namespace kvo::platform {

PrintResult Printer::printPicture(const PixelImage& picture, const std::string& documentName) {
    if (picture.widthPx < 1 || picture.heightPx < 1) {
        return {Printed::failed, "There is no picture to print."};
    }
    const auto turned =
        picture.widthPx > picture.heightPx ? Orientation::landscape : Orientation::portrait;
    PrintStart start = begin({documentName, turned});
    if (!start.result) return start.result;
    start.job->drawImage(picture);
    return start.job->endDoc();
}

} // namespace kvo::platform
