#include "platform/qt/form_kit.h"

#include "platform/qt/application.h"

#include <QCoreApplication>
#include <QDialog>
#include <QEvent>
#include <QFocusEvent>
#include <QFontMetrics>
#include <QLabel>
#include <QPixmap>

#include <vector>

namespace kvo::platform_qt {
namespace detail {
namespace {

std::vector<Slot*>& allSlots() {
    static std::vector<Slot*> all;
    return all;
}

} // namespace

void rememberSlot(Slot& slot) {
    allSlots().push_back(&slot);
}

void putAway(Slot& slot) {
    QWidget* form = slot.data();
    if (form == nullptr) return;
    slot.clear(); // first, so that what runs while it hides does not reach it any more
    form->hide();
    form->deleteLater();
}

} // namespace detail

void unloadAllForms() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    for (detail::Slot* slot : detail::allSlots()) {
        QWidget* form = slot->data();
        slot->clear();
        delete form;
    }
}

void showModal(QDialog& dialog) {
    dialog.setWindowModality(Qt::ApplicationModal);
    dialog.exec();
}

void LayoutPart::addTo(QBoxLayout& box) const {
    if (m_widget != nullptr)
        box.addWidget(m_widget, m_stretch);
    else if (m_layout != nullptr)
        box.addLayout(m_layout, m_stretch);
    else
        box.addStretch(m_stretch);
}

QHBoxLayout* row(std::initializer_list<LayoutPart> parts) {
    auto* box = new QHBoxLayout;
    for (const LayoutPart& part : parts) part.addTo(*box);
    return box;
}

QVBoxLayout* column(std::initializer_list<LayoutPart> parts) {
    auto* box = new QVBoxLayout;
    for (const LayoutPart& part : parts) part.addTo(*box);
    return box;
}

QLabel* buddyLabel(const QString& caption, QWidget* box) {
    auto* label = new QLabel(caption);
    label->setBuddy(box);
    return label;
}

QLabel* valueLabel(const QString& widest) {
    auto* label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    label->setFont(tabularFont());
    label->setMinimumWidth(QFontMetrics(label->font()).horizontalAdvance(widest));
    return label;
}

namespace {

class LeaveFilter : public QObject {
public:
    LeaveFilter(QWidget* box, std::function<void()> handler)
        : QObject(box), m_handler(std::move(handler)) {}
    bool eventFilter(QObject* object, QEvent* event) override {
        if (object != parent() || event->type() != QEvent::FocusOut) return false;
        const auto reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason) m_handler();
        return false;
    }

private:
    std::function<void()> m_handler;
};

} // namespace

void onLeave(QWidget* box, std::function<void()> handler) {
    box->installEventFilter(new LeaveFilter(box, std::move(handler)));
}

bool saveScreenshot(QWidget& window, const QString& path) {
    return window.grab().save(path, "PNG");
}

} // namespace kvo::platform_qt
