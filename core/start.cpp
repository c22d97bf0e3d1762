#include "core/start.h"

#include "core/basic/numbers.h"
#include "core/setup_kinds.h"

namespace kvo::core {

bool processorSuffices(int processorType, platform::Dialogs& dialogs) {
    constexpr int pentium = 586;
    if (processorType >= pentium) return true;
    const std::string text = "Your Computer CPU is a :" + std::to_string(processorType) +
                             "\r\n\r\nThis Software Requires PENTIUM 233MMX or Better to run "
                             "Properly\r\n\r\n            Do You want to try and run KVO anyway ?";
    dialogs.beep();
    return dialogs.messageBox(text, platform::boxStyle::yesNo, "Processor Requirement !") !=
           platform::Reply::no;
}

bool loginNeeded(const AppConfig& config) {
    return config.Check_Password != 0 && !rightTrimmed(config.Password).empty();
}

bool passwordMatches(const AppConfig& config, const std::string& entered) {
    return rightTrimmed(entered) == rightTrimmed(config.Password);
}

std::string vehiclePictureName(const AppConfig& config) {
    return config.Vehicle_Type == car ? "Kvocar.dll" : "Kvobike.dll";
}

} // namespace kvo::core
