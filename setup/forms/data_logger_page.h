#pragma once
// The tab "Data Logger" of the setup form: weight, wheels, corrections and gearing of the vehicle,
// and the buttons that open its two pop-up frames.
#include "platform/qt/form_kit.h"
#include "setup/forms/setup_page.h"

#include <string>

class QCheckBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace kvo::forms {

class DataLoggerPage : public SetupPage {
    Q_OBJECT

public:
    DataLoggerPage();

    void showValues(const setup::SetupValues& values) override;
    void showRows(const setup::SetupValues& values) override;
    void collect(setup::SetupValues& values) const override;

signals:
    // With the button, which gets the focus back when the frame is gone.
    void GearRatios_Clicked(QWidget* button);
    void AnalogSetup_Clicked(int channel, QWidget* button);

private:
    QWidget* makeVehicle();
    QWidget* makeTeeth();
    QWidget* makeGears();
    QWidget* makeAnalogs();
    QLineEdit* makeNumber(const char* name);
    void showGears(const setup::GearingValues& gearing);
    void Label_Diff_Ratio_Event();

    QLabel* Weight_Label = nullptr;
    QLabel* Pinion_Label = nullptr;
    QLabel* Pteeth_Label = nullptr;
    QLabel* Cteeth_Label = nullptr;
    QLineEdit* Weight_F = nullptr;
    QLineEdit* Wheel = nullptr;
    QLineEdit* RWheel = nullptr;
    QLineEdit* Engine_Correction = nullptr;
    QLineEdit* Clutch_Correction = nullptr;
    QLineEdit* Pinion_Correction = nullptr;
    QLineEdit* Speed_Correction = nullptr;
    QLineEdit* FlowRange = nullptr;
    QLineEdit* Pinion_F = nullptr;
    QLineEdit* Crown_F = nullptr;
    QLabel* Label_Diff_Ratio = nullptr;
    QLabel* Gears = nullptr;
    std::array<QLabel*, setup::mostGears> m_gearLabels{};
    std::array<QLabel*, setup::mostGears> m_ratios{};
    QPushButton* GearRatios = nullptr;
    platform_qt::ControlArray<QLabel, 1, 8> Text;
    platform_qt::ControlArray<QPushButton, 1, 8> AnalogSetup;
    platform_qt::ControlArray<QCheckBox, 1, 8> Analog_Check;
};

} // namespace kvo::forms
