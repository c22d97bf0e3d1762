#pragma once
// What assistive tools are told of the graph: the surface is a chart whose value is the time and
// the values at the cursor, and each value label says its channel.
#include "platform/qt/surface_widget.h"

#include <QAccessible>
#include <QString>

namespace kvo::forms {

// Speaks for the surface.
class GraphVoice {
public:
    virtual ~GraphVoice() = default;
    virtual QString spokenName() const = 0;
    // The time and the values at the cursor.
    virtual QString spokenValue() const = 0;
    // Seconds: of the cursor, and of the first and the last sample.
    virtual double spokenTime() const = 0;
    virtual double firstTime() const = 0;
    virtual double lastTime() const = 0;
    virtual void goToTime(double seconds) = 0;
};

// The surface of the graph window.
class SpokenSurface : public platform_qt::SurfaceWidget, private QAccessible::ActivationObserver {
    Q_OBJECT

public:
    explicit SpokenSurface(QWidget* parent);
    ~SpokenSurface() override;
    // Must outlive the surface's last event; null while there is none.
    void setVoice(GraphVoice* voice) { m_voice = voice; }
    GraphVoice* voice() const { return m_voice; }
    // The cursor has moved: told where an assistive tool listens.
    void tellValue();

private:
    void accessibilityActiveChanged(bool active) override { m_heard = active; }

    GraphVoice* m_voice = nullptr;
    bool m_heard = false; // an assistive tool listens
};

// Has the toolkit make the interfaces of this window's surface and value labels from now on.
void speakGraph();

} // namespace kvo::forms
