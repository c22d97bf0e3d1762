// The course of a configuration: what is asked and told, what goes over the wire, and every fault.
#include "link/obc_session.h"

#include "core/basic/numbers.h"
#include "tests/support/obc_rig.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace kvo::link {
namespace {

using namespace platform;
using simulator::Fault;
using testing::ObcRig;

constexpr const char* backup = "/kvo/Backup/Logger 1225 2026-11-15.txt";
constexpr std::size_t writeBytes = 41; // "S", eight steps, 32 settings
constexpr int replyTurns = 8000;

// Values that can be sent, whatever a faulty line has made of the header.
void fillIn(ObcRig& rig) {
    rig.view.boxes.texts.fill("500");
    rig.view.boxes[ObcBox::Label_GR1] = rig.view.boxes[ObcBox::Label_GR2] = "5";
}

TEST(ObcSession, ReadsTheHeaderOfEveryTypeAndLeavesThePortOpen) {
    for (const auto& wire : simulator::wireLayouts) {
        ObcRig rig(wire.dataType);
        ASSERT_TRUE(rig.open());
        EXPECT_EQ(rig.dialogs.problems(), "");
        EXPECT_EQ(rig.view.shown.Label_DataType, std::to_string(wire.dataType));
        EXPECT_EQ(rig.view.shown.Label_S_No, std::to_string(1200 + wire.dataType));
        EXPECT_EQ(rig.view.boxes[ObcBox::Label_RoRpm], "3000");
        EXPECT_EQ(rig.view.status, "");
        EXPECT_TRUE(rig.line.portOpen());
        EXPECT_EQ(rig.link.LinkFailed, 0);
        EXPECT_EQ(rig.line.everythingSent(), "Q" + std::string(33, 'D'));
        EXPECT_EQ(rig.line.inputLens(), (std::vector<int>{0}));
    }
}

TEST(ObcSession, ASaveWritesTheSettingsByteForByte) {
    for (const auto& wire : simulator::wireLayouts) {
        ObcRig rig(wire.dataType);
        ASSERT_TRUE(rig.open());
        rig.view.boxes[ObcBox::Label_RoRpm] = "2500";
        rig.view.boxes[ObcBox::Label_GR1] = "40";
        rig.view.boxes.ComboPPR = {1, 2, 3, 10};
        rig.expectQuestion();
        rig.expectClosing();
        rig.session.SaveSetup_Click();
        EXPECT_EQ(rig.dialogs.problems(), "");
        const ObcBytes wanted = obcBytes(rig.view.boxes, rig.link.Header);
        const std::string settings(wanted.bytes.begin(), wanted.bytes.end());
        EXPECT_EQ(rig.line.everythingSent().substr(34), "S01234567" + settings);
        EXPECT_FALSE(rig.line.portOpen());
        EXPECT_EQ(rig.line.closings(), 1);
        EXPECT_TRUE(rig.view.unloaded);
        EXPECT_EQ(rig.view.touchedAfterUnload, 0);
        EXPECT_EQ(rig.view.writing, std::vector<bool>{true});
        EXPECT_FALSE(rig.dialogs.hourglass());
        EXPECT_EQ(rig.dialogs.beeps(), 2);
        // It takes them when it is next switched on.
        EXPECT_NE(rig.header(), settings);
        rig.logger.powerUp();
        EXPECT_EQ(rig.header(), settings);
    }
}

// What is not touched comes back as it was, but for what 16 bits and whole numbers take off it.
TEST(ObcSession, ASaveWithoutAChangeGivesTheSameForm) {
    ObcRig rig(25);
    ASSERT_TRUE(rig.open());
    const ObcShown before = rig.view.shown;
    rig.expectQuestion();
    rig.expectClosing();
    rig.session.SaveSetup_Click();
    rig.logger.powerUp();
    ObcRig again(25);
    again.logger = simulator::ModelLogger(rig.logger.stream());
    ASSERT_TRUE(again.open());
    EXPECT_EQ(again.view.shown.values.ComboPPR, before.values.ComboPPR);
    for (const auto& facts : obcBoxes()) {
        EXPECT_NEAR(core::Val(again.view.boxes[facts.box]), core::Val(before.values[facts.box]), 6)
            << facts.control;
    }
}

TEST(ObcSession, TheHourglassStandsWhileItWrites) {
    ObcRig rig(25, {}, true);
    ASSERT_TRUE(rig.open());
    bool hourglass = false;
    rig.line.onSend = [&](std::uint8_t) {
        hourglass = rig.dialogs.hourglass() && rig.session.writing();
    };
    rig.expectQuestion();
    rig.expectClosing();
    rig.session.SaveSetup_Click();
    EXPECT_TRUE(hourglass);
    EXPECT_FALSE(rig.session.writing());
}

TEST(ObcSession, NoSendsNothingAndTheFormStays) {
    ObcRig rig(25);
    ASSERT_TRUE(rig.open());
    rig.expectQuestion(Reply::no);
    rig.session.SaveSetup_Click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_EQ(rig.line.bytesSent(), 34);
    EXPECT_FALSE(rig.view.unloaded);
    EXPECT_TRUE(rig.line.portOpen());
    EXPECT_FALSE(rig.files.folderExists("/kvo/Backup"));
}

TEST(ObcSession, EveryFieldOutOfRangeHasItsBoxAndGetsItsValueBack) {
    ObcRig rig(25);
    ASSERT_TRUE(rig.open());
    const ObcValues read = rig.view.boxes;
    rig.view.boxes.texts.fill("70000");
    rig.expectQuestion();
    for (const auto& facts : obcBoxes()) rig.expectRange(facts.message);
    rig.session.SaveSetup_Click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_EQ(rig.view.boxes.texts, read.texts);
    EXPECT_EQ(rig.view.focused.size(), std::size_t{obcBoxCount});
    EXPECT_EQ(rig.view.focused.back(), ObcBox::Label_MT4);
    EXPECT_EQ(rig.link.LinkFailed, 0);
    EXPECT_EQ(rig.line.bytesSent(), 34);
    EXPECT_FALSE(rig.view.unloaded);
    // The next try is not held up by the one before.
    rig.expectQuestion();
    rig.expectClosing();
    rig.session.SaveSetup_Click();
    EXPECT_EQ(rig.dialogs.problems(), "");
}

// The box comes first, then the value, then the focus.
TEST(ObcSession, TheFieldIsSetBackBehindItsBox) {
    ObcRig rig(25);
    ASSERT_TRUE(rig.open());
    rig.view.boxes[ObcBox::Label_GR1] = "300";
    rig.expectQuestion();
    rig.dialogs.expectBoxTitled("Kvo").whileShown = [&] {
        EXPECT_EQ(rig.view.boxes[ObcBox::Label_GR1], "300");
        EXPECT_TRUE(rig.view.focused.empty());
    };
    rig.session.SaveSetup_Click();
    EXPECT_EQ(rig.view.boxes[ObcBox::Label_GR1], "1");
    EXPECT_EQ(rig.view.focused, std::vector<ObcBox>{ObcBox::Label_GR1});
    EXPECT_EQ(rig.dialogs.problems(), "");
}

TEST(ObcSession, ATextThatIsNoNumberEndsTheSaveAndStays) {
    ObcRig rig(25);
    ASSERT_TRUE(rig.open());
    rig.view.boxes[ObcBox::Label_GR2] = "0";
    rig.view.boxes[ObcBox::Label_MR2] = "fast";
    rig.view.boxes[ObcBox::Label_MR3] = "70000";
    rig.expectQuestion();
    rig.expectRange("Motorcycle Clutch Bracket Reduction Gear teeth. Range 1 to 255");
    rig.dialogs.expectBox("Shift Light threshhold changes. Range 0 to 65000\r\n"
                          "This is not a number.\r\n"
                          "Nothing has been sent to the On Board Computer.\r\n\r\n"
                          "                           Please try again",
        boxStyle::warning, "Kvo");
    rig.session.SaveSetup_Click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_EQ(rig.view.boxes[ObcBox::Label_MR2], "fast");
    EXPECT_EQ(rig.view.boxes[ObcBox::Label_MR3], "70000"); // it was not reached
    EXPECT_EQ(rig.view.focused.back(), ObcBox::Label_MR2);
    EXPECT_EQ(rig.link.LinkFailed, 0);
    EXPECT_EQ(rig.line.bytesSent(), 34);
}

TEST(ObcSession, AnRpmThatHasNoPeriodIsNamedWithTheLowest) {
    ObcRig rig(25);
    ASSERT_TRUE(rig.open());
    rig.view.boxes[ObcBox::Label_PreStartRPM] = "457";
    rig.expectQuestion();
    auto& box = rig.dialogs.expectBoxTitled("Kvo");
    box.contains = "458";
    rig.session.SaveSetup_Click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_EQ(rig.view.boxes[ObcBox::Label_PreStartRPM], "457");
    EXPECT_EQ(rig.view.focused, std::vector<ObcBox>{ObcBox::Label_PreStartRPM});
    EXPECT_EQ(rig.line.bytesSent(), 34);
    EXPECT_FALSE(rig.files.folderExists("/kvo/Backup"));
    EXPECT_FALSE(rig.view.unloaded);
}

TEST(ObcSession, TheOldSettingsAreKeptBeforeTheFirstByte) {
    ObcRig rig(25);
    ASSERT_TRUE(rig.open());
    bool keptFirst = false;
    rig.line.onSend = [&](std::uint8_t byte) {
        if (byte == command::startConfiguration) keptFirst = rig.files.exists(backup);
    };
    rig.view.boxes[ObcBox::Label_RoRpm] = "1234";
    rig.expectQuestion();
    rig.expectClosing();
    rig.session.SaveSetup_Click();
    EXPECT_TRUE(keptFirst);
    const auto bytes = rig.files.read(backup);
    ASSERT_TRUE(bytes);
    const std::string text(bytes->begin(), bytes->end());
    EXPECT_NE(text.find("Date: Sunday, 15 November 2026 14:42\r\n"), std::string::npos);
    EXPECT_NE(text.find("Serial Number: 1225\r\n"), std::string::npos);
    EXPECT_NE(text.find("Record on RPM: 3000\r\n"), std::string::npos); // as it was read
}

TEST(ObcSession, SettingsThatCannotBeKeptAreWrittenOnlyOnYes) {
    for (const Reply reply : {Reply::no, Reply::yes}) {
        ObcRig rig(25);
        ASSERT_TRUE(rig.open());
        rig.files.failWrites("/kvo/Backup", testing::MemoryFiles::Failure::fullDisk);
        rig.expectQuestion();
        auto& box = rig.dialogs.expectBoxTitled("Kvo", reply);
        box.contains = "could NOT be kept";
        box.style = boxStyle::yesNo + boxStyle::warning + boxStyle::secondDefault;
        if (reply == Reply::yes) rig.expectClosing();
        rig.session.SaveSetup_Click();
        EXPECT_EQ(rig.dialogs.problems(), "");
        EXPECT_EQ(rig.line.bytesSent() > 34, reply == Reply::yes);
        EXPECT_EQ(rig.view.unloaded, reply == Reply::yes);
    }
}

// Required: it stays open until the next session opens or closes it.
TEST(ObcSession, CancelLeavesThePortOpen) {
    ObcRig rig(25);
    ASSERT_TRUE(rig.open());
    rig.session.CancelSetup_Click();
    EXPECT_TRUE(rig.view.unloaded);
    EXPECT_TRUE(rig.line.portOpen());
    rig.session.CancelSetup_Click();
    rig.session.SaveSetup_Click();
    EXPECT_EQ(rig.view.touchedAfterUnload, 0);
    EXPECT_EQ(rig.dialogs.problems(), "");
    // The next one takes it over.
    EXPECT_TRUE(rig.configure());
    rig.link.CloseLoggerPort();
    EXPECT_EQ(rig.line.closings(), 1);
}

TEST(ObcSession, WhatDoesNotGreetIsToldAndThePortClosed) {
    for (const auto& wire : simulator::wireLayouts) {
        for (const auto kind :
            {Fault::Kind::silent, Fault::Kind::wrongGreeting, Fault::Kind::flood}) {
            ObcRig rig(wire.dataType, {kind, 0});
            rig.dialogs.expectBox(noReplyText(), boxStyle::critical, "Configure Error !");
            EXPECT_FALSE(rig.open());
            EXPECT_EQ(rig.dialogs.problems(), "");
            EXPECT_EQ(rig.line.closings(), 1);
            EXPECT_LE(rig.line.turnsGone(), replyTurns + 10);
        }
    }
}

// The answers are not looked at, so noise in their place changes nothing of what is written.
TEST(ObcSession, AFloodInTheWriteLosesNoSetting) {
    for (const auto& wire : simulator::wireLayouts) {
        for (const long requests : {34L, 40L, 60L}) {
            ObcRig rig(wire.dataType, {Fault::Kind::flood, requests}, true);
            ASSERT_TRUE(rig.open());
            rig.view.boxes[ObcBox::Label_RoRpm] = "2500";
            const long before = rig.line.turnsGone();
            rig.expectQuestion();
            rig.expectClosing();
            rig.session.SaveSetup_Click();
            EXPECT_EQ(rig.dialogs.problems(), "");
            EXPECT_EQ(rig.line.bytesSent(), static_cast<long>(34 + writeBytes));
            EXPECT_EQ(rig.line.closings(), 1);
            EXPECT_LT(rig.line.turnsGone() - before, 2 * replyTurns);
            for (int i = 0; i < 100; ++i) rig.line.turns(replyTurns); // what was under way
            EXPECT_TRUE(rig.logger.configurationWaits()) << requests;
        }
    }
}

TEST(ObcSession, APortThatDoesNotOpenIsToldOnce) {
    ObcRig rig(25);
    rig.line.failToOpen(1, PortError::busy);
    rig.dialogs.expectBoxTitled("Communications Error");
    EXPECT_FALSE(rig.open());
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_EQ(rig.line.bytesSent(), 0);
}

TEST(ObcSession, ALoggerThatStopsInItsHeaderIsSaidOnTheForm) {
    for (const auto& wire : simulator::wireLayouts) {
        for (const int n : {1, 2, 3, 10, 20, 33}) {
            ObcRig rig(wire.dataType, {Fault::Kind::stopAfter, n});
            ASSERT_TRUE(rig.open());
            EXPECT_NE(rig.view.status.find("Cancel, and try again"), std::string::npos) << n;
            EXPECT_EQ(rig.link.LinkFailed, 0);
            EXPECT_LT(rig.line.yields(), 60);
            EXPECT_EQ(rig.dialogs.problems(), "");
        }
        ObcRig whole(wire.dataType, {Fault::Kind::stopAfter, 34});
        ASSERT_TRUE(whole.open());
        EXPECT_EQ(whole.view.status, "");
    }
}

TEST(ObcSession, ASilentLoggerCostsATimeOutAByteAndTheClosingMessageComes) {
    for (const auto& wire : simulator::wireLayouts) {
        for (const int n : {34, 35, 40, 60}) {
            ObcRig rig(wire.dataType, {Fault::Kind::stopAfter, n});
            ASSERT_TRUE(rig.open());
            const long before = rig.line.turnsGone();
            rig.expectQuestion();
            rig.expectClosing();
            rig.session.SaveSetup_Click();
            EXPECT_EQ(rig.dialogs.problems(), "");
            EXPECT_EQ(rig.line.bytesSent(), static_cast<long>(34 + writeBytes));
            const long missing = 40 - (n - 34);
            EXPECT_GE(rig.line.turnsGone() - before, (missing + 1) * replyTurns) << n;
            EXPECT_LE(rig.line.turnsGone() - before, (missing + 1) * replyTurns + 100);
            EXPECT_EQ(rig.line.closings(), 1);
            EXPECT_TRUE(rig.view.unloaded);
        }
    }
}

TEST(ObcSession, UnpluggedBeforeTheWriteItSaysSoAndTheFormStays) {
    for (const auto& wire : simulator::wireLayouts) {
        for (int n = 1; n <= 34; n += 3) {
            ObcRig rig(wire.dataType, {Fault::Kind::hangUpAt, n}, true);
            ASSERT_TRUE(rig.open()) << n;
            fillIn(rig);
            rig.expectQuestion();
            rig.dialogs.expectBox("The line to the On Board Computer was lost.\r\n"
                                  "Nothing has been sent. Cancel, and try again.",
                boxStyle::warning, "Kvo");
            rig.session.SaveSetup_Click();
            EXPECT_EQ(rig.dialogs.problems(), "") << n;
            EXPECT_FALSE(rig.view.unloaded);
            EXPECT_EQ(rig.line.closings(), 1);
            EXPECT_FALSE(rig.files.folderExists("/kvo/Backup"));
            EXPECT_LT(rig.line.turnsGone(), 74 * 3 * turnsPerMillisecond);
        }
    }
}

TEST(ObcSession, UnpluggedInTheWriteItEndsAtOnceIsToldAndClosesOnce) {
    for (const auto& wire : simulator::wireLayouts) {
        for (int n = 35; n <= 73; ++n) {
            ObcRig rig(wire.dataType, {Fault::Kind::hangUpAt, n}, true);
            ASSERT_TRUE(rig.open()) << n;
            rig.expectQuestion();
            auto& box = rig.dialogs.expectBoxTitled("Kvo");
            box.contains = "It may have some of the new settings";
            rig.expectClosing();
            rig.session.SaveSetup_Click();
            EXPECT_EQ(rig.dialogs.problems(), "") << n;
            EXPECT_TRUE(rig.view.unloaded);
            EXPECT_EQ(rig.line.closings(), 1);
            EXPECT_LT(rig.line.turnsGone(), replyTurns + 74 * 3 * turnsPerMillisecond);
            EXPECT_LT(rig.line.yields(), 400);
        }
    }
}

TEST(ObcSession, LostAndWrongBytesEndLikeAnyWrite) {
    for (const auto& wire : simulator::wireLayouts) {
        for (const Fault fault : {Fault{Fault::Kind::drop, 20}, Fault{Fault::Kind::drop, 50},
                 Fault{Fault::Kind::garble, 20}, Fault{Fault::Kind::garble, 50},
                 Fault{Fault::Kind::late, 40}}) {
            ObcRig rig(wire.dataType, fault);
            ASSERT_TRUE(rig.open());
            fillIn(rig);
            rig.expectQuestion();
            rig.expectClosing();
            rig.session.SaveSetup_Click();
            EXPECT_EQ(rig.dialogs.problems(), "");
            EXPECT_EQ(rig.line.closings(), 1);
            EXPECT_EQ(rig.line.bytesSent(), static_cast<long>(34 + writeBytes));
        }
    }
}

TEST(ObcSession, AClickOnCancelOrSaveInsideTheWriteDoesNothing) {
    for (long turn = 0; turn < 2000; ++turn) {
        ObcRig rig(25, {Fault::Kind::stopAfter, 74});
        ASSERT_TRUE(rig.open());
        fillIn(rig);
        rig.line.at(rig.line.turnsGone() + turn, [&] {
            if (!rig.session.writing()) return;
            rig.session.CancelSetup_Click();
            rig.session.SaveSetup_Click();
        });
        rig.expectQuestion();
        rig.expectClosing();
        rig.session.SaveSetup_Click();
        ASSERT_EQ(rig.dialogs.problems(), "") << turn;
        ASSERT_EQ(rig.line.closings(), 1);
        ASSERT_EQ(rig.line.bytesSent(), static_cast<long>(34 + writeBytes));
        ASSERT_EQ(rig.view.touchedAfterUnload, 0);
    }
}

// The main window was closed in the wait: no form, no message, a closed port.
TEST(ObcSession, WhatIsNotWantedAnyMoreEndsInSilence) {
    for (long turn = 0; turn < 2000; turn += 5) {
        ObcRig rig(25, {}, true);
        rig.line.at(turn, [&] { rig.wanted = false; });
        ASSERT_FALSE(rig.open()) << turn;
        ASSERT_EQ(rig.dialogs.problems(), "");
        ASSERT_EQ(rig.line.closings(), 1);
    }
    ObcRig silent(25, {Fault::Kind::silent, 0});
    silent.line.at(100, [&] { silent.wanted = false; });
    EXPECT_FALSE(silent.open());
    EXPECT_EQ(silent.dialogs.problems(), "");
}

} // namespace
} // namespace kvo::link
