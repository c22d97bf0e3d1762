#include "tools/make_runs/race_folder.h"

#include "core/basic/format.h"
#include "core/data_types.h"
#include "core/paths.h"
#include "core/run_file.h"
#include "core/run_index.h"
#include "core/run_info.h"
#include "tools/logger_simulator/model_run.h"
#include "tools/make_runs/race_days.h"

#include <string>
#include <vector>

namespace kvo::race_days {

namespace {

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

platform::WriteResult store(
    const Download& download, core::SharedState& state, platform::Files& files) {
    const core::LoggerIdentity logger{static_cast<std::uint8_t>(download.model), 4, 2, 117};
    const std::string text = core::runText(download.title, download.moment);
    const auto* facts = core::dataTypeFacts(download.dataType);
    core::OpenRun& run = state.Run;
    run.DataType = static_cast<std::uint8_t>(download.dataType);
    run.SampleCount = static_cast<std::uint16_t>(facts->rows);
    run.path = core::joined(
        core::dataFolder(state.AppFolder, files), core::runFileName(download.moment), files);
    if (files.exists(run.path)) return {};
    const auto moments = fill(run.image, download);
    auto written = core::SaveRun(run, {logger, text, state.Config}, state.AppFolder, files);
    if (!written) return written;
    written = core::AddRunToIndex(
        state.AppFolder, core::indexEntryOf(run.path, text), core::IndexOrder::asItIs, files);
    if (!written) return written;
    return core::SaveRunInfo(state.AppFolder, core::infoFilePath(run.path), run.path,
        infoOf(moments, facts->timeOffset), files);
}

} // namespace

platform::WriteResult fillFolder(core::SharedState& state, platform::Files& files) {
    for (const Download& download : downloads()) {
        if (auto written = store(download, state, files); !written) return written;
    }
    return {};
}

} // namespace kvo::race_days
