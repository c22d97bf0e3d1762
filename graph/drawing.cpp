#include "graph/drawing.h"

#include "core/data_types.h"
#include "core/paths.h"

#include <new>

namespace kvo::graph {

using namespace channels;
namespace {

using core::AppConfig;

constexpr int drawModeCopy = 13;
constexpr int resolutionUnset = 9; // from here on, and 0
constexpr int usualResolution = 4;
constexpr int allAnalogs = 8;

bool unsetResolution(int step) {
    return step <= 0 || step >= resolutionUnset;
}

// Channels that are on among those that every run has, as the loading bar counts them.
int countOfEveryType(const AppConfig& config) {
    int count = 0;
    // Required: neither Clutch nor Mph is counted here.
    for (const int channel : {engineChannel, inputChannel, outputChannel, rocosChannel,
             ratioChannel, slipChannel, tyreGrowthChannel, analogChannel(1), analogChannel(2),
             analogChannel(3), analogChannel(4)}) {
        if (channelOn(config, channel)) ++count;
    }
    return count;
}

int countOn(const AppConfig& config, int first, int last) {
    int count = 0;
    for (int channel = first; channel <= last; ++channel) {
        if (channelOn(config, channel)) ++count;
    }
    return count;
}

int countExhausts(const AppConfig& config) {
    return countOn(config, exhaustChannel(1), exhaustChannel(8));
}

} // namespace

double progressMax(const AppConfig& config, int dataType, int sampleCount) {
    int count = 1 + countOfEveryType(config);
    if (core::analogsOf(dataType) == allAnalogs) {
        count += countOn(config, analogChannel(5), analogChannel(8));
        count += countOn(config, clutchChannel, clutchChannel);
    }
    if (core::exhaustsOf(dataType) == core::Exhausts::own) count += countExhausts(config);
    return static_cast<double>(count) * sampleCount;
}

double overlayProgressMax(const AppConfig& config, int overlayDataType, int sampleCount) {
    int count = 1 + countOfEveryType(config);
    count += countOn(config, analogChannel(5), analogChannel(core::analogsOf(overlayDataType)));
    if (core::exhaustsOf(overlayDataType) != core::Exhausts::none) count += countExhausts(config);
    return static_cast<double>(count) * sampleCount;
}

TrendDrawing::TrendDrawing(AppConfig& config, const core::OpenRun& run,
    const core::OpenRun& overlay, GraphView& view, TrendHost& host)
    : m_config(config), m_run(run), m_overlay(overlay), m_view(view), m_host(host) {}

bool TrendDrawing::DrawTrend() {
    platform::Surface& trend = m_host.trend();
    m_host.setTrendHourglass(true);
    trend.setAutoRedraw(true);
    trend.setDrawMode(drawModeCopy);
    trend.cls();
    const bool drawable = trend.usable();
    if (drawable && m_run.SampleCount != 0) {
        try {
            drawRun();
        } catch (const std::bad_alloc&) {
            endDrawing();
            throw;
        }
        m_host.hideLoading();
    }
    m_host.setTrendHourglass(false);
    m_view.ProgressCount = 0;
    trend.refresh();
    return drawable;
}

void TrendDrawing::drawRun() {
    platform::Surface& trend = m_host.trend();
    if (unsetResolution(m_config.G_Res)) m_config.G_Res = usualResolution;
    m_host.showLabels(drawTrendLabels(m_run.DataType, m_config));
    m_host.setProgressMax(progressMax(m_config, m_run.DataType, m_run.SampleCount));
    m_host.showLoading("Loading:", core::baseName(m_run.path));
    m_view.ProgressCount = 0;
    m_view.RpmScale = static_cast<std::int16_t>(m_config.MaxRpm + 6);
    DrawGrid();
    DrawSwitches();
    trend.setDrawStyle(0);
    trend.setDrawWidth(1);
    for (const int channel : drawOrder(m_run.DataType)) {
        if (isDrawn(channel)) drawChannel(channel);
    }
}

void TrendDrawing::endDrawing() {
    m_host.hideLoading();
    m_view.ProgressCount = 0;
    m_host.setTrendHourglass(false);
}

void TrendDrawing::OverLayDraw() {
    platform::Surface& trend = m_host.trend();
    m_host.setTrendHourglass(true);
    try {
        drawOverlay();
    } catch (const std::bad_alloc&) {
        endDrawing();
        throw;
    }
    // Required: DrawStyle is not put back; the next DrawTrend sets it.
    endDrawing();
    trend.refresh();
}

void TrendDrawing::drawOverlay() {
    platform::Surface& trend = m_host.trend();
    m_host.setProgressMax(overlayProgressMax(m_config, m_overlay.DataType, m_run.SampleCount));
    m_host.showLoading("Overlaying:", core::baseName(m_overlay.path));
    trend.setAutoRedraw(true);
    m_view.ProgressCount = 0;
    DrawSwitches();
    trend.setDrawStyle(m_config.OverlayStyle);
    trend.setDrawWidth(1);
    for (const int channel : drawOrder(m_overlay.DataType)) {
        if (isDrawn(channel)) drawOverlayChannel(channel);
    }
}

GridInput TrendDrawing::gridInput() const {
    return {m_view.RpmScale, m_view.MphScale, m_run.image.tail.TimeOffset, m_run.SampleCount,
        m_run.DataType, m_host.trend().scaleWidth()};
}

void TrendDrawing::DrawGrid() {
    platform::Surface& trend = m_host.trend();
    m_view.MphScale = mphScaleFor(m_run.PeakSpeedRaw);
    trend.setDrawStyle(m_config.GridStyle);
    trend.setForeColor(gridTextColour(m_config));
    makeGrid(m_config, gridInput(), m_marks);
    const platform::Colour colour = gridColour(m_config);
    for (const GridMark& mark : m_marks) {
        if (mark.kind == GridMark::Kind::line) {
            trend.line(mark.x1, mark.y1, mark.x2, mark.y2, colour);
            continue;
        }
        if (mark.setsX) trend.setCurrentX(mark.x1);
        trend.setCurrentY(mark.y1);
        trend.print(mark.text);
    }
}

void TrendDrawing::DrawSwitches() {
    platform::Surface& trend = m_host.trend();
    trend.setDrawStyle(0);
    trend.setDrawWidth(1);
    const core::OpenRun* overlay = m_view.OverlayLoaded != 0 ? &m_overlay : nullptr;
    makeSwitchMasks(shownRuns(m_run, overlay), m_masks);
    trend.boxes(m_masks, switchBars(m_view));
}

void TrendDrawing::Change_Colour() {
    const ColourChange change = changeColour(m_config);
    m_view.SwitchColourDyna = change.switchDyna;
    m_view.SwitchColourShift = change.switchShift;
    m_view.SwitchColourThrottle = change.switchThrottle;
    m_view.SwitchColourBrake = change.switchBrake;
    const bool draws = m_run.SampleCount != 0;
    if (draws && change.barsRepainted) DrawSwitches();
    for (const int channel : change.repaired) {
        colourField(m_config, channel) = change.colours[static_cast<std::size_t>(channel)];
        if (!draws) continue;
        if (channel == engineChannel || channel == mphChannel) DrawGrid();
        if (isDrawn(channel)) drawChannel(channel);
    }
    m_host.trend().setBackColor(static_cast<platform::Colour>(m_config.GraphBackColour));
}

void TrendDrawing::drawChannel(int channel) {
    applyMagnifyDefault(channel);
    makePoints(viewOfRun(m_run), channel);
    drawPoints(channelColour(m_config, channel));
}

void TrendDrawing::drawOverlayChannel(int channel) {
    m_view.OverlayChannelColour = overlayColour(m_config, channel);
    m_host.setOverlayLabelColour(channel, m_view.OverlayChannelColour);
    applyMagnifyDefault(channel);
    makePoints(overlayView(), channel);
    drawPoints(m_view.OverlayChannelColour);
}

void TrendDrawing::drawChannelAlone(int channel) {
    platform::Surface& trend = m_host.trend();
    trend.setDrawStyle(0);
    drawChannel(channel);
    if (m_view.OverlayLoaded == 0) return;
    trend.setDrawStyle(m_config.OverlayStyle);
    drawOverlayChannel(channel);
}

void TrendDrawing::applyMagnifyDefault(int channel) {
    std::uint8_t& magnify = m_config.Text_Magnify[static_cast<std::size_t>(channel)];
    if (magnify == 0) magnify = channelFacts(channel).magnifyDefault;
}

// The bar moves once a channel, at its first sample; the count runs on with every sample.
void TrendDrawing::Ind_Line(int calls) {
    if (calls < 1) return;
    const double step = m_config.G_Res;
    m_view.ProgressCount += step;
    if (m_view.LoadingBar == -1) m_host.setProgressValue(m_view.ProgressCount);
    m_view.ProgressCount += step * (calls - 1);
}

void TrendDrawing::drawPoints(std::int32_t colour) {
    platform::Surface& trend = m_host.trend();
    // Required: every line starts at the origin, and this first stroke is part of the picture.
    trend.setCurrentX(0);
    trend.setCurrentY(0);
    trend.setDrawWidth(m_view.LineWidthPx);
    trend.polyline(m_points, static_cast<platform::Colour>(colour));
    trend.setDrawWidth(1); // of all that is no curve
}

bool TrendDrawing::isDrawn(int channel) const {
    if (!channelOn(m_config, channel)) return false;
    return channel != clutchChannel || m_host.clutchLabelVisible();
}

int TrendDrawing::step() const {
    const int stored = m_config.G_Res;
    return unsetResolution(stored) ? usualResolution : stored;
}

void TrendDrawing::makePoints(const RunView& source, int channel) {
    const CurveScale scale{step(), m_view.RpmScale, m_view.MphScale};
    Ind_Line(makeCurve(source, scale, m_config, channel, m_points));
}

} // namespace kvo::graph
