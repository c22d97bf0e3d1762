#pragma once
// The configuration that a new installation ships, and that is in memory until one was read.
#include "core/config_record.h"

namespace kvo::core {

// Every channel on, in colours that stay apart on black; a two-speed car with a type 32 logger on
// port 1, in the fast download mode.
AppConfig defaultConfig();

} // namespace kvo::core
