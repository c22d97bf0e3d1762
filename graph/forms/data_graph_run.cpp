// How a run comes into the graph window and goes: fresh from the logger, by the chooser, one back
// or forward in its list, deleted.
#include "graph/forms/data_graph.h"

#include "core/basic/numbers.h"
#include "library/forms/load_file.h"
#include "library/forms/run_statistics.h"
#include "platform/qt/form_kit.h"
#include "platform/qt/text.h"
#include "platform/services.h"

#include <QAction>

namespace kvo::forms {

using namespace platform_qt;

namespace {

constexpr std::int16_t failed = -1;

std::string baseName(const std::string& path) {
    const std::size_t separator = path.find_last_of("/\\");
    return separator == std::string::npos ? path : path.substr(separator + 1);
}

} // namespace

// Reads DataFilePath; false where that failed. The run that was there is gone then.
bool DataGraph::readRun(const std::string& chosenName) {
    core::SharedState& state = core::state();
    const platform::Services& services = platform::services();
    state.LoadStatus = 0;
    core::LoadRun(state, chosenName, *services.files, *services.dialogs, *this);
    if (state.LoadStatus == failed) return false;
    m_shownFile = state.DataFilePath;
    m_shownInfo = state.InfoFilePath;
    return true;
}

// The run that was just downloaded: it is read back from its file, so that what is looked at is
// what was stored.
void DataGraph::openFreshRun() {
    core::SharedState& state = core::state();
    if (!readRun(baseName(state.DataFilePath))) {
        clearGraph();
        ArrangeGraph();
        return;
    }
    const auto facts = graph::graphTypeFacts(state.DataType);
    if (facts && facts->rightEdgeFreshFile) {
        const int rightEdge = *facts->rightEdgeFreshFile;
        state.SampleCount = static_cast<std::uint16_t>(rightEdge - 1);
        setScaleRight(rightEdge);
    }
    if (facts && facts->startCursor) {
        m_view.CursorSample = static_cast<std::int16_t>(*facts->startCursor);
    }
    enableRunCommands(true);
    const std::string description = core::rightTrimmed(state.RunIndexBuffer[1].Description);
    if (!description.empty()) setCaption(description);
    ArrangeGraph();
    ShowChannelsForType(state.DataType);
    DrawTrend();
    TimeLine();
}

void DataGraph::Mnu_LoadData_Click() {
    EnableGraphMenus(false);
    const bool chosen =
        form<LoadFile>().choose(QStringLiteral("Load"), QStringLiteral("Load Data File"));
    EnableGraphMenus(true);
    if (chosen) return showChosenRun();
    // A row without a description is no choice either, but its path is taken.
    if (hasRun()) backToShownRun();
    enableNeighbours();
}

void DataGraph::GraphChange_Click(int index) {
    LoadFile& chooser = form<LoadFile>();
    const int row = chooser.chosenRow() + (index == 0 ? -1 : 1);
    if (row < 0 || row >= chooser.rowCount()) return;
    chooser.chooseRow(row);
    chooser.takePaths();
    showChosenRun();
}

// The run of DataFilePath, which the chooser's list stands on.
void DataGraph::showChosenRun() {
    core::SharedState& state = core::state();
    state.IndexNoSort = 0;
    clearOverlay();
    const bool read = readRun(form<LoadFile>().chosenName());
    enableNeighbours();
    if (!read) {
        clearGraph();
        return;
    }
    ShowChannelsForType(state.DataType);
    m_view.LoadingBar = -1;
    DrawTrend();
    m_view.LoadingBar = 0;
    m_view.CursorSample = state.Run.tail.TimeOffset;
    TimeLine();
    enableRunCommands(true);
    enableNeighbours();
}

void DataGraph::clearOverlay() {
    command("Mnu_Overlay")->setText(QStringLiteral("Overlay Data File"));
    key("OverlayData")->setText(QStringLiteral("Overlay"));
    core::state().OverlayLoaded = 0;
    m_view.RocosFromOverlay = 0;
}

// The chooser leaves its own choice in the state, and the header line of a run that it has renamed;
// what is written goes to the run in the window, under its own header.
void DataGraph::backToShownRun() {
    core::state().DataFilePath = m_shownFile;
    core::state().InfoFilePath = m_shownInfo;
    core::ReadHeaderLine(core::state(), *platform::services().files);
}

// --- The overlay

void DataGraph::Mnu_Overlay_Click() {
    if (core::state().OverlayLoaded != 0) {
        unloadOverlay();
        TimeLine();
        return;
    }
    EnableGraphMenus(false);
    const bool chosen =
        form<LoadFile>().choose(QStringLiteral("Load"), QStringLiteral("Load Overlay File"));
    EnableGraphMenus(true);
    if (chosen) loadOverlay(form<LoadFile>().chosenName());
    backToShownRun();
    enableNeighbours();
}

void DataGraph::unloadOverlay() {
    clearOverlay();
    enableTools(true);
    cutOverlayCaption();
    DrawTrend();
}

void DataGraph::loadOverlay(const std::string& chosenName) {
    core::SharedState& state = core::state();
    const platform::Services& services = platform::services();
    state.LoadStatus = 0;
    core::LoadOverlayRun(state, chosenName, *services.files, *services.dialogs, *this);
    if (state.LoadStatus == failed) return;
    if (state.DataType != state.OverlayDataType) {
        const auto reply =
            services.dialogs->messageBox("The Overlay File is a Different Data Type.\r\n\r\n       "
                                         "      Do you wont to Continue",
                platform::boxStyle::yesNo, "Overlay");
        if (reply != platform::Reply::yes) return cutOverlayCaption();
    }
    enableTools(false);
    command("Mnu_Overlay")->setText(QStringLiteral("Unload Overlay"));
    key("OverlayData")->setText(QStringLiteral("Unload"));
    state.OverlayLoaded = -1;
    m_view.LoadingBar = -1;
    m_drawing.OverLayDraw();
    m_view.LoadingBar = 0;
    TimeLine();
}

// The caption up to the four blanks in front of the word; the analogs bear the run's names again.
void DataGraph::cutOverlayCaption() {
    for (int n = 1; n <= 8; ++n) setAnalogCaption(n, core::state().Run.setup.AnalogName[n]);
    const std::size_t place = m_caption.find("Overlay");
    if (place != std::string::npos && place >= 4) setCaption(m_caption.substr(0, place - 4));
}

// --- What rewrites the run

// Both tools rewrite the run, which an overlay must not see.
void DataGraph::enableTools(bool on) {
    for (const char* name : {"Mnu_RedoClutch", "Mnu_TimeOffset"}) command(name)->setEnabled(on);
}

void DataGraph::finishTool(const graph::ToolResult& result) {
    if (!result.written) {
        platform::services().dialogs->messageBox(
            result.written.message, platform::boxStyle::critical, "Kvo");
    }
    if (result.changed) redrawAll();
}

void DataGraph::Mnu_RedoClutch_Click() {
    const platform::Services& services = platform::services();
    finishTool(graph::Mnu_RedoClutch(core::state(), *services.dialogs, *services.files));
}

void DataGraph::Mnu_TimeOffset_Click() {
    const platform::Services& services = platform::services();
    finishTool(graph::Mnu_TimeOffset(core::state(), *services.dialogs, *services.files));
}

void DataGraph::Mnu_DeleteRun_Click() {
    EnableGraphMenus(false);
    form<LoadFile>().chooseToDelete(QStringLiteral("Delete File"));
    EnableGraphMenus(true);
    // The chooser has put the deleted run's path into the state.
    backToShownRun();
    if (hasRun() && !platform::services().files->exists(m_shownFile)) clearGraph();
    enableNeighbours();
}

void DataGraph::Mnu_Statistics_Click() {
    const auto text = [this](const char* box) { return typed(control<QLabel>(*this, box).text()); };
    Statistics::GraphTexts texts;
    texts.caption = caption();
    texts.Text_60FootTime = text("Text_60FootTime");
    texts.Text_330FootTime = text("Text_330FootTime");
    texts.Text_660FootTime = text("Text_660FootTime");
    texts.Text_1000FootTime = text("Text_1000FootTime");
    texts.Text_ET = text("Text_ET");
    texts.Text_660FootSpeed = text("Text_660FootSpeed");
    for (int n = 1; n <= 8; ++n) {
        texts.analogNames[n] =
            typed(m_cells[static_cast<std::size_t>(channels::analogChannel(n))]->toggle->caption());
    }
    EnableGraphMenus(false);
    form<Statistics>().showRun(texts);
    EnableGraphMenus(true);
}

void DataGraph::clearGraph() {
    core::state().SampleCount = 0;
    Trend->surface().setAutoRedraw(true);
    Trend->surface().cls();
    for (const ChannelCell* one : m_cells) {
        one->value->clear();
        one->overlay->clear();
    }
    m_readOuts->LoggerTime->clear();
    setCaption(graph::captionWithoutRun);
    enableRunCommands(false);
}

// Back and forward, where the list goes on.
void DataGraph::enableNeighbours() {
    const bool listed = isLoaded<LoadFile>() && form<LoadFile>().chosenRow() >= 0;
    const int row = listed ? form<LoadFile>().chosenRow() : 0;
    const bool before = listed && row > 0;
    const bool behind = listed && row + 1 < form<LoadFile>().rowCount();
    command("GraphChange(0)")->setEnabled(before);
    key("PreviousData")->setEnabled(before);
    command("GraphChange(1)")->setEnabled(behind);
    key("NextData")->setEnabled(behind);
}

} // namespace kvo::forms
