#pragma once
// RulerStrip, one of the two rulers over an enlarged surface: it paints what graph/rulers says, on
// a ground of its own, and lets the mouse through to the surface.
#include "graph/rulers.h"
#include "platform/draw/colour.h"

#include <QFont>
#include <QWidget>

#include <map>
#include <string>

namespace kvo::forms {

// How large the rulers' texts get. Each text is measured once for a font: while a hand scrolls, the
// same ones come again at every step.
class RulerLetterWidths {
public:
    void setFont(const QFont& font);
    int linePx() const { return m_linePx; }
    int widthPx(const std::string& text);

private:
    QFont m_font;
    int m_linePx = 0;
    std::map<std::string, int> m_widths;
};

class RulerStrip : public QWidget {
    Q_OBJECT

public:
    explicit RulerStrip(Qt::Orientation orientation, QWidget* frame);

    // Takes its place in the frame, or goes where the ruler has no ground.
    void showRuler(const graph::Ruler& ruler, platform::Colour ground);
    // The font of its texts, device pixels, by the size of the surface's.
    static QFont font(float points, double pixelRatio);

    // What it shows, for tests.
    const graph::Ruler& ruler() const { return m_ruler; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Qt::Orientation m_orientation;
    graph::Ruler m_ruler;
    platform::Colour m_ground = platform::black;
};

} // namespace kvo::forms
