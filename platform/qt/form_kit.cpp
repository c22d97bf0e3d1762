#include "platform/qt/form_kit.h"

#include "platform/qt/application.h"

#include <QCoreApplication>
#include <QDialog>
#include <QEvent>
#include <QFocusEvent>
#include <QFontMetrics>
#include <QLabel>
#include <QPixmap>
#include <QTabBar>
#include <QThread>
#include <QTimer>

#include <utility>
#include <vector>

namespace kvo::platform_qt {
namespace detail {
namespace {

std::vector<Slot*>& allSlots() {
    static std::vector<Slot*> all;
    return all;
}

// Forms that are unloaded but may still have a handler of theirs on the stack: a wait inside it
// runs an event loop of its own, and deleteLater() would take the form away right there. They go
// when control is back in the outermost loop, where no handler can be left.
class Leaving : public QObject {
public:
    explicit Leaving(QObject* parent) : QObject(parent) {
        m_timer.setSingleShot(true);
        connect(&m_timer, &QTimer::timeout, this, &Leaving::letGo);
    }
    void add(QWidget* form) {
        m_forms.emplace_back(form);
        m_timer.start(0);
    }
    void letAllGo() {
        for (const QPointer<QWidget>& form : std::exchange(m_forms, {})) delete form.data();
    }

private:
    void letGo() {
        constexpr int retryMs = 50;
        if (Waiting::depth == 0 && QThread::currentThread()->loopLevel() <= 1)
            letAllGo();
        else
            m_timer.start(retryMs);
    }

    QTimer m_timer;
    std::vector<QPointer<QWidget>> m_forms;
};

Leaving& leaving() {
    static QPointer<Leaving> one;
    if (one.isNull()) one = new Leaving(QCoreApplication::instance());
    return *one;
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
    leaving().add(form);
}

} // namespace detail

void unloadAllForms() {
    detail::leaving().letAllGo();
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

QString plainTip(const QString& text) {
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

QLabel* plainLabel(const QString& text) {
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    return label;
}

QLabel* headingLabel(const QString& text) {
    QLabel* label = plainLabel(text);
    QFont bold = label->font();
    bold.setBold(true);
    label->setFont(bold);
    return label;
}

QLabel* valueLabel(const QString& widest) {
    QLabel* label = plainLabel({});
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
        // A box loses the focus with its window too, at the latest while that is taken apart.
        if (!static_cast<QWidget*>(object)->window()->isVisible()) return false;
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

void onClickOfTheTabInView(QTabBar* tabs, std::function<void(int tab)> handler) {
    // The strip says so as the button goes down, before it turns to another tab.
    QObject::connect(
        tabs, &QTabBar::tabBarClicked, tabs, [tabs, handler = std::move(handler)](int tab) {
            if (tab >= 0 && tab == tabs->currentIndex()) handler(tab);
        });
}

bool saveScreenshot(QWidget& window, const QString& path) {
    return window.grab().save(path, "PNG");
}

} // namespace kvo::platform_qt
