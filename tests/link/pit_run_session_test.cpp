// The course of a pit run: what the form is told, every fault of the line, and Stop at any moment.
#include "link/pit_run_session.h"

#include "core/basic/numbers.h"
#include "tests/support/download_rig.h"
#include "tests/support/pit_rig.h"

#include <gtest/gtest.h>

namespace kvo::link {
namespace {

using namespace platform;
using simulator::Fault;
using testing::PitRig;

constexpr std::initializer_list<int> pitTypes{12, 17, 20, 25, 32, 43};
constexpr long second = 1000L * turnsPerMillisecond;

int frameBytes(int type) {
    return pitRunType(type)->frameBytes;
}

TEST(PitRunSession, LoadingMeansNotRunning) {
    PitRig rig(25);
    rig.link.LinkFailed = 0;
    rig.session.Form_Load();
    EXPECT_EQ(rig.link.LinkFailed, -1);
    EXPECT_TRUE(rig.view.layout.canRun);
    EXPECT_FALSE(rig.session.running());
    EXPECT_EQ(rig.dialogs.problems(), "");
}

TEST(PitRunSession, ATypeWithoutAPitRunIsToldAndNeverStarts) {
    PitRig rig(8);
    rig.dialogs.expectBox(
        "This is not available for your data loger type", boxStyle::critical, "Pit Run Canceled");
    rig.session.Form_Load();
    rig.session.Command1_Click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_EQ(rig.line.bytesSent(), 0);
    rig.session.BTN_Ok_Click();
    EXPECT_TRUE(rig.view.unloaded);
}

TEST(PitRunSession, FormLoadReadsTheTables) {
    PitRig rig(25);
    rig.config.Analog_Type[4] = 2;
    core::AnalogTables onDisk;
    onDisk[4].fill(7.5);
    ASSERT_TRUE(core::SaveAnalogTable("/kvo", "Analog4.Dat", 4, onDisk, rig.files));
    rig.session.Form_Load();
    rig.runUntil(second);
    EXPECT_EQ(rig.view.readings.back().Analog[4], "7.5");
}

TEST(PitRunSession, EveryFrameOfEveryTypeIsShownInItsTurn) {
    for (const int type : pitTypes) {
        PitRig rig(type);
        rig.session.Form_Load();
        rig.runUntil(20 * second);
        EXPECT_EQ(rig.dialogs.problems(), "") << type;
        const double frames = 20000 / simulator::byteTimeMs / static_cast<double>(frameBytes(type));
        EXPECT_NEAR(static_cast<double>(rig.view.readings.size()), frames, 2) << type;
        for (std::size_t i = 0; i < rig.view.readings.size(); ++i)
            ASSERT_EQ(rig.view.readings[i].LineNumber, core::Str(static_cast<int>(i))) << type;
        const double rpm = core::Val(*rig.view.readings.front().ERpm);
        EXPECT_NEAR(rpm, 2100, 60); // it idles
        EXPECT_EQ(rig.view.statuses, std::vector<std::string>{});
        EXPECT_EQ(rig.line.everythingSent(), "Pp");
        EXPECT_EQ(rig.line.closings(), 1);
        EXPECT_EQ(rig.line.inputLens(), (std::vector<int>{0, frameBytes(type)}));
        EXPECT_EQ(rig.view.captions, (std::vector<std::string>{"Stop", "Start"}));
        rig.line.turns(100); // the last byte has its way to go
        EXPECT_FALSE(rig.logger.inPitRun());
    }
}

// A frame stands on the form a byte behind its last one.
TEST(PitRunSession, TheDisplayFollowsAByteBehind) {
    for (const int type : pitTypes) {
        PitRig rig(type);
        rig.session.Form_Load();
        double worst = 0;
        rig.view.onReadings = [&] {
            const auto shown = static_cast<double>(rig.view.readings.size());
            const double there = (shown * frameBytes(type) + 1) * simulator::byteTimeMs;
            worst = std::max(worst, rig.line.milliseconds() - there);
        };
        rig.runUntil(10 * second);
        EXPECT_LT(worst, 2) << type;
    }
}

TEST(PitRunSession, ABacklogIsCaughtUpFourFramesAtATime) {
    PitRig rig(25);
    rig.session.Form_Load();
    bool late = false;
    rig.view.onReadings = [&] {
        if (late || rig.view.readings.size() != 3) return;
        late = true; // the machine was busy for ten frames
        rig.line.turns(static_cast<int>(290 * turnsPerMillisecond));
        while (rig.line.milliseconds() < 380) rig.line.turns(1000);
    };
    rig.runUntil(2 * second);
    std::vector<std::string> numbers;
    for (const auto& one : rig.view.readings) numbers.push_back(one.LineNumber);
    const std::vector<std::string> first(numbers.begin(), numbers.begin() + 5);
    EXPECT_EQ(first, (std::vector<std::string>{" 0", " 1", " 2", " 6", " 10"}));
    EXPECT_EQ(core::Val(numbers.back()), static_cast<double>(numbers.size() - 1 + 6));
    EXPECT_EQ(rig.dialogs.problems(), "");
}

TEST(PitRunSession, APortThatDoesNotOpenLeavesItIdle) {
    PitRig rig(25);
    rig.session.Form_Load();
    rig.line.failToOpen(1, PortError::busy);
    rig.dialogs.expectBoxTitled("Communications Error");
    rig.session.Command1_Click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_FALSE(rig.session.running());
    EXPECT_TRUE(rig.view.captions.empty());
    EXPECT_EQ(rig.line.bytesSent(), 0);
}

TEST(PitRunSession, StopTellsInItsOrder) {
    PitRig rig(25);
    rig.session.Form_Load();
    auto& note = rig.dialogs.expectBox(testing::resetNote, boxStyle::critical, "Info");
    note.whileShown = [&] {
        EXPECT_FALSE(rig.line.portOpen());
        EXPECT_EQ(rig.line.everythingSent(), "Pp");
        EXPECT_EQ(rig.link.LinkFailed, -1);
        EXPECT_EQ(rig.view.caption, "Stop");
        EXPECT_EQ(rig.dialogs.beeps(), 1);
    };
    rig.line.at(second, [&] { rig.session.Command1_Click(); });
    rig.session.Command1_Click();
    EXPECT_EQ(rig.view.caption, "Start");
    EXPECT_EQ(rig.dialogs.problems(), "");
}

TEST(PitRunSession, StopAtEveryTurnClosesOnceAndEndsAtOnce) {
    for (const int type : pitTypes) {
        for (long turn = 0; turn < 2000; ++turn) {
            PitRig rig(type);
            rig.session.Form_Load();
            rig.runUntil(turn);
            ASSERT_EQ(rig.dialogs.problems(), "") << turn;
            ASSERT_EQ(rig.line.closings(), 1);
            ASSERT_FALSE(rig.line.portOpen());
            ASSERT_FALSE(rig.session.running());
            ASSERT_EQ(rig.line.everythingSent(), "Pp");
            ASSERT_LE(rig.line.turnsGone(), std::max(turn, 1L));
        }
    }
}

TEST(PitRunSession, StopAtEveryTurnOfAFaultyLineClosesOnceToo) {
    for (const Fault fault : {Fault{Fault::Kind::silent, 0}, Fault{Fault::Kind::flood, 0},
             Fault{Fault::Kind::stopAfter, 20}, Fault{Fault::Kind::hangUpAt, 20}}) {
        for (const int type : pitTypes) {
            for (long turn = 0; turn < 2000; ++turn) {
                PitRig rig(type, fault);
                rig.session.Form_Load();
                rig.runUntil(turn);
                ASSERT_EQ(rig.dialogs.problems(), "") << type << " " << turn;
                ASSERT_EQ(rig.line.closings(), 1);
                ASSERT_FALSE(rig.session.running());
                ASSERT_LE(rig.line.turnsGone(), std::max(turn, 1L));
            }
        }
    }
}

TEST(PitRunSession, CancelAtAnyTurnStopsAndLeaves) {
    for (long turn = 0; turn < 2000; turn += 7) {
        PitRig rig(32);
        rig.session.Form_Load();
        rig.expectNote();
        rig.line.at(turn, [&] { rig.session.BTN_Ok_Click(); });
        rig.session.Command1_Click();
        ASSERT_EQ(rig.dialogs.problems(), "") << turn;
        ASSERT_TRUE(rig.view.unloaded);
        ASSERT_EQ(rig.view.touchedAfterUnload, 0);
        ASSERT_EQ(rig.line.closings(), 1);
    }
}

TEST(PitRunSession, CancelWhileIdleOnlyLeaves) {
    PitRig rig(25);
    rig.session.Form_Load();
    rig.session.BTN_Ok_Click();
    EXPECT_TRUE(rig.view.unloaded);
    EXPECT_EQ(rig.line.bytesSent(), 0);
    rig.session.Command1_Click(); // a click that was on its way
    rig.session.BTN_Ok_Click();
    EXPECT_EQ(rig.view.touchedAfterUnload, 0);
    EXPECT_EQ(rig.line.bytesSent(), 0);
    EXPECT_EQ(rig.dialogs.problems(), "");
}

TEST(PitRunSession, ItCanBeStartedAgain) {
    PitRig rig(25);
    rig.session.Form_Load();
    rig.runUntil(second);
    const std::size_t shown = rig.view.readings.size();
    rig.runUntil(2 * second);
    EXPECT_GT(rig.view.readings.size(), shown);
    EXPECT_EQ(rig.line.everythingSent(), "PpPp");
    EXPECT_EQ(rig.line.closings(), 2);
    EXPECT_EQ(rig.dialogs.problems(), "");
}

// Both clicks come inside one wait of the first run.
TEST(PitRunSession, AStartOnTheHeelsOfAStopIsARunOfItsOwn) {
    PitRig rig(25);
    rig.session.Form_Load();
    rig.expectNote();
    rig.expectNote();
    rig.line.at(500, [&] {
        rig.session.Command1_Click();
        rig.session.Command1_Click();
    });
    rig.line.at(3 * second, [&] { rig.session.Command1_Click(); });
    rig.session.Command1_Click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_FALSE(rig.session.running());
    EXPECT_EQ(rig.line.everythingSent(), "PpPp");
    EXPECT_EQ(rig.line.closings(), 2);
    EXPECT_GT(rig.view.readings.size(), 80U);
}

TEST(PitRunSession, SilenceIsToldFromTwoSecondsOnAndNothingElseChanges) {
    for (const int type : pitTypes) {
        PitRig rig(type, {Fault::Kind::silent, 0});
        rig.session.Form_Load();
        rig.runUntil(5 * second + 100);
        EXPECT_EQ(rig.dialogs.problems(), "");
        EXPECT_EQ(rig.view.statuses,
            (std::vector<std::string>{"No data from the logger for 2 s",
                "No data from the logger for 3 s", "No data from the logger for 4 s",
                "No data from the logger for 5 s", ""}));
        EXPECT_LE(rig.view.statusCalls, 7); // a second is written once: screen readers speak it
        EXPECT_TRUE(rig.view.readings.empty());
        EXPECT_EQ(rig.view.captions, (std::vector<std::string>{"Stop", "Start"}));
        EXPECT_LT(rig.line.yields(), 60); // it sleeps
        EXPECT_EQ(rig.line.closings(), 1);
    }
}

TEST(PitRunSession, TheSilenceIsNotToldEarly) {
    PitRig rig(25, {Fault::Kind::silent, 0});
    rig.session.Form_Load();
    rig.runUntil(2 * second - 200);
    EXPECT_TRUE(rig.view.statuses.empty());
}

// Switched off in the middle, and on again: the frames start afresh.
TEST(PitRunSession, TheWordOnSilenceClearsItselfWithTheNextFrame) {
    PitRig rig(25);
    rig.session.Form_Load();
    rig.line.at(second, [&] { rig.logger.receive('p'); });
    rig.line.at(4 * second, [&] { rig.logger.receive('P'); });
    rig.runUntil(6 * second);
    EXPECT_EQ(rig.view.statuses, (std::vector<std::string>{"No data from the logger for 2 s",
                                     "No data from the logger for 3 s", ""}));
    EXPECT_GT(rig.view.readings.size(), 80U);
}

TEST(PitRunSession, AStreamThatStopsAfterAnyByteIsToldAsSilence) {
    for (const int type : pitTypes) {
        for (const int n : {0, 1, 27, 28, 29, 45, 46, 47, 100, 500}) {
            PitRig rig(type, {Fault::Kind::stopAfter, n});
            rig.session.Form_Load();
            rig.runUntil(4 * second);
            EXPECT_EQ(rig.dialogs.problems(), "");
            // The last whole frame waits for a byte that does not come.
            const int shown = n > 0 ? (n - 1) / frameBytes(type) : 0;
            EXPECT_EQ(static_cast<int>(rig.view.readings.size()), shown) << type << " " << n;
            ASSERT_FALSE(rig.view.statuses.empty());
            EXPECT_EQ(rig.view.statuses.front(), "No data from the logger for 2 s");
            EXPECT_EQ(rig.line.closings(), 1);
        }
    }
}

TEST(PitRunSession, APulledCableIsToldAsSilenceAndStopStillWorks) {
    for (const int type : pitTypes) {
        for (const int n : {1, 28, 29, 46, 47, 500}) {
            PitRig rig(type, {Fault::Kind::hangUpAt, n});
            rig.session.Form_Load();
            rig.runUntil(4 * second);
            EXPECT_EQ(rig.dialogs.problems(), "");
            EXPECT_FALSE(rig.line.portOpen());
            EXPECT_EQ(rig.line.closings(), 1);
            EXPECT_EQ(rig.view.statuses.front(), "No data from the logger for 2 s") << n;
            EXPECT_LT(rig.line.yields(), 700);
            EXPECT_EQ(rig.view.caption, "Start");
        }
    }
}

TEST(PitRunSession, ACableThatIsOutAtTheStartIsAPortThatDoesNotOpen) {
    PitRig rig(25, {Fault::Kind::hangUpAt, 0});
    rig.session.Form_Load();
    rig.dialogs.expectBoxTitled("Communications Error");
    rig.session.Command1_Click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_FALSE(rig.session.running());
}

TEST(PitRunSession, GarbageIsShownAndStopsLikeAnyStream) {
    for (const int type : pitTypes) {
        PitRig rig(type, {Fault::Kind::flood, 0});
        rig.session.Form_Load();
        rig.runUntil(3 * second);
        EXPECT_EQ(rig.dialogs.problems(), "");
        EXPECT_GT(rig.view.readings.size(), 40U);
        EXPECT_EQ(rig.line.closings(), 1);
    }
}

TEST(PitRunSession, EveryOtherFaultRunsUntilStop) {
    for (const int type : pitTypes) {
        for (const Fault fault : {Fault{Fault::Kind::drop, 40}, Fault{Fault::Kind::garble, 40},
                 Fault{Fault::Kind::late, 40}, Fault{Fault::Kind::wrongGreeting, 0}}) {
            PitRig rig(type, fault);
            rig.session.Form_Load();
            rig.runUntil(3 * second);
            EXPECT_EQ(rig.dialogs.problems(), "");
            EXPECT_GT(rig.view.readings.size(), 50U);
            EXPECT_EQ(rig.line.closings(), 1);
        }
    }
}

// Nothing bounds the wait for the last byte to leave; a second press ends it.
TEST(PitRunSession, ALineThatTakesNothingCanBeLeft) {
    PitRig rig(25);
    rig.session.Form_Load();
    rig.line.jamOutput(true);
    rig.expectNote();
    rig.line.at(1000, [&] { rig.session.Command1_Click(); });
    rig.line.at(5000, [&] { rig.session.BTN_Ok_Click(); });
    rig.session.Command1_Click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_TRUE(rig.view.unloaded);
    EXPECT_EQ(rig.view.touchedAfterUnload, 0);
    EXPECT_EQ(rig.line.closings(), 1);
    EXPECT_LT(rig.line.turnsGone(), 2 * second); // the second press ended it, and nothing later
    EXPECT_FALSE(rig.session.running());
}

// A download that is started while frames come: it finds no logger, and the pit run goes on to its
// Stop.
TEST(PitRunSession, AnotherSessionOnThePortLeavesBothSane) {
    PitRig rig(25);
    rig.session.Form_Load();
    testing::DownloadRig other(25);
    DownloadSession download(rig.link, testing::inputOf(*other.state), *other.view, rig.dialogs,
        other.clock, other.files);
    rig.dialogs.expectBoxTitled("Download Error !");
    rig.expectNote();
    rig.line.at(second, [&] { download.Command_Send_Click(); });
    rig.line.at(6 * second, [&] { rig.session.Command1_Click(); });
    rig.session.Command1_Click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_EQ(rig.line.closings(), 1);
    EXPECT_FALSE(rig.session.running());
    EXPECT_EQ(rig.view.statuses.front(), "No data from the logger for 2 s");
    EXPECT_LT(rig.line.yields(), 1200);
}

// A session behind the Stop clears the flag for itself; the run of before must not take it for its
// own.
TEST(PitRunSession, ASessionBehindTheStopDoesNotBringItBack) {
    PitRig rig(25);
    rig.session.Form_Load();
    rig.expectNote();
    rig.line.at(second, [&] {
        rig.session.BTN_Ok_Click();
        rig.link.LinkFailed = 0;
        rig.link.OpenLoggerPort(1);
    });
    rig.session.Command1_Click();
    EXPECT_EQ(rig.dialogs.problems(), "");
    EXPECT_EQ(rig.line.turnsGone(), second);
    EXPECT_EQ(rig.view.touchedAfterUnload, 0);
    EXPECT_TRUE(rig.line.portOpen()); // it is the other session's
}

TEST(PitRunSession, FramesCutShortByAnotherSessionSayNothing) {
    PitRig rig(25);
    rig.session.Form_Load();
    rig.line.at(second, [&] { rig.line.setInputLen(1); });
    rig.line.at(second + 1000, [&] { rig.link.CloseLoggerPort(); });
    rig.runUntil(2 * second);
    for (const auto& one : rig.view.readings) EXPECT_NE(one.LineNumber, "");
    EXPECT_LT(rig.view.readings.size(), 36U);
    EXPECT_EQ(rig.dialogs.problems(), "");
}

} // namespace
} // namespace kvo::link
