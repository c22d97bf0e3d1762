#include "core/tidy_folder.h"

#include "tests/support/memory_files.h"

#include <gtest/gtest.h>

namespace kvo::core {
namespace {

using platform::DateTime;
using testing::MemoryFiles;
using Names = std::vector<std::string>;

const DateTime today{2026, 11, 15, 14, 42, 0};

TEST(WriteLeftover, IsKnownByItsWholePattern) {
    for (const char* name : {".Kvo.Cfg.1234-0.new", ".26111514.52d.7-99.new", ".a.1-1.new"})
        EXPECT_TRUE(isWriteLeftover(name)) << name;
    for (const char* name : {"Kvo.Cfg.1234-0.new", ".Kvo.Cfg.1234-0.old", ".Kvo.Cfg.new",
             ".Kvo.Cfg.12x-0.new", ".Kvo.Cfg.12-.new", ".Kvo.Cfg.-0.new", ".12-0.new", ".new", "",
             ".notes-2.new", "..new", ".Kvo.Cfg.1-2.new.new"})
        EXPECT_FALSE(isWriteLeftover(name)) << name;
}

TEST(CopiesToDrop, AllOfTodayStay) {
    EXPECT_EQ(
        copiesToDrop({{"a.0001", {2026, 11, 15, 0, 0, 0}}, {"a.0002", {2026, 11, 15, 9, 0, 0}},
                         {"a.0003", {2026, 11, 15, 14, 0, 0}}},
            today),
        Names{});
}

TEST(CopiesToDrop, OfADayOfTheLastMonthTheFirstStays) {
    EXPECT_EQ(
        copiesToDrop({{"a.0003", {2026, 11, 14, 20, 0, 0}}, {"a.0001", {2026, 11, 14, 9, 0, 0}},
                         {"a.0002", {2026, 11, 14, 10, 0, 0}}, {"a.0004", today}},
            today),
        (Names{"a.0002", "a.0003"}));
    // The 30th day back is still a day of its own; the 31st is one of its month.
    EXPECT_EQ(copiesToDrop({{"a.0001", {2026, 10, 1, 9, 0, 0}}, {"a.0002", {2026, 10, 15, 9, 0, 0}},
                               {"a.0003", {2026, 10, 16, 9, 0, 0}},
                               {"a.0004", {2026, 10, 17, 9, 0, 0}}, {"a.0005", today}},
                  today),
        (Names{"a.0002"}));
}

TEST(CopiesToDrop, OfAMonthOfTheLastYearTheFirstStaysAndOlderOnesGo) {
    EXPECT_EQ(
        copiesToDrop({{"a.0001", {2024, 1, 1, 9, 0, 0}}, {"a.0002", {2025, 11, 14, 9, 0, 0}},
                         {"a.0003", {2025, 11, 15, 9, 0, 0}}, {"a.0004", {2025, 11, 30, 9, 0, 0}},
                         {"a.0005", {2026, 3, 3, 9, 0, 0}}, {"a.0006", {2026, 3, 4, 9, 0, 0}},
                         {"a.0007", today}},
            today),
        (Names{"a.0001", "a.0002", "a.0004", "a.0006"}));
}

TEST(CopiesToDrop, TheNewestStaysHoweverOldItIs) {
    EXPECT_EQ(copiesToDrop({{"a.0001", {2011, 1, 1, 9, 0, 0}}}, today), Names{});
    EXPECT_EQ(
        copiesToDrop({{"a.0001", {2011, 1, 1, 9, 0, 0}}, {"a.0002", {2011, 1, 2, 9, 0, 0}}}, today),
        Names{"a.0001"});
}

TEST(CopiesToDrop, ADateAheadOfTheClockIsToday) {
    EXPECT_EQ(copiesToDrop({{"a.0001", {2030, 1, 1, 9, 0, 0}}, {"a.0002", {2030, 1, 1, 9, 0, 0}},
                               {"a.0003", {2031, 1, 2, 9, 0, 0}}},
                  today),
        Names{});
}

class TidyFolder : public ::testing::Test {
protected:
    void put(const std::string& path, const DateTime& made) {
        files.put(path, {1});
        files.setCreatedOn(path, made);
    }
    MemoryFiles files;
};

TEST_F(TidyFolder, OnlyLeftoversOlderThanADayGo) {
    put("/kvo/.Kvo.Cfg.12-0.new", {2026, 11, 14, 14, 41, 59});
    put("/kvo/Data/.26111514.52d.12-0.new", {2026, 11, 13, 0, 0, 0});
    put("/kvo/Backup/.a.0001.12-0.new", {2026, 10, 1, 0, 0, 0});
    put("/kvo/.Kvo.Cfg.13-0.new", {2026, 11, 14, 14, 43, 0}); // somebody may be writing it
    put("/kvo/.hidden", {2020, 1, 1, 0, 0, 0});
    put("/kvo/notes.new", {2020, 1, 1, 0, 0, 0});
    put("/kvo/Other/.x.1-1.new", {2020, 1, 1, 0, 0, 0});
    tidyFolder("/kvo", today, files);
    EXPECT_EQ(files.list("/kvo"), (Names{".Kvo.Cfg.13-0.new", ".hidden", "notes.new"}));
    EXPECT_EQ(files.list("/kvo/Data"), Names{});
    EXPECT_EQ(files.list("/kvo/Backup"), Names{});
    EXPECT_EQ(files.list("/kvo/Other").size(), 1U);
}

TEST_F(TidyFolder, OnlyCopiesOfListsAndSettingsAreThinned) {
    const DateTime old{2020, 1, 1, 9, 0, 0};
    for (const char* name : {"KvoData.Ini", "Kvo.Cfg", "KvoTimes", "VSetup.Dat", "Analog8.Dat",
             "26111514.52d", "26111514.52i"})
        for (const char* number : {".0001", ".0002"})
            put(std::string("/kvo/Backup/") + name + number, old);
    put("/kvo/Backup/Logger 1225 2020-01-01.txt", old);
    put("/kvo/Backup/KvoData.Ini.old", old);
    put("/kvo/KvoData.Ini.0001", old);
    tidyFolder("/kvo", today, files);
    EXPECT_EQ(files.list("/kvo/Backup"),
        (Names{"26111514.52d.0001", "26111514.52d.0002", "26111514.52i.0001", "26111514.52i.0002",
            "Analog8.Dat.0002", "Kvo.Cfg.0002", "KvoData.Ini.0002", "KvoData.Ini.old",
            "KvoTimes.0002", "Logger 1225 2020-01-01.txt", "VSetup.Dat.0002"}));
    EXPECT_TRUE(files.exists("/kvo/KvoData.Ini.0001"));
}

TEST_F(TidyFolder, TheBytesOfTheNewest200DownloadsStay) {
    const auto minute = [](int number) {
        const std::string digits = std::to_string(10000 + number);
        return "2611" + digits.substr(1, 2) + "14." + digits.substr(3, 2) + "d";
    };
    for (int number = 100; number < 302; ++number)
        put("/kvo/Backup/" + minute(number) + ".raw", {2026, 11, 15, 9, 0, 0});
    put("/kvo/Backup/" + minute(1) + "-failed.raw", {2026, 11, 15, 14, 41, 0});
    for (const char* name :
        {"notes.raw", "26111514.52d.raw.0001", "20010114.5xd.raw", "x26111514.52d.raw"})
        put(std::string("/kvo/Backup/") + name, {2020, 1, 1, 0, 0, 0});
    tidyFolder("/kvo", today, files);
    EXPECT_EQ(files.list("/kvo/Backup").size(), 200U + 4U);
    EXPECT_FALSE(files.exists("/kvo/Backup/" + minute(1) + "-failed.raw"));
    EXPECT_FALSE(files.exists("/kvo/Backup/" + minute(101) + ".raw"));
    EXPECT_TRUE(files.exists("/kvo/Backup/" + minute(102) + ".raw"));
}

TEST_F(TidyFolder, WhatCannotBeDeletedStaysWithoutAWord) {
    put("/kvo/.Kvo.Cfg.12-0.new", {2020, 1, 1, 0, 0, 0});
    files.failWrites("/kvo", MemoryFiles::Failure::notPermitted);
    tidyFolder("/kvo", today, files);
    EXPECT_TRUE(files.exists("/kvo/.Kvo.Cfg.12-0.new"));
}

} // namespace
} // namespace kvo::core
