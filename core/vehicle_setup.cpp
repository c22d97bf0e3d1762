#include "core/vehicle_setup.h"

#include "core/backup.h"
#include "core/basic/byte_reader.h"
#include "core/basic/byte_writer.h"
#include "core/basic/numbers.h"
#include "core/own_file.h"
#include "core/paths.h"

namespace kvo::core {

static constexpr std::size_t textWidth = 17;

VehicleSetup LoadVehicleSetup(
    const std::string& appFolder, platform::Files& files, std::string* unread) {
    const platform::Bytes file =
        readOrCreate(joined(appFolder, "VSetup.Dat", files), files, unread);
    VehicleSetup setup;
    ByteReader reader(file);
    for (VehicleSetupLine& line : setup) {
        const auto name = reader.text(textWidth);
        const auto value = reader.text(textWidth);
        if (!name || !value) break;
        line = {rightTrimmed(*name), rightTrimmed(*value)};
    }
    return setup;
}

platform::WriteResult SaveVehicleSetup(
    const std::string& appFolder, const VehicleSetup& setup, platform::Files& files) {
    ByteWriter writer;
    for (const VehicleSetupLine& line : setup) {
        writer.text(rightTrimmed(line.Name), textWidth);
        writer.text(rightTrimmed(line.Value), textWidth);
    }
    return replaceKept(appFolder, joined(appFolder, "VSetup.Dat", files), writer.bytes(), files);
}

} // namespace kvo::core
