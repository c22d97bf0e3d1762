#pragma once
// The surface of the graph window with its frame and scroll bars: how large Trend is in each
// setting, and which part of it is in view. The sizes come from graph/layout.
#include "graph/forms/ruler_strip.h"
#include "graph/forms/spoken_graph.h"
#include "graph/layout.h"
#include "graph/rulers.h"

#include <QWidget>

class QFrame;
class QScrollBar;

namespace kvo::forms {

class GraphSurface : public QWidget {
    Q_OBJECT

public:
    explicit GraphSurface(QWidget* parent);

    SpokenSurface& trend() { return *Trend; }
    platform::Surface& surface() { return Trend->surface(); }

    // ArrangeGraph: the stored setting, and the factors of a custom size. Gives the setting that
    // Mnu_Scale names from now on, none where that stays.
    std::optional<int> ArrangeGraph(int setting, int customScaleLow, int customScaleHigh);
    // A setting from 0 to 4; the factor is that of a zoom. Gives the same.
    std::optional<int> Graph_scale(int setting, double factor = 1);
    // The form's inside, twips, by which a custom size is chosen, and the size that was chosen.
    graph::Size innerSize() const { return graph::innerTwips(room()); }
    void setTrendSize(const graph::Size& twips);
    // Form_Resize: what a new room means to the setting that Mnu_Scale names.
    void resizeTo(int scaleShown);
    // The window has found its size on the screen; a zoom grows from what is there from now on.
    void settle() { m_settled = true; }
    bool settled() const { return m_settled; }
    void ScrollToCursor(int sampleCount, int cursorSample);
    // How large Trend is, twips, and the values of the bars.
    graph::Size trendSize() const { return m_trendSize; }
    graph::ScrollValues scrollValues() const;
    // Both bars at once; beyond their ends they stand at these.
    void scrollTo(const graph::ScrollValues& values);
    // What is seen at a place of the window, and that place in view again behind a zoom.
    graph::SeenPlace seenAt(const QPointF& global) const;
    void keepInPlace(const graph::SeenPlace& place);
    // What the grid on the surface was drawn by; the rulers repeat it where it is out of view.
    void showRulers(const graph::RulerScales& scales);
    // Whether the surface is larger than its frame.
    bool scrolls() const;
    // The part of Trend that is in view.
    graph::SurfacePart partInView() const;
    // Keys that Trend has no use for scroll an enlarged surface. False for any other key.
    bool scrollByKey(int key);

signals:
    // Another part of Trend is in view.
    void scrolled();
    // Ctrl and the wheel: 1 for in, -1 for out, about a place of the screen.
    void zoomWanted(int direction, QPointF global);

protected:
    void wheelEvent(QWheelEvent* event) override;

private:
    graph::Room room() const { return {width(), height()}; }
    void setFrame(const graph::Box& box, bool scrollBars);
    void reapplyScrollBars();
    void HScroll_Change();
    void placeRulers();

    graph::Size m_trendSize; // of Trend, twips
    graph::Box m_frame;      // Frame1 as the rules measure it
    bool m_settled = false;
    QFrame* Frame1 = nullptr;
    SpokenSurface* Trend = nullptr;
    RulerStrip* m_heights = nullptr;
    RulerStrip* m_times = nullptr;
    graph::RulerScales m_rulerScales;
    RulerLetterWidths m_letters;
    QScrollBar* HScroll = nullptr;
    QScrollBar* VScroll = nullptr;
};

} // namespace kvo::forms
