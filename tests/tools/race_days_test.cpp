// The runs to look at before the first download, on the configuration of a new installation.
#include "tools/make_runs/race_days.h"

#include "core/config.h"
#include "core/data_types.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <memory>
#include <tuple>

namespace kvo::race_days {
namespace {

core::AppConfig shippedConfig() {
    std::ifstream file(KVO_TEST_DATA "/../packaging/Kvo.Cfg", std::ios::binary);
    core::AppConfig config;
    EXPECT_TRUE(
        core::decodeConfig(platform::Bytes(std::istreambuf_iterator<char>(file), {}), config));
    return config;
}

// One run with the questions that a look at its curves answers.
class Curves {
public:
    explicit Curves(std::size_t download) : m_launch(launchOf(download)) {
        fill(*m_image, downloads().at(download));
    }
    // Of what `read` gives over a stretch of seconds from the launch.
    template <typename Read> double mean(double from, double to, Read read) const {
        double sum = 0;
        int count = 0;
        for (int i = sample(from); i < sample(to); ++i, ++count) sum += read(m_image->samples[i]);
        return sum / count;
    }
    template <typename Read> double highest(Read read) const {
        double result = 0;
        for (const core::RunSample& row : m_image->samples)
            result = std::max(result, static_cast<double>(read(row)));
        return result;
    }
    // Seconds from the launch until the input shaft falls by a fifth within a tenth of a second.
    double firstShift() const {
        for (int i = sample(0.5); i + 10 <= core::maxSamples; ++i)
            if (m_image->samples[i + 10].InputRpm < 0.8 * m_image->samples[i].InputRpm)
                return (i - m_launch) / core::samplesPerSecond;
        return 0;
    }

private:
    static int launchOf(std::size_t download) {
        return core::dataTypeFacts(downloads().at(download).dataType)->timeOffset;
    }
    int sample(double seconds) const {
        return m_launch + static_cast<int>(seconds * core::samplesPerSecond);
    }
    std::unique_ptr<core::RunImage> m_image = std::make_unique<core::RunImage>();
    int m_launch;
};

int engine(const core::RunSample& row) {
    return row.EngineRpm;
}

double slipPercent(const core::RunSample& row) {
    return (row.EngineRpm - row.InputRpm) * 100.0 / row.EngineRpm;
}

TEST(RaceDays, StayBelowTheTopOfTheGraph) {
    const int top = (shippedConfig().MaxRpm + 6) * 1000;
    for (std::size_t i = 0; i < downloads().size(); ++i) {
        EXPECT_LT(Curves(i).highest(engine), top) << downloads()[i].title;
        EXPECT_GT(Curves(i).highest(engine), top / 2) << downloads()[i].title;
    }
}

TEST(RaceDays, TheFirstOverlayShowsADifference) {
    ASSERT_EQ(downloads()[0].dataType, downloads()[1].dataType);
    const Curves slipping(0);
    const Curves held(1);
    EXPECT_LT(slipping.mean(-0.3, 0, engine), held.mean(-0.3, 0, engine) - 500) << "launch rpm";
    const auto input = [](const core::RunSample& row) { return row.InputRpm; };
    EXPECT_LT(slipping.highest(input), held.highest(input) - 500) << "shift point";
    EXPECT_LT(slipping.firstShift(), held.firstShift() - 0.05);
    EXPECT_GT(slipping.firstShift(), 1);
    EXPECT_GT(slipping.mean(4.5, 6.5, slipPercent), 6);
    EXPECT_LT(held.mean(4.5, 6.5, slipPercent), 2);
    const auto speed = [](const core::RunSample& row) { return row.SpeedRaw; };
    EXPECT_LT(slipping.highest(speed), held.highest(speed) - 5 * 200);
}

TEST(RaceDays, TheOverlayIsToldFromTheRunItLiesOver) {
    constexpr int dots = 2;
    // Dashes of two curves at one height fill each other's gaps and look like one solid curve, as
    // the shafts do in the top gear.
    EXPECT_EQ(shippedConfig().OverlayStyle, dots);
}

TEST(RaceDays, AreInTheOrderOfTheirNames) {
    const auto before = [](const Download& a, const Download& b) {
        return std::tie(a.moment.month, a.moment.day, a.moment.hour, a.moment.minute) <
               std::tie(b.moment.month, b.moment.day, b.moment.hour, b.moment.minute);
    };
    EXPECT_TRUE(std::is_sorted(downloads().begin(), downloads().end(), before));
}

} // namespace
} // namespace kvo::race_days
