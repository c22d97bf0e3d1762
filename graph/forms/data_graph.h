#pragma once
// DataGraph: the window in which a run is looked at. It holds the surface Trend in Frame1, the
// channels' toggles and value labels in Frame3, a toolbar and the menus. What is drawn and shown is
// worked out in graph/; this class reads controls, calls, and writes controls.
#include "core/run_file.h"
#include "graph/drawing.h"
#include "graph/forms/channel_cell.h"
#include "graph/forms/read_out_line.h"
#include "graph/layout.h"
#include "graph/read_outs.h"
#include "graph/run_tools.h"
#include "graph/view.h"
#include "platform/qt/surface_widget.h"

#include <QMainWindow>

#include <array>
#include <string>
#include <string_view>
#include <vector>

class QAction;
class QFrame;
class QGridLayout;
class QHBoxLayout;
class QMenu;
class QScrollBar;
class QToolBar;

namespace kvo::forms {

class DataGraph : public QMainWindow, private graph::TrendHost, private core::RunLoadView {
    Q_OBJECT

public:
    DataGraph();

    // The window's caption; "Data Graph" is the window without a run.
    void setCaption(const std::string& caption) override;
    std::string caption() const;
    bool hasRun() const;
    const graph::GraphView& view() const { return m_view; }

    // Pictures as PNG files: the window as it stands, or the whole surface at a size of its own.
    // False when the file cannot be written.
    [[nodiscard]] bool saveWindowPicture(const QString& path);
    [[nodiscard]] bool saveGraphPicture(const QString& path, const QSize& sizePx);

    // The menus that a modal command closes.
    void enableMenus(bool on);
    // Runs the command of a toolbar button by its key, compared as exact text.
    void Toolbar1_ButtonClick(std::string_view key);

    void Mnu_LoadData_Click();
    // 0 shows the run before in the chooser's list, 1 the one behind.
    void GraphChange_Click(int index);
    void Mnu_DeleteRun_Click();
    void Mnu_Statistics_Click();
    void Mnu_Overlay_Click();
    void Mnu_RedoClutch_Click();
    void Mnu_TimeOffset_Click();
    void Mnu_Close_Click();
    void Mnu_GraphFile_Click();
    void Graph_Colour_Invert_Click();
    void Resolution_Click(int step);
    void Mnu_ScaleItem_Click(int item);
    void ZoomIn_Click();
    void ZoomOut_Click();
    void CancelZoom_Click();
    void Toggle_Click(int channel);
    void Value_DblClick(int channel);

    struct MenuRow;
    struct ToolRow;

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    // data_graph.cpp: the run and the picture
    void Form_Load();
    void Form_Activate();
    void Form_Unload();
    void openFreshRun();
    bool readRun(const std::string& chosenName);
    void clearOverlay();
    void loadOverlay(const std::string& chosenName);
    void unloadOverlay();
    void cutOverlayCaption();
    void enableTools(bool on);
    void finishTool(const graph::ToolResult& result);
    void showChosenRun();
    void clearGraph();
    void backToShownRun();
    void DrawTrend();
    void redrawAll();
    void TimeLine();
    void uncoverOverlay();
    void showTimeLine();
    void showTexts(const std::string& loggerTime, const std::vector<graph::LabelText>& labels);
    void placeCursor(double sample);
    void applyTrendScale();
    void Trend_KeyDown(int key, Qt::KeyboardModifiers modifiers);
    void Trend_MouseDown(Qt::MouseButton button, float x, float y);
    void Trend_MouseUp(Qt::MouseButton button, float x, float y);
    void startAverage(float x);
    void finishAverage(float x);
    void Trend_MouseMove(Qt::MouseButtons buttons, float x, float y);
    void Label_DataChanel_Change();

    // graph::TrendHost
    platform::Surface& trend() override { return Trend->surface(); }
    void setTrendHourglass(bool on) override;
    void showLoading(const std::string& text, const std::string& file) override;
    void hideLoading() override;
    void setProgressMax(double max) override;
    void setProgressValue(double value) override;
    void showLabels(const graph::LabelVisibility& labels) override;
    bool clutchLabelVisible() const override;
    void setOverlayLabelColour(int channel, std::int32_t colour) override;

    // core::RunLoadView
    void appendOverlayCaption(const std::string& caption) override;
    void setScaleRight(int right) override;
    void setAnalogCaption(int channel, const std::string& caption) override;
    void showProgress(bool on) override;
    void loadRunTimes() override;

    // data_graph_layout.cpp: where everything stands
    void makeControls();
    void makeSurface();
    QWidget* makeTimes();
    void makeGroup(QHBoxLayout& panels, int group);
    void placeCells(int group);
    void limitWidth(int group);
    void setTabOrders();
    void Form_Resize();
    void ArrangeGraph();
    void Graph_scale(int setting, double factor = 1);
    void applyScaling(int setting, const graph::GraphScaling& scaling);
    void placePanels();
    void setTrendSize(const graph::Size& twips);
    void setFrame(const graph::Box& box, bool scrollBars);
    void reapplyScrollBars();
    void HScroll_Change();
    void VScroll_Change();
    void ScrollToCursor();
    graph::Size formSize() const;
    graph::Size innerSize(bool scrollBars) const;

    // data_graph_channels.cpp: toggles, labels, colours
    void ChanaleEnable();
    void Change_Colour();
    void ShowChannelsForType(int type);
    void Trend_Colour_Set(int channel);
    void channelMenu(int channel, const QPoint& place);
    ChannelCell& cell(int channel) const { return *m_cells[static_cast<std::size_t>(channel)]; }
    QString channelCaption(int channel) const;
    static QString standIn(int channel);

    // data_graph_menus.cpp: what stands in the menus and on the toolbar
    void makeMenus();
    void addCommand(const MenuRow& row);
    void makeToolbar();
    void enableRunCommands(bool on);
    void enableNeighbours();
    void Resolution_Change(int step);
    void zoom(double factor);
    QMenu* menuNamed(const char* name) const;
    QAction* command(const char* name) const;
    QAction* key(const char* name) const;

    graph::GraphView m_view;
    graph::Size m_trendSize; // of Trend, twips
    graph::Box m_frame;      // Frame1 as the rules measure it
    int m_roomHeight = 0;    // between toolbar and panel, pixels
    std::string m_caption;
    std::string m_shownFile; // path of the run in the window
    std::string m_shownInfo; // and of its info file
    bool m_chooseOnShow = false;
    bool m_settled = false; // the window stands and has been in front once

    QWidget* m_inner = nullptr;
    QToolBar* Toolbar1 = nullptr;
    QFrame* Frame1 = nullptr;
    platform_qt::SurfaceWidget* Trend = nullptr;
    QScrollBar* HScroll = nullptr;
    QScrollBar* VScroll = nullptr;
    QFrame* Frame3 = nullptr;
    ReadOutLine* m_readOuts = nullptr;
    QLabel* Label15 = nullptr; // heading of the exhausts
    QWidget* Frame_Times = nullptr;
    std::array<ChannelCell*, channels::channelCount> m_cells{};
    std::vector<QWidget*> m_groups;
    graph::TrendDrawing m_drawing;
};

// Switches the graph's menus; every modal command of the graph wraps its work in it. Without a
// graph window it does nothing.
void EnableGraphMenus(bool on);

} // namespace kvo::forms
