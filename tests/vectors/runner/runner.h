#pragma once
// Runs the lines of all .jsonl files below a folder and reports them function by function.
#include "vector_case.h"

#include <filesystem>
#include <iosfwd>
#include <optional>
#include <string>

namespace kvo::vectors {

// Where two values differ: the path inside `out` and both values. Nothing if they agree: numbers
// exactly (or within `tolerance`), minus zero as zero, objects in the keys that `expected` has.
struct Difference {
    std::string path;
    std::string expected;
    std::string got;
};
std::optional<Difference> compare(const Json& expected, const Json& got, double tolerance);

// Runs everything below `folder`, writes the report, and gives the exit code: 0 if there was at
// least one line and every line passed.
int runVectors(const std::filesystem::path& folder, std::ostream& report);

} // namespace kvo::vectors
