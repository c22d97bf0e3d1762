#include "calc/forms/calc_form.h"

#include "platform/qt/application.h"
#include "platform/qt/text.h"

#include <QFontMetrics>
#include <QFrame>
#include <QGridLayout>
#include <QPushButton>

namespace kvo::forms {

using namespace platform_qt;

namespace {

constexpr double resultLetters = 1.6; // of the letters around it
constexpr int firstUnitLabel = 6;

} // namespace

CalcForm::CalcForm() {
    setObjectName(QStringLiteral("CalcForm"));
    makeLayout();
}

QWidget* CalcForm::makeInputs() {
    auto* inputs = new QWidget;
    auto* grid = new QGridLayout(inputs);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(10);
    for (int line = 1; line <= 3; ++line) {
        auto* box = new QLineEdit;
        box->setObjectName(QStringLiteral("Text%1").arg(line));
        box->setFont(tabularFont());
        box->setAlignment(Qt::AlignRight);
        connect(box, &QLineEdit::textEdited, this, [this] { setResultCurrent(false); });
        m_boxes[line] = box;
        m_captions[line] = buddyLabel({}, box);
        m_captions[line]->setObjectName(QStringLiteral("Label%1").arg(line));
        m_units[line] = new QLabel;
        m_units[line]->setObjectName(QStringLiteral("Label%1").arg(line + firstUnitLabel - 1));
        m_units[line]->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("4/6/8  ")));
        grid->addWidget(m_captions[line], line, 0);
        grid->addWidget(box, line, 1);
        grid->addWidget(m_units[line], line, 2);
    }
    grid->setColumnStretch(1, 1);
    return inputs;
}

QWidget* CalcForm::makeResult() {
    Label4 = named(new QLabel, "Label4");
    Label5 = named(new QLabel, "Label5");
    QFont large = tabularFont();
    large.setPointSizeF(large.pointSizeF() * resultLetters);
    large.setBold(true);
    Label5->setFont(large);
    Label5->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    Label5->setTextInteractionFlags(Qt::TextSelectableByMouse);
    // A result of a hundred digits does not widen the window; it is whole in the tool tip.
    Label5->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    Label5->setMinimumSize(
        QFontMetrics(large).horizontalAdvance(QStringLiteral("0000000.00 Cu.In")),
        QFontMetrics(large).height());
    auto* frame = new QFrame;
    frame->setFrameStyle(static_cast<int>(QFrame::StyledPanel) | static_cast<int>(QFrame::Sunken));
    frame->setLayout(row({Label4, {Label5, 1}}));
    return frame;
}

void CalcForm::makeLayout() {
    Command1 = named(new QPushButton(QStringLiteral("&Calculate")), "Command1");
    ToggleMetric = named(new QPushButton(QStringLiteral("&Toggle Metric / Imp.")), "ToggleMetric");
    Cancel = named(new QPushButton(QStringLiteral("Cl&ose")), "Cancel");
    for (QPushButton* button : {ToggleMetric, Cancel}) button->setAutoDefault(false);
    Command1->setDefault(true);
    connect(Command1, &QPushButton::clicked, this, &CalcForm::Command1_Click);
    connect(ToggleMetric, &QPushButton::clicked, this, &CalcForm::ToggleMetric_Click);
    connect(Cancel, &QPushButton::clicked, this, &CalcForm::Cancel_Click);
    auto* all = column({makeInputs(), makeResult(), LayoutPart::room(),
        row({Command1, ToggleMetric, LayoutPart::room(), Cancel})});
    all->setContentsMargins(16, 14, 16, 14);
    all->setSpacing(12);
    setLayout(all);
}

void CalcForm::showSum(int sum) {
    const calc::EngineSum& row = calc::engineSums()[static_cast<std::size_t>(sum)];
    m_state = calc::openedCalcForm(row);
    setWindowTitle(shown(row.title));
    Label4->setText(shown(row.result));
    QLineEdit* first = nullptr;
    for (int line = 3; line >= 1; --line) {
        const calc::CalcRow& texts = row.rows[static_cast<std::size_t>(line - 1)];
        const bool isUsed = !texts.caption.empty();
        m_captions[line]->setText(shown(texts.caption));
        m_captions[line]->setVisible(isUsed);
        m_boxes[line]->setVisible(isUsed);
        m_units[line]->setVisible(isUsed);
        if (isUsed) first = m_boxes[line];
    }
    setResultCurrent(true);
    showState();
    first->setFocus();
    showModal(*this);
}

void CalcForm::collect() {
    for (int line = 1; line <= 3; ++line) m_state.Text[line] = typed(m_boxes[line]->text());
}

void CalcForm::showState() {
    for (int line = 1; line <= 3; ++line) {
        m_boxes[line]->setText(shown(m_state.Text[line]));
        m_units[line]->setText(shown(m_state.unit[line]));
    }
    Label5->setText(shown(m_state.Label5));
    Label5->setToolTip(Label5->text());
}

void CalcForm::setResultCurrent(bool current) {
    Label5->setEnabled(current);
}

void CalcForm::Command1_Click() {
    collect();
    setResultCurrent(calc::Command1_Click(m_state));
    showState();
}

void CalcForm::ToggleMetric_Click() {
    collect();
    calc::ToggleMetric_Click(m_state);
    showState();
}

void CalcForm::Cancel_Click() {
    unload<CalcForm>();
}

} // namespace kvo::forms
