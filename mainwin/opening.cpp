#include "mainwin/opening.h"

#include "core/config.h"
#include "core/default_config.h"
#include "core/forms/doors.h"
#include "core/opening.h"
#include "core/paths.h"
#include "core/run_info.h"
#include "core/shared_state.h"
#include "library/import.h"
#include "library/run_list.h"
#include "platform/qt/application.h"
#include "platform/qt/text.h"
#include "platform/services.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTimer>

namespace kvo::forms {

using namespace platform_qt;

namespace {

using core::OpenedThing;
namespace boxStyle = platform::boxStyle;

constexpr const char* folderList = "folders";
constexpr const char* runList = "runs";
constexpr const char* openTitle = "Open";

platform::Dialogs& dialogs() {
    return *platform::services().dialogs;
}

platform::Files& disk() {
    return *platform::services().files;
}

std::vector<std::string> recent(const char* list) {
    const platform::Settings* settings = platform::services().settings;
    return settings != nullptr ? settings->list(list) : std::vector<std::string>();
}

void keepRecent(const char* list, const std::vector<std::string>& values) {
    if (platform::services().settings != nullptr)
        platform::services().settings->setList(list, values);
}

void tell(const std::string& text) {
    dialogs().messageBox(text, boxStyle::warning, openTitle);
}

void forget(const char* list, const std::string& path) {
    keepRecent(list, core::withoutRecent(recent(list), path));
    tell(path + "\nis not there any more. It is taken off the list.");
}

// The toolkit parts folders by / on every system, and the program by the system's own sign.
std::string ownPath(const QString& path) {
    return typedPath(QDir::toNativeSeparators(path));
}

// Whole and without links; as it is where there is nothing.
std::string wholePath(const std::string& path) {
    const QFileInfo info(shownPath(path));
    const QString whole = info.canonicalFilePath();
    return ownPath(whole.isEmpty() ? info.absoluteFilePath() : whole);
}

OpenedThing thingHere(const std::string& path) {
    return core::thingAt(
        path, wholePath(core::dataFolder(core::state().AppFolder, disk())), disk());
}

// --- The folder of a start

constexpr const char* pictures[] = {"Kvocar.dll", "Kvobike.dll"};

// What merely cannot be read is there.
bool isNotThere(const std::string& path) {
    const auto content = disk().readOrReason(path);
    return !content && content.failure == platform::FileFailure::notFound;
}

// Puts into a new folder what an installation ships; what is there already stays.
bool furnish(const std::string& folder) {
    platform::Files& files = disk();
    if (auto made = files.folderExists(folder) ? platform::WriteResult() : files.makeFolder(folder);
        !made) {
        tell(made.message);
        return false;
    }
    const std::string config = core::joined(folder, "Kvo.Cfg", files);
    if (isNotThere(config)) {
        const auto written = files.write(config, core::encodeConfig(core::defaultConfig()));
        if (!written) tell(written.message);
    }
    for (const char* name : pictures) {
        const std::string picture = core::joined(folder, name, files);
        const QString shipped = QStandardPaths::locate(
            QStandardPaths::GenericDataLocation, QStringLiteral("kvo/") + QLatin1String(name));
        // A folder without them shows none.
        if (!shipped.isEmpty() && isNotThere(picture))
            (void)files.copy(typedPath(shipped), picture);
    }
    return true;
}

std::optional<StartPlace> firstFolder() {
    const std::string documents =
        ownPath(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    const std::string around =
        disk().folderExists(documents) ? documents : ownPath(QDir::homePath());
    const std::string offered = core::joined(around, "Kvo", disk());
    const auto reply = dialogs().messageBox(
        "Kvo keeps the runs of your logger in a folder.\n\nDo you want to make the folder\n" +
            offered + "\nwith the default setup? No lets you choose another folder.",
        boxStyle::yesNoCancel + boxStyle::question, "Welcome to Kvo");
    if (reply == platform::Reply::yes)
        return furnish(offered) ? std::optional(StartPlace{offered, {}}) : std::nullopt;
    if (reply != platform::Reply::no) return std::nullopt;
    const auto chosen =
        dialogs().chooseFolder("The folder of your runs", ownPath(QDir::homePath()));
    return chosen && furnish(*chosen) ? std::optional(StartPlace{*chosen, {}}) : std::nullopt;
}

std::optional<StartPlace> lastFolder() {
    for (const std::string& folder : recentFolders()) {
        if (disk().folderExists(folder)) return StartPlace{folder, {}};
        forget(folderList, folder);
    }
    return firstFolder();
}

bool startedAmongPrograms(const StartWish& wish) {
    if (wish.programFolder.empty()) return false;
    const std::string here = currentFolder();
    return QFileInfo(shownPath(here)) == QFileInfo(shownPath(wish.programFolder)) &&
           !disk().exists(core::joined(here, "Kvo.Cfg", disk()));
}

// --- Runs

core::ChosenRun chosenRun(const std::string& name) {
    library::RunList& runs = library::runList();
    const core::SharedState& state = core::state();
    (void)runs.read(state.AppFolder, disk());
    runs.choose(-1); // a run that the list does not have leaves no choice
    runs.chooseFile(name);
    if (runs.chosenRow() >= 0) return runs.chosenRun(state.AppFolder, disk());
    const std::string path = core::joined(core::dataFolder(state.AppFolder, disk()), name, disk());
    return {path, core::infoFilePath(path), name, {}};
}

void showOwnRun(const std::string& path) {
    doors().showChosenRun(chosenRun(core::baseName(path)));
}

// The main window's menus, while an import asks.
class MenusOff {
public:
    MenusOff() { doors().EnableMainMenus(false); }
    ~MenusOff() { doors().EnableMainMenus(true); }
    MenusOff(const MenusOff&) = delete;
    MenusOff& operator=(const MenusOff&) = delete;
};

class UnseenImport : public library::ImportView {
public:
    void showFile(const std::string&, int, int) override {}
    void setProgress(int, int) override {}
    void clearProgress() override {}
    void showRuns() override {}
};

void importAndShow(const std::string& path) {
    const core::SharedState& state = core::state();
    library::ImportedBatch imported;
    {
        const MenusOff off;
        UnseenImport view;
        library::Import import(
            {state.Config, state.AppFolder, library::runList()}, view, dialogs(), disk());
        import.Data_File();
        const std::string name = core::baseName(path);
        const std::string folder = path.substr(0, path.size() - name.size() - 1);
        imported = import.Butten_Import(
            library::ImportMode::windows, folder.empty() ? "/" : folder, {name});
    }
    if (!imported.written.empty()) showOwnRun(imported.written.front());
}

void offerImport(const std::string& path) {
    const std::string lies = core::baseName(path) + "\nlies in another folder";
    if (core::state().LookOnly) return tell(lies + ", and this one is open for looking only.");
    const auto reply = dialogs().messageBox(lies + ". Do you want to import it into this one?",
        boxStyle::yesNo + boxStyle::question, openTitle);
    if (reply == platform::Reply::yes) importAndShow(path);
}

// Starts the program anew with a folder or a run, and ends this one.
void startAnew(const std::string& path) {
    const auto& start = platform::services().startAnew;
    if (!start || !start({path})) return tell("Kvo could not be started in\n" + path);
    doors().endProgram();
}

} // namespace

std::optional<StartPlace> startPlace(const StartWish& wish) {
    if (wish.path.empty())
        return wish.lastFolder || startedAmongPrograms(wish) ? lastFolder() : StartPlace();
    const std::string path = wholePath(wish.path);
    switch (core::thingAt(path, {}, disk())) {
    case OpenedThing::folder:
        return StartPlace{path, {}};
    case OpenedThing::nothing:
        tell(path + "\nis not there.");
        return std::nullopt;
    case OpenedThing::noRun:
        tell(path + "\nis no run of a logger.");
        return std::nullopt;
    default:
        break;
    }
    StartPlace place{core::folderOfRun(path), path};
    if (!place.folder.empty() || !wish.lastFolder) return place;
    const auto last = lastFolder();
    return last ? std::optional(StartPlace{last->folder, path}) : std::nullopt;
}

void rememberFolder() {
    keepRecent(folderList, core::withRecent(recentFolders(), wholePath(core::state().AppFolder)));
}

void rememberRun(const std::string& path) {
    keepRecent(runList, core::withRecent(recentRuns(), wholePath(path)));
}

std::vector<std::string> recentFolders() {
    return recent(folderList);
}

std::vector<std::string> recentRuns() {
    return recent(runList);
}

void openPath(const std::string& path) {
    const std::string whole = wholePath(path);
    switch (thingHere(whole)) {
    case OpenedThing::ownRun:
        return showOwnRun(whole);
    case OpenedThing::runElsewhere:
        return offerImport(whole);
    case OpenedThing::folder:
        return openFolder(whole);
    case OpenedThing::nothing:
        return tell(whole + "\nis not there.");
    case OpenedThing::noRun:
        return tell(whole + "\nis no run of a logger.");
    }
}

void openDropped(const std::string& path) {
    doors().mainMenusEnabled() ? openPath(path) : dialogs().beep();
}

void openSoon(const std::string& path) {
    constexpr int againMs = 50;
    QTimer::singleShot(0, qApp, [path] {
        const bool free =
            QApplication::activeModalWidget() == nullptr && doors().mainMenusEnabled();
        if (free) return openPath(path);
        QTimer::singleShot(againMs, qApp, [path] { openSoon(path); });
    });
}

void openFolder(const std::string& folder) {
    const std::string whole = wholePath(folder);
    if (!disk().folderExists(whole)) return forget(folderList, folder);
    if (whole == wholePath(core::state().AppFolder))
        return tell(whole + "\nis the folder that is open.");
    startAnew(whole);
}

void askForFolder() {
    const auto folder = dialogs().chooseFolder("Open Folder", core::state().AppFolder);
    if (folder) openFolder(*folder);
}

void openRecentRun(const std::string& path) {
    const std::string whole = wholePath(path);
    switch (thingHere(whole)) {
    case OpenedThing::nothing:
        return forget(runList, path);
    case OpenedThing::runElsewhere:
        if (!core::folderOfRun(whole).empty()) return startAnew(whole);
        return offerImport(whole);
    default:
        return openPath(whole);
    }
}

} // namespace kvo::forms
