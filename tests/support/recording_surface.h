#pragma once
// A surface that draws nothing and remembers every operation, and the graph window's side of the
// drawing that remembers what it was told.
#include "graph/drawing.h"
#include "platform/draw/surface.h"

#include <string>
#include <utility>
#include <vector>

namespace kvo::testing {

// One operation with all that its look depends on.
struct SurfaceOperation {
    enum class Kind { scale, cls, line, polyline, box, text, refresh };
    Kind kind = Kind::line;
    float x1 = 0; // scale: left, top, right, bottom; polyline and text: where it starts
    float y1 = 0;
    float x2 = 0;
    float y2 = 0;
    std::vector<platform::Point> points;
    std::string text;
    platform::Colour colour = 0; // of a text: the fore colour
    int drawStyle = 0;
    int drawWidth = 1;
    int drawMode = 13;
    float fontSize = 0;
    bool kept = true; // autoRedraw
};

class RecordingSurface : public platform::Surface {
public:
    using Kind = SurfaceOperation::Kind;
    const std::vector<SurfaceOperation>& operations() const { return m_operations; }
    std::vector<SurfaceOperation> ofKind(Kind kind) const;
    void forget() { m_operations.clear(); }
    void setUsable(bool usable) { m_usable = usable; }
    platform::Colour backColor() const { return m_backColor; }
    platform::Colour foreColor() const { return m_foreColor; }
    float fontSize() const { return m_fontSize; }
    int drawStyle() const { return m_drawStyle; }
    int drawWidth() const { return m_drawWidth; }

    void setScale(float left, float top, float right, float bottom) override;
    float scaleWidth() const override { return m_scaleWidth; }
    void cls() override;
    void lineTo(float x, float y, platform::Colour colour) override;
    void line(float x1, float y1, float x2, float y2, platform::Colour colour) override;
    void polyline(std::span<const platform::Point> points, platform::Colour colour) override;
    void box(float x1, float y1, float x2, float y2, platform::Colour colour) override;
    void print(std::string_view text) override;
    void refresh() override;
    void setCurrentX(float x) override { m_x = x; }
    void setCurrentY(float y) override { m_y = y; }
    float currentX() const override { return m_x; }
    float currentY() const override { return m_y; }
    void setForeColor(platform::Colour colour) override { m_foreColor = colour; }
    void setBackColor(platform::Colour colour) override { m_backColor = colour; }
    void setDrawStyle(int style) override { m_drawStyle = style; }
    void setDrawWidth(int pixels) override { m_drawWidth = pixels; }
    void setDrawMode(int mode) override { m_drawMode = mode; }
    void setFontSize(float points) override { m_fontSize = points; }
    void setAutoRedraw(bool on) override { m_autoRedraw = on; }
    bool usable() const override { return m_usable; }

private:
    SurfaceOperation& record(Kind kind, float x1, float y1, float x2, float y2);

    std::vector<SurfaceOperation> m_operations;
    float m_scaleWidth = 0;
    float m_x = 0;
    float m_y = 0;
    platform::Colour m_foreColor = 0;
    platform::Colour m_backColor = 0;
    int m_drawStyle = 0;
    int m_drawWidth = 1;
    int m_drawMode = 13;
    float m_fontSize = 8;
    bool m_autoRedraw = false;
    bool m_usable = true;
};

class RecordingHost : public graph::TrendHost {
public:
    RecordingSurface surface;
    std::vector<bool> hourglass;
    std::vector<std::pair<std::string, std::string>> loading; // text and file, in order
    int hidden = 0;                                           // times the loading panel was hidden
    double progressMax = -1;
    std::vector<double> progressValues;
    std::vector<graph::LabelVisibility> labels;
    std::vector<std::pair<int, std::int32_t>> overlayLabelColours;
    bool clutchVisible = true;

    platform::Surface& trend() override { return surface; }
    void setTrendHourglass(bool on) override { hourglass.push_back(on); }
    void showLoading(const std::string& text, const std::string& file) override {
        loading.emplace_back(text, file);
    }
    void hideLoading() override { ++hidden; }
    void setProgressMax(double max) override { progressMax = max; }
    void setProgressValue(double value) override { progressValues.push_back(value); }
    void showLabels(const graph::LabelVisibility& shown) override { labels.push_back(shown); }
    bool clutchLabelVisible() const override { return clutchVisible; }
    void setOverlayLabelColour(int channel, std::int32_t colour) override {
        overlayLabelColours.emplace_back(channel, colour);
    }
};

} // namespace kvo::testing
