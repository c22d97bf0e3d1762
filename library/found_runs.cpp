#include "library/found_runs.h"

#include "core/basic/numbers.h"
#include "library/run_filter.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace kvo::library {

namespace {

struct OrderFacts {
    const char* caption;
    OrderMark mark; // of no meaning in the list's own order
};

// By RunOrder.
constexpr std::array<OrderFacts, runOrders> orders{{{"As in the list", {}},
    {"Newest first", {RunColumn::run, true}}, {"Oldest first", {RunColumn::run, false}},
    {"Shortest elapsed time first", {RunColumn::elapsedTime, false}},
    {"Longest elapsed time first", {RunColumn::elapsedTime, true}},
    {"Highest speed first", {RunColumn::speed, true}},
    {"Lowest speed first", {RunColumn::speed, false}}}};

const OrderFacts& factsOf(RunOrder order) {
    return orders[static_cast<std::size_t>(order)];
}

constexpr std::array<std::string_view, 12> months{
    "Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

// The number that stands at a place of a text; -1 where there is none of that many digits.
int digitsAt(std::string_view text, std::size_t place, std::size_t count) {
    if (place + count > text.size()) return -1;
    int number = 0;
    for (const char c : text.substr(place, count)) {
        if (c < '0' || c > '9') return -1;
        number = number * 10 + (c - '0');
    }
    return number;
}

int runNumber(std::string_view description) {
    constexpr std::string_view before = "Run: ";
    constexpr double mostRuns = 999; // of one day
    const std::size_t place = description.find(before);
    if (place == std::string_view::npos) return 0;
    const double number = core::Val(description.substr(place + before.size()));
    return static_cast<int>(std::clamp(number, 0.0, mostRuns));
}

// What a row is sorted by; 0 where it is not known.
double sortKey(RunColumn column, const core::RunIndexEntry& row, const RunFact* fact) {
    if (column == RunColumn::run) return static_cast<double>(dayAndNumber(row.Description));
    if (fact == nullptr) return 0;
    const double value =
        core::Val(column == RunColumn::elapsedTime ? fact->Text_ET : fact->Text_Mph);
    return value > 0 ? value : 0;
}

} // namespace

const char* runOrderCaption(RunOrder order) {
    return factsOf(order).caption;
}

std::optional<OrderMark> orderMark(RunOrder order) {
    if (order == RunOrder::asListed) return {};
    return factsOf(order).mark;
}

RunOrder orderAfterClick(RunColumn column, RunOrder now) {
    constexpr std::array<std::pair<RunOrder, RunOrder>, runColumns> ofColumn{
        {{RunOrder::newestFirst, RunOrder::oldestFirst},
            {RunOrder::shortestTime, RunOrder::longestTime},
            {RunOrder::highestSpeed, RunOrder::lowestSpeed}}};
    const auto& [first, other] = ofColumn[static_cast<std::size_t>(column)];
    if (now == first) return other;
    return now == other ? RunOrder::asListed : first;
}

std::int64_t dayAndNumber(std::string_view description) {
    // "Sun 15 Nov 2026"
    constexpr std::size_t dayAt = 4;
    constexpr std::size_t monthAt = 7;
    constexpr std::size_t yearAt = 11;
    const int day = digitsAt(description, dayAt, 2);
    const int year = digitsAt(description, yearAt, 4);
    if (day < 0 || year < 0) return 0;
    const auto month = std::find(months.begin(), months.end(), description.substr(monthAt, 3));
    if (month == months.end()) return 0;
    const std::int64_t date = (year * 100 + (month - months.begin() + 1)) * 100 + day;
    return date * 1000 + runNumber(description);
}

void FoundRuns::setRows(const std::vector<core::RunIndexEntry>& rows) {
    m_rows = &rows;
    m_folded.clear();
    m_starts.clear();
    refresh();
}

bool FoundRuns::refresh() {
    const std::vector<int> sorted = std::exchange(m_sorted, {});
    const std::vector<int> found = std::exchange(m_found, {});
    sortRows();
    lookAmongAll();
    return m_sorted != sorted || m_found != found;
}

void FoundRuns::sortBy(RunOrder order) {
    m_by = order;
    refresh();
}

void FoundRuns::sortRows() {
    m_sorted.clear();
    const auto mark = orderMark(m_by);
    if (!mark || m_rows == nullptr) return;
    std::vector<std::pair<double, int>> keyed;
    keyed.reserve(m_rows->size());
    for (int row = 0; row < static_cast<int>(m_rows->size()); ++row) {
        keyed.emplace_back(
            sortKey(mark->column, (*m_rows)[static_cast<std::size_t>(row)], m_facts.known(row)),
            row);
    }
    const auto known = std::stable_partition(
        keyed.begin(), keyed.end(), [](const auto& each) { return each.first > 0; });
    std::stable_sort(keyed.begin(), known, [&](const auto& a, const auto& b) {
        return mark->falls ? a.first > b.first : a.first < b.first;
    });
    m_sorted.reserve(keyed.size());
    for (const auto& [key, row] : keyed) m_sorted.push_back(row);
}

// One text of all, so that a key typed in the filter line walks through memory once.
void FoundRuns::foldRows() {
    if (!m_starts.empty() || m_rows == nullptr) return;
    std::string all;
    std::vector<std::uint32_t> starts;
    starts.reserve(m_rows->size() + 1);
    for (const core::RunIndexEntry& row : *m_rows) {
        starts.push_back(static_cast<std::uint32_t>(all.size()));
        all += row.Description;
    }
    starts.push_back(static_cast<std::uint32_t>(all.size()));
    m_folded = folded(all);
    m_starts = std::move(starts);
}

std::string_view FoundRuns::foldedText(int row) const {
    const auto place = static_cast<std::size_t>(row);
    return std::string_view(m_folded).substr(
        m_starts[place], m_starts[place + 1] - m_starts[place]);
}

bool FoundRuns::has(int row) const {
    const std::string_view text = foldedText(row);
    const RunFact* fact = nullptr;
    return std::all_of(m_words.begin(), m_words.end(), [&](const std::string& word) {
        if (text.find(word) != std::string_view::npos) return true;
        if (fact == nullptr) fact = m_facts.known(row);
        return fact != nullptr && fact->notes.find(word) != std::string::npos;
    });
}

void FoundRuns::lookAmong(const std::vector<int>& rows) {
    std::vector<int> found;
    for (const int row : rows)
        if (has(row)) found.push_back(row);
    m_found = std::move(found);
}

void FoundRuns::lookAmongAll() {
    m_factsSeen = m_facts.readCount();
    m_found.clear();
    if (!isFiltered() || m_rows == nullptr) return;
    foldRows();
    if (!m_sorted.empty()) return lookAmong(m_sorted);
    std::vector<int> all(m_rows->size());
    std::iota(all.begin(), all.end(), 0);
    lookAmong(all);
}

void FoundRuns::filterBy(std::string_view line) {
    std::vector<std::string> words = filterWords(line);
    const bool amongFound =
        isFiltered() && isNarrower(words, m_words) && m_factsSeen == m_facts.readCount();
    m_words = std::move(words);
    if (amongFound) return lookAmong(m_found);
    lookAmongAll();
}

bool FoundRuns::needsFacts() const {
    const auto mark = orderMark(m_by);
    return isFiltered() || (mark && mark->column != RunColumn::run);
}

int FoundRuns::count() const {
    if (m_rows == nullptr) return 0;
    return static_cast<int>(isFiltered() ? m_found.size() : m_rows->size());
}

int FoundRuns::rowAt(int place) const {
    if (place < 0 || place >= count()) return -1;
    if (isFiltered()) return m_found[static_cast<std::size_t>(place)];
    return m_sorted.empty() ? place : m_sorted[static_cast<std::size_t>(place)];
}

int FoundRuns::placeOf(int row) const {
    if (!isFiltered() && m_sorted.empty()) return row >= 0 && row < count() ? row : -1;
    const std::vector<int>& shown = isFiltered() ? m_found : m_sorted;
    const auto at = std::find(shown.begin(), shown.end(), row);
    return at == shown.end() ? -1 : static_cast<int>(at - shown.begin());
}

std::optional<int> FoundRuns::findTyped(int from, std::string_view typed) const {
    const std::string wanted = folded(typed);
    if (wanted.empty()) return {};
    for (int step = 0; step < count(); ++step) {
        const int place = (from + step) % count();
        const auto row = static_cast<std::size_t>(rowAt(place));
        if (folded((*m_rows)[row].Description).find(wanted) != std::string::npos) return place;
    }
    return {};
}

std::string FoundRuns::summary() const {
    const int all = m_rows == nullptr ? 0 : static_cast<int>(m_rows->size());
    std::string text = std::to_string(all) + (all == 1 ? " run" : " runs");
    if (isFiltered()) text = std::to_string(count()) + " of " + text;
    if (needsFacts() && !m_facts.allRead())
        text += "; notes and times read: " + std::to_string(m_facts.readCount());
    return text;
}

} // namespace kvo::library
