#pragma once
// What the program asks itself before its first form.
#include "core/config_record.h"
#include "platform/dialogs.h"

#include <string>

namespace kvo::core {

// Whether to go on on this processor (386, 486, 586 or later as 586). An older one is told to the
// user, who may go on in spite of it; false ends the program.
bool processorSuffices(int processorType, platform::Dialogs& dialogs);

// Whether the splash form asks for the password.
bool loginNeeded(const AppConfig& config);
// Blanks at the right end do not count.
bool passwordMatches(const AppConfig& config, const std::string& entered);

// File name of the picture of the vehicle.
std::string vehiclePictureName(const AppConfig& config);

} // namespace kvo::core
