#include "library/forms/run_statistics.h"

#include "core/basic/numbers.h"
#include "core/run_info.h"
#include "core/run_title.h"
#include "core/shared_state.h"
#include "library/statistics.h"
#include "platform/qt/qt_printer.h"
#include "platform/qt/text.h"
#include "platform/services.h"

#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

namespace kvo::forms {

using namespace platform_qt;

Statistics::Statistics() {
    setObjectName(QStringLiteral("Statistics"));
    setWindowTitle(QStringLiteral("Run Statistics"));
    makeLayout();
}

Statistics::Line Statistics::makeLine(
    QGridLayout& grid, const QString& caption, const QString& name, int index) {
    const QString suffix = index > 0 ? QStringLiteral("(%1)").arg(index) : QString();
    const int gridRow = grid.rowCount();
    Line line;
    line.name = plainLabel(caption);
    line.name->setObjectName(
        index > 0 ? QStringLiteral("Txt_") + name + suffix : name + QStringLiteral("_Label"));
    grid.addWidget(line.name, gridRow, 0);
    const auto value = [&](const char* part, int gridColumn) {
        QLabel* label = valueLabel(QStringLiteral("-32768.00"));
        label->setObjectName(name + QLatin1String(part) + suffix);
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        grid.addWidget(label, gridRow, gridColumn);
        return label;
    };
    line.min = value("_Min", 1);
    line.max = value("_Max", 2);
    line.ave = value("_Ave", 3);
    return line;
}

QLabel* Statistics::makeTrackLine(QGridLayout& grid, const QString& caption, const char* name) {
    const int gridRow = grid.rowCount();
    grid.addWidget(new QLabel(caption), gridRow, 0);
    QLabel* label = named(valueLabel(QStringLiteral("9999.99")), name);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    grid.addWidget(label, gridRow, 1);
    return label;
}

QWidget* Statistics::makeTrack() {
    auto* box = new QGroupBox(QStringLiteral("Track"));
    auto* grid = new QGridLayout(box);
    ET60 = makeTrackLine(*grid, QStringLiteral("60 Foot Time:"), "ET60");
    Et330 = makeTrackLine(*grid, QStringLiteral("330 Foot Time:"), "Et330");
    ET660 = makeTrackLine(*grid, QStringLiteral("660 Foot Time:"), "ET660");
    Speed660 = makeTrackLine(*grid, QStringLiteral("660 Foot Mph:"), "Speed660");
    Et1000 = makeTrackLine(*grid, QStringLiteral("1000 Foot Time:"), "Et1000");
    Et = makeTrackLine(*grid, QStringLiteral("Elapsed Time:"), "Et");
    Mph_Max = makeTrackLine(*grid, QStringLiteral("Max Mph:"), "Mph_Max");
    Horsepower =
        makeTrackLine(*grid, QStringLiteral("Estimated Rear Wheel Horsepower:"), "Horsepower");
    grid->setRowStretch(grid->rowCount(), 1);
    return box;
}

QWidget* Statistics::makeChannels() {
    auto* box = new QGroupBox(QStringLiteral("Channels"));
    auto* grid = new QGridLayout(box);
    grid->setHorizontalSpacing(18);
    grid->setVerticalSpacing(3);
    Range = named(valueLabel(QStringLiteral("-999.99 to -999.99 s")), "Range");
    Range->setToolTip(QStringLiteral("These figures are of this time, counted from the launch."));
    grid->addWidget(Range, 0, 0);
    int gridColumn = 1;
    for (const char* heading : {"Minimum", "Maximum", "Average"}) {
        auto* label = new QLabel(QLatin1String(heading));
        label->setAlignment(Qt::AlignRight);
        grid->addWidget(label, 0, gridColumn++);
    }
    m_rpm = makeLine(*grid, QStringLiteral("Eng. Rpm:"), QStringLiteral("Rpm"), 0);
    m_input = makeLine(*grid, QStringLiteral("Input Rpm:"), QStringLiteral("Input"), 0);
    m_pinion = makeLine(*grid, QStringLiteral("Pinon Rpm:"), QStringLiteral("Pinion"), 0);
    for (int c = 1; c <= 8; ++c) m_analog[c] = makeLine(*grid, {}, QStringLiteral("A"), c);
    for (int c = 1; c <= 8; ++c) {
        const QString caption = QStringLiteral("Exhaust %1:").arg(c);
        m_exhaust[c] = makeLine(*grid, caption, QStringLiteral("E"), c);
    }
    grid->setColumnStretch(0, 1);
    grid->setRowStretch(grid->rowCount(), 1);
    return box;
}

void Statistics::makeLayout() {
    Buttin_Info = named(new QPushButton(QStringLiteral("&Info...")), "Buttin_Info");
    Print_Button = named(new QPushButton(QStringLiteral("&Print")), "Print_Button");
    BUT_Close = named(new QPushButton(QStringLiteral("&Close")), "BUT_Close");
    BUT_Close->setDefault(true);
    connect(Buttin_Info, &QPushButton::clicked, this, &Statistics::Buttin_Info_Click);
    connect(Print_Button, &QPushButton::clicked, this, &Statistics::Print_Button_Click);
    connect(BUT_Close, &QPushButton::clicked, this, &Statistics::BUT_Close_Click);
    auto* all = column({{row({makeTrack(), {makeChannels(), 1}}), 1},
        row({Buttin_Info, LayoutPart::room(), Print_Button, BUT_Close})});
    all->setContentsMargins(16, 16, 16, 14);
    all->setSpacing(12);
    setLayout(all);
}

void Statistics::fill(const Line& line, const library::StatisticsRow& row) {
    line.min->setText(shown(row.Min));
    line.max->setText(shown(row.Max));
    line.ave->setText(shown(row.Ave));
    for (QLabel* label : {line.name, line.min, line.max, line.ave}) label->setVisible(row.shown);
}

void Statistics::showRun(const GraphTexts& graph) {
    m_graph = graph;
    setWindowTitle(shown(library::statisticsCaption(graph.caption)));
    fillLabels();
    showModal(*this);
}

void Statistics::fillLabels() {
    core::SharedState& state = core::state();
    const core::TrackTimes& times = m_graph.times;
    const library::RunStatistics statistics = library::Cal(state.Run, times.Text_ET);
    const library::StatisticsTexts texts =
        library::statisticsTexts(statistics, state.Run, state.Config.Exhaust, state.AnalogPicture);
    ET60->setText(shown(times.Text_60FootTime));
    Et330->setText(shown(times.Text_330FootTime));
    ET660->setText(shown(times.Text_660FootTime));
    Et1000->setText(shown(times.Text_1000FootTime));
    Et->setText(shown(times.Text_ET));
    Speed660->setText(shown(times.Text_660FootSpeed));
    Mph_Max->setText(shown(texts.Mph_Max));
    Range->setText(shown(texts.Range));
    fill(m_rpm, texts.Rpm);
    fill(m_input, texts.Input);
    fill(m_pinion, texts.Pinion);
    for (int c = 1; c <= 8; ++c) {
        m_analog[c].name->setText(shown(m_graph.analogNames[c]));
        fill(m_analog[c], texts.A[c]);
        fill(m_exhaust[c], texts.E[c]);
    }
    if (const auto power = library::horsepower(times.Text_ET, state.Config.Weight_F))
        Horsepower->setText(shown(*power));
}

// Times that are typed there change the range, and with it every figure.
void Statistics::Buttin_Info_Click() {
    core::OpenRun& run = core::state().Run;
    doors().showInfo(run.path, library::infoCaption(m_graph.caption));
    run.times = core::LoadRunTimes(run.infoPath, *platform::services().files);
    m_graph.times = run.times;
    Horsepower->clear();
    fillLabels();
}

void Statistics::BUT_Close_Click() {
    unload<Statistics>();
}

void Statistics::Print_Button_Click() {
    const std::string title = core::rightTrimmed(core::titleOf(core::state().Run.headerLine));
    if (printWindow(*this, title).outcome != platform::Printed::failed) return;
    platform::services().dialogs->messageBox(
        "The Statistics could not be printed. ", platform::boxStyle::ok, "Run Statistics");
}

} // namespace kvo::forms
