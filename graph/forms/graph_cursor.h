#pragma once
// Cursor, pointer and average of the graph window: what keys and mouse do on the surface, and the
// read-outs that follow them. What a place means is worked out in graph/cursor and graph/read_outs.
#include "channels/run_view.h"
#include "graph/course.h"
#include "graph/forms/spoken_graph.h"
#include "graph/read_outs.h"
#include "graph/view.h"

#include <QObject>
#include <QString>

#include <optional>

namespace kvo::forms {

class ChannelPanel;
class GraphSurface;

class GraphCursor : public QObject, private GraphVoice {
    Q_OBJECT

public:
    // Listens to the surface from then on. What is handed in must outlive it.
    GraphCursor(graph::GraphView& view, const graph::Course& course, GraphSurface& surface,
        ChannelPanel& panel);
    ~GraphCursor() override;

    // The line at the cursor and its read-outs; a beep where the cursor lies outside of the run.
    // The keys go to the surface.
    void TimeLine();
    // The reference of the differences, at the cursor; a beep where the cursor lies outside of the
    // run.
    void setReference();
    // An average by the keys: the first call marks the cursor, the second averages from there.
    void average();
    // The mark that was set last.
    void takeMarkAway();
    // The cursor on the first sample of the run, or on its last.
    void goToEnd(bool last);
    // The text under the pointer; a narrow window shows it as a tool tip.
    void Label_DataChanel_Change(const QString& text);

signals:
    // A mark was set or taken away.
    void marksChanged();

private:
    // GraphVoice
    QString spokenName() const override;
    QString spokenValue() const override;
    double spokenTime() const override { return timeOfSample(m_view.CursorSample); }
    double firstTime() const override { return timeOfSample(1); }
    double lastTime() const override;
    void goToTime(double seconds) override;

    double timeOfSample(int sample) const;
    bool cursorInRun() const;
    void dragTo(float x);
    graph::ReadOutInput readOutInput(const channels::ShownRuns& runs);
    channels::ShownRuns shownRuns() const;
    void showTimeLine();
    void showTexts(const graph::ReadOutInput& input, const graph::ReadOutTexts& texts,
        std::optional<int> cursor);
    void uncoverSecondValues();
    void placeCursor(double sample);
    void Trend_KeyDown(int key, Qt::KeyboardModifiers modifiers);
    void Trend_MouseDown(Qt::MouseButton button, float x, float y);
    void Trend_MouseUp(Qt::MouseButton button, float x, float y);
    void Trend_MouseMove(Qt::MouseButtons buttons, float x, float y);
    void startAverage(float x);
    void finishAverage(float x);

    graph::GraphView& m_view;
    const graph::Course& m_course;
    GraphSurface& m_surface;
    ChannelPanel& m_panel;
    bool m_dragging = false; // with the left button
};

} // namespace kvo::forms
