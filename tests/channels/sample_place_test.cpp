#include "channels/sample_place.h"

#include <gtest/gtest.h>

#include <memory>

namespace kvo::channels {
namespace {

std::unique_ptr<core::OpenRun> runOf(int samples, int timeOffset) {
    auto run = std::make_unique<core::OpenRun>();
    run->SampleCount = static_cast<std::uint16_t>(samples);
    run->image.tail.TimeOffset = static_cast<std::int16_t>(timeOffset);
    for (int i = 1; i <= core::maxSamples; ++i)
        run->image.samples[i].Index = static_cast<std::int16_t>(i);
    return run;
}

TEST(SamplePlace, OfTheRunIsItsOwnSample) {
    const auto run = runOf(1213, 80);
    const RunView view = viewOfRun(*run);
    for (const int sample : {1, 80, 1213}) {
        const auto place = placeAt(view, sample);
        ASSERT_TRUE(place) << sample;
        EXPECT_EQ(place->sample, sample);
        EXPECT_EQ(place->row().Index, sample);
        EXPECT_EQ(&place->view, &view);
    }
    for (const int sample : {-500, 0, 1214, 2520, 65535}) {
        EXPECT_FALSE(placeAt(view, sample)) << sample;
    }
}

// The run's samples at which the overlay has one, and the overlay's own first and last of them.
struct Reach {
    int runRows;
    int runZero;
    int overlayRows;
    int overlayZero;
    int first;
    int ownFirst;
    int last;
    int ownLast;
};

TEST(SamplePlace, OfTheOverlayIsTheSampleOfTheSameTime) {
    const Reach cases[] = {{1213, 80, 1213, 80, 1, 1, 1213, 1213}, // alike
        {2520, 160, 2520, 260, -99, 1, 2420, 2520}, // time zero later: moved to the left
        {2520, 160, 2520, 60, 101, 1, 2620, 2520},  // earlier: to the right
        {1213, 80, 2520, 160, -79, 1, 1133, 1213},  // longer: cut off at the run's count
        {2520, 160, 1213, 80, 81, 1, 1293, 1213},   // shorter: ends with its own last row
        {2520, 160, 1725, 160, 1, 1, 1725, 1725},   // type 17, a row more
        {1724, 160, 1725, 160, 1, 1, 1724, 1724},   // over a run of its own type
        {2520, 160, 1860, 160, 1, 1, 1860, 1860},   // type 32, 500 rows more
        {1360, 160, 1860, 170, -9, 1, 1350, 1360}}; // over a run of its own type
    for (const Reach& reach : cases) {
        const auto run = runOf(reach.runRows, reach.runZero);
        const auto overlay = runOf(reach.overlayRows, reach.overlayZero);
        const RunView view = viewOfOverlay(*run, *overlay);
        SCOPED_TRACE(reach.first);
        EXPECT_FALSE(placeAt(view, reach.first - 1)) << "nothing before its first row";
        ASSERT_TRUE(placeAt(view, reach.first));
        EXPECT_EQ(placeAt(view, reach.first)->sample, reach.ownFirst);
        EXPECT_EQ(placeAt(view, reach.first)->row().Index, reach.ownFirst);
        ASSERT_TRUE(placeAt(view, reach.last));
        EXPECT_EQ(placeAt(view, reach.last)->sample, reach.ownLast);
        EXPECT_EQ(placeAt(view, reach.last)->row().Index, reach.ownLast);
        EXPECT_FALSE(placeAt(view, reach.last + 1)) << "nothing behind its last row";
    }
}

TEST(SamplePlace, TimeZerosMeet) {
    const auto run = runOf(2520, 160);
    const auto overlay = runOf(1213, 80);
    EXPECT_EQ(placeAt(viewOfOverlay(*run, *overlay), 160)->sample, 80);
}

TEST(SamplePlace, OfNoOverlayIsNone) {
    const std::optional<RunView> none;
    EXPECT_FALSE(placeAt(none, 100));
    const auto run = runOf(1213, 80);
    const std::optional<RunView> one = viewOfRun(*run);
    ASSERT_TRUE(placeAt(one, 100));
    EXPECT_EQ(placeAt(one, 100)->sample, 100);
    EXPECT_FALSE(placeAt(one, 1214));
}

TEST(SharedExhaust, IsNamedByThreeBitsOfTheStatus) {
    core::RunSample row;
    for (int status = 0; status <= 255; ++status) {
        row.Status = static_cast<std::uint8_t>(status);
        EXPECT_EQ(sharedExhaust(row), status % 128 / 16 + 1) << status;
    }
}

} // namespace
} // namespace kvo::channels
