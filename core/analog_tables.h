#pragma once
// Analog1.Dat to Analog8.Dat: the physical value of each raw byte of a channel, 256 doubles.
#include "core/basic/from_one.h"
#include "platform/files.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace kvo::core {

// Channel by channel, then by raw byte.
using AnalogTables = FromOne<std::array<double, 256>, 8>;

// "AnalogN.Dat" of a channel, 1 to 8.
std::string analogTableName(int channel);
// Reads the table of a channel. A missing file is created empty; entries that are not there keep
// what they held. Gives why a file that is there could not be read; empty else.
std::string LoadAnalogTable(const std::string& appFolder, const std::string& name, int channel,
    AnalogTables& tables, platform::Files& files);
// Writes the table of a channel; the old file is kept in Backup/. A file that holds the same
// already is left alone, so one that is marked as read-only stands in nobody's way.
[[nodiscard]] platform::WriteResult SaveAnalogTable(const std::string& appFolder,
    const std::string& name, int channel, const AnalogTables& tables, platform::Files& files);
// The byte that gives the table's value through `scale`: the whole part of table[raw] / scale.
// Nothing for a quotient outside 0 to 255, a NaN and a scale of 0.
std::optional<std::uint8_t> tableByte(
    const std::array<double, 256>& table, float scale, std::uint8_t raw);
// The same, with raw where there is no such byte.
std::uint8_t applyAnalogTable(const std::array<double, 256>& table, float scale, std::uint8_t raw);

} // namespace kvo::core
