#include "platform/printer.h"

namespace kvo::platform {

namespace {

constexpr float headingPoints = 12;
constexpr float belowHeading = 0.01F; // of the page's height

void printHeading(PrintJob& job, std::string_view heading) {
    job.surface().setForeColor(black);
    job.surface().setFontSize(headingPoints);
    const float width = job.textWidth(heading);
    if (width > 1) job.surface().setFontSize(headingPoints / width);
    job.printAt(0, 0, heading, TextSide::left);
    job.setFrame({0, job.lineHeight() + belowHeading, 1, 1});
}

} // namespace

PrintResult Printer::printPicture(
    const PixelImage& picture, const std::string& documentName, std::string_view heading) {
    if (picture.widthPx < 1 || picture.heightPx < 1) {
        return {Printed::failed, "There is no picture to print."};
    }
    const auto turned =
        picture.widthPx > picture.heightPx ? Orientation::landscape : Orientation::portrait;
    PrintStart start = begin({documentName, turned});
    if (!start.result) return start.result;
    if (!heading.empty()) printHeading(*start.job, heading);
    start.job->drawImage(picture);
    return start.job->endDoc();
}

} // namespace kvo::platform
