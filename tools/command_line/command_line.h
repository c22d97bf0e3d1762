#pragma once
// The command line of this project's small programs: operands, switches, and options with a value.
// --help says what a program is for. Whatever is not known is refused with a line on the usage,
// before the program has touched a file or a display.
#include <cstddef>
#include <iosfwd>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace kvo::command_line {

// What a program takes.
struct Syntax {
    std::string usage; // "make_runs FOLDER": the program's name is the first word
    std::string help;  // what --help tells below the usage
    std::size_t fewestOperands = 0;
    std::size_t mostOperands = 0;
    std::vector<std::string> switches{}; // "--surface"
    std::vector<std::string> options{};  // "--type": a value must follow
};

// What was typed. Of an option that was typed twice the later value holds.
struct Arguments {
    std::vector<std::string> operands;
    std::map<std::string, std::string> options; // by name, a switch with an empty value
    // Given: the program is to end with it at once. The user has been told why.
    std::optional<int> exitCode;

    bool has(const std::string& name) const { return options.contains(name); }
};

// Reads what stands behind the program's name. --help or -h: the help goes to `out`, exit code 0.
// Misuse: what is wrong goes to `err`, exit code 2; what was read up to there is kept.
Arguments read(const Syntax& syntax, const std::vector<std::string>& words, std::ostream& out,
    std::ostream& err);
// The same for what main() gets, with the standard streams.
Arguments read(const Syntax& syntax, int argc, const char* const* argv);

// What main() begins with: the words behind the program's name, UTF-8. The standard streams take
// bytes as they are from then on, so that what a program writes is the same on every system.
std::vector<std::string> wordsOf(int argc, const char* const* argv);

// For a value that only the program knows to be wrong: tells it with the usage on `err`. Gives the
// exit code of every misuse, 2.
int misuse(const Syntax& syntax, const std::string& what, std::ostream& err);
int misuse(const Syntax& syntax, const std::string& what);

} // namespace kvo::command_line
