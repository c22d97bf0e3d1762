#include "channels/run_view.h"

#include <gtest/gtest.h>

#include <memory>

namespace kvo::channels {
namespace {

// A run of a type with so many samples and a time zero; every row bears its number.
std::unique_ptr<core::OpenRun> runOf(int type, int samples, int timeOffset, const char* path) {
    auto run = std::make_unique<core::OpenRun>();
    run->path = path;
    run->DataType = static_cast<std::uint8_t>(type);
    run->SampleCount = static_cast<std::uint16_t>(samples);
    run->image.header.CrankGearTeeth = static_cast<std::uint8_t>(type);
    run->image.tail.TimeOffset = static_cast<std::int16_t>(timeOffset);
    for (int i = 1; i <= core::maxSamples; ++i)
        run->image.samples[i].Index = static_cast<std::int16_t>(i);
    return run;
}

TEST(RunView, OfTheRunTakesAllFromTheRun) {
    const auto run = runOf(25, 1213, 80, "/kvo/Data/26111514.52d");
    const RunView view = viewOfRun(*run);
    EXPECT_EQ(view.image, &run->image);
    EXPECT_EQ(view.slipDrive, &run->image.header);
    EXPECT_EQ(&view.ownDrive(), &run->image.header);
    EXPECT_EQ(view.drawType, 25);
    EXPECT_EQ(view.labelType, 25);
    EXPECT_EQ(view.rows, 1213);
    EXPECT_EQ(view.shift, 0);
    EXPECT_FALSE(view.overlay);
    EXPECT_EQ(view.fileName, "26111514.52d");
}

TEST(RunView, OfTheOverlayMixesBothOnPurpose) {
    const auto run = runOf(20, 2048, 160, "/kvo/Data/26111514.52d");
    const auto overlay = runOf(25, 1213, 80, "/kvo/Data/26111515.10d");
    const RunView view = viewOfOverlay(*run, *overlay);
    EXPECT_EQ(view.image, &overlay->image);
    EXPECT_EQ(view.slipDrive, &run->image.header) << "slip and ratio keep the run's drive";
    EXPECT_EQ(&view.ownDrive(), &overlay->image.header);
    EXPECT_EQ(view.drawType, 20) << "the run's type says how exhausts are drawn";
    EXPECT_EQ(view.labelType, 25) << "the overlay's type which channels there are";
    EXPECT_TRUE(view.overlay);
    EXPECT_EQ(view.fileName, "26111515.10d");
}

TEST(RunView, TheOverlayIsShiftedToTheTimeZeroOfTheRun) {
    const auto run = runOf(8, 2520, 160, "a");
    for (const int offset : {1, 60, 160, 260, 2000}) {
        const auto overlay = runOf(8, 2520, offset, "b");
        EXPECT_EQ(viewOfOverlay(*run, *overlay).shift, offset - 160);
    }
}

struct Counts {
    int run;
    int overlay;
    int rows;
};

TEST(RunView, TheOverlayEndsWithTheShorterOfBoth) {
    const Counts cases[] = {{1213, 1213, 1213}, {1213, 2520, 1213}, // longer: cut off
        {2520, 1213, 1213},                     // shorter: no row behind its own last one
        {1724, 1725, 1724}, {2520, 1725, 1725}, // type 17 has a row more as the overlay
        {1360, 1860, 1360}, {2520, 1860, 1860}, // types 32 and 43 have 500 more
        {2441, 2520, 2441},                     // a run that was just downloaded shows fewer
        {0, 1213, 0}};
    for (const Counts& counts : cases) {
        const auto run = runOf(8, counts.run, 160, "a");
        const auto overlay = runOf(8, counts.overlay, 160, "b");
        EXPECT_EQ(viewOfRun(*run).rows, counts.run);
        EXPECT_EQ(viewOfOverlay(*run, *overlay).rows, counts.rows)
            << counts.run << " and " << counts.overlay;
    }
}

TEST(RunView, HasItsRowsAndNoOther) {
    const auto run = runOf(25, 1213, 80, "a");
    const RunView view = viewOfRun(*run);
    EXPECT_TRUE(view.has(1));
    EXPECT_TRUE(view.has(1213));
    for (const int sample : {-1, 0, 1214, 2520, 65535}) EXPECT_FALSE(view.has(sample)) << sample;
    EXPECT_EQ(view.row(1).Index, 1);
    EXPECT_EQ(view.row(1213).Index, 1213);
    EXPECT_EQ(view.row(0), core::RunSample{});
    EXPECT_EQ(view.row(core::maxSamples + 1), core::RunSample{});
}

TEST(ShownRuns, HaveAnOverlayOnlyWhereThereIsOne) {
    const auto run = runOf(25, 1213, 80, "a");
    const auto overlay = runOf(20, 2048, 160, "b");
    const ShownRuns alone = shownRuns(*run, nullptr);
    EXPECT_EQ(alone.run.image, &run->image);
    EXPECT_FALSE(alone.overlay);
    const ShownRuns both = shownRuns(*run, overlay.get());
    EXPECT_EQ(both.run.image, &run->image);
    ASSERT_TRUE(both.overlay);
    EXPECT_EQ(both.overlay->image, &overlay->image);
    EXPECT_EQ(both.overlay->shift, 80);
    EXPECT_EQ(both.overlay->rows, 1213);
}

} // namespace
} // namespace kvo::channels
