#pragma once
// The course of the graph window without the window: how a run comes into it (by the chooser, one
// back or forward in the list, fresh from the logger), how a second run is laid over it and taken
// off, what the tools and a delete do to it. It changes the state and then asks the window to show
// it; captions are made from what is here and never read back.
#include "core/config_record.h"
#include "core/open_run.h"
#include "core/run_file.h"
#include "graph/run_tools.h"
#include "graph/view.h"
#include "library/run_list.h"
#include "platform/dialogs.h"
#include "platform/files.h"

#include <optional>
#include <string>
#include <vector>

namespace kvo::graph {

// What the course asks of the window.
class CourseView {
public:
    virtual ~CourseView() = default;
    // The chooser, modal, under a form title; none where no run was chosen.
    virtual std::optional<core::ChosenRun> chooseRun(const std::string& title) = 0;
    // The chooser for deleting, modal.
    virtual void chooseRunsToDelete() = 0;
    // Captions, menus, toolbar, names of the analogs and track times, from the course.
    virtual void showState() = 0;
    // Every value label, the time and the text under the pointer.
    virtual void emptyLabels() = 0;
    // The overlay's value labels alone.
    virtual void emptyOverlayLabels() = 0;
    virtual void clearSurface() = 0;
    // Scale of the surface: (0, 1100)-(right, 0).
    virtual void setScaleRight(int right) = 0;
    virtual void showChannelsForType(int dataType) = 0;
    virtual void drawTrend() = 0;
    virtual void overLayDraw() = 0;
    // The time line and its read-outs; the keys go to the surface.
    virtual void timeLine() = 0;
};

// What the course works on. All of it must outlive the course.
struct CourseInput {
    core::AppConfig& Config;
    const bool& configKnown; // whether Config came from a file or from the user
    const std::string& AppFolder;
    core::OpenRun& Run;
    core::OpenRun& Overlay;
    library::RunList& runs;
};

class Course {
public:
    Course(const CourseInput& input, GraphView& graphView, CourseView& window,
        platform::Dialogs& dialogs, platform::Files& files);

    // A window without a run, whatever was in memory.
    void openEmpty();
    // Reads a run file that was just downloaded, so that what is looked at is what was stored; its
    // time zero is the cursor. False where it does not load: the window is without a run then. The
    // window draws it once it is arranged.
    bool openFresh(const std::string& path, const std::string& caption);

    // Puts a chosen run into the window. A file that does not load leaves the run that is shown,
    // without its overlay.
    void show(const core::ChosenRun& chosen);

    // Run files have been written from elsewhere: the one in the window is shown anew, so that no
    // tool writes the rows that it had before. The list may go on from it now.
    void takeImported(const std::vector<std::string>& paths);

    void Mnu_LoadData();
    // 0 shows the run before in the list, 1 the one behind.
    void GraphChange(int index);
    void Mnu_Overlay();
    void Mnu_DeleteRun();
    void Mnu_RedoClutch();
    void Mnu_TimeOffset();
    // The whole picture, the overlay's where there is one, and the time line.
    void redraw();
    // Saves what the window changed of the configuration. The run in memory is none any more.
    void close();

    bool hasRun() const { return m_in.Run.SampleCount != 0; }
    bool overlayLoaded() const { return m_graph.OverlayLoaded != 0; }
    // Whether the list goes on from its choice; index as in GraphChange.
    bool canChange(int index) const;
    // Caption of the window.
    std::string caption() const;
    // Title and date of the run and of the overlay; empty where there is none.
    std::string runTitle() const;
    std::string overlayTitle() const;
    // Caption of Mnu_Overlay and of its key.
    const char* overlayCommand() const;
    const char* overlayKey() const { return overlayLoaded() ? "Unload" : "Overlay"; }
    // Name of analog n, 1 to 8, as its toggle bears it: the overlay's while there is one.
    std::string analogCaption(int n) const;

private:
    void dropRun();
    void dropOverlay();
    void unloadOverlay();
    void loadOverlay(const core::ChosenRun& chosen);
    bool takesType(std::uint8_t overlayType);
    void clear();
    void tell(const core::LoadMessage& message);
    void showRun(const core::ChosenRun& chosen);
    template <class Draw> void draw(Draw&& work);
    void finishTool(const ToolResult& result);
    ToolPlace toolPlace() const;

    CourseInput m_in;
    GraphView& m_graph;
    CourseView& m_window;
    platform::Dialogs& m_dialogs;
    platform::Files& m_files;
    std::string m_runCaption;
    bool m_commandRenamed = false; // since a load or an overlay the command has no & any more
    std::string m_overlayCaption;  // behind the run's, while an overlay is there or on its way
};

} // namespace kvo::graph
