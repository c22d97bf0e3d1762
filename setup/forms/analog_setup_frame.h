#pragma once
// The pop-up frame "Analog_Setup" of the setup form: the editor of one analog channel. The form
// locks itself before it opens the frame, keeps it in the middle as its size changes, and unlocks
// itself on left(). Command2 alone writes into the configuration of the shared state.
#include "platform/qt/form_kit.h"
#include "setup/analog_setup.h"

#include <QFrame>

#include <string>
#include <vector>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace kvo::forms {

class AnalogCurveView;

class AnalogSetupFrame : public QFrame {
    Q_OBJECT

public:
    explicit AnalogSetupFrame(QWidget* form);

    // AnalogSetup(channel) was clicked, 1 to 8; `caption` is what that button reads. Fills the
    // frame, shows it and gives Analog the focus.
    void open(int channel, const std::string& caption);
    // Escape, or the form's close button, while the frame is up: Command1 is what they press.
    void Command1_Click();

signals:
    // Command2: the button of that channel takes this caption; left() follows.
    void captionChanged(int channel, const std::string& caption);
    // The frame is gone, by any way.
    void left();

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    QLayout* makeFields();
    QWidget* makeTable();
    void makeButtons();
    void connectFields();

    void Analog_Type_Click();
    void AFactor_Change();
    void Command2_Click();
    // Takes what the controls read now, runs a rule on it and shows what has become of it.
    template <class Rule> void runRule(Rule rule);
    void collect();
    void showEditor();
    // The fields of the kind that is selected.
    void showParts();
    void drawCurve();
    void goToBox(const std::string& name);
    void leave();

    setup::AnalogEditor m_editor;
    bool m_showing = false; // the controls change by themselves, and not by the user
    QLabel* Txt_Analog = nullptr;
    QLineEdit* Analog = nullptr;
    QComboBox* Analog_Type = nullptr;
    QLineEdit* RangeText1 = nullptr;
    QLineEdit* AFactor = nullptr;
    QComboBox* Decimals = nullptr;
    QLineEdit* Zero = nullptr;
    QComboBox* Fuel_Combo = nullptr;
    QComboBox* Sensor_Combo = nullptr;
    QCheckBox* SmoothOption = nullptr;
    platform_qt::ControlArray<QLabel, 1, setup::tablePoints> Label32;
    platform_qt::ControlArray<QLineEdit, 1, setup::tablePoints> Text9;
    AnalogCurveView* m_curve = nullptr;
    QLabel* m_remark = nullptr; // on what is wrong with the table
    QWidget* m_table = nullptr; // Text9 and the curve
    QPushButton* Command2 = nullptr;
    QPushButton* Command1 = nullptr;
    // A box with its label, as a kind of input shows and hides them.
    using Pair = std::vector<QWidget*>;
    Pair m_range;
    Pair m_decimals;
    Pair m_zero;
    Pair m_fuel;
    Pair m_sensor;
};

} // namespace kvo::forms
