#pragma once
// An image of a part of a surface, blank at first, for tests of what is painted into it.
#include "platform/draw/raster.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kvo::testing {

struct PartImage {
    explicit PartImage(const platform::PixelRect& part)
        : area(part),
          words(static_cast<std::size_t>(part.width()) * static_cast<std::size_t>(part.height())) {}
    platform::Raster raster() { return {words.data(), area.width(), area}; }
    std::uint32_t at(int x, int y) const {
        return words[static_cast<std::size_t>(y - area.top) *
                         static_cast<std::size_t>(area.width()) +
                     static_cast<std::size_t>(x - area.left)];
    }
    platform::PixelRect area;
    std::vector<std::uint32_t> words;
};

} // namespace kvo::testing
