#include "tools/kvo_cli/run_place.h"

#include "core/config.h"
#include "core/default_config.h"
#include "core/paths.h"
#include "core/run_file.h"
#include "core/run_info.h"
#include "library/folder_check.h"
#include "platform/system_path.h"
#include "tools/kvo_cli/cli.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace kvo::cli {
namespace fs = std::filesystem;
using platform::pathText;
using platform::systemPath;

std::string absolutePath(const std::string& path) {
    std::error_code ignored;
    const fs::path absolute = fs::absolute(systemPath(path), ignored).lexically_normal();
    if (absolute.empty()) return path;
    const bool aSeparatorEndsIt = !absolute.has_filename() && absolute.has_relative_path();
    return pathText(aSeparatorEndsIt ? absolute.parent_path() : absolute);
}

std::string folderOf(const command_line::Arguments& arguments) {
    return absolutePath(arguments.has("--folder") ? arguments.options.at("--folder") : ".");
}

RunPlace runPlace(const command_line::Arguments& arguments, const std::string& run,
    const platform::Files& files) {
    RunPlace place{folderOf(arguments), absolutePath(run), {}};
    if (files.exists(place.run)) {
        const fs::path data = systemPath(place.run).parent_path();
        const bool inData = core::upperCased(pathText(data.filename())) == "DATA";
        if (!arguments.has("--folder") && inData) place.folder = pathText(data.parent_path());
    } else if (core::baseName(run) == run) {
        place.run = core::joined(core::dataFolder(place.folder, files), run, files);
    }
    place.info = core::infoFilePath(place.run);
    return place;
}

core::AppConfig configOf(const std::string& folder, const platform::Files& files) {
    core::AppConfig config = core::defaultConfig();
    const auto content = files.read(core::joined(folder, "Kvo.Cfg", files));
    core::AppConfig kept = config;
    if (content && core::decodeConfig(*content, kept)) config = kept;
    return config;
}

std::unique_ptr<core::OpenRun> openRun(const RunPlace& place, platform::Files& look) {
    auto run = std::make_unique<core::OpenRun>();
    const auto content = look.readOrReason(place.run);
    if (!content) {
        fail(content.message);
        return nullptr;
    }
    const core::LoadOutcome outcome = core::LoadRun(place.run, *run, look);
    if (outcome) {
        // It is told of all the same, as the graph shows it: what is missing counts as 0.
        if (const std::string damage = library::runDamage(*content.content); !damage.empty())
            fail(place.run + ": " + damage);
        return run;
    }
    fail(core::loadMessage(outcome.result, place.run).text);
    return nullptr;
}

} // namespace kvo::cli
