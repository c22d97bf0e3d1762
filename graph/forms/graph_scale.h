#pragma once
// Mnu_Scale and the zoom of the graph window: how large the surface is, and what is drawn anew when
// that changes. The sizes themselves are worked out in graph/layout.
#include "graph/course.h"
#include "graph/layout.h"
#include "graph/view.h"

#include <optional>

namespace kvo::forms {

class GraphSurface;

class GraphScale {
public:
    // What is handed in must outlive it.
    GraphScale(graph::GraphView& view, graph::Course& course, graph::CourseView& window,
        GraphSurface& surface)
        : m_view(view), m_course(course), m_window(window), m_surface(surface) {}

    // The surface as the configuration has it.
    void ArrangeGraph();
    // An item of Mnu_Scale but the custom size.
    void choose(int item);
    // The custom size, twips; none where the question for it was left by Cancel.
    void chooseCustom(const std::optional<graph::Size>& size);
    void ZoomIn();
    void ZoomOut();
    void CancelZoom();
    // The surface in its frame, without drawing it.
    void showFull();

private:
    void takeScale(std::optional<int> setting);
    void applyTrendScale();
    void redraw(std::optional<int> setting);
    void zoom(double factor);
    void ScrollToCursor();

    graph::GraphView& m_view;
    graph::Course& m_course;
    graph::CourseView& m_window;
    GraphSurface& m_surface;
};

} // namespace kvo::forms
