#pragma once
// The list of runs and the choice made in it: the rows of the index in their own order, and the row
// that the chooser stands on. The chooser shows it, the graph steps through it.
#include "core/open_run.h"
#include "core/run_index.h"
#include "platform/files.h"

#include <string>
#include <string_view>
#include <vector>

namespace kvo::library {

class RunList {
public:
    // Reads the index; a missing one is created empty. The choice stays on its run, else it goes to
    // the run that was taken last, else to the newest one. Gives why an index that is there could
    // not be read, which leaves the list empty; empty else.
    std::string read(const std::string& appFolder, platform::Files& files);

    const std::vector<core::RunIndexEntry>& rows() const { return m_rows; }
    int rowCount() const { return static_cast<int>(m_rows.size()); }

    // The row of the choice, -1 for none.
    int chosenRow() const { return m_chosen; }
    // Any row of the list; every other number is no choice.
    void choose(int row);
    // The row with that file name; no change where there is none.
    void chooseFile(std::string_view fileName);
    // Both columns of the choice, empty for none.
    core::RunIndexEntry chosen() const;
    // Whether there is a row `rows` further down (negative: up); step goes there.
    bool canStep(int rows) const;
    void step(int rows);

    // The choice as a value, with the paths of its files.
    core::ChosenRun chosenRun(const std::string& appFolder, const platform::Files& files) const;
    // The choice was taken: the list opens on it the next time.
    void take() { m_lastTaken = chosen().FileName; }

    // Deletes the chosen run with its files; nothing is chosen then.
    [[nodiscard]] platform::WriteResult deleteChosen(
        const std::string& appFolder, platform::Files& files);
    // Gives the chosen run a new text behind its ":"; see editDescription.
    [[nodiscard]] platform::WriteResult renameChosen(const std::string& appFolder,
        std::string_view newText, core::OpenRun& openRun, platform::Files& files);

private:
    std::string readAnew(const std::string& appFolder, platform::Files& files);

    std::vector<core::RunIndexEntry> m_rows;
    int m_chosen = -1;
    std::string m_lastTaken; // file name
};

// The one list of the program. Forms and main reach it; logic gets it handed in.
RunList& runList();

} // namespace kvo::library
