#include "core/run_records.h"

#include "core/basic/byte_reader.h"

#include <algorithm>

namespace kvo::core {

namespace {

constexpr std::size_t nameWidth = 8;

// One field of each kind; only called on records that hold their whole payload.
void take(ByteReader& reader, std::uint8_t& value) {
    value = *reader.u8();
}
void take(ByteReader& reader, std::int16_t& value) {
    value = *reader.i16le();
}
void take(ByteReader& reader, std::int32_t& value) {
    value = *reader.i32le();
}
void take(ByteReader& reader, float& value) {
    value = *reader.f32le();
}

template <typename... Fields> void takeAll(ByteReader& reader, Fields&... fields) {
    (take(reader, fields), ...);
}

void give(ByteWriter& writer, std::uint8_t value) {
    writer.u8(value);
}
void give(ByteWriter& writer, std::int16_t value) {
    writer.i16le(value);
}
void give(ByteWriter& writer, std::int32_t value) {
    writer.i32le(value);
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
    ByteReader reader(record);
    takeAll(reader, s.Index, s.EngineRpm, s.InputRpm, s.OutputRpm, s.SpeedRaw, s.Status);
    reader.raw({s.Analog.begin(), s.Analog.end()});
    take(reader, s.Aux);
    return reader.raw({s.Exhaust.begin(), s.Exhaust.end()});
}

bool decode(RecordBytes record, RunSetupBlock& block) {
    if (record.size() < runRecordWidth) return false;
    ByteReader reader(record);
    for (float& ratio : block.GearRatio) take(reader, ratio);
    for (std::string& name : block.AnalogName) name = *reader.text(nameWidth);
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
    giveAll(writer, s.Index, s.EngineRpm, s.InputRpm, s.OutputRpm, s.SpeedRaw, s.Status);
    writer.raw({s.Analog.begin(), s.Analog.end()});
    give(writer, s.Aux);
    writer.raw({s.Exhaust.begin(), s.Exhaust.end()});
}

void encode(ByteWriter& writer, const RunSetupBlock& block) {
    for (const float ratio : block.GearRatio) give(writer, ratio);
    for (const std::string& name : block.AnalogName) writer.text(name, nameWidth);
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
