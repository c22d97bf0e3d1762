// Where a sample lies in the run and in the overlay, and what its data type carries.
#include "channels/sample_place.h"

#include <gtest/gtest.h>

#include <memory>

namespace kvo::channels {
namespace {

struct SamplePlaceTest : ::testing::Test {
    SamplePlaceTest() {
        state->SampleCount = 1213;
        state->DataType = 25;
        state->OverlayDataType = 20;
        state->OverlayLoaded = -1;
        state->Run.tail.TimeOffset = 80;
        state->Overlay.tail.TimeOffset = 160;
    }
    const std::unique_ptr<core::SharedState> state = std::make_unique<core::SharedState>();
};

TEST_F(SamplePlaceTest, TheRunHasItsSamplesFromOneToTheCount) {
    for (const int sample : {1, 2, 1213}) EXPECT_TRUE(onRun(*state, sample)) << sample;
    for (const int sample : {-1, 0, 1214}) EXPECT_FALSE(onRun(*state, sample)) << sample;
}

TEST_F(SamplePlaceTest, ASampleOfTheRunIsWhereItSays) {
    const RunPlace place = runPlace(*state, 700);
    EXPECT_EQ(&place.image, &state->Run);
    EXPECT_EQ(&place.ratioDrive, &state->Run.header);
    EXPECT_EQ(place.dataType, 25);
    EXPECT_EQ(place.sampleCount, 1213);
    EXPECT_EQ(&place.row(), &state->Run.samples[700]);
    EXPECT_FALSE(place.overlay);
}

TEST_F(SamplePlaceTest, TheOverlayLiesAtTheSameTimeFromItsOwnTimeZero) {
    const auto place = overlayPlace(*state, 700);
    ASSERT_TRUE(place);
    EXPECT_EQ(&place->image, &state->Overlay);
    EXPECT_EQ(place->sample, 780);
    EXPECT_EQ(place->dataType, 20);
    EXPECT_EQ(place->sampleCount, 1213);
    EXPECT_EQ(&place->ratioDrive, &state->Run.header) << "ratios are those of the run's drive";
    EXPECT_TRUE(place->overlay);
}

TEST_F(SamplePlaceTest, TheOverlayEndsWithTheCountOfTheRun) {
    EXPECT_TRUE(overlayPlace(*state, 1133));
    EXPECT_FALSE(overlayPlace(*state, 1134));
    EXPECT_TRUE(overlayPlace(*state, -79));
    EXPECT_FALSE(overlayPlace(*state, -80));
    state->OverlayLoaded = 0;
    EXPECT_FALSE(overlayPlace(*state, 700));
}

TEST_F(SamplePlaceTest, TypesCarryWhatTheirLoggersHave) {
    for (const int type : {25, 32, 43}) EXPECT_TRUE(hasExhausts(type)) << type;
    for (const int type : {8, 12, 17, 20}) EXPECT_FALSE(hasExhausts(type)) << type;
    for (const int type : {8, 12}) EXPECT_EQ(lastAnalog(type), 4) << type;
    EXPECT_EQ(lastAnalog(20), 6);
    for (const int type : {17, 25, 32, 43}) EXPECT_EQ(lastAnalog(type), 8) << type;
}

TEST_F(SamplePlaceTest, TheStatusOfARowNamesItsSharedExhaust) {
    core::RunSample row;
    row.Status = 0x8F;
    EXPECT_EQ(sharedExhaust(row), 1);
    row.Status = 0x10;
    EXPECT_EQ(sharedExhaust(row), 2);
    row.Status = 0xF5;
    EXPECT_EQ(sharedExhaust(row), 8);
}

} // namespace
} // namespace kvo::channels
