#pragma once
// Feeds bytes of any kind to the readers of the files. Each entry point ends the program where a
// reader leaves its rules; the sanitizers end it where one leaves its memory.
#include <cstdint>
#include <span>
#include <string_view>

namespace kvo::fuzz {

using Input = std::span<const std::uint8_t>;

void readConfig(Input file);
void readRun(Input file);
void readIndex(Input file);
void readInfo(Input file);
void readTimes(Input file);
// A text run of the older program.
void readText(Input file);

using Reader = void (*)(Input);
// The entry point of this name ("config", "run", "index", "info", "times", "text"), or nothing.
Reader readerNamed(std::string_view name);

} // namespace kvo::fuzz
