#include "graph/run_title.h"

#include "core/basic/numbers.h"
#include "core/paths.h"

#include <algorithm>

namespace kvo::graph {

std::string_view titleOf(std::string_view headerLine) {
    constexpr std::string_view date = "Date:";
    if (const auto at = headerLine.find(date); at != std::string_view::npos)
        headerLine.remove_prefix(at + date.size());
    return headerLine.substr(0, headerLine.find('#'));
}

std::string shownTitle(const core::OpenRun& run) {
    // A line that was never written is all zero characters.
    std::string_view title = titleOf(run.headerLine);
    title = title.substr(0, title.find('\0'));
    title.remove_prefix(std::min(title.find_first_not_of(' '), title.size()));
    const std::string trimmed = core::rightTrimmed(title);
    return trimmed.empty() ? core::baseName(run.path) : trimmed;
}

} // namespace kvo::graph
