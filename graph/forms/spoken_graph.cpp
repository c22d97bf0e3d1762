#include "graph/forms/spoken_graph.h"

#include "graph/forms/channel_cell.h"

#include <QAccessibleWidget>

namespace kvo::forms {

namespace {

class SurfaceInterface : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit SurfaceInterface(SpokenSurface& surface)
        : QAccessibleWidget(&surface, QAccessible::Chart), m_surface(surface) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::ValueInterface && m_surface.voice() != nullptr)
            return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    // What a tool does not ask as a value it asks as a description.
    QString text(QAccessible::Text type) const override {
        const GraphVoice* voice = m_surface.voice();
        if (voice == nullptr) return QAccessibleWidget::text(type);
        if (type == QAccessible::Name) return voice->spokenName();
        if (type == QAccessible::Value || type == QAccessible::Description)
            return voice->spokenValue();
        return QAccessibleWidget::text(type);
    }

    QVariant currentValue() const override { return m_surface.voice()->spokenTime(); }
    QVariant minimumValue() const override { return m_surface.voice()->firstTime(); }
    QVariant maximumValue() const override { return m_surface.voice()->lastTime(); }
    QVariant minimumStepSize() const override { return 0.01; }
    void setCurrentValue(const QVariant& seconds) override {
        m_surface.voice()->goToTime(seconds.toDouble());
    }

private:
    SpokenSurface& m_surface;
};

class ValueInterface : public QAccessibleWidget {
public:
    explicit ValueInterface(ValueLabel& label)
        : QAccessibleWidget(&label, QAccessible::StaticText), m_label(label) {}

    QString text(QAccessible::Text type) const override {
        if (type == QAccessible::Name && m_label.speaks()) return m_label.spoken();
        if (type == QAccessible::Value) return m_label.text();
        return QAccessibleWidget::text(type);
    }
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        if (m_label.isCovered()) state.invisible = true;
        return state;
    }

private:
    ValueLabel& m_label;
};

QAccessibleInterface* interfaceOf(const QString& className, QObject* object) {
    if (className == QLatin1String(SpokenSurface::staticMetaObject.className())) {
        if (auto* surface = qobject_cast<SpokenSurface*>(object))
            return new SurfaceInterface(*surface);
    }
    if (className == QLatin1String(ValueLabel::staticMetaObject.className())) {
        if (auto* label = qobject_cast<ValueLabel*>(object)) return new ValueInterface(*label);
    }
    return nullptr;
}

} // namespace

SpokenSurface::SpokenSurface(QWidget* parent)
    : SurfaceWidget(parent), m_heard(QAccessible::isActive()) {
    QAccessible::installActivationObserver(this);
}

SpokenSurface::~SpokenSurface() {
    QAccessible::removeActivationObserver(this);
}

void SpokenSurface::tellValue() {
    if (!m_heard || m_voice == nullptr) return;
    QAccessibleValueChangeEvent value(this, m_voice->spokenTime());
    QAccessible::updateAccessibility(&value);
    QAccessibleEvent text(this, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&text);
}

void speakGraph() {
    QAccessible::installFactory(interfaceOf);
}

} // namespace kvo::forms
