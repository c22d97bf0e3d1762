#include "setup/forms/checked_box.h"

#include "platform/qt/text.h"
#include "platform/services.h"

#include <QEvent>
#include <QFocusEvent>
#include <QLineEdit>

#include <utility>

namespace kvo::forms {

using namespace platform_qt;

namespace {

class SelectFilter : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject* object, QEvent* event) override {
        auto* box = static_cast<QLineEdit*>(object);
        if (event->type() == QEvent::FocusIn) {
            m_byMouse = static_cast<QFocusEvent*>(event)->reason() == Qt::MouseFocusReason;
            if (!m_byMouse) box->selectAll();
        }
        // The press has put the caret; what the user marked by dragging stays.
        if (event->type() == QEvent::MouseButtonRelease && std::exchange(m_byMouse, false) &&
            !box->hasSelectedText()) {
            box->selectAll();
        }
        return false;
    }

private:
    bool m_byMouse = false;
};

class CheckFilter : public QObject {
public:
    CheckFilter(QLineEdit* box, LeaveCheck check)
        : QObject(box), m_box(box), m_check(std::move(check)) {
        box->installEventFilter(this);
    }
    // The box of a refused text never learns that the focus was gone.
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() != QEvent::FocusOut) return false;
        const auto reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason) return false;
        return !judge();
    }
    // False where the text was refused.
    bool judge() {
        // The box that the focus is taken from again never had it, and is not judged.
        if (goingBack) return true;
        const setup::BoxCheck result = m_check(typed(m_box->text()));
        if (!result.refused) return true;
        if (result.beep) platform::services().dialogs->beep();
        m_box->setText(shown(result.text));
        goingBack = true;
        m_box->setFocus();
        goingBack = false;
        m_box->selectAll();
        return false;
    }

private:
    static inline bool goingBack = false;
    QLineEdit* m_box;
    LeaveCheck m_check;
};

} // namespace

void selectOnFocus(QLineEdit* box) {
    box->installEventFilter(new SelectFilter(box));
}

void checkOnLeave(QLineEdit* box, LeaveCheck check) {
    auto* filter = new CheckFilter(box, std::move(check));
    filter->setObjectName(QStringLiteral("LeaveCheck"));
}

bool mayLeaveBox(const QWidget& window) {
    const QWidget* box = window.focusWidget();
    if (box == nullptr) return true;
    auto* check =
        box->findChild<QObject*>(QStringLiteral("LeaveCheck"), Qt::FindDirectChildrenOnly);
    return check == nullptr || static_cast<CheckFilter*>(check)->judge();
}

} // namespace kvo::forms
