#include "core/basic/byte_writer.h"
#include "core/config.h"
#include "tests/support/memory_files.h"
#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

#include <limits>

namespace kvo::core {
namespace {

using testing::MemoryFiles;
using testing::ScriptedDialogs;

constexpr const char* path = "/kvo/Kvo.Cfg";

// A file whose byte at offset i is a number that i tells, with this password in its place.
platform::Bytes numbered(const std::string& password) {
    platform::Bytes file;
    const auto add = [&file](std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            file.push_back(static_cast<std::uint8_t>(1 + file.size() * 7 % 251));
        }
    };
    add(612);
    file.push_back(static_cast<std::uint8_t>(password.size() & 0xFFU));
    file.push_back(static_cast<std::uint8_t>(password.size() >> 8U));
    file.insert(file.end(), password.begin(), password.end());
    add(123);
    return file;
}

TEST(Config, IsCarriedByteForByte) {
    for (const std::string& password :
        {std::string(), std::string("secret"), std::string(700, 'x')}) {
        const platform::Bytes file = numbered(password);
        AppConfig config;
        ASSERT_TRUE(decodeConfig(file, config));
        EXPECT_EQ(encodeConfig(config), file) << "the reserved bytes too";
        EXPECT_EQ(config.Password, password);
    }
}

TEST(Config, Is737BytesWithABlankPassword) {
    EXPECT_EQ(encodeConfig(AppConfig{}).size(), 737U);
}

TEST(Config, MovesWhatStandsBehindThePassword) {
    AppConfig config;
    config.Vehicle_Type = 77;
    EXPECT_EQ(encodeConfig(config)[616], 77);
    config.Password = std::string(20, 'p');
    const platform::Bytes file = encodeConfig(config);
    EXPECT_EQ(file[636], 77);
    EXPECT_EQ(file[612], 20);
    EXPECT_EQ(file[613], 0);
    EXPECT_EQ(file.size(), 757U);
}

TEST(Config, HasItsFieldsAtTheirOffsets) {
    AppConfig config;
    config.EngineColour = 0x01020304;
    config.DriverNo = 0x1122;
    config.LoggerDataType = 0x3344;
    config.Date_Prompt = 0x55;
    config.CheckBits[1] = 0x0605;
    const platform::Bytes file = encodeConfig(config);
    EXPECT_EQ(file[4], 4);
    EXPECT_EQ(file[7], 1);
    EXPECT_EQ(file[125], 0x22);
    EXPECT_EQ(file[583], 0x44);
    EXPECT_EQ(file[609], 0x55);
    EXPECT_EQ(file[735], 0x05);
    EXPECT_EQ(file[736], 0x06);
    EXPECT_EQ(file[100], ' ') << "texts are padded with blanks";
}

TEST(Config, CutsATextThatIsTooLong) {
    AppConfig config;
    config.Driver = std::string(40, 'd');
    config.AnalogName[8] = "Oil pressure";
    AppConfig again;
    ASSERT_TRUE(decodeConfig(encodeConfig(config), again));
    EXPECT_EQ(again.Driver, std::string(25, 'd'));
    EXPECT_EQ(again.AnalogName[8], "Oil pres");
}

TEST(Config, MagnificationOfZeroBecomesOne) {
    AppConfig config;
    config.Text_Magnify[3] = 9;
    AppConfig again;
    ASSERT_TRUE(decodeConfig(encodeConfig(config), again));
    EXPECT_EQ(again.Text_Magnify[0], 1);
    EXPECT_EQ(again.Text_Magnify[24], 1);
    EXPECT_EQ(again.Text_Magnify[3], 9);
}

TEST(Config, TakesWhatLiesInFrontOfACutAndKeepsTheRest) {
    const platform::Bytes file = numbered("secret");
    AppConfig whole;
    ASSERT_TRUE(decodeConfig(file, whole));
    for (std::size_t length = 0; length < file.size(); ++length) {
        const platform::Bytes cut(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length));
        AppConfig config;
        config.EngineColour = -5;
        config.LoggerDataType = -6;
        config.Vehicle_Type = 66;
        config.CheckBits[1] = -7;
        ASSERT_FALSE(decodeConfig(cut, config)) << length;
        EXPECT_EQ(config.EngineColour, length < 8 ? -5 : whole.EngineColour) << length;
        EXPECT_EQ(config.LoggerDataType, length < 585 ? -6 : whole.LoggerDataType) << length;
        EXPECT_EQ(config.Vehicle_Type, length < 623 ? 66 : whole.Vehicle_Type) << length;
        EXPECT_EQ(config.CheckBits[1], -7) << length;
        for (const std::uint8_t magnify : config.Text_Magnify) EXPECT_NE(magnify, 0) << length;
    }
}

TEST(Config, APasswordLongerThanTheFileEndsTheRead) {
    platform::Bytes file = numbered("");
    file[612] = 0xFF;
    file[613] = 0xFF;
    AppConfig config;
    config.Password = "old";
    config.CustomScaleLow = 44;
    EXPECT_FALSE(decodeConfig(file, config));
    EXPECT_EQ(config.Password, "old");
    EXPECT_EQ(config.CustomScaleLow, 44);
}

TEST(Config, ALongerFileIsTaken) {
    platform::Bytes file = numbered("");
    file.resize(5000, 9);
    AppConfig config;
    EXPECT_TRUE(decodeConfig(file, config));
}

TEST(Config, CarriesNumbersThatAreNone) {
    AppConfig config;
    config.Wheel = std::numeric_limits<float>::quiet_NaN();
    config.First_Ratio = std::numeric_limits<double>::infinity();
    AppConfig again;
    ASSERT_TRUE(decodeConfig(encodeConfig(config), again));
    EXPECT_EQ(encodeConfig(again).at(303), encodeConfig(config).at(303));
    EXPECT_EQ(again.First_Ratio, config.First_Ratio);
}

struct LoadedConfig {
    AppConfig config;
    int setups = 0;
    int beeps = 0;
    std::string problems;
};

LoadedConfig load(const MemoryFiles& files, const char* expectedText) {
    LoadedConfig loaded;
    ScriptedDialogs dialogs;
    if (expectedText) dialogs.expectBox(expectedText, 16, "Kvo");
    LoadConfig("/kvo", loaded.config, files, dialogs, [&] {
        ++loaded.setups;
        EXPECT_EQ(dialogs.beeps(), 1) << "the setup comes behind the message";
    });
    loaded.beeps = dialogs.beeps();
    loaded.problems = dialogs.problems();
    return loaded;
}

constexpr const char* missing =
    "      Kvo.CfgG file not foundYou will have to fix the Setup before downloading data. ";
constexpr const char* corrupt =
    "\n    Your Kvo.Cfg file is CORRUPT\n\nYou Will have to Setup Kvo again. \n";

TEST(LoadConfig, AMissingFileIsToldAndOpensTheSetup) {
    const LoadedConfig loaded = load(MemoryFiles{}, missing);
    EXPECT_EQ(loaded.problems, "");
    EXPECT_EQ(loaded.setups, 1);
    EXPECT_EQ(loaded.config, AppConfig{});
}

TEST(LoadConfig, AnEmptyFileIsCorrupt) {
    MemoryFiles files;
    files.put(path, {});
    const LoadedConfig loaded = load(files, corrupt);
    EXPECT_EQ(loaded.problems, "");
    EXPECT_EQ(loaded.setups, 1);
}

TEST(LoadConfig, ACutFileIsCorruptAndKeepsWhatWasRead) {
    MemoryFiles files;
    platform::Bytes file = numbered("");
    AppConfig whole;
    ASSERT_TRUE(decodeConfig(file, whole));
    file.resize(600);
    files.put(path, file);
    const LoadedConfig loaded = load(files, corrupt);
    EXPECT_EQ(loaded.problems, "");
    EXPECT_EQ(loaded.setups, 1);
    EXPECT_EQ(loaded.config.Driver, whole.Driver);
}

TEST(LoadConfig, AGoodFileIsReadInSilence) {
    MemoryFiles files;
    files.put(path, numbered("secret"));
    const LoadedConfig loaded = load(files, nullptr);
    EXPECT_EQ(loaded.problems, "");
    EXPECT_EQ(loaded.setups, 0);
    EXPECT_EQ(loaded.beeps, 0);
    EXPECT_EQ(loaded.config.Password, "secret");
}

TEST(SaveConfig, KeepsACopyOfWhatItReplaces) {
    MemoryFiles files;
    AppConfig config;
    ASSERT_TRUE(SaveConfig("/kvo", config, files));
    config.Gears = 5;
    ASSERT_TRUE(SaveConfig("/kvo", config, files));
    AppConfig again;
    ASSERT_TRUE(decodeConfig(files.read(path).value(), again));
    EXPECT_EQ(again.Gears, 5);
    ASSERT_TRUE(decodeConfig(files.read("/kvo/Backup/Kvo.Cfg.0001").value(), again));
    EXPECT_EQ(again.Gears, 0);
}

TEST(SaveConfig, LeavesAReadOnlyFileInSilenceAndWithoutACopy) {
    MemoryFiles files;
    files.put(path, numbered("old"));
    files.failWrites(path, MemoryFiles::Failure::readOnly);
    EXPECT_TRUE(SaveConfig("/kvo", AppConfig{}, files));
    EXPECT_EQ(files.read(path), numbered("old"));
    EXPECT_FALSE(files.folderExists("/kvo/Backup"));
}

TEST(SaveConfig, TellsEveryOtherFailureAndLeavesTheOldFile) {
    for (const char* place : {path, "/kvo/Backup"}) {
        for (const auto how : {MemoryFiles::Failure::fullDisk, MemoryFiles::Failure::notPermitted,
                 MemoryFiles::Failure::diskError}) {
            MemoryFiles files;
            files.put(path, numbered("old"));
            files.failWrites(place, how);
            const auto saved = SaveConfig("/kvo", AppConfig{}, files);
            EXPECT_FALSE(saved);
            EXPECT_FALSE(saved.message.empty());
            EXPECT_EQ(files.read(path), numbered("old"));
        }
    }
}

} // namespace
} // namespace kvo::core
