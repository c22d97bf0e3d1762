#include "core/analog_tables.h"

#include "core/backup.h"
#include "core/basic/byte_reader.h"
#include "core/basic/byte_writer.h"
#include "core/basic/numbers.h"
#include "core/own_file.h"
#include "core/paths.h"

namespace kvo::core {

std::string analogTableName(int channel) {
    return "Analog" + CStr(channel) + ".Dat";
}

std::string LoadAnalogTable(const std::string& appFolder, const std::string& name, int channel,
    AnalogTables& tables, platform::Files& files) {
    if (channel < 1 || channel > AnalogTables::size) return {};
    std::string unread;
    const platform::Bytes file = readOrCreate(joined(appFolder, name, files), files, &unread);
    ByteReader reader(file);
    for (double& entry : tables[channel]) keepOnFailure(entry, reader.f64le());
    return unread;
}

platform::WriteResult SaveAnalogTable(const std::string& appFolder, const std::string& name,
    int channel, const AnalogTables& tables, platform::Files& files) {
    if (channel < 1 || channel > AnalogTables::size) {
        return {false, "There is no analog channel " + CStr(channel) + "."};
    }
    ByteWriter writer;
    for (const double entry : tables[channel]) writer.f64le(entry);
    const std::string path = joined(appFolder, name, files);
    if (files.read(path) == writer.bytes()) return {};
    return replaceKept(appFolder, path, writer.bytes(), files);
}

std::optional<std::uint8_t> tableByte(
    const std::array<double, 256>& table, float scale, std::uint8_t raw) {
    const double quotient = table[raw] / static_cast<double>(scale);
    const double whole = Fix(quotient);
    // A scale of 0 gives an infinity or no number at all, and so no byte.
    if (!(whole >= 0 && whole <= 255)) return {};
    return static_cast<std::uint8_t>(whole);
}

std::uint8_t applyAnalogTable(const std::array<double, 256>& table, float scale, std::uint8_t raw) {
    return tableByte(table, scale, raw).value_or(raw);
}

} // namespace kvo::core
