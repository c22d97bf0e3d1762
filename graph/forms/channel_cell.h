#pragma once
// A channel on the graph's panel: a toggle that shows the channel's colour and, beside it, the
// value label with the overlay's label. All three are placed without a layout, so that a changed
// value moves nothing and costs nothing.
#include "channels/channels.h"
#include "platform/draw/colour.h"

#include <QCheckBox>
#include <QLabel>
#include <QWidget>

#include <functional>
#include <utility>

namespace kvo::forms {

// Switches a channel on and off; a filled or empty square of the channel's colour stands in front
// of its caption.
class ChannelToggle : public QCheckBox {
    Q_OBJECT

public:
    explicit ChannelToggle(QWidget* parent);
    // The caption as it is: an & in it is a letter, blanks at its end belong to it. One of blanks
    // alone shows `standIn`.
    void setCaption(const QString& caption);
    const QString& caption() const { return m_caption; }
    void setStandIn(const QString& standIn);
    // What stands beside the square: the caption without blanks around it, or what stands in.
    QString shownCaption() const;
    void setColour(platform::Colour colour);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    // The key C.
    void colourWanted();

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool hitButton(const QPoint& place) const override { return rect().contains(place); }

private:
    QString m_caption;
    QString m_standIn;
    platform::Colour m_colour = 0;
};

// A value on the graph's background in the channel's colour.
class ValueLabel : public QLabel {
    Q_OBJECT

public:
    explicit ValueLabel(QWidget* parent);
    void setFore(platform::Colour fore);
    // With systemButtonFace the label looks as the desktop has it.
    void setBack(platform::Colour back);
    // What is read aloud in place of the bare number.
    void setSpoken(std::function<QString()> spoken) { m_spoken = std::move(spoken); }
    // Whether another label lies over it, so that nothing of it is seen.
    void setCovered(bool covered) { m_covered = covered; }
    bool isCovered() const { return m_covered; }
    bool speaks() const { return static_cast<bool>(m_spoken); }
    QString spoken() const { return m_spoken(); }

signals:
    void doubleClicked();

protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    void applyColours();

    std::function<QString()> m_spoken;
    bool m_covered = false;
    platform::Colour m_back = platform::systemButtonFace;
    platform::Colour m_fore = 0;
};

class ChannelCell : public QWidget {
    Q_OBJECT

public:
    ChannelCell(const channels::ChannelFacts& facts, QWidget* parent);

    ChannelToggle* const toggle;
    ValueLabel* const value;
    ValueLabel* const overlay;

    // The overlay's label stands beside the value label, with the same room.
    void uncoverOverlay(bool on);
    QSize sizeHint() const override { return minimumSizeHint(); }
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void place();
};

} // namespace kvo::forms
