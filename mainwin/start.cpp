#include "mainwin/start.h"

#include "calc/forms/calc_form.h"
#include "calc/forms/conversions.h"
#include "core/config.h"
#include "core/default_config.h"
#include "core/forms/doors.h"
#include "core/shared_state.h"
#include "core/start.h"
#include "core/tidy_folder.h"
#include "graph/forms/data_graph.h"
#include "graph/run_preview.h"
#include "library/forms/browser.h"
#include "library/forms/copy.h"
#include "library/forms/import_form.h"
#include "library/forms/info.h"
#include "library/forms/load_file.h"
#include "library/forms/run_statistics.h"
#include "library/forms/time_graph.h"
#include "library/run_list.h"
#include "library/unlisted_runs.h"
#include "link/forms/download_data.h"
#include "link/forms/pit_run.h"
#include "link/forms/port_search.h"
#include "link/forms/setup_obc.h"
#include "link/port_list.h"
#include "mainwin/about.h"
#include "mainwin/folder_held.h"
#include "mainwin/help.h"
#include "mainwin/main_window.h"
#include "mainwin/opening.h"
#include "mainwin/product.h"
#include "mainwin/splash.h"
#include "mainwin/toolbar_icons.h"
#include "platform/qt/application.h"
#include "platform/qt/form_kit.h"
#include "platform/qt/text.h"
#include "platform/services.h"
#include "setup/forms/custom_scale.h"
#include "setup/forms/setup_software.h"
#include "setup/forms/visible_options.h"

#include <QApplication>
#include <QIcon>
#include <QTimer>

namespace kvo::forms {

using namespace platform_qt;

namespace {

void showDataGraph() {
    auto& graph = form<DataGraph>();
    hideMainWindow();
    graph.show();
}

void endProgram() {
    if (isLoaded<DataGraph>()) form<DataGraph>().close();
    if (isLoaded<VrnWin32>()) form<VrnWin32>().close();
}

void showFreshRun(const std::string& path, const std::string& caption) {
    auto& graph = form<DataGraph>();
    graph.openFresh(path, caption);
    graph.show();
    hideMainWindow();
}

void showChosenRun(const std::optional<core::ChosenRun>& run) {
    form<DataGraph>().openChosen(run);
    hideMainWindow();
}

void raiseGraph() {
    if (!isLoaded<DataGraph>()) return;
    auto& graph = form<DataGraph>();
    graph.setWindowState(graph.windowState() & ~Qt::WindowMinimized);
    graph.raise();
    graph.activateWindow();
}

void showTimeGraph(bool fromGraph) {
    auto& timeGraph = form<TimeGraph>();
    if (!fromGraph) hideMainWindow();
    timeGraph.showTable(fromGraph);
}

void showPitRun() {
    auto& pitRun = form<PitRun>();
    hideMainWindow();
    pitRun.show();
}

// The main window may be closed while the logger is asked.
void configureComputer() {
    form<SetupOBC>().configure(
        [] { return !isLoaded<VrnWin32>() || form<VrnWin32>().isVisible(); });
}

std::optional<core::ChosenRun> chooseRun(const std::string& button, const std::string& title) {
    return form<LoadFile>().choose(shown(button), shown(title));
}

void chooseRunsToDelete(const std::string& title) {
    form<LoadFile>().chooseToDelete(shown(title));
}

void showVisibleOptions(const core::FromOne<std::string, 8>& analogNames) {
    auto& options = form<Visible_Options>();
    options.Form_Load(analogNames);
    showModal(options);
}

// Back and forward in the graph go on from the fresh run.
void refreshChooser(const std::string& fileName) {
    library::RunList& runs = library::runList();
    runs.read(core::state().AppFolder, *platform::services().files);
    runs.choose(-1); // a run that the list does not have leaves no choice
    runs.chooseFile(fileName);
}

core::RunPicture runPreview(const std::string& path, int widthPx, int heightPx) {
    return graph::runPreview(
        path, widthPx, heightPx, core::state().Config, *platform::services().files);
}

void mailRuns() {
    form<Copy>().mailFiles({versionNumbers(), makersPage()});
}

std::optional<std::string> browseFolder() {
    auto folder = form<Browser>().browse();
    unload<Browser>();
    return folder;
}

// Behind the main window's first events, so that it stands there under the question.
void offerUnlistedRuns() {
    QTimer::singleShot(0, &form<VrnWin32>(), [] {
        const MainMenusDisabled off;
        const platform::Services& services = platform::services();
        library::offerUnlistedRuns(core::state().AppFolder, *services.files, *services.dialogs);
    });
}

// From here on no file of the program's folder is changed.
void lookOnly() {
    core::SharedState& state = core::state();
    platform::services().lookOnlyAt(state.AppFolder);
    state.LookOnly = true;
}

// Who may write in the folder is settled before anything in it is read. False where this start is
// to end: the user has gone to the other window, which opens `run` then, or leaves.
bool settleFolder(const std::string& run) {
    core::SharedState& state = core::state();
    const platform::Services& services = platform::services();
    services.showRequests->whenAsked([](const std::string& asked) {
        bringToFront();
        if (!asked.empty()) openSoon(asked);
    });
    bool unreached = false;
    while (const auto holder = services.folderLock->take(state.AppFolder)) {
        const auto answer = form<FolderHeld>().ask(*holder, state.AppFolder, unreached);
        unload<FolderHeld>();
        if (answer == FolderHeld::Answer::lookOnly) {
            lookOnly();
            break;
        }
        if (answer == FolderHeld::Answer::leave) return false;
        if (services.showRequests->askToShow(*holder, run)) return false;
        unreached = true; // unless it has ended meanwhile, and the folder can be taken
    }
    return true;
}

} // namespace

void openDoors() {
    Doors& all = doors();
    all.hideMainWindow = hideMainWindow;
    all.showMainWindow = showMainWindow;
    all.EnableMainMenus = EnableMainMenus;
    all.mainMenusEnabled = mainMenusEnabled;
    all.endProgram = endProgram;
    all.showDataGraph = showDataGraph;
    all.showFreshRun = showFreshRun;
    all.showChosenRun = showChosenRun;
    all.raiseGraph = raiseGraph;
    all.showTimeGraph = showTimeGraph;
    all.chooseRun = chooseRun;
    all.chooseRunsToDelete = chooseRunsToDelete;
    all.refreshChooser = refreshChooser;
    all.runPreview = runPreview;
    all.importRuns = [](bool ofThisProgram) {
        return form<Import>().importRuns(
            ofThisProgram ? library::ImportMode::windows : library::ImportMode::dos);
    };
    all.copyRuns = [] { form<Copy>().copyFiles(); };
    all.mailRuns = mailRuns;
    all.browseFolder = browseFolder;
    all.showStatistics = [](const GraphTexts& texts) { form<Statistics>().showRun(texts); };
    all.showVisibleOptions = showVisibleOptions;
    all.redrawGraph = redrawGraph;
    all.keepGraphOptions = keepGraphOptions;
    all.chooseCustomScale = [](const SizeInTwips& graphInner) {
        return form<CustomScale>().choose(graphInner);
    };
    // Its session unloads it on every way out.
    all.downloadData = [] { showModal(form<DownloadData>()); };
    all.showPitRun = showPitRun;
    all.configureComputer = configureComputer;
    // Its Save and its Cancel unload it.
    all.showSoftwareSetup = [] { showModal(form<SetupSoftware>()); };
    all.findLoggerPort = [] { return PortSearch().search(); };
    all.describePorts = [] { return link::describePorts(*platform::services().port); };
    all.loadLogo = loadLogo;
    all.showInfo = [](const std::string& runPath, const std::string& caption) {
        form<Info>().editRun(runPath, caption);
    };
    all.editVehicleSetup = [] { form<Info>().editSetupDefaults(); };
    all.showCalculator = [](int sum) { form<CalcForm>().showSum(sum); };
    all.showConversions = [] { form<Conversions>().showForMainWindow(); };
    all.openConversions = [] { form<Conversions>().showOverForm(); };
    all.openDropped = openDropped;
    all.rememberRun = rememberRun;
    all.showAbout = [] { showModal(form<About>()); };
    all.showHelp = showHelp;
    takeHelpKey();
}

bool startProgram(const std::string& run) {
    openDoors();
    QApplication::setWindowIcon(programIcon());
    platform::Services& services = platform::services();
    if (!core::processorSuffices(processorType, *services.dialogs)) return false;
    core::SharedState& state = core::state();
    state.AppFolder = currentFolder();
    if (!settleFolder(run)) return false;
    if (!state.LookOnly) core::tidyFolder(state.AppFolder, services.clock->now(), *services.files);
    // What a file that is missing or cut does not give has sensible values.
    state.Config = core::defaultConfig();
    // Where the file is of no use, the setup form says whether the user has stated a setup.
    state.ConfigKnown = false;
    readConfig();
    showModal(form<frmSplash>());
    const bool mayGoOn = form<frmSplash>().LoginSucceeded;
    unload<frmSplash>();
    if (mayGoOn) {
        rememberFolder();
        form<VrnWin32>().show();
        offerUnlistedRuns();
    }
    return mayGoOn;
}

} // namespace kvo::forms
