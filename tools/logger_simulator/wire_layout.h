#pragma once
// What the logger of each data type puts on the wire, seen from the logger's side. Written down a
// second time on purpose: the simulator is the other end of the program's own tables and must not
// repeat their mistakes.
#include <array>
#include <optional>

namespace kvo::simulator {

struct WireLayout {
    int dataType;
    int model;      // number that the header reports
    int memoryCode; // 1 32k, 4 60k
    int sampleBytes;
    int samples;    // how many fit the memory
    int timeOffset; // the sample of the launch
    int analog;     // channels, from byte 10 on
    int auxAt;      // byte position from 1, 0 for none
    int auxBytes;
    int exhaustAt; // byte position of eight exhaust channels, 0 for none
    int pitFrameBytes;
    int pitExhaustAt; // 0 for none
};

inline constexpr std::array<WireLayout, 7> wireLayouts{{
    {8, 8, 1, 13, 2520, 160, 4, 0, 0, 0, 28, 0},
    {12, 12, 1, 13, 2520, 160, 4, 0, 0, 0, 28, 0},
    {17, 17, 1, 19, 1724, 160, 8, 18, 2, 0, 28, 0},
    {20, 22, 1, 16, 2048, 160, 7, 0, 0, 0, 28, 21},
    {25, 25, 1, 27, 1213, 80, 8, 18, 2, 20, 28, 21},
    {32, 32, 4, 32, 1360, 160, 8, 21, 1, 22, 46, 24},
    {43, 43, 4, 44, 1360, 160, 8, 21, 1, 22, 46, 24},
}};

constexpr std::optional<WireLayout> wireLayout(int dataType) {
    for (const auto& layout : wireLayouts)
        if (layout.dataType == dataType) return layout;
    return std::nullopt;
}

} // namespace kvo::simulator
