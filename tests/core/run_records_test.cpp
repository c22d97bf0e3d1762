// The records of a run file, field by field, against the table of docs/file-formats.md.
#include "core/run_records.h"

#include "tests/support/record_fields.h"

#include <gtest/gtest.h>

namespace kvo::core {
namespace {

using platform::Bytes;
using testing::RecordFields;

template <class Record> void check(const RecordFields<Record>& fields, const Record& base = {}) {
    fields.check(
        base,
        [](const Record& record) {
            ByteWriter writer;
            encode(writer, record);
            return writer.take();
        },
        [](const Bytes& bytes, Record& record) { return decode(RecordBytes(bytes), record); });
}

template <class Record> void expectShortOneRefused(std::size_t payload) {
    const Bytes bytes(payload, 0x11);
    Record record;
    EXPECT_FALSE(decode(RecordBytes(bytes).first(payload - 1), record));
    EXPECT_EQ(record, Record{}) << "a record that is too short was taken in part";
    EXPECT_TRUE(decode(RecordBytes(bytes), record));
    EXPECT_FALSE(record == Record{});
}

TEST(RunRecords, RunHeaderHasItsFieldsAtTheirOffsets) {
    RecordFields<RunHeader> fields;
    fields.field("EnginePickups", 0, &RunHeader::EnginePickups);
    fields.field("InputPickups", 1, &RunHeader::InputPickups);
    fields.field("OutputPickups", 2, &RunHeader::OutputPickups);
    fields.field("FrontWheelPickups", 3, &RunHeader::FrontWheelPickups);
    fields.field("RecordOnRpm", 4, &RunHeader::RecordOnRpm);
    fields.field("CrankGearTeeth", 6, &RunHeader::CrankGearTeeth);
    fields.field("BasketGearTeeth", 7, &RunHeader::BasketGearTeeth);
    fields.field("PreStartRpm", 8, &RunHeader::PreStartRpm);
    fields.field("ShiftLightRpm1", 10, &RunHeader::ShiftLightRpm1);
    fields.field("ShiftLightTime1", 12, &RunHeader::ShiftLightTime1);
    fields.field("ShiftLightRpm2", 16, &RunHeader::ShiftLightRpm2);
    fields.field("ShiftLightTime2", 18, &RunHeader::ShiftLightTime2);
    fields.field("ShiftLightRpm3", 22, &RunHeader::ShiftLightRpm3);
    fields.field("ShiftLightTime3", 24, &RunHeader::ShiftLightTime3);
    fields.field("ShiftLightRpm4", 28, &RunHeader::ShiftLightRpm4);
    fields.field("ShiftLightTime4", 30, &RunHeader::ShiftLightTime4);
    check(fields);
    expectShortOneRefused<RunHeader>(34);
}

TEST(RunRecords, RunSampleHasItsFieldsAtTheirOffsets) {
    RecordFields<RunSample> fields;
    fields.field("Index", 0, &RunSample::Index);
    fields.field("EngineRpm", 2, &RunSample::EngineRpm);
    fields.field("InputRpm", 4, &RunSample::InputRpm);
    fields.field("OutputRpm", 6, &RunSample::OutputRpm);
    fields.field("SpeedRaw", 8, &RunSample::SpeedRaw);
    fields.field("Status", 12, &RunSample::Status);
    fields.array("Analog", 13, &RunSample::Analog);
    fields.field("Aux", 21, &RunSample::Aux);
    fields.array("Exhaust", 25, &RunSample::Exhaust);
    check(fields);
    expectShortOneRefused<RunSample>(33);
}

TEST(RunRecords, RunSetupBlockHasItsFieldsAtTheirOffsets) {
    RecordFields<RunSetupBlock> fields;
    fields.array("GearRatio", 0, &RunSetupBlock::GearRatio);
    fields.texts("AnalogName", 20, 8, &RunSetupBlock::AnalogName);
    check(fields);
    expectShortOneRefused<RunSetupBlock>(84);
}

TEST(RunRecords, RunAnalogBlockHasItsFieldsAtTheirOffsets) {
    RecordFields<RunAnalogBlock> fields;
    fields.array("AnalogDecimals", 0, &RunAnalogBlock::AnalogDecimals, 9);
    fields.array("AnalogScale", 1, &RunAnalogBlock::AnalogScale, 9);
    fields.array("AnalogOffset", 5, &RunAnalogBlock::AnalogOffset, 9);
    fields.field("RearWheelDiameter", 72, &RunAnalogBlock::RearWheelDiameter);
    fields.field("CrownTeeth", 76, &RunAnalogBlock::CrownTeeth);
    fields.field("PinionTeeth", 80, &RunAnalogBlock::PinionTeeth);
    check(fields);
    expectShortOneRefused<RunAnalogBlock>(84);
}

TEST(RunRecords, RunTailBlockHasItsFieldsAtTheirOffsets) {
    RecordFields<RunTailBlock> fields;
    fields.array("AnalogTypes", 0, &RunTailBlock::AnalogTypes);
    fields.array("reserved", 8, &RunTailBlock::reserved);
    fields.field("GearCount", 12, &RunTailBlock::GearCount);
    fields.field("GearRatio6", 14, &RunTailBlock::GearRatio6);
    fields.field("TimeOffset", 18, &RunTailBlock::TimeOffset);
    check(fields);
    expectShortOneRefused<RunTailBlock>(20);
}

TEST(RunRecords, HeaderLineIsALengthAndItsText) {
    ByteWriter writer;
    encodeHeaderLine(writer, "25 VRN");
    EXPECT_EQ(writer.bytes(), (Bytes{6, 0, '2', '5', ' ', 'V', 'R', 'N'}));
    EXPECT_EQ(decodeHeaderLine(RecordBytes(writer.bytes())), "25 VRN");
    EXPECT_EQ(decodeHeaderLine(RecordBytes(writer.bytes()).first(7)), std::nullopt);
    EXPECT_EQ(decodeHeaderLine(RecordBytes(writer.bytes()).first(1)), std::nullopt);
    ByteWriter longer;
    encodeHeaderLine(longer, std::string(100, 'x'));
    EXPECT_EQ(longer.size(), 84U) << "it never leaves its record";
    EXPECT_EQ(longer.bytes()[0], 82);
}

TEST(RunRecords, RecordsCountFromOne) {
    Bytes file(84 + 84 + 10);
    file[0] = 1;
    file[84] = 2;
    file[168] = 3;
    EXPECT_EQ(runRecord(RecordBytes(file), 1).size(), 84U);
    EXPECT_EQ(runRecord(RecordBytes(file), 1)[0], 1);
    EXPECT_EQ(runRecord(RecordBytes(file), 2)[0], 2);
    EXPECT_EQ(runRecord(RecordBytes(file), 3).size(), 10U);
    EXPECT_EQ(runRecord(RecordBytes(file), 3)[0], 3);
    EXPECT_TRUE(runRecord(RecordBytes(file), 4).empty());
}

} // namespace
} // namespace kvo::core
