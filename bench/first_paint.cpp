#include "bench/first_paint.h"

#include "bench/run.h"
#include "bench/silent_dialogs.h"
#include "bench/timing.h"
#include "core/config.h"
#include "mainwin/start.h"
#include "platform/os/heap.h"
#include "platform/os/os_clock.h"
#include "platform/os/os_files.h"
#include "platform/qt/application.h"
#include "platform/services.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QProcess>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <vector>

namespace kvo::bench {
namespace {

constexpr int starts = 7;
constexpr const char* programWord = "--first-paint-program";
constexpr const char* minimalWord = "--first-paint-minimal";

// Resident kB of this process, 0 where the system does not tell.
long residentKb() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:")) return line.mid(6).trimmed().split(' ').first().toLong();
    return 0;
}

// Ends the process as soon as a window has been painted.
class FirstPaintEnds : public QObject {
protected:
    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() != QEvent::Paint || !object->isWidgetType()) return false;
        if (!static_cast<QWidget*>(object)->isWindow()) return false;
        object->removeEventFilter(this);
        QMetaObject::invokeMethod(
            this,
            [] {
                std::printf("%ld\n", residentKb());
                std::fflush(stdout);
                std::_Exit(0);
            },
            Qt::QueuedConnection);
        return false;
    }
};

std::optional<FirstPaint> startOnce(Starter starter, const QString& folder) {
    QProcess child;
    child.setWorkingDirectory(folder);
    child.setProcessChannelMode(QProcess::SeparateChannels);
    const double begin = wallSeconds();
    child.start(QCoreApplication::applicationFilePath(),
        {QLatin1String(starter == Starter::program ? programWord : minimalWord)});
    if (!child.waitForReadyRead(10000)) return {};
    FirstPaint result;
    result.seconds = wallSeconds() - begin;
    child.waitForFinished();
    result.residentKb = child.readAllStandardOutput().trimmed().toDouble();
    if (result.residentKb <= 0) return {};
    return result;
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

} // namespace

std::optional<FirstPaint> firstPaint(Starter starter) {
    const ScratchFolder folder;
    platform_os::OsFiles files;
    core::AppConfig config;
    config.Vehicle_Type = 1;
    if (!core::SaveConfig(folder.path(), config, files)) return {};
    std::vector<double> seconds;
    std::vector<double> memory;
    for (int i = 0; i < starts; ++i) {
        const auto one = startOnce(starter, QString::fromStdString(folder.path()));
        if (!one) return {};
        seconds.push_back(one->seconds);
        memory.push_back(one->residentKb);
    }
    return FirstPaint{median(seconds), median(memory)};
}

std::optional<Starter> askedStart(int argc, char** argv) {
    if (argc != 2) return {};
    if (std::strcmp(argv[1], programWord) == 0) return Starter::program;
    if (std::strcmp(argv[1], minimalWord) == 0) return Starter::minimal;
    return {};
}

int runStart(Starter starter, int argc, char** argv) {
    QApplication application(argc, argv);
    FirstPaintEnds ends;
    application.installEventFilter(&ends);
    if (starter == Starter::minimal) {
        QLabel window(QStringLiteral("Kvo"));
        window.resize(640, 400);
        window.show();
        return QApplication::exec();
    }
    platform_os::keepFreedMemory();
    platform_qt::prepareApplication(application);
    platform_os::OsFiles files;
    platform_os::OsClock clock;
    SilentDialogs dialogs;
    platform::services() = {};
    platform::services().files = &files;
    platform::services().clock = &clock;
    platform::services().dialogs = &dialogs;
    forms::startProgram();
    return 1;
}

} // namespace kvo::bench
