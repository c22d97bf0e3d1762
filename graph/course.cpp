#include "graph/course.h"

#include "core/basic/numbers.h"
#include "core/config.h"
#include "core/data_types.h"
#include "core/paths.h"
#include "graph/run_title.h"
#include "platform/memory.h"

#include <algorithm>
#include <utility>

namespace kvo::graph {
namespace {

// The hourglass for as long as a load works.
class Working {
public:
    explicit Working(platform::Dialogs& dialogs) : m_dialogs(dialogs) {
        m_dialogs.setHourglass(true);
    }
    ~Working() { m_dialogs.setHourglass(false); }
    Working(const Working&) = delete;
    Working& operator=(const Working&) = delete;

private:
    platform::Dialogs& m_dialogs;
};

int stepOf(int index) {
    return index == 0 ? -1 : 1;
}

} // namespace

Course::Course(const CourseInput& input, GraphView& graphView, CourseView& window,
    platform::Dialogs& dialogs, platform::Files& files)
    : m_in(input), m_graph(graphView), m_window(window), m_dialogs(dialogs), m_files(files) {}

// --- What the window shows

bool Course::canChange(int index) const {
    return m_in.runs.canStep(stepOf(index));
}

std::string Course::caption() const {
    return hasRun() ? m_runCaption + m_overlayCaption : captionWithoutRun;
}

std::string Course::runTitle() const {
    return hasRun() ? shownTitle(m_in.Run) : std::string();
}

std::string Course::overlayTitle() const {
    return overlayLoaded() ? shownTitle(m_in.Overlay) : std::string();
}

const char* Course::overlayCommand() const {
    if (overlayLoaded()) return "Unload Overlay";
    // Required: a load and an unload take the & that the command has as the window opens.
    return m_commandRenamed ? "Overlay Data File" : "&Overlay Data File";
}

std::string Course::analogCaption(int n) const {
    if (!hasRun()) return m_in.Config.AnalogName[n];
    const core::OpenRun& named = overlayLoaded() ? m_in.Overlay : m_in.Run;
    const std::string& name = named.image.setup.AnalogName[n];
    // A name that was never read is all zero characters, and a caption ends at the first of them.
    return name.substr(0, name.find('\0'));
}

void Course::redraw() {
    m_window.drawTrend();
    if (overlayLoaded()) m_window.overLayDraw();
    m_window.timeLine();
}

void Course::tell(const core::LoadMessage& message) {
    if (message.beep) m_dialogs.beep();
    m_dialogs.messageBox(message.text, message.style, core::programName);
}

// A picture for which there is not enough memory is told of; the runs are as they are.
template <class Draw> void Course::draw(Draw&& work) {
    platform::withinMemory(m_dialogs, "draw the whole picture", std::forward<Draw>(work));
    m_graph.LoadingBar = 0;
}

// --- A run comes and goes

void Course::openEmpty() {
    dropRun();
    m_commandRenamed = false;
}

void Course::dropRun() {
    dropOverlay();
    m_graph.marks = {};
    m_in.Run.SampleCount = 0;
    m_in.Run.times = {};
    m_runCaption.clear();
}

bool Course::openFresh(const std::string& path, const std::string& caption) {
    openEmpty();
    m_window.clearSurface();
    m_window.emptyLabels();
    core::LoadOutcome outcome;
    {
        const Working working(m_dialogs);
        outcome = core::LoadRun(path, m_in.Run, m_files);
    }
    if (!outcome) {
        tell(core::loadMessage(outcome.result, path));
        return false;
    }
    m_runCaption = caption;
    const core::DataTypeFacts* facts = core::dataTypeFacts(outcome.DataType);
    // Required: the longest types are shown up to fewer samples than their file has rows.
    m_in.Run.SampleCount = static_cast<std::uint16_t>(*facts->freshRightEdge - 1);
    m_graph.CursorSample = static_cast<std::int16_t>(*facts->startCursor);
    m_window.setScaleRight(*facts->freshRightEdge);
    m_window.showState();
    return true;
}

void Course::Mnu_LoadData() {
    if (const auto chosen = m_window.chooseRun("Load Data File")) return show(*chosen);
    m_window.showState();
}

void Course::GraphChange(int index) {
    if (!canChange(index)) return;
    m_in.runs.step(stepOf(index));
    show(m_in.runs.chosenRun(m_in.AppFolder, m_files));
}

void Course::show(const core::ChosenRun& chosen) {
    platform::withinMemory(m_dialogs, "show this run", [&] { showRun(chosen); });
}

void Course::showRun(const core::ChosenRun& chosen) {
    std::string caption = "Data File: " + core::rightTrimmed(chosen.fileName);
    core::LoadOutcome outcome;
    {
        const Working working(m_dialogs);
        outcome = core::LoadRun(chosen.path, m_in.Run, m_files);
    }
    if (!outcome) {
        tell(core::loadMessage(outcome.result, chosen.path));
        return overlayLoaded() ? unloadOverlay() : m_window.showState();
    }
    dropOverlay();
    m_graph.marks = {}; // a sample of the run that was there
    m_commandRenamed = true;
    m_runCaption = std::move(caption);
    draw([this] {
        m_window.emptyLabels();
        m_window.setScaleRight(m_in.Run.SampleCount + 1);
        m_window.showState();
        m_window.showChannelsForType(m_in.Run.DataType);
        m_graph.LoadingBar = core::flagOn;
        m_window.drawTrend();
        m_graph.LoadingBar = 0;
        m_graph.CursorSample = m_in.Run.image.tail.TimeOffset;
        m_window.timeLine();
    });
}

void Course::takeImported(const std::vector<std::string>& paths) {
    const core::OpenRun& run = m_in.Run;
    const bool isShown = hasRun() && std::find(paths.begin(), paths.end(), run.path) != paths.end();
    if (!isShown) return m_window.showState();
    show({run.path, run.infoPath, core::baseName(run.path), {}});
}

void Course::clear() {
    dropRun();
    m_in.Run.path.clear();
    m_in.Run.infoPath.clear();
    m_window.clearSurface();
    m_window.emptyLabels();
    // Without a run there is no line, but the overlay's labels make room for the times again.
    m_window.timeLine();
}

void Course::Mnu_DeleteRun() {
    m_window.chooseRunsToDelete();
    if (hasRun() && !m_files.exists(m_in.Run.path)) clear();
    // Back and forward go on from the run in the window.
    if (hasRun()) m_in.runs.chooseFile(core::baseName(m_in.Run.path));
    m_window.showState();
}

void Course::close() {
    if (m_graph.GraphDirty != 0 && m_in.configKnown) {
        const auto saved = core::SaveConfig(m_in.AppFolder, m_in.Config, m_files);
        if (!saved) {
            m_dialogs.messageBox(saved.message, platform::boxStyle::critical, core::programName);
        }
    }
    openEmpty();
}

// --- The overlay

void Course::dropOverlay() {
    if (overlayLoaded()) m_commandRenamed = true;
    m_graph.OverlayLoaded = 0;
    m_overlayCaption.clear();
}

void Course::unloadOverlay() {
    dropOverlay();
    m_window.showState();
    m_window.drawTrend();
    m_window.timeLine();
}

void Course::Mnu_Overlay() {
    if (overlayLoaded()) return unloadOverlay();
    if (const auto chosen = m_window.chooseRun("Load Overlay File")) {
        const auto load = [&] { loadOverlay(*chosen); };
        if (!platform::withinMemory(m_dialogs, "load this overlay", load)) dropOverlay();
    }
    m_window.showState();
    m_window.timeLine();
}

void Course::loadOverlay(const core::ChosenRun& chosen) {
    m_overlayCaption = "    Overlay File: " + core::rightTrimmed(chosen.fileName);
    m_window.showState();
    core::OpenRun loaded;
    core::LoadOutcome outcome;
    {
        const Working working(m_dialogs);
        outcome = core::LoadOverlayRun(chosen.path, loaded, m_files);
    }
    if (!outcome) tell(core::overlayLoadMessage(outcome.result, chosen.path));
    if (!outcome || !takesType(loaded.DataType)) return dropOverlay();
    m_in.Overlay = std::move(loaded);
    m_graph.OverlayLoaded = core::flagOn;
    m_graph.marks = {}; // the overlay's values take its labels
    draw([this] {
        // A sample with time-shared exhausts fills one of their labels and leaves the others.
        m_window.emptyOverlayLabels();
        m_window.showState();
        m_graph.LoadingBar = core::flagOn;
        m_window.overLayDraw();
    });
}

bool Course::takesType(std::uint8_t overlayType) {
    if (overlayType == m_in.Run.DataType) return true;
    const auto reply = m_dialogs.messageBox("The Overlay File is a Different Data Type.\r\n\r\n"
                                            "             Do you wont to Continue",
        platform::boxStyle::yesNo, "Overlay");
    return reply == platform::Reply::yes;
}

// --- What rewrites the run

ToolPlace Course::toolPlace() const {
    return {m_in.Config.Gears, m_in.AppFolder, m_dialogs, m_files};
}

void Course::finishTool(const ToolResult& result) {
    if (!result.written) {
        m_dialogs.messageBox(
            result.written.message, platform::boxStyle::critical, core::programName);
    }
    if (result.changed) redraw();
}

void Course::Mnu_RedoClutch() {
    finishTool(graph::Mnu_RedoClutch(m_in.Run, toolPlace()));
}

void Course::Mnu_TimeOffset() {
    finishTool(graph::Mnu_TimeOffset(m_in.Run, toolPlace()));
}

} // namespace kvo::graph
