#include "graph/run_title.h"

#include <gtest/gtest.h>

using namespace kvo;
using namespace kvo::graph;

TEST(ShownTitle, IsTheTitleWithoutBlanksAroundIt) {
    core::OpenRun run;
    run.path = "/kvo/Data/24060512.33d";
    run.headerLine = "32 VRN32 Ver 1.3 128k  Date: Wed 05 Jun 2024 Run: 3 Final   #  ";
    EXPECT_EQ(shownTitle(run), "Wed 05 Jun 2024 Run: 3 Final");
    run.headerLine = "20 an old file";
    EXPECT_EQ(shownTitle(run), "20 an old file");
}

TEST(ShownTitle, IsTheFileWhereThereIsNone) {
    core::OpenRun run;
    run.path = "/kvo/Data/24060512.33d";
    for (const std::string& none :
        {std::string(), std::string("32 Date:  #"), std::string(9, '\0')}) {
        run.headerLine = none;
        EXPECT_EQ(shownTitle(run), "24060512.33d");
    }
}
