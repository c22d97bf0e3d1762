// The whole download over a real pseudo-terminal: the kernel's buffers, a thread at the other end,
// and cables that are pulled out.
#if defined(__unix__)
#include "tests/support/download_rig.h"
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
using simulator::PtyLogger;
using testing::DownloadRig;
using testing::PosixSerialPort;
using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

// Until the far end has answered all that was asked.
void waitForTheRest(PtyLogger& pty) {
    for (int round = 0; round < 2; ++round) {
        // The far end may be gone before it comes to it.
        const auto done = std::make_shared<std::atomic<bool>>(false);
        pty.post([done] { *done = true; });
        while (!*done && pty.running()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

// A rig whose form sits on a link over the real device in place of the virtual line.
struct PtyRig {
    PtyRig(int dataType, bool fast, Fault fault = {}, bool paced = false)
        : rig(dataType, fast), end(rig.logger, fault), pty(end, paced) {
        if (!pty.start()) throw std::runtime_error(pty.errorText());
        port = std::make_unique<PosixSerialPort>(pty.device());
        port->letFarEndRun = [this] { waitForTheRest(pty); };
        link = std::make_unique<LoggerLink>(*port, *port, rig.dialogs);
        session = std::make_unique<DownloadSession>(
            *link, testing::inputOf(*rig.state), *rig.view, rig.dialogs, rig.clock, rig.files);
        if (dataType == 43) warned = true;
    }
    void click() {
        session->Command_Send_Click();
        EXPECT_EQ(rig.dialogs.problems(), "");
        EXPECT_FALSE(port->portOpen());
    }

    DownloadRig rig;
    simulator::FaultyEnd end;
    PtyLogger pty;
    std::unique_ptr<PosixSerialPort> port;
    std::unique_ptr<LoggerLink> link;
    std::unique_ptr<DownloadSession> session;
    bool warned = false;
};

TEST(PtyDownload, EveryTypeInBothModes) {
    for (const auto& wire : simulator::wireLayouts) {
        for (const bool fast : {true, false}) {
            PtyRig t(wire.dataType, fast);
            if (t.warned) t.rig.dialogs.expectBoxTitled("Warning");
            t.rig.expectSave();
            t.click();
            // The same file as over the virtual line.
            DownloadRig same(wire.dataType, fast);
            if (t.warned) same.dialogs.expectBoxTitled("Warning");
            same.expectSave();
            same.click();
            EXPECT_EQ(same.dialogs.problems(), "");
            EXPECT_EQ(t.rig.files.read("/kvo/Data/26111514.52d"),
                same.files.read("/kvo/Data/26111514.52d"))
                << wire.dataType << (fast ? " fast" : " safe");
        }
    }
}

TEST(PtyDownload, EndsWhenTheCableIsPulledAtAnyByte) {
    for (const bool fast : {true, false}) {
        for (const long byte : {1L, 2L, 3L, 20L, 34L, 35L, 61L, 88L, 3000L}) {
            PtyRig t(25, fast, {Fault::Kind::hangUpAt, byte});
            // What the kernel still held at the hang-up may be lost, so the greeting or the data
            // type may not have come: then there is nothing to tell, or no logger at all.
            const auto start = Clock::now();
            t.session->Command_Send_Click();
            EXPECT_LT(secondsSince(start), 1.5) << byte;
            EXPECT_LE(t.port->losses(), 1);
            EXPECT_LT(t.port->wakes(), 40000);
            EXPECT_FALSE(t.port->portOpen());
            EXPECT_FALSE(t.rig.files.folderExists("/kvo/Data"));
            t.rig.dialogs.problems();
            const auto& titles = t.rig.dialogs.titles();
            ASSERT_LE(titles.size(), 1U) << byte;
            if (!titles.empty()) {
                EXPECT_TRUE(titles[0] == "Download Error" || titles[0] == "Download Error !");
            }
            if (byte > 40) {
                EXPECT_EQ(titles.size(), 1U);
            }
        }
    }
}

TEST(PtyDownload, FaultsAreTold) {
    const struct {
        Fault fault;
        const char* title;
    } rows[] = {{{Fault::Kind::silent, 0}, "Download Error !"},
        {{Fault::Kind::wrongGreeting, 0}, "Download Error !"},
        {{Fault::Kind::flood, 0}, "Download Error !"},
        {{Fault::Kind::stopAfter, 500}, "Download Error"},
        {{Fault::Kind::drop, 700}, "Download Error"}};
    for (const auto& row : rows) {
        PtyRig t(25, true, row.fault);
        t.rig.dialogs.expectBoxTitled(row.title);
        t.click();
        EXPECT_FALSE(t.rig.files.folderExists("/kvo/Data"));
    }
}

TEST(PtyDownload, LateAndGarbledLoggersAreDownloaded) {
    for (const auto& fault : {Fault{Fault::Kind::late, 2}, Fault{Fault::Kind::garble, 700}}) {
        PtyRig t(25, true, fault);
        t.rig.expectSave();
        t.click();
        EXPECT_TRUE(t.rig.files.exists("/kvo/Data/26111514.52d"));
    }
}

TEST(PtyDownload, TheSameLoggerCanBeReadAgain) {
    PtyRig t(8, true);
    t.rig.expectSave();
    t.click();
    waitForTheRest(t.pty); // the batch that the fast mode asks for and never reads
    t.rig.view = std::make_unique<testing::RecordingView>();
    t.session = std::make_unique<DownloadSession>(*t.link, testing::inputOf(*t.rig.state),
        *t.rig.view, t.rig.dialogs, t.rig.clock, t.rig.files);
    t.rig.expectSave(" 2 ", "2");
    t.click();
}

TEST(PtyDownload, AMissingDeviceIsTold) {
    DownloadRig rig(8);
    PosixSerialPort port("/dev/there-is-no-such-port");
    LoggerLink link(port, port, rig.dialogs);
    DownloadSession session(
        link, testing::inputOf(*rig.state), *rig.view, rig.dialogs, rig.clock, rig.files);
    rig.dialogs.expectBoxTitled("Communications Error");
    session.Command_Send_Click();
    EXPECT_EQ(rig.dialogs.problems(), "");
}

// Paced, 20 batches of 54 bytes: never faster than the line.
TEST(PtyLogger, KeepsThePaceOf9600Baud) {
    simulator::ModelLogger logger(25);
    PtyLogger pty(logger, true);
    ASSERT_TRUE(pty.start()) << pty.errorText();
    PosixSerialPort port(pty.device());
    port.setPortOpen(true);
    port.setInputLen(0);
    port.output("Q");
    while (port.inBufferCount() < 1) port.turns(1000);
    port.input();
    const auto start = Clock::now();
    for (int batch = 0; batch < 20; ++batch) {
        port.output(std::string(54, 'D'));
        while (port.inBufferCount() < 54) ASSERT_GT(port.turns(32000), 0);
        port.input();
    }
    const double bound = 20 * 55 * simulator::byteTimeMs / 1000;
    const double took = secondsSince(start);
    EXPECT_GE(took, 0.999 * bound);
    EXPECT_LT(
        took, 3 * bound); // a machine with other work may be late, the schedule does not drift
}

TEST(PtyLogger, WhatIsPostedRunsOnItsThread) {
    simulator::ModelLogger logger(25);
    PtyLogger pty(logger, false);
    ASSERT_TRUE(pty.start());
    std::atomic<bool> done = false;
    pty.post([&] {
        logger.powerUp();
        done = true;
    });
    const auto start = Clock::now();
    while (!done && secondsSince(start) < 10) std::this_thread::yield();
    EXPECT_TRUE(done);
    pty.stop();
    EXPECT_FALSE(pty.running());
}

} // namespace
} // namespace kvo::link
#endif
