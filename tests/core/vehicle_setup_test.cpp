#include "core/basic/numbers.h"
#include "core/vehicle_setup.h"
#include "tests/support/memory_files.h"

#include <gtest/gtest.h>

namespace kvo::core {
namespace {

using testing::MemoryFiles;

constexpr const char* setupPath = "/kvo/VSetup.Dat";

TEST(VehicleSetup, IsTwentyFivePairsOfSeventeenCharacters) {
    MemoryFiles files;
    VehicleSetup setup;
    setup[1] = {"Clutch plates", "5"};
    setup[25] = {"12345678901234567", "abcdefghijklmnopq"};
    ASSERT_TRUE(SaveVehicleSetup("/kvo", setup, files));
    const auto file = files.read(setupPath).value();
    ASSERT_EQ(file.size(), 850U);
    EXPECT_EQ(std::string(file.begin(), file.begin() + 34), "Clutch plates    5                ");
    EXPECT_EQ(std::string(file.end() - 34, file.end()), "12345678901234567abcdefghijklmnopq");
    const VehicleSetup again = LoadVehicleSetup("/kvo", files);
    EXPECT_EQ(again[1].Name, "Clutch plates");
    EXPECT_EQ(again[1].Value, "5");
    EXPECT_EQ(again[25].Name, "12345678901234567");
    EXPECT_EQ(again[25].Value, "abcdefghijklmnopq");
    EXPECT_EQ(again[2].Name, "");
}

TEST(VehicleSetup, EachNameAndValueHasItsOwnPlace) {
    MemoryFiles files;
    VehicleSetup setup;
    for (int i = 1; i <= 25; ++i)
        setup[i] = {"name " + std::to_string(i), "value " + std::to_string(i)};
    ASSERT_TRUE(SaveVehicleSetup("/kvo", setup, files));
    const auto file = files.read(setupPath).value();
    for (int i = 1; i <= 25; ++i) {
        const auto pair = file.begin() + 34 * (i - 1);
        EXPECT_EQ(
            std::string(pair, pair + 34), padded(setup[i].Name, 17) + padded(setup[i].Value, 17));
        EXPECT_EQ(LoadVehicleSetup("/kvo", files)[i].Name, setup[i].Name);
        EXPECT_EQ(LoadVehicleSetup("/kvo", files)[i].Value, setup[i].Value);
    }
}

TEST(VehicleSetup, CutsALongerText) {
    MemoryFiles files;
    VehicleSetup setup;
    setup[1] = {std::string(40, 'n'), std::string(18, 'v')};
    ASSERT_TRUE(SaveVehicleSetup("/kvo", setup, files));
    EXPECT_EQ(files.read(setupPath)->size(), 850U);
    EXPECT_EQ(LoadVehicleSetup("/kvo", files)[1].Name, std::string(17, 'n'));
    EXPECT_EQ(LoadVehicleSetup("/kvo", files)[1].Value, std::string(17, 'v'));
}

TEST(VehicleSetup, AMissingFileIsCreatedEmptyAndGivesEmptyLines) {
    MemoryFiles files;
    const VehicleSetup setup = LoadVehicleSetup("/kvo", files);
    for (const VehicleSetupLine& line : setup) EXPECT_EQ(line.Name + line.Value, "");
    EXPECT_EQ(files.read(setupPath), platform::Bytes{});
}

TEST(VehicleSetup, AFolderThatCannotBeWrittenGivesEmptyLinesToo) {
    MemoryFiles files;
    files.failWrites("/kvo", MemoryFiles::Failure::readOnly);
    EXPECT_EQ(LoadVehicleSetup("/kvo", files)[1].Name, "");
    EXPECT_FALSE(files.exists(setupPath));
}

TEST(VehicleSetup, AFileCutAnywhereGivesTheLinesThatAreWhole) {
    MemoryFiles files;
    VehicleSetup setup;
    for (VehicleSetupLine& line : setup) line = {"name", "value"};
    ASSERT_TRUE(SaveVehicleSetup("/kvo", setup, files));
    const platform::Bytes whole = files.read(setupPath).value();
    for (std::size_t length = 0; length < whole.size(); ++length) {
        files.put(setupPath, {whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)});
        const VehicleSetup cut = LoadVehicleSetup("/kvo", files);
        for (int i = 1; i <= 25; ++i) {
            EXPECT_EQ(cut[i].Name, static_cast<std::size_t>(i) * 34 <= length ? "name" : "");
        }
    }
}

TEST(VehicleSetup, KeepsACopyOfTheOldOne) {
    MemoryFiles files;
    VehicleSetup setup;
    ASSERT_TRUE(SaveVehicleSetup("/kvo", setup, files));
    setup[1].Name = "Clutch";
    ASSERT_TRUE(SaveVehicleSetup("/kvo", setup, files));
    EXPECT_TRUE(files.exists("/kvo/Backup/VSetup.Dat.0001"));
}

} // namespace
} // namespace kvo::core
