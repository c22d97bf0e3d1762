#pragma once
// The file that an export goes to: what it is called, where it lies, and that nothing is lost on
// the way.
#include "platform/bytes.h"
#include "platform/dialogs.h"
#include "platform/files.h"

#include <optional>
#include <string>
#include <string_view>

namespace kvo::graph {

// A form in which a run is taken along.
struct ExportForm {
    const char* title;     // of the question
    const char* kind;      // as the question lists it
    const char* extension; // with its point
};
inline constexpr ExportForm csvForm{"Export as CSV", "Comma separated values (*.csv)", ".csv"};
inline constexpr ExportForm pngForm{"Export as PNG", "PNG picture (*.png)", ".png"};
inline constexpr ExportForm svgForm{"Export as SVG", "SVG drawing (*.svg)", ".svg"};
inline constexpr ExportForm pdfForm{"Export as PDF", "PDF document (*.pdf)", ".pdf"};

// The sides of a picture, pixels. The largest takes 256 MB while it is made.
inline constexpr int leastPictureSide = 200;
inline constexpr int mostPictureSide = 8000;

// A name that every file system takes, from date, number and title of a run's header line; of a
// line that says nothing from the name of its file. UTF-8, without an extension.
std::string exportName(std::string_view headerLine, std::string_view fileName);
// The path with the extension behind it, unless it ends in that already, whatever its case.
std::string withExtension(std::string path, std::string_view extension);

// Asks for the path of an export, first with `name` in `folder`, and before something that is there
// is replaced. Nothing where it is left without one; else the folder that was chosen is kept in
// `folder`.
std::optional<std::string> askExportPath(const ExportForm& form, const std::string& name,
    std::string& folder, platform::Dialogs& dialogs, const platform::Files& files);

// Writes it whole, or leaves what was there; a failure is told under the form's title.
void writeExport(const ExportForm& form, const std::string& path, const platform::Bytes& content,
    platform::Dialogs& dialogs, platform::Files& files);

} // namespace kvo::graph
