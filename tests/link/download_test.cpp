// The transfer: every data type in both modes against the bytes that lie in the logger.
#include "link/download.h"

#include "tests/support/download_rig.h"

#include <gtest/gtest.h>

namespace kvo::link {
namespace {

using simulator::Fault;
using simulator::wireLayouts;
using testing::DownloadRig;

// A transfer without the dialogue around it: header, sizes, one of the two modes.
struct Transfer {
    Transfer(int dataType, bool fast, Fault fault = {}, bool paced = false)
        : rig(dataType, fast, fault, paced) {
        rig.line.setPortOpen(true);
        rig.link.tryPort(1);
        rig.link.ReadLoggerHeader();
        headerBytes = rig.line.bytesSent();
        rig.state->Run.DataType = rig.link.Header.DataType;
        type = prepareDownload(rig.state->Run);
        fastMode = fast;
    }
    void run() {
        Download download(rig.link, rig.state->Run, *periods, *rig.view, rig.dialogs);
        if (fastMode)
            download.DownloadFast();
        else
            download.DownloadSafe();
    }
    void expectFailure() {
        rig.dialogs.expectBox(
            "The On Board Computer Stopped Responding\r\n           Fix and try again!",
            platform::boxStyle::critical, "Download Error");
    }
    const core::RunSample& row(int i) const { return rig.state->Run.image.samples[i]; }

    DownloadRig rig;
    std::unique_ptr<PulsePeriods> periods = std::make_unique<PulsePeriods>();
    std::optional<DownloadType> type;
    long headerBytes = 0;
    bool fastMode = false;
};

// One row against its bytes on the wire, by the logger's own table.
void expectRow(const Transfer& t, int i, bool fast) {
    const simulator::WireLayout& wire = t.rig.layout;
    const auto word = [&](int position) {
        const int value = t.rig.wireWord(i, position);
        return fast && value >= 0x8000 ? value - 0x10000 : value;
    };
    const core::RunSample& row = t.row(i);
    EXPECT_EQ(row.Index, i);
    EXPECT_EQ(t.periods->EnginePeriod[i], word(1)) << "row " << i;
    EXPECT_EQ(t.periods->InputPeriod[i], word(3));
    EXPECT_EQ(t.periods->OutputPeriod[i], word(5));
    EXPECT_EQ(row.SpeedRaw, word(7));
    EXPECT_EQ(row.Status, t.rig.wireByte(i, 9));
    for (int c = 1; c <= 8; ++c)
        EXPECT_EQ(row.Analog[c], c <= wire.analog ? t.rig.wireByte(i, 9 + c) : 0)
            << "channel " << c;
    const int aux = wire.auxBytes == 2 ? word(wire.auxAt)
                    : wire.auxAt > 0   ? t.rig.wireByte(i, wire.auxAt)
                                       : 0;
    EXPECT_EQ(row.Aux, aux);
    for (int c = 1; c <= 8; ++c)
        EXPECT_EQ(
            row.Exhaust[c], wire.exhaustAt > 0 ? t.rig.wireByte(i, wire.exhaustAt + c - 1) : 0)
            << "exhaust " << c;
}

TEST(DownloadTypes, AgreeWithTheLoggers) {
    for (const auto& wire : wireLayouts) {
        const auto type = downloadType(wire.dataType);
        ASSERT_TRUE(type) << wire.dataType;
        EXPECT_EQ(type->RecordSize, wire.sampleBytes);
        EXPECT_EQ(type->SampleCount, wire.samples);
        EXPECT_EQ(type->TimeOffset, wire.timeOffset);
        EXPECT_EQ(type->analogOnWire, wire.analog);
    }
    EXPECT_EQ(downloadType(20)->analogWithTables, 6);
    for (const int unknown : {0, 1, 9, 23, 29, 44, 63, 255}) EXPECT_FALSE(downloadType(unknown));
}

TEST(DownloadTypes, AnUnknownOneLeavesTheTimeOffset) {
    const auto run = std::make_unique<core::OpenRun>();
    run->SampleCount = 77;
    run->image.tail.TimeOffset = 123;
    run->DataType = 23;
    EXPECT_FALSE(prepareDownload(*run));
    EXPECT_EQ(run->SampleCount, 0);
    EXPECT_EQ(run->image.tail.TimeOffset, 123);
}

TEST(ProgressText, IsTheWholePercent) {
    EXPECT_EQ(progressText(1, 2520), "Downloading data from the On Board Computer.   0%");
    EXPECT_EQ(progressText(1259, 2520), "Downloading data from the On Board Computer.   49%");
    EXPECT_EQ(progressText(1213, 1213), "Downloading data from the On Board Computer.   100%");
}

TEST(DownloadSafe, TakesEveryTypeByteByByte) {
    for (const auto& wire : wireLayouts) {
        if (wire.dataType == 43) continue; // out of step, see below
        Transfer t(wire.dataType, false);
        t.run();
        for (const int i : {1, 2, 3, wire.samples / 2, wire.samples - 1, wire.samples})
            expectRow(t, i, false);
        EXPECT_EQ(t.rig.link.LinkFailed, 0);
        EXPECT_EQ(t.rig.line.bytesSent() - t.headerBytes, wire.samples * wire.sampleBytes + 1);
        EXPECT_EQ(t.rig.line.inBufferCount(), 1); // one reply stays unread
        EXPECT_EQ(t.rig.view->progress, wire.samples);
        EXPECT_EQ(t.rig.view->texts.back(), progressText(wire.samples, wire.samples));
    }
}

TEST(DownloadSafe, FallsOutOfStepOnAType43) {
    Transfer t(43, false);
    t.run();
    expectRow(t, 1, false);
    // The second row begins at byte 33 of the first sample.
    EXPECT_EQ(t.periods->EnginePeriod[2], t.rig.wireWord(1, 33));
    EXPECT_EQ(t.row(2).Status, t.rig.wireByte(1, 41));
    EXPECT_EQ(t.rig.line.bytesSent() - t.headerBytes, 1360 * 32 + 1);
}

TEST(DownloadSafe, ALoggerThatFallsSilentCostsATimeOutAByteToTheEndOfItsSample) {
    Transfer t(8, false, {Fault::Kind::stopAfter, 33 + 13 + 5}); // within sample 2
    t.row(1);
    t.expectFailure();
    const long before = t.rig.line.turnsGone();
    t.run();
    EXPECT_EQ(t.rig.line.turnsGone() - before, 8 * 8000 + 1); // one yield behind sample 1
    expectRow(t, 1, false);
    EXPECT_EQ(t.periods->EnginePeriod[2], t.rig.wireWord(2, 1));
    const int stale = t.rig.wireByte(2, 5);
    EXPECT_EQ(t.periods->OutputPeriod[2], stale * 257);
    EXPECT_EQ(t.row(2).Analog[4], stale);
    EXPECT_EQ(t.row(3).Index, 0);
    EXPECT_EQ(t.rig.link.LinkFailed, -1);
    EXPECT_FALSE(t.rig.line.portOpen());
    EXPECT_TRUE(t.rig.view->unloaded);
    EXPECT_EQ(t.rig.dialogs.beeps(), 1);
    EXPECT_EQ(t.rig.dialogs.problems(), "");
}

TEST(DownloadSafe, AFieldThatTheTypeDoesNotFillIsCleared) {
    Transfer t(8, false);
    core::RunSample& old = t.rig.state->Run.image.samples[5];
    old.Analog.fill(9);
    old.Exhaust.fill(9);
    old.Aux = 9;
    old.EngineRpm = 1234;
    t.run();
    expectRow(t, 5, false);
    EXPECT_EQ(t.row(5).EngineRpm, 1234); // until the periods are converted
}

TEST(DownloadSafe, TakesTheTimeOfTheLine) {
    Transfer t(8, false, {}, true);
    const double before = t.rig.line.milliseconds();
    t.run();
    const double took = t.rig.line.milliseconds() - before;
    // One request runs ahead, so request and reply overlap: a byte time for each byte.
    EXPECT_LT(took, 1.15 * 2520 * 13 * simulator::byteTimeMs);
}

TEST(DownloadFast, TakesEveryTypeInBatches) {
    for (const auto& wire : wireLayouts) {
        Transfer t(wire.dataType, true);
        t.run();
        const int last = wire.samples % 2 == 0 ? wire.samples - 2 : wire.samples - 1;
        for (const int i : {1, 2, 3, 4, wire.samples / 2, last - 1, last}) expectRow(t, i, true);
        EXPECT_EQ(t.rig.link.LinkFailed, 0);
        EXPECT_EQ(t.rig.line.bytesSent() - t.headerBytes, (last / 2 + 1) * 2 * wire.sampleBytes);
        EXPECT_EQ(t.rig.line.inputLens().back(), 2 * wire.sampleBytes);
        EXPECT_EQ(t.rig.view->progress, last - 1);
    }
}

TEST(DownloadFast, LeavesTheLastRowsAlone) {
    for (const auto& wire : wireLayouts) {
        Transfer t(wire.dataType, true);
        for (auto& row : t.rig.state->Run.image.samples) row.Index = -5;
        t.periods->EnginePeriod[wire.samples] = 4711;
        t.run();
        EXPECT_EQ(t.row(wire.samples).Index, -5) << wire.dataType;
        EXPECT_EQ(t.periods->EnginePeriod[wire.samples], 4711);
        EXPECT_EQ(t.row(wire.samples - 1).Index, wire.samples % 2 == 0 ? -5 : wire.samples - 1);
    }
}

TEST(DownloadFast, AHighByteFrom80IsNegativeThere) {
    platform::Bytes stream(33 + 2520 * 13, 0);
    stream[1] = 8;
    stream[33] = 0x80;
    stream[34] = 0x02;
    for (const bool fast : {false, true}) {
        simulator::ModelLogger logger(stream);
        testing::VirtualLine line(logger);
        testing::ScriptedDialogs dialogs;
        testing::RecordingView view;
        const auto run = std::make_unique<core::OpenRun>();
        const auto periods = std::make_unique<PulsePeriods>();
        LoggerLink link(line, line, dialogs);
        line.setPortOpen(true);
        link.ReadLoggerHeader();
        run->DataType = link.Header.DataType;
        prepareDownload(*run);
        Download download(link, *run, *periods, view, dialogs);
        fast ? download.DownloadFast() : download.DownloadSafe();
        EXPECT_EQ(periods->EnginePeriod[1], fast ? -32766 : 32770);
    }
}

TEST(DownloadFast, ABatchOneByteShortEndsInSilence) {
    Transfer t(25, true, {Fault::Kind::stopAfter, 33 + 3 * 54 - 1});
    t.expectFailure();
    const long before = t.rig.line.turnsGone();
    t.run();
    EXPECT_EQ(t.rig.line.turnsGone() - before, 32000);
    expectRow(t, 4, true);
    EXPECT_EQ(t.row(5).Index, 0);
    EXPECT_TRUE(t.rig.view->unloaded);
    EXPECT_EQ(t.rig.dialogs.problems(), "");
}

// Answers the first request twice, the others once.
class Stutter : public simulator::LineEnd {
public:
    void receive(std::uint8_t) override { m_waiting += m_requests++ == 0 ? 2 : 1; }
    std::optional<simulator::OutgoingByte> next() override {
        if (m_waiting == 0) return std::nullopt;
        --m_waiting;
        return simulator::OutgoingByte{0, true};
    }

private:
    int m_waiting = 0;
    int m_requests = 0;
};

TEST(DownloadFast, ABatchOfTooManyBytesDoesNotMatch) {
    Stutter far;
    testing::VirtualLine line(far);
    testing::ScriptedDialogs dialogs;
    testing::RecordingView view;
    const auto run = std::make_unique<core::OpenRun>();
    const auto periods = std::make_unique<PulsePeriods>();
    LoggerLink link(line, line, dialogs);
    line.setPortOpen(true);
    link.CommandByte = command::nextByte;
    run->DataType = 8;
    prepareDownload(*run);
    dialogs.expectBoxTitled("Download Error");
    Download download(link, *run, *periods, view, dialogs);
    download.DownloadFast();
    EXPECT_EQ(line.inBufferCount(), 27);
    EXPECT_EQ(line.turnsGone(), 32000);
    EXPECT_EQ(link.LinkFailed, -1);
    EXPECT_EQ(dialogs.problems(), "");
}

// So that the logger is busy while the program takes a batch apart.
TEST(DownloadFast, ABatchIsAskedForBeforeTheLastOneIsTakenApart) {
    Transfer t(25, true);
    const long batch = 2 * t.rig.size();
    long sent = 0;
    int looked = 0;
    t.rig.line.onSend = [&](std::uint8_t) {
        if (sent++ % batch != 0) return;
        const auto arrived = static_cast<int>(sent / batch); // batches that are in
        if (arrived == 0) return;
        ++looked;
        EXPECT_EQ(t.row(2 * arrived - 1).Index, 0);
        if (arrived > 1) {
            EXPECT_EQ(t.row(2 * arrived - 2).Index, 2 * arrived - 2);
        }
    };
    t.run();
    EXPECT_EQ(looked, 606);
}

TEST(DownloadFast, TakesTheTimeOfTheLine) {
    Transfer t(25, true, {}, true);
    const double before = t.rig.line.milliseconds();
    t.run();
    const double took = t.rig.line.milliseconds() - before;
    const double bound = 606 * (54 + 1) * simulator::byteTimeMs;
    EXPECT_LT(took, 1.03 * bound);
    EXPECT_GT(took, 0.97 * bound);
}

TEST(DownloadFast, AnUnpluggedCableEndsItAtOnce) {
    Transfer t(32, true, {Fault::Kind::hangUpAt, 5000}, true);
    t.expectFailure();
    t.run();
    EXPECT_LT(t.rig.line.milliseconds(), 5400 * simulator::byteTimeMs);
    EXPECT_EQ(t.rig.link.LinkFailed, -1);
    EXPECT_EQ(t.rig.dialogs.problems(), "");
}

TEST(DownloadFast, ALateLoggerIsStillALogger) {
    Transfer t(8, true, {Fault::Kind::late, 200}, true);
    t.run();
    EXPECT_EQ(t.rig.link.LinkFailed, 0);
    expectRow(t, 2518, true);
}

TEST(DownloadFast, FailureIsToldOnce) {
    Transfer t(8, true, {Fault::Kind::stopAfter, 40});
    t.expectFailure();
    Download download(t.rig.link, t.rig.state->Run, *t.periods, *t.rig.view, t.rig.dialogs);
    download.DownloadFast();
    download.reportFailure();
    EXPECT_EQ(t.rig.view->count("unloaded"), 1);
    EXPECT_EQ(t.rig.dialogs.problems(), "");
}

} // namespace
} // namespace kvo::link
