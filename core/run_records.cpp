#include "core/run_records.h"

#include "core/basic/byte_reader.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <type_traits>

namespace kvo::core {

namespace {

constexpr std::size_t analogNameWidth = 8;

// One field of each kind; only called on records that hold their whole payload.
void take(ByteReader& reader, std::uint8_t& value) {
    value = *reader.u8();
}
void take(ByteReader& reader, std::int16_t& value) {
    value = *reader.i16le();
}
void take(ByteReader& reader, float& value) {
    value = *reader.f32le();
}

template <typename... Fields> void takeAll(ByteReader& reader, Fields&... fields) {
    (take(reader, fields), ...);
}

// The little-endian field at an offset of a row.
template <typename Whole, std::size_t Offset>
Whole at(std::span<const std::uint8_t, runSampleWidth> row) {
    static_assert(Offset + sizeof(Whole) <= runSampleWidth);
    std::make_unsigned_t<Whole> value = 0;
    if constexpr (std::endian::native == std::endian::little) {
        std::memcpy(&value, row.data() + Offset, sizeof value);
    } else {
        for (std::size_t i = sizeof value; i > 0; --i) {
            value = static_cast<decltype(value)>(value << 8U | row[Offset + i - 1]);
        }
    }
    return static_cast<Whole>(value);
}

// Puts a little-endian field at an offset of a row.
template <std::size_t Offset, typename Whole>
void put(std::span<std::uint8_t, runSampleWidth> row, Whole value) {
    static_assert(Offset + sizeof(Whole) <= runSampleWidth);
    if constexpr (std::endian::native == std::endian::little) {
        std::memcpy(row.data() + Offset, &value, sizeof value);
    } else {
        const auto bits = static_cast<std::make_unsigned_t<Whole>>(value);
        for (std::size_t i = 0; i < sizeof value; ++i)
            row[Offset + i] = static_cast<std::uint8_t>(bits >> (8U * i));
    }
}

void give(ByteWriter& writer, std::uint8_t value) {
    writer.u8(value);
}
void give(ByteWriter& writer, std::int16_t value) {
    writer.i16le(value);
}
void give(ByteWriter& writer, float value) {
    writer.f32le(value);
}

template <typename... Fields> void giveAll(ByteWriter& writer, const Fields&... fields) {
    (give(writer, fields), ...);
}

} // namespace

RecordBytes runRecord(RecordBytes file, std::size_t n) {
    const std::size_t start = (n - 1) * runRecordWidth;
    if (start >= file.size()) return {};
    return file.subspan(start, std::min(runRecordWidth, file.size() - start));
}

std::optional<std::string> decodeHeaderLine(RecordBytes record) {
    ByteReader reader(record);
    const auto length = reader.u16le();
    if (!length) return {};
    return reader.text(*length);
}

bool decode(RecordBytes record, RunHeader& h) {
    if (record.size() < runHeaderWidth) return false;
    ByteReader reader(record);
    takeAll(reader, h.EnginePickups, h.InputPickups, h.OutputPickups, h.FrontWheelPickups,
        h.RecordOnRpm, h.CrankGearTeeth, h.BasketGearTeeth, h.PreStartRpm, h.ShiftLightRpm1,
        h.ShiftLightTime1, h.ShiftLightRpm2, h.ShiftLightTime2, h.ShiftLightRpm3, h.ShiftLightTime3,
        h.ShiftLightRpm4, h.ShiftLightTime4);
    return true;
}

bool decode(RecordBytes record, RunSample& s) {
    if (record.size() < runSampleWidth) return false;
    // A run has thousands of these, so the one test above stands for all of its fields.
    const auto row = record.first<runSampleWidth>();
    s.Index = at<std::int16_t, 0>(row);
    s.EngineRpm = at<std::int16_t, 2>(row);
    s.InputRpm = at<std::int16_t, 4>(row);
    s.OutputRpm = at<std::int16_t, 6>(row);
    s.SpeedRaw = at<std::int32_t, 8>(row);
    s.Status = row[12];
    std::copy_n(row.begin() + 13, 8, s.Analog.begin());
    s.Aux = at<std::int32_t, 21>(row);
    std::copy_n(row.begin() + 25, 8, s.Exhaust.begin());
    return true;
}

bool decode(RecordBytes record, RunSetupBlock& block) {
    if (record.size() < runRecordWidth) return false;
    ByteReader reader(record);
    for (float& ratio : block.GearRatio) take(reader, ratio);
    for (std::string& name : block.AnalogName) name = *reader.text(analogNameWidth);
    return true;
}

bool decode(RecordBytes record, RunAnalogBlock& block) {
    if (record.size() < runRecordWidth) return false;
    ByteReader reader(record);
    for (int c = 1; c <= 8; ++c) {
        takeAll(reader, block.AnalogDecimals[c], block.AnalogScale[c], block.AnalogOffset[c]);
    }
    takeAll(reader, block.RearWheelDiameter, block.CrownTeeth, block.PinionTeeth);
    return true;
}

bool decode(RecordBytes record, RunTailBlock& block) {
    if (record.size() < runTailWidth) return false;
    ByteReader reader(record);
    for (std::uint8_t& type : block.AnalogTypes) take(reader, type);
    for (std::uint8_t& byte : block.reserved) take(reader, byte);
    takeAll(reader, block.GearCount, block.GearRatio6, block.TimeOffset);
    return true;
}

void encodeHeaderLine(ByteWriter& writer, const std::string& line) {
    const std::string cut = line.substr(0, longestHeaderLine);
    writer.u16le(static_cast<std::uint16_t>(cut.size()));
    writer.characters(cut);
}

void encode(ByteWriter& writer, const RunHeader& h) {
    giveAll(writer, h.EnginePickups, h.InputPickups, h.OutputPickups, h.FrontWheelPickups,
        h.RecordOnRpm, h.CrankGearTeeth, h.BasketGearTeeth, h.PreStartRpm, h.ShiftLightRpm1,
        h.ShiftLightTime1, h.ShiftLightRpm2, h.ShiftLightTime2, h.ShiftLightRpm3, h.ShiftLightTime3,
        h.ShiftLightRpm4, h.ShiftLightTime4);
}

void encode(ByteWriter& writer, const RunSample& s) {
    // A run has thousands of these: the fields go to their places, and the row into the file whole.
    std::array<std::uint8_t, runSampleWidth> row{};
    put<0>(row, s.Index);
    put<2>(row, s.EngineRpm);
    put<4>(row, s.InputRpm);
    put<6>(row, s.OutputRpm);
    put<8>(row, s.SpeedRaw);
    put<12>(row, s.Status);
    std::copy(s.Analog.begin(), s.Analog.end(), row.begin() + 13);
    put<21>(row, s.Aux);
    std::copy(s.Exhaust.begin(), s.Exhaust.end(), row.begin() + 25);
    writer.raw(row);
}

void encode(ByteWriter& writer, const RunSetupBlock& block) {
    for (const float ratio : block.GearRatio) give(writer, ratio);
    for (const std::string& name : block.AnalogName) writer.text(name, analogNameWidth);
}

void encode(ByteWriter& writer, const RunAnalogBlock& block) {
    for (int c = 1; c <= 8; ++c) {
        giveAll(writer, block.AnalogDecimals[c], block.AnalogScale[c], block.AnalogOffset[c]);
    }
    giveAll(writer, block.RearWheelDiameter, block.CrownTeeth, block.PinionTeeth);
}

void encode(ByteWriter& writer, const RunTailBlock& block) {
    for (const std::uint8_t type : block.AnalogTypes) give(writer, type);
    for (const std::uint8_t byte : block.reserved) give(writer, byte);
    giveAll(writer, block.GearCount, block.GearRatio6, block.TimeOffset);
}

} // namespace kvo::core
