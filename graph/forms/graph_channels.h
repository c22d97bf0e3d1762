#pragma once
// The channels of the graph window as the user has them: on and off, and in which colours. Every
// change is drawn at once and saved when the window goes.
#include "graph/colour_schemes.h"
#include "graph/course.h"
#include "graph/drawing.h"
#include "graph/view.h"
#include "platform/draw/colour.h"

#include <QObject>

#include <optional>

namespace kvo::forms {

class ChannelPanel;

class GraphChannels : public QObject {
    Q_OBJECT

public:
    // Listens to the panel from then on. What is handed in must outlive it.
    GraphChannels(graph::GraphView& view, graph::Course& course, graph::CourseView& window,
        graph::TrendDrawing& drawing, graph::TrendHost& host, ChannelPanel& panel);

    // Toggles and labels by which channels are on.
    void ChanaleEnable();
    void Change_Colour();
    void Toggle_Click(int channel);
    void Value_DblClick(int channel);
    // Asks for another background.
    void Graph_Colour_Invert();
    // All colours at once; asks first where some were chosen by hand.
    void chooseScheme(graph::ColourScheme scheme);
    // Of the curves, 1 to 3 pixels; every window has it from then on.
    void chooseLineWidth(int widthPx);

private:
    std::optional<platform::Colour> Trend_Colour_Set(int channel);
    void showNewGround();

    graph::GraphView& m_view;
    graph::Course& m_course;
    graph::CourseView& m_window;
    graph::TrendDrawing& m_drawing;
    graph::TrendHost& m_host;
    ChannelPanel& m_panel;
};

} // namespace kvo::forms
