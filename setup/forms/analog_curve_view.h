#pragma once
// The curve of a mapped input, beside the table from which it is made: count to reading. What a
// download cannot keep is drawn in another way.
#include "setup/analog_curve.h"

#include <QWidget>

#include <optional>

class QPainter;

namespace kvo::forms {

class AnalogCurveView : public QWidget {
    Q_OBJECT

public:
    explicit AnalogCurveView(QWidget* parent = nullptr);

    // Nothing: there is a number that is too large to draw.
    void setCurve(std::optional<setup::AnalogCurve> curve);
    // The point that the user is at, 1 to 10; 0 for none.
    void mark(int point);
    int marked() const { return m_marked; }
    // What is drawn.
    const std::optional<setup::AnalogCurve>& curve() const { return m_curve; }
    // Where a reading lies in the widget.
    QPointF place(double count, double reading) const;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QRectF plot() const;
    void paintGrid(QPainter& painter) const;
    void paintCurve(QPainter& painter) const;
    void paintPoints(QPainter& painter) const;

    std::optional<setup::AnalogCurve> m_curve;
    int m_marked = 0;
};

} // namespace kvo::forms
