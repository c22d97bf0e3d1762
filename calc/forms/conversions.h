#pragma once
// Conversions: the unit convertor. Eight buttons choose a pair of units; what is typed in either
// box is turned into the other unit as the keys come up. The pairs are the table of
// calc/conversions.
#include "calc/conversions.h"
#include "platform/qt/form_kit.h"

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace kvo::forms {

class Conversions : public QDialog {
    Q_OBJECT

public:
    Conversions();

    // In the place of the main window, which comes back with the end of the form; not modal.
    void showForMainWindow();
    // Over another form, modal until the user closes it.
    void showOverForm();

protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void reject() override { Cancel_Click(); }

private:
    void makeLayout();
    QWidget* makeButtons();
    QWidget* makeBoxes();

    void Command1_Click(int index);
    void Text1_KeyUp(int box);
    void Label2_Change();
    void Cancel_Click();
    void showTexts();

    calc::Conversions m_state;
    int m_keysDown = 0; // those that were pressed in the box with the focus
    bool m_inMainsPlace = false;
    platform_qt::ControlArray<QPushButton, 0, 7> Command1;
    platform_qt::ControlArray<QLineEdit, 0, 1> Text1;
    platform_qt::ControlArray<QLabel, 0, 1> Label2;
    QLabel* Label3 = nullptr;
    QPushButton* Cancel = nullptr;
};

} // namespace kvo::forms
