#include "graph/print_panel.h"

#include "channels/channels.h"
#include "graph/paper_surface.h"
#include "tests/support/scripted_printer.h"

#include <gtest/gtest.h>

using namespace kvo;
using namespace kvo::graph;
using kvo::testing::PrintedPage;
using kvo::testing::PrintedText;
using platform::TextSide;

namespace {

// In the double a letter is one unit wide and high.
struct PrintPanelTest : ::testing::Test {
    PrintPanelTest() {
        config.EngineColour = 0x00FFFF;
        config.InputColour = 0xFF0000;
        config.GraphBackColour = 0x400000;
        panel.time = "Time: 1.00 sec";
        panel.groups = {{"Rpm", {{channels::engineChannel, "Engine", "8000", "7000", true},
                                    {channels::inputChannel, "Input", "10", "20", false}}},
            {"Times", {{-1, "ET", "6.50", {}, true}}}};
    }
    const PrintedPage& print(bool white) {
        printer.whitePaper = white;
        const auto start = printer.begin({"x"});
        const PrintedPanel printed(*start.job, panel, config);
        height = printed.height();
        printed.print(100);
        start.job->kill();
        return printer.documents.back()->pages.at(0);
    }
    static const PrintedText* find(const PrintedPage& page, const std::string& text) {
        for (const PrintedText& one : page.texts) {
            if (one.text == text) return &one;
        }
        return nullptr;
    }
    int boxes(const PrintedPage& page, platform::Colour colour) {
        int count = 0;
        for (const auto& op : page.operations) {
            if (op.kind == kvo::testing::SurfaceOperation::Kind::box && op.colour == colour)
                ++count;
        }
        return count;
    }
    core::AppConfig config;
    PanelTexts panel;
    kvo::testing::ScriptedPrinter printer;
    float height = 0;
};

} // namespace

TEST_F(PrintPanelTest, NamesAndValuesStandUnderTheirHeadings) {
    const PrintedPage& page = print(true);
    for (const char* text :
        {"Time: 1.00 sec", "Rpm", "Times", "Engine", "8000", "Input", "10", "ET", "6.50"})
        EXPECT_NE(find(page, text), nullptr) << text;
    EXPECT_EQ(page.texts.size(), 9U);
    EXPECT_EQ(find(page, "Time: 1.00 sec")->y, 100);
    EXPECT_GT(find(page, "Rpm")->y, 100);
    EXPECT_EQ(find(page, "Rpm")->y, find(page, "Times")->y);
    EXPECT_GT(find(page, "Engine")->y, find(page, "Rpm")->y);
    EXPECT_EQ(find(page, "Engine")->y, find(page, "8000")->y);
    EXPECT_GT(find(page, "Input")->y, find(page, "Engine")->y);
    EXPECT_EQ(find(page, "8000")->side, TextSide::right);
    EXPECT_EQ(find(page, "8000")->x, find(page, "10")->x);
    EXPECT_GT(find(page, "Times")->x, find(page, "8000")->x);
    EXPECT_LE(find(page, "Input")->y + 1, 100 + height);
}

TEST_F(PrintPanelTest, TheOverlaysValuesStandBesideWhereThereIsOne) {
    EXPECT_EQ(find(print(true), "7000"), nullptr);
    panel.overlay = true;
    const PrintedPage& page = print(true);
    ASSERT_NE(find(page, "7000"), nullptr);
    EXPECT_GT(find(page, "7000")->x, find(page, "8000")->x);
    EXPECT_GT(find(page, "Times")->x, find(page, "7000")->x);
}

TEST_F(PrintPanelTest, DifferencesStandInTheOverlaysPlaceInTheChannelsColour) {
    config.OverlayColours = 1; // the overlay would have another
    panel.differences = true;
    const PrintedPage& page = print(true);
    ASSERT_NE(find(page, "7000"), nullptr);
    EXPECT_GT(find(page, "7000")->x, find(page, "8000")->x);
    EXPECT_EQ(find(page, "7000")->colour, find(page, "8000")->colour);
}

TEST_F(PrintPanelTest, SquaresHaveTheCurvesColoursWhereTheChannelIsOn) {
    EXPECT_EQ(boxes(print(true), readableOnWhite(0x00FFFF)), 1);
    EXPECT_EQ(boxes(print(true), 0xFF0000), 0); // off
    EXPECT_EQ(boxes(print(true), 0x400000), 0);
    EXPECT_EQ(boxes(print(false), 0x00FFFF), 1);
    EXPECT_EQ(boxes(print(false), 0x400000), 1); // behind the value of the channel that is on
}

TEST_F(PrintPanelTest, AGroupOfManyTakesTwoColumns) {
    PanelGroup analogs{"Analog", {}};
    for (int n = 1; n <= 8; ++n)
        analogs.cells.push_back(
            {channels::analogChannel(n), "A" + std::to_string(n), std::to_string(n), {}, true});
    panel.groups = {analogs, {"Empty", {}}};
    const PrintedPage& page = print(true);
    EXPECT_EQ(find(page, "A1")->y, find(page, "A5")->y);
    EXPECT_EQ(find(page, "A4")->y, find(page, "A8")->y);
    EXPECT_GT(find(page, "A5")->x, find(page, "1")->x);
    EXPECT_EQ(find(page, "Empty"), nullptr);
}
