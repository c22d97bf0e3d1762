#include "setup/forms/analog_setup_frame.h"

#include "core/paths.h"
#include "core/shared_state.h"
#include "platform/qt/text.h"
#include "platform/services.h"
#include "setup/forms/analog_curve_view.h"
#include "setup/forms/checked_box.h"
#include "setup/sensor_models.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>

#include <string_view>

namespace kvo::forms {

using namespace platform_qt;

namespace {

constexpr int numberWidth = 9; // of a box, in average letters

QString caption(std::string_view text, const char* key) {
    return shown(text).replace(
        QString::fromLatin1(key).remove(QLatin1Char('&')), QString::fromLatin1(key));
}

QLineEdit* makeNumber(const char* name) {
    auto* box = named(new QLineEdit, name);
    box->setMinimumWidth(box->fontMetrics().averageCharWidth() * (numberWidth + 2));
    return box;
}

template <class Texts> QComboBox* makeList(const char* name, const Texts& texts) {
    auto* list = named(new QComboBox, name);
    for (const auto& text : texts) list->addItem(shown(text));
    list->setCurrentIndex(-1);
    return list;
}

void showAll(const std::vector<QWidget*>& parts, bool visible) {
    for (QWidget* part : parts) part->setVisible(visible);
}

// A row keeps its place while what stands in it comes and goes.
void keepRoom(const std::vector<QWidget*>& parts, bool keep) {
    for (QWidget* part : parts) {
        QSizePolicy policy = part->sizePolicy();
        policy.setRetainSizeWhenHidden(keep);
        part->setSizePolicy(policy);
    }
}

// The caret stays where it is in a text that does not change.
void setText(QLineEdit& box, const std::string& text) {
    const QString now = shown(text);
    if (box.text() == now) return;
    box.setText(now);
    box.setCursorPosition(0);
}

} // namespace

AnalogSetupFrame::AnalogSetupFrame(QWidget* form) : QFrame(form) {
    setObjectName(QStringLiteral("Analog_Setup"));
    setFrameStyle(static_cast<int>(QFrame::Panel) | static_cast<int>(QFrame::Raised));
    setLineWidth(2);
    QLayout* fields = makeFields();
    m_table = makeTable();
    makeButtons();
    auto* all =
        column({fields, {m_table, 1}, row({SmoothOption, LayoutPart::room(), Command2, Command1})});
    all->setContentsMargins(14, 12, 14, 12);
    all->setSpacing(10);
    setLayout(all);
    connectFields();
    hide();
}

QLayout* AnalogSetupFrame::makeFields() {
    std::vector<std::string_view> sensors;
    for (const setup::SensorModel& model : setup::sensorModels()) sensors.push_back(model.text);
    Analog = named(new QLineEdit, "Analog");
    Analog->setMaxLength(setup::analogNameLength);
    onlyFileLetters(Analog);
    Txt_Analog = named(buddyLabel({}, Analog), "Txt_Analog");
    Analog_Type = makeList("Analog_Type", setup::analogKinds);
    RangeText1 = makeNumber("RangeText1");
    AFactor = makeNumber("AFactor");
    Decimals = makeList("Decimals", setup::decimalsList);
    Zero = makeNumber("Zero");
    Fuel_Combo = makeList("Fuel_Combo", setup::fuelList);
    Sensor_Combo = makeList("Sensor_Combo", sensors);
    Sensor_Combo->setMaxVisibleItems(static_cast<int>(sensors.size()));

    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(12);
    const auto place = [grid](const QString& text, QWidget* box, int line, int column) {
        QLabel* label = buddyLabel(text, box);
        grid->addWidget(label, line, column);
        grid->addWidget(box, line, column + 1);
        return Pair{label, box};
    };
    grid->addWidget(Txt_Analog, 0, 0);
    grid->addWidget(Analog, 0, 1);
    place(QStringLiteral("Input &Type:"), Analog_Type, 0, 2);
    m_range = place(caption(setup::rangeCaption, "&0"), RangeText1, 1, 0);
    const Pair top = place(caption(setup::factorCaption, "&5"), AFactor, 1, 2);
    m_range.insert(m_range.end(), top.begin(), top.end());
    m_fuel = place(QStringLiteral("&Fuel Type"), Fuel_Combo, 1, 2);
    m_sensor = place(QStringLiteral("&Sensor Model Number"), Sensor_Combo, 1, 2);
    m_decimals = place(QStringLiteral("&Decimals:"), Decimals, 2, 0);
    m_zero = place(caption(setup::zeroCaption, "&Zero"), Zero, 2, 2);
    for (const Pair& pair : {m_decimals, m_zero}) keepRoom(pair, true);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    return grid;
}

QWidget* AnalogSetupFrame::makeTable() {
    constexpr int half = setup::tablePoints / 2;
    auto* table = new QWidget;
    auto* grid = new QGridLayout;
    Text9.make("Text9", [](int) {
        auto* box = new QLineEdit;
        box->setFixedWidth(box->fontMetrics().averageCharWidth() * (numberWidth + 2));
        return box;
    });
    Label32.make("Label32",
        [this](int point) { return buddyLabel(shown(setup::Label32(point)), &Text9[point]); });
    for (int point = 1; point <= setup::tablePoints; ++point) {
        const int line = (point - 1) % half;
        const int column = (point - 1) / half * 2;
        grid->addWidget(&Label32[point], line, column);
        grid->addWidget(&Text9[point], line, column + 1);
    }
    grid->setRowStretch(half, 1);
    m_curve = named(new AnalogCurveView, "Curve");
    m_remark = named(plainLabel({}), "CurveRemark");
    m_remark->setWordWrap(true);
    m_remark->setMinimumHeight(m_remark->fontMetrics().lineSpacing() * 2);
    auto* all = column({row({grid, {m_curve, 1}}), m_remark});
    all->setContentsMargins(0, 0, 0, 0);
    table->setLayout(all);
    return table;
}

void AnalogSetupFrame::makeButtons() {
    SmoothOption = named(new QCheckBox(QStringLiteral("Smooth &Graph Line")), "SmoothOption");
    Command2 = named(new QPushButton(QStringLiteral("&Ok")), "Command2");
    Command1 = named(new QPushButton(QStringLiteral("Cancel")), "Command1");
    Command2->setAutoDefault(false);
    Command1->setAutoDefault(false);
}

void AnalogSetupFrame::connectFields() {
    connect(
        Analog_Type, &QComboBox::currentIndexChanged, this, &AnalogSetupFrame::Analog_Type_Click);
    // A pick of the kind that stands is a click too.
    connect(Analog_Type, &QComboBox::activated, this, &AnalogSetupFrame::Analog_Type_Click);
    connect(AFactor, &QLineEdit::textChanged, this, &AnalogSetupFrame::AFactor_Change);
    connect(RangeText1, &QLineEdit::textChanged, this, &AnalogSetupFrame::drawCurve);
    for (QLineEdit* box : Text9) {
        connect(box, &QLineEdit::textChanged, this, &AnalogSetupFrame::drawCurve);
        box->installEventFilter(this);
        selectOnFocus(box);
    }
    for (QLineEdit* box : {Analog, AFactor, Zero}) selectOnFocus(box);
    connect(Command2, &QPushButton::clicked, this, &AnalogSetupFrame::Command2_Click);
    connect(Command1, &QPushButton::clicked, this, &AnalogSetupFrame::Command1_Click);
}

// The point whose box has the focus is the large one of the curve.
bool AnalogSetupFrame::eventFilter(QObject* object, QEvent* event) {
    for (int point = 1; point <= setup::tablePoints; ++point) {
        if (object != &Text9[point]) continue;
        if (event->type() == QEvent::FocusIn) m_curve->mark(point);
        if (event->type() == QEvent::FocusOut) m_curve->mark(0);
    }
    return QFrame::eventFilter(object, event);
}

void AnalogSetupFrame::open(int channel, const std::string& caption) {
    core::SharedState& state = core::state();
    collect();
    setup::AnalogSetup_Click(m_editor, channel, caption, state.Config, state.AppFolder,
        state.Tables, *platform::services().files);
    Txt_Analog->setText(shown(setup::Txt_Analog(channel)).replace("Name", "&Name"));
    showEditor();
    show();
    Command2->setDefault(true);
    Analog->setFocus();
    Analog->selectAll();
}

void AnalogSetupFrame::collect() {
    m_editor.Analog = typed(Analog->text());
    m_editor.Analog_Type = Analog_Type->currentIndex();
    m_editor.RangeText1 = typed(RangeText1->text());
    m_editor.AFactor = typed(AFactor->text());
    m_editor.Decimals = Decimals->currentIndex();
    m_editor.Zero = typed(Zero->text());
    m_editor.SmoothOption = SmoothOption->isChecked();
    m_editor.Sensor_Combo = Sensor_Combo->currentIndex();
    m_editor.Fuel_Combo = Fuel_Combo->currentIndex();
    for (int point = 1; point <= setup::tablePoints; ++point)
        m_editor.Text9[point] = typed(Text9[point].text());
}

void AnalogSetupFrame::showEditor() {
    {
        const QScopedValueRollback showing(m_showing, true);
        setText(*Analog, m_editor.Analog);
        Analog_Type->setCurrentIndex(m_editor.Analog_Type);
        setText(*RangeText1, m_editor.RangeText1);
        setText(*AFactor, m_editor.AFactor);
        Decimals->setCurrentIndex(m_editor.Decimals);
        setText(*Zero, m_editor.Zero);
        SmoothOption->setChecked(m_editor.SmoothOption);
        Sensor_Combo->setCurrentIndex(m_editor.Sensor_Combo);
        Fuel_Combo->setCurrentIndex(m_editor.Fuel_Combo);
        for (int point = 1; point <= setup::tablePoints; ++point)
            setText(Text9[point], m_editor.Text9[point]);
    }
    showParts();
    drawCurve();
}

void AnalogSetupFrame::showParts() {
    const setup::AnalogParts parts = setup::analogParts(m_editor.Analog_Type);
    keepRoom(m_range, !parts.table); // the table needs the room
    showAll(m_range, parts.range);
    showAll(m_decimals, parts.Decimals);
    showAll(m_zero, parts.Zero);
    showAll(m_fuel, parts.Fuel_Combo);
    showAll(m_sensor, parts.Sensor_Combo);
    m_table->setVisible(parts.table);
}

void AnalogSetupFrame::drawCurve() {
    if (m_showing) return;
    collect();
    if (m_editor.Analog_Type != setup::mappedInput) return;
    auto curve = setup::mappedCurve(m_editor, core::state().Tables[1]);
    m_remark->setText(curve ? shown(curve->remark) : QString());
    m_curve->setCurve(std::move(curve));
}

template <class Rule> void AnalogSetupFrame::runRule(Rule rule) {
    if (m_showing) return;
    collect();
    rule(m_editor);
    showEditor();
}

void AnalogSetupFrame::Analog_Type_Click() {
    runRule(setup::Analog_Type_Click);
}

void AnalogSetupFrame::AFactor_Change() {
    runRule(setup::AFactor_Change);
}

void AnalogSetupFrame::Command2_Click() {
    core::SharedState& state = core::state();
    platform::Services& services = platform::services();
    setup::AnalogSave save;
    runRule([&](setup::AnalogEditor& editor) {
        save = setup::Command2_Click(
            editor, state.Config, state.AppFolder, state.Tables, *services.files);
    });
    if (!save.taken()) {
        services.dialogs->messageBox(save.message, platform::boxStyle::critical, core::programName);
        goToBox(save.control);
        return;
    }
    emit captionChanged(m_editor.channel, save.caption);
    leave();
}

// The text that does not fit, where the kind of input has its box on view.
void AnalogSetupFrame::goToBox(const std::string& name) {
    if (name.empty()) return;
    QLineEdit& box = control<QLineEdit>(*this, name.c_str());
    if (!box.isVisible()) return;
    box.setFocus();
    box.selectAll();
}

void AnalogSetupFrame::Command1_Click() {
    leave();
}

void AnalogSetupFrame::leave() {
    hide();
    emit left();
}

} // namespace kvo::forms
