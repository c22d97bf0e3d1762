#pragma once
// The reference: a sample that the user has set, to which the read-outs are compared. A state of
// its own beside the overlay: while it stands the labels of the overlay's values show differences.
#include "graph/read_outs.h"

#include <optional>
#include <string>
#include <vector>

namespace kvo::graph {

// The difference of two read-outs as labels show them, "+120", "-0.35 in", "0.00": with the
// decimals and the unit of the label. Empty where one of the two shows no number.
std::string difference(const std::string& here, const std::string& reference);

struct Differences {
    std::string time;              // between reference and cursor; empty for a stretch
    std::vector<LabelText> labels; // of all channels, for the labels beside the values
};
// What `here` shows less what a sample of the run has; `cursor` is the sample that `here` is of,
// none for the means of a stretch. A channel that one of both has no value for is empty. Leaves
// what `input` refers to as it was.
Differences differences(
    const ReadOutInput& input, const ReadOutTexts& here, std::optional<int> cursor, int reference);

} // namespace kvo::graph
