#pragma once
// PrintText: the table of a run onto the pages of a print job.
#include "graph/print_table.h"
#include "platform/printer.h"

#include <string_view>

namespace kvo::graph {

// Watches a long job.
class PrintProgress {
public:
    virtual ~PrintProgress() = default;
    // So many pages of all are done. False where the user wants no more of it.
    [[nodiscard]] virtual bool goesOn(int pagesDone, int allPages) = 0;
};

// Pages of a table, 1 or more.
int pagesOf(const PrintTable& table);

// Prints from the job's page at hand on, each page under the caption (a file's text), and ends the
// document. Behind a failure and a cancel by the user the job is still to be killed.
[[nodiscard]] platform::PrintResult PrintText(platform::PrintJob& job, std::string_view caption,
    const PrintTable& table, PrintProgress& progress);

} // namespace kvo::graph
