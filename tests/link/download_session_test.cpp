// The course of a download: what is asked, in which order, and what a user who presses a button in
// the middle gets.
#include "link/download_session.h"

#include "core/basic/numbers.h"
#include "core/run_index.h"
#include "tests/faults/link_program.h"
#include "tests/faults/link_script.h"
#include "tests/support/download_rig.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace kvo::link {
namespace {

using namespace platform;
using simulator::Fault;
using testing::DownloadRig;

constexpr const char* stoppedText =
    "The On Board Computer Stopped Responding\r\n           Fix and try again!";

testing::ScriptedDialogs::Expected& expectStopped(DownloadRig& rig) {
    return rig.dialogs.expectBox(stoppedText, boxStyle::critical, "Download Error");
}

TEST(DownloadSession, EveryTypeInBothModesEndsOnDisk) {
    for (const auto& wire : simulator::wireLayouts) {
        for (const bool fast : {true, false}) {
            DownloadRig rig(wire.dataType, fast);
            if (wire.dataType == 43) rig.dialogs.expectBoxTitled("Warning");
            rig.expectSave();
            rig.click();
            EXPECT_EQ(rig.dialogs.problems(), "") << wire.dataType;
            const auto file = rig.files.read(DownloadRig::runPath);
            ASSERT_TRUE(file);
            EXPECT_EQ(file->size(), static_cast<std::size_t>((wire.samples + 4) * 84 + 20));
            ASSERT_EQ(rig.index().size(), 1U);
            EXPECT_EQ(rig.index()[0].FileName, "26111514.52d");
            EXPECT_EQ(rig.index()[0].Description, "Sun 15 Nov 2026 Run: 1");
            EXPECT_GT(rig.state->Run.PeakSpeedRaw, 0);
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
    EXPECT_EQ(rig.view->events,
        (std::vector<std::string>{"buttons hidden", DownloadRig::chosen, "unloaded"}));
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
    const core::RunSample& row = rig.state->Run.image.samples[i];
    const auto rpm = [&](int position, double pulses) {
        return *core::CInt(60 / (rig.wireWord(i, position) * 4e-06) / pulses);
    };
    EXPECT_EQ(row.EngineRpm, rpm(1, 1));
    EXPECT_EQ(row.InputRpm, rpm(3, 1));
    EXPECT_EQ(row.OutputRpm, rpm(5, 2));
    EXPECT_EQ(row.SpeedRaw, *core::CLng(1 / (rig.wireWord(i, 7) * 4e-06) * 25 * 35.69991652));
    EXPECT_EQ(rig.state->Run.DataType, 25);
    EXPECT_EQ(rig.state->Run.image.header, rig.link.Header.RunHeader);
    EXPECT_GT(rig.state->Run.image.header.CrankGearTeeth, 0);
    EXPECT_EQ(rig.state->Run.image.tail.TimeOffset, 80);
    EXPECT_EQ(rig.state->Run.SampleCount, 1213);
    EXPECT_EQ(rig.state->Run.image.samples[1213].EngineRpm, 0); // the fast mode does not write it
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
        EXPECT_EQ(rig.state->Run.SampleCount, 0);
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
    EXPECT_EQ(rig.state->Run.image.samples[900].SpeedRaw, core::CLng(raw));
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
    EXPECT_EQ(rig.state->Run.PeakSpeedRaw, 0);
    EXPECT_EQ(rig.dialogs.problems(), "");
}

TEST(DownloadSession, ARunWithoutAnyPulseIsSavedAsAFlatLine) {
    DownloadRig rig(25);
    const Bytes& moving = rig.logger.stream();
    Bytes stream(moving.size());
    std::copy_n(moving.begin(), 33, stream.begin()); // the header, and nothing behind it
    simulator::ModelLogger still(stream);
    testing::VirtualLine line(still);
    LoggerLink link(line, line, rig.dialogs);
    DownloadSession session(
        link, testing::inputOf(*rig.state), *rig.view, rig.dialogs, rig.clock, rig.files);
    rig.expectSave();
    session.Command_Send_Click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_TRUE(rig.files.exists(DownloadRig::runPath));
    EXPECT_EQ(rig.state->Run.PeakSpeedRaw, 0);
    EXPECT_EQ(rig.state->Run.image.samples[700].EngineRpm, 0);
}

TEST(DownloadSession, AFailedTransferSavesNothing) {
    for (const bool fast : {true, false}) {
        DownloadRig rig(25, fast, {Fault::Kind::stopAfter, 5000});
        // The user is told first; then port and form go.
        expectStopped(rig).whileShown = [&] {
            EXPECT_TRUE(rig.line.portOpen());
            EXPECT_FALSE(rig.view->unloaded);
        };
        rig.click();
        EXPECT_EQ(rig.dialogs.problems(), "");
        EXPECT_FALSE(rig.files.folderExists("/kvo/Data"));
        EXPECT_TRUE(rig.view->unloaded);
        EXPECT_EQ(rig.view->touchedAfterUnload, 0);
        EXPECT_FALSE(rig.line.portOpen());
        // What came is decoded all the same.
        EXPECT_EQ(rig.state->Run.image.samples[10].EngineRpm,
            *core::CInt(60 / (rig.wireWord(10, 1) * 4e-06)));
    }
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

testing::ScriptedDialogs::Expected& expectCount(
    DownloadRig& rig, const std::string& count, Reply again) {
    return rig.dialogs.expectBox(
        count + " came from the On Board Computer.\r\n\r\n"
                "The run may be shifted from some point on. The On Board Computer still has it."
                "\r\n\r\nDo you want to download it again?\r\nNo keeps the run as it came.",
        boxStyle::yesNo + boxStyle::warning, "Download Check", again);
}

TEST(DownloadSession, ALostSampleByteEndsTheFastModeAndShiftsTheSafeOne) {
    DownloadRig fast(25, true, {Fault::Kind::drop, 1000});
    expectStopped(fast);
    fast.click();
    EXPECT_EQ(fast.dialogs.problems(), "");

    // The safe mode has one byte in hand: it takes the next for the lost one, and only the count
    // tells.
    DownloadRig safe(25, false, {Fault::Kind::drop, 1 + 33 + 27 * 10 + 10});
    expectCount(safe, "1 byte too few", Reply::no);
    safe.expectSave();
    safe.click();
    EXPECT_EQ(safe.dialogs.problems(), "");
    EXPECT_EQ(safe.state->Run.image.samples[11].Analog[1], safe.wireByte(11, 11));
    EXPECT_EQ(safe.state->Run.image.samples[12].Status, safe.wireByte(12, 10));
}

TEST(DownloadSession, ADoubledByteIsCountedAndKeptIfTheUserWants) {
    DownloadRig rig(25, false, {Fault::Kind::twice, 1 + 33 + 27 * 10 + 10});
    // Before the title; the form is still there, and the port is free.
    expectCount(rig, "1 byte too many", Reply::no).whileShown = [&] {
        EXPECT_FALSE(rig.view->unloaded);
        EXPECT_FALSE(rig.line.portOpen());
    };
    rig.expectSave();
    rig.click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_EQ(rig.state->Run.image.samples[11].Analog[2], rig.wireByte(11, 10));
    EXPECT_EQ(rig.index().size(), 1U);
}

TEST(DownloadSession, ACountThatIsOffIsDownloadedAgain) {
    for (const auto kind : {Fault::Kind::drop, Fault::Kind::twice}) {
        DownloadRig rig(25, false, {kind, 5000});
        expectCount(
            rig, kind == Fault::Kind::drop ? "1 byte too few" : "1 byte too many", Reply::yes);
        rig.expectSave();
        rig.click();
        EXPECT_EQ(rig.dialogs.problems(), "");
        EXPECT_EQ(rig.index().size(), 1U);
        EXPECT_EQ(rig.view->touchedAfterUnload, 0);
        // The second transfer is whole.
        for (const int i : {1, 600, 1213})
            EXPECT_EQ(rig.state->Run.image.samples[i].Status, rig.wireByte(i, 9)) << i;
    }
}

TEST(DownloadSession, ALoggerThatIsGoneAtTheSecondTryIsTold) {
    DownloadRig rig(25, false, {Fault::Kind::drop, 5000});
    expectCount(rig, "1 byte too few", Reply::yes).whileShown = [&] { rig.line.plugInto(2); };
    rig.dialogs.expectBox(noReplyText(), boxStyle::critical, "Download Error !");
    rig.click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_TRUE(rig.view->unloaded) << "its buttons were gone";
    EXPECT_FALSE(rig.line.portOpen());
    EXPECT_EQ(rig.view->touchedAfterUnload, 0);
    EXPECT_FALSE(rig.files.folderExists("/kvo/Data"));
}

TEST(DownloadSession, ABatchTooLongOfTheUnreadOnesIsCounted) {
    // The last batch is the one that the fast mode never reads.
    const long last = 1 + 33 + 27L * 1212 + 5;
    for (const auto kind : {Fault::Kind::drop, Fault::Kind::twice}) {
        DownloadRig rig(25, true, {kind, last});
        expectCount(
            rig, kind == Fault::Kind::drop ? "1 byte too few" : "1 byte too many", Reply::no);
        rig.expectSave();
        rig.click();
        EXPECT_EQ(rig.dialogs.problems(), "");
    }
}

// Bytes that come late behind the last sample are waited for until there are no more: one too many
// would else be made up for by one that is still under way.
TEST(DownloadSession, LateBytesBehindTheLastSampleAreCountedToTheLast) {
    using faults::Wrong;
    simulator::ModelLogger logger(17, 7);
    faults::ScriptedEnd end(logger);
    testing::VirtualLine line(end, true);
    faults::DownloadingProgram program(*simulator::wireLayout(17), true, line, line);
    end.begin({{Wrong::late, 244, 260}, {Wrong::gained, 211, 1}}, 1);
    const faults::Outcome outcome = program.download(false);
    EXPECT_EQ(outcome.broken, "");
    EXPECT_EQ(outcome.asked, 1);
}

// Whether a byte was lost before cannot be told without the bytes behind.
TEST(DownloadSession, ACableThatIsPulledBehindTheLastSampleIsAsked) {
    DownloadRig rig(25, false, {Fault::Kind::hangUpAt, 1 + 33 + 27 * 1213});
    rig.dialogs.expectBoxTitled("Download Check", Reply::no).contains = "1 byte too few";
    rig.expectSave();
    rig.click();
    EXPECT_EQ(rig.dialogs.problems(), "");
}

TEST(DownloadSession, AGarbledByteIsTakenAsItIs) {
    DownloadRig rig(25, true, {Fault::Kind::garble, 1 + 33 + 27 * 10 + 10});
    rig.expectSave();
    rig.click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_EQ(rig.state->Run.image.samples[11].Analog[1], 255 - rig.wireByte(11, 10));
    EXPECT_EQ(rig.state->Run.image.samples[11].Analog[2], rig.wireByte(11, 11));
}

TEST(DownloadSession, ALateLoggerIsDownloaded) {
    for (const bool fast : {true, false}) {
        DownloadRig rig(8, fast, {Fault::Kind::late, 40});
        rig.expectSave();
        rig.click();
        EXPECT_EQ(rig.dialogs.problems(), "");
        EXPECT_EQ(rig.state->Run.image.samples[2518].Status, rig.wireByte(2518, 9));
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
    EXPECT_EQ(rig.link.Header.DataType, 8);
    rig.newForm();
    EXPECT_EQ(rig.link.Header.DataType, 0);
    rig.expectSave(" 2 ", "2");
    rig.click();
    // The row that the fast mode never writes has no period in the new form either.
    EXPECT_EQ(rig.state->Run.image.samples[2520].EngineRpm, 0);
    EXPECT_EQ(rig.dialogs.problems(), "");
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
