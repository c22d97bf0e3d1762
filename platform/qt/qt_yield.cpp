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

// The toolkit's precise timers on Windows, and those of under 20 ms, never woke a loop that slept
// under wine; the plain ones do, and are good to some hundredths of a wait.
#ifdef Q_OS_WIN
constexpr Qt::TimerType endTimer = Qt::CoarseTimer;
constexpr int shortestEndMs = 20;
#else
constexpr Qt::TimerType endTimer = Qt::PreciseTimer;
constexpr int shortestEndMs = 1;
#endif

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
    end.setTimerType(endTimer);
    end.setSingleShot(true);
    connect(&end, &QTimer::timeout, [&timeIsOver] { timeIsOver = true; });
    end.start(std::max(millisecondsOf(limit), shortestEndMs));
    while (m_activity == before && !timeIsOver)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    if (timeIsOver) return limit;
    const auto passed =
        static_cast<int>(std::min<qint64>(clock.nsecsElapsed() / nanosecondsPerTurn, limit));
    return std::max(passed, 1);
}

} // namespace kvo::platform_qt
