#include "setup/forms/data_logger_page.h"

#include "platform/qt/text.h"
#include "setup/forms/checked_box.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace kvo::forms {

using namespace platform_qt;

namespace {

constexpr int numberLetters = 13; // room for a number of a single, and for the frame

// A caption that changes with the vehicle, with the letter at a place as its key.
QString keyed(std::string_view caption, int place) {
    return shown(caption).insert(place, QLatin1Char('&'));
}

QLabel* fixedHint(const char* text) {
    return new QLabel(QLatin1String(text));
}

// A number, what stands in front of it, and its unit or range behind it.
void addNumber(QGridLayout& grid, QLabel* label, QLineEdit* box, const char* behind) {
    const int line = grid.rowCount();
    grid.addWidget(label, line, 0);
    grid.addWidget(box, line, 1);
    grid.addWidget(fixedHint(behind), line, 2);
}

} // namespace

DataLoggerPage::DataLoggerPage() {
    setObjectName(QStringLiteral("Data_Logger"));
    auto* left = column({makeVehicle(), makeTeeth(), LayoutPart::room()});
    auto* right = column({makeGears(), makeAnalogs(), LayoutPart::room()});
    auto* all = row({{left, 1}, {right, 1}});
    all->setContentsMargins(0, 6, 0, 0);
    all->setSpacing(12);
    setLayout(all);
}

QLineEdit* DataLoggerPage::makeNumber(const char* name) {
    QLineEdit* box = named(new QLineEdit, name);
    onlyFileLetters(box);
    selectOnFocus(box);
    box->setMinimumWidth(box->fontMetrics().averageCharWidth() * numberLetters);
    return box;
}

QWidget* DataLoggerPage::makeVehicle() {
    Weight_F = makeNumber("Weight_F");
    Wheel = makeNumber("Wheel");
    RWheel = makeNumber("RWheel");
    Engine_Correction = makeNumber("Engine_Correction");
    Clutch_Correction = makeNumber("Clutch_Correction");
    Pinion_Correction = makeNumber("Pinion_Correction");
    Speed_Correction = makeNumber("Speed_Correction");
    for (QLineEdit* box :
        {Engine_Correction, Clutch_Correction, Pinion_Correction, Speed_Correction}) {
        checkOnLeave(box, setup::Correction_LostFocus);
    }
    FlowRange = makeNumber("FlowRange"); // no logger of today has a flow meter
    FlowRange->setParent(this);
    FlowRange->hide();
    Weight_Label = named(buddyLabel({}, Weight_F), "Weight_Label");
    Pinion_Label = named(buddyLabel({}, Pinion_Correction), "Pinion_Label");
    auto* box = new QGroupBox(QStringLiteral("Vehicle"));
    auto* grid = new QGridLayout(box);
    const char* range = "Range = 1.00 to 5.00";
    addNumber(*grid, Weight_Label, Weight_F, "Lbs");
    addNumber(*grid, buddyLabel(QStringLiteral("Speed &Wheel Diameter :"), Wheel), Wheel, "In");
    addNumber(*grid, buddyLabel(QStringLiteral("&Rear Wheel Diameter :"), RWheel), RWheel, "In");
    addNumber(*grid, buddyLabel(QStringLiteral("&Engine Correction:"), Engine_Correction),
        Engine_Correction, range);
    addNumber(*grid, buddyLabel(QStringLiteral("C&lutch Correction:"), Clutch_Correction),
        Clutch_Correction, range);
    addNumber(*grid, Pinion_Label, Pinion_Correction, range);
    addNumber(*grid, buddyLabel(QStringLiteral("&MPH Correction:"), Speed_Correction),
        Speed_Correction, range);
    grid->setColumnStretch(1, 1);
    return box;
}

QWidget* DataLoggerPage::makeTeeth() {
    Pinion_F = makeNumber("Pinion_F");
    Crown_F = makeNumber("Crown_F");
    for (QLineEdit* box : {Pinion_F, Crown_F})
        connect(box, &QLineEdit::textChanged, this, &DataLoggerPage::Label_Diff_Ratio_Event);
    Pteeth_Label = named(buddyLabel({}, Pinion_F), "Pteeth_Label");
    Cteeth_Label = named(buddyLabel({}, Crown_F), "Cteeth_Label");
    Label_Diff_Ratio = named(valueLabel(QStringLiteral("Ratio = 9999.99")), "Label_Diff_Ratio");
    auto* box = new QGroupBox(QStringLiteral("Number of Teeth"));
    auto* grid = new QGridLayout(box);
    grid->addWidget(Pteeth_Label, 0, 0);
    grid->addWidget(Pinion_F, 0, 1);
    grid->addWidget(Cteeth_Label, 1, 0);
    grid->addWidget(Crown_F, 1, 1);
    grid->addWidget(Label_Diff_Ratio, 0, 2, 2, 1, Qt::AlignVCenter);
    grid->setColumnStretch(1, 1);
    return box;
}

QWidget* DataLoggerPage::makeGears() {
    constexpr std::array<const char*, setup::mostGears> labels{
        "First_Label", "Second_Label", "Third_Label", "Fourth_Label", "Fifth_Label", "Sixth_Label"};
    constexpr std::array<const char*, setup::mostGears> captions{
        "First:", "Second:", "Third:", "Fourth:", "Fifth:", "Sixth:"};
    constexpr std::array<const char*, setup::mostGears> ratios{
        "First_Ratio", "Second_Ratio", "Third_Ratio", "Forth_Ratio", "Fifth_Ratio", "Sixth_Ratio"};
    auto* box = named(new QGroupBox(QStringLiteral("Gears")), "Frame2");
    auto* grid = new QGridLayout(box);
    Gears = named(valueLabel(QStringLiteral("-32768")), "Gears");
    grid->addWidget(new QLabel(QStringLiteral("Number of Gears:")), 0, 0, 1, 2);
    grid->addWidget(Gears, 0, 2, 1, 2);
    GearRatios = named(new QPushButton(QStringLiteral("&Gear Ratios")), "GearRatios");
    GearRatios->setAutoDefault(false);
    GearRatios->setFocusPolicy(Qt::TabFocus);
    connect(
        GearRatios, &QPushButton::clicked, this, [this] { emit GearRatios_Clicked(GearRatios); });
    grid->addWidget(GearRatios, 0, 4, 1, 2);
    for (std::size_t i = 0; i < m_ratios.size(); ++i) {
        m_gearLabels[i] = named(new QLabel(QLatin1String(captions[i])), labels[i]);
        m_ratios[i] = named(valueLabel(QStringLiteral("99.99")), ratios[i]);
        const int line = 1 + static_cast<int>(i) / 3;
        const int place = static_cast<int>(i) % 3 * 2;
        grid->addWidget(m_gearLabels[i], line, place);
        grid->addWidget(m_ratios[i], line, place + 1);
    }
    return box;
}

QWidget* DataLoggerPage::makeAnalogs() {
    auto* box = new QGroupBox(QStringLiteral("Analog Channels"));
    auto* grid = new QGridLayout(box);
    grid->addWidget(new QLabel(QStringLiteral("Name and sensor")), 0, 1);
    Text.make("Text", [](int n) { return new QLabel(QStringLiteral("Analog %1:").arg(n)); });
    AnalogSetup.make("AnalogSetup", [this](int n) {
        auto* button = new QPushButton;
        button->setAutoDefault(false);
        button->setFocusPolicy(Qt::TabFocus);
        connect(button, &QPushButton::clicked, this,
            [this, n, button] { emit AnalogSetup_Clicked(n, button); });
        return button;
    });
    Analog_Check.make("Analog_Check", [](int n) {
        auto* check = new QCheckBox(QStringLiteral("Use on pit run"));
        check->setAccessibleName(QStringLiteral("Use analog %1 on pit run").arg(n));
        return check;
    });
    for (int n = 1; n <= 8; ++n) {
        grid->addWidget(&Text[n], n, 0);
        grid->addWidget(&AnalogSetup[n], n, 1);
        grid->addWidget(&Analog_Check[n], n, 2);
    }
    grid->setColumnStretch(1, 1);
    return box;
}

void DataLoggerPage::showValues(const setup::SetupValues& values) {
    const setup::GearingValues& gearing = values.gearing;
    Weight_F->setText(shown(gearing.Weight_F));
    Wheel->setText(shown(gearing.Wheel));
    RWheel->setText(shown(gearing.RWheel));
    Pinion_F->setText(shown(gearing.Pinion_F));
    Crown_F->setText(shown(gearing.Crown_F));
    Engine_Correction->setText(shown(gearing.Engine_Correction));
    Clutch_Correction->setText(shown(gearing.Clutch_Correction));
    Pinion_Correction->setText(shown(gearing.Pinion_Correction));
    Speed_Correction->setText(shown(gearing.Speed_Correction));
    FlowRange->setText(shown(values.FlowRange));
    for (int n = 1; n <= 8; ++n) Analog_Check[n].setChecked(values.Analog_Check[n]);
    showRows(values);
}

void DataLoggerPage::showRows(const setup::SetupValues& values) {
    const setup::VehicleCaptions& captions = setup::vehicleCaptions(values.Vehicle_Type);
    Weight_Label->setText(keyed(captions.Weight_Label, 0));
    Pinion_Label->setText(keyed(captions.Pinion_Label, 0));
    Pteeth_Label->setText(keyed(captions.Pteeth_Label, 1));
    Cteeth_Label->setText(keyed(captions.Cteeth_Label, 2));
    showGears(values.gearing);
    for (int n = 1; n <= 8; ++n) {
        AnalogSetup[n].setText(
            shown(values.AnalogSetup[n]).replace(QLatin1Char('&'), QLatin1String("&&")));
        Text[n].setVisible(values.rows.analog[n]);
        AnalogSetup[n].setVisible(values.rows.analog[n]);
        Analog_Check[n].setVisible(values.rows.analog[n]);
    }
}

void DataLoggerPage::showGears(const setup::GearingValues& gearing) {
    Gears->setText(shown(gearing.Gears));
    for (std::size_t i = 0; i < m_ratios.size(); ++i) {
        const int gear = static_cast<int>(i) + 1;
        m_ratios[i]->setText(shown(gearing.Ratio[gear]));
        m_ratios[i]->setVisible(gear <= gearing.gearsShown);
        m_gearLabels[i]->setVisible(gear <= gearing.gearsShown);
    }
}

void DataLoggerPage::Label_Diff_Ratio_Event() {
    Label_Diff_Ratio->setText(
        shown(setup::Label_Diff_Ratio(typed(Crown_F->text()), typed(Pinion_F->text()))));
}

void DataLoggerPage::collect(setup::SetupValues& values) const {
    setup::GearingValues& gearing = values.gearing;
    gearing.Weight_F = typed(Weight_F->text());
    gearing.Wheel = typed(Wheel->text());
    gearing.RWheel = typed(RWheel->text());
    gearing.Pinion_F = typed(Pinion_F->text());
    gearing.Crown_F = typed(Crown_F->text());
    gearing.Engine_Correction = typed(Engine_Correction->text());
    gearing.Clutch_Correction = typed(Clutch_Correction->text());
    gearing.Pinion_Correction = typed(Pinion_Correction->text());
    gearing.Speed_Correction = typed(Speed_Correction->text());
    values.FlowRange = typed(FlowRange->text());
    for (int n = 1; n <= 8; ++n) values.Analog_Check[n] = Analog_Check[n].isChecked();
}

} // namespace kvo::forms
