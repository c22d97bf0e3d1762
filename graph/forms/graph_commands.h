#pragma once
// The menus and the toolbar of the graph window: what stands where, what it needs, and what each
// command runs.
#include "core/basic/from_one.h"
#include "graph/course.h"
#include "graph/layout.h"
#include "graph/view.h"
#include "platform/qt/commands.h"

#include <QObject>
#include <QPointer>

#include <optional>
#include <string>
#include <vector>

class QMainWindow;
class QToolBar;

namespace kvo::forms {

class GraphChannels;
class GraphCursor;
class GraphExport;
class GraphPrinting;
class GraphScale;
class GraphSurface;

// What the commands work on. All of it must outlive them.
struct GraphParts {
    graph::GraphView& view;
    graph::Course& course;
    graph::CourseView& window;
    GraphSurface& surface;
    GraphCursor& cursor;
    GraphScale& scale;
    GraphChannels& channels;
    GraphPrinting& printing;
    GraphExport& exporting;
};

class GraphCommands : public QObject {
    Q_OBJECT

public:
    explicit GraphCommands(const GraphParts& parts);

    // Its menus and its toolbar, for a list of all commands.
    static std::vector<platform_qt::CommandRow> commandRows();

    // Fills the window's menu bar and makes its toolbar, whose place is the window's.
    QToolBar& make(QMainWindow& window);
    QToolBar& toolbar() const { return m_commands.toolbar(); }
    // Captions, check marks and what is enabled, from the state of the window.
    void showState();
    // The caption and the check marks of the resolution; the state of the window leaves them alone.
    void Resolution_Change(int step);
    // The menus that a modal command closes.
    void EnableGraphMenus(bool on);

    void Mnu_LoadData_Click();
    void GraphChange_Click(int index); // 0 back, 1 forward
    void Mnu_Overlay_Click();
    void Mnu_DeleteRun_Click();
    void Mnu_RedoClutch_Click();
    void Mnu_TimeOffset_Click();
    void Mnu_Info_Click();
    void Mnu_Statistics_Click();
    void Mnu_TimeGraph_Click();
    void Mnu_ImportFiles_Click(int item);
    void Mnu_Print_Click(int item);
    void Mnu_Export_Click(int item);
    void Mnu_Close_Click();
    void Mnu_Options_Click();
    void Graph_Colour_Invert_Click();
    void Mnu_Colours_Click(int scheme);
    void Mnu_LineWidth_Click(int widthPx);
    void Resolution_Click(int step);
    void Mnu_ScaleItem_Click(int item);
    void ZoomIn_Click();
    void ZoomOut_Click();
    void CancelZoom_Click();
    void Convertor_Mnu_Click();
    void Mnu_Reference_Click();
    void Mnu_Average_Click();
    void Mnu_MarkAway_Click();
    void Mnu_SampleEnd_Click(int last); // 0 the first sample, 1 the last
    void Mnu_FitWhole_Click();
    void Mnu_ZoomBack_Click();
    void Mnu_HelpItem_Click(int keyboard); // 0 the chapter on the graph
    void Mnu_GraphFile_Click();

private:
    void showCaptions();
    core::FromOne<std::string, 8> analogCaptions() const;
    std::optional<graph::Size> askForSize();

    GraphParts m_parts;
    platform_qt::Commands m_commands;
};

// The menus are off for as long as the object lives. The window may go while they are.
class GraphMenusDisabled {
public:
    explicit GraphMenusDisabled(GraphCommands& commands) : m_commands(&commands) {
        commands.EnableGraphMenus(false);
    }
    ~GraphMenusDisabled() {
        if (m_commands) m_commands->EnableGraphMenus(true);
    }
    GraphMenusDisabled(const GraphMenusDisabled&) = delete;
    GraphMenusDisabled& operator=(const GraphMenusDisabled&) = delete;

private:
    QPointer<GraphCommands> m_commands;
};

} // namespace kvo::forms
