#include "setup/sensor_models.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <set>
#include <string>

namespace kvo::setup {
namespace {

TEST(SensorModels, AreTheTwentyThreeOfTheList) {
    ASSERT_EQ(sensorModels().size(), 23U);
    EXPECT_EQ(sensorModelAt(0)->text, "None Selected");
    EXPECT_EQ(sensorModelAt(0)->atFiveVolts, 255) << "a unit a count";
    EXPECT_EQ(sensorModelAt(8)->text, "HS0005  0-5 psi");
    EXPECT_EQ(sensorModelAt(16)->text, "kvo 0015  0-15 psi");
    EXPECT_EQ(sensorModelAt(22)->text, "kvo 2000  0-2000 psi");
    EXPECT_EQ(sensorModelAt(22)->atFiveVolts, 2000);
    std::set<std::string_view> texts;
    for (const SensorModel& model : sensorModels()) texts.insert(model.text);
    EXPECT_EQ(texts.size(), 23U);
}

// The range stands in the text: "HS0150  0-150 psi".
TEST(SensorModels, ReadAQuarterMoreUnlessTheyUseAllFiveVolts) {
    for (const SensorModel& model : sensorModels().subspan(1)) {
        const std::string text(model.text);
        const double range = std::atof(text.substr(text.find("  0-") + 4).c_str());
        const bool wholeInput = text.starts_with("kvo ");
        EXPECT_GT(range, 0) << text;
        EXPECT_DOUBLE_EQ(model.atFiveVolts, range * (wholeInput ? 1 : 1.25)) << text;
    }
}

TEST(SensorModels, NoneWithoutASelection) {
    EXPECT_EQ(sensorModelAt(-1), nullptr);
    EXPECT_EQ(sensorModelAt(23), nullptr);
    EXPECT_EQ(sensorModelAt(255), nullptr);
}

} // namespace
} // namespace kvo::setup
