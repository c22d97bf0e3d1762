#pragma once
// DataGraph: the window in which a run is looked at: the surface, the panel of channels, a toolbar
// and the menus. How runs come and go is graph/course; what is drawn and shown is worked out in
// graph/; this class reads controls, calls, and writes controls.
#include "graph/course.h"
#include "graph/drawing.h"
#include "graph/read_outs.h"
#include "graph/view.h"
#include "platform/qt/commands.h"

#include <QMainWindow>

#include <optional>
#include <string>
#include <string_view>

namespace kvo::forms {

class ChannelPanel;
class GraphSurface;

class DataGraph : public QMainWindow, private graph::TrendHost, private graph::CourseView {
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

    // Screenshots as PNG files: the window as it stands, or the whole surface at a size of its own.
    // False when the file cannot be written.
    [[nodiscard]] bool saveWindowPicture(const QString& path);
    [[nodiscard]] bool saveGraphPicture(const QString& path, const QSize& sizePx);

    // The menus that a modal command closes.
    void enableMenus(bool on);
    // Runs the command of a toolbar button by its key, compared as exact text.
    void Toolbar1_ButtonClick(std::string_view key) { m_commands.press(key); }

    void Mnu_LoadData_Click() { m_course.Mnu_LoadData(); }
    void GraphChange_Click(int index) { m_course.GraphChange(index); }
    void Mnu_DeleteRun_Click() { m_course.Mnu_DeleteRun(); }
    void Mnu_Overlay_Click() { m_course.Mnu_Overlay(); }
    void Mnu_RedoClutch_Click() { m_course.Mnu_RedoClutch(); }
    void Mnu_TimeOffset_Click() { m_course.Mnu_TimeOffset(); }
    // What the graph is drawn by has changed: channels on and off, picture and time line follow.
    void takeOptions();
    // The configuration is saved when the window goes.
    void keepOptions();

    void Mnu_Info_Click();
    void Mnu_Statistics_Click();
    void Mnu_TimeGraph_Click();
    void Mnu_ImportFiles_Click(int item);
    void Mnu_Print_Click(int item);
    void Mnu_Options_Click();
    void Mnu_Close_Click() { close(); }
    void Convertor_Mnu_Click();
    void Mnu_GraphFile_Click();
    void Graph_Colour_Invert_Click();
    void Resolution_Click(int step);
    void Mnu_ScaleItem_Click(int item);
    void ZoomIn_Click();
    void ZoomOut_Click();
    void CancelZoom_Click();
    void Toggle_Click(int channel);
    void Value_DblClick(int channel);

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    // The window
    void makeControls();
    void makeCommands();
    void setTabOrders();
    void placePanels();
    void placeToolbar(int width);
    void Form_Load();
    void Form_Activate();
    void Form_Unload();
    void Form_Resize();

    // The picture
    void DrawTrend();
    void ChanaleEnable();
    void Change_Colour();
    void Resolution_Change(int step);
    std::optional<platform::Colour> Trend_Colour_Set(int channel);
    void applyTrendScale();
    void takeScale(std::optional<int> setting);
    std::optional<int> chooseCustomScale();
    void ArrangeGraph();
    void zoom(double factor);

    // Cursor, pointer and average
    graph::ReadOutInput readOutInput(const channels::ShownRuns& runs);
    channels::ShownRuns shownRuns() const;
    core::FromOne<std::string, 8> analogCaptions() const;
    void TimeLine();
    void showTimeLine();
    void placeCursor(double sample);
    void Trend_KeyDown(int key, Qt::KeyboardModifiers modifiers);
    void Trend_MouseDown(Qt::MouseButton button, float x, float y);
    void Trend_MouseUp(Qt::MouseButton button, float x, float y);
    void Trend_MouseMove(Qt::MouseButtons buttons, float x, float y);
    void startAverage(float x);
    void finishAverage(float x);
    void Label_DataChanel_Change(const QString& text);

    // graph::CourseView
    std::optional<core::ChosenRun> chooseRun(const std::string& title) override;
    void chooseRunsToDelete() override;
    void showState() override;
    void emptyLabels() override;
    void emptyOverlayLabels() override;
    void clearSurface() override;
    void setScaleRight(int right) override;
    void showChannelsForType(int dataType) override;
    void drawTrend() override { DrawTrend(); }
    void overLayDraw() override { m_drawing.OverLayDraw(); }
    void timeLine() override { TimeLine(); }

    // graph::TrendHost
    platform::Surface& trend() override;
    void setTrendHourglass(bool on) override;
    void showLoading(const std::string& text, const std::string& file) override;
    void hideLoading() override;
    void setProgressMax(double max) override;
    void setProgressValue(double value) override;
    void showLabels(const graph::LabelVisibility& labels) override;
    bool clutchLabelVisible() const override;
    void setOverlayLabelColour(int channel, std::int32_t colour) override;

    graph::GraphView m_view;
    graph::Course m_course;
    graph::TrendDrawing m_drawing;
    platform_qt::Commands m_commands;
    void openAsked();

    bool m_chooseOnShow = false;
    std::optional<core::ChosenRun> m_chosenElsewhere;
    QWidget* m_inner = nullptr;
    GraphSurface* m_surface = nullptr;
    ChannelPanel* m_panel = nullptr;
};

// Switches the graph's menus; every modal command of the graph wraps its work in it. Without a
// graph window it does nothing.
void EnableGraphMenus(bool on);

// The same for takeOptions() and keepOptions().
void redrawGraph();
void keepGraphOptions();

// The menus are off for as long as the object lives.
class GraphMenusDisabled {
public:
    GraphMenusDisabled() { EnableGraphMenus(false); }
    ~GraphMenusDisabled() { EnableGraphMenus(true); }
    GraphMenusDisabled(const GraphMenusDisabled&) = delete;
    GraphMenusDisabled& operator=(const GraphMenusDisabled&) = delete;
};

} // namespace kvo::forms
