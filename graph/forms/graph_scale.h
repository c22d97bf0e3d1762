#pragma once
// Mnu_Scale and the zoom of the graph window: how large the surface is, and what is drawn anew when
// that changes. The sizes themselves are worked out in graph/layout.
#include "graph/course.h"
#include "graph/layout.h"
#include "graph/view.h"

#include <QPointF>

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
    // A step in (1) or out (-1) about a place of the screen, which stays where it is.
    void zoomAbout(int direction, const QPointF& global);
    // The whole run in its frame.
    void fitWhole();
    // To where the last zoom, or the fit of the whole run, started from.
    void stepBack();
    // The cursor into view.
    void ScrollToCursor();
    // The surface in its frame, without drawing it.
    void showFull();

private:
    void takeScale(std::optional<int> setting);
    void applyTrendScale();
    void redraw(std::optional<int> setting);
    void grow(double factor);
    void offerCancel();
    void zoom(double factor);
    graph::ZoomPlace place() const;

    graph::GraphView& m_view;
    graph::Course& m_course;
    graph::CourseView& m_window;
    GraphSurface& m_surface;
};

} // namespace kvo::forms
