#include "graph/line_width.h"

#include <string>

namespace kvo::graph {
namespace {

constexpr const char* lineWidthSetting = "LineWidth";

} // namespace

int keptLineWidth(const platform::Settings& settings) {
    const std::vector<std::string> kept = settings.list(lineWidthSetting);
    for (int width = thinnestLinePx; width <= thickestLinePx; ++width) {
        if (!kept.empty() && kept.front() == std::to_string(width)) return width;
    }
    return thinnestLinePx;
}

void keepLineWidth(platform::Settings& settings, int widthPx) {
    settings.setList(lineWidthSetting, {std::to_string(widthPx)});
}

} // namespace kvo::graph
