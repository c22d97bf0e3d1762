#pragma once
// CalcForm: the one form of all eight sums of calc/engine. The table there says what stands on it.
#include "calc/engine.h"
#include "platform/qt/form_kit.h"

#include <QDialog>
#include <QLabel>
#include <QLineEdit>

class QPushButton;

namespace kvo::forms {

class CalcForm : public QDialog {
    Q_OBJECT

public:
    CalcForm();

    // The sum at this place of engineSums(), modal until the user closes it.
    void showSum(int sum);

protected:
    void reject() override { Cancel_Click(); }

private:
    void makeLayout();
    QWidget* makeInputs();
    QWidget* makeResult();

    void Command1_Click();
    void ToggleMetric_Click();
    void Cancel_Click();
    void collect();
    void showState();
    // The result is of the numbers in the boxes; grey, it is of those before them.
    void setResultCurrent(bool current);

    calc::CalcForm m_state;
    core::FromOne<QLabel*, 3> m_captions; // Label1 to Label3
    core::FromOne<QLineEdit*, 3> m_boxes; // Text1 to Text3
    core::FromOne<QLabel*, 3> m_units;    // Label6 to Label8
    QLabel* Label4 = nullptr;
    QLabel* Label5 = nullptr;
    QPushButton* Command1 = nullptr;
    QPushButton* ToggleMetric = nullptr;
    QPushButton* Cancel = nullptr;
};

} // namespace kvo::forms
