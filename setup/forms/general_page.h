#pragma once
// The tab "General" of the setup form: driver, logger, vehicle, port, downloads and the password.
#include "platform/qt/form_kit.h"
#include "setup/forms/setup_page.h"

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace kvo::forms {

class GeneralPage : public SetupPage {
    Q_OBJECT

public:
    GeneralPage();

    void showValues(const setup::SetupValues& values) override;
    void showRows(const setup::SetupValues& values) override;
    void collect(setup::SetupValues& values) const override;

signals:
    // A pick from these lists takes effect as the focus leaves the box.
    void D_Modal_LostFocus();
    void Vehicle_Type_LostFocus();
    void OPassword_Change();

private:
    QWidget* makeVehicle();
    QWidget* makeLogger();
    QWidget* makeDownload();
    QWidget* makePassword();
    void showPassword(const setup::PasswordFrame& password);
    void But_FindComm_Click();
    void showDevices();

    QLabel* Label_DriverNumber = nullptr;
    QLineEdit* Driver = nullptr;
    QLineEdit* DriverNo = nullptr;
    QComboBox* D_Modal = nullptr;
    QComboBox* Vehicle_Type = nullptr;
    QComboBox* ComPort = nullptr;
    QPushButton* But_FindComm = nullptr;
    platform_qt::ControlArray<QRadioButton, 0, 1> OptionDownloadMode;
    QCheckBox* Date_Prompt = nullptr;
    QCheckBox* SpeedWheel_Prompt = nullptr;
    QGroupBox* FramePassword = nullptr;
    QCheckBox* Check_Password = nullptr;
    QLineEdit* OPassword = nullptr;
    QLineEdit* NPassword = nullptr;
    QLineEdit* VPassword = nullptr;
    QLabel* m_oldLabel = nullptr;
    QLabel* m_newLabel = nullptr;
    QLabel* m_verifyLabel = nullptr;
};

} // namespace kvo::forms
