#pragma once
// A small picture of a run, where a list shows what is in its file.
#include <cstdint>
#include <string>
#include <vector>

namespace kvo::core {

struct RunPicture {
    int widthPx = 0;
    int heightPx = 0;
    std::vector<std::uint32_t> pixels; // 0xFFRRGGBB, line by line; none where there is no picture
    std::string problem;               // why there is none, for the user, UTF-8
};

} // namespace kvo::core
