#include "graph/print_picture.h"

#include "channels/channels.h"
#include "graph/paper_surface.h"
#include "graph/transient.h"
#include "tests/support/graph_calls.h"
#include "tests/support/recording_surface.h"
#include "tests/support/scripted_printer.h"

#include <gtest/gtest.h>

#include <memory>

using namespace kvo;
using namespace kvo::channels;
using namespace kvo::graph;
using kvo::testing::PrintedPage;
using kvo::testing::SurfaceOperation;
using Kind = kvo::testing::SurfaceOperation::Kind;

namespace {

// A run with three channels on, one of them white, on a black ground.
struct PrintPictureTest : ::testing::Test {
    PrintPictureTest() {
        core::OpenRun& run = state->Run;
        run.DataType = 32;
        run.SampleCount = 1360;
        run.headerLine = "32 VRN32 Ver 1.3 128k Serial No 7  Date:Wed 05 Jun 2024 Run: 3 Final#";
        run.image.header.CrankGearTeeth = 1;
        run.image.header.BasketGearTeeth = 2;
        run.image.tail.TimeOffset = 160;
        state->Overlay = run;
        for (int i = 1; i <= 1360; ++i) {
            run.image.samples[i].EngineRpm = static_cast<std::int16_t>(3 * i);
            run.image.samples[i].Status = i < 100 ? 1 : 0;
        }
        core::AppConfig& config = state->Config;
        for (const int channel : {engineChannel, mphChannel, analogChannel(2)})
            visibleFlag(config, channel) = -1;
        config.EngineColour = 0x0000FF;
        config.MphColour = 0xFFFFFF;
        config.AnalogColour[2] = 0x00FFFF;
        config.G_Res = 4;
        config.Text_Magnify.fill(1);
        caption = "Data File: 24060512.33d";
    }
    const PrintedPage& print(bool white = true) {
        printer.whitePaper = white;
        const auto start = printer.begin({"x"});
        printPicture(*start.job, {state->Config, state->Run, state->Overlay, view, onTop.kept(),
                                     {0, 1100, 1361, 0}, part, true, caption, {}});
        start.job->kill();
        return printer.documents.back()->pages.at(0);
    }
    static std::vector<platform::Colour> curves(const PrintedPage& page) {
        std::vector<platform::Colour> colours;
        for (const SurfaceOperation& op : page.operations) {
            if (op.kind == Kind::polyline && op.points.size() > 100) colours.push_back(op.colour);
        }
        return colours;
    }
    static const SurfaceOperation* find(const PrintedPage& page, Kind kind) {
        for (const SurfaceOperation& op : page.operations) {
            if (op.kind == kind) return &op;
        }
        return nullptr;
    }
    std::unique_ptr<core::SharedState> state = std::make_unique<core::SharedState>();
    GraphView view;
    platform::DisplayListSurface onTop;
    SurfacePart part;
    std::string caption;
    kvo::testing::ScriptedPrinter printer;
};

} // namespace

TEST_F(PrintPictureTest, TitleAndCaptionStandOnTop) {
    const PrintedPage& page = print();
    ASSERT_EQ(page.texts.size(), 3U); // and the time of the panel, which is empty here
    EXPECT_EQ(page.texts[0].text, "Wed 05 Jun 2024 Run: 3 Final");
    EXPECT_EQ(page.texts[0].y, 0);
    EXPECT_EQ(page.texts[1].text, caption);
    EXPECT_GT(page.texts[1].y, 0);
    ASSERT_EQ(page.frames.size(), 3U);
    EXPECT_GT(page.frames[1].top, page.texts[1].y);
    EXPECT_EQ(page.frames[2], platform::PageFrame{});
}

TEST_F(PrintPictureTest, TheWidthOfTheScreensLinesIsNotPrinted) {
    view.LineWidthPx = 3;
    for (const SurfaceOperation& op : print().operations) EXPECT_EQ(op.drawWidth, 1);
}

TEST_F(PrintPictureTest, ACaptionThatSaysTheSameIsNotRepeated) {
    caption = " Date:Wed 05 Jun 2024 Run: 3 Final";
    EXPECT_EQ(print().texts.size(), 2U);
}

TEST_F(PrintPictureTest, ACaptionThatSaysMoreThanTheTitleIsPrinted) {
    const std::string named = "Wed 05 Jun 2024 Run: 3 Final";
    caption = " Date:" + named + "    Overlay File: 24060512.31d";
    EXPECT_EQ(print().texts.at(0).text, named);
    EXPECT_EQ(print().texts.at(1).text, named + "    Overlay File: 24060512.31d");
    // A header line has no room for a long title.
    caption = " Date:" + named + " of the day, behind the rain break  ";
    EXPECT_EQ(print().texts.at(1).text, named + " of the day, behind the rain break");
    caption = " Date:" + named + "   ";
    EXPECT_EQ(print().texts.size(), 2U);
}

TEST_F(PrintPictureTest, WithoutATitleTheCaptionStandsOnTop) {
    state->Run.headerLine = "32 VRN32 Ver 1.3  Date:#";
    const PrintedPage& page = print();
    ASSERT_EQ(page.texts.size(), 2U);
    EXPECT_EQ(page.texts[0].text, caption);
    EXPECT_EQ(page.texts[0].y, 0);
}

TEST_F(PrintPictureTest, TheCurvesAreThoseOfTheWindow) {
    kvo::testing::RecordingHost window;
    ASSERT_TRUE(kvo::testing::drawingOf(*state, view, window).DrawTrend());
    const auto drawn = window.surface.ofKind(Kind::polyline);
    ASSERT_EQ(drawn.size(), 3U);
    std::vector<SurfaceOperation> printed;
    for (const SurfaceOperation& op : print(false).operations) {
        if (op.kind == Kind::polyline) printed.push_back(op);
    }
    ASSERT_EQ(printed.size(), 3U);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(printed[i].points, drawn[i].points);
        EXPECT_EQ(printed[i].colour, drawn[i].colour);
    }
}

TEST_F(PrintPictureTest, WhitePaperKeepsEveryCurveReadable) {
    EXPECT_EQ(curves(print(true)),
        (std::vector<platform::Colour>{0x0000FF, 0x000000, readableOnWhite(0x00FFFF)}));
    EXPECT_EQ(find(print(true), Kind::cls)->colour, platform::white);
    EXPECT_EQ(find(print(true), Kind::text)->colour, platform::black);
    EXPECT_EQ(curves(print(false)), (std::vector<platform::Colour>{0x0000FF, 0xFFFFFF, 0x00FFFF}));
    EXPECT_EQ(find(print(false), Kind::cls)->colour, platform::black);
    EXPECT_EQ(find(print(false), Kind::text)->colour, platform::white);
}

TEST_F(PrintPictureTest, TheOverlayIsPrintedInItsOwnLook) {
    view.OverlayLoaded = -1;
    state->Config.OverlayColours = 1;
    state->Config.OverlayStyle = 2;
    const PrintedPage& page = print(false);
    EXPECT_EQ(curves(page), (std::vector<platform::Colour>{
                                0x0000FF, 0xFFFFFF, 0x00FFFF, 0xFFFF00, 0xFFFFFF, 0xFF0000}));
    int dotted = 0;
    for (const SurfaceOperation& op : page.operations)
        if (op.kind == Kind::polyline && op.drawStyle == 2) ++dotted;
    EXPECT_EQ(dotted, 3);
}

TEST_F(PrintPictureTest, ThePartInViewAndTheCursorArePrinted) {
    part = {0, 0, 0.5F, 0.5F};
    onTop.setScale(0, 1100, 1361, 0);
    onTop.line(300, 1100, 300, 0, 0x0000FF);
    const PrintedPage& page = print();
    const SurfaceOperation* cursor = nullptr;
    const SurfaceOperation* scale = nullptr;
    for (const SurfaceOperation& op : page.operations) {
        if (op.kind == Kind::scale && op.y1 == 1100) scale = &op;
        if (op.kind == Kind::polyline && op.x1 == 300) cursor = &op;
    }
    ASSERT_NE(scale, nullptr);
    EXPECT_EQ(scale->x2, 680.5F);
    EXPECT_EQ(scale->y2, 550);
    ASSERT_NE(cursor, nullptr);
    EXPECT_EQ(cursor->colour, 0x0000FFU);
}

TEST_F(PrintPictureTest, NothingOfTheWindowIsChanged) {
    state->Config.G_Res = 0;
    state->Config.Text_Magnify.fill(0);
    view.RpmScale = 3;
    view.ProgressCount = 77;
    const core::AppConfig before = state->Config;
    print();
    EXPECT_EQ(state->Config, before);
    EXPECT_EQ(view.RpmScale, 3);
    EXPECT_EQ(view.ProgressCount, 77);
}
