#include "tests/support/recording_surface.h"

namespace kvo::testing {

std::vector<SurfaceOperation> RecordingSurface::ofKind(Kind kind) const {
    std::vector<SurfaceOperation> found;
    for (const SurfaceOperation& operation : m_operations) {
        if (operation.kind == kind) found.push_back(operation);
    }
    return found;
}

SurfaceOperation& RecordingSurface::record(Kind kind, float x1, float y1, float x2, float y2) {
    SurfaceOperation operation;
    operation.kind = kind;
    operation.x1 = x1;
    operation.y1 = y1;
    operation.x2 = x2;
    operation.y2 = y2;
    operation.drawStyle = m_drawStyle;
    operation.drawWidth = m_drawWidth;
    operation.drawMode = m_drawMode;
    operation.fontSize = m_fontSize;
    operation.kept = m_autoRedraw;
    m_operations.push_back(std::move(operation));
    return m_operations.back();
}

void RecordingSurface::setScale(float left, float top, float right, float bottom) {
    m_scaleWidth = right - left;
    record(Kind::scale, left, top, right, bottom);
}

void RecordingSurface::cls() {
    record(Kind::cls, 0, 0, 0, 0).colour = m_backColor;
    m_x = 0;
    m_y = 0;
}

void RecordingSurface::lineTo(float x, float y, platform::Colour colour) {
    line(m_x, m_y, x, y, colour);
}

void RecordingSurface::line(float x1, float y1, float x2, float y2, platform::Colour colour) {
    record(Kind::line, x1, y1, x2, y2).colour = colour;
    m_x = x2;
    m_y = y2;
}

void RecordingSurface::polyline(std::span<const platform::Point> points, platform::Colour colour) {
    SurfaceOperation& operation = record(Kind::polyline, m_x, m_y, 0, 0);
    operation.points.assign(points.begin(), points.end());
    operation.colour = colour;
    if (points.empty()) return;
    m_x = points.back().x;
    m_y = points.back().y;
}

void RecordingSurface::box(float x1, float y1, float x2, float y2, platform::Colour colour) {
    record(Kind::box, x1, y1, x2, y2).colour = colour;
    m_x = x2;
    m_y = y2;
}

void RecordingSurface::print(std::string_view text) {
    SurfaceOperation& operation = record(Kind::text, m_x, m_y, 0, 0);
    operation.text = text;
    operation.colour = m_foreColor;
    m_x = 0;
}

void RecordingSurface::refresh() {
    record(Kind::refresh, 0, 0, 0, 0);
}

} // namespace kvo::testing
