// Fills a folder of the program with modelled runs, as downloads of two race days leave them, so
// that there is something to look at before the first download.
#include "core/basic/format.h"
#include "core/config.h"
#include "core/data_types.h"
#include "core/paths.h"
#include "core/run_file.h"
#include "core/run_index.h"
#include "core/run_info.h"
#include "core/shared_state.h"
#include "platform/os/os_files.h"
#include "platform/unanswered_dialogs.h"
#include "tools/command_line/command_line.h"
#include "tools/logger_simulator/model_run.h"
#include "tools/logger_simulator/run_model.h"
#include "tools/make_runs/race_days.h"

#include <iostream>
#include <memory>
#include <string>

using namespace kvo;

namespace {

bool told(const platform::WriteResult& written) {
    if (!written) std::cerr << "make_runs: " << written.message << '\n';
    return written.done;
}

core::RunInfo infoOf(const std::vector<simulator::Moment>& moments, int timeOffset) {
    const auto at = [&](double feet) { return simulator::trackTime(moments, timeOffset, feet); };
    const auto seconds = [&](double feet) {
        const double time = at(feet).seconds;
        return time > 0 ? core::Format(time, "#0.00") : std::string();
    };
    core::RunInfo info;
    info.Text_60FootTime = seconds(60);
    info.Text_330FootTime = seconds(330);
    info.Text_660FootTime = seconds(660);
    info.Text_660FootSpeed = core::Format(at(660).mph, "##0.00");
    info.Text_1000FootTime = seconds(1000);
    info.Text_ET = seconds(1320);
    info.Text_Mph = core::Format(at(1320).mph, "##0.00");
    return info;
}

bool store(const race_days::Download& download, core::SharedState& state, platform::Files& files) {
    const core::LoggerIdentity logger{static_cast<std::uint8_t>(download.model), 4, 2, 117};
    const std::string text = core::runText(download.title, download.moment);
    const auto* facts = core::dataTypeFacts(download.dataType);
    core::OpenRun& run = state.Run;
    run.DataType = static_cast<std::uint8_t>(download.dataType);
    run.SampleCount = static_cast<std::uint16_t>(facts->rows);
    run.path = core::joined(
        core::dataFolder(state.AppFolder, files), core::runFileName(download.moment), files);
    if (files.exists(run.path)) return true;
    const auto moments = race_days::fill(run.image, download);
    return told(core::SaveRun(run, {logger, text, state.Config}, state.AppFolder, files)) &&
           told(core::AddRunToIndex(state.AppFolder, core::indexEntryOf(run.path, text),
               core::IndexOrder::asItIs, files)) &&
           told(core::SaveRunInfo(state.AppFolder, core::infoFilePath(run.path), run.path,
               infoOf(moments, facts->timeOffset), files));
}

} // namespace

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
    for (const race_days::Download& download : race_days::downloads()) {
        if (!store(download, *state, files)) return 1;
    }
    return 0;
}
