#include "platform/qt/qt_yield.h"

#include "platform/qt/qt_serial_port.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

#include <algorithm>

namespace kvo::platform_qt {
namespace {

constexpr int hangUpPollMs = 50;
constexpr qint64 nanosecondsPerTurn = 1'000'000 / platform::turnsPerMillisecond;

int millisecondsOf(int turns) {
    return (turns + platform::turnsPerMillisecond - 1) / platform::turnsPerMillisecond;
}

} // namespace

int QtYield::turns(int limit) {
    constexpr int timeIsOver = 1;
    QElapsedTimer clock;
    clock.start();
    QEventLoop loop;
    QObject::connect(&m_port, &QtSerialPort::activity, &loop, &QEventLoop::quit);

    QTimer end;
    end.setTimerType(Qt::PreciseTimer);
    end.setSingleShot(true);
    QObject::connect(&end, &QTimer::timeout, &loop, [&loop] { loop.exit(timeIsOver); });
    end.start(millisecondsOf(limit));

    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &m_port, &QtSerialPort::pollHangUp);
    if (m_port.portOpen() && millisecondsOf(limit) > hangUpPollMs) watch.start(hangUpPollMs);

    // A loop that does not run any more (the program is ending) must not turn the wait into a spin.
    const int reason = loop.exec();
    if (reason != 0) return limit;
    const auto passed =
        static_cast<int>(std::min<qint64>(clock.nsecsElapsed() / nanosecondsPerTurn, limit));
    return std::max(passed, 1);
}

} // namespace kvo::platform_qt
