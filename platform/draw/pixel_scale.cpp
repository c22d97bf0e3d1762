#include "platform/draw/pixel_scale.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

namespace kvo::platform {

PixelRect intersection(const PixelRect& a, const PixelRect& b) {
    PixelRect r{std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
        std::min(a.bottom, b.bottom)};
    if (r.empty()) r = {r.left, r.top, r.left, r.top};
    return r;
}

PixelScale::PixelScale(const UserScale& scale, const SurfaceSize& size)
    : m_left(scale.left), m_top(scale.top),
      m_pixelsPerX(std::max(0, size.widthPx - size.linePx) /
                   (static_cast<double>(scale.right) - static_cast<double>(scale.left))),
      m_pixelsPerY(std::max(0, size.heightPx - size.linePx) /
                   (static_cast<double>(scale.bottom) - static_cast<double>(scale.top))) {
    if (!std::isfinite(m_pixelsPerX)) m_pixelsPerX = 0;
    if (!std::isfinite(m_pixelsPerY)) m_pixelsPerY = 0;
}

Point PixelScale::user(double pixelX, double pixelY) const {
    const double userX = m_pixelsPerX != 0 ? pixelX / m_pixelsPerX + m_left : 0;
    const double userY = m_pixelsPerY != 0 ? pixelY / m_pixelsPerY + m_top : 0;
    return {static_cast<float>(userX), static_cast<float>(userY)};
}

void PixelScale::points(std::span<const Point> from, PixelPoint* to) const {
    if (nearPoints(from, to)) return;
    for (std::size_t i = 0; i < from.size(); ++i) {
        to[i] = point(from[i]);
        if (to[i].x == noPixel || to[i].y == noPixel) to[i] = {noPixel, noPixel};
    }
}

#if defined(__GNUC__)

// toPixel() for x and y of a point together, without a branch. Adding 3 * 2^51 to a number leaves
// the nearest whole one in the low bits of the sum; where that is above the number, the one before
// it was meant. False where a point lies further out than farPixel or is no number; what is in `to`
// counts for nothing then.
bool PixelScale::nearPoints(std::span<const Point> from, PixelPoint* to) const {
    using Singles = float __attribute__((vector_size(8)));
    using Doubles = double __attribute__((vector_size(16)));
    using Bits = std::uint64_t __attribute__((vector_size(16)));
    using Whole = int __attribute__((vector_size(8)));
    constexpr double lift = 3.0 * (1LL << 51);
    constexpr auto far = static_cast<std::uint64_t>(farPixel);
    const Doubles origin{m_left, m_top};
    const Doubles pixelsPerUnit{m_pixelsPerX, m_pixelsPerY};
    Bits reach{0, 0};
    for (std::size_t i = 0; i < from.size(); ++i) {
        const auto user = __builtin_convertvector(std::bit_cast<Singles>(from[i]), Doubles);
        const Doubles moved = (user - origin) * pixelsPerUnit + 0.5;
        const Doubles lifted = moved + lift;
        const Bits oneLess = std::bit_cast<Bits>(moved < lifted - lift);
        const Bits whole =
            std::bit_cast<Bits>(lifted) - std::bit_cast<std::uint64_t>(lift) + oneLess;
        reach |= whole + far; // from 0 to below 2 * far for all that are near
        to[i] = std::bit_cast<PixelPoint>(__builtin_convertvector(whole, Whole));
    }
    return ((reach[0] | reach[1]) & ~(2 * far - 1)) == 0;
}

#else

bool PixelScale::nearPoints(std::span<const Point>, PixelPoint*) const {
    return false;
}

#endif

} // namespace kvo::platform
