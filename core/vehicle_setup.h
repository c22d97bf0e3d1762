#pragma once
// VSetup.Dat: 25 pairs of 17 characters, the names and values a new run's info starts from.
#include "core/basic/from_one.h"
#include "platform/files.h"

#include <string>

namespace kvo::core {

struct VehicleSetupLine {
    std::string Name;
    std::string Value;
};
using VehicleSetup = FromOne<VehicleSetupLine, 25>;

// A missing file is created empty and gives empty lines; texts come right-trimmed.
// `unread` as in readOrCreate().
VehicleSetup LoadVehicleSetup(
    const std::string& appFolder, platform::Files& files, std::string* unread = nullptr);
[[nodiscard]] platform::WriteResult SaveVehicleSetup(
    const std::string& appFolder, const VehicleSetup& setup, platform::Files& files);

} // namespace kvo::core
