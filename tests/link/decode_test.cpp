// From periods and raw bytes to engineering values.
#include "link/decode.h"

#include "core/shared_state.h"
#include "tests/support/memory_files.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstring>
#include <limits>

namespace kvo::link {
namespace {

struct DecodeTest : ::testing::Test {
    DecodeTest() {
        core::AppConfig& config = state->Config;
        config.Engine_Correction = config.Clutch_Correction = 1;
        config.Pinion_Correction = config.Speed_Correction = 1;
        config.Wheel = 25;
        state->AppFolder = "/kvo";
        state->Run.SampleCount = 1;
    }
    core::RunSample& row(int i = 1) { return state->Run.image.samples[i]; }
    void convert(std::int32_t engine, std::int32_t input, std::int32_t output, std::int32_t speed) {
        periods->EnginePeriod[1] = engine;
        periods->InputPeriod[1] = input;
        periods->OutputPeriod[1] = output;
        row().SpeedRaw = speed;
        convertPulses(state->Run, state->Config, *periods);
    }
    void convert() {
        convertAnalogTables(state->Run, state->Config, state->Tables, state->AppFolder, files);
    }
    void putTable(int channel, const std::array<double, 256>& table) {
        platform::Bytes bytes(sizeof table);
        std::memcpy(bytes.data(), table.data(), sizeof table);
        files.put("/kvo/Analog" + std::to_string(channel) + ".Dat", bytes);
    }

    std::unique_ptr<core::SharedState> state = std::make_unique<core::SharedState>();
    std::unique_ptr<PulsePeriods> periods = std::make_unique<PulsePeriods>();
    testing::MemoryFiles files;
};

TEST_F(DecodeTest, PeriodsAtTheThresholdAreNoise) {
    convert(480, 480, 240, 0);
    EXPECT_EQ(row().EngineRpm, 0);
    EXPECT_EQ(row().InputRpm, 0);
    EXPECT_EQ(row().OutputRpm, 0);
    convert(481, 481, 241, 0);
    EXPECT_EQ(row().EngineRpm, 31185);
    EXPECT_EQ(row().InputRpm, 31185);
    EXPECT_EQ(row().OutputRpm, 31120);
}

TEST_F(DecodeTest, ZeroAndNegativePeriodsAreNoSignal) {
    row().EngineRpm = row().InputRpm = row().OutputRpm = 77;
    convert(0, -1, -32768, -5);
    EXPECT_EQ(row().EngineRpm, 0);
    EXPECT_EQ(row().InputRpm, 0);
    EXPECT_EQ(row().OutputRpm, 0);
    EXPECT_EQ(row().SpeedRaw, 0);
    EXPECT_EQ(state->Run.PeakSpeedRaw, 0);
}

TEST_F(DecodeTest, CorrectionsMultiply) {
    state->Config.Engine_Correction = 2;
    state->Config.Clutch_Correction = 0.5F;
    state->Config.Pinion_Correction = 3;
    convert(5000, 5000, 5000, 0);
    EXPECT_EQ(row().EngineRpm, 6000);
    EXPECT_EQ(row().InputRpm, 1500);
    EXPECT_EQ(row().OutputRpm, 4500);
}

TEST_F(DecodeTest, AnRpmThatDoesNotFitKeepsWhatStood) {
    state->Config.Engine_Correction = 5;
    row().EngineRpm = 1234;
    convert(1000, 0, 0, 0); // 75,000
    EXPECT_EQ(row().EngineRpm, 1234);
}

TEST_F(DecodeTest, TheSpeedHasNoThreshold) {
    convert(0, 0, 0, 1);
    EXPECT_EQ(row().SpeedRaw, 223124478); // 25 x 35.69991652 / 4e-06
    EXPECT_EQ(state->Run.PeakSpeedRaw, 223124478);
}

TEST_F(DecodeTest, ASpeedThatDoesNotFitKeepsTheRawCountAlsoAsPeak) {
    state->Config.Wheel = 1e6F;
    convert(0, 0, 0, 3);
    EXPECT_EQ(row().SpeedRaw, 3);
    EXPECT_EQ(state->Run.PeakSpeedRaw, 3);
}

TEST_F(DecodeTest, AWheelOfNothingIsNoSpeed) {
    state->Config.Wheel = 0;
    convert(0, 0, 0, 5000);
    EXPECT_EQ(row().SpeedRaw, 0);
    EXPECT_EQ(state->Run.PeakSpeedRaw, 0);
}

TEST_F(DecodeTest, ThePeakIsTheLargestOfTheRows) {
    state->Run.SampleCount = 3;
    state->Run.PeakSpeedRaw = 999999;
    row(1).SpeedRaw = 9000;
    row(2).SpeedRaw = 6000;
    row(3).SpeedRaw = 7000;
    convertPulses(state->Run, state->Config, *periods);
    EXPECT_EQ(state->Run.PeakSpeedRaw, row(2).SpeedRaw);
    EXPECT_EQ(row(2).SpeedRaw, 37187);
}

TEST_F(DecodeTest, TheCountOfTableChannelsGoesByType) {
    for (const int type : {8, 12}) EXPECT_EQ(analogChannelsWithTables(type), 4);
    EXPECT_EQ(analogChannelsWithTables(20), 6);
    for (const int type : {17, 25, 32, 43}) EXPECT_EQ(analogChannelsWithTables(type), 8);
}

TEST_F(DecodeTest, OnlyTableChannelsOfTheTypeAreConverted) {
    std::array<double, 256> table{};
    for (std::size_t r = 0; r < table.size(); ++r) table[r] = static_cast<double>(255 - r) * 2;
    for (int c = 1; c <= 8; ++c) {
        putTable(c, table);
        state->Config.AnalogScale[c] = 2;
        state->Config.Analog_Type[c] = c == 2 ? 0 : 2;
        row().Analog[c] = 100;
    }
    state->Run.DataType = 20;
    convert();
    for (const int c : {1, 3, 4, 5, 6}) EXPECT_EQ(row().Analog[c], 155) << c;
    for (const int c : {2, 7, 8}) EXPECT_EQ(row().Analog[c], 100) << c;
}

TEST_F(DecodeTest, AQuotientOutsideAByteKeepsTheRawByte) {
    std::array<double, 256> table{};
    table[1] = 511.9; // 255 at a scale of 2
    table[2] = 512;   // 256
    table[3] = -1.9;  // 0
    table[4] = -2;    // -1
    table[5] = std::numeric_limits<double>::quiet_NaN();
    putTable(1, table);
    state->Config.Analog_Type[1] = 2;
    state->Config.AnalogScale[1] = 2;
    state->Run.DataType = 25;
    state->Run.SampleCount = 5;
    for (int i = 1; i <= 5; ++i) row(i).Analog[1] = static_cast<std::uint8_t>(i);
    convert();
    EXPECT_EQ(row(1).Analog[1], 255);
    EXPECT_EQ(row(2).Analog[1], 2);
    EXPECT_EQ(row(3).Analog[1], 0);
    EXPECT_EQ(row(4).Analog[1], 4);
    EXPECT_EQ(row(5).Analog[1], 5);
}

TEST_F(DecodeTest, AMissingTableIsTheOneInMemory) {
    state->Tables[1].fill(42);
    state->Config.Analog_Type[1] = 2;
    state->Config.AnalogScale[1] = 1;
    state->Run.DataType = 25;
    row().Analog[1] = 200;
    convert();
    EXPECT_EQ(row().Analog[1], 42);
    EXPECT_TRUE(files.exists("/kvo/Analog1.Dat")); // made empty, as the open does
}

} // namespace
} // namespace kvo::link
