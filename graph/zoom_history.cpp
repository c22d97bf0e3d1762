#include "graph/zoom_history.h"

namespace kvo::graph {

void ZoomHistory::add(const ZoomPlace& place) {
    if (m_places.size() == most) m_places.erase(m_places.begin());
    m_places.push_back(place);
}

std::optional<ZoomPlace> ZoomHistory::takeBack() {
    if (m_places.empty()) return std::nullopt;
    const ZoomPlace last = m_places.back();
    m_places.pop_back();
    return last;
}

} // namespace kvo::graph
