#include "bench/program.h"

#include "core/run_index.h"
#include "platform/qt/form_kit.h"
#include "platform/services.h"

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace kvo::bench {
namespace {

constexpr int runType = 8; // the type with the most rows
constexpr int runRows = 2520;

} // namespace

void demand(const platform::WriteResult& result) {
    if (result) return;
    std::fprintf(stderr, "kvo_bench: %s\n", result.message.c_str());
    std::exit(2);
}

Program::Program() {
    platform::services() = {};
    platform::services().files = &m_files;
    platform::services().dialogs = &m_dialogs;
    core::SharedState& state = core::state();
    state = *std::make_unique<core::SharedState>();
    fillRun(state, runType, runRows, true);
    state.AppFolder = m_folder.path();
    for (const char* name : {"26111510.05d", "26111610.05d"}) {
        state.Run.path = m_folder.path() + "/Data/" + name;
        demand(saveFresh(state, m_files));
        const core::RunIndexEntry entry{name, core::indexDescription(benchRunText)};
        demand(core::AddRunToIndex(m_folder.path(), entry, core::IndexOrder::sorted, m_files));
    }
}

Program::~Program() {
    platform_qt::unloadAllForms();
    platform::services() = {};
}

} // namespace kvo::bench
