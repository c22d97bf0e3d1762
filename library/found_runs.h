#pragma once
// The rows of the list as the chooser shows them: those that its filter finds, in the order that
// the user wants to see. The list itself keeps its own order.
#include "core/run_index.h"
#include "library/run_facts.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kvo::library {

enum class RunOrder {
    asListed,
    newestFirst,
    oldestFirst,
    shortestTime,
    longestTime,
    highestSpeed,
    lowestSpeed
};
inline constexpr int runOrders = 7;
// What the user reads of an order.
const char* runOrderCaption(RunOrder order);
// The columns of the chooser.
enum class RunColumn { run, elapsedTime, speed };
inline constexpr int runColumns = 3;
// The order after a click on the heading of a column: the column's first order, its other one, and
// the list's own again.
RunOrder orderAfterClick(RunColumn column, RunOrder now);
// The column that an order goes by and whether it falls, for the mark on its heading; none for the
// list's own order.
struct OrderMark {
    RunColumn column = RunColumn::run;
    bool falls = false;
};
std::optional<OrderMark> orderMark(RunOrder order);

// A description's day, the later the greater, with its run number behind: "Sun 15 Nov 2026 Run: 2".
// 0 where it begins with no date.
std::int64_t dayAndNumber(std::string_view description);

class FoundRuns {
public:
    // `facts` outlives this and has the same rows.
    explicit FoundRuns(const RunFacts& facts) : m_facts(facts) {}

    // The rows from here on, which must outlive this or be set anew when they change.
    void setRows(const std::vector<core::RunIndexEntry>& rows);
    // Rows in which each word of the line stands, in the description or in the notes.
    void filterBy(std::string_view line);
    // A row that is not known to have what the order goes by stands behind all others, and rows
    // that are alike stay as the list has them.
    void sortBy(RunOrder order);
    // Takes in what has become known of the rows since; whether other rows or another order are
    // shown now.
    bool refresh();

    RunOrder order() const { return m_by; }
    bool isFiltered() const { return !m_words.empty(); }
    // Whether what is shown hangs on what is not in the list itself.
    bool needsFacts() const;
    int count() const;
    // The row of the list at a place of what is shown, -1 where there is no such place; and the
    // place of a row, -1 where it is not shown.
    int rowAt(int place) const;
    int placeOf(int row) const;
    // The next place from `from` on (wrapping) in whose description `typed` stands, in any case.
    std::optional<int> findTyped(int from, std::string_view typed) const;
    // "3 of 12 runs", and how far the reading of what they need has come.
    std::string summary() const;

private:
    void sortRows();
    void foldRows();
    std::string_view foldedText(int row) const;
    bool has(int row) const;
    void lookAmong(const std::vector<int>& rows);
    void lookAmongAll();

    const RunFacts& m_facts;
    const std::vector<core::RunIndexEntry>* m_rows = nullptr;
    RunOrder m_by = RunOrder::asListed;
    std::vector<std::string> m_words;
    int m_factsSeen = 0;
    std::vector<int> m_sorted; // all rows; empty in the list's own order
    std::vector<int> m_found;  // of a filter, in the order shown
    std::string m_folded;      // all descriptions, once a filter or a search wants them
    std::vector<std::uint32_t> m_starts;
};

} // namespace kvo::library
