#pragma once
// Colours are 32-bit with red in the lowest byte: 255 is red, 0xFF0000 is blue.
#include <array>
#include <cstdint>

namespace kvo::platform {

using Colour = std::uint32_t;

inline constexpr Colour black = 0x000000;
inline constexpr Colour white = 0xFFFFFF;
// The desktop's own "button face" as the forms name it; it is no colour value of its own.
inline constexpr Colour systemButtonFace = 0x8000000A;

// The palette by number, 0 to 15; any other number gives black.
constexpr Colour paletteColour(int number) {
    constexpr std::array<Colour, 16> palette{0x000000, 0x800000, 0x008000, 0x808000, 0x000080,
        0x800080, 0x008080, 0xC0C0C0, 0x808080, 0xFF0000, 0x00FF00, 0xFFFF00, 0x0000FF, 0xFF00FF,
        0x00FFFF, 0xFFFFFF};
    return number >= 0 && number < 16 ? palette[static_cast<std::size_t>(number)] : black;
}

} // namespace kvo::platform
