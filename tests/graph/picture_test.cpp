// Whole pictures of runs against the plain rule of lines and boxes, pixel for pixel: every data
// type, several sizes and steps, overlays in all styles, recorded-looking data and wild data, the
// surface as a whole and any part of it.
#include "core/data_types.h"
#include "graph/drawing.h"
#include "tests/support/graph_calls.h"
#include "tests/support/plain_raster.h"
#include "tests/support/recording_surface.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <memory>
#include <random>

using namespace kvo;
using namespace kvo::channels;
using namespace kvo::graph;
using kvo::testing::BoxText;
using kvo::testing::PlainImage;
using kvo::testing::PlainSurface;
using platform::SurfaceSize;

namespace {

class Host : public kvo::testing::RecordingHost {
public:
    explicit Host(platform::Surface& shownOn) : m_shownOn(shownOn) {}
    platform::Surface& trend() override { return m_shownOn; }

private:
    platform::Surface& m_shownOn;
};

struct PictureCase {
    int type = 32;
    int overlayType = 0; // 0: none
    int step = 1;
    int overlayStyle = 0;
    bool smooth = false;
    bool wild = false;
    SurfaceSize size;
    unsigned seed = 1;
};

// A curve that rises and falls as rpm do, with a little noise; or any words at all.
core::RunSample sampleAt(int i, const PictureCase& what, std::mt19937& random) {
    const auto any = [&](int low, int high) {
        return std::uniform_int_distribution<int>(low, high)(random);
    };
    core::RunSample row;
    row.Status = static_cast<std::uint8_t>(any(0, 255));
    const int rpm = what.wild ? any(-32768, 32767)
                              : 5000 + i * 37 % 3000 + any(-90, 90) +
                                    static_cast<int>(400 * std::sin(i * 0.05));
    row.EngineRpm = static_cast<std::int16_t>(rpm);
    row.InputRpm = static_cast<std::int16_t>(what.wild ? any(-32768, 32767) : rpm - any(0, 800));
    row.OutputRpm = static_cast<std::int16_t>(what.wild ? any(-9, 9) : i * 3 + any(-40, 40));
    row.SpeedRaw = what.wild ? any(-2000000000, 2000000000) : i * 15 + any(-30, 30);
    for (int n = 1; n <= 8; ++n) {
        row.Analog[n] = static_cast<std::uint8_t>(what.wild ? any(0, 255) : 100 + any(0, 9) * n);
        row.Exhaust[n] = static_cast<std::uint8_t>(what.wild ? any(0, 255) : i / 12 + any(0, n));
    }
    return row;
}

void fill(core::RunImage& image, int rows, int timeOffset, const PictureCase& what, unsigned seed) {
    std::mt19937 random(seed);
    image.header.CrankGearTeeth = 31;
    image.header.BasketGearTeeth = what.wild && seed % 4 == 0 ? 0 : 47;
    image.analog.PinionTeeth = what.wild && seed % 3 == 0 ? 0.0F : 10.0F;
    image.analog.CrownTeeth = 41;
    image.analog.RearWheelDiameter = what.wild ? 1e30F : 33.0F;
    image.tail.TimeOffset = static_cast<std::int16_t>(timeOffset);
    for (int n = 1; n <= 8; ++n) image.tail.AnalogTypes[n] = static_cast<std::uint8_t>(n % 5);
    for (int i = 1; i <= rows; ++i) image.samples[i] = sampleAt(i, what, random);
}

std::unique_ptr<core::SharedState> stateOf(const PictureCase& what) {
    auto state = std::make_unique<core::SharedState>();
    const int rows = std::max(1213, core::dataTypeFacts(what.type)->rows);
    state->Run.DataType = static_cast<std::uint8_t>(what.type);
    state->Run.SampleCount = static_cast<std::uint16_t>(rows);
    state->Run.PeakSpeedRaw = 25000;
    core::AppConfig& config = state->Config;
    config.G_Res = static_cast<std::uint8_t>(what.step);
    config.MaxRpm = what.wild ? static_cast<std::uint8_t>(what.seed % 12) : 4;
    config.GridStyle = static_cast<std::uint8_t>(what.seed % 5);
    config.OverlayStyle = static_cast<std::uint8_t>(what.overlayStyle);
    config.SmoothOption.fill(what.smooth ? 1 : 0);
    for (int channel = 0; channel < channelCount; ++channel) {
        visibleFlag(config, channel) = -1;
        colourField(config, channel) = 0x404040 + channel * 0x070503;
    }
    fill(state->Run.image, rows, 160, what, what.seed);
    if (what.overlayType == 0) return state;
    fill(state->Overlay.image, rows, what.seed % 2 == 0 ? 90 : 260, what, what.seed + 100);
    state->Overlay.DataType = static_cast<std::uint8_t>(what.overlayType);
    state->Overlay.SampleCount = static_cast<std::uint16_t>(rows - 100);
    return state;
}

void draw(const PictureCase& what, platform::Surface& surface) {
    const auto state = stateOf(what);
    Host host(surface);
    GraphView view;
    view.OverlayLoaded = what.overlayType != 0 ? -1 : 0;
    TrendDrawing drawing = kvo::testing::drawingOf(*state, view, host);
    surface.setScale(0, trendTop, static_cast<float>(state->Run.SampleCount + 1), 0);
    ASSERT_TRUE(drawing.DrawTrend());
    if (what.overlayType != 0) drawing.OverLayDraw();
}

std::size_t differences(const PlainImage& part, const PlainImage& whole) {
    std::size_t count = 0;
    for (int y = part.area().top; y < part.area().bottom; ++y) {
        for (int x = part.area().left; x < part.area().right; ++x)
            count += part.at(x, y) != whole.at(x, y) ? 1 : 0;
    }
    return count;
}

void compare(const PictureCase& what) {
    SCOPED_TRACE("type " + std::to_string(what.type) + ", overlay " +
                 std::to_string(what.overlayType) + ", seed " + std::to_string(what.seed));
    platform::DisplayListSurface kept;
    kept.setHeightPx(what.size.heightPx / what.size.linePx);
    draw(what, kept);
    PlainSurface plain(what.size);
    draw(what, plain);
    EXPECT_GT(differences(plain.image(), PlainImage({0, 0, 1, 1})), 1000U);
    std::mt19937 random(what.seed);
    const platform::PixelRect whole{0, 0, what.size.widthPx, what.size.heightPx};
    for (int part = 0; part < 4; ++part) {
        const int left = static_cast<int>(random() % static_cast<unsigned>(whole.right));
        const int top = static_cast<int>(random() % static_cast<unsigned>(whole.bottom));
        PlainImage ours(part == 0 ? whole : intersection(whole, {left, top, left + 40, top + 300}));
        platform::Raster raster = ours.raster();
        BoxText text(raster);
        kept.kept().paint(raster, text, what.size, 0, kept.kept().size());
        EXPECT_EQ(differences(ours, plain.image()), 0U) << "part " << part;
    }
}

constexpr std::array types{8, 12, 17, 20, 23, 25, 29, 32, 43};
constexpr std::array<SurfaceSize, 5> sizes{
    {{640, 360, 1}, {1300, 700, 1}, {97, 211, 1}, {1400, 500, 2}, {2600, 90, 1}}};
constexpr std::array steps{1, 4, 8};

} // namespace

TEST(Picture, OfEveryTypeIsThatOfThePlainRule) {
    unsigned seed = 0;
    for (const int type : types) {
        ++seed;
        compare({type, 0, steps[seed % 3], 0, seed % 2 == 0, false, sizes[seed % 5], seed});
        compare({type, 0, steps[seed % 3], 0, seed % 2 == 1, true, sizes[seed % 5], seed});
    }
}

TEST(Picture, WithAnOverlayIsThatOfThePlainRule) {
    unsigned seed = 30;
    for (const int type : types) {
        ++seed;
        const int style = static_cast<int>(seed % 5);
        compare({32, type, steps[seed % 3], style, false, seed % 3 == 0, sizes[seed % 5], seed});
    }
}

TEST(Picture, AtEverySizeAndStepIsThatOfThePlainRule) {
    unsigned seed = 60;
    for (const SurfaceSize& size : sizes) {
        for (const int step : steps) compare({32, 25, step, 1, true, false, size, ++seed});
    }
}
