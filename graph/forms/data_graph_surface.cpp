// What mouse and keys do on the surface of the graph window, and what the drawing asks of it.
#include "core/basic/numbers.h"
#include "core/data_types.h"
#include "core/shared_state.h"
#include "graph/cursor.h"
#include "graph/forms/channel_panel.h"
#include "graph/forms/data_graph.h"
#include "graph/forms/graph_surface.h"
#include "graph/layout.h"
#include "graph/transient.h"
#include "platform/qt/form_kit.h"
#include "platform/qt/text.h"
#include "platform/services.h"

#include <QAction>

namespace kvo::forms {

using namespace platform_qt;

namespace {

constexpr int mostProgress = 1000000000;
constexpr int widestWithToolTip = 15400; // twips; on a narrower window the read-out is a tool tip

} // namespace

platform::Surface& DataGraph::trend() {
    return m_surface->surface();
}

// --- The picture

void DataGraph::DrawTrend() {
    if (m_drawing.DrawTrend()) return;
    platform::services().dialogs->messageBox(
        "There isn't enough video memory to display at this resolution.",
        platform::boxStyle::critical, "Memory Error");
    if (m_commands.key("CancelZoom").isEnabled()) {
        ZoomOut_Click();
    } else {
        takeScale(m_surface->Graph_scale(graph::scaleFull));
        DrawTrend();
    }
}

void DataGraph::applyTrendScale() {
    const core::DataTypeFacts* facts = core::dataTypeFacts(core::state().Run.DataType);
    if (facts != nullptr && facts->rightEdge) setScaleRight(*facts->rightEdge);
}

void DataGraph::ChanaleEnable() {
    m_panel->showChannelsOn(core::state().Config);
}

void DataGraph::Change_Colour() {
    m_drawing.Change_Colour();
    m_panel->showColours(core::state().Config);
}

void DataGraph::Toggle_Click(int channel) {
    core::AppConfig& config = core::state().Config;
    m_view.GraphDirty = core::flagOn;
    trend().setAutoRedraw(true);
    std::int16_t& visible = channels::visibleFlag(config, channel);
    if (visible == 0) {
        // Only this channel, on top of the picture as it stands.
        visible = core::flagOn;
        m_drawing.drawChannelAlone(channel);
    } else {
        visible = 0;
        DrawTrend();
        if (m_course.overlayLoaded()) m_drawing.OverLayDraw();
    }
    m_panel->showChannelOn(config, channel);
    TimeLine();
}

// The colour dialog of a channel. None where its colour stays.
std::optional<platform::Colour> DataGraph::Trend_Colour_Set(int channel) {
    core::AppConfig& config = core::state().Config;
    platform::Dialogs& dialogs = *platform::services().dialogs;
    std::int32_t& colour = channels::colourField(config, channel);
    const auto chosen = dialogs.chooseColour(graph::colourDialogStart(colour));
    if (!chosen) return std::nullopt;
    if (*chosen == static_cast<platform::Colour>(config.GraphBackColour)) {
        dialogs.messageBox("You can't have the same colour as the graph background.",
            platform::boxStyle::critical, "Error");
        return std::nullopt;
    }
    colour = static_cast<std::int32_t>(*chosen);
    m_view.GraphDirty = core::flagOn;
    return chosen;
}

void DataGraph::Value_DblClick(int channel) {
    if (const auto colour = Trend_Colour_Set(channel)) m_panel->showColour(channel, *colour);
    if (!channels::channelOn(core::state().Config, channel)) return;
    trend().setAutoRedraw(true);
    m_drawing.drawChannelAlone(channel);
    TimeLine();
}

void DataGraph::Graph_Colour_Invert_Click() {
    core::AppConfig& config = core::state().Config;
    const auto chosen = platform::services().dialogs->chooseColour(
        graph::colourDialogStart(config.GraphBackColour));
    m_view.GraphDirty = core::flagOn;
    if (!chosen) return;
    config.GraphBackColour = static_cast<std::int32_t>(*chosen);
    Change_Colour();
    ChanaleEnable();
    m_course.redraw();
}

// --- The time line

channels::ShownRuns DataGraph::shownRuns() const {
    const core::SharedState& state = core::state();
    return channels::shownRuns(state.Run, m_course.overlayLoaded() ? &state.Overlay : nullptr);
}

graph::ReadOutInput DataGraph::readOutInput(const channels::ShownRuns& runs) {
    core::SharedState& state = core::state();
    return {runs, state.Config, state.AnalogPicture, m_view};
}

void DataGraph::TimeLine() {
    m_panel->uncoverOverlay(m_course.overlayLoaded());
    if (channels::viewOfRun(core::state().Run).has(m_view.CursorSample)) {
        showTimeLine();
    } else if (hasRun()) {
        platform::services().dialogs->beep();
    }
    m_surface->trend().setFocus();
}

void DataGraph::showTimeLine() {
    graph::drawTimeLine(trend(), m_view.CursorSample, core::state().Config.GraphBackColour);
    const channels::ShownRuns runs = shownRuns();
    m_panel->showTexts(graph::timeLineTexts(readOutInput(runs), m_view.CursorSample));
}

void DataGraph::placeCursor(double sample) {
    core::keepOnFailure(m_view.CursorSample, core::CInt(sample));
    TimeLine();
}

void DataGraph::Trend_KeyDown(int key, Qt::KeyboardModifiers modifiers) {
    if (!hasRun()) return;
    const int step = graph::cursorStep(key == Qt::Key_Right, modifiers.testFlag(Qt::ShiftModifier),
        modifiers.testFlag(Qt::ControlModifier), modifiers.testFlag(Qt::AltModifier));
    // The line that was drawn last ends at the cursor.
    placeCursor(static_cast<double>(trend().currentX()) + step);
}

void DataGraph::Trend_MouseDown(Qt::MouseButton button, float x, float) {
    if (!hasRun()) return;
    if (button == Qt::LeftButton) placeCursor(x);
    if (button == Qt::RightButton) startAverage(x);
}

void DataGraph::Trend_MouseUp(Qt::MouseButton button, float x, float) {
    if (button == Qt::RightButton && hasRun()) finishAverage(x);
}

void DataGraph::Trend_MouseMove(Qt::MouseButtons buttons, float x, float y) {
    if (!hasRun() || buttons.testFlag(Qt::RightButton)) return;
    const graph::PointerLabels labels{[this](int channel) { return m_panel->canBeFound(channel); },
        [this](int n) { return m_course.analogCaption(n); }};
    const channels::ShownRuns runs = shownRuns();
    const auto text = graph::textUnderPointer(readOutInput(runs), x, y, labels);
    if (text) Label_DataChanel_Change(shown(*text));
}

void DataGraph::Label_DataChanel_Change(const QString& text) {
    QLabel& label = *m_panel->readOuts().Label_DataChanel;
    if (text == label.text()) return;
    label.setText(text);
    const bool narrow = toTwips(width()) < widestWithToolTip;
    label.setVisible(!narrow);
    m_surface->trend().setToolTip(narrow ? text : QString());
}

// --- The average of a stretch

void DataGraph::startAverage(float x) {
    m_view.DragStartX = x;
    graph::drawAverageStart(trend(), x, core::state().Config.GraphBackColour);
}

void DataGraph::finishAverage(float x) {
    const float start = m_view.DragStartX;
    graph::drawAverage(trend(), start, x, core::state().Config.GraphBackColour);
    m_panel->uncoverOverlay(m_course.overlayLoaded());
    const channels::ShownRuns runs = shownRuns();
    const auto texts = graph::AverageRange(readOutInput(runs), qMin(start, x), qMax(start, x));
    if (texts.outside) return platform::services().dialogs->beep();
    m_panel->showTexts(texts);
}

// --- What the drawing asks for

void DataGraph::setTrendHourglass(bool on) {
    if (on) {
        m_surface->trend().setCursor(Qt::WaitCursor);
    } else {
        m_surface->trend().unsetCursor();
    }
}

void DataGraph::showLoading(const std::string& text, const std::string& file) {
    m_panel->readOuts().startLoading(shownMessage(text), shownPath(file));
}

void DataGraph::hideLoading() {
    m_panel->readOuts().endLoading();
}

void DataGraph::setProgressMax(double max) {
    m_panel->readOuts().setProgressMax(static_cast<int>(qBound(1.0, max, double{mostProgress})));
}

void DataGraph::setProgressValue(double value) {
    m_panel->readOuts().setProgress(static_cast<int>(qBound(0.0, value, double{mostProgress})));
}

void DataGraph::showLabels(const graph::LabelVisibility& labels) {
    m_panel->showLabels(labels);
}

bool DataGraph::clutchLabelVisible() const {
    return m_panel->clutchLabelVisible();
}

void DataGraph::setOverlayLabelColour(int channel, std::int32_t colour) {
    m_panel->showOverlayColour(channel, static_cast<platform::Colour>(colour));
}

} // namespace kvo::forms
