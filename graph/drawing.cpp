#include "graph/drawing.h"

namespace kvo::graph {

using namespace channels;
namespace {

using core::AppConfig;

constexpr int drawModeCopy = 13;
constexpr int resolutionUnset = 9; // from here on, and 0
constexpr int usualResolution = 4;

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

bool hasExhausts(int type) {
    return type == 25 || type == 32 || type == 43;
}

std::string baseName(const std::string& path) {
    const std::size_t separator = path.find_last_of("/\\");
    return separator == std::string::npos ? path : path.substr(separator + 1);
}

} // namespace

double progressMax(const AppConfig& config, int dataType, int sampleCount) {
    int count = 1 + countOfEveryType(config);
    if (dataType == 17 || hasExhausts(dataType)) {
        count += countOn(config, analogChannel(5), analogChannel(8));
        count += countOn(config, clutchChannel, clutchChannel);
    }
    if (hasExhausts(dataType)) count += countOn(config, exhaustChannel(1), exhaustChannel(8));
    return static_cast<double>(count) * sampleCount;
}

double overlayProgressMax(const AppConfig& config, int overlayDataType, int sampleCount) {
    int count = 1 + countOfEveryType(config);
    if (overlayDataType > 16) {
        count += countOn(config, analogChannel(5), analogChannel(overlayDataType == 20 ? 6 : 8));
        if (overlayDataType == 20 || hasExhausts(overlayDataType)) {
            count += countOn(config, exhaustChannel(1), exhaustChannel(8));
        }
    }
    return static_cast<double>(count) * sampleCount;
}

TrendDrawing::TrendDrawing(core::SharedState& state, GraphView& view, TrendHost& host)
    : m_state(state), m_view(view), m_host(host) {}

bool TrendDrawing::DrawTrend() {
    AppConfig& config = m_state.Config;
    platform::Surface& trend = m_host.trend();
    m_host.setTrendHourglass(true);
    trend.setAutoRedraw(true);
    trend.setDrawMode(drawModeCopy);
    trend.cls();
    const bool drawable = trend.usable();
    if (drawable && m_state.SampleCount != 0) {
        if (unsetResolution(config.G_Res)) config.G_Res = usualResolution;
        m_host.showLabels(drawTrendLabels(m_state.DataType, config));
        m_host.setProgressMax(progressMax(config, m_state.DataType, m_state.SampleCount));
        m_host.showLoading("Loading:", baseName(m_state.DataFilePath));
        m_view.ProgressCount = 0;
        m_view.RpmScale = static_cast<std::int16_t>(config.MaxRpm + 6);
        DrawGrid();
        DrawSwitches();
        trend.setDrawStyle(0);
        trend.setDrawWidth(1);
        for (const int channel : drawOrder(m_state.DataType)) {
            if (isDrawn(channel)) drawChannel(channel);
        }
        m_host.hideLoading();
    }
    m_host.setTrendHourglass(false);
    m_view.ProgressCount = 0;
    trend.refresh();
    return drawable;
}

void TrendDrawing::OverLayDraw() {
    AppConfig& config = m_state.Config;
    platform::Surface& trend = m_host.trend();
    m_host.setTrendHourglass(true);
    m_host.setProgressMax(overlayProgressMax(config, m_state.OverlayDataType, m_state.SampleCount));
    m_host.showLoading("Overlaying:", baseName(m_state.DataFilePath));
    trend.setAutoRedraw(true);
    m_view.ProgressCount = 0;
    DrawSwitches();
    trend.setDrawStyle(config.OverlayStyle);
    trend.setDrawWidth(1);
    for (const int channel : drawOrder(m_state.OverlayDataType)) {
        if (isDrawn(channel)) drawOverlayChannel(channel);
    }
    // Required: DrawStyle is not put back; the next DrawTrend sets it.
    m_host.hideLoading();
    m_view.ProgressCount = 0;
    m_host.setTrendHourglass(false);
    trend.refresh();
}

void TrendDrawing::DrawGrid() {
    const AppConfig& config = m_state.Config;
    platform::Surface& trend = m_host.trend();
    m_view.MphScale = mphScaleFor(m_state.PeakSpeedRaw);
    trend.setDrawStyle(config.GridStyle);
    trend.setForeColor(gridTextColour(config));
    makeGrid(config,
        {m_view.RpmScale, m_view.MphScale, m_state.Run.tail.TimeOffset, m_state.SampleCount,
            m_state.DataType, trend.scaleWidth()},
        m_marks);
    const platform::Colour colour = gridColour(config);
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
    const core::RunImage* overlay = m_state.OverlayLoaded != 0 ? &m_state.Overlay : nullptr;
    makeSwitchMasks(m_state.Run, overlay, m_state.SampleCount, m_masks);
    trend.boxes(m_masks, switchBars(m_view));
}

void TrendDrawing::Change_Colour() {
    AppConfig& config = m_state.Config;
    const ColourChange change = changeColour(config);
    m_view.SwitchColourDyna = change.switchDyna;
    m_view.SwitchColourShift = change.switchShift;
    m_view.SwitchColourThrottle = change.switchThrottle;
    m_view.SwitchColourBrake = change.switchBrake;
    const bool draws = m_state.SampleCount != 0;
    if (draws && change.barsRepainted) DrawSwitches();
    for (const int channel : change.repaired) {
        colourField(config, channel) = change.colours[static_cast<std::size_t>(channel)];
        if (!draws) continue;
        if (channel == engineChannel || channel == mphChannel) DrawGrid();
        if (isDrawn(channel)) drawChannel(channel);
    }
    m_host.trend().setBackColor(static_cast<platform::Colour>(config.GraphBackColour));
}

void TrendDrawing::drawChannel(int channel) {
    applyMagnifyDefault(channel);
    Ind_Line(makeCurve(mainSource(), m_state.Config, channel, m_points));
    drawPoints(channelColour(m_state.Config, channel));
}

void TrendDrawing::drawOverlayChannel(int channel) {
    const AppConfig& config = m_state.Config;
    const std::int32_t own = channelColour(config, channel);
    m_view.OverlayChannelColour =
        config.OverlayColours != 1 ? own : InvertColour(own, config.GraphBackColour);
    m_host.setOverlayLabelColour(channel, m_view.OverlayChannelColour);
    applyMagnifyDefault(channel);
    Ind_Line(makeCurve(overlaySource(), config, channel, m_points));
    drawPoints(m_view.OverlayChannelColour);
}

void TrendDrawing::applyMagnifyDefault(int channel) {
    std::uint8_t& magnify = m_state.Config.Text_Magnify[static_cast<std::size_t>(channel)];
    if (magnify == 0) magnify = channelFacts(channel).magnifyDefault;
}

// The bar moves once a channel, at its first sample; the count runs on with every sample.
void TrendDrawing::Ind_Line(int calls) {
    if (calls < 1) return;
    const double step = m_state.Config.G_Res;
    m_view.ProgressCount += step;
    if (m_view.LoadingBar == -1) m_host.setProgressValue(m_view.ProgressCount);
    m_view.ProgressCount += step * (calls - 1);
}

void TrendDrawing::drawPoints(std::int32_t colour) {
    platform::Surface& trend = m_host.trend();
    // Required: every line starts at the origin, and this first stroke is part of the picture.
    trend.setCurrentX(0);
    trend.setCurrentY(0);
    trend.polyline(m_points, static_cast<platform::Colour>(colour));
}

bool TrendDrawing::isDrawn(int channel) const {
    if (!channelOn(m_state.Config, channel)) return false;
    return channel != clutchChannel || m_host.clutchLabelVisible();
}

int TrendDrawing::step() const {
    const int stored = m_state.Config.G_Res;
    return unsetResolution(stored) ? usualResolution : stored;
}

CurveSource TrendDrawing::mainSource() const {
    const core::RunImage& run = m_state.Run;
    return {&run, &run.header, &run.header, m_state.SampleCount, step(), m_state.DataType, 0,
        m_view.RpmScale, m_view.MphScale};
}

CurveSource TrendDrawing::overlaySource() const {
    const core::RunImage& run = m_state.Run;
    const core::RunImage& overlay = m_state.Overlay;
    // Required: slip and ratio keep the run's primary drive, and the run's type decides whether
    // exhausts are time-shared.
    return {&overlay, &run.header, &overlay.header, m_state.SampleCount, step(), m_state.DataType,
        run.tail.TimeOffset - overlay.tail.TimeOffset, m_view.RpmScale, m_view.MphScale};
}

} // namespace kvo::graph
