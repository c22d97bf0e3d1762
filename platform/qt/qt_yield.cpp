#include "platform/qt/qt_yield.h"

#include "platform/qt/form_kit.h"
#include "platform/qt/port_activity.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <algorithm>

namespace kvo::platform_qt {
namespace {

constexpr qint64 nanosecondsPerTurn = 1'000'000 / platform::turnsPerMillisecond;

int millisecondsOf(int turns) {
    return (turns + platform::turnsPerMillisecond - 1) / platform::turnsPerMillisecond;
}

} // namespace

QtYield::QtYield(PortActivity& port) {
    connect(&port, &PortActivity::activity, this, [this] { ++m_activity; });
}

// No event loop object: leaving one costs two more wake-ups, and this runs a thousand times a
// second.
int QtYield::turns(int limit) {
    const Waiting waiting;
    const unsigned before = m_activity;
    bool timeIsOver = false;
    QElapsedTimer clock;
    clock.start();
    QTimer end;
    end.setTimerType(Qt::PreciseTimer);
    end.setSingleShot(true);
    connect(&end, &QTimer::timeout, [&timeIsOver] { timeIsOver = true; });
    end.start(millisecondsOf(limit));
    while (m_activity == before && !timeIsOver)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    if (timeIsOver) return limit;
    const auto passed =
        static_cast<int>(std::min<qint64>(clock.nsecsElapsed() / nanosecondsPerTurn, limit));
    return std::max(passed, 1);
}

} // namespace kvo::platform_qt
