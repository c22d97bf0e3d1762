#pragma once
// The pop-up frame "Analog_Setup" of the setup form: the editor of one analog channel. The form
// locks itself before it opens the frame, keeps it in the middle as its size changes, and unlocks
// itself on left(). Command2 alone writes into the configuration of the shared state.
#include <QFrame>

#include <string>

namespace kvo::forms {

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
};

} // namespace kvo::forms
