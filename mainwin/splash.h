#pragma once
// frmSplash: picture and version while the program starts, and the login where a password is on.
#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;
class QTimer;

namespace kvo::forms {

class frmSplash : public QDialog {
    Q_OBJECT

public:
    frmSplash();
    // Read when the form has been hidden: whether the program may go on.
    bool LoginSucceeded = false;

protected:
    void showEvent(QShowEvent* event) override;
    void reject() override;

private:
    void Form_Load();
    QWidget* loginRow();
    void Timer1_Timer();
    void cmdOK_Click();
    void cmdCancel_Click();

    bool m_login = false;
    QLabel* Picture = nullptr;
    QLabel* Label_Version = nullptr;
    QLineEdit* txtPassword = nullptr;
    QPushButton* cmdOK = nullptr;
    QPushButton* cmdCancel = nullptr;
    QTimer* Timer1 = nullptr;
};

} // namespace kvo::forms
