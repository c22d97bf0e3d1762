#pragma once
// kvo-cli: what Kvo does with runs, without a window. Each command is a row with its own usage, and
// calls the layers that the windows call.
#include "platform/files.h"
#include "tools/command_line/command_line.h"

#include <span>
#include <string>

namespace kvo::cli {

// The machine as a command sees it.
struct Place {
    platform::Files& disk; // on which files are written
    platform::Files& look; // which refuses every write: what a command only looks at stays as it is
};

struct Command {
    const char* name;
    command_line::Syntax syntax;
    // Gives the exit code: 0 done, 1 failed with a line on the error stream, 2 misuse.
    int (*run)(
        const Command& command, const command_line::Arguments& arguments, const Place& place);
};

inline constexpr int done = 0;
inline constexpr int failed = 1;

std::span<const Command> commands();

int listRuns(const Command&, const command_line::Arguments&, const Place&);
int tellInfo(const Command&, const command_line::Arguments&, const Place&);
int tellStatistics(const Command&, const command_line::Arguments&, const Place&);
int exportRun(const Command&, const command_line::Arguments&, const Place&);
int checkFiles(const Command&, const command_line::Arguments&, const Place&);
int importRuns(const Command&, const command_line::Arguments&, const Place&);
int simulateLogger(const Command&, const command_line::Arguments&, const Place&);

// A line on the error stream; gives `failed`.
int fail(const std::string& why);
// A text of a run as it is told: UTF-8, without what would change the terminal.
std::string told(const std::string& fileText);
// The same of what is UTF-8 already.
std::string printable(std::string text);

} // namespace kvo::cli
