#include "bench/qcustomplot_peer.h"

#ifdef KVO_WITH_QCUSTOMPLOT
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wshadow"
#include <qcustomplot.h>
#pragma GCC diagnostic pop

#include <memory>

namespace kvo::bench {

std::function<void()> qcustomplotRedraw(
    const Curves& curves, int rows, bool smooth, int lineWidthPx) {
    auto plot = std::make_shared<QCustomPlot>();
    plot->resize(1920, 1080);
    plot->setViewport(QRect(0, 0, 1920, 1080));
    if (!smooth) plot->setNotAntialiasedElements(QCP::aeAll);
    plot->setBackground(QBrush(Qt::black));
    int hue = 0;
    for (const auto& points : curves) {
        QVector<double> x;
        QVector<double> y;
        for (const platform::Point& point : points) {
            x.push_back(static_cast<double>(point.x));
            y.push_back(static_cast<double>(point.y));
        }
        QCPGraph* graph = plot->addGraph();
        graph->setData(x, y, true);
        graph->setPen(QPen(QColor::fromHsv(hue += 7, 200, 255), lineWidthPx));
    }
    plot->xAxis->setRange(0, rows + 1);
    plot->yAxis->setRange(0, 1100);
    return [plot] { plot->replot(QCustomPlot::rpImmediateRefresh); };
}

} // namespace kvo::bench

#else

namespace kvo::bench {

std::function<void()> qcustomplotRedraw(const Curves&, int, bool, int) {
    return {};
}

} // namespace kvo::bench
#endif
