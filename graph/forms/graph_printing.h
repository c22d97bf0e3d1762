#pragma once
// Mnu_Print of the graph window: what it shows, handed to the printing.
#include "graph/course.h"
#include "graph/drawing.h"
#include "graph/print_picture.h"
#include "graph/view.h"

namespace kvo::forms {

class ChannelPanel;
class GraphSurface;

class GraphPrinting {
public:
    // What is handed in must outlive it.
    GraphPrinting(const graph::GraphView& view, const graph::Course& course, graph::TrendHost& host,
        GraphSurface& surface, ChannelPanel& panel)
        : m_view(view), m_course(course), m_host(host), m_surface(surface), m_panel(panel) {}

    // An item of Mnu_Print; nothing without a run. Its progress stands over the window.
    void Mnu_Print(int item);
    // What the window shows, for a page. It refers to the window and to the state.
    graph::PictureInput shown() const;

private:
    const graph::GraphView& m_view;
    const graph::Course& m_course;
    graph::TrendHost& m_host;
    GraphSurface& m_surface;
    ChannelPanel& m_panel;
};

} // namespace kvo::forms
