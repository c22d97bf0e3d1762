#pragma once
// The zooms that can be stepped back: how large the surface was and which part of it was in view.
#include "graph/layout.h"

#include <optional>
#include <vector>

namespace kvo::graph {

struct ZoomPlace {
    int setting = scaleFull;    // of ScaleCustom
    int scaleShown = scaleFull; // that Mnu_Scale names
    Size trend;                 // of the surface, twips
    ScrollValues scroll;
    friend bool operator==(const ZoomPlace&, const ZoomPlace&) = default;
};

class ZoomHistory {
public:
    // How many zooms are kept; the oldest gives way.
    static constexpr std::size_t most = 100;

    // Where a zoom starts from.
    void add(const ZoomPlace& place);
    // The place before the last zoom, which is then forgotten; none where there is no zoom.
    std::optional<ZoomPlace> takeBack();
    void clear() { m_places.clear(); }
    bool empty() const { return m_places.empty(); }

private:
    std::vector<ZoomPlace> m_places;
};

} // namespace kvo::graph
