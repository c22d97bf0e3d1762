#include "library/run_list.h"

#include "core/run_info.h"
#include "library/chooser_list.h"

#include <algorithm>
#include <new>

namespace kvo::library {

std::string RunList::readAnew(const std::string& appFolder, platform::Files& files) {
    const std::string selected = chosen().FileName;
    core::ReadIndex index = core::readOrCreateRunIndex(appFolder, files);
    const auto row = rowToOpenOn(index.entries, selected.empty() ? m_lastTaken : selected);
    m_rows = std::move(index.entries);
    choose(row ? static_cast<int>(*row) : -1);
    return std::move(index.unread);
}

std::string RunList::read(const std::string& appFolder, platform::Files& files) {
    try {
        return readAnew(appFolder, files);
    } catch (const std::bad_alloc&) {
        return "Not enough memory to read the list of runs.";
    }
}

void RunList::choose(int row) {
    m_chosen = row >= 0 && row < rowCount() ? row : -1;
}

void RunList::chooseFile(std::string_view fileName) {
    const auto found = std::find_if(m_rows.begin(), m_rows.end(),
        [fileName](const core::RunIndexEntry& row) { return row.FileName == fileName; });
    if (found != m_rows.end()) choose(static_cast<int>(found - m_rows.begin()));
}

core::RunIndexEntry RunList::chosen() const {
    return m_chosen < 0 ? core::RunIndexEntry{} : m_rows[static_cast<std::size_t>(m_chosen)];
}

bool RunList::canStep(int rows) const {
    return m_chosen >= 0 && m_chosen + rows >= 0 && m_chosen + rows < rowCount();
}

void RunList::step(int rows) {
    if (canStep(rows)) m_chosen += rows;
}

core::ChosenRun RunList::chosenRun(
    const std::string& appFolder, const platform::Files& files) const {
    const core::RunIndexEntry entry = chosen();
    const std::string path = dataFilePath(appFolder, entry.FileName, files);
    return {path, core::infoFilePath(path), entry.FileName, entry.Description};
}

platform::WriteResult RunList::deleteChosen(const std::string& appFolder, platform::Files& files) {
    if (m_chosen < 0) return {};
    const std::size_t before = m_rows.size();
    auto deleted = DeleteFile(appFolder, m_rows, static_cast<std::size_t>(m_chosen), files);
    if (m_rows.size() != before) choose(-1);
    return deleted;
}

platform::WriteResult RunList::renameChosen(const std::string& appFolder, std::string_view newText,
    core::OpenRun& openRun, platform::Files& files) {
    if (m_chosen < 0) return {};
    return editDescription(
        appFolder, m_rows, static_cast<std::size_t>(m_chosen), newText, openRun, files);
}

RunList& runList() {
    static RunList list;
    return list;
}

} // namespace kvo::library
