#include "core/run_title.h"

#include "core/basic/numbers.h"
#include "core/run_records.h"

namespace kvo::core {

std::string_view titleOf(std::string_view headerLine) {
    constexpr std::string_view date = "Date:";
    if (const auto at = headerLine.find(date); at != std::string_view::npos)
        headerLine.remove_prefix(at + date.size());
    return headerLine.substr(0, headerLine.find('#'));
}

std::string titleOfFile(const std::string& runPath, const platform::Files& files) {
    const auto file = files.read(runPath);
    const auto line = file ? decodeHeaderLine(runRecord(*file, 1)) : std::nullopt;
    return line ? rightTrimmed(titleOf(*line)) : "";
}

} // namespace kvo::core
