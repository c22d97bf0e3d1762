// Mnu_Print: what the window shows, handed to the printing.
#include "core/shared_state.h"
#include "graph/forms/channel_panel.h"
#include "graph/forms/data_graph.h"
#include "graph/forms/graph_surface.h"
#include "graph/forms/print_progress.h"
#include "graph/printing.h"
#include "platform/services.h"

namespace kvo::forms {

void DataGraph::Mnu_Print_Click(int item) {
    if (!hasRun()) return;
    core::SharedState& state = core::state();
    const platform::DisplayListSurface& surface = m_surface->trend().surface();
    const graph::PictureInput shown{state.Config, state.Run, state.Overlay, m_view, surface.upper(),
        surface.scale(), m_surface->partInView(), clutchLabelVisible(), caption(),
        m_panel->shownTexts()};
    PrintProgress progress(this);
    const GraphMenusDisabled off;
    const platform::Services& services = platform::services();
    graph::Mnu_Print(
        item, shown, state.AnalogPicture, {*services.printer, *services.dialogs, *this, progress});
}

} // namespace kvo::forms
