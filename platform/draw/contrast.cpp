#include "platform/draw/contrast.h"

#include <algorithm>
#include <cmath>

namespace kvo::platform {

double lightOfChannel(int channel) {
    const double part = channel / 255.0;
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

int channelOfLight(double light) {
    const double part =
        light <= 0.0031308 ? light * 12.92 : 1.055 * std::pow(light, 1 / 2.4) - 0.055;
    return static_cast<int>(part * 255);
}

double luminance(Colour colour) {
    const auto light = [colour](unsigned shift) {
        return lightOfChannel(static_cast<int>(colour >> shift & 0xFFU));
    };
    return 0.2126 * light(0) + 0.7152 * light(8) + 0.0722 * light(16);
}

double contrast(Colour one, Colour other) {
    const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
    return (light + 0.05) / (dark + 0.05);
}

Colour readableOn(Colour ground) {
    return contrast(black, ground) >= contrast(white, ground) ? black : white;
}

} // namespace kvo::platform
