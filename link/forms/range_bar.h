#pragma once
// A small bar beside a number that changes: how far it stands between the smallest and the largest
// seen. Its tool tip says both.
#include <QWidget>

#include <functional>

namespace kvo::forms {

class RangeBar : public QWidget {
public:
    // `tip` is asked when the pointer rests on it.
    explicit RangeBar(std::function<QString()> tip);
    // 0 to 1.
    void setPlace(double place);
    double place() const { return m_place; }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    int filledPx(double place) const;

    std::function<QString()> m_tip;
    double m_place = 0;
};

} // namespace kvo::forms
