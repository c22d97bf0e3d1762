#include "setup/password.h"

#include "core/basic/numbers.h"
#include "core/start.h"

namespace kvo::setup {

PasswordFrame loadPassword(const core::AppConfig& config) {
    PasswordFrame frame;
    if (core::loginNeeded(config)) {
        frame.Check_Password = true;
        frame.Check_Password_Enabled = false;
        frame.OPassword_Shown = true;
    } else {
        frame.newShown = true;
    }
    return frame;
}

void OPassword_Change(PasswordFrame& frame, const core::AppConfig& config) {
    frame.newEnabled = frame.OPassword == config.Password;
    if (!frame.newEnabled) return; // Required: Check_Password stays enabled once it was.
    // Required: the two boxes stay out of sight; clearing Check_Password is what can be done now.
    frame.NPassword.clear();
    frame.Check_Password_Enabled = true;
}

std::string takePassword(const PasswordFrame& frame, core::AppConfig& config) {
    if (!frame.Check_Password) return {};
    const std::string password = core::rightTrimmed(frame.NPassword);
    if (password != core::rightTrimmed(frame.VPassword)) {
        return "The passwords you entered are not the same.\n\n" + frame.NPassword + "\n" +
               frame.VPassword + "\n\nRe-Enter your Password and try again.";
    }
    if (password.empty())
        return "You can't have a blank password\n\nRe-Enter your Password and try again.";
    config.Password = password;
    return {};
}

} // namespace kvo::setup
