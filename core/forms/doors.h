#pragma once
// The one page on which forms call one another. A form includes this page and never another form's
// header; the start of the program opens every door, and a form's test opens those that it scripts.
// Texts have one byte a character, as everywhere in the logic; paths are the system's own text.
#include "core/basic/from_one.h"
#include "core/open_run.h"
#include "core/run_picture.h"

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kvo::forms {

// Tells the door's name on the error output and ends the program.
[[noreturn]] void endAtShutDoor(const char* name);

// A way to another form. It is opened by assigning a function. Whoever goes through a door that was
// never opened ends the program, since a command that has no effect would be found much later.
template <class Call> class Door;
template <class Result, class... Arguments> class Door<Result(Arguments...)> {
public:
    explicit Door(const char* name) : m_name(name) {}
    Door& operator=(std::function<Result(Arguments...)> way) {
        m_way = std::move(way);
        return *this;
    }
    bool isOpen() const { return static_cast<bool>(m_way); }
    Result operator()(Arguments... arguments) const {
        if (!isOpen()) endAtShutDoor(m_name);
        return m_way(std::forward<Arguments>(arguments)...);
    }

private:
    const char* m_name;
    std::function<Result(Arguments...)> m_way;
};

// What the statistics take from the graph window: its caption, the track times and the names of the
// analogs.
struct GraphTexts {
    std::string caption;
    core::TrackTimes times;
    core::FromOne<std::string, 8> analogNames;
};

// A window or a surface as the rules measure it.
struct SizeInTwips {
    double width = 0;
    double height = 0;
};

// A page of the help: the beginning of the guide, the keys, the commands, how the help is used, and
// the chapter on the graph.
enum class HelpPage { index, keyboard, commands, usingHelp, graph };

struct Doors {
    // The main window goes while another form is shown in its place, and comes back when that goes.
    Door<void()> hideMainWindow{"hideMainWindow"};
    Door<void()> showMainWindow{"showMainWindow"};
    // Its menus and its toolbar, which every modal command switches off while it works.
    Door<void(bool)> EnableMainMenus{"EnableMainMenus"};
    Door<bool()> mainMenusEnabled{"mainMenusEnabled"};
    // Ends the program as the close of its windows does: what the graph keeps is kept.
    Door<void()> endProgram{"endProgram"};

    // The graph window in the main window's place, not modal. It asks the chooser for its run.
    Door<void()> showDataGraph{"showDataGraph"};
    // The same on the run file that was just downloaded: its path, and the caption of the window.
    Door<void(const std::string&, const std::string&)> showFreshRun{"showFreshRun"};

    // The same on a run that was chosen elsewhere, also where the window is there already. Where it
    // is none the chooser comes up.
    Door<void(const std::optional<core::ChosenRun>&)> showChosenRun{"showChosenRun"};
    // The graph window, where there is one, comes to the front, out of the task bar too.
    Door<void()> raiseGraph{"raiseGraph"};
    // The times of the newest runs, not modal: in the main window's place, or opened from the graph
    // (true), which stays.
    Door<void(bool)> showTimeGraph{"showTimeGraph"};

    // The chooser, modal, with the caption of its button and its own. Empty where it was left
    // without a choice.
    Door<std::optional<core::ChosenRun>(const std::string&, const std::string&)> chooseRun{
        "chooseRun"};
    // The chooser, modal, under this caption: each run that the user picks and confirms is deleted.
    Door<void(const std::string&)> chooseRunsToDelete{"chooseRunsToDelete"};
    // The index has a fresh run of that file name: the list of runs is read again, and that run is
    // its choice. A file that is not in the list leaves the choice as it was.
    Door<void(const std::string&)> refreshChooser{"refreshChooser"};
    // A small picture of the run file at this path, so many device pixels wide and high; it is only
    // looked at.
    Door<core::RunPicture(const std::string&, int, int)> runPreview{"runPreview"};
    // The import of runs, modal: files of this program (true), or texts of the older one. The paths
    // of the run files that it has written.
    Door<std::vector<std::string>(bool)> importRuns{"importRuns"};
    // The form that copies runs to a folder, and the same form to send them by mail, modal.
    Door<void()> copyRuns{"copyRuns"};
    Door<void()> mailRuns{"mailRuns"};
    // Looks for a folder, modal: its path, UTF-8. Empty where it was left without one.
    Door<std::optional<std::string>()> browseFolder{"browseFolder"};
    // The statistics of the run in the graph window, modal.
    Door<void(const GraphTexts&)> showStatistics{"showStatistics"};

    // The options of the graph, modal, with the names of the analogs on it. What they change the
    // graph shows at once: channels on and off, picture, overlay and time line.
    Door<void(const core::FromOne<std::string, 8>&)> showVisibleOptions{"showVisibleOptions"};
    Door<void()> redrawGraph{"redrawGraph"};
    // The configuration is saved when the graph window goes.
    Door<void()> keepGraphOptions{"keepGraphOptions"};
    // Asks, modal, for the size of the graph's surface by the graph's inner size. Empty where the
    // question was left by Cancel.
    Door<std::optional<SizeInTwips>(const SizeInTwips&)> chooseCustomScale{"chooseCustomScale"};

    // The download form, modal. It may have put the graph in the main window's place.
    Door<void()> downloadData{"downloadData"};
    // The live display in the main window's place, not modal.
    Door<void()> showPitRun{"showPitRun"};
    // Asks the logger for its settings and shows the form that changes them, modal.
    Door<void()> configureComputer{"configureComputer"};
    // The software setup form, modal, where the configuration is missing or corrupt too.
    Door<void()> showSoftwareSetup{"showSoftwareSetup"};
    // The main window shows the picture of the vehicle that the configuration names now.
    Door<void()> loadLogo{"loadLogo"};
    // The search for the port that the logger is on, modal, which the user can stop. The port that
    // the user took, 1 to 16; none where none was found or taken.
    Door<std::optional<int>()> findLoggerPort{"findLoggerPort"};
    // What stands behind the ports 1 to 16 now, and whether it is free: a line each, UTF-8.
    Door<std::vector<std::string>()> describePorts{"describePorts"};
    // What the user records of a run file, by its path, modal under this caption. Whoever shows the
    // run's times reads them again afterwards.
    Door<void(const std::string&, const std::string&)> showInfo{"showInfo"};
    // The defaults of the vehicle's setup, modal.
    Door<void()> editVehicleSetup{"editVehicleSetup"};
    // A calculator, modal: the sum at this place of the table of calc/engine.
    Door<void(int)> showCalculator{"showCalculator"};
    // The unit convertor in the main window's place, not modal.
    Door<void()> showConversions{"showConversions"};
    // The same over the form that asks for it, modal.
    Door<void()> openConversions{"openConversions"};
    // Opens what was dropped on a window, or only beeps while the main menus are off: a run of this
    // folder goes to the graph window, one that lies elsewhere is offered for import, and a folder
    // for a new start in it.
    Door<void(const std::string&)> openDropped{"openDropped"};
    // A run is in the graph window: it is one of those that were open last. May be shut.
    Door<void(const std::string&)> rememberRun{"rememberRun"};
    // Name and version of the program, modal.
    Door<void()> showAbout{"showAbout"};
    // The help inside the program, not modal, but over a modal form that waits.
    Door<void(HelpPage)> showHelp{"showHelp"};
};

// The doors of the program.
Doors& doors();

} // namespace kvo::forms
