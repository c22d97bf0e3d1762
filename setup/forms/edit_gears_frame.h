#pragma once
// The pop-up frame "Gears" of the setup form: number of gears and their ratios.
#include "setup/gearing.h"

#include <QFrame>

#include <array>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace kvo::forms {

class EditGearsFrame : public QFrame {
    Q_OBJECT

public:
    // `edit` is the form's own, and outlives the frame.
    EditGearsFrame(setup::EditGears& edit, QWidget* form);

    // As the form opens: the number of gears that `edit` has.
    void load() { showEdit(); }
    // GearRatios was clicked: takes the ratios of the labels and shows the frame.
    void open(const setup::GearingValues& gearing);
    // Escape, or the form's close button, while the frame is up.
    void Cancel_Click();

signals:
    // "Save": `edit` holds what the controls read. left() follows.
    void accepted();
    // The frame is gone, by any way.
    void left();

private:
    void makeLayout();
    void collect();
    void showEdit();
    void Number_Of_Gears_Click();
    void Ok_Click();
    void leave();

    setup::EditGears& m_edit;
    QComboBox* Number_Of_Gears = nullptr;
    std::array<QLabel*, setup::mostGears> m_labels{};
    std::array<QLineEdit*, setup::mostGears> m_boxes{}; // FirstG to SixthG
    QPushButton* Ok = nullptr;
    QPushButton* Cancel = nullptr;
};

} // namespace kvo::forms
