#include "graph/rulers.h"

#include "graph/view.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace kvo;
using namespace kvo::graph;

namespace {

// Letters of 6 x 13 pixels; a surface of two frames each way, a pixel a sample and a unit.
struct RulersOfASurface : ::testing::Test {
    RulersOfASurface() {
        scales.grid.rpmScale = 10;
        scales.grid.mphScale = 5;
        scales.grid.timeOffset = 160;
        scales.grid.sampleCount = 1360;
        scales.grid.scaleWidth = 1361;
        scales.withRpm = scales.withMph = true;
        enlarge(1);
        room.widthPx = 680;
        room.heightPx = 550;
    }
    void enlarge(int times) { room.surface = {1361 * times + 1, 1100 * times + 1, 1}; }
    Rulers at(int x, int y) {
        room.scrolledTo = {x, y};
        return makeRulers(
            scales, room, {13, [](const std::string& text) { return 6 * int(text.size()); }});
    }
    static std::vector<std::string> texts(const Ruler& ruler) {
        std::vector<std::string> all;
        for (const RulerText& text : ruler.texts) all.push_back(text.text);
        return all;
    }
    platform::PixelRect placeOf(const RulerText& text) const {
        return {text.leftTop.x, text.leftTop.y,
            text.leftTop.x + 6 * static_cast<int>(text.text.size()), text.leftTop.y + 13};
    }
    // Every text lies in the ground of its ruler, and none touches another.
    void expectRoom(const Rulers& rulers) const {
        std::vector<platform::PixelRect> all;
        for (const Ruler* ruler : {&rulers.heights, &rulers.times}) {
            for (const RulerText& text : ruler->texts) {
                const platform::PixelRect place = placeOf(text);
                EXPECT_EQ(intersection(place, ruler->ground), place) << text.text;
                for (const platform::PixelRect& other : all)
                    EXPECT_TRUE(intersection(place, other).empty()) << text.text;
                all.push_back(place);
            }
        }
    }
    static std::string textOf(const Ruler& ruler, const char* has) {
        for (const RulerText& text : ruler.texts) {
            if (text.text.find(has) != std::string::npos) return text.text;
        }
        return {};
    }
    RulerScales scales;
    RulerRoom room;
};

using Texts = std::vector<std::string>;

} // namespace

TEST_F(RulersOfASurface, NoneWhereTheSurfaceShowsItsOwnNumbers) {
    const Rulers rulers = at(0, 0);
    EXPECT_TRUE(rulers.heights.ground.empty());
    EXPECT_TRUE(rulers.times.ground.empty());
    EXPECT_TRUE(rulers.heights.texts.empty());
    EXPECT_TRUE(rulers.times.texts.empty());
}

TEST_F(RulersOfASurface, EachComesAsSoonAsItsNumbersLeaveTheView) {
    EXPECT_FALSE(at(1, 0).heights.ground.empty());
    EXPECT_TRUE(at(1, 0).times.ground.empty());
    // The times stand at 1026 of 1100.
    EXPECT_TRUE(at(0, 74).times.ground.empty());
    EXPECT_FALSE(at(0, 75).times.ground.empty());
    EXPECT_TRUE(at(0, 75).heights.ground.empty());
}

TEST_F(RulersOfASurface, NoneWithoutARun) {
    scales.grid.sampleCount = 0;
    EXPECT_TRUE(at(100, 100).heights.ground.empty());
    EXPECT_TRUE(at(100, 100).times.ground.empty());
    scales.grid.sampleCount = 1360;
    scales.grid.rpmScale = 0;
    EXPECT_TRUE(at(100, 100).times.ground.empty());
    scales = {};
    EXPECT_TRUE(at(100, 100).times.ground.empty());
}

TEST_F(RulersOfASurface, RpmUnderItsLineAndMphAboveIt) {
    const Rulers rulers = at(100, 0);
    // 1000 rpm are 100 units; y from 1100 down to 550 is in view.
    EXPECT_EQ(rulers.heights.ticks, (std::vector<int>{500, 400, 300, 200, 100}));
    EXPECT_EQ(texts(rulers.heights), (Texts{"120 Mph", "6000 Rpm", "140 Mph", "7000 Rpm", "160 Mph",
                                         "8000 Rpm", "180 Mph", "9000 Rpm", "200 Mph", "Bang"}));
    const int right = rulers.heights.ground.right;
    EXPECT_EQ(right, 6 * 8 + 2 * 3);
    EXPECT_EQ(rulers.heights.texts[0], (RulerText{{right - 3 - 6 * 7, 500 - 13}, "120 Mph"}));
    EXPECT_EQ(rulers.heights.texts[1], (RulerText{{right - 3 - 6 * 8, 501}, "6000 Rpm"}));
    EXPECT_EQ(rulers.heights.ground, (platform::PixelRect{0, 0, right, 550}));
    expectRoom(rulers);
}

TEST_F(RulersOfASurface, WhatIsRaisedHasNoNumbers) {
    scales.withMph = false;
    EXPECT_EQ(textOf(at(100, 0).heights, "Mph"), "");
    EXPECT_EQ(textOf(at(100, 0).heights, "8000"), "8000 Rpm");
    scales.withMph = true;
    scales.withRpm = false;
    EXPECT_EQ(textOf(at(100, 0).heights, "Rpm"), "");
    EXPECT_EQ(textOf(at(100, 0).heights, "Bang"), "");
    EXPECT_EQ(textOf(at(100, 0).heights, "160"), "160 Mph");
    scales.withMph = false;
    EXPECT_TRUE(at(100, 0).heights.ground.empty());

    core::AppConfig config;
    EXPECT_TRUE(rulerScales(config, scales.grid).withRpm);
    EXPECT_TRUE(rulerScales(config, scales.grid).withMph);
    config.ComboScale[channels::inputChannel] = 20;
    config.ComboScale[channels::mphChannel] = 20;
    EXPECT_FALSE(rulerScales(config, scales.grid).withRpm);
    EXPECT_FALSE(rulerScales(config, scales.grid).withMph);
}

TEST_F(RulersOfASurface, TimesCountFromTheZeroOfTheRun) {
    const Rulers rulers = at(0, 200);
    EXPECT_EQ(texts(rulers.times), (Texts{"0 s", "1 s", "2 s", "3 s", "4 s", "5 s"}));
    EXPECT_EQ(rulers.times.ticks, (std::vector<int>{160, 260, 360, 460, 560, 660}));
    EXPECT_EQ(rulers.times.ground, (platform::PixelRect{0, 0, 680, 13 + 2 * 3}));
    EXPECT_EQ(rulers.times.texts[1], (RulerText{{260 - 9, 3}, "1 s"}));
    expectRoom(rulers);
}

TEST_F(RulersOfASurface, TimesEndWithTheRun) {
    const Rulers rulers = at(681, 200);
    EXPECT_EQ(rulers.times.ticks.back(), 1360 - 681);
    EXPECT_EQ(rulers.times.texts.back().text, "11 s"); // the next would be cut
}

TEST_F(RulersOfASurface, BothLeaveTheCornerToOneOfThem) {
    const Rulers rulers = at(100, 200);
    EXPECT_EQ(rulers.heights.ground.top, rulers.times.ground.bottom);
    for (const int tick : rulers.times.ticks) EXPECT_GE(tick, rulers.heights.ground.right);
    for (const int tick : rulers.heights.ticks) EXPECT_GE(tick, rulers.times.ground.bottom);
    EXPECT_EQ(rulers.times.ticks.front(), 60);
    expectRoom(rulers);
}

TEST_F(RulersOfASurface, WhatIsTooDenseIsThinned) {
    room.surface = {1361 + 1, 111, 1};
    room.heightPx = 80;
    scales.grid.rpmScale = 20;
    // 5 pixels for 1000 rpm, two lines of text take 26 and a gap.
    EXPECT_EQ(texts(at(100, 0).heights), (Texts{"100 Mph", "10000 Rpm", "Bang"}));
    scales.grid.sampleCount = 12000;
    scales.grid.scaleWidth = 30000;
    const Rulers rulers = at(0, 20);
    EXPECT_NEAR(rulers.times.ticks[1] - rulers.times.ticks[0], 45.4, 1); // ten seconds
    expectRoom(rulers);
}

TEST_F(RulersOfASurface, BetweenLinesFarApartThereAreFinerNumbers) {
    enlarge(10);
    const Rulers rulers = at(3000, 4000);
    EXPECT_EQ(textOf(rulers.heights, "65"), "6500 Rpm");
    EXPECT_EQ(textOf(rulers.heights, "Mph").find("."), 3U);
    EXPECT_EQ(textOf(rulers.times, "1.5"), "1.5 s");
    expectRoom(rulers);
    enlarge(100);
    EXPECT_EQ(textOf(at(30000, 40000).times, "1.41"), "1.41 s");
}

// A word stands for all rpm above a height, and it comes with the grid's lines alone.
TEST_F(RulersOfASurface, TheWordComesOnItsLineOnly) {
    enlarge(5);
    const Texts all = texts(at(100, 400).heights); // y from 1020 down to 910
    EXPECT_EQ(all, (Texts{"184.0 Mph", "9200 Rpm", "188.0 Mph", "9400 Rpm", "192.0 Mph", "9600 Rpm",
                       "196.0 Mph", "9800 Rpm", "200.0 Mph", "Bang"}));
}

TEST_F(RulersOfASurface, EverywhereAtEverySizeTheTextsHaveRoom) {
    for (const int rpmScale : {6, 10, 17, 30}) {
        scales.grid.rpmScale = rpmScale;
        for (const int times : {1, 2, 3, 7, 15, 60}) {
            enlarge(times);
            for (int step = 0; step <= 16; ++step) {
                const Rulers rulers = at(step * (1361 * times - 680) / 16 + 1,
                    75 * times + step * (1025 * times - 550) / 16);
                expectRoom(rulers);
                EXPECT_FALSE(rulers.heights.texts.empty()) << rpmScale << " " << times;
                const bool beforeTimes = room.scrolledTo.x < 160 * times;
                EXPECT_TRUE(beforeTimes || !rulers.times.texts.empty()) << times << " " << step;
                EXPECT_LT(rulers.heights.texts.size() + rulers.times.texts.size(), 60U);
            }
        }
    }
}
