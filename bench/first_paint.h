#pragma once
// How long a program takes from its start to the first paint of a window, and what memory it has
// then. The measuring program starts itself anew for it, as the program's start or as the least
// that a program with one window is.
#include <optional>
#include <string>

namespace kvo::bench {

enum class Starter { program, minimal };

struct FirstPaint {
    double seconds = 0;
    double residentKb = 0;
};
// The median of several starts; nothing if the child cannot be started.
std::optional<FirstPaint> firstPaint(Starter starter);

// Whether the arguments ask for such a start.
std::optional<Starter> askedStart(int argc, char** argv);
// Runs it: prints the resident kB at the first paint and ends the process.
int runStart(Starter starter, int argc, char** argv);

} // namespace kvo::bench
