#include "graph/run_preview.h"

#include "core/run_file.h"
#include "graph/drawing.h"
#include "graph/windowless_host.h"
#include "platform/draw/display_list.h"
#include "platform/memory.h"

#include <memory>
#include <new>
#include <utility>

namespace kvo::graph {

namespace {

// Numbers of the grid would hide the curves of so small a picture.
class NoText : public platform::TextPainter {
public:
    void paintText(platform::PixelPoint, std::string_view, float, platform::Colour) override {}
};

void drawRun(const core::OpenRun& run, core::AppConfig config, platform::DisplayListSurface& to) {
    const bool showsClutch =
        ShowChannelsForType(run.DataType, config.Vehicle_Type).clutch != Show::hide;
    const auto noOverlay = std::make_unique<core::OpenRun>();
    GraphView view;
    WindowlessHost host(to, showsClutch);
    to.setScale(0, trendTop, static_cast<float>(run.SampleCount + 1), 0);
    TrendDrawing drawing(config, run, *noOverlay, view, host);
    drawing.Change_Colour(); // colours that are the ground's own are put right, in our copy
    (void)drawing.DrawTrend();
}

core::RunPicture pictureOf(
    const core::OpenRun& run, const core::AppConfig& config, int widthPx, int heightPx) {
    platform::DisplayListSurface surface;
    surface.setHeightPx(heightPx);
    drawRun(run, config, surface);
    core::RunPicture picture{widthPx, heightPx, {}, {}};
    picture.pixels.resize(static_cast<std::size_t>(widthPx) * static_cast<std::size_t>(heightPx));
    const platform::PixelRect whole{0, 0, widthPx, heightPx};
    platform::Raster raster(picture.pixels.data(), widthPx, whole);
    raster.fill(whole, platform::rgb32(surface.backColor()));
    NoText noText;
    surface.kept().paint(raster, noText, {widthPx, heightPx, 1}, 0, surface.kept().size());
    return picture;
}

std::string problemOf(core::LoadResult result) {
    if (result == core::LoadResult::noMemory) return platform::noMemoryReason;
    if (result == core::LoadResult::missing) return "The file of this run cannot be read.";
    return "The file of this run is damaged, or it is no run.";
}

} // namespace

core::RunPicture runPreview(const std::string& path, int widthPx, int heightPx,
    const core::AppConfig& config, const platform::Files& files) {
    try {
        const auto run = std::make_unique<core::OpenRun>();
        const core::LoadOutcome outcome = core::LoadRunAlone(path, *run, files);
        if (outcome) return pictureOf(*run, config, widthPx, heightPx);
        return {0, 0, {}, problemOf(outcome.result)};
    } catch (const std::bad_alloc&) {
        return {0, 0, {}, platform::noMemoryReason};
    }
}

} // namespace kvo::graph
