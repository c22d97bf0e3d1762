#include "core/analog_tables.h"
#include "tests/support/memory_files.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>

namespace kvo::core {
namespace {

using testing::MemoryFiles;

std::array<double, 256> tableOf(double value) {
    std::array<double, 256> table{};
    table.fill(value);
    return table;
}

TEST(AnalogTables, AreNamedByTheirChannel) {
    EXPECT_EQ(analogTableName(1), "Analog1.Dat");
    EXPECT_EQ(analogTableName(8), "Analog8.Dat");
}

TEST(AnalogTables, ComeBackAsSaved) {
    MemoryFiles files;
    const auto tables = std::make_unique<AnalogTables>();
    for (std::size_t r = 0; r < 256; ++r) (*tables)[5][r] = static_cast<double>(r) / 3;
    ASSERT_TRUE(SaveAnalogTable("/kvo", "Analog5.Dat", 5, *tables, files));
    EXPECT_EQ(files.read("/kvo/Analog5.Dat")->size(), 2048U);
    const auto again = std::make_unique<AnalogTables>();
    LoadAnalogTable("/kvo", "Analog5.Dat", 5, *again, files);
    EXPECT_EQ((*again)[5], (*tables)[5]);
    EXPECT_EQ((*again)[4], tableOf(0));
}

TEST(AnalogTables, AMissingFileIsCreatedAndTheTableStays) {
    MemoryFiles files;
    const auto tables = std::make_unique<AnalogTables>();
    (*tables)[1] = tableOf(7);
    LoadAnalogTable("/kvo", "Analog1.Dat", 1, *tables, files);
    EXPECT_EQ((*tables)[1], tableOf(7));
    EXPECT_EQ(files.read("/kvo/Analog1.Dat"), platform::Bytes{});
}

TEST(AnalogTables, AShortFileFillsWhatItHolds) {
    MemoryFiles files;
    const auto tables = std::make_unique<AnalogTables>();
    (*tables)[2] = tableOf(3);
    ASSERT_TRUE(SaveAnalogTable("/kvo", "Analog2.Dat", 2, *tables, files));
    platform::Bytes cut = files.read("/kvo/Analog2.Dat").value();
    cut.resize(10 * 8 + 7);
    files.put("/kvo/Analog2.Dat", cut);
    (*tables)[2] = tableOf(9);
    LoadAnalogTable("/kvo", "Analog2.Dat", 2, *tables, files);
    EXPECT_EQ((*tables)[2][9], 3);
    EXPECT_EQ((*tables)[2][10], 9);
}

TEST(AnalogTables, AChannelThatDoesNotExistIsRefused) {
    MemoryFiles files;
    const auto tables = std::make_unique<AnalogTables>();
    LoadAnalogTable("/kvo", "Analog9.Dat", 9, *tables, files);
    LoadAnalogTable("/kvo", "Analog0.Dat", 0, *tables, files);
    EXPECT_FALSE(SaveAnalogTable("/kvo", "Analog9.Dat", 9, *tables, files));
    EXPECT_FALSE(files.exists("/kvo/Analog9.Dat"));
}

// A copy of what was overwritten is kept; a file that would not change is not touched at all.
TEST(AnalogTables, ATableThatIsThereAlreadyIsLeftAlone) {
    MemoryFiles files;
    const auto tables = std::make_unique<AnalogTables>();
    (*tables)[3] = tableOf(1);
    ASSERT_TRUE(SaveAnalogTable("/kvo", "Analog3.Dat", 3, *tables, files));
    files.failWrites("/kvo/Analog3.Dat", MemoryFiles::Failure::readOnly);
    EXPECT_TRUE(SaveAnalogTable("/kvo", "Analog3.Dat", 3, *tables, files));
    (*tables)[3] = tableOf(2);
    EXPECT_FALSE(SaveAnalogTable("/kvo", "Analog3.Dat", 3, *tables, files));
    EXPECT_TRUE(files.list("/kvo/Backup").empty());
    files.allowWrites();
    EXPECT_TRUE(SaveAnalogTable("/kvo", "Analog3.Dat", 3, *tables, files));
    EXPECT_EQ(files.list("/kvo/Backup"), std::vector<std::string>{"Analog3.Dat.0001"});
}

TEST(AnalogTable, GivesTheWholePartOfTheQuotient) {
    EXPECT_EQ(applyAnalogTable(tableOf(10), 4, 17), 2);
    EXPECT_EQ(applyAnalogTable(tableOf(255.9), 1, 17), 255) << "cut first, then tested";
    EXPECT_EQ(applyAnalogTable(tableOf(-0.9), 1, 17), 0);
}

TEST(AnalogTable, AQuotientThatIsNoByteKeepsTheRawOne) {
    EXPECT_FALSE(tableByte(tableOf(256), 1, 17));
    EXPECT_EQ(tableByte(tableOf(255.5), 1, 17), 255);
    EXPECT_EQ(applyAnalogTable(tableOf(256), 1, 17), 17);
    EXPECT_EQ(applyAnalogTable(tableOf(-1), 1, 17), 17);
    EXPECT_EQ(applyAnalogTable(tableOf(5), 0, 17), 17);
    EXPECT_EQ(applyAnalogTable(tableOf(0), 0, 17), 17);
    EXPECT_EQ(applyAnalogTable(tableOf(std::numeric_limits<double>::quiet_NaN()), 1, 17), 17);
    EXPECT_EQ(applyAnalogTable(tableOf(std::numeric_limits<double>::infinity()), 1, 17), 17);
    EXPECT_EQ(applyAnalogTable(tableOf(5), std::numeric_limits<float>::quiet_NaN(), 17), 17);
}

} // namespace
} // namespace kvo::core
