// A download that is decoded again from its raw session is the same run to the last bit.
#include "link/replay.h"

#include "tests/support/download_rig.h"

#include <gtest/gtest.h>

namespace kvo::link {
namespace {

using platform::Reply;
using simulator::Fault;
using testing::DownloadRig;

constexpr const char* rawPath = "/kvo/Backup/26111514.52d.raw";
constexpr const char* failedPath = "/kvo/Backup/26111514.52d-failed.raw";

std::unique_ptr<RawSession> rawOf(const DownloadRig& rig, const char* path = rawPath) {
    const auto file = rig.files.read(path);
    if (!file) return nullptr;
    std::string why;
    auto session = decodeRawSession(*file, why);
    EXPECT_EQ(why, "");
    return session;
}

void expectSameRun(const DownloadRig& rig, const std::string& what) {
    SCOPED_TRACE(what);
    const auto session = rawOf(rig);
    ASSERT_NE(session, nullptr);
    const Replay replay = replayDownload(*session);
    ASSERT_TRUE(replay.runFile.has_value());
    EXPECT_EQ(replay.runName, "26111514.52d");
    EXPECT_TRUE(replay.runFile == rig.files.read(DownloadRig::runPath));
    EXPECT_EQ(replay.surplus, session->surplus);
}

void expectTypeBoxes(DownloadRig& rig) {
    if (rig.layout.dataType == 43) rig.dialogs.expectBoxTitled("Warning");
}

TEST(Replay, EveryTypeInBothModes) {
    for (const auto& wire : simulator::wireLayouts) {
        for (const bool fast : {true, false}) {
            DownloadRig rig(wire.dataType, fast, {}, true);
            expectTypeBoxes(rig);
            rig.expectSave("1 ", "1 Western Nationals");
            rig.click();
            EXPECT_EQ(rig.dialogs.problems(), "");
            expectSameRun(rig, std::to_string(wire.dataType) + (fast ? " fast" : " safe"));
            const auto session = rawOf(rig);
            EXPECT_TRUE(session->saved);
            EXPECT_EQ(session->title, "1 Western Nationals");
            EXPECT_EQ(session->line.sent, rig.line.everythingSent());
            EXPECT_EQ(session->line.arrived(), session->line.expected());
            EXPECT_EQ(session->line.arrivedUnasked(), 0);
            EXPECT_LT(rig.files.read(rawPath)->size(), 150'000U);
        }
    }
}

// The last rows of the fast mode, and values that do not fit, are those of the run before.
TEST(Replay, WhatWasInMemoryBeforeIsPartOfIt) {
    DownloadRig rig(32, true);
    rig.config.Engine_Correction = 1.3F;
    rig.config.Speed_Correction = 1.7F;
    rig.config.SpeedWheel_Prompt = 0;
    rig.saveConfig();
    for (int i = 1; i <= core::maxSamples; ++i) {
        core::RunSample& row = rig.state->Run.image.samples[i];
        row.EngineRpm = static_cast<std::int16_t>(7 * i);
        row.SpeedRaw = 11 * i;
        row.Exhaust.fill(static_cast<std::uint8_t>(i));
    }
    rig.state->Run.image.setup.GearRatio[2] = 4.5F;
    rig.config.Second_Ratio = 1e300;
    rig.saveConfig();
    rig.link.RpmValue = 1234;
    rig.dialogs.expectBoxTitled("Front Wheel Dimeter", Reply::no);
    rig.dialogs.expectInputTitled("New Wheel Diameter", "23.5");
    rig.expectSave();
    rig.click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_EQ(rig.state->Run.image.samples[1360].Exhaust[1], static_cast<std::uint8_t>(1360));
    expectSameRun(rig, "rows of before");
}

TEST(Replay, TablesAreInTheFile) {
    DownloadRig rig(25, true);
    rig.config.Analog_Type[3] = 2;
    rig.config.AnalogScale[3] = 2;
    rig.saveConfig();
    core::AnalogTables tables;
    for (std::size_t raw = 0; raw < 256; ++raw)
        tables[3][raw] = 511.0 - 2.0 * static_cast<double>(raw);
    ASSERT_TRUE(core::SaveAnalogTable("/kvo", "Analog3.Dat", 3, tables, rig.files));
    rig.expectSave();
    rig.click();
    EXPECT_EQ(rig.state->Run.image.samples[5].Analog[3], 255 - rig.wireByte(5, 12));
    expectSameRun(rig, "table");
}

TEST(Replay, ADoubtfulRunThatWasKept) {
    for (const Fault fault : {Fault{Fault::Kind::drop, 5000}, Fault{Fault::Kind::twice, 700}}) {
        DownloadRig rig(25, false, fault, true);
        rig.dialogs.expectBoxTitled("Download Check", Reply::no);
        rig.expectSave();
        rig.click();
        EXPECT_EQ(rig.dialogs.problems(), "");
        expectSameRun(rig, "doubtful");
        const auto session = rawOf(rig);
        const int surplus = fault.kind == Fault::Kind::drop ? -1 : 1;
        EXPECT_EQ(session->surplus, surplus);
        EXPECT_EQ(session->line.arrived() - session->line.expected(), surplus);
        const Replay replay = replayDownload(*session);
        ASSERT_EQ(replay.told.size(), 1U);
        EXPECT_NE(replay.told[0].find("1 byte too "), std::string::npos);
    }
}

// What a longer run had left of its periods, in rows that the fast mode does not read.
TEST(Replay, PeriodsOfATryBeforeArePartOfIt) {
    DownloadRig rig(8, true);
    rig.expectSave();
    rig.click();
    auto session = rawOf(rig);
    ASSERT_NE(session, nullptr);
    const auto before = replayDownload(*session).runFile;
    session->start.periods.EnginePeriod[2520] = 15000; // 1000 rpm
    const auto behind = replayDownload(*session).runFile;
    ASSERT_TRUE(before && behind);
    EXPECT_NE(*before, *behind);
}

TEST(Replay, NothingIsNotedBehindADownload) {
    DownloadRig rig(8, true);
    rig.expectSave();
    rig.click();
    EXPECT_EQ(rig.link.recorder().end(), nullptr);
}

// The second try of a run is what is kept, and begins where the first one ended.
TEST(Replay, ARunThatWasDownloadedAgain) {
    DownloadRig rig(20, false, {Fault::Kind::drop, 5000}, true);
    rig.dialogs.expectBoxTitled("Download Check", Reply::yes);
    rig.expectSave();
    rig.click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    expectSameRun(rig, "again");
    EXPECT_EQ(rawOf(rig)->surplus, 0);
}

TEST(Replay, AFailedDownloadIsKeptAndFailsAgain) {
    for (const bool fast : {true, false}) {
        for (const Fault fault :
            {Fault{Fault::Kind::stopAfter, 3000}, Fault{Fault::Kind::hangUpAt, 3000}}) {
            DownloadRig rig(25, fast, fault, true);
            rig.dialogs.expectBoxTitled("Download Error");
            rig.click();
            EXPECT_EQ(rig.dialogs.problems(), "");
            EXPECT_FALSE(rig.files.exists(rawPath));
            const auto session = rawOf(rig, failedPath);
            ASSERT_NE(session, nullptr);
            EXPECT_FALSE(session->saved);
            EXPECT_EQ(session->line.arrived(), 3000);
            const Replay replay = replayDownload(*session);
            EXPECT_FALSE(replay.runFile.has_value());
            ASSERT_EQ(replay.told.size(), 1U);
            EXPECT_EQ(replay.told[0].substr(0, 15), "Download Error:");
        }
    }
}

// The user gave up the title: the run can still be had.
TEST(Replay, AnAbandonedRunCanStillBeMade) {
    DownloadRig rig(8, true);
    rig.dialogs.expectInputTitled("Run Title", "");
    rig.dialogs.expectBoxTitled("Data Warning", Reply::yes);
    rig.click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    const auto session = rawOf(rig, failedPath);
    ASSERT_NE(session, nullptr);
    EXPECT_TRUE(replayDownload(*session).runFile.has_value());
}

TEST(Replay, WithoutAnAnswerOrADataTypeNothingIsKept) {
    DownloadRig silent(8, true, {Fault::Kind::silent, 0});
    silent.dialogs.expectBoxTitled("Download Error !");
    silent.click();
    EXPECT_FALSE(silent.files.folderExists("/kvo/Backup"));
    DownloadRig cancelled(8, false, {}, true);
    cancelled.line.at(2000, [&] { cancelled.session->Cancel_Command_Click(); });
    cancelled.click();
    EXPECT_FALSE(cancelled.files.folderExists("/kvo/Backup"));
}

// A good run is not spoken of; of a doubtful one the bytes are missed.
TEST(Replay, BytesThatCannotBeKeptAreToldOfADoubtfulRunAlone) {
    using testing::MemoryFiles;
    DownloadRig good(25, true);
    good.files.failWrites("/kvo/Backup", MemoryFiles::Failure::fullDisk);
    good.expectSave();
    good.click();
    EXPECT_EQ(good.dialogs.problems(), "");
    EXPECT_TRUE(good.files.exists(DownloadRig::runPath));

    DownloadRig doubtful(25, false, {Fault::Kind::drop, 5000});
    doubtful.files.failWrites("/kvo/Backup", MemoryFiles::Failure::fullDisk);
    doubtful.dialogs.expectBoxTitled("Download Check", Reply::no);
    doubtful.expectSave();
    doubtful.dialogs.expectBoxTitled("Download Check").contains =
        "The bytes of this download could not be kept in Backup.";
    doubtful.click();
    EXPECT_EQ(doubtful.dialogs.problems(), "");
    EXPECT_TRUE(doubtful.files.exists(DownloadRig::runPath));
}

} // namespace
} // namespace kvo::link
