#pragma once
// Mnu_Print: the picture of the graph window, the table of its run, or both in one document.
#include "graph/drawing.h"
#include "graph/print_picture.h"
#include "graph/print_text.h"
#include "platform/dialogs.h"
#include "platform/printer.h"

#include <string>

namespace kvo::graph {

// The items of Mnu_Print.
inline constexpr int printScreen = 0;
inline constexpr int printData = 1;
inline constexpr int printScreenAndData = 2;

// Where it is printed, who is told of a failure, and who watches.
struct PrintPlace {
    platform::Printer& printer;
    platform::Dialogs& dialogs;
    TrendHost& window; // whose surface has the hourglass
    PrintProgress& progress;
};

// Asks once where to, and prints. Of a document that fails or is cancelled nothing is printed; a
// failure is told. `analogPicture` is the shared slot of AnalogFormat.
void Mnu_Print(
    int item, const PictureInput& input, std::string& analogPicture, const PrintPlace& place);

} // namespace kvo::graph
