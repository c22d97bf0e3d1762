#include "graph/forms/data_graph.h"

#include "core/basic/numbers.h"
#include "core/config.h"
#include "core/run_info.h"
#include "graph/cursor.h"
#include "mainwin/main_window.h"
#include "platform/qt/form_kit.h"
#include "platform/qt/text.h"
#include "platform/services.h"

#include <QAction>
#include <QCloseEvent>
#include <QLabel>
#include <QProgressBar>
#include <QTimer>

namespace kvo::forms {

using namespace platform_qt;

namespace {

constexpr std::int16_t flagOn = -1;
constexpr int mostProgress = 1000000000;
constexpr int widestWithToolTip = 15400; // twips; on a narrower window the read-out is a tool tip

std::string baseName(const std::string& path) {
    const std::size_t separator = path.find_last_of("/\\");
    return separator == std::string::npos ? path : path.substr(separator + 1);
}

} // namespace

DataGraph::DataGraph() : m_drawing(core::state(), m_view, *this) {
    setObjectName(QStringLiteral("DataGraph"));
    makeControls();
    setCaption(graph::captionWithoutRun);
    Form_Load();
}

void DataGraph::setCaption(const std::string& caption) {
    m_caption = caption;
    setWindowTitle(shown(caption));
}

std::string DataGraph::caption() const {
    return m_caption;
}

bool DataGraph::hasRun() const {
    return m_caption != graph::captionWithoutRun;
}

void DataGraph::Form_Load() {
    core::SharedState& state = core::state();
    state.ImportMode = 0; // is GraphDirty here
    m_view.LoadingBar = 0;
    enableRunCommands(false);
    state.OverlayLoaded = 0; // one of an earlier window may still be in memory
    Resolution_Change(state.Config.G_Res);
    Change_Colour();
    ChanaleEnable();
    const bool fahrenheit = state.Config.Exhaust == flagOn;
    if (!fahrenheit) Label15->setText(QStringLiteral("Exhaust Temps Deg C"));
    ShowChannelsForType(state.Config.LoggerDataType);
    const bool runInMemory = state.IndexNoSort == flagOn;
    if (runInMemory) {
        openFreshRun();
    } else {
        ArrangeGraph();
        m_chooseOnShow = true;
    }
}

// The line comes back after another window has covered it.
void DataGraph::Form_Activate() {
    m_settled = true;
    if (hasRun()) TimeLine();
}

void DataGraph::Form_Unload() {
    core::SharedState& state = core::state();
    const platform::Services& services = platform::services();
    if (state.ImportMode != 0) {
        const auto saved = core::SaveConfig(state.AppFolder, state.Config, *services.files);
        if (!saved) {
            services.dialogs->messageBox(saved.message, platform::boxStyle::critical, "Kvo");
        }
    }
    state.SampleCount = 0;
    unload<DataGraph>();
    showMainWindow();
}

void DataGraph::closeEvent(QCloseEvent* event) {
    event->accept();
    if (isLoaded<DataGraph>() && &form<DataGraph>() == this) Form_Unload();
}

// The chooser comes up over the window, once that stands.
void DataGraph::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    if (!m_chooseOnShow) return;
    m_chooseOnShow = false;
    QTimer::singleShot(0, this, &DataGraph::Mnu_LoadData_Click);
}

bool DataGraph::event(QEvent* event) {
    const bool done = QMainWindow::event(event);
    if (event->type() == QEvent::WindowActivate) Form_Activate();
    return done;
}

// --- The picture

void DataGraph::DrawTrend() {
    if (m_drawing.DrawTrend()) return;
    platform::services().dialogs->messageBox(
        "There isn't enough video memory to display at this resolution.",
        platform::boxStyle::critical, "Memory Error");
    if (key("CancelZoom")->isEnabled()) {
        ZoomOut_Click();
    } else {
        Graph_scale(graph::scaleFull);
        DrawTrend();
    }
}

void DataGraph::redrawAll() {
    DrawTrend();
    if (core::state().OverlayLoaded != 0) m_drawing.OverLayDraw();
    TimeLine();
}

void DataGraph::applyTrendScale() {
    const auto facts = graph::graphTypeFacts(core::state().DataType);
    if (facts && facts->rightEdge) setScaleRight(*facts->rightEdge);
}

// Room for the overlay's values, which cover the run's times.
void DataGraph::uncoverOverlay() {
    const bool overlay = core::state().OverlayLoaded != 0;
    if (overlay == Frame_Times->isHidden()) return;
    for (ChannelCell* one : m_cells) one->uncoverOverlay(overlay);
    for (int group = 0; group < static_cast<int>(m_groups.size()); ++group) limitWidth(group);
    Frame_Times->setVisible(!overlay);
}

void DataGraph::TimeLine() {
    const core::SharedState& state = core::state();
    uncoverOverlay();
    if (channels::onRun(state, m_view.CursorSample)) {
        showTimeLine();
    } else if (state.SampleCount > 0) {
        platform::services().dialogs->beep();
    }
    Trend->setFocus();
}

void DataGraph::showTimeLine() {
    core::SharedState& state = core::state();
    const int sample = m_view.CursorSample;
    const auto x = static_cast<float>(sample);
    const platform::Colour colour = graph::timeLineColour(state.Config.GraphBackColour);
    platform::Surface& surface = Trend->surface();
    surface.setAutoRedraw(false);
    surface.refresh();
    surface.setDrawStyle(4);
    surface.line(x, graph::trendTop, x, 0, colour);
    surface.setDrawStyle(0);
    const graph::TimeLineTexts texts = graph::timeLineTexts(state, m_view, sample);
    showTexts(texts.loggerTime, texts.labels);
}

void DataGraph::showTexts(
    const std::string& loggerTime, const std::vector<graph::LabelText>& labels) {
    m_readOuts->LoggerTime->setText(shown(loggerTime));
    for (const graph::LabelText& label : labels) {
        ChannelCell& shownIn = cell(label.channel);
        (label.overlay ? shownIn.overlay : shownIn.value)->setText(shown(label.text));
    }
}

// --- Mouse and keys on the surface

void DataGraph::placeCursor(double sample) {
    core::keepOnFailure(m_view.CursorSample, core::CInt(sample));
    TimeLine();
}

void DataGraph::Trend_KeyDown(int key, Qt::KeyboardModifiers modifiers) {
    if (!hasRun()) return;
    const int step = graph::cursorStep(key == Qt::Key_Right, modifiers.testFlag(Qt::ShiftModifier),
        modifiers.testFlag(Qt::ControlModifier), modifiers.testFlag(Qt::AltModifier));
    // The line that was drawn last ends at the cursor.
    placeCursor(static_cast<double>(Trend->surface().currentX()) + step);
}

void DataGraph::Trend_MouseDown(Qt::MouseButton button, float x, float) {
    if (!hasRun()) return;
    if (button == Qt::LeftButton) placeCursor(x);
    if (button == Qt::RightButton) startAverage(x);
}

void DataGraph::Trend_MouseUp(Qt::MouseButton button, float x, float) {
    if (button != Qt::RightButton || !hasRun() || m_caption == "Kvo Data Graph") return;
    finishAverage(x);
}

// The right button's drag marks a stretch; it begins with a line where the button goes down.
void DataGraph::startAverage(float x) {
    platform::Surface& surface = Trend->surface();
    surface.setAutoRedraw(false);
    surface.refresh();
    surface.setDrawStyle(2);
    m_view.DragStartX = x;
    surface.line(
        x, graph::trendTop, x, 0, graph::timeLineColour(core::state().Config.GraphBackColour));
    surface.setDrawStyle(0);
}

// A cross over the stretch with its closing edge, and the means of it in the labels.
void DataGraph::finishAverage(float x) {
    core::SharedState& state = core::state();
    const platform::Colour colour = graph::timeLineColour(state.Config.GraphBackColour);
    const float start = m_view.DragStartX;
    platform::Surface& surface = Trend->surface();
    surface.setAutoRedraw(false);
    surface.setDrawStyle(2);
    surface.line(start, graph::trendTop, x, 0, colour);
    surface.line(start, 0, x, graph::trendTop, colour);
    surface.line(x, graph::trendTop, x, 0, colour);
    surface.setDrawStyle(0);
    surface.setForeColor(colour);
    const graph::AverageMark mark = graph::averageMark(start, x);
    surface.setCurrentX(mark.wordX);
    surface.setCurrentY(mark.wordY);
    surface.setFontSize(mark.wordSize);
    surface.print("AVERAGE");
    surface.setFontSize(mark.sizeBehind);
    uncoverOverlay();
    const auto texts = graph::AverageRange(state, m_view, qMin(start, x), qMax(start, x));
    if (texts.outside) return platform::services().dialogs->beep();
    showTexts(texts.loggerTime, texts.labels);
}

void DataGraph::Trend_MouseMove(Qt::MouseButtons buttons, float x, float y) {
    if (!hasRun() || buttons.testFlag(Qt::RightButton)) return;
    const graph::PointerLabels labels{
        [this](int channel) { return cell(channel).value->isEnabled(); },
        [this](int n) { return typed(cell(channels::analogChannel(n)).toggle->caption()); }};
    const auto text = graph::textUnderPointer(core::state(), m_view, x, y, labels);
    if (!text || shown(*text) == m_readOuts->Label_DataChanel->text()) return;
    m_readOuts->Label_DataChanel->setText(shown(*text));
    Label_DataChanel_Change();
}

void DataGraph::Label_DataChanel_Change() {
    const bool narrow = toTwips(width()) < widestWithToolTip;
    m_readOuts->Label_DataChanel->setVisible(!narrow);
    if (narrow) Trend->setToolTip(m_readOuts->Label_DataChanel->text());
}

// --- What the drawing asks for

void DataGraph::setTrendHourglass(bool on) {
    if (on) {
        Trend->setCursor(Qt::WaitCursor);
    } else {
        Trend->unsetCursor();
    }
}

void DataGraph::showLoading(const std::string& text, const std::string& file) {
    m_readOuts->LoadingText->setText(shown(text));
    m_readOuts->LoadingFile->setText(shown(file));
    m_readOuts->showLoading(true);
}

void DataGraph::hideLoading() {
    m_readOuts->showLoading(false);
}

void DataGraph::setProgressMax(double max) {
    m_readOuts->ProgressBar1->setValue(0);
    m_readOuts->ProgressBar1->setMaximum(static_cast<int>(qBound(1.0, max, double{mostProgress})));
}

void DataGraph::setProgressValue(double value) {
    m_readOuts->ProgressBar1->setValue(
        static_cast<int>(qBound(0.0, value, double(m_readOuts->ProgressBar1->maximum()))));
}

void DataGraph::showLabels(const graph::LabelVisibility& labels) {
    const auto apply = [](QWidget* widget, graph::Show show) {
        if (show != graph::Show::leave) widget->setVisible(show == graph::Show::show);
    };
    const auto applyValues = [&](int channel, graph::Show show) {
        apply(cell(channel).value, show);
        apply(cell(channel).overlay, show);
    };
    apply(cell(channels::clutchChannel).toggle, labels.clutch);
    applyValues(channels::clutchChannel, labels.clutch);
    for (int n = 1; n <= 8; ++n) {
        apply(cell(channels::analogChannel(n)).toggle, labels.analogToggle[n]);
        applyValues(channels::analogChannel(n), labels.analogValue[n]);
        apply(cell(channels::exhaustChannel(n)).toggle, labels.exhaustToggle);
        applyValues(channels::exhaustChannel(n), labels.exhaustValue);
    }
    apply(Label15, labels.exhaustHeading);
    for (int group = 0; group < static_cast<int>(m_groups.size()); ++group) placeCells(group);
}

bool DataGraph::clutchLabelVisible() const {
    return !cell(channels::clutchChannel).value->isHidden();
}

void DataGraph::setOverlayLabelColour(int channel, std::int32_t colour) {
    cell(channel).overlay->setFore(static_cast<platform::Colour>(colour));
}

// --- What a load asks for

void DataGraph::appendOverlayCaption(const std::string& caption) {
    setCaption(m_caption + caption);
}

void DataGraph::setScaleRight(int right) {
    Trend->surface().setScale(0, graph::trendTop, static_cast<float>(right), 0);
}

void DataGraph::setAnalogCaption(int channel, const std::string& caption) {
    cell(channels::analogChannel(channel)).toggle->setCaption(shown(caption));
}

void DataGraph::showProgress(bool on) {
    if (on) {
        showLoading("Loading:", baseName(core::state().DataFilePath));
    } else {
        hideLoading();
    }
}

void DataGraph::loadRunTimes() {
    core::SharedState& state = core::state();
    state.InfoFilePath = core::infoFilePath(state.DataFilePath);
    const core::RunTimes times =
        core::LoadRunTimes(state.InfoFilePath, *platform::services().files);
    const auto show = [this](const char* box, const std::string& text) {
        control<QLabel>(*this, box).setText(shown(text));
    };
    show("Text_60FootTime", times.Text_60FootTime);
    show("Text_330FootTime", times.Text_330FootTime);
    show("Text_660FootTime", times.Text_660FootTime);
    show("Text_660FootSpeed", times.Text_660FootSpeed);
    show("Text_1000FootTime", times.Text_1000FootTime);
    show("Text_ET", times.Text_ET);
}

// --- Pictures

bool DataGraph::saveWindowPicture(const QString& path) {
    return saveScreenshot(*this, path);
}

bool DataGraph::saveGraphPicture(const QString& path, const QSize& sizePx) {
    return Trend->picture(sizePx).save(path, "PNG");
}

void EnableGraphMenus(bool on) {
    if (isLoaded<DataGraph>()) form<DataGraph>().enableMenus(on);
}

} // namespace kvo::forms
