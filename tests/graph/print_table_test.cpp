#include "graph/print_table.h"

#include "core/open_run.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>

using namespace kvo;
using namespace kvo::graph;

namespace {

// A run of a type whose rows are told apart by their values.
struct PrintTableTest : ::testing::Test {
    core::OpenRun& open(int type, int rows) {
        run->DataType = static_cast<std::uint8_t>(type);
        run->SampleCount = static_cast<std::uint16_t>(rows);
        core::RunImage& image = run->image;
        image.header.CrankGearTeeth = 1;
        image.header.BasketGearTeeth = 2;
        image.tail.TimeOffset = 7;
        image.analog.AnalogScale.fill(1);
        for (int i = 1; i <= core::maxSamples; ++i) {
            core::RunSample& row = image.samples[i];
            row.EngineRpm = static_cast<std::int16_t>(4000 + i);
            row.InputRpm = 1000;
            row.OutputRpm = 2000;
            row.SpeedRaw = 20000;
            for (int n = 1; n <= 8; ++n) row.Analog[n] = static_cast<std::uint8_t>(10 * n);
            row.Exhaust.fill(50);
        }
        return *run;
    }
    PrintTable table() { return makePrintTable(channels::viewOfRun(*run), picture); }
    // The text at an x of line r, from 1; "-" where there is none.
    static std::string cell(const PrintTable& all, int r, float x) {
        for (const PrintCell& one : all.lines.at(static_cast<std::size_t>(r - 1))) {
            if (all.columns[static_cast<std::size_t>(one.column)].x == x) return one.text;
        }
        return "-";
    }
    std::unique_ptr<core::OpenRun> run = std::make_unique<core::OpenRun>();
    std::string picture = "####0";
};

} // namespace

TEST_F(PrintTableTest, OneSampleALineStandsInItsColumns) {
    open(20, 2048);
    const PrintTable all = table();
    ASSERT_FALSE(all.failed);
    EXPECT_EQ(all.lines.size(), 2048U);
    EXPECT_EQ(cell(all, 1, 0), "-1.59");
    EXPECT_EQ(cell(all, 160, 0), "0.00");
    EXPECT_EQ(cell(all, 1, 11), "4001");
    EXPECT_EQ(cell(all, 1, 22), "1000");
    EXPECT_EQ(cell(all, 1, 33), "2000");
    EXPECT_EQ(cell(all, 1, 44), "2.00");
    EXPECT_EQ(cell(all, 1, 55), "25"); // (2000.5 - 1000) x 100 \ 4001
    EXPECT_EQ(cell(all, 1, 66), "-");
    EXPECT_EQ(cell(all, 14, 66), "0.00");
    EXPECT_EQ(cell(all, 1, 77), "100.00");
    EXPECT_EQ(cell(all, 1, 88), "10");
    EXPECT_EQ(cell(all, 1, 158), "80"); // all eight, though the graph shows six
    EXPECT_EQ(cell(all, 1, 168), "392");
    EXPECT_EQ(cell(all, 1, 231), "392");
}

TEST_F(PrintTableTest, TheTimeZeroOfTheTypeCountsAndNotTheUsers) {
    for (const auto& [type, base] :
        {std::pair{17, 160}, {20, 160}, {23, 81}, {25, 81}, {29, 81}, {32, 160}, {43, 160}}) {
        open(type, 200);
        EXPECT_EQ(cell(table(), base, 0), "0.00") << type;
        EXPECT_EQ(cell(table(), base + 1, 0), "0.01") << type;
    }
    for (const int type : {8, 12}) {
        open(type, 200);
        EXPECT_EQ(cell(table(), 80, 128), "0.00") << type;
    }
}

TEST_F(PrintTableTest, TwoSamplesStandSideBySide) {
    open(12, 5);
    const PrintTable all = table();
    ASSERT_EQ(all.lines.size(), 3U);
    EXPECT_EQ(cell(all, 2, 11), "4003");
    EXPECT_EQ(cell(all, 2, 138), "4004");
    EXPECT_EQ(cell(all, 2, 148), "1000");
    EXPECT_EQ(cell(all, 2, 198), "100.00");
    EXPECT_EQ(cell(all, 2, 208), "10");
    EXPECT_EQ(cell(all, 2, 238), "40");
    EXPECT_EQ(all.lines[1].size(), 22U); // without RoCoS
    // The last line has one sample where their number is odd.
    EXPECT_EQ(cell(all, 3, 11), "4005");
    EXPECT_EQ(all.lines[2].size(), 11U);
    EXPECT_EQ(cell(all, 3, 138), "-");
}

TEST_F(PrintTableTest, TypeEightHasNeitherInputNorSpeedThoughItsHeaderNamesThem) {
    open(8, 2);
    const PrintTable all = table();
    for (const float x : {22.F, 77.F, 148.F, 198.F}) EXPECT_EQ(cell(all, 1, x), "-") << x;
    EXPECT_EQ(all.lines[0].size(), 18U);
    EXPECT_EQ(all.header, " Time     Eng    CRpm PRpm  Ratio   Slip% RoCo  Mph      A1      A2   "
                          "   A3      A4                    Time     Eng   CRpm PRpm  Ratio  "
                          "Slip%  RoCo  Mph      A1     A2       A3       A4");
}

TEST_F(PrintTableTest, ExhaustsAreFahrenheitAndTypeSeventeenHasNone) {
    open(32, 20);
    run->image.samples[1].Exhaust[1] = 0;
    run->image.samples[1].Exhaust[2] = 1;
    run->image.samples[1].Exhaust[3] = 255;
    EXPECT_EQ(cell(table(), 1, 168), "0");
    EXPECT_EQ(cell(table(), 1, 177), "39"); // 39.2
    EXPECT_EQ(cell(table(), 1, 186), "1868");
    open(17, 20);
    EXPECT_EQ(cell(table(), 1, 158), "80");
    EXPECT_EQ(cell(table(), 1, 168), "-");
}

TEST_F(PrintTableTest, WhatHasNoValueIsEmpty) {
    open(43, 20);
    run->image.samples[3].EngineRpm = 0;
    run->image.samples[3].OutputRpm = 0;
    EXPECT_EQ(cell(table(), 3, 11), "0");
    EXPECT_EQ(cell(table(), 3, 44), "-");
    EXPECT_EQ(cell(table(), 3, 55), "-");
    run->image.samples[3].EngineRpm = 1;
    run->image.samples[3].InputRpm = 0;
    EXPECT_EQ(cell(table(), 3, 55), "50");
}

TEST_F(PrintTableTest, AnalogsAreScaledWhateverTheirSensor) {
    open(32, 20);
    for (int n = 1; n <= 8; ++n) run->image.tail.AnalogTypes[n] = static_cast<std::uint8_t>(n % 5);
    run->image.analog.AnalogScale[1] = 0.1F;
    run->image.analog.AnalogDecimals[1] = 2;
    run->image.analog.AnalogOffset[3] = -31;
    run->image.analog.AnalogDecimals[3] = 1;
    run->image.analog.AnalogDecimals[4] = 9; // keeps the picture of the one before
    EXPECT_EQ(cell(table(), 1, 88), "1.00");
    EXPECT_EQ(cell(table(), 1, 98), "20");
    EXPECT_EQ(cell(table(), 1, 108), "-1.0");
    EXPECT_EQ(cell(table(), 1, 118), "40.0");
}

// In doubles the sum would be 16777217.5, which is printed as 16777218.
TEST_F(PrintTableTest, ProductAndSumAreSingles) {
    open(32, 20);
    run->image.samples[1].Analog[1] = 3;
    run->image.analog.AnalogScale[1] = 5592405.5F; // its product is 16777216
    run->image.analog.AnalogOffset[1] = 1;
    EXPECT_EQ(cell(table(), 1, 88), "16777216");
}

TEST_F(PrintTableTest, ARunTimeFailureLeavesNoTable) {
    open(32, 20);
    run->image.header.BasketGearTeeth = 0;
    EXPECT_TRUE(table().failed);
    for (int i = 1; i <= 20; ++i) run->image.samples[i].EngineRpm = 0; // needs no primary drive
    EXPECT_FALSE(table().failed);
    run->image.analog.AnalogOffset[8] = std::numeric_limits<float>::infinity();
    EXPECT_TRUE(table().failed);
    open(12, 20);
    run->image.header.BasketGearTeeth = 0;
    for (int i = 1; i < 20; ++i) run->image.samples[i].EngineRpm = 0;
    EXPECT_TRUE(table().failed); // by the second sample of the last line
}

TEST_F(PrintTableTest, EveryColumnHasANameAndRoom) {
    for (const int type : {12, 32}) {
        open(type, 20);
        const PrintTable all = table();
        ASSERT_EQ(namesOf(all.header).size(), all.columns.size());
        EXPECT_EQ(namesOf(all.header).front(), "Time");
        EXPECT_EQ(namesOf(all.header).back(), type == 12 ? "A4" : "E8");
        for (std::size_t c = 0; c + 1 < all.columns.size(); ++c) {
            EXPECT_EQ(all.columns[c].room, all.columns[c + 1].x - all.columns[c].x - 1.5F);
            EXPECT_GT(all.columns[c].room, 0);
        }
        EXPECT_EQ(all.columns.back().room, type == 12 ? 7 : 14);
    }
}
