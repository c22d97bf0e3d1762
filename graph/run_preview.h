#pragma once
// A run as a small picture: what the graph window would draw of it, without its numbers, from a
// file that is only looked at. Nothing of the runs in the window takes part.
#include "core/config_record.h"
#include "core/run_picture.h"
#include "platform/files.h"

#include <string>

namespace kvo::graph {

// Of the run file at `path`, in the channels and colours of the configuration, so many device
// pixels wide and high (1 or more each). A file that is missing, is no run, or has no memory gives
// the reason.
core::RunPicture runPreview(const std::string& path, int widthPx, int heightPx,
    const core::AppConfig& config, const platform::Files& files);

} // namespace kvo::graph
