// The course of a download: what is asked, in which order, what is on disk behind it, and what a
// user who presses a button in the middle gets.
#include "link/download_session.h"

#include "core/basic/numbers.h"
#include "core/run_index.h"
#include "core/run_records.h"
#include "tests/support/download_rig.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace kvo::link {
namespace {

using namespace platform;
using simulator::Fault;
using testing::DownloadRig;
using testing::MemoryFiles;

constexpr const char* runPath = "/kvo/Data/26111514.52d";
constexpr const char* indexFile = "/kvo/Data/KvoData.Ini";
constexpr const char* stoppedText =
    "The On Board Computer Stopped Responding\r\n           Fix and try again!";

void expectStopped(DownloadRig& rig) {
    rig.dialogs.expectBox(stoppedText, boxStyle::critical, "Download Error");
}

std::vector<core::RunIndexEntry> indexOf(const DownloadRig& rig) {
    return core::readRunIndex(indexFile, rig.files);
}

void putIndex(DownloadRig& rig, const std::vector<std::string>& descriptions) {
    std::vector<core::RunIndexEntry> entries;
    for (const auto& text : descriptions) entries.push_back({"26010101.01d", text});
    ASSERT_TRUE(core::writeRunIndex("/kvo", entries, rig.files));
}

TEST(DownloadSession, EveryTypeInBothModesEndsOnDisk) {
    for (const auto& wire : simulator::wireLayouts) {
        for (const bool fast : {true, false}) {
            DownloadRig rig(wire.dataType, fast);
            if (wire.dataType == 43) rig.dialogs.expectBoxTitled("Warning");
            rig.expectSave();
            rig.click();
            EXPECT_EQ(rig.dialogs.problems(), "") << wire.dataType;
            const auto file = rig.files.read(runPath);
            ASSERT_TRUE(file);
            EXPECT_EQ(file->size(), static_cast<std::size_t>((wire.samples + 4) * 84 + 20));
            ASSERT_EQ(indexOf(rig).size(), 1U);
            EXPECT_EQ(indexOf(rig)[0].FileName, "26111514.52d");
            EXPECT_EQ(indexOf(rig)[0].Description, "Sun 15 Nov 2026 Run: 1");
            EXPECT_GT(rig.state->PeakSpeedRaw, 0);
            EXPECT_FALSE(rig.line.portOpen());
            EXPECT_EQ(rig.view->touchedAfterUnload, 0);
            EXPECT_FALSE(rig.dialogs.hourglass());
        }
    }
}

TEST(DownloadSession, TheFormIsToldStepByStep) {
    DownloadRig rig(8);
    rig.expectSave();
    rig.click();
    EXPECT_EQ(
        rig.view->events, (std::vector<std::string>{"buttons hidden", "chooser", "unloaded"}));
    EXPECT_EQ(rig.view->progressMax, 2520);
    const auto& texts = rig.view->texts;
    ASSERT_GE(texts.size(), 5U);
    const std::vector<std::string> last(texts.end() - 4, texts.end());
    EXPECT_EQ(last, (std::vector<std::string>{"Now checked data for errors", "Download Compleat",
                        "The Data Is now being Saved to Disk. Please wait!", ""}));
    EXPECT_EQ(texts.front(), "Downloading data from the On Board Computer.   0%");
    EXPECT_EQ(rig.line.inputLens(), (std::vector<int>{0, 1, 26}));
}

TEST(DownloadSession, TheRowsAreDecoded) {
    DownloadRig rig(25);
    rig.expectSave();
    rig.click();
    const int i = 700;
    const core::RunSample& row = rig.state->Run.samples[i];
    const auto rpm = [&](int position, double pulses) {
        return *core::CInt(60 / (rig.wireWord(i, position) * 4e-06) / pulses);
    };
    EXPECT_EQ(row.EngineRpm, rpm(1, 1));
    EXPECT_EQ(row.InputRpm, rpm(3, 1));
    EXPECT_EQ(row.OutputRpm, rpm(5, 2));
    EXPECT_EQ(row.SpeedRaw, *core::CLng(1 / (rig.wireWord(i, 7) * 4e-06) * 25 * 35.69991652));
    EXPECT_EQ(rig.state->Run.tail.TimeOffset, 80);
    EXPECT_EQ(rig.state->SampleCount, 1213);
    EXPECT_EQ(rig.state->Run.samples[1213].EngineRpm, 0); // the fast mode does not write it
}

TEST(DownloadSession, TheConfigurationIsReadAnew) {
    DownloadRig rig(8);
    rig.state->Config.Engine_Correction = 4; // changed in memory, not in the file
    rig.expectSave();
    rig.click();
    EXPECT_EQ(rig.state->Config.Engine_Correction, 1.0F);
    rig.files.put("/kvo/Kvo.Cfg", {});
}

TEST(DownloadSession, ThePortThatDoesNotOpenEndsItWithTheButtonsThere) {
    DownloadRig rig(8);
    rig.line.failToOpen(1, PortError::busy);
    rig.dialogs.expectBoxTitled("Communications Error");
    rig.click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_TRUE(rig.view->events.empty());
    EXPECT_EQ(rig.line.bytesSent(), 0);
    EXPECT_FALSE(rig.session->running());
}

TEST(DownloadSession, NoLoggerLeavesTheFormForANewTry) {
    for (const auto kind : {Fault::Kind::silent, Fault::Kind::wrongGreeting}) {
        DownloadRig rig(8, true, {kind, 0});
        rig.dialogs.expectBox(noReplyText(), boxStyle::critical, "Download Error !");
        rig.dialogs.expectBoxTitled("Download Error !");
        rig.click();
        EXPECT_FALSE(rig.line.portOpen());
        EXPECT_FALSE(rig.view->unloaded);
        rig.click();
        EXPECT_EQ(rig.dialogs.problems(), "");
    }
}

TEST(DownloadSession, FloodedWithGarbageItSaysSo) {
    DownloadRig rig(25, true, {Fault::Kind::flood, 0});
    rig.dialogs.expectBoxTitled("Download Error !");
    rig.click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_FALSE(rig.line.portOpen());
}

TEST(DownloadSession, AnUnknownTypeStaysInSilenceWithThePortOpen) {
    for (const auto& unknown : {99, 23, 29, 0}) {
        DownloadRig rig(8);
        platform::Bytes stream = rig.logger.stream();
        stream[1] = static_cast<std::uint8_t>(unknown);
        rig.logger = simulator::ModelLogger(stream);
        rig.click();
        EXPECT_EQ(rig.dialogs.problems(), "");
        EXPECT_TRUE(rig.view->events.empty());
        EXPECT_TRUE(rig.line.portOpen());
        EXPECT_EQ(rig.state->SampleCount, 0);
        rig.session->Cancel_Command_Click();
        EXPECT_FALSE(rig.line.portOpen());
    }
}

TEST(DownloadSession, Type43IsWarnedOf) {
    DownloadRig rig(43);
    auto& box = rig.dialogs.expectBoxTitled("Warning");
    box.style = boxStyle::warning;
    box.contains = "HJN.EXE";
    box.whileShown = [&] { EXPECT_TRUE(rig.view->events.empty()); };
    rig.expectSave();
    rig.click();
    EXPECT_EQ(rig.dialogs.problems(), "");
}

TEST(DownloadSession, TheWheelIsAskedFor) {
    DownloadRig rig(8);
    rig.config.SpeedWheel_Prompt = 0;
    rig.saveConfig();
    rig.dialogs.expectBox("It is Essential that the Diameter of the Front Wheel is Entered.\r\n\r\n"
                          "    So the speed calculations are correct from the Download.\r\n"
                          "    The Front Wheel is ( 25.0 )inches in diameter.\r\n\r\n"
                          "    Is this Correct?",
        boxStyle::yesNo, "Front Wheel Dimeter", Reply::yes);
    rig.expectSave();
    rig.click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_EQ(rig.state->Config.Wheel, 25.0F);
}

TEST(DownloadSession, ANewWheelHoldsForThisDownloadOnly) {
    DownloadRig rig(8);
    rig.config.SpeedWheel_Prompt = 0;
    rig.saveConfig();
    const auto before = rig.files.read("/kvo/Kvo.Cfg");
    rig.dialogs.expectBoxTitled("Front Wheel Dimeter", Reply::no);
    rig.dialogs.expectInput(
        "Enter the new Wheel Diameter", "New Wheel Diameter", "25.0", "22.5 inch");
    rig.expectSave();
    rig.click();
    ASSERT_GT(rig.wireWord(900, 7), 0);
    const double raw = 1 / (rig.wireWord(900, 7) * 4e-06) * 22.5 * 35.69991652;
    EXPECT_EQ(rig.state->Run.samples[900].SpeedRaw, core::CLng(raw));
    EXPECT_EQ(rig.files.read("/kvo/Kvo.Cfg"), before);
    // Nor does it get there with a colour or a scale that is saved behind the download.
    EXPECT_EQ(core::encodeConfig(rig.state->Config), before);
    rig.newForm();
    rig.dialogs.expectBoxTitled("Front Wheel Dimeter", Reply::yes).contains = "( 25.0 )";
    rig.expectSave(" 2 ", "2");
    rig.click();
    EXPECT_EQ(rig.dialogs.problems(), "");
}

TEST(DownloadSession, AnEmptyWheelIsNoSpeed) {
    DownloadRig rig(8);
    rig.config.SpeedWheel_Prompt = 0;
    rig.saveConfig();
    rig.dialogs.expectBoxTitled("Front Wheel Dimeter", Reply::no);
    rig.dialogs.expectInputTitled("New Wheel Diameter", "");
    rig.expectSave();
    rig.click();
    EXPECT_EQ(rig.state->PeakSpeedRaw, 0);
    EXPECT_EQ(rig.dialogs.problems(), "");
}

TEST(DownloadSession, TheTitleIsSuggestedFromTheLastRecord) {
    const std::pair<const char*, const char*> rows[] = {{"Sun 15 Nov 2026 Run: 2 fast", " 3 "},
        {"Sat 14 Nov 2026 Run: 2", "1 "}, {"no such word", "1 "}};
    for (const auto& [last, suggested] : rows) {
        DownloadRig rig(8);
        putIndex(rig, {"Sun 15 Nov 2026 Run: 8", last});
        rig.expectSave(suggested);
        rig.click();
        EXPECT_EQ(rig.dialogs.problems(), "");
        ASSERT_EQ(indexOf(rig).size(), 3U);
        EXPECT_EQ(indexOf(rig)[2].Description, "Sun 15 Nov 2026 Run: 1"); // at the end, unsorted
    }
}

TEST(DownloadSession, ATitleWithoutANumberComesBack) {
    DownloadRig rig(8);
    for (const char* title : {"abc", "0", "-1", "Western 3"})
        rig.dialogs.expectInputTitled("Run Title", title);
    rig.expectSave("1 ", "2 Western Nationals");
    rig.click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_EQ(indexOf(rig)[0].Description, "Sun 15 Nov 2026 Run: 2 Western Nationals");
}

TEST(DownloadSession, ARunWithoutAnyPulseIsSavedAsAFlatLine) {
    DownloadRig rig(25);
    const Bytes& moving = rig.logger.stream();
    Bytes stream(moving.size());
    std::copy_n(moving.begin(), 33, stream.begin()); // the header, and nothing behind it
    simulator::ModelLogger still(stream);
    testing::VirtualLine line(still);
    LoggerLink link(line, line, rig.dialogs, *rig.state);
    DownloadSession session(link, *rig.state, *rig.view, rig.dialogs, rig.clock, rig.files);
    rig.expectSave();
    session.Command_Send_Click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_TRUE(rig.files.exists(runPath));
    EXPECT_EQ(rig.state->PeakSpeedRaw, 0);
    EXPECT_EQ(rig.state->Run.samples[700].EngineRpm, 0);
}

TEST(DownloadSession, ALongTitleIsStoredWith130Characters) {
    DownloadRig rig(8);
    rig.expectSave("1 ", "7" + std::string(199, 'x'));
    rig.click();
    EXPECT_EQ(rig.state->RunText, " Date:Sun 15 Nov 2026 Run: 7" + std::string(129, 'x') + "#");
}

TEST(DownloadSession, AnEmptyTitleAsksBeforeTheRunIsGivenUp) {
    DownloadRig rig(8);
    const char* question = "NO DATA will be Saved to Disk.\r\n\r\nDo You Wish To Continue";
    const int style = boxStyle::yesNo + boxStyle::warning;
    rig.dialogs.expectInputTitled("Run Title", "");
    rig.dialogs.expectBox(question, style, "Data Warning", Reply::no);
    rig.dialogs.expectInputTitled("Run Title", "");
    rig.dialogs.expectBox(question, style, "Data Warning", Reply::yes);
    rig.click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_TRUE(rig.view->unloaded);
    EXPECT_FALSE(rig.files.folderExists("/kvo/Data"));
    EXPECT_EQ(rig.view->touchedAfterUnload, 0);
}

TEST(DownloadSession, YesShowsTheGraphOnTheRunInMemory) {
    DownloadRig rig(8);
    rig.dialogs.expectInputTitled("Run Title", "4 test");
    rig.expectSavedBox(Reply::yes);
    rig.click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_EQ(rig.state->InfoFilePath, "/kvo/Data/26111514.52i");
    EXPECT_EQ(rig.state->IndexNoSort, -1);
    EXPECT_EQ(rig.view->events.back(), "graph:  Date:Sun 15 Nov 2026 Run: 4 test");
    EXPECT_EQ(rig.view->touchedAfterUnload, 0);
}

TEST(DownloadSession, NoClearsTheFlag) {
    DownloadRig rig(8);
    rig.expectSave();
    rig.click();
    EXPECT_EQ(rig.state->IndexNoSort, 0);
    EXPECT_EQ(rig.state->SaveMode, 0);
    EXPECT_EQ(rig.dialogs.beeps(), 1);
}

TEST(DownloadSession, AFailedTransferSavesNothing) {
    for (const bool fast : {true, false}) {
        DownloadRig rig(25, fast, {Fault::Kind::stopAfter, 5000});
        expectStopped(rig);
        rig.click();
        EXPECT_EQ(rig.dialogs.problems(), "");
        EXPECT_FALSE(rig.files.folderExists("/kvo/Data"));
        EXPECT_TRUE(rig.view->unloaded);
        EXPECT_EQ(rig.view->touchedAfterUnload, 0);
        EXPECT_FALSE(rig.line.portOpen());
        // What came is decoded all the same.
        EXPECT_EQ(
            rig.state->Run.samples[10].EngineRpm, *core::CInt(60 / (rig.wireWord(10, 1) * 4e-06)));
    }
}

// The port's fault is over by the second click; the flag that it left must be too.
TEST(DownloadSession, ASecondClickStartsWithoutTheFailureOfTheFirst) {
    DownloadRig rig(25);
    rig.line.failToOpen(1, PortError::busy);
    rig.dialogs.expectBoxTitled("Communications Error");
    rig.click();
    EXPECT_EQ(rig.link.LinkFailed, -1);
    rig.config.CommPort = 2;
    rig.state->Config = rig.config;
    rig.saveConfig();
    rig.line.plugInto(2);
    rig.expectSave();
    rig.click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_EQ(rig.link.LinkFailed, 0);
    EXPECT_TRUE(rig.files.exists(runPath));
}

// As a tool of the graph leaves it, which changes a stored run and keeps its setup.
TEST(DownloadSession, AFreshRunIsNeverSavedAsAChangedOne) {
    DownloadRig rig(25);
    rig.config.AnalogName[1] = "Oil";
    rig.saveConfig();
    rig.state->SaveMode = -1;
    rig.state->RunHeaderLine = "25 the line of the run before#";
    rig.expectSave();
    rig.click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_EQ(rig.state->SaveMode, 0);
    const auto file = rig.files.read(runPath).value();
    EXPECT_EQ(core::decodeHeaderLine(core::runRecord(file, 1)), rig.state->RunHeaderLine);
    EXPECT_NE(rig.state->RunHeaderLine.find("Run: 1#"), std::string::npos);
    EXPECT_EQ(rig.state->Run.setup.AnalogName[1], "Oil     ");
}

TEST(DownloadSession, ALostHeaderByteIsAFailureInBothModes) {
    for (const bool fast : {true, false}) {
        DownloadRig rig(25, fast, {Fault::Kind::drop, 20});
        expectStopped(rig);
        rig.click();
        EXPECT_EQ(rig.dialogs.problems(), "");
        EXPECT_TRUE(rig.view->unloaded);
        EXPECT_FALSE(rig.line.portOpen());
        EXPECT_EQ(rig.view->touchedAfterUnload, 0);
        EXPECT_FALSE(rig.files.folderExists("/kvo/Data"));
    }
}

// As when it is switched off while the wheel is asked for.
TEST(DownloadSession, ALoggerThatGreetsAndFallsSilentIsTold) {
    for (const long byte : {1L, 2L}) {
        DownloadRig rig(25, true, {Fault::Kind::stopAfter, byte});
        expectStopped(rig);
        rig.click();
        EXPECT_EQ(rig.dialogs.problems(), "") << byte;
        EXPECT_TRUE(rig.view->unloaded);
        EXPECT_FALSE(rig.line.portOpen());
        EXPECT_EQ(rig.view->touchedAfterUnload, 0);
    }
}

TEST(DownloadSession, ALostSampleByteEndsTheFastModeAndShiftsTheSafeOne) {
    DownloadRig fast(25, true, {Fault::Kind::drop, 1000});
    expectStopped(fast);
    fast.click();
    EXPECT_EQ(fast.dialogs.problems(), "");

    // The safe mode has one byte in hand: it takes the next for the lost one and nobody notices.
    DownloadRig safe(25, false, {Fault::Kind::drop, 1 + 33 + 27 * 10 + 10});
    safe.expectSave();
    safe.click();
    EXPECT_EQ(safe.dialogs.problems(), "");
    EXPECT_EQ(safe.state->Run.samples[11].Analog[1], safe.wireByte(11, 11));
    EXPECT_EQ(safe.state->Run.samples[12].Status, safe.wireByte(12, 10));
}

TEST(DownloadSession, AGarbledByteIsTakenAsItIs) {
    DownloadRig rig(25, true, {Fault::Kind::garble, 1 + 33 + 27 * 10 + 10});
    rig.expectSave();
    rig.click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_EQ(rig.state->Run.samples[11].Analog[1], 255 - rig.wireByte(11, 10));
    EXPECT_EQ(rig.state->Run.samples[11].Analog[2], rig.wireByte(11, 11));
}

TEST(DownloadSession, ALateLoggerIsDownloaded) {
    for (const bool fast : {true, false}) {
        DownloadRig rig(8, fast, {Fault::Kind::late, 40});
        rig.expectSave();
        rig.click();
        EXPECT_EQ(rig.dialogs.problems(), "");
        EXPECT_EQ(rig.state->Run.samples[2518].Status, rig.wireByte(2518, 9));
    }
}

TEST(DownloadSession, UnpluggedAtAnyByteItEndsWithoutALongWait) {
    for (const bool fast : {true, false}) {
        for (const long byte : {0L, 1L, 2L, 3L, 20L, 34L, 35L, 60L, 88L, 89L, 5000L, 32700L}) {
            DownloadRig rig(25, fast, {Fault::Kind::hangUpAt, byte}, true);
            if (byte == 0)
                rig.dialogs.expectBoxTitled("Communications Error");
            else
                expectStopped(rig);
            rig.click();
            EXPECT_EQ(rig.dialogs.problems(), "") << byte;
            EXPECT_LT(rig.line.milliseconds(), 250 + 2.2 * static_cast<double>(byte + 60) + 1);
            EXPECT_FALSE(rig.line.portOpen());
            EXPECT_FALSE(rig.files.folderExists("/kvo/Data"));
            EXPECT_EQ(rig.view->touchedAfterUnload, 0);
        }
    }
}

TEST(DownloadSession, CancelBeforeTheClickUnloads) {
    DownloadRig rig(8);
    rig.session->Cancel_Command_Click();
    EXPECT_EQ(rig.link.LinkFailed, -1);
    EXPECT_TRUE(rig.view->unloaded);
    rig.click();
    EXPECT_EQ(rig.line.bytesSent(), 0);
}

TEST(DownloadSession, CancelInsideAnyWaitIsQuiet) {
    // During the greeting, the header and the transfer of both modes.
    for (const bool fast : {true, false}) {
        for (const long turn : {10L, 100L, 1500L, 2200L, 30000L}) {
            DownloadRig rig(25, fast, {}, true);
            rig.line.at(turn, [&] { rig.session->Cancel_Command_Click(); });
            rig.click();
            EXPECT_EQ(rig.dialogs.problems(), "") << turn;
            EXPECT_EQ(rig.view->count("unloaded"), 1);
            EXPECT_EQ(rig.view->touchedAfterUnload, 0);
            EXPECT_FALSE(rig.line.portOpen());
            EXPECT_LE(rig.line.turnsGone(), turn + 40);
            EXPECT_FALSE(rig.session->running());
        }
    }
}

TEST(DownloadSession, ASecondClickInsideTheFirstDoesNothing) {
    DownloadRig rig(8, true, {}, true);
    rig.line.at(20, [&] { rig.session->Command_Send_Click(); });
    rig.line.at(900, [&] { rig.session->Command_Send_Click(); });
    rig.expectSave();
    rig.click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_EQ(rig.line.everythingSent().find('Q', 1), std::string::npos);
}

TEST(DownloadSession, ANewFormDisarmsTheFlagAndEmptiesThePeriods) {
    DownloadRig rig(8);
    rig.expectSave();
    rig.click();
    EXPECT_EQ(rig.state->DataType, 8);
    rig.newForm();
    EXPECT_EQ(rig.state->DataType, 0);
    rig.expectSave(" 2 ", "2");
    rig.click();
    // The row that the fast mode never writes has no period in the new form either.
    EXPECT_EQ(rig.state->Run.samples[2520].EngineRpm, 0);
    EXPECT_EQ(rig.dialogs.problems(), "");
}

TEST(DownloadSession, TwoDownloadsOfOneMinuteShareTheFile) {
    DownloadRig rig(8);
    rig.expectSave();
    rig.click();
    rig.newForm();
    rig.expectSave(" 2 ", "2");
    rig.click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_EQ(indexOf(rig).size(), 2U);
    EXPECT_EQ(indexOf(rig)[1].FileName, indexOf(rig)[0].FileName);
}

struct Refusal {
    MemoryFiles::Failure how;
    const char* words;
};
constexpr Refusal refusals[] = {{MemoryFiles::Failure::fullDisk, "No space left on device"},
    {MemoryFiles::Failure::readOnly, "Permission denied"}};

TEST(DownloadSession, AFailedSaveIsToldAndTriedAgain) {
    for (const auto& refusal : refusals) {
        DownloadRig rig(8);
        rig.files.failWrites("/kvo/Data", refusal.how);
        rig.dialogs.expectInputTitled("Run Title", "1");
        auto& box = rig.dialogs.expectBoxTitled("Run Not Saved", Reply::retry);
        box.contains = refusal.words;
        box.style = boxStyle::retryCancel + boxStyle::critical;
        box.whileShown = [&] {
            EXPECT_FALSE(rig.dialogs.hourglass());
            EXPECT_FALSE(rig.files.exists(runPath));
            rig.files.allowWrites();
        };
        rig.expectSavedBox();
        rig.click();
        EXPECT_EQ(rig.dialogs.problems(), "");
        EXPECT_TRUE(rig.files.exists(runPath));
        EXPECT_EQ(indexOf(rig).size(), 1U);
    }
}

TEST(DownloadSession, ARunCanBeSavedElsewhere) {
    DownloadRig rig(8);
    rig.files.failWrites("/kvo/", MemoryFiles::Failure::readOnly);
    rig.dialogs.expectInputTitled("Run Title", "1");
    rig.dialogs.expectBoxTitled("Run Not Saved", Reply::cancel);
    rig.dialogs.expectFolder("/stick");
    rig.dialogs.expectBoxTitled("Run Saved Elsewhere").contains = "/stick/26111514.52d";
    rig.expectSavedBox(Reply::yes);
    rig.click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_TRUE(rig.files.exists("/stick/26111514.52d"));
    EXPECT_TRUE(indexOf(rig).empty());
    EXPECT_EQ(rig.state->InfoFilePath, "/stick/26111514.52i");
}

TEST(DownloadSession, GivingUpASaveIsNeverCalledSaved) {
    DownloadRig rig(8);
    rig.files.failWrites("/kvo/Data", MemoryFiles::Failure::fullDisk);
    rig.dialogs.expectInputTitled("Run Title", "1");
    rig.dialogs.expectBoxTitled("Run Not Saved", Reply::cancel);
    rig.dialogs.expectFolder(std::nullopt);
    rig.dialogs.expectBoxTitled("Run Not Saved", Reply::no); // no, do not leave it unsaved
    rig.dialogs.expectBoxTitled("Run Not Saved", Reply::cancel);
    rig.dialogs.expectFolder(std::nullopt);
    rig.dialogs.expectBoxTitled("Run Not Saved", Reply::yes);
    rig.click();
    EXPECT_EQ(rig.dialogs.problems(), ""); // so no box said that it was saved
    EXPECT_TRUE(rig.view->unloaded);
    EXPECT_EQ(rig.state->IndexNoSort, 0);
    EXPECT_FALSE(rig.dialogs.hourglass());
    EXPECT_GT(rig.state->Run.samples[700].EngineRpm, 0); // still in memory
    EXPECT_FALSE(rig.view->saw("chooser"));
}

TEST(DownloadSession, AnIndexThatCannotBeWrittenIsTold) {
    for (const Reply answer : {Reply::retry, Reply::cancel}) {
        DownloadRig rig(8);
        rig.files.failWrites(indexFile, MemoryFiles::Failure::fullDisk, 1);
        rig.dialogs.expectInputTitled("Run Title", "1");
        rig.dialogs.expectBoxTitled("Run Not Listed", answer).contains = runPath;
        rig.expectSavedBox();
        rig.click();
        EXPECT_EQ(rig.dialogs.problems(), "");
        EXPECT_TRUE(rig.files.exists(runPath));
        EXPECT_EQ(indexOf(rig).size(), answer == Reply::retry ? 1U : 0U);
    }
}

TEST(DownloadSession, AMissingConfigurationShowsTheSetup) {
    DownloadRig rig(8);
    ASSERT_TRUE(rig.files.remove("/kvo/Kvo.Cfg"));
    rig.files.allowWrites();
    auto& box = rig.dialogs.expectBoxTitled("");
    box.title.reset();
    rig.expectSave();
    rig.click();
    EXPECT_TRUE(rig.view->saw("setup"));
    EXPECT_EQ(rig.dialogs.problems(), "");
}

TEST(DateCheck, AsksUnlessItIsOff) {
    testing::ScriptedDialogs dialogs;
    const testing::FixedClock clock({2026, 11, 5, 8, 2, 0});
    core::AppConfig config;
    dialogs.expectBox("Date: Thursday, 5 November 2026\r\n"
                      " If this DATE is Not Correct. Please Fix Before Downloading!\r\n"
                      "As it is used for Dating the Download Files ?",
        boxStyle::warning, "Date: Thursday, 5 November 2026");
    showDateCheck(config, dialogs, clock);
    config.Date_Prompt = 1;
    showDateCheck(config, dialogs, clock);
    EXPECT_EQ(dialogs.problems(), "");
}

} // namespace
} // namespace kvo::link
