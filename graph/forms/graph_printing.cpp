#include "graph/forms/graph_printing.h"

#include "core/shared_state.h"
#include "graph/forms/channel_panel.h"
#include "graph/forms/graph_surface.h"
#include "graph/forms/print_progress.h"
#include "graph/printing.h"
#include "platform/services.h"

namespace kvo::forms {

graph::PictureInput GraphPrinting::shown() const {
    const core::SharedState& state = core::state();
    const platform::DisplayListSurface& surface = m_surface.trend().surface();
    return {state.Config, state.Run, state.Overlay, m_view, surface.upper(), surface.scale(),
        m_surface.partInView(), m_panel.clutchLabelVisible(), m_course.caption(),
        m_panel.shownTexts(state.Config, state.Run.times, m_course.overlayLoaded())};
}

void GraphPrinting::Mnu_Print(int item) {
    if (!m_course.hasRun()) return;
    PrintProgress progress(m_surface.window());
    const platform::Services& services = platform::services();
    graph::Mnu_Print(item, shown(), core::state().AnalogPicture,
        {*services.printer, *services.dialogs, m_host, progress});
}

} // namespace kvo::forms
