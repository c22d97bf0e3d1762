// Pit run and configuration over a real pseudo-terminal: the kernel's buffers, a thread at the
// other end, and cables that are pulled out.
#if defined(__unix__)
#include "core/basic/numbers.h"
#include "tests/support/obc_rig.h"
#include "tests/support/pit_rig.h"
#include "tests/support/posix_serial_port.h"
#include "tools/logger_simulator/pty_logger.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <stdexcept>
#include <thread>

namespace kvo::link {
namespace {

using namespace platform;
using simulator::Fault;
using testing::ObcRig;
using testing::PitRig;
using testing::PosixSerialPort;

// The far end on a pseudo-terminal and the near one on its device.
struct Cable {
    Cable(simulator::LineEnd& end, Dialogs& dialogs)
        : pty(end, false), port(started(pty)), link(port, port, dialogs) {}
    static std::string started(simulator::PtyLogger& pty) {
        if (!pty.start()) throw std::runtime_error(pty.errorText());
        return pty.device();
    }
    // Until the far end has taken all that was sent.
    void settle() {
        for (int round = 0; round < 2; ++round) {
            std::atomic<bool> done = false;
            pty.post([&] { done = true; });
            while (!done) std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }
    simulator::PtyLogger pty;
    PosixSerialPort port;
    LoggerLink link;
};

// A wait that presses a button as soon as so many turns have gone by.
class PressingYield : public Yield {
public:
    explicit PressingYield(Yield& inner) : m_inner(inner) {}
    int turns(int limit) override {
        const int gone = m_inner.turns(limit);
        m_turns += gone;
        if (what && m_turns >= at) std::exchange(what, {})();
        return gone;
    }
    long at = 0;
    std::function<void()> what;

private:
    Yield& m_inner;
    long m_turns = 0;
};

struct PtyPitRun {
    explicit PtyPitRun(int type, Fault fault = {})
        : rig(type, fault), cable(rig.faulty, rig.dialogs), yield(cable.port),
          link(cable.port, yield, rig.dialogs),
          session(link, {rig.config, rig.folder, rig.tables}, rig.view, rig.dialogs, rig.files) {
        session.Form_Load();
    }
    void runFor(double milliseconds) {
        rig.expectNote();
        yield.at = static_cast<long>(milliseconds * turnsPerMillisecond);
        yield.what = [this] { session.Command1_Click(); };
        session.Command1_Click();
        EXPECT_EQ(rig.dialogs.problems(), "");
        EXPECT_FALSE(cable.port.portOpen());
        EXPECT_LE(cable.port.losses(), 1);
        EXPECT_FALSE(session.running());
    }
    PitRig rig;
    Cable cable;
    PressingYield yield;
    LoggerLink link;
    PitRunSession session;
};

constexpr std::initializer_list<int> typesOnThePty{12, 17, 20, 25, 32, 43};

TEST(PtyPitRun, FramesOfEveryTypeComeInTheirOrder) {
    for (const int type : typesOnThePty) {
        PtyPitRun run(type);
        run.runFor(350);
        const auto& readings = run.rig.view.readings;
        ASSERT_GT(readings.size(), 5U) << type;
        double last = -1;
        for (const auto& one : readings) {
            const double number = core::Val(one.LineNumber);
            EXPECT_GT(number, last);
            last = number;
        }
        run.cable.settle();
        run.cable.pty.stop();
        EXPECT_FALSE(run.rig.logger.inPitRun()); // the stop has arrived
    }
}

TEST(PtyPitRun, EveryFaultRunsUntilStopAndNeverSpins) {
    for (const int type : typesOnThePty) {
        for (const Fault fault : {Fault{Fault::Kind::silent, 0}, Fault{Fault::Kind::flood, 0},
                 Fault{Fault::Kind::stopAfter, 60}, Fault{Fault::Kind::hangUpAt, 60},
                 Fault{Fault::Kind::hangUpAt, 1}, Fault{Fault::Kind::drop, 30},
                 Fault{Fault::Kind::garble, 30}, Fault{Fault::Kind::late, 20}}) {
            PtyPitRun run(type, fault);
            run.runFor(130);
            EXPECT_LT(run.cable.port.wakes(), 2000);
        }
    }
}

TEST(PtyPitRun, APulledCableIsSilenceInWords) {
    PtyPitRun run(25, {Fault::Kind::hangUpAt, 100});
    run.runFor(2300);
    ASSERT_FALSE(run.rig.view.statuses.empty());
    EXPECT_EQ(run.rig.view.statuses.front(), "No data from the logger for 2 s");
    EXPECT_EQ(run.cable.port.losses(), 1);
}

struct PtyObc {
    explicit PtyObc(int type, Fault fault = {})
        : rig(type, fault), cable(rig.faulty, rig.dialogs),
          session(cable.link, rig.folder, rig.view, rig.dialogs, rig.clock, rig.files) {}
    bool open() {
        if (!session.Mnu_ConfigureComputer(1, [] { return true; })) return false;
        session.Form_Load();
        return true;
    }
    ObcRig rig;
    Cable cable;
    ObcSession session;
};

TEST(PtyConfiguration, EveryTypeIsReadWrittenAndReadAgain) {
    for (const auto& wire : simulator::wireLayouts) {
        PtyObc obc(wire.dataType);
        ASSERT_TRUE(obc.open());
        obc.rig.view.boxes[ObcBox::Label_RoRpm] = "2500";
        obc.rig.expectQuestion();
        obc.rig.expectClosing();
        obc.session.SaveSetup_Click();
        EXPECT_EQ(obc.rig.dialogs.problems(), "");
        EXPECT_FALSE(obc.cable.port.portOpen());
        obc.cable.pty.post([&] { obc.rig.logger.powerUp(); });
        obc.cable.settle();
        obc.rig.view = {};
        ObcSession again(obc.cable.link, obc.rig.folder, obc.rig.view, obc.rig.dialogs,
            obc.rig.clock, obc.rig.files);
        ASSERT_TRUE(again.Mnu_ConfigureComputer(1, [] { return true; }));
        again.Form_Load();
        EXPECT_EQ(obc.rig.view.boxes[ObcBox::Label_RoRpm], "2500") << wire.dataType;
        obc.cable.link.CloseLoggerPort();
    }
}

TEST(PtyConfiguration, WhatDoesNotGreetIsTold) {
    for (const auto& wire : simulator::wireLayouts) {
        for (const auto kind :
            {Fault::Kind::silent, Fault::Kind::wrongGreeting, Fault::Kind::flood}) {
            PtyObc obc(wire.dataType, {kind, 0});
            obc.rig.dialogs.expectBoxTitled("Configure Error !");
            EXPECT_FALSE(obc.open());
            EXPECT_EQ(obc.rig.dialogs.problems(), "");
            EXPECT_FALSE(obc.cable.port.portOpen());
            EXPECT_LT(obc.cable.port.wakes(), 2000);
        }
    }
}

// What the kernel still held at the hang-up may be lost, so that it may come a byte earlier.
TEST(PtyConfiguration, APulledCableEndsTheWriteAtOnce) {
    for (const auto& wire : simulator::wireLayouts) {
        for (const int n : {45, 72}) {
            PtyObc obc(wire.dataType, {Fault::Kind::hangUpAt, n});
            ASSERT_TRUE(obc.open());
            obc.rig.expectQuestion();
            obc.rig.dialogs.expectBoxTitled("Kvo").contains = "was lost";
            obc.rig.expectClosing();
            obc.session.SaveSetup_Click();
            EXPECT_EQ(obc.rig.dialogs.problems(), "");
            EXPECT_FALSE(obc.cable.port.portOpen());
            EXPECT_EQ(obc.cable.port.losses(), 1);
            EXPECT_LT(obc.cable.port.wakes(), 2000);
        }
    }
}

TEST(PtyConfiguration, AFloodInTheWriteEndsNothing) {
    for (const long requests : {34L, 60L}) {
        PtyObc obc(25, {Fault::Kind::flood, requests});
        ASSERT_TRUE(obc.open());
        obc.rig.expectQuestion();
        obc.rig.expectClosing();
        obc.session.SaveSetup_Click();
        EXPECT_EQ(obc.rig.dialogs.problems(), "");
        EXPECT_FALSE(obc.cable.port.portOpen());
        EXPECT_LT(obc.cable.port.wakes(), 2000);
    }
}

TEST(PtyConfiguration, ALoggerThatFallsSilentIsWaitedForByteByByte) {
    for (const auto& wire : simulator::wireLayouts) {
        PtyObc obc(wire.dataType, {Fault::Kind::stopAfter, 73});
        ASSERT_TRUE(obc.open());
        obc.rig.expectQuestion();
        obc.rig.expectClosing();
        obc.session.SaveSetup_Click();
        EXPECT_EQ(obc.rig.dialogs.problems(), "");
        EXPECT_FALSE(obc.cable.port.portOpen());
        EXPECT_EQ(obc.cable.port.losses(), 0);
        EXPECT_LT(obc.cable.port.wakes(), 2000);
    }
}

} // namespace
} // namespace kvo::link
#endif
