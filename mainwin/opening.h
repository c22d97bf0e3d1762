#pragma once
// Opening things: the folder that a start is for, another folder, a run by its path, and those that
// were open last.
#include <optional>
#include <string>
#include <vector>

namespace kvo::forms {

// What the command line asks for.
struct StartWish {
    std::string path;        // of a folder or of a run; empty for none
    bool lastFolder = false; // started without a folder of its own, as from a menu
    // Where the program itself lies. Started in there without a path, as by a click on it, it takes
    // the folder of the last time, unless that one has been set up for runs.
    std::string programFolder = {};
};
struct StartPlace {
    std::string folder; // empty: the current one
    std::string run;    // that is opened at once; empty for none
};
// Where the program starts; nothing after the user was told why, or left. The services must be in
// place.
std::optional<StartPlace> startPlace(const StartWish& wish);

// The program's folder is the one that was open last from now on.
void rememberFolder();
// The same of a run in the graph window.
void rememberRun(const std::string& path);
// Those that were open last, the newest first.
std::vector<std::string> recentFolders();
std::vector<std::string> recentRuns();

// Opens a run: one of this folder in the graph window; of one that lies elsewhere it is asked
// whether to import it. A folder is opened as by openFolder. Anything else is told.
void openPath(const std::string& path);
// The same of what is dropped on a window; not while a command of the main window is at work.
void openDropped(const std::string& path);
// The same once no question stands over the windows and no command is at work, as behind the start.
void openSoon(const std::string& path);
// Starts the program anew in that folder, with its own password, lock and setup, and ends this one.
// A folder that is gone is told, and taken off those that were open last.
void openFolder(const std::string& folder);
// Asks for the folder first.
void askForFolder();
// A run that was open last; one that is gone is told and taken off. That of another folder is
// opened there.
void openRecentRun(const std::string& path);

} // namespace kvo::forms
