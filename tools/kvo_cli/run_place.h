#pragma once
// Which run and which program's folder a command means, and the run itself.
#include "core/config_record.h"
#include "core/open_run.h"
#include "platform/files.h"
#include "tools/command_line/command_line.h"

#include <memory>
#include <optional>
#include <string>

namespace kvo::cli {

// Both absolute. A folder that ends in nothing is that of --folder, else the one around the Data
// folder of the run, else the current one.
struct RunPlace {
    std::string folder;
    std::string run;
    std::string info;
};

std::string absolutePath(const std::string& path);
// The folder of --folder, or the current one.
std::string folderOf(const command_line::Arguments& arguments);
// `run` is a path, or the name of a run in the folder's Data.
RunPlace runPlace(
    const command_line::Arguments& arguments, const std::string& run, const platform::Files& files);

// The setup of a folder; that of a new one where it has none that can be read.
core::AppConfig configOf(const std::string& folder, const platform::Files& files);

// The run; null after the reason went to the error stream. Nothing is created beside it.
std::unique_ptr<core::OpenRun> openRun(const RunPlace& place, platform::Files& look);

} // namespace kvo::cli
