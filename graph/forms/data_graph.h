#pragma once
// DataGraph: the window in which a run is looked at. Its parts are the surface and the panel of
// channels, and around them the commands, the cursor, the channels' toggles and colours, the scale
// and the printing, each a class of its own. The window makes them, gives them their places, and is
// what the course of the runs (graph/course) asks to show something.
#include "graph/course.h"
#include "graph/drawing.h"
#include "graph/forms/graph_channels.h"
#include "graph/forms/graph_commands.h"
#include "graph/forms/graph_cursor.h"
#include "graph/forms/graph_export.h"
#include "graph/forms/graph_printing.h"
#include "graph/forms/graph_scale.h"
#include "graph/forms/shown_trend.h"
#include "graph/view.h"

#include <QMainWindow>

#include <optional>
#include <string>

namespace kvo::forms {

class ChannelPanel;
class GraphSurface;

class DataGraph final : public QMainWindow, private graph::CourseView {
    Q_OBJECT

public:
    DataGraph();

    // The run file that a download has just written, under its caption.
    void openFresh(const std::string& path, const std::string& caption);

    // Comes to the front with a run that was chosen elsewhere; with none it asks the chooser.
    void openChosen(const std::optional<core::ChosenRun>& run);

    // The window's caption; "Data Graph" is the window without a run.
    std::string caption() const { return m_course.caption(); }
    bool hasRun() const { return m_course.hasRun(); }
    const graph::GraphView& view() const { return m_view; }
    GraphCommands& commands() { return m_commands; }
    GraphChannels& channels() { return m_channels; }
    GraphExport& exporting() { return m_exporting; }

    // A screenshot as a PNG file. False when the file cannot be written.
    [[nodiscard]] bool saveWindowPicture(const QString& path);

    // What the graph is drawn by has changed: channels on and off, picture and time line follow.
    void takeOptions();
    // The configuration is saved when the window goes.
    void keepOptions();

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void makeControls();
    void setTabOrders();
    void placePanels();
    void placeToolbar(int width);
    void ArrangeGraph();
    void Form_Load();
    void Form_Activate();
    void Form_Unload();
    void Form_Resize();
    void openAsked(int afterMs = 0);
    void rememberRun();

    // graph::CourseView
    std::optional<core::ChosenRun> chooseRun(const std::string& title) override;
    void chooseRunsToDelete() override;
    void showState() override;
    void emptyLabels() override;
    void emptyOverlayLabels() override;
    void clearSurface() override;
    void setScaleRight(int right) override;
    void showChannelsForType(int dataType) override;
    void drawTrend() override;
    void overLayDraw() override { m_drawing.OverLayDraw(); }
    void timeLine() override { m_cursor.TimeLine(); }

    QWidget* m_inner;
    GraphSurface* m_surface;
    ChannelPanel* m_panel;
    graph::GraphView m_view;
    graph::Course m_course;
    ShownTrend m_shown;
    graph::TrendDrawing m_drawing;
    GraphCursor m_cursor;
    GraphScale m_scale;
    GraphChannels m_channels;
    GraphPrinting m_printing;
    GraphExport m_exporting;
    GraphCommands m_commands;
    std::string m_remembered; // the run that was shown last
    bool m_chooseOnShow = false;
    bool m_choosing = false; // the chooser is up, or closed but not yet back
    std::optional<core::ChosenRun> m_chosenElsewhere;
};

// The same as takeOptions() and keepOptions(). Without a graph window they do nothing.
void redrawGraph();
void keepGraphOptions();

} // namespace kvo::forms
