#include "setup/forms/analog_setup_frame.h"

namespace kvo::forms {

AnalogSetupFrame::AnalogSetupFrame(QWidget* form) : QFrame(form) {
    setObjectName(QStringLiteral("Analog_Setup"));
    hide();
}

void AnalogSetupFrame::open(int, const std::string&) {
    emit left();
}

void AnalogSetupFrame::Command1_Click() {
    hide();
    emit left();
}

} // namespace kvo::forms
