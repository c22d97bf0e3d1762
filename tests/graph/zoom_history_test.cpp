#include "graph/zoom_history.h"

#include <gtest/gtest.h>

using namespace kvo::graph;

namespace {

ZoomPlace wide(int width) {
    return {scaleZoomed, scaleHalf, {width * 1.0, 100}, {width, 7}};
}

} // namespace

TEST(ZoomHistory, StepsGoBackToWhereTheyStarted) {
    ZoomHistory zooms;
    EXPECT_TRUE(zooms.empty());
    EXPECT_EQ(zooms.takeBack(), std::nullopt);
    zooms.add(wide(1));
    zooms.add(wide(2));
    EXPECT_FALSE(zooms.empty());
    EXPECT_EQ(zooms.takeBack(), wide(2));
    EXPECT_EQ(zooms.takeBack(), wide(1));
    EXPECT_TRUE(zooms.empty());
}

TEST(ZoomHistory, TheOldestGivesWay) {
    ZoomHistory zooms;
    for (int i = 0; i <= static_cast<int>(ZoomHistory::most); ++i) zooms.add(wide(i));
    std::optional<ZoomPlace> last;
    int count = 0;
    while (const auto place = zooms.takeBack()) {
        last = place;
        ++count;
    }
    EXPECT_EQ(count, 100);
    EXPECT_EQ(last, wide(1));
}

TEST(ZoomHistory, IsEmptyAfterAClear) {
    ZoomHistory zooms;
    zooms.add(wide(1));
    zooms.clear();
    EXPECT_TRUE(zooms.empty());
}
