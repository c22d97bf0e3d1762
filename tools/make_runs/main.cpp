// Fills a folder of the program with modelled runs, as downloads of two race days leave them, so
// that there is something to look at before the first download.
#include "core/config.h"
#include "core/shared_state.h"
#include "platform/os/os_files.h"
#include "tools/command_line/command_line.h"
#include "tools/make_runs/race_folder.h"

#include <iostream>
#include <memory>

using namespace kvo;

int main(int argc, char* argv[]) {
    const command_line::Syntax syntax{"make_runs FOLDER",
        "Fills the program's folder FOLDER with the modelled runs of two race days:\n"
        "run files, times and the list of runs. Runs that are there stay.\n",
        1, 1};
    const auto arguments = command_line::read(syntax, argc, argv);
    if (arguments.exitCode) return *arguments.exitCode;
    platform_os::OsFiles files;
    const auto state = std::make_unique<core::SharedState>();
    state->AppFolder = arguments.operands[0];
    static_cast<void>(core::LoadConfig(state->AppFolder, state->Config, files)); // or as it comes
    const auto written = race_days::fillFolder(*state, files);
    if (!written) std::cerr << "make_runs: " << written.message << '\n';
    return written ? 0 : 1;
}
