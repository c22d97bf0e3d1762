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

#include <utility>

namespace kvo::forms {

using namespace platform_qt;

GraphCursor::GraphCursor(
    graph::GraphView& view, const graph::Course& course, GraphSurface& surface, ChannelPanel& panel)
    : m_view(view), m_course(course), m_surface(surface), m_panel(panel) {
    connect(&m_surface, &GraphSurface::scrolled, this, &GraphCursor::TimeLine);
    m_surface.trend().setVoice(this);
    SurfaceWidget& trend = m_surface.trend();
    connect(&trend, &SurfaceWidget::keyDown, this, &GraphCursor::Trend_KeyDown);
    connect(&trend, &SurfaceWidget::mouseDown, this, &GraphCursor::Trend_MouseDown);
    connect(&trend, &SurfaceWidget::mouseUp, this, &GraphCursor::Trend_MouseUp);
    connect(&trend, &SurfaceWidget::mouseMoved, this, &GraphCursor::Trend_MouseMove);
    connect(&trend, &SurfaceWidget::mouseDoubleClicked, this, [this] { m_dragging = false; });
    connect(&trend, &SurfaceWidget::mouseLeft, this, [this] { Label_DataChanel_Change({}); });
}

GraphCursor::~GraphCursor() {
    m_surface.trend().setVoice(nullptr);
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
    if (cursorInRun()) {
        showTimeLine();
    } else if (m_course.hasRun()) {
        platform::services().dialogs->beep();
    }
    m_surface.trend().setFocus();
}

void GraphCursor::showTimeLine() {
    graph::drawTimeLine(m_surface.surface(), m_view.CursorSample,
        core::state().Config.GraphBackColour, m_view.marks);
    const channels::ShownRuns runs = shownRuns();
    const graph::ReadOutInput input = readOutInput(runs);
    showTexts(input, graph::timeLineTexts(input, m_view.CursorSample), m_view.CursorSample);
}

void GraphCursor::showTexts(
    const graph::ReadOutInput& input, const graph::ReadOutTexts& texts, std::optional<int> cursor) {
    m_panel.showTexts(texts);
    if (m_view.marks.reference)
        m_panel.showDifferences(
            input.config, graph::differences(input, texts, cursor, *m_view.marks.reference));
    m_surface.trend().tellValue();
}

void GraphCursor::uncoverSecondValues() {
    if (!m_view.marks.reference) m_panel.showDifferences(core::state().Config, std::nullopt);
    m_panel.uncoverOverlay(m_course.overlayLoaded() || m_view.marks.reference);
}

bool GraphCursor::cursorInRun() const {
    return channels::viewOfRun(core::state().Run).has(m_view.CursorSample);
}

void GraphCursor::goToEnd(bool last) {
    placeCursor(last ? core::state().Run.SampleCount : 1);
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
    m_dragging = button == Qt::LeftButton;
    if (button == Qt::LeftButton) placeCursor(x);
    if (button == Qt::RightButton) startAverage(x);
}

// The cursor keeps to the run, so that a drag beyond it ends on its last sample without a beep.
void GraphCursor::dragTo(float x) {
    const int sample = graph::cursorDraggedTo(x, core::state().Run.SampleCount);
    if (sample != m_view.CursorSample) placeCursor(sample);
}

void GraphCursor::Trend_MouseUp(Qt::MouseButton button, float x, float) {
    if (button == Qt::LeftButton) m_dragging = false;
    if (button == Qt::RightButton && m_course.hasRun()) finishAverage(x);
}

// --- The pointer

void GraphCursor::Trend_MouseMove(Qt::MouseButtons buttons, float x, float y) {
    if (!m_course.hasRun() || buttons.testFlag(Qt::RightButton)) return;
    if (m_dragging && buttons.testFlag(Qt::LeftButton)) dragTo(x);
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

// --- Read aloud

QString GraphCursor::spokenName() const {
    if (!m_course.hasRun()) return QStringLiteral("Graph");
    QString name = QStringLiteral("Graph of ") + shown(m_course.runTitle());
    if (!m_course.overlayLoaded()) return name;
    return name + QStringLiteral(", overlay ") + shown(m_course.overlayTitle());
}

QString GraphCursor::spokenValue() const {
    return m_panel.spokenCursor(core::state().Config);
}

double GraphCursor::timeOfSample(int sample) const {
    return m_course.hasRun() ? graph::timeOf(channels::viewOfRun(core::state().Run), sample) : 0;
}

double GraphCursor::lastTime() const {
    return timeOfSample(core::state().Run.SampleCount);
}

void GraphCursor::goToTime(double seconds) {
    if (!m_course.hasRun()) return;
    const core::OpenRun& run = core::state().Run;
    placeCursor(graph::cursorAtTime(seconds, run.image.tail.TimeOffset, run.SampleCount));
}

// --- The average of a stretch

void GraphCursor::startAverage(float x) {
    m_view.DragStartX = x;
    if (std::exchange(m_view.marks.averageFrom, std::nullopt)) emit marksChanged();
    graph::drawAverageStart(
        m_surface.surface(), x, core::state().Config.GraphBackColour, m_view.marks);
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

// --- Marks by the keys

void GraphCursor::setReference() {
    if (cursorInRun()) m_view.marks.reference = m_view.CursorSample;
    TimeLine();
    emit marksChanged();
}

void GraphCursor::average() {
    const std::optional<int> from = m_view.marks.averageFrom;
    if (from && cursorInRun() && *from != m_view.CursorSample) {
        startAverage(static_cast<float>(*from));
        finishAverage(m_view.CursorSample);
        // The word has taken the position along; the arrow keys go on from the cursor.
        m_surface.surface().setCurrentX(m_view.CursorSample);
        return;
    }
    m_view.marks.averageFrom.reset();
    if (!from && cursorInRun()) m_view.marks.averageFrom = m_view.CursorSample;
    TimeLine();
    emit marksChanged();
}

void GraphCursor::takeMarkAway() {
    if (m_view.marks.averageFrom) {
        m_view.marks.averageFrom.reset();
    } else {
        m_view.marks.reference.reset();
    }
    TimeLine();
    emit marksChanged();
}

} // namespace kvo::forms
