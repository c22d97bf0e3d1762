// The live display without a line: what a type shows, how frames are taken, what they say.
#include "link/pit_run.h"

#include "tests/support/memory_files.h"
#include "tests/support/pit_rig.h"

#include <gtest/gtest.h>

namespace kvo::link {
namespace {

using testing::pitConfig;

std::string frameOf(std::size_t length, std::initializer_list<int> bytes) {
    std::string frame(length, '\0');
    std::size_t at = 0;
    for (const int byte : bytes) frame[at++] = static_cast<char>(byte);
    return frame;
}

PitRunReadings decoded(const std::string& frame, const core::AppConfig& config) {
    return decodePitFrame(frame, config, core::AnalogTables{}).value();
}

int shownAnalogs(const PitRunLayout& layout) {
    return static_cast<int>(std::count(layout.Analog.begin(), layout.Analog.end(), true));
}

TEST(PitRunLayout, EachTypeShowsWhatItHas) {
    const struct {
        int type;
        int analogs;
        bool exhausts;
    } rows[] = {{12, 4, false}, {17, 8, false}, {20, 6, true}, {23, 8, true}, {25, 8, true},
        {32, 8, true}, {43, 8, true}};
    for (const auto& row : rows) {
        const PitRunLayout layout = pitRunLayout(pitConfig(row.type));
        EXPECT_TRUE(layout.canRun) << row.type;
        EXPECT_EQ(shownAnalogs(layout), row.analogs) << row.type;
        EXPECT_EQ(layout.Temps_Label, row.exhausts) << row.type;
        for (const bool shown : layout.T) EXPECT_EQ(shown, row.exhausts);
    }
}

TEST(PitRunLayout, ATypeWithoutAPitRunShowsTheFormAsItWasDesigned) {
    for (const int type : {8, 0, 29, 99}) {
        const PitRunLayout layout = pitRunLayout(pitConfig(type));
        EXPECT_FALSE(layout.canRun) << type;
        EXPECT_EQ(shownAnalogs(layout), 8);
        EXPECT_TRUE(layout.Temps_Label);
    }
}

TEST(PitRunLayout, AChannelThatIsNotInUseIsHidden) {
    core::AppConfig config = pitConfig(25);
    config.Analog_Check[3] = 0;
    const PitRunLayout layout = pitRunLayout(config);
    EXPECT_FALSE(layout.Analog[3]);
    EXPECT_EQ(shownAnalogs(layout), 7);
}

TEST(PitRunTables, OnlyChannelsInUseThatGoThroughATableAreRead) {
    testing::MemoryFiles files;
    core::AnalogTables tables;
    core::AppConfig config = pitConfig(25);
    core::AnalogTables onDisk;
    for (int c = 1; c <= 8; ++c) {
        onDisk[c].fill(c * 10.0);
        ASSERT_TRUE(core::SaveAnalogTable("/kvo", core::analogTableName(c), c, onDisk, files));
    }
    config.Analog_Type[2] = config.Analog_Type[5] = 2;
    config.Analog_Check[5] = 0;
    loadPitRunTables(config, tables, "/kvo", files);
    EXPECT_EQ(tables[2][7], 20.0);
    EXPECT_EQ(tables[5][7], 0.0);
    EXPECT_EQ(tables[1][7], 0.0);
}

TEST(PitFrames, OneByteMoreThanAFrameMustBeThere) {
    EXPECT_EQ(pitFramesToTake(0, 28), 0);
    EXPECT_EQ(pitFramesToTake(28, 28), 0);
    EXPECT_EQ(pitFramesToTake(29, 28), 1);
    EXPECT_EQ(pitFramesToTake(112, 28), 1);
    EXPECT_EQ(pitFramesToTake(113, 28), 4);
    EXPECT_EQ(pitFramesToTake(185, 46), 4);
}

TEST(PitFrame, RpmIsCutAndKnowsNoThreshold) {
    core::AppConfig config = pitConfig(12);
    config.Engine_Correction = 1.5F;
    // 6000 counts are 2500 rpm, 1 count is 15 million.
    const auto got = decoded(frameOf(28, {0, 9, 0x17, 0x70, 0, 1, 0x17, 0x71, 0, 0}), config);
    EXPECT_EQ(got.LineNumber, " 9");
    EXPECT_EQ(got.ERpm, "3750");
    EXPECT_EQ(got.CRpm, "15000000");
    EXPECT_EQ(got.PRpm, "1249"); // 1249.79
    EXPECT_EQ(got.Mph, "0");
}

TEST(PitFrame, OnlyTheFrontWheelsCountHasASign) {
    const auto got =
        decoded(frameOf(28, {0, 0, 0x80, 0, 0x80, 0, 0x80, 0, 0x80, 0}), pitConfig(12));
    EXPECT_EQ(got.ERpm, "457");
    EXPECT_EQ(got.CRpm, "457");
    EXPECT_EQ(got.PRpm, "228");
    EXPECT_EQ(got.Mph, "0");
    const auto slow = decoded(frameOf(28, {0, 0, 0, 0, 0, 0, 0, 0, 0x7F, 0xFF}), pitConfig(12));
    EXPECT_EQ(slow.Mph, "34.05"); // 6809.3 cut to 6809, / 200
}

TEST(PitFrame, AnUnusableCorrectionLeavesItsLabelAlone) {
    core::AppConfig config = pitConfig(12);
    config.Engine_Correction = std::numeric_limits<float>::infinity();
    config.Wheel = std::numeric_limits<float>::quiet_NaN();
    const auto got = decoded(frameOf(28, {0, 0, 1, 0, 1, 0, 1, 0, 1, 0}), config);
    EXPECT_EQ(got.ERpm, std::nullopt);
    EXPECT_EQ(got.Mph, std::nullopt);
    EXPECT_TRUE(got.CRpm);
}

TEST(PitFrame, EveryKindOfAnalogHasItsPicture) {
    core::AppConfig config = pitConfig(17);
    for (int c = 1; c <= 8; ++c) config.Analog_Type[c] = static_cast<std::uint8_t>(c - 1);
    config.AnalogScale[1] = 0.1F;
    config.Decimals[1] = 2;
    config.AnalogOffset[5] = -300;
    config.Fuel_Combo = 2; // and the scale stays that of the first fuel
    core::AnalogTables tables;
    tables[3][51] = 12.345;
    std::string frame = frameOf(28, {});
    frame.replace(11, 8, std::string(8, char{51}));
    const auto got = decodePitFrame(frame, config, tables).value();
    EXPECT_EQ(got.Analog[1], "5.10");
    EXPECT_EQ(got.Analog[2], " 204");
    EXPECT_EQ(got.Analog[3], "12.345");
    EXPECT_EQ(got.Analog[4], "11.0");
    EXPECT_EQ(got.Analog[5], "-249");
    EXPECT_EQ(got.Analog[6], std::nullopt);
}

// The steps of a table leave sums that a point is far away from.
TEST(PitFrame, AReadingOutOfATableHasNoExponent) {
    core::AppConfig config = pitConfig(12);
    config.Analog_Type[1] = 2;
    core::AnalogTables tables;
    tables[1][26] = -1.11022302462516E-16;
    tables[1][27] = 1e20;
    std::string frame = frameOf(28, {});
    frame[11] = char{26};
    EXPECT_EQ(
        decodePitFrame(frame, config, tables)->Analog[1], "-0.000000000000000111022302462516");
    frame[11] = char{27};
    EXPECT_EQ(decodePitFrame(frame, config, tables)->Analog[1], "100000000000000000000");
}

TEST(PitFrame, TheWidestWholePartOfATableKeepsItsPoint) {
    core::AnalogTables tables;
    EXPECT_EQ(widestWhole(tables[1]), "0");
    tables[1][3] = 99.5;
    tables[1][200] = -99.5;
    tables[1][201] = 0.123456789;
    EXPECT_EQ(widestWhole(tables[1]), "-99");
}

TEST(PitFrame, MoreThanTwoDecimalsAndWhatFitsNoSingleLeaveTheLabel) {
    core::AppConfig config = pitConfig(12);
    config.Decimals[1] = 3;
    config.AnalogScale[2] = 3e38F;
    std::string frame = frameOf(28, {});
    frame[12] = char{9};
    const auto got = decoded(frame, config);
    EXPECT_EQ(got.Analog[1], std::nullopt);
    EXPECT_EQ(got.Analog[2], std::nullopt);
    EXPECT_EQ(got.Analog[3], "0");
    EXPECT_EQ(got.Analog[5], std::nullopt); // not of this type
}

TEST(PitFrame, AChannelCountsWhereItsCheckIsOne) {
    core::AppConfig config = pitConfig(12);
    config.Analog_Check[1] = 0;
    config.Analog_Check[2] = 2; // shown, and never written
    const auto got = decoded(frameOf(28, {}), config);
    EXPECT_EQ(got.Analog[1], std::nullopt);
    EXPECT_EQ(got.Analog[2], std::nullopt);
    EXPECT_TRUE(got.Analog[3]);
}

TEST(PitFrame, ExhaustsLieWhereTheTypeHasThem) {
    for (const auto& [type, first] : std::initializer_list<std::pair<int, std::size_t>>{
             {20, 21}, {25, 21}, {32, 24}, {43, 24}}) {
        const auto length = static_cast<std::size_t>(pitRunType(type)->frameBytes);
        std::string frame(length, '\0');
        for (std::size_t i = 0; i < 8; ++i) frame[first - 1 + i] = static_cast<char>(i);
        core::AppConfig config = pitConfig(type);
        auto got = decoded(frame, config);
        EXPECT_EQ(got.T[1], "0");
        EXPECT_EQ(got.T[8], "28") << type;
        config.Exhaust = -1;
        got = decoded(frame, config);
        EXPECT_EQ(got.T[1], "0");  // not 32
        EXPECT_EQ(got.T[8], "82"); // 7 x 36 / 5 + 32 is 82.4
    }
    for (const int type : {12, 17, 23}) {
        EXPECT_EQ(decoded(std::string(28, '\x10'), pitConfig(type)).T[1], std::nullopt);
    }
}

TEST(PitFrame, Type20ReadsTheAnalogsThatItHides) {
    const auto got = decoded(std::string(28, '\x10'), pitConfig(20));
    EXPECT_EQ(got.Analog[8], "16");
}

TEST(PitFrame, AShortFrameSaysNothing) {
    EXPECT_FALSE(decodePitFrame(std::string(27, 'x'), pitConfig(25), core::AnalogTables{}));
    EXPECT_FALSE(decodePitFrame(std::string(45, 'x'), pitConfig(32), core::AnalogTables{}));
    EXPECT_FALSE(decodePitFrame(std::string(46, 'x'), pitConfig(8), core::AnalogTables{}));
}

} // namespace
} // namespace kvo::link
