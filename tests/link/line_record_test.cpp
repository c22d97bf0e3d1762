#include "link/line_record.h"

#include "tests/support/virtual_line.h"
#include "tools/logger_simulator/model_logger.h"

#include <gtest/gtest.h>

namespace kvo::link {
namespace {

using EventKind = LineEvent::Kind;

struct RecordedLine {
    RecordedLine() {
        recorder.begin();
        recorder.setCommPort(1);
        recorder.setPortOpen(true);
        recorder.setInputLen(1);
    }
    simulator::ModelLogger logger{25};
    testing::VirtualLine line{logger, true};
    LineRecorder recorder{line, line};
};

TEST(LineRecorder, NotesWhatWasSentAndWhatCameAndWhen) {
    RecordedLine t;
    t.recorder.output("Q");
    while (t.recorder.inBufferCount() == 0) t.recorder.turns(8000);
    EXPECT_EQ(t.recorder.input(), "?");
    const LineRecord* record = t.recorder.end();
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->sent, "Q");
    EXPECT_EQ(record->came, "?");
    const auto turn = static_cast<std::uint32_t>(t.line.turnsGone());
    EXPECT_EQ(record->events, (std::vector<LineEvent>{{EventKind::arrived, turn, 1, 1}}));
}

// What was never read is taken out of the buffer as the port closes; nothing is sent for it.
TEST(LineRecorder, NotesWhatWasLeft) {
    RecordedLine t;
    t.recorder.output("QDD");
    t.recorder.turns(8000);
    while (t.line.inBufferCount() < 3) t.line.turns(8000);
    t.recorder.setPortOpen(false);
    const LineRecord* record = t.recorder.end();
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->came, std::string("?\0\x19", 3));
    EXPECT_EQ(record->arrived(), 3);
    EXPECT_EQ(t.line.bytesSent(), 3);
}

TEST(LineRecorder, NotesALossOnce) {
    RecordedLine t;
    t.recorder.output("QDD");
    t.line.vanishAfterBytes(2);
    for (int i = 0; i < 20; ++i) t.recorder.turns(8000);
    t.recorder.inBufferCount();
    t.recorder.setPortOpen(false);
    const LineRecord* record = t.recorder.end();
    ASSERT_EQ(record->events.size(), 2U);
    EXPECT_EQ(record->events[0].kind, EventKind::arrived);
    EXPECT_EQ(record->events[1].kind, EventKind::lost);
    EXPECT_EQ(record->events[1].bytes, 2U);
}

TEST(LineRecorder, BytesFromBeforeWereAskedForByNobody) {
    simulator::ModelLogger logger(25);
    testing::VirtualLine line(logger);
    line.setOldBytes("old");
    LineRecorder recorder(line, line);
    recorder.begin();
    recorder.setPortOpen(true);
    recorder.setInputLen(0);
    EXPECT_EQ(recorder.inBufferCount(), 3);
    EXPECT_EQ(recorder.input(), "old");
    EXPECT_EQ(recorder.end()->arrivedUnasked(), 3);
}

TEST(LineRecorder, NotesNothingUnlessItIsAsked) {
    RecordedLine t;
    t.recorder.forget();
    t.recorder.output("Q");
    while (t.recorder.inBufferCount() == 0) t.recorder.turns(8000);
    EXPECT_EQ(t.recorder.end(), nullptr);
}

// A line that is flooded ends the note, not the session.
TEST(LineRecorder, TooMuchIsNoNote) {
    RecordedLine t;
    const std::string many(200'000, 'D');
    for (int i = 0; i < 6; ++i) t.recorder.output(many);
    EXPECT_EQ(t.line.bytesSent(), 1'200'000);
    EXPECT_EQ(t.recorder.end(), nullptr);
}

TEST(ReplayedLine, BringsTheSameAtTheSameTurn) {
    const LineRecord record{"QD", "?xy",
        {{EventKind::arrived, 70, 1, 1}, {EventKind::sentOut, 90, 2, 0},
            {EventKind::arrived, 100, 2, 2}, {EventKind::lost, 200, 2, 1}}};
    ReplayedLine line(record);
    line.setPortOpen(true);
    line.setInputLen(0);
    EXPECT_EQ(line.turns(1000), 1000); // nothing comes before it is asked for
    line.output("Q");
    EXPECT_EQ(line.inBufferCount(), 1);
    EXPECT_EQ(line.input(), "?");

    ReplayedLine again(record);
    again.setPortOpen(true);
    again.setInputLen(1);
    again.output("Q");
    EXPECT_EQ(again.inBufferCount(), 0);
    EXPECT_EQ(again.turns(30), 30);
    EXPECT_EQ(again.turns(8000), 40);
    EXPECT_EQ(again.inBufferCount(), 1);
    EXPECT_EQ(again.input(), "?");
    again.output("D");
    EXPECT_EQ(again.outBufferCount(), 1);
    EXPECT_EQ(again.turns(32), 20);
    EXPECT_EQ(again.outBufferCount(), 0);
    EXPECT_EQ(again.turns(32), 10);
    EXPECT_EQ(again.inBufferCount(), 2);
    EXPECT_EQ(again.turns(8000), 100);
    EXPECT_FALSE(again.portOpen());
    EXPECT_EQ(again.inBufferCount(), 1);
    EXPECT_EQ(again.input(), "x");
    EXPECT_EQ(again.turns(77), 77);
}

} // namespace
} // namespace kvo::link
