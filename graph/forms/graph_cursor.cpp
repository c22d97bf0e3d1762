#include "graph/forms/graph_cursor.h"

#include "core/basic/numbers.h"
#include "core/shared_state.h"
#include "graph/cursor.h"
#include "graph/forms/channel_panel.h"
#include "graph/forms/graph_surface.h"
#include "graph/layout.h"
#include "graph/transient.h"
#include "platform/qt/form_kit.h"
#include "platform/qt/text.h"
#include "platform/services.h"

namespace kvo::forms {

using namespace platform_qt;

GraphCursor::GraphCursor(
    graph::GraphView& view, const graph::Course& course, GraphSurface& surface, ChannelPanel& panel)
    : m_view(view), m_course(course), m_surface(surface), m_panel(panel) {
    connect(&m_surface, &GraphSurface::scrolled, this, &GraphCursor::TimeLine);
    SurfaceWidget& trend = m_surface.trend();
    connect(&trend, &SurfaceWidget::keyDown, this, &GraphCursor::Trend_KeyDown);
    connect(&trend, &SurfaceWidget::mouseDown, this, &GraphCursor::Trend_MouseDown);
    connect(&trend, &SurfaceWidget::mouseUp, this, &GraphCursor::Trend_MouseUp);
    connect(&trend, &SurfaceWidget::mouseMoved, this, &GraphCursor::Trend_MouseMove);
    connect(&trend, &SurfaceWidget::mouseLeft, this, [this] { Label_DataChanel_Change({}); });
}

// --- The time line

channels::ShownRuns GraphCursor::shownRuns() const {
    const core::SharedState& state = core::state();
    return channels::shownRuns(state.Run, m_course.overlayLoaded() ? &state.Overlay : nullptr);
}

graph::ReadOutInput GraphCursor::readOutInput(const channels::ShownRuns& runs) {
    core::SharedState& state = core::state();
    return {runs, state.Config, state.AnalogPicture, m_view};
}

void GraphCursor::TimeLine() {
    uncoverSecondValues();
    if (channels::viewOfRun(core::state().Run).has(m_view.CursorSample)) {
        showTimeLine();
    } else if (m_course.hasRun()) {
        platform::services().dialogs->beep();
    }
    m_surface.trend().setFocus();
}

void GraphCursor::showTimeLine() {
    graph::drawTimeLine(m_surface.surface(), m_view.CursorSample,
        core::state().Config.GraphBackColour, m_view.Reference);
    const channels::ShownRuns runs = shownRuns();
    const graph::ReadOutInput input = readOutInput(runs);
    showTexts(input, graph::timeLineTexts(input, m_view.CursorSample), m_view.CursorSample);
}

void GraphCursor::showTexts(
    const graph::ReadOutInput& input, const graph::ReadOutTexts& texts, std::optional<int> cursor) {
    m_panel.showTexts(texts);
    if (m_view.Reference)
        m_panel.showDifferences(
            input.config, graph::differences(input, texts, cursor, *m_view.Reference));
}

void GraphCursor::uncoverSecondValues() {
    if (!m_view.Reference) m_panel.showDifferences(core::state().Config, std::nullopt);
    m_panel.uncoverOverlay(m_course.overlayLoaded() || m_view.Reference);
}

void GraphCursor::setReference() {
    if (channels::viewOfRun(core::state().Run).has(m_view.CursorSample))
        m_view.Reference = m_view.CursorSample;
    TimeLine();
}

void GraphCursor::takeReferenceAway() {
    m_view.Reference.reset();
    TimeLine();
}

void GraphCursor::placeCursor(double sample) {
    core::keepOnFailure(m_view.CursorSample, core::CInt(sample));
    TimeLine();
}

void GraphCursor::Trend_KeyDown(int key, Qt::KeyboardModifiers modifiers) {
    if (!m_course.hasRun()) return;
    const int step = graph::cursorStep(key == Qt::Key_Right, modifiers.testFlag(Qt::ShiftModifier),
        modifiers.testFlag(Qt::ControlModifier), modifiers.testFlag(Qt::AltModifier));
    // The line that was drawn last ends at the cursor.
    placeCursor(static_cast<double>(m_surface.surface().currentX()) + step);
}

void GraphCursor::Trend_MouseDown(Qt::MouseButton button, float x, float) {
    if (!m_course.hasRun()) return;
    if (button == Qt::LeftButton) placeCursor(x);
    if (button == Qt::RightButton) startAverage(x);
}

void GraphCursor::Trend_MouseUp(Qt::MouseButton button, float x, float) {
    if (button == Qt::RightButton && m_course.hasRun()) finishAverage(x);
}

// --- The pointer

void GraphCursor::Trend_MouseMove(Qt::MouseButtons buttons, float x, float y) {
    if (!m_course.hasRun() || buttons.testFlag(Qt::RightButton)) return;
    const graph::PointerLabels labels{[this](int channel) { return m_panel.canBeFound(channel); },
        [this](int n) { return m_course.analogCaption(n); }};
    const channels::ShownRuns runs = shownRuns();
    const auto text = graph::textUnderPointer(readOutInput(runs), x, y, labels);
    if (text) Label_DataChanel_Change(shown(*text));
}

void GraphCursor::Label_DataChanel_Change(const QString& text) {
    ReadOutLine& line = m_panel.readOuts();
    if (text == line.pointerText()) return;
    const bool inLine = graph::pointerHasLabel(toTwips(m_surface.window()->width()));
    line.showPointer(text, inLine);
    m_surface.trend().setToolTip(inLine ? QString() : plainTip(text));
}

// --- The average of a stretch

void GraphCursor::startAverage(float x) {
    m_view.DragStartX = x;
    graph::drawAverageStart(
        m_surface.surface(), x, core::state().Config.GraphBackColour, m_view.Reference);
}

void GraphCursor::finishAverage(float x) {
    const float start = m_view.DragStartX;
    graph::drawAverage(m_surface.surface(), start, x, core::state().Config.GraphBackColour);
    uncoverSecondValues();
    const channels::ShownRuns runs = shownRuns();
    const graph::ReadOutInput input = readOutInput(runs);
    const auto texts = graph::AverageRange(input, qMin(start, x), qMax(start, x));
    if (texts.outside) return platform::services().dialogs->beep();
    showTexts(input, texts, std::nullopt);
}

} // namespace kvo::forms
