#pragma once
// Sets of colours for the graph: the ground and all 25 channels at once. They stand in the
// configuration like any colours that were chosen one by one.
#include "core/config_record.h"

#include <optional>

namespace kvo::graph {

// As a new folder has them; on white, for bright light; and on black, told apart by those too who
// see red and green alike.
enum class ColourScheme { dark, daylight, colourBlind };
inline constexpr int schemeCount = 3;

void takeScheme(core::AppConfig& config, ColourScheme scheme);
// The scheme whose colours the configuration has; none where one of them was chosen by hand.
std::optional<ColourScheme> schemeOf(const core::AppConfig& config);

} // namespace kvo::graph
