#include "core/tidy_folder.h"

#include "core/analog_tables.h"
#include "core/basic/format.h"
#include "core/paths.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <map>
#include <set>

namespace kvo::core {

namespace {

constexpr int daysOfEachDay = 30;
constexpr int daysOfEachMonth = 365;
constexpr std::size_t rawSessionsKept = 200; // some 100 kB each

bool isDigits(std::string_view text) {
    return !text.empty() &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// Days from a fixed day to that of the moment.
int dayOf(const platform::DateTime& moment) {
    using namespace std::chrono;
    const year_month_day date{year{moment.year}, month{static_cast<unsigned>(moment.month)},
        day{static_cast<unsigned>(moment.day)}};
    return static_cast<int>(sys_days{date}.time_since_epoch().count());
}

long secondOf(const platform::DateTime& moment) {
    constexpr long secondsADay = 86400;
    return dayOf(moment) * secondsADay + moment.hour * 3600L + moment.minute * 60L + moment.second;
}

// The file that a copy is of, where it is one of those that are thinned; empty else.
std::string thinnedFile(const std::string& copy) {
    const std::size_t dot = copy.rfind('.');
    if (dot == std::string::npos || !isDigits(std::string_view(copy).substr(dot + 1))) return {};
    std::string name = copy.substr(0, dot);
    static const std::set<std::string> thinned{"KvoData.Ini", "Kvo.Cfg", "KvoTimes", "VSetup.Dat"};
    if (thinned.contains(name)) return name;
    for (int channel = 1; channel <= AnalogTables::size; ++channel)
        if (name == analogTableName(channel)) return name;
    return {};
}

// Year to hour, a dot, the minute: the name of a run without its last letter, and a known end.
bool isRawSession(std::string_view name) {
    constexpr std::size_t hourDigits = 8;
    constexpr std::size_t nameLength = 11;
    if (name.size() < nameLength || name[hourDigits] != '.') return false;
    if (!isDigits(name.substr(0, hourDigits))) return false;
    if (!isDigits(name.substr(hourDigits + 1, nameLength - hourDigits - 1))) return false;
    const std::string_view end = name.substr(nameLength);
    return end == "d.raw" || end == "d-failed.raw";
}

// What of the copies are held one to one: nothing of today, which stays whole; else a day or a
// month by its words.
std::string stretchOf(const platform::DateTime& made, int age) {
    return Format(made, age <= daysOfEachDay ? "yyyy-mm-dd" : "yyyy-mm");
}

void removeLeftovers(
    const std::string& folder, const platform::DateTime& now, platform::Files& files) {
    constexpr long oldEnough = 24L * 3600;
    for (const std::string& name : files.list(folder)) {
        if (!isWriteLeftover(name)) continue;
        const std::string path = joined(folder, name, files);
        const auto made = files.createdOn(path);
        if (made && secondOf(now) - secondOf(*made) > oldEnough) (void)files.remove(path);
    }
}

void thinCopies(const std::string& folder, const platform::DateTime& now, platform::Files& files) {
    std::map<std::string, std::vector<KeptCopy>> copies;
    for (const std::string& name : files.list(folder)) {
        const std::string file = thinnedFile(name);
        if (file.empty()) continue;
        if (const auto made = files.createdOn(joined(folder, name, files)))
            copies[file].push_back({name, *made});
    }
    for (auto& [file, ofFile] : copies)
        for (const std::string& name : copiesToDrop(std::move(ofFile), now))
            (void)files.remove(joined(folder, name, files));
}

void thinRawSessions(const std::string& folder, platform::Files& files) {
    for (const std::string& name : rawSessionsToDrop(files.list(folder)))
        (void)files.remove(joined(folder, name, files));
}

} // namespace

bool isWriteLeftover(std::string_view name) {
    constexpr std::string_view end = ".new";
    if (!name.starts_with('.') || !name.ends_with(end) || name.size() <= end.size()) return false;
    name = name.substr(1, name.size() - 1 - end.size());
    const std::size_t dash = name.rfind('-');
    const std::size_t dot = name.rfind('.');
    if (dash == std::string_view::npos || dot == std::string_view::npos || dot == 0 || dash < dot)
        return false;
    return isDigits(name.substr(dot + 1, dash - dot - 1)) && isDigits(name.substr(dash + 1));
}

std::vector<std::string> copiesToDrop(
    std::vector<KeptCopy> copies, const platform::DateTime& today) {
    std::stable_sort(copies.begin(), copies.end(),
        [](const KeptCopy& a, const KeptCopy& b) { return secondOf(a.made) < secondOf(b.made); });
    std::vector<std::string> dropped;
    std::set<std::string> held;
    for (std::size_t i = 0; i + 1 < copies.size(); ++i) {
        const int age = dayOf(today) - dayOf(copies[i].made);
        if (age <= 0) continue;
        const bool old = age > daysOfEachMonth;
        if (old || !held.insert(stretchOf(copies[i].made, age)).second)
            dropped.push_back(copies[i].name);
    }
    return dropped;
}

std::vector<std::string> rawSessionsToDrop(const std::vector<std::string>& names) {
    std::vector<std::string> raw;
    std::copy_if(names.begin(), names.end(), std::back_inserter(raw), isRawSession);
    std::sort(raw.begin(), raw.end());
    raw.resize(raw.size() - std::min(raw.size(), rawSessionsKept));
    return raw;
}

void tidyFolder(
    const std::string& appFolder, const platform::DateTime& now, platform::Files& files) {
    const std::string backup = joined(appFolder, "Backup", files);
    for (const std::string& folder : {appFolder, dataFolder(appFolder, files), backup})
        removeLeftovers(folder, now, files);
    thinCopies(backup, now, files);
    thinRawSessions(backup, files);
}

} // namespace kvo::core
