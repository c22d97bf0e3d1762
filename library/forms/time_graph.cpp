#include "library/forms/time_graph.h"

#include "core/forms/doors.h"
#include "core/shared_state.h"
#include "library/forms/unread.h"
#include "library/run_list.h"
#include "platform/qt/plain_scroll_bar.h"
#include "platform/qt/qt_printer.h"
#include "platform/qt/surface_widget.h"
#include "platform/qt/text.h"
#include "platform/services.h"

#include <QEvent>
#include <QFrame>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyleOptionFocusRect>
#include <QStylePainter>
#include <QTextDocument>

namespace kvo::forms {

using namespace platform_qt;

namespace {

constexpr platform::Colour timeGround = 0xE8E8E8;
constexpr int leastAxisPx = 950;   // below this two hundredths would share a pixel
constexpr int widestLabelPx = 280; // a longer label is cut, its tool tip is not
constexpr int metPx = 3;           // so near a mark the line or the pointer meets it
constexpr int besideLinePx = 8;    // of the axis that stays in view with the line
constexpr int swatchWidthPx = 14;
constexpr int swatchHeightPx = 16;
constexpr int swatchMarkPx = 3;

QColor shownTimeColour(platform::Colour colour) {
    return QColor::fromRgb(platform::rgb32(colour));
}

// The label of a run: it looks like a label, and is pressed like a button.
class RunLabel : public QPushButton {
public:
    RunLabel() {
        setFlat(true);
        setAutoDefault(false);
        setCursor(Qt::PointingHandCursor);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QStylePainter painter(this);
        QFont letters = font();
        // A low window has low rows: the letters get smaller, but stay in their row.
        if (painter.fontMetrics().height() > height()) letters.setPixelSize(qMax(8, height() - 3));
        letters.setUnderline(underMouse());
        painter.setFont(letters);
        QString caption = text();
        caption.replace(QLatin1String("&&"), QLatin1String("&"));
        painter.drawText(rect().adjusted(4, 0, -4, 0), static_cast<int>(Qt::AlignVCenter),
            painter.fontMetrics().elidedText(caption, Qt::ElideRight, width() - 8));
        if (!hasFocus()) return;
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        focus.rect = rect();
        painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
    }
};

// A mark of that colour on the ground of the graph.
QLabel* timeSwatch(platform::Colour colour, double ratio) {
    QPixmap pixels(QSize(swatchWidthPx, swatchHeightPx) * ratio);
    pixels.setDevicePixelRatio(ratio);
    pixels.fill(shownTimeColour(timeGround));
    QPainter painter(&pixels);
    painter.fillRect((swatchWidthPx - swatchMarkPx) / 2, 1, swatchMarkPx, swatchHeightPx - 2,
        shownTimeColour(colour));
    painter.end();
    auto* label = new QLabel;
    label->setPixmap(pixels);
    return label;
}

} // namespace

TimeGraph::TimeGraph() {
    setObjectName(QStringLiteral("TimeGraph"));
    setWindowTitle(QStringLiteral("Time Graph"));
    setWindowFlags(Qt::Window); // it stands in the main window's place
    makeControls();
    makeLayout();
    const QSize room = screen()->availableSize();
    setMinimumSize(640, 420);
    resize(qMin(room.width() * 9 / 10, 1600), qMin(room.height() * 9 / 10, 1000));
    Form_Load();
}

void TimeGraph::makeControls() {
    Frame1 = named(new QFrame, "Frame1");
    Frame2 = named(new QFrame, "Frame2");
    Graph = new SurfaceWidget(Frame2);
    Graph->setObjectName(QStringLiteral("Graph"));
    Graph->setAccessibleName(QStringLiteral("Times"));
    Graph->surface().setBackColor(timeGround);
    HScroll1 = named(new PlainScrollBar(Qt::Horizontal), "HScroll1");
    HScroll1->setAccessibleName(QStringLiteral("Scroll along the times"));
    makeDates();
    BUT_Close = named(new QPushButton(QStringLiteral("&Close")), "BUT_Close");
    PrintGraph = named(new QPushButton(QStringLiteral("&Print")), "PrintGraph");
    for (QPushButton* button : {BUT_Close, PrintGraph}) button->setAutoDefault(false);
    connect(BUT_Close, &QPushButton::clicked, this, &TimeGraph::BUT_Close_Click);
    connect(PrintGraph, &QPushButton::clicked, this, &TimeGraph::PrintGraph_Click);
    connect(HScroll1, &QScrollBar::valueChanged, this, &TimeGraph::HScroll1_Change);
    connect(Graph, &SurfaceWidget::keyDown, this, &TimeGraph::Graph_KeyDown);
    connect(Graph, &SurfaceWidget::mouseDown, this,
        [this](Qt::MouseButton, float x, float) { moveLine(library::lineAt(x)); });
    connect(Graph, &SurfaceWidget::mouseMoved, this,
        [this](Qt::MouseButtons, float x, float y) { Graph_MouseMove(x, y); });
    for (QFrame* frame : {Frame1, Frame2}) frame->installEventFilter(this);
}

void TimeGraph::makeDates() {
    Date.make("Date", [this](int i) {
        auto* label = new RunLabel;
        label->setParent(Frame1);
        label->hide();
        connect(label, &QPushButton::clicked, this, [this, i] { Date_Click(i); });
        return label;
    });
}

QLayout* TimeGraph::makeReadOut() {
    Label3 = named(new QLabel(QStringLiteral("Line at")), "Label3");
    Time_Label = named(valueLabel(QStringLiteral("19.00")), "Time_Label");
    Time_Label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    Label4 = named(new QLabel(QStringLiteral("s")), "Label4");
    Label7 = named(plainLabel({}), "Label7");
    Label7->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    return row({Label3, Time_Label, Label4, {Label7, 1}});
}

QLayout* TimeGraph::makeLegend() {
    Label6 = named(new QLabel(QStringLiteral("Marks:")), "Label6");
    auto* legend = row({Label6});
    for (const library::TimeKind& kind : library::timeKinds()) {
        legend->addSpacing(8);
        QWidget* swatch = timeSwatch(platform::paletteColour(kind.colour), devicePixelRatioF());
        swatch->setAccessibleName(QStringLiteral("Colour of ") + shown(kind.name));
        legend->addWidget(swatch);
        legend->addWidget(new QLabel(shown(kind.name)));
    }
    legend->addStretch(1);
    return legend;
}

void TimeGraph::makeLayout() {
    auto* grid = new QGridLayout;
    grid->setSpacing(4);
    grid->addWidget(Frame1, 0, 0);
    grid->addWidget(Frame2, 0, 1);
    grid->addWidget(HScroll1, 1, 1);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(0, 1);
    auto* all = column({makeReadOut(), {grid, 1}, row({{makeLegend(), 1}, PrintGraph, BUT_Close})});
    all->setContentsMargins(12, 10, 12, 10);
    all->setSpacing(8);
    setLayout(all);
    setTabOrder(Graph, HScroll1);
    setTabOrder(HScroll1, &Date[1]);
    for (int i = 1; i < Date.last; ++i) setTabOrder(&Date[i], &Date[i + 1]);
    setTabOrder(&Date[Date.last], PrintGraph);
    setTabOrder(PrintGraph, BUT_Close);
}

// --- Opening and closing

void TimeGraph::Form_Load() {
    m_table = core::LoadTimesTable(core::state().AppFolder, *platform::services().files);
    m_rows = library::timedRows(m_table);
    Draw_TimeGraph();
    GraphLine(0);
    tellUnread(m_table.unread);
}

void TimeGraph::Draw_TimeGraph() {
    library::drawTimeGraph(Graph->surface(), m_rows);
    int widest = 0;
    for (QPushButton* label : Date) label->hide();
    for (const library::TimedRow& row : m_rows) {
        QPushButton& label = Date[row.row];
        label.setText(shownCaption(row.label));
        label.setToolTip(plainTip(shown(row.toolTip)));
        label.show();
        widest = qMax(widest, fontMetrics().horizontalAdvance(shown(row.label)));
    }
    Frame1->setFixedWidth(qBound(100, widest + 16, widestLabelPx));
}

void TimeGraph::showTable(bool fromGraph) {
    TimeGraphFromGraph = fromGraph;
    if (isVisible()) Form_Load(); // times may have come in behind it
    if (isMinimized()) showNormal();
    show();
    raise();
    activateWindow();
    Graph->setFocus();
}

void TimeGraph::BUT_Close_Click() {
    Form_Unload();
}

void TimeGraph::Form_Unload() {
    const bool fromGraph = TimeGraphFromGraph;
    unload<TimeGraph>();
    fromGraph ? doors().raiseGraph() : doors().showMainWindow();
}

void TimeGraph::Date_Click(int row) {
    if (!library::opensRun(m_table, row)) return platform::services().dialogs->beep();
    const auto chosen = library::chooseTimedRun(m_table.entries[row], library::runList(),
        core::state().AppFolder, *platform::services().files);
    Form_Unload();
    doors().hideMainWindow();
    doors().showChosenRun(chosen);
}

void TimeGraph::PrintGraph_Click() {
    const platform::Services& services = platform::services();
    const std::string heading = library::printedHeading(services.clock->now());
    if (printWindow(*this, heading).outcome != platform::Printed::failed) return;
    services.dialogs->messageBox(
        "The Time Graph could not be printed. ", platform::boxStyle::ok, "Time Graph");
}

// --- Sizes and scrolling

bool TimeGraph::eventFilter(QObject* object, QEvent* event) {
    if (object == Frame2 && event->type() == QEvent::Resize) Form_Resize();
    if (object == Frame1 && event->type() == QEvent::Resize) placeDates();
    return QDialog::eventFilter(object, event);
}

void TimeGraph::Form_Resize() {
    constexpr int stepsAcross = 5;
    const QSize view = Frame2->size();
    Graph->resize(qMax(view.width(), leastAxisPx), view.height());
    const QSignalBlocker silent(HScroll1);
    HScroll1->setRange(0, Graph->width() - view.width());
    HScroll1->setPageStep(view.width());
    HScroll1->setSingleStep(qMax(1, width() / stepsAcross));
    HScroll1->setVisible(HScroll1->maximum() > 0);
    HScroll1_Change();
    showMarks();
}

// Each label beside the row of its marks.
void TimeGraph::placeDates() {
    const auto top = [this](int row) { return Frame1->height() * row / library::timeAxisRows; };
    for (int i = Date.first; i <= Date.last; ++i)
        Date[i].setGeometry(0, top(i), Frame1->width(), top(i + 1) - top(i));
}

void TimeGraph::HScroll1_Change() {
    Graph->move(-HScroll1->value(), 0);
}

void TimeGraph::bringIntoView(int x) {
    const int at = Graph->width() * x / library::timeAxisEnd;
    const int width = Frame2->width();
    if (at - besideLinePx < HScroll1->value()) HScroll1->setValue(at - besideLinePx);
    if (at + besideLinePx > HScroll1->value() + width)
        HScroll1->setValue(at + besideLinePx - width);
}

// --- The line

void TimeGraph::GraphLine(int x) {
    m_line = x;
    Time_Label->setText(shown(library::timeOfLine(x)));
    library::GraphLine(Graph->surface(), x);
    showMarks();
}

void TimeGraph::moveLine(std::optional<int> x) {
    if (!x) return platform::services().dialogs->beep();
    GraphLine(*x);
    bringIntoView(*x);
}

int TimeGraph::reach() const {
    return qMax(1, metPx * library::timeAxisEnd / qMax(1, Graph->width()));
}

void TimeGraph::showMarks() {
    const QString marks = shown(library::marksAt(m_rows, m_line, reach()));
    Label7->setText(fontMetrics().elidedText(marks, Qt::ElideRight, Label7->width()));
    Label7->setToolTip(plainTip(marks));
}

void TimeGraph::Graph_KeyDown(int key, Qt::KeyboardModifiers modifiers) {
    moveLine(library::movedLine(m_line, key == Qt::Key_Right, modifiers.testFlag(Qt::ShiftModifier),
        modifiers.testFlag(Qt::ControlModifier), modifiers.testFlag(Qt::AltModifier)));
}

// The mark under the pointer says its value.
void TimeGraph::Graph_MouseMove(float x, float y) {
    Graph->setToolTip(plainTip(shown(library::markUnder(m_rows, x, y, reach()))));
}

} // namespace kvo::forms
