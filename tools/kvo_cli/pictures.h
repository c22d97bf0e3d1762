#pragma once
// Pictures as the graph window draws them, without a display.
#include "core/config_record.h"
#include "platform/bytes.h"
#include "platform/files.h"
#include "tools/kvo_cli/run_place.h"

#include <optional>

namespace kvo::cli {

enum class PictureKind { png, svg, pdf };

struct PictureTask {
    PictureKind kind = PictureKind::png;
    int widthPx = 1366; // of a PNG
    int heightPx = 768;
    bool whiteGround = false;
    RunPlace run;
    std::optional<RunPlace> overlay;
};

// The bytes of the picture file; nothing after the reason went to the error stream.
std::optional<platform::Bytes> drawPicture(
    const PictureTask& task, const core::AppConfig& config, platform::Files& look);

} // namespace kvo::cli
