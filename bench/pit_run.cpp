// The pit run's form on a logger that streams at the full rate of the line: what it takes of a
// core, how far the display is behind the line, and whether every frame is shown.
#include "link/forms/pit_run.h"
#include "bench/parts.h"
#include "bench/run.h"
#include "bench/timing.h"
#include "core/forms/doors.h"
#include "core/shared_state.h"
#include "link/forms/logger_line.h"
#include "platform/os/os_files.h"
#include "platform/qt/form_kit.h"
#include "platform/qt/qt_serial_port.h"
#include "platform/qt/qt_yield.h"
#include "platform/services.h"
#include "platform/unanswered_dialogs.h"
#include "tools/logger_simulator/duplex_line.h"
#include "tools/logger_simulator/model_logger.h"
#include "tools/logger_simulator/pty_logger.h"

#include <QCoreApplication>
#include <QEvent>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace kvo::bench {
namespace {

using platform_qt::control;
using platform_qt::form;

constexpr double byteSeconds = simulator::byteTimeMs / 1000;
constexpr int runMs = 10000;
const Goal coreGoal{0.05, "0.02"};
const Goal followsGoal{1, "0.4"};

// When each sample number was painted.
class PaintWatch : public QObject {
public:
    struct Painted {
        int sample;
        double seconds;
    };
    std::vector<Painted> all;

    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() != QEvent::Paint) return false;
        const QString text = static_cast<QLabel*>(object)->text();
        if (!text.isEmpty() && (all.empty() || all.back().sample != text.toInt()))
            all.push_back({text.toInt(), wallSeconds()});
        return false;
    }
};

struct Live {
    double core = 0;    // part of one
    double behind = 0;  // seconds behind the last byte of the frame, all but one in a hundred
    bool whole = false; // every frame was painted
};

void measured(bool well, const char* what) {
    if (well) return;
    std::fprintf(stderr, "kvo_bench: %s\n", what);
    std::exit(2);
}

// From Start to Stop over a real port.
Live press(int frameBytes) {
    PaintWatch watch;
    auto& window = form<forms::PitRun>();
    window.show();
    for (int turn = 0; turn < 50; ++turn) QCoreApplication::processEvents(); // it stands
    control<QLabel>(window, "LineNumber").installEventFilter(&watch);
    auto& button = control<QPushButton>(window, "Command1");
    QTimer::singleShot(runMs, &button, [&button] { button.click(); });
    const double start = wallSeconds();
    const double used = threadSeconds();
    button.click();
    Live live;
    live.core = (threadSeconds() - used) / (wallSeconds() - start);
    live.whole = watch.all.size() > 100;
    std::vector<double> behind;
    for (std::size_t i = 0; i < watch.all.size(); ++i) {
        const auto& [sample, seconds] = watch.all[i];
        live.whole = live.whole && sample == static_cast<int>(i);
        // The byte that starts the stream goes ahead of the frames.
        const double there = start + (1 + (sample + 1) * frameBytes) * byteSeconds;
        behind.push_back(seconds - there);
    }
    // Another program's slice of the machine now and then is not ours.
    std::sort(behind.begin(), behind.end());
    if (!behind.empty()) live.behind = behind[behind.size() * 99 / 100];
    return live;
}

Live live(int type) {
    const ScratchFolder folder;
    simulator::ModelLogger logger(type);
    simulator::PtyLogger pty(logger, true);
    measured(pty.start(), "no pseudo-terminal is to be had");
    std::filesystem::create_symlink(pty.device(), folder.path() + "/COM1");
    platform_os::OsFiles files;
    platform::UnansweredDialogs dialogs;
    platform_qt::QtSerialPort port([&] { return folder.path(); });
    platform_qt::QtYield yield(port);
    link::LoggerLink link(port, yield, dialogs);
    platform::services() = {};
    platform::services().files = &files;
    platform::services().dialogs = &dialogs;
    forms::useLoggerLink(&link);
    forms::doors().showMainWindow = [] {};
    core::AppConfig& config = core::state().Config = {};
    config.CommPort = 1;
    config.LoggerDataType = static_cast<std::int16_t>(type);
    config.Engine_Correction = config.Clutch_Correction = config.Pinion_Correction = 1;
    config.Analog_Check.fill(1);
    config.AnalogScale.fill(0.37F);
    config.Decimals.fill(2);
    const Live result = press(link::pitRunType(type)->frameBytes);
    measured(!port.portOpen(), "the pit run left its port open");
    platform_qt::unloadAllForms();
    forms::useLoggerLink(nullptr);
    platform::services() = {};
    return result;
}

} // namespace

void measurePitRun(Table& table) {
    for (const int type : {25, 43}) {
        const std::string job = "pit run, type " + std::to_string(type);
        const Live one = live(type);
        table.addRatio(job, "a core", one.core, coreGoal);
        table.add(job + ", display", "a tenth of a second", one.behind, 0.1, followsGoal);
        table.addDemand(job, "every frame is shown", one.whole);
    }
}

} // namespace kvo::bench
