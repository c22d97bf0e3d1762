#include "setup/forms/edit_gears_frame.h"

#include "platform/qt/form_kit.h"
#include "platform/qt/text.h"
#include "setup/forms/checked_box.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace kvo::forms {

using namespace platform_qt;

EditGearsFrame::EditGearsFrame(setup::EditGears& edit, QWidget* form) : QFrame(form), m_edit(edit) {
    setObjectName(QStringLiteral("Edit_Gears"));
    setFrameStyle(static_cast<int>(QFrame::Panel) | static_cast<int>(QFrame::Raised));
    setLineWidth(2);
    makeLayout();
    hide();
}

void EditGearsFrame::makeLayout() {
    constexpr std::array<const char*, setup::mostGears> names{
        "FirstG", "SecondG", "ThirdG", "ForthG", "FifthG", "SixthG"};
    constexpr std::array<const char*, setup::mostGears> captions{
        "&First:", "S&econd:", "&Third:", "F&ourth:", "F&ifth:", "Si&xth:"};
    constexpr int mostLetters = 5;
    Number_Of_Gears = named(new QComboBox, "Number_Of_Gears");
    for (int gears = 1; gears <= setup::mostGears; ++gears)
        Number_Of_Gears->addItem(QString::number(gears));
    connect(Number_Of_Gears, &QComboBox::activated, this, &EditGearsFrame::Number_Of_Gears_Click);
    auto* box = new QGroupBox(QStringLiteral("Gears"));
    auto* grid = new QGridLayout(box);
    grid->addWidget(buddyLabel(QStringLiteral("&Number of Gears:"), Number_Of_Gears), 0, 0);
    grid->addWidget(Number_Of_Gears, 0, 1);
    for (std::size_t i = 0; i < m_boxes.size(); ++i) {
        m_boxes[i] = named(new QLineEdit, names[i]);
        m_boxes[i]->setMaxLength(mostLetters);
        onlyFileLetters(m_boxes[i]);
        m_labels[i] = buddyLabel(QLatin1String(captions[i]), m_boxes[i]);
        // The frame keeps its size while rows come and go under the user's hands.
        for (QWidget* part :
            {static_cast<QWidget*>(m_boxes[i]), static_cast<QWidget*>(m_labels[i])}) {
            QSizePolicy policy = part->sizePolicy();
            policy.setRetainSizeWhenHidden(true);
            part->setSizePolicy(policy);
        }
        const int line = static_cast<int>(i) + 1;
        grid->addWidget(m_labels[i], line, 0);
        grid->addWidget(m_boxes[i], line, 1);
    }
    Ok = named(new QPushButton(QStringLiteral("&Save")), "Ok");
    Cancel = named(new QPushButton(QStringLiteral("Cancel")), "Cancel");
    Ok->setAutoDefault(false);
    Cancel->setAutoDefault(false);
    connect(Ok, &QPushButton::clicked, this, &EditGearsFrame::Ok_Click);
    connect(Cancel, &QPushButton::clicked, this, &EditGearsFrame::Cancel_Click);
    setLayout(column({box, row({LayoutPart::room(), Ok, Cancel})}));
}

void EditGearsFrame::open(const setup::GearingValues& gearing) {
    setup::GearRatios_Click(m_edit, gearing);
    showEdit();
    show();
    Ok->setDefault(true);
    Number_Of_Gears->setFocus();
}

void EditGearsFrame::showEdit() {
    Number_Of_Gears->setCurrentIndex(m_edit.Number_Of_Gears);
    for (std::size_t i = 0; i < m_boxes.size(); ++i) {
        const int gear = static_cast<int>(i) + 1;
        m_boxes[i]->setText(shown(m_edit.box[gear]));
        m_boxes[i]->setVisible(m_edit.boxShown[gear]);
        m_labels[i]->setVisible(m_edit.boxShown[gear]);
    }
}

void EditGearsFrame::collect() {
    m_edit.Number_Of_Gears = Number_Of_Gears->currentIndex();
    for (std::size_t i = 0; i < m_boxes.size(); ++i)
        m_edit.box[static_cast<int>(i) + 1] = typed(m_boxes[i]->text());
}

void EditGearsFrame::Number_Of_Gears_Click() {
    collect();
    setup::Number_Of_Gears_Click(m_edit);
    showEdit();
}

void EditGearsFrame::Ok_Click() {
    collect();
    emit accepted();
    leave();
}

// What the labels do not give at the next opening, the sixth ratio and the number, stays as it is.
void EditGearsFrame::Cancel_Click() {
    collect();
    leave();
}

void EditGearsFrame::leave() {
    hide();
    emit left();
}

} // namespace kvo::forms
