// The full picture of a run at 1920x1080, as the graph window makes it: values, the kept picture,
// and the pixels in a reused image.
#include "bench/parts.h"
#include "bench/qcustomplot_peer.h"
#include "bench/run.h"
#include "bench/timing.h"
#include "bench/trend_image.h"

#include <QImage>

#include <memory>
#include <string>
#include <vector>

namespace kvo::bench {
namespace {

constexpr int rounds = 15;
constexpr int runRows = 2520;
constexpr int runType = 32; // the type with all channels

// What no drawing can do without: the ground, then every pixel that the curves touch, stored in
// their order.
class TouchedPixels {
public:
    TouchedPixels(const Curves& curves, int rows, int lineWidthPx)
        : m_image(1920, 1080, QImage::Format_RGB32) {
        const platform::PixelScale scale(
            {0, 1100, static_cast<float>(rows + 1), 0}, {1920, 1080, 1});
        QImage probe(m_image.size(), QImage::Format_RGB32);
        for (const auto& points : curves) {
            probe.fill(0U);
            platform::Raster raster(
                reinterpret_cast<std::uint32_t*>(probe.bits()), 1920, {0, 0, 1920, 1080});
            platform::Pen pen;
            pen.rgb = 0xFFFFFFFF;
            pen.widthPx = lineWidthPx;
            raster.polyline(points, scale, pen);
            collect(probe);
        }
    }
    void store() {
        m_image.fill(0U);
        auto* pixels = reinterpret_cast<std::uint32_t*>(m_image.bits());
        std::uint32_t colour = 0xFF101010;
        for (const auto& list : m_touched) {
            colour += 0x070503;
            for (const std::uint32_t place : list) pixels[place] = colour;
        }
        keep(*pixels);
    }

private:
    void collect(const QImage& probe) {
        const auto* pixels = reinterpret_cast<const std::uint32_t*>(probe.constBits());
        auto& list = m_touched.emplace_back();
        for (std::uint32_t place = 0; place < 1920U * 1080U; ++place)
            if (pixels[place] == 0xFFFFFFFF) list.push_back(place);
    }
    QImage m_image;
    std::vector<std::vector<std::uint32_t>> m_touched;
};

void measureRedraw(Table& table, bool overlay, int lineWidthPx) {
    auto state = std::make_unique<core::SharedState>();
    fillRun(*state, runType, runRows, false);
    if (overlay) addOverlay(*state);
    TrendImage ours(*state, overlay, 1920, 1080, lineWidthPx);
    const Curves curves = ours.curves();
    TouchedPixels pixels(curves, runRows, lineWidthPx);
    std::string job = "redraw, " + std::to_string(curves.size()) + " curves";
    if (lineWidthPx > 1) job += " of " + std::to_string(lineWidthPx) + " pixels";

    // Wider curves are drawn since then.
    const auto before = [&](const char* figure) { return lineWidthPx > 1 ? "-" : figure; };

    std::vector<Contender> contenders{{[&] { ours.redraw(); }}, {[&] { pixels.store(); }}};
    const auto plain = qcustomplotRedraw(curves, runRows, false, lineWidthPx);
    const auto smooth = qcustomplotRedraw(curves, runRows, true, lineWidthPx);
    if (plain) contenders.insert(contenders.end(), {{plain}, {smooth}});
    const auto seconds = medianSeconds(contenders, rounds);
    table.add(job, "storing the touched pixels", seconds[0], seconds[1], Goal{10, before("12")});
    if (!plain) {
        table.skip(job, "QCustomPlot is not on this machine");
        return;
    }
    table.add(
        job, "QCustomPlot, no antialiasing", seconds[0], seconds[2], Goal{0.30, before("0.34")});
    table.add(job, "QCustomPlot as it comes", seconds[0], seconds[3], Goal{0.25, before("0.27")});
}

void measureBars(Table& table) {
    auto state = std::make_unique<core::SharedState>();
    fillRun(*state, runType, runRows, true);
    TrendImage ours(*state, false, 1920, 1080);
    QImage bySample(1920, 1080, QImage::Format_RGB32);
    ours.clear();
    ours.clear(bySample);
    ours.drawBars();
    ours.fillBars(bySample);
    QImage ground(bySample.size(), bySample.format());
    ours.clear(ground);
    table.addDemand("switch bars", "the same picture as fillRect",
        ours.image() == bySample && ours.image() != ground);
    const auto seconds =
        medianSeconds({{[&] { ours.drawBars(); }}, {[&] { ours.fillBars(bySample); }}}, rounds);
    table.add("switch bars", "one fillRect a sample", seconds[0], seconds[1], Goal{0.15, "0.04"});
}

} // namespace

void measureGraph(Table& table) {
    for (const int lineWidthPx : {1, 2}) {
        measureRedraw(table, false, lineWidthPx);
        measureRedraw(table, true, lineWidthPx);
    }
    measureBars(table);
}

} // namespace kvo::bench
