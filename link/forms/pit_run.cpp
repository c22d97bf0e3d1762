#include "link/forms/pit_run.h"

#include "core/forms/doors.h"
#include "core/setup_kinds.h"
#include "core/shared_state.h"
#include "link/forms/logger_line.h"
#include "link/forms/range_bar.h"
#include "platform/qt/application.h"
#include "platform/qt/text.h"
#include "platform/services.h"

#include <QFontMetrics>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>

#include <array>

namespace kvo::forms {

using namespace platform_qt;

namespace {

constexpr double largeDigits = 2.4; // of the letters around them
constexpr double mediumDigits = 1.4;

// A cell for a value that changes thirty times a second: digits of one width, and a size that no
// text changes, so that nothing jumps and nothing is laid out again.
QLabel* cell(const QString& widest, double times) {
    QLabel* label = plainLabel({});
    QFont digits = tabularFont();
    digits.setPointSizeF(digits.pointSizeF() * times);
    label->setFont(digits);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    label->setFrameStyle(static_cast<int>(QFrame::StyledPanel) | static_cast<int>(QFrame::Sunken));
    label->setMargin(3);
    const QFontMetrics metrics(digits);
    const int around = 2 * (label->margin() + label->frameWidth());
    label->setFixedSize(metrics.horizontalAdvance(widest) + around + metrics.averageCharWidth(),
        metrics.height() + around);
    return label;
}

// The columns stand further apart than the lines of each.
QGridLayout* columnGrid() {
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(6);
    return grid;
}

void write(QLabel& label, const std::string& text) {
    const QString now = shown(text);
    if (now != label.text()) label.setText(now);
}

// Nothing leaves the label as it was.
void write(QLabel& label, const std::optional<std::string>& text) {
    if (text) write(label, *text);
}

// A value out of a table has any number of places. Its point stays where it is, and what the cell
// has no room for is cut behind it.
void writeAtPoint(QLabel& label, const std::string& text, const QString& widestWhole) {
    const QFontMetrics metrics(label.font());
    const int edge = metrics.averageCharWidth() / 2;
    const int inside = label.minimumWidth() - 2 * (label.margin() + label.frameWidth()) - 2 * edge;
    const int room = qMax(0, inside - metrics.horizontalAdvance(widestWhole));
    const QString whole = shown(text).section(QLatin1Char('.'), 0, 0);
    QString behind = shown(text).mid(whole.size());
    while (!behind.isEmpty() && metrics.horizontalAdvance(behind) > room) behind.chop(1);
    if (behind.size() == 1) behind.clear();
    const int places = metrics.horizontalAdvance(behind);
    const QString now = metrics.elidedText(whole, Qt::ElideRight, inside - places) + behind;
    if (now == label.text()) return;
    label.setIndent(edge + room - places);
    label.setText(now);
}

} // namespace

PitRun::PitRun()
    : m_session(loggerLink(), {core::state().Config, core::state().AppFolder, core::state().Tables},
          *this, *platform::services().dialogs, *platform::services().files) {
    setObjectName(QStringLiteral("PitRun"));
    setWindowTitle(QStringLiteral("Pit Run"));
    setWindowFlags(Qt::Window); // it stands in the main window's place
    makeLayout();
    m_session.Form_Load();
    for (int c = 1; c <= 8; ++c)
        m_widestWhole[c] = shown(link::widestWhole(core::state().Tables[c]));
}

QLayout* PitRun::makeSpeeds() {
    // What 16 bits of a period can say at most, with its cents.
    const QString widest = QStringLiteral("15000000.00");
    auto* grid = columnGrid();
    const auto line = [grid](int row, const char* caption, QLabel* value) {
        grid->addWidget(plainLabel(QLatin1String(caption)), row, 0);
        grid->addWidget(value, row, 1);
    };
    const auto bar = [this, grid](int channel, const char* name, QLabel* value) {
        grid->addWidget(makeBar(channel, value, QLatin1String(name)), channel + 1, 2);
    };
    LineNumber = named(cell(QStringLiteral(" 65535"), mediumDigits), "LineNumber");
    ERpm = named(cell(widest, largeDigits), "ERpm");
    CRpm = named(cell(widest, largeDigits), "CRpm");
    PRpm = named(cell(widest, largeDigits), "PRpm");
    Mph = named(cell(widest, largeDigits), "Mph");
    line(0, "Sample:", LineNumber);
    line(1, "Engine RPM:", ERpm);
    line(2, "Clutch RPM:", CRpm);
    line(3, "Pinion RPM:", PRpm);
    line(4, "Mph:", Mph);
    bar(0, "Engine RPM", ERpm);
    bar(1, "Clutch RPM", CRpm);
    bar(2, "Pinion RPM", PRpm);
    bar(3, "Mph", Mph);
    grid->setAlignment(LineNumber, Qt::AlignRight);
    grid->setRowStretch(5, 1);
    return grid;
}

QLayout* PitRun::makeAnalogs() {
    auto* grid = columnGrid();
    grid->addWidget(headingLabel(QStringLiteral("Analog Channels")), 0, 0, 1, 3);
    const core::AppConfig& config = core::state().Config;
    Text_Analog.make("Text_Analog", [&](int c) { return plainLabel(shown(config.AnalogName[c])); });
    // A value out of a table has up to fifteen digits.
    Analog.make(
        "Analog", [](int) { return cell(QStringLiteral("-000.0000000000000"), mediumDigits); });
    for (int c = 1; c <= 8; ++c) {
        grid->addWidget(&Text_Analog[c], c, 0);
        grid->addWidget(&Analog[c], c, 1);
        grid->addWidget(
            makeBar(link::firstPitAnalog + c - 1, &Analog[c], Text_Analog[c].text()), c, 2);
    }
    grid->setRowStretch(9, 1);
    return grid;
}

QLayout* PitRun::makeExhausts() {
    auto* grid = columnGrid();
    Temps_Label = named(headingLabel(QStringLiteral("Exhaust Temps")), "Temps_Label");
    grid->addWidget(Temps_Label, 0, 0, 1, 3);
    Text_T.make("Text_T", [](int i) { return plainLabel(QStringLiteral("Exhaust %1").arg(i)); });
    T.make("T", [](int) { return cell(QStringLiteral("00000"), mediumDigits); });
    for (int i = 1; i <= 8; ++i) {
        grid->addWidget(&Text_T[i], i, 0);
        grid->addWidget(&T[i], i, 1);
        grid->addWidget(makeBar(link::firstPitExhaust + i - 1, &T[i], Text_T[i].text()), i, 2);
    }
    grid->setRowStretch(9, 1);
    return grid;
}

// Where the number of a channel stands between the smallest and the largest since the start.
RangeBar* PitRun::makeBar(int channel, QLabel* value, const QString& name) {
    const auto place = static_cast<std::size_t>(channel);
    auto* bar = new RangeBar([this, place] { return shown(m_display.ranges()[place].text()); });
    bar->setObjectName(QStringLiteral("Bar_") + value->objectName());
    bar->setAccessibleName(name.trimmed() + QStringLiteral(", from smallest to largest"));
    m_bars[place] = bar;
    return bar;
}

void PitRun::makeFreeze() {
    But_Freeze = named(new QPushButton(QStringLiteral("&Freeze")), "But_Freeze");
    But_Freeze->setCheckable(true);
    But_Freeze->setAutoDefault(false);
    But_Freeze->setToolTip(
        QStringLiteral("The numbers stand still while the logger goes on, by the key F too."));
    Label_Freeze = named(headingLabel({}), "Label_Freeze");
    connect(But_Freeze, &QPushButton::clicked, this, &PitRun::But_Freeze_Click);
    auto* key = new QShortcut(QKeySequence(Qt::Key_F), this);
    key->setAutoRepeat(false);
    connect(key, &QShortcut::activated, But_Freeze, &QPushButton::click);
    showFreeze();
}

// Required: they stand on the form, and no frame ever drives them.
QLayout* PitRun::makeIdleRow() {
    static constexpr std::array<const char*, 4> captions{
        "Trans Brake", "Wide Open Throttle", "Shift Light", "Dyna Two Step"};
    auto* box = new QHBoxLayout;
    box->setSpacing(24);
    const auto add = [box](QLabel* label) {
        label->setEnabled(false);
        label->setToolTip(QStringLiteral("Not shown in a pit run"));
        box->addWidget(label);
    };
    StatusLabel.make("StatusLabel",
        [](int i) { return plainLabel(QLatin1String(captions[static_cast<std::size_t>(i)])); });
    for (QLabel* label : StatusLabel) add(label);
    FlowMeter = named(plainLabel(QStringLiteral("Flow Meter")), "FlowMeter");
    add(FlowMeter);
    box->addStretch(1);
    return box;
}

QLayout* PitRun::makeBottom() {
    Command1 = named(new QPushButton(QStringLiteral("&Start")), "Command1");
    BTN_Ok = named(new QPushButton(QStringLiteral("Cancel")), "BTN_Ok");
    Command1->setDefault(true);
    BTN_Ok->setAutoDefault(false);
    connect(Command1, &QPushButton::clicked, this, &PitRun::Command1_Click);
    connect(BTN_Ok, &QPushButton::clicked, this, &PitRun::BTN_Ok_Click);
    Label_Port = named(plainLabel({}), "Label_Port");
    showPort();
    makeFreeze();
    return row({Label_Port, LayoutPart::room(), But_Freeze, Command1, BTN_Ok});
}

void PitRun::makeLayout() {
    Label_Status = named(headingLabel({}), "Label_Status");
    Label_Status->setFixedHeight(Label_Status->fontMetrics().lineSpacing());
    auto* readings = row({makeSpeeds(), makeAnalogs(), makeExhausts(), LayoutPart::room()});
    readings->setSpacing(20);
    auto* bottom = makeBottom();
    Label_Freeze->setFixedHeight(Label_Status->height());
    auto* words = row({{Label_Status, 1}, Label_Freeze});
    auto* all = column({readings, LayoutPart::room(), makeIdleRow(), words, bottom});
    all->setContentsMargins(20, 16, 20, 16);
    all->setSpacing(12);
    setLayout(all);
}

// An adapter may have come or gone since the form was made.
void PitRun::showPort() {
    Label_Port->setText(
        QString::fromStdString(loggerLink().portText(core::state().Config.CommPort)));
}

void PitRun::Command1_Click() {
    m_session.Command1_Click();
    showPort();
}

void PitRun::BTN_Ok_Click() {
    m_session.BTN_Ok_Click();
}

// Escape and the window's close button are Cancel.
void PitRun::reject() {
    BTN_Ok_Click();
}

// What is seen is counted from here on; what stands still when a run ends goes on standing.
void PitRun::setCommand1(const std::string& caption) {
    if (m_session.running()) m_display.start();
    showFreeze();
    Command1->setText(QLatin1Char('&') + shown(caption));
    showPort(); // it is open or closed by now
}

void PitRun::applyLayout(const link::PitRunLayout& layout) {
    Command1->setEnabled(layout.canRun);
    Temps_Label->setVisible(layout.Temps_Label);
    for (int i = 1; i <= 8; ++i) {
        Text_Analog[i].setVisible(layout.Analog[i]);
        Analog[i].setVisible(layout.Analog[i]);
        Text_T[i].setVisible(layout.T[i]);
        T[i].setVisible(layout.T[i]);
        m_bars[static_cast<std::size_t>(link::firstPitAnalog + i - 1)]->setVisible(
            layout.Analog[i]);
        m_bars[static_cast<std::size_t>(link::firstPitExhaust + i - 1)]->setVisible(layout.T[i]);
    }
}

void PitRun::But_Freeze_Click() {
    m_display.freeze(But_Freeze->isChecked());
    showFreeze();
    if (!m_display.frozen()) showNumbers();
}

void PitRun::showFreeze() {
    But_Freeze->setChecked(m_display.frozen());
    But_Freeze->setEnabled(m_session.running() || m_display.frozen());
    Label_Freeze->setText(m_display.frozen()
                              ? QStringLiteral("The numbers stand still - F lets them go on")
                              : QString());
}

void PitRun::showReadings(const link::PitRunReadings& readings) {
    if (m_display.take(readings)) showNumbers();
}

void PitRun::showNumbers() {
    const link::PitRunReadings& readings = m_display.latest();
    write(*LineNumber, readings.LineNumber);
    write(*ERpm, readings.ERpm);
    write(*CRpm, readings.CRpm);
    write(*PRpm, readings.PRpm);
    write(*Mph, readings.Mph);
    for (int i = 1; i <= 8; ++i) {
        if (core::state().Config.Analog_Type[i] != core::mappedInput)
            write(Analog[i], readings.Analog[i]);
        else if (readings.Analog[i])
            writeAtPoint(Analog[i], *readings.Analog[i], m_widestWhole[i]);
        write(T[i], readings.T[i]);
    }
    for (std::size_t channel = 0; channel < m_bars.size(); ++channel)
        m_bars[channel]->setPlace(m_display.ranges()[channel].place());
}

void PitRun::setStatus(const std::string& text) {
    Label_Status->setText(QString::fromStdString(text));
}

void PitRun::unload() {
    platform_qt::unload<PitRun>();
    doors().showMainWindow();
}

} // namespace kvo::forms
