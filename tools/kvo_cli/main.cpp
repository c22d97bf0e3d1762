// kvo-cli: Kvo's work on runs as a program for the command line and for scripts.
#include "platform/look_only_files.h"
#include "platform/memory.h"
#include "platform/os/os_files.h"
#include "platform/text.h"
#include "tools/kvo_cli/cli.h"
#include "tools/logger_simulator/options.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iostream>
#include <new>
#include <vector>

namespace kvo::cli {
namespace {

constexpr std::size_t anyNumber = 100000;

std::string helpOfAll() {
    std::string help = "Kvo's work on runs without a window. The commands:\n\n";
    for (const Command& one : commands()) help += "  " + one.syntax.usage + "\n";
    return help + "\n'kvo-cli COMMAND --help' tells what a command does and takes. RUN is the path "
                  "of a run\nfile, or the name of one in the folder's Data. The folder is the "
                  "current one, or\nthat of --folder; it is never written in but by import. The "
                  "exit code is 0 when all\nwent well, 1 when something failed, 2 for a command "
                  "line that is not understood.\n";
}

command_line::Syntax syntaxOfAll() {
    return {"kvo-cli COMMAND ...", helpOfAll(), 1, 1, {}, {}};
}

command_line::Syntax simulateSyntax() {
    command_line::Syntax syntax = simulator::syntax();
    const std::size_t behindName = std::min(syntax.usage.find(' '), syntax.usage.size());
    syntax.usage = "kvo-cli simulate" + syntax.usage.substr(behindName);
    return syntax;
}

int runCommand(const Command& command, const std::vector<std::string>& words) {
    const auto arguments = command_line::read(command.syntax, words, std::cout, std::cerr);
    if (arguments.exitCode) return *arguments.exitCode;
    platform_os::OsFiles disk;
    platform::LookOnlyFiles look(disk);
    look.lookOnly();
    return command.run(command, arguments, {disk, look});
}

int start(const std::vector<std::string>& words) {
    for (const Command& one : commands()) {
        if (words.empty() || words.front() != one.name) continue;
        return runCommand(one, {words.begin() + 1, words.end()});
    }
    const auto arguments = command_line::read(syntaxOfAll(), words, std::cout, std::cerr);
    if (arguments.exitCode) return *arguments.exitCode;
    return command_line::misuse(syntaxOfAll(), "there is no command " + arguments.operands.front());
}

} // namespace

std::span<const Command> commands() {
    static const std::array<Command, 7> rows{{
        {"list",
            {"kvo-cli list [--json] [FOLDER]",
                "The runs of the folder's list in its order: the file and its title. A run whose\n"
                "file is not there is marked.\n",
                0, 1, {"--json"}, {}},
            listRuns},
        {"info",
            {"kvo-cli info [--json] [--folder FOLDER] RUN",
                "What a run says of itself: title, logger, settings, notes and track times.\n", 1,
                1, {"--json"}, {"--folder"}},
            tellInfo},
        {"stats",
            {"kvo-cli stats [--json] [--folder FOLDER] RUN",
                "Minimum, maximum and average of every channel, as the window Statistics shows "
                "them.\n",
                1, 1, {"--json"}, {"--folder"}},
            tellStatistics},
        {"export",
            {"kvo-cli export --csv|--png|--svg|--pdf [OPTION...] RUN",
                "Writes a run as a table or as a picture, the same that the graph window exports.\n"
                "  -o FILE           where to; - is the standard output. Without it a file of the\n"
                "                    run's title in the current folder\n"
                "  --replace         takes the place of a file that is there\n"
                "  --from S, --to S  the stretch of a table, seconds from the launch\n"
                "  --decimal SIGN    the decimal sign of a table, . unless given\n"
                "  --separator SIGN  what parts its cells; , or ; where the decimal sign is ,\n"
                "  --size WxH        pixels of a PNG, 1366x768 unless given\n"
                "  --white           a picture on white ground\n"
                "  --overlay RUN     a picture with a second run over it\n"
                "  --folder FOLDER   whose setup gives units, channels and colours\n",
                1, 1, {"--csv", "--png", "--svg", "--pdf", "--replace", "--white"},
                {"-o", "--from", "--to", "--decimal", "--separator", "--size", "--overlay",
                    "--folder"}},
            exportRun},
        {"check",
            {"kvo-cli check [--json] [FOLDER]",
                "Reads every file of the folder and names each that is damaged or missing. The "
                "exit\ncode is 1 where there is one.\n",
                0, 1, {"--json"}, {}},
            checkFiles},
        {"import",
            {"kvo-cli import [--dos] [--date DD-MM-YYYY] [--replace] [--folder FOLDER] FILE...",
                "Brings run files into the folder's list, or with --dos texts of the older "
                "program.\nThe date of a run is that of its file unless --date is given. A run "
                "that is there\nalready stays, unless --replace is given; its copy is kept in "
                "Backup.\n",
                1, anyNumber, {"--dos", "--replace"}, {"--date", "--folder"}},
            importRuns},
        {"simulate", simulateSyntax(), simulateLogger},
    }};
    return rows;
}

int fail(const std::string& why) {
    std::string line = why;
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    std::cerr << "kvo-cli: " << printable(line) << '\n';
    return failed;
}

std::string printable(std::string text) {
    // A C1 control character is two bytes of UTF-8: C2 and 80 to 9F.
    std::string kept;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const auto next = i + 1 < text.size() ? static_cast<unsigned char>(text[i + 1]) : 0;
        const bool wide = byte == 0xC2 && next >= 0x80 && next < 0xA0;
        if (wide) ++i;
        const bool control = wide || byte < 0x20 || byte == 0x7F;
        kept += control ? '?' : text[i];
    }
    return kept;
}

std::string told(const std::string& fileText) {
    return printable(platform::fromFile(fileText));
}

} // namespace kvo::cli

int main(int argc, char** argv) try {
    const int code = kvo::cli::start(kvo::command_line::wordsOf(argc, argv));
    std::cout.flush();
    if (std::cout) return code;
    return kvo::cli::fail("The output could not be written."); // such as to a full disk
} catch (const std::bad_alloc&) {
    std::fputs("kvo-cli: ", stderr);
    std::fputs(kvo::platform::noMemoryReason, stderr);
    std::fputs("\n", stderr);
    return kvo::cli::failed;
}
