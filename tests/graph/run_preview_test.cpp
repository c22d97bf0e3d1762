#include "graph/run_preview.h"

#include "channels/channels.h"
#include "core/default_config.h"
#include "core/run_file.h"
#include "tests/support/memory_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

using namespace kvo;
using namespace kvo::channels;
using kvo::testing::MemoryFiles;

namespace {

constexpr const char* previewedRun = "/kvo/Data/26111514.52d";

struct RunPreviewTest : ::testing::Test {
    RunPreviewTest() {
        config.GraphBackColour = 0xFFFFFF;
        config.EngineColour = 0x0000FF; // red
        for (int channel = 0; channel < channelCount; ++channel) visibleFlag(config, channel) = 0;
        visibleFlag(config, engineChannel) = -1;
        put(25);
    }
    void put(int type) {
        const auto run = std::make_unique<core::OpenRun>();
        run->path = previewedRun;
        run->DataType = static_cast<std::uint8_t>(type);
        run->SampleCount = 1213;
        run->image.header.CrankGearTeeth = 1;
        run->image.header.BasketGearTeeth = 1;
        for (int i = 1; i <= 1213; ++i) {
            run->image.samples[i].EngineRpm = 6000;
            run->image.samples[i].InputRpm = 3000;
        }
        const core::LoggerIdentity logger{25, 4, 2, 7};
        const std::string text = " Date:Sun 15 Nov 2026 Run: 1 #";
        ASSERT_TRUE(core::SaveRun(*run, {logger, text, config}, "/kvo", files));
    }
    core::RunPicture preview(int widthPx = 200, int heightPx = 100) const {
        return graph::runPreview(previewedRun, widthPx, heightPx, config, files);
    }
    static std::ptrdiff_t count(const core::RunPicture& picture, std::uint32_t rgb) {
        return std::count(picture.pixels.begin(), picture.pixels.end(), rgb);
    }
    MemoryFiles files;
    core::AppConfig config = core::defaultConfig();
};

constexpr std::uint32_t red = 0xFFFF0000;
constexpr std::uint32_t white = 0xFFFFFFFF;

} // namespace

TEST_F(RunPreviewTest, DrawsTheCurvesOverTheWholeWidth) {
    const core::RunPicture picture = preview();
    EXPECT_EQ(picture.problem, "");
    EXPECT_EQ(picture.widthPx, 200);
    EXPECT_EQ(picture.heightPx, 100);
    ASSERT_EQ(picture.pixels.size(), 20000U);
    EXPECT_GT(count(picture, white), 10000);
    // Of every column but the first ones, where the curve rises from its origin, and the last.
    EXPECT_GE(count(picture, red), 195);
    const auto last = picture.pixels.begin() + 198;
    bool atTheRight = false;
    for (int y = 0; y < 100; ++y) atTheRight = atTheRight || *(last + 200 * y) == red;
    EXPECT_TRUE(atTheRight);
}

TEST_F(RunPreviewTest, HasTheChannelsAndColoursOfTheConfiguration) {
    config.EngineColour = 0x00FF00;
    EXPECT_EQ(count(preview(), red), 0);
    EXPECT_GT(count(preview(), 0xFF00FF00), 0);
    config.GraphBackColour = 0;
    EXPECT_GT(count(preview(), 0xFF000000), 10000);
    visibleFlag(config, engineChannel) = 0;
    EXPECT_EQ(count(preview(), 0xFF00FF00), 0);
}

// A colour that is the ground's own is put right in the picture alone.
TEST_F(RunPreviewTest, LeavesTheConfigurationAndTheFilesAsTheyAre) {
    config.EngineColour = config.GraphBackColour;
    config.G_Res = 0;
    const int written = files.writes();
    const core::RunPicture picture = preview();
    EXPECT_LT(count(picture, white), 20000);
    EXPECT_EQ(config.EngineColour, config.GraphBackColour);
    EXPECT_EQ(config.G_Res, 0);
    EXPECT_EQ(files.writes(), written);
    EXPECT_FALSE(files.exists("/kvo/Data/26111514.52i"));
}

// A car has no clutch.
TEST_F(RunPreviewTest, ShowsTheClutchWhereTheVehicleHasOne) {
    visibleFlag(config, engineChannel) = 0;
    visibleFlag(config, clutchChannel) = -1;
    config.ClutchColour = 0x0000FF;
    config.Vehicle_Type = 1;
    EXPECT_EQ(count(preview(), red), 0);
    config.Vehicle_Type = 2;
    EXPECT_GT(count(preview(), red), 0);
}

TEST_F(RunPreviewTest, StandsAtAnySize) {
    EXPECT_EQ(preview(1, 1).pixels.size(), 1U);
    EXPECT_EQ(preview(3, 500).pixels.size(), 1500U);
}

TEST_F(RunPreviewTest, SaysWhyThereIsNoPicture) {
    const auto problemOf = [&](const platform::Bytes& file) {
        files.put(previewedRun, file);
        const core::RunPicture picture = preview();
        EXPECT_TRUE(picture.pixels.empty());
        return picture.problem;
    };
    const char* damaged = "The file of this run is damaged, or it is no run.";
    EXPECT_EQ(problemOf({}), damaged);
    EXPECT_EQ(problemOf({1, 2, 3}), damaged);
    EXPECT_EQ(graph::runPreview("/none", 9, 9, config, files).problem,
        "The file of this run cannot be read.");
    EXPECT_EQ(
        graph::runPreview("", 9, 9, config, files).problem, "The file of this run cannot be read.");
    files.failReads(previewedRun, MemoryFiles::Failure::noMemory);
    EXPECT_EQ(preview().problem, "There is not enough memory.");
}

// The rows that it has are drawn.
TEST_F(RunPreviewTest, DrawsARunThatIsCutShort) {
    auto file = *files.read(previewedRun);
    file.resize(file.size() / 2);
    files.put(previewedRun, file);
    EXPECT_EQ(preview().problem, "");
    EXPECT_GT(count(preview(), red), 0);
}
