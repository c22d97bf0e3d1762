// Golden vectors through real forms, off-screen.
#include "link_functions.h"

#include "core/forms/doors.h"
#include "link/forms/download_data.h"
#include "link/forms/logger_line.h"
#include "platform/qt/application.h"
#include "platform/qt/form_kit.h"
#include "platform/services.h"

#include <QApplication>
#include <QPushButton>
#include <QTest>

#include <memory>
#include <stdexcept>

namespace kvo::vectors {
namespace {

// The other forms have no part in a vector.
void openDoors() {
    forms::doors().refreshChooser = [](const std::string&) {};
    forms::doors().showFreshRun = [](const std::string&, const std::string&) {};
    forms::doors().showSoftwareSetup = [] {
        throw std::runtime_error("the configuration is refused");
    };
}

core::SharedState& pressStartOfTheForm(
    Bench& bench, platform::Clock& clock, testing::MemoryFiles& files) {
    core::SharedState& state = core::state();
    state = core::SharedState();
    state.AppFolder = folderOfDownloads;
    state.Config.CommPort = 1;
    platform::services() = {&files, &clock, &bench.dialogs, nullptr, nullptr, nullptr};
    link::LoggerLink link(bench.line, bench.line, bench.dialogs);
    forms::useLoggerLink(&link);
    openDoors();
    auto& window = platform_qt::form<forms::DownloadData>();
    window.show();
    if (!QTest::qWaitForWindowExposed(&window)) throw std::runtime_error("the form is not shown");
    QTest::mouseClick(&platform_qt::control<QPushButton>(window, "Command_Send"), Qt::LeftButton);
    platform_qt::unloadAllForms();
    forms::useLoggerLink(nullptr);
    forms::doors() = forms::Doors();
    platform::services() = {};
    return state;
}

} // namespace

std::shared_ptr<void> makeApplication() {
    static int argc = 1;
    static char name[] = "kvo_vectors";
    static char* argv[] = {name, nullptr};
    auto application = std::make_shared<QApplication>(argc, argv);
    platform_qt::prepareApplication(*application);
    return application;
}

void addFormFunctions() {
    add("FullDownload", [](const Case& c) { return fullDownload(c, pressStartOfTheForm); });
}

} // namespace kvo::vectors
