#include "graph/transient.h"

#include "tests/support/recording_surface.h"

#include <gtest/gtest.h>

using namespace kvo;
using namespace kvo::graph;
using kvo::testing::RecordingSurface;
using kvo::testing::SurfaceOperation;
using Kind = SurfaceOperation::Kind;

namespace {

constexpr platform::Colour lightRed = 0x0000FF;

void expectLine(const SurfaceOperation& line, float x1, float y1, float x2, float y2, int style) {
    EXPECT_EQ(line.kind, Kind::line);
    EXPECT_EQ(line.x1, x1);
    EXPECT_EQ(line.y1, y1);
    EXPECT_EQ(line.x2, x2);
    EXPECT_EQ(line.y2, y2);
    EXPECT_EQ(line.drawStyle, style);
    EXPECT_EQ(line.colour, lightRed);
    EXPECT_FALSE(line.kept);
}

} // namespace

TEST(Transient, TheTimeLineTakesThePlaceOfTheLastOne) {
    RecordingSurface trend;
    trend.setAutoRedraw(true);
    drawTimeLine(trend, 311, 0);
    ASSERT_EQ(trend.operations().size(), 2U);
    EXPECT_EQ(trend.operations()[0].kind, Kind::refresh);
    EXPECT_FALSE(trend.operations()[0].kept);
    expectLine(trend.operations()[1], 311, 1100, 311, 0, 4);
    EXPECT_EQ(trend.drawStyle(), 0);
    EXPECT_EQ(trend.currentX(), 311); // where the arrow keys start from
}

TEST(Transient, TheLineIsRedUnlessTheBackgroundIsTheNumberTwelve) {
    EXPECT_EQ(timeLineColour(0), lightRed);
    EXPECT_EQ(timeLineColour(0x0000FF), lightRed);
    EXPECT_EQ(timeLineColour(12), 0x000080U);
    RecordingSurface trend;
    drawTimeLine(trend, 1, 12);
    drawAverageStart(trend, 1, 12);
    drawAverage(trend, 1, 2, 12);
    for (const SurfaceOperation& line : trend.ofKind(Kind::line)) EXPECT_EQ(line.colour, 0x80U);
    EXPECT_EQ(trend.ofKind(Kind::text)[0].colour, 0x80U);
}

TEST(Transient, ADragBeginsWithADottedLine) {
    RecordingSurface trend;
    trend.setAutoRedraw(true);
    drawAverageStart(trend, 300.25F, 0);
    ASSERT_EQ(trend.operations().size(), 2U);
    EXPECT_EQ(trend.operations()[0].kind, Kind::refresh);
    expectLine(trend.operations()[1], 300.25F, 1100, 300.25F, 0, 2);
    EXPECT_EQ(trend.drawStyle(), 0);
}

TEST(Transient, ADragEndsWithACrossItsEdgeAndTheWord) {
    RecordingSurface trend;
    trend.setAutoRedraw(true);
    drawAverage(trend, 700, 100, 0);
    const auto& all = trend.operations();
    ASSERT_EQ(all.size(), 4U); // what the drag began with stays
    expectLine(all[0], 700, 1100, 100, 0, 2);
    expectLine(all[1], 700, 0, 100, 1100, 2);
    expectLine(all[2], 100, 1100, 100, 0, 2);
    EXPECT_EQ(all[3].kind, Kind::text);
    EXPECT_EQ(all[3].text, "AVERAGE");
    EXPECT_EQ(all[3].x1, 263);
    EXPECT_EQ(all[3].y1, 600);
    EXPECT_EQ(all[3].fontSize, 25);
    EXPECT_EQ(all[3].colour, lightRed);
    EXPECT_FALSE(all[3].kept);
    EXPECT_EQ(trend.drawStyle(), 0);
    trend.print("x");
    EXPECT_EQ(trend.operations().back().fontSize, 7);
}

TEST(Transient, TheReferenceLineLiesBelowTheTimeLine) {
    RecordingSurface trend;
    drawTimeLine(trend, 311, 0, {250, {}});
    const auto lines = trend.ofKind(Kind::line);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0].x1, 250);
    EXPECT_EQ(lines[0].y1, 1100);
    EXPECT_EQ(lines[0].x2, 250);
    EXPECT_EQ(lines[0].y2, 0);
    EXPECT_EQ(lines[0].drawStyle, 1);
    EXPECT_EQ(lines[0].colour, platform::white);
    EXPECT_FALSE(lines[0].kept);
    expectLine(lines[1], 311, 1100, 311, 0, 4);
    EXPECT_EQ(trend.currentX(), 311);
}

TEST(Transient, TheReferenceLineStaysWhileAnAverageBegins) {
    RecordingSurface trend;
    drawAverageStart(trend, 300, 0, {250, {}});
    const auto lines = trend.ofKind(Kind::line);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0].x1, 250);
    expectLine(lines[1], 300, 1100, 300, 0, 2);
}

TEST(Transient, TheReferenceLineIsSeenOnEveryBackground) {
    EXPECT_EQ(referenceColour(0), platform::white);
    EXPECT_EQ(referenceColour(0xFFFFFF), platform::black);
    EXPECT_EQ(referenceColour(0xC0C0C0), platform::black);
    EXPECT_EQ(referenceColour(0x7F7F7F), platform::white);
    EXPECT_EQ(referenceColour(0x808080), platform::black);
    EXPECT_EQ(referenceColour(0x00FF00), platform::black); // green is light
    EXPECT_EQ(referenceColour(0xFF0000), platform::white); // blue is dark
    EXPECT_EQ(referenceColour(0x0000FF), platform::white); // and so is red
}

TEST(Transient, ADottedLineStandsWhereAnAverageBegins) {
    RecordingSurface trend;
    drawTimeLine(trend, 311, 0, {250, 280});
    const auto lines = trend.ofKind(Kind::line);
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0].x1, 250);
    expectLine(lines[1], 280, 1100, 280, 0, 2);
    expectLine(lines[2], 311, 1100, 311, 0, 4);
    EXPECT_EQ(trend.drawStyle(), 0);
}
