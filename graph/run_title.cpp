#include "graph/run_title.h"

#include "core/basic/numbers.h"
#include "core/paths.h"
#include "core/run_title.h"

#include <algorithm>
#include <string_view>

namespace kvo::graph {

std::string shownTitle(const core::OpenRun& run) {
    // A line that was never written is all zero characters.
    std::string_view title = core::titleOf(run.headerLine);
    title = title.substr(0, title.find('\0'));
    title.remove_prefix(std::min(title.find_first_not_of(' '), title.size()));
    const std::string trimmed = core::rightTrimmed(title);
    return trimmed.empty() ? core::baseName(run.path) : trimmed;
}

} // namespace kvo::graph
