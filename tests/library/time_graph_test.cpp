#include "library/time_graph.h"

#include "tests/support/memory_files.h"
#include "tests/support/recording_surface.h"

#include <gtest/gtest.h>

#include <limits>

namespace kvo::library {
namespace {

using core::RunTimesTable;
using core::TimedRun;
using testing::RecordingSurface;
using testing::SurfaceOperation;
using Kind = SurfaceOperation::Kind;

RunTimesTable tableOf(int runs) {
    RunTimesTable table;
    table.RunTimesCount = runs + 1;
    for (int i = 1; i <= runs; ++i) {
        table.entries[i] = {20111500 + i, " 15 Nov 2026 Run: " + std::to_string(i) + " ", 101, 299,
            450, 583, static_cast<std::int16_t>(690 + i)};
    }
    return table;
}

TEST(TimeGraph, anEmptyTableHasNoRows) {
    EXPECT_TRUE(timedRows(tableOf(0)).empty());
    EXPECT_TRUE(timedRows({}).empty());
}

TEST(TimeGraph, aRowTellsItsTimes) {
    const auto rows = timedRows(tableOf(1));
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows[0].row, 1);
    EXPECT_EQ(rows[0].label, "15 Nov 2026 Run: 1");
    EXPECT_EQ(rows[0].toolTip, "60 Time:1.01         330 Time:2.99          660 Time:4.5          "
                               "1000 Time:5.83           ET:6.91");
    ASSERT_EQ(rows[0].marks.size(), 5U);
    EXPECT_EQ(rows[0].marks[0].colour, 13);
    EXPECT_EQ(rows[0].marks[4].time, 691);
}

TEST(TimeGraph, aTimeOfZeroHasNoMark) {
    RunTimesTable table = tableOf(1);
    table.entries[1].Time60 = 0;
    const auto rows = timedRows(table);
    ASSERT_EQ(rows[0].marks.size(), 4U);
    EXPECT_EQ(rows[0].marks[0].time, 299);
    EXPECT_TRUE(rows[0].toolTip.starts_with("60 Time:0  "));
}

TEST(TimeGraph, aFullTableUsesEveryLabelAndLeavesNoneOver) {
    EXPECT_EQ(timedRows(tableOf(25)).size(), 25U);
    EXPECT_EQ(timedRows(tableOf(25)).back().row, 25);
}

TEST(TimeGraph, rulesSecondsAndMarksAreDrawnInTheirOrder) {
    RecordingSurface surface;
    drawTimeGraph(surface, timedRows(tableOf(2)));
    const auto lines = surface.ofKind(Kind::line);
    ASSERT_EQ(lines.size(), 25U + 19U + 10U);
    EXPECT_EQ(lines[0].y1, 1);
    EXPECT_EQ(lines[0].x2, 1900);
    EXPECT_EQ(lines[24].y2, 25);
    EXPECT_EQ(lines[25].x1, 100);
    EXPECT_EQ(lines[25].y1, 1);
    EXPECT_EQ(lines[25].y2, 31);
    EXPECT_EQ(lines[43].x2, 1900);
    // The elapsed time of the first run, in light blue, in its row.
    EXPECT_EQ(lines[48].x1, 691);
    EXPECT_EQ(lines[48].y1, 1);
    EXPECT_EQ(lines[48].x2, 691);
    EXPECT_EQ(lines[48].y2, 2);
    EXPECT_EQ(lines[48].colour, 0xFF0000U);
    EXPECT_EQ(lines[48].drawWidth, 3);
    EXPECT_EQ(lines[43].drawWidth, 1);
    EXPECT_EQ(surface.drawWidth(), 1);
    EXPECT_EQ(lines[49].colour, 0xFF00FFU);
    EXPECT_EQ(lines[49].y1, 2);
    const auto texts = surface.ofKind(Kind::text);
    ASSERT_EQ(texts.size(), 19U);
    EXPECT_EQ(texts[0].text, " 1");
    EXPECT_EQ(texts[0].x1, 90);
    EXPECT_EQ(texts[0].y1, 0);
    EXPECT_EQ(texts[18].text, " 19");
    for (const auto& operation : surface.operations()) EXPECT_TRUE(operation.kept);
}

TEST(TimeGraph, theLineLiesOnTopOfTheKeptPicture) {
    RecordingSurface surface;
    GraphLine(surface, 1900);
    ASSERT_EQ(surface.operations().size(), 2U);
    EXPECT_EQ(surface.operations()[0].kind, Kind::refresh);
    const SurfaceOperation& line = surface.operations()[1];
    EXPECT_FALSE(line.kept);
    EXPECT_EQ(line.x1, 1900);
    EXPECT_EQ(line.y1, 0);
    EXPECT_EQ(line.y2, 31);
    EXPECT_EQ(line.drawStyle, 4);
    EXPECT_EQ(line.colour, 0x008080U);
    EXPECT_EQ(surface.drawStyle(), 0);
    EXPECT_EQ(timeOfLine(0), "0.00");
    EXPECT_EQ(timeOfLine(1234), "12.34");
}

TEST(TimeGraph, keysMoveTheLineInsideTheAxis) {
    EXPECT_EQ(movedLine(500, true, false, false, false), 501);
    EXPECT_EQ(movedLine(500, false, false, false, true), 490);
    EXPECT_EQ(movedLine(500, true, false, true, false), 550);
    EXPECT_EQ(movedLine(500, false, true, false, false), 400);
    EXPECT_EQ(movedLine(0, false, false, false, false), std::nullopt);
    EXPECT_EQ(movedLine(1850, true, false, true, false), 1900);
    EXPECT_EQ(movedLine(1851, true, false, true, false), std::nullopt);
}

TEST(TimeGraph, ofSeveralModifiersShiftComesFirstThenCtrl) {
    EXPECT_EQ(movedLine(500, true, true, true, true), 600);
    EXPECT_EQ(movedLine(500, true, false, true, true), 550);
}

TEST(TimeGraph, aPositionBesideTheAxisIsNone) {
    EXPECT_EQ(lineAt(0), 0);
    EXPECT_EQ(lineAt(1900), 1900);
    EXPECT_EQ(lineAt(12.6), 13);
    EXPECT_EQ(lineAt(-0.1), std::nullopt);
    EXPECT_EQ(lineAt(1900.1), std::nullopt);
    EXPECT_EQ(lineAt(std::numeric_limits<double>::quiet_NaN()), std::nullopt);
}

TEST(TimeGraph, theMarksUnderTheLineAreTold) {
    const auto rows = timedRows(tableOf(2));
    EXPECT_EQ(marksAt(rows, 691, 0), "ET 6.91: 15 Nov 2026 Run: 1");
    EXPECT_EQ(marksAt(rows, 691, 1), "ET 6.91: 15 Nov 2026 Run: 1    ET 6.92: 15 Nov 2026 Run: 2");
    EXPECT_EQ(marksAt(rows, 200, 5), "");
}

TEST(TimeGraph, theLastLabelOpensNoRun) {
    EXPECT_TRUE(opensRun(tableOf(2), 1));
    EXPECT_FALSE(opensRun(tableOf(2), 2));
    EXPECT_FALSE(opensRun(tableOf(0), 0));
}

TEST(TimeGraph, aRowStandsForTheOneRunOfItsDateAndNumber) {
    const std::vector<core::RunIndexEntry> index{{"26111514.52d", "Sun 15 Nov 2026 Run: 1 First"},
        {"26111515.10d", "Sun 15 Nov 2026 Run: 2 Second"},
        {"26111515.40d", "Sun 15 Nov 2026 Run: 3 Third"},
        {"27111515.40d", "Mon 15 Nov 2027 Run: 3 a year later"}};
    const auto fileOf = [&](const char* description) {
        TimedRun run;
        run.Key = core::RunDateKey(description);
        return fileOfTimedRun(run, index);
    };
    EXPECT_EQ(fileOf("Sun 15 Nov 2026 Run: 2"), "26111515.10d");
    EXPECT_EQ(fileOf("Sun 15 Nov 2026 Run: 4"), std::nullopt);
    // The key does not tell the years of a century apart.
    EXPECT_EQ(fileOf("Sun 15 Nov 2026 Run: 3"), std::nullopt);
}

TEST(TimeGraph, theMarkUnderThePointerIsThatOfItsRowAlone) {
    const auto rows = timedRows(tableOf(2));
    EXPECT_EQ(markUnder(rows, 450.4, 1.5, 3), "660 foot 4.50: 15 Nov 2026 Run: 1");
    EXPECT_EQ(markUnder(rows, 452, 2.99, 3), "660 foot 4.50: 15 Nov 2026 Run: 2");
    EXPECT_EQ(markUnder(rows, 454, 1.5, 3), "");
    EXPECT_EQ(markUnder(rows, 450, 0.99, 3), "");
    EXPECT_EQ(markUnder(rows, 450, 3, 3), "");
    EXPECT_EQ(markUnder(rows, 1950, 1.5, 3), "");
}

TEST(TimeGraph, aTimedRunIsChosenInTheListOfRuns) {
    testing::MemoryFiles files;
    const std::vector<core::RunIndexEntry> index{{"26111514.52d", "Sun 15 Nov 2026 Run: 1 First"},
        {"26111515.10d", "Sun 15 Nov 2026 Run: 2 Second"},
        {"26111515.30d", "Sun 15 Nov 2026 Run: 3"}, {"26111515.40d", "Sun 15 Nov 2026 Run: 3"}};
    ASSERT_TRUE(core::writeRunIndex("/kvo", index, files));
    RunList runs;
    TimedRun run;
    run.Key = core::RunDateKey("Sun 15 Nov 2026 Run: 2");
    const auto chosen = chooseTimedRun(run, runs, "/kvo", files);
    ASSERT_TRUE(chosen);
    EXPECT_EQ(chosen->path, "/kvo/Data/26111515.10d");
    EXPECT_EQ(runs.chosenRow(), 1);
    // It is the run that the chooser opens on from now on.
    runs.choose(-1);
    runs.read("/kvo", files);
    EXPECT_EQ(runs.chosenRow(), 1);
    for (const char* unknown : {"Sun 15 Nov 2026 Run: 3", "Sun 15 Nov 2026 Run: 4"}) {
        run.Key = core::RunDateKey(unknown);
        EXPECT_FALSE(chooseTimedRun(run, runs, "/kvo", files)) << unknown;
        EXPECT_EQ(runs.chosenRow(), 1) << unknown;
    }
}

TEST(TimeGraphOnPaper, SaysWhatItIsAndWhen) {
    EXPECT_EQ(printedHeading({2026, 11, 15, 14, 42, 0}),
        "Times of the newest runs, printed on Sun 15 Nov 2026");
}

} // namespace
} // namespace kvo::library
