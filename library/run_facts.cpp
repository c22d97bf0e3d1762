#include "library/run_facts.h"

#include "core/basic/numbers.h"
#include "library/chooser_list.h"
#include "library/run_filter.h"

#include <algorithm>
#include <initializer_list>
#include <utility>

namespace kvo::library {

namespace {

constexpr std::int32_t notKnown = -1;
constexpr std::size_t longestNote = 150; // that has room under a picture
constexpr std::size_t mostInView = 200;  // more rows than a screen shows

core::RunNotes notesOf(
    const std::string& appFolder, const std::string& fileName, const platform::Files& files) {
    const std::string path = dataFilePath(appFolder, fileName, files);
    return path.empty() ? core::RunNotes{} : core::readRunNotes(core::infoFilePath(path), files);
}

std::string trimmedText(std::string_view text) {
    return core::rightTrimmed(core::leftTrimmed(text));
}

// "7.52", "7.52 at 185.2", "at 185.2"; empty where neither is known.
std::string timeAndSpeed(const std::string& time, const std::string& speed) {
    if (speed.empty()) return time;
    return (time.empty() ? "" : time + " ") + "at " + speed;
}

} // namespace

void RunFacts::setRows(const std::vector<core::RunIndexEntry>& rows, const std::string& appFolder) {
    m_rows = &rows;
    m_appFolder = appFolder;
    m_ofRow.assign(rows.size(), notKnown);
    m_inView.clear();
    m_next = 0;
    m_readCount = 0;
    if (m_ofFile.empty()) return;
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const auto found = m_ofFile.find(rows[row].FileName);
        if (found == m_ofFile.end()) continue;
        m_ofRow[row] = found->second;
        ++m_readCount;
    }
}

void RunFacts::forget() {
    m_facts.clear();
    m_ofFile.clear();
    std::fill(m_ofRow.begin(), m_ofRow.end(), notKnown);
    m_inView.clear();
    m_all = false;
    m_next = 0;
    m_readCount = 0;
}

const RunFact* RunFacts::known(int row) const {
    if (row < 0 || row >= static_cast<int>(m_ofRow.size())) return nullptr;
    const std::int32_t place = m_ofRow[static_cast<std::size_t>(row)];
    return place == notKnown ? nullptr : &m_facts[static_cast<std::size_t>(place)];
}

void RunFacts::want(int row) {
    if (row < 0 || row >= static_cast<int>(m_ofRow.size()) || known(row) != nullptr) return;
    if (std::find(m_inView.begin(), m_inView.end(), row) != m_inView.end()) return;
    if (m_inView.size() == mostInView) m_inView.erase(m_inView.begin());
    m_inView.push_back(row);
}

bool RunFacts::wantsMore() const {
    return !m_inView.empty() || (m_all && !allRead());
}

// -1 where no row is wanted.
int RunFacts::nextWanted() {
    while (!m_inView.empty()) {
        const int row = m_inView.back();
        m_inView.pop_back();
        if (known(row) == nullptr) return row;
    }
    if (!m_all) return -1;
    while (m_next < static_cast<int>(m_ofRow.size()) && known(m_next) != nullptr) ++m_next;
    return m_next < static_cast<int>(m_ofRow.size()) ? m_next : -1;
}

std::vector<int> RunFacts::read(int count, const platform::Files& files) {
    std::vector<int> rows;
    for (int i = 0; i < count; ++i) {
        const int row = nextWanted();
        if (row < 0) break;
        take(row, files);
        rows.push_back(row);
    }
    return rows;
}

void RunFacts::take(int row, const platform::Files& files) {
    const std::string& name = (*m_rows)[static_cast<std::size_t>(row)].FileName;
    auto found = m_ofFile.find(name);
    if (found == m_ofFile.end()) {
        core::RunNotes notes = notesOf(m_appFolder, name, files);
        m_facts.push_back({trimmedText(notes.times.Text_ET), trimmedText(notes.Text_Mph),
            folded(notes.Info_Text)});
        found = m_ofFile.emplace(name, static_cast<std::int32_t>(m_facts.size() - 1)).first;
    }
    m_ofRow[static_cast<std::size_t>(row)] = found->second;
    ++m_readCount;
}

std::vector<std::string> previewLines(const core::RunNotes& notes) {
    const core::TrackTimes& times = notes.times;
    std::vector<std::string> lines;
    const std::initializer_list<std::pair<const char*, std::string>> all{
        {"60 foot: ", trimmedText(times.Text_60FootTime)},
        {"330 foot: ", trimmedText(times.Text_330FootTime)},
        {"660 foot: ", timeAndSpeed(trimmedText(times.Text_660FootTime),
                           trimmedText(times.Text_660FootSpeed))},
        {"1000 foot: ", trimmedText(times.Text_1000FootTime)},
        {"Elapsed time: ", timeAndSpeed(trimmedText(times.Text_ET), trimmedText(notes.Text_Mph))}};
    for (const auto& [name, text] : all)
        if (!text.empty()) lines.push_back(name + text);
    std::string first = trimmedText(
        std::string_view(notes.Info_Text).substr(0, notes.Info_Text.find_first_of("\r\n")));
    if (first.size() > longestNote) first = first.substr(0, longestNote) + "...";
    if (!first.empty()) lines.push_back("Notes: " + first);
    if (lines.empty()) lines.emplace_back("No times and no notes yet.");
    return lines;
}

} // namespace kvo::library
