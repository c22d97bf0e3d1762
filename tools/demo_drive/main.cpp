// Drives a whole download off-screen, through the program's own forms and at the speed of the line:
// from the menu to the run in the graph window.
#include "core/run_index.h"
#include "core/shared_state.h"
#include "driver.h"
#include "graph/forms/data_graph.h"
#include "line_bound.h"
#include "link/forms/logger_line.h"
#include "mainwin/main_window.h"
#include "mainwin/start.h"
#include "platform/machine/machine.h"
#include "platform/qt/application.h"
#include "platform/qt/form_kit.h"
#include "platform/qt/text.h"
#include "platform/services.h"
#include "tools/command_line/command_line.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QTimer>

#include <cstdio>
#include <cstdlib>

using namespace kvo;
using namespace kvo::platform_qt;

namespace {

constexpr int timeoutMs = 240'000;
const QSize pictureSize(1366, 768);

bool failed(const QString& text) {
    std::fprintf(stderr, "demo_drive: %s\n", qPrintable(text));
    return false;
}

// The run is on disk, in the index, and in the graph window.
bool checkRun(const core::SharedState& state) {
    const platform::Files& files = *platform::services().files;
    if (!files.exists(state.Run.path)) return failed(QStringLiteral("there is no run file"));
    const std::string index = core::indexPath(state.AppFolder, files);
    const auto entries = core::readRunIndex(index, files);
    const std::string name = QFileInfo(shownPath(state.Run.path)).fileName().toStdString();
    for (const core::RunIndexEntry& entry : entries) {
        if (entry.FileName != name) continue;
        std::printf("Run file:  %s\nRun index: %s (%s)\n", state.Run.path.c_str(), index.c_str(),
            entry.Description.c_str());
        return true;
    }
    return failed(QStringLiteral("the index does not have the run"));
}

bool savePicture(const QString& path) {
    auto& graph = form<forms::DataGraph>();
    if (!graph.isVisible() || !graph.hasRun())
        return failed(QStringLiteral("the graph does not show the run"));
    if (!graph.saveWindowPicture(path))
        return failed(QStringLiteral("%1 cannot be written").arg(path));
    std::printf("Picture:   %s\n", qPrintable(path));
    return true;
}

void printTimes(const demo::Driver& driver, const core::SharedState& state) {
    const double bound = demo::lineSeconds(state, !driver.wheelAsked());
    std::printf("Transfer:  %.2f s; the line itself needs %.2f s at the least (ratio %.3f)\n",
        driver.transferSeconds(), bound, driver.transferSeconds() / bound);
    std::printf("Processor: %.1f %% of a core meanwhile\n",
        100 * driver.transferCpuSeconds() / driver.transferSeconds());
}

// Back by the graph's own close and the main window's own Exit.
bool leave() {
    form<forms::DataGraph>().close();
    auto& window = form<forms::VrnWin32>();
    if (!window.isVisible()) return failed(QStringLiteral("the main window did not come back"));
    control<QAction>(window, "Mnu_Exit").trigger();
    return true;
}

bool report(const demo::Driver& driver) {
    const core::SharedState& state = core::state();
    if (!driver.problems().isEmpty()) return false;
    if (!driver.saidYesToView()) return failed(QStringLiteral("the run was not offered to view"));
    const bool there = checkRun(state) && savePicture(QDir::current().filePath("graph.png"));
    if (there) printTimes(driver, state);
    return there;
}

int drive() {
    if (!forms::startProgram()) return 1;
    int result = 1;
    demo::Driver driver(timeoutMs);
    QObject::connect(&driver, &demo::Driver::done, qApp, [&driver, &result] {
        if (isLoaded<forms::DataGraph>()) form<forms::DataGraph>().resize(pictureSize);
        // The resized window is painted first.
        QTimer::singleShot(200, qApp, [&driver, &result] {
            const bool good = report(driver);
            result = good && leave() ? 0 : 1;
            if (!good) QApplication::exit(1);
        });
    });
    driver.start();
    QApplication::exec();
    return result;
}

} // namespace

int main(int argc, char* argv[]) {
    const command_line::Syntax syntax{"demo_drive FOLDER",
        "Goes through a download with the clicks of a user, without a display. FOLDER\n"
        "holds Kvo.Cfg and the port's link COMn; the run file, the list of runs and\n"
        "graph.png are left in it. The exit code is 1 when anything of it failed.\n",
        1, 1};
    const auto arguments = command_line::read(syntax, argc, argv);
    if (arguments.exitCode) return *arguments.exitCode;
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    const std::string& folder = arguments.operands[0];
    if (!QDir::setCurrent(shownPath(folder)))
        return command_line::misuse(syntax, "there is no folder " + folder);
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication application(argc, argv);
    prepareApplication(application);

    platform_machine::Machine machine([] { return core::state().AppFolder; });
    platform::Services& services = platform::services();
    services = machine.services();
    services.settings = nullptr; // the user's own know nothing of this folder
    link::LoggerLink logger(*services.port, *services.yield, *services.dialogs);
    forms::useLoggerLink(&logger);
    const int result = drive();
    unloadAllForms();
    return result;
}
