#include "library/folder_check.h"

#include "core/config.h"
#include "core/default_config.h"
#include "core/run_file.h"
#include "core/run_index.h"
#include "tests/support/memory_files.h"

#include <gtest/gtest.h>

#include <memory>

using namespace kvo;
using namespace kvo::library;
using kvo::testing::MemoryFiles;

namespace {

constexpr const char* runPath = "/kvo/Data/26111514.52d";
constexpr const char* infoPath = "/kvo/Data/26111514.52i";

struct FolderCheck : ::testing::Test {
    FolderCheck() {
        const core::AppConfig config = core::defaultConfig();
        run->DataType = 32;
        run->SampleCount = 1360;
        for (int i = 1; i <= 1360; ++i) run->image.samples[i].Index = static_cast<std::int16_t>(i);
        run->path = runPath;
        const std::string text = core::runText("1 Test", platform::DateTime{2026, 11, 15});
        EXPECT_TRUE(files.makeFolder("/kvo/Data"));
        EXPECT_TRUE(core::SaveRun(*run, {{}, text, config}, "/kvo", files));
        EXPECT_TRUE(core::AddRunToIndex(
            "/kvo", {"26111514.52d", "Sun 15 Nov 2026 Run: 1 "}, core::IndexOrder::asItIs, files));
        EXPECT_TRUE(core::SaveConfig("/kvo", config, files));
    }
    FolderFindings check() { return checkFolder("/kvo", files); }
    // The one file that is damaged.
    std::string damaged() {
        const auto found = check().damaged;
        return found.size() == 1 ? found[0].file : std::to_string(found.size()) + " files";
    }
    platform::Bytes content(const char* path) { return files.read(path).value(); }

    MemoryFiles files;
    std::unique_ptr<core::OpenRun> run = std::make_unique<core::OpenRun>();
};

} // namespace

TEST_F(FolderCheck, AFolderInOrderHasNoFindings) {
    files.put(infoPath, {});
    files.put("/kvo/Analog1.Dat", platform::Bytes(2048));
    files.put("/kvo/Analog2.Dat", {});
    files.put("/kvo/KvoTimes", platform::Bytes(88));
    files.put("/kvo/VSetup.Dat", platform::Bytes(850));
    files.put("/kvo/notes.txt", {1, 2, 3});
    files.put("/kvo/Backup/26111514.52d.0001", {1});
    const int before = files.writes();
    const FolderFindings found = check();
    EXPECT_TRUE(found.damaged.empty());
    EXPECT_TRUE(found.notes.empty());
    EXPECT_EQ(found.files, 10);
    EXPECT_EQ(files.writes(), before);
}

TEST_F(FolderCheck, AFolderThatDoesNotTellItsFilesIsNamed) {
    files.failReads("/kvo/Data", MemoryFiles::Failure::notPermitted);
    EXPECT_EQ(damaged(), "Data");
    EXPECT_TRUE(check().notes.empty());
}

TEST_F(FolderCheck, AFolderWithoutBackupOrDataHasNoFindings) {
    MemoryFiles fresh;
    EXPECT_TRUE(fresh.makeFolder("/kvo"));
    const FolderFindings found = checkFolder("/kvo", fresh);
    EXPECT_TRUE(found.damaged.empty());
    EXPECT_TRUE(found.notes.empty());
}

TEST_F(FolderCheck, AFileInTheFoldersPlaceIsNamed) {
    MemoryFiles fresh;
    EXPECT_TRUE(fresh.makeFolder("/kvo"));
    fresh.put("/kvo/Data", {1});
    const FolderFindings found = checkFolder("/kvo", fresh);
    ASSERT_EQ(found.damaged.size(), 1U);
    EXPECT_EQ(found.damaged[0].file, "Data");
}

TEST_F(FolderCheck, NotesThatEndEarlyAreNoted) {
    files.put(infoPath, platform::Bytes(700));
    const FolderFindings found = check();
    EXPECT_TRUE(found.damaged.empty());
    ASSERT_EQ(found.notes.size(), 1U);
    EXPECT_EQ(found.notes[0].file, "Data/26111514.52i");
    EXPECT_EQ(found.notes[0].reason, "It has 2 of 61 texts.");
    files.put(infoPath, platform::Bytes(61 * 400 - 300));
    EXPECT_TRUE(check().notes.empty());
}

TEST_F(FolderCheck, ARunThatIsCutIsNamed) {
    platform::Bytes bytes = content(runPath);
    // Without its tail block, as an import writes it, a run is whole.
    bytes.resize(1364 * 84);
    files.put(runPath, bytes);
    EXPECT_TRUE(check().damaged.empty());
    bytes.pop_back();
    files.put(runPath, bytes);
    EXPECT_EQ(damaged(), "Data/26111514.52d");
    EXPECT_EQ(check().damaged.at(0).reason, "It is cut short: 114575 bytes of 114576.");
}

TEST_F(FolderCheck, ARunIsKnownByItsTypeAndItsRows) {
    const platform::Bytes whole = content(runPath);
    platform::Bytes bytes = whole;
    bytes[2] = '9';
    EXPECT_EQ(runDamage(bytes), "No data type that Kvo knows stands in front of it.");
    bytes = whole;
    bytes[0] = 200;
    EXPECT_EQ(runDamage(bytes), "Nothing stands in its first record.");
    bytes = whole;
    bytes[84 * 18] = 0; // the first byte of sample 17
    EXPECT_EQ(runDamage(bytes), "Sample 17 bears the number 0.");
    EXPECT_EQ(runDamage({}), "Nothing stands in its first record.");
    EXPECT_EQ(runDamage(whole), "");
}

TEST_F(FolderCheck, NotesAreKnownByTheLengthsOfTheirTexts) {
    platform::Bytes bytes(61 * 400);
    EXPECT_EQ(infoDamage(bytes), "");
    bytes[400] = 142;
    bytes[401] = 1; // 398
    EXPECT_EQ(infoDamage(bytes), "");
    bytes[400] = 143;
    EXPECT_EQ(infoDamage(bytes), "Text 2 is cut short or damaged.");
    bytes[400] = 50;
    bytes[401] = 0;
    bytes.resize(452);
    EXPECT_EQ(infoDamage(bytes), "");
    bytes.resize(451);
    EXPECT_EQ(infoDamage(bytes), "Text 2 is cut short or damaged.");
    bytes.resize(401);
    EXPECT_EQ(infoDamage(bytes), "It is cut short.");
    EXPECT_EQ(infoDamage(platform::Bytes(61 * 400 + 1)), "It has too many records.");
    files.put(infoPath, bytes);
    EXPECT_EQ(damaged(), "Data/26111514.52i");
}

TEST_F(FolderCheck, TheOtherFilesAreKnownByTheirLengths) {
    struct Case {
        const char* path;
        std::size_t bytes;
        const char* name;
    };
    for (const Case& one : {Case{"/kvo/Kvo.Cfg", 700, "Kvo.Cfg"}, {"/kvo/KvoTimes", 45, "KvoTimes"},
             {"/kvo/KvoTimes", 27 * 44, "KvoTimes"}, {"/kvo/VSetup.Dat", 33, "VSetup.Dat"},
             {"/kvo/Analog8.Dat", 2047, "Analog8.Dat"},
             {"/kvo/Data/KvoData.Ini", 239, "Data/KvoData.Ini"}}) {
        const auto before = files.read(one.path);
        platform::Bytes bytes = before.value_or(platform::Bytes());
        const bool isIndex = std::string(one.path).ends_with("Ini");
        bytes.resize(isIndex ? bytes.size() + one.bytes : one.bytes, ' ');
        files.put(one.path, bytes);
        const auto found = check().damaged;
        EXPECT_FALSE(found.empty()) << one.path;
        if (!found.empty()) {
            EXPECT_EQ(found[0].file, one.name);
        }
        if (before) {
            files.put(one.path, *before);
        } else {
            EXPECT_TRUE(files.remove(one.path));
        }
        EXPECT_TRUE(check().damaged.empty()) << one.path;
    }
}

TEST_F(FolderCheck, TheListAndTheRunsAreCompared) {
    files.put("/kvo/Data/26111514.53d", content(runPath));
    EXPECT_EQ(
        check().notes, (std::vector<FileFinding>{{"Data/26111514.53d", "It is not in the list."}}));
    EXPECT_TRUE(check().damaged.empty());
    EXPECT_TRUE(files.remove(runPath));
    EXPECT_EQ(damaged(), "Data/26111514.52d");
    EXPECT_TRUE(core::AddRunToIndex(
        "/kvo", {"..", "Sun 15 Nov 2026 Run: 2 "}, core::IndexOrder::asItIs, files));
    EXPECT_EQ(check().damaged.size(), 2U);
    EXPECT_TRUE(files.remove("/kvo/Data/KvoData.Ini"));
    EXPECT_EQ(check().notes, (std::vector<FileFinding>{{"Data", "There is no list of the runs."}}));
}

TEST_F(FolderCheck, WhatCannotBeReadIsNamed) {
    files.put("/kvo/Backup/old", {1});
    files.failReads("/kvo/Backup/old", MemoryFiles::Failure::diskError);
    EXPECT_EQ(damaged(), "Backup/old");
    files.put("/kvo/Data/.26111514.52d.12-0.new", {1});
    EXPECT_EQ(check().notes.size(), 1U);
}

TEST_F(FolderCheck, NoContentBreaksTheCheck) {
    platform::Bytes bytes = content(runPath);
    unsigned seed = 11;
    for (int round = 0; round < 400; ++round) {
        seed = seed * 1664525U + 1013904223U;
        if (round % 4 == 0) bytes.resize((seed >> 8U) % 130000);
        if (!bytes.empty())
            bytes[(seed >> 4U) % bytes.size()] ^= static_cast<std::uint8_t>(seed >> 24U);
        files.put(runPath, bytes);
        files.put(infoPath, bytes);
        files.put("/kvo/Data/KvoData.Ini", bytes);
        files.put("/kvo/Kvo.Cfg", bytes);
        EXPECT_GE(check().files, 4);
    }
}
