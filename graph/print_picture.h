#pragma once
// The graph window on a page: the run's title, the graph drawn anew at the page's resolution, and
// under it what the panel of channels shows. Buttons stay on the screen.
#include "core/config_record.h"
#include "core/open_run.h"
#include "graph/layout.h"
#include "graph/print_panel.h"
#include "graph/view.h"
#include "platform/draw/display_list.h"
#include "platform/draw/pixel_scale.h"
#include "platform/printer.h"

#include <string>

namespace kvo::graph {

// What is printed. All that is referred to must outlive the printing; nothing of it is changed.
// What a window draws anew while a question stands over it is kept here.
struct PictureInput {
    const core::AppConfig& config;
    const core::OpenRun& run;
    const core::OpenRun& overlay;
    const GraphView& view;
    platform::DisplayList onTop; // the line of the cursor, or the mark of an average
    platform::UserScale scale;   // of the whole surface
    SurfacePart part;            // of the surface that is in view
    bool clutchLabelVisible = true;
    std::string caption; // of the window; a file's text
    PanelTexts panel;
};

// Draws it on the job's page at hand.
void printPicture(platform::PrintJob& job, const PictureInput& input);

} // namespace kvo::graph
