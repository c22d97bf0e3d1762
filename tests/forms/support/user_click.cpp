#include "tests/forms/support/user_click.h"

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QStringList>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <algorithm>
#include <deque>
#include <vector>

namespace kvo::testing {
namespace {

struct Script {
    std::function<void(QWidget*)> run;
    int ticksLeft;
};

// Scripts are taken in order: the first one waits for the next dialog that none had before.
struct ModalDriver {
    std::deque<Script> scripts;
    QStringList complaints;
    std::vector<QPointer<QWidget>> served; // had their script, or stood before the first one
    QTimer* timer = nullptr;
};

bool wasServed(const ModalDriver& state, const QWidget* modal) {
    return std::find(state.served.begin(), state.served.end(), modal) != state.served.end();
}

ModalDriver& driver() {
    static ModalDriver one;
    return one;
}

// A dialog that has been hidden may come up again with the next script.
class HideWatch : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::Hide) {
            auto& served = driver().served;
            served.erase(std::remove(served.begin(), served.end(), object), served.end());
        }
        return false;
    }
};

void markServed(QWidget* modal) {
    driver().served.emplace_back(modal);
    modal->installEventFilter(new HideWatch(modal));
}

constexpr int tickMs = 5;
// Long enough for a whole transfer on a machine that builds at the same time; what hangs is ended
// by it all the same.
constexpr int scriptMs = 150000;

void complain(const QString& text) {
    driver().complaints << text;
    qWarning("%s", qPrintable(text));
}

// A dialog that nobody answers would wait for ever: after a time whatever is in front is closed,
// until the guarded one is gone.
void guardAgainstHanging(QWidget* modal) {
    auto* patience = new QTimer(modal);
    QObject::connect(patience, &QTimer::timeout, modal, [modal, patience] {
        QWidget* front = QApplication::activeModalWidget();
        if (!modal->isVisible() || front == nullptr) return patience->stop();
        complain(QStringLiteral("dialog '%1' was left open").arg(front->windowTitle()));
        if (driver().complaints.size() > 20) qFatal("the dialogs do not come to an end");
        patience->setInterval(200);
        if (auto* dialog = qobject_cast<QDialog*>(front)) dialog->reject();
    });
    patience->start(scriptMs);
}

void tick() {
    ModalDriver& state = driver();
    if (state.scripts.empty()) {
        state.timer->stop();
        return;
    }
    QWidget* modal = QApplication::activeModalWidget();
    if (modal == nullptr || wasServed(state, modal)) {
        if (--state.scripts.front().ticksLeft > 0) return;
        complain(QStringLiteral("an expected dialog did not come up"));
        state.scripts.pop_front();
        return;
    }
    const auto run = state.scripts.front().run;
    state.scripts.pop_front();
    markServed(modal);
    guardAgainstHanging(modal);
    // Not from here: a timer does not fire again while its handler is at work, and the script may
    // bring up the next dialog.
    QTimer::singleShot(0, modal, [run, modal] { run(modal); });
}

void clickButton(QWidget* box, const QString& text) {
    const auto buttons = box->findChildren<QPushButton*>();
    for (QPushButton* button : buttons) {
        if (button->text().remove(QLatin1Char('&')) != text) continue;
        const QString refused = userClick(button);
        if (!refused.isEmpty()) complain(QStringLiteral("button %1: %2").arg(text, refused));
        return;
    }
    complain(QStringLiteral("'%1' has no button %2").arg(box->windowTitle(), text));
}

bool titled(QWidget* modal, const QString& title) {
    if (modal->windowTitle() == title) return true;
    complain(QStringLiteral("expected '%1', got '%2'").arg(title, modal->windowTitle()));
    if (auto* dialog = qobject_cast<QDialog*>(modal)) dialog->reject();
    return false;
}

} // namespace

QString userClick(QWidget* widget, QPoint place, Qt::MouseButton button) {
    if (place.x() < 0) place = widget->rect().center();
    if (!widget->isVisible()) return QStringLiteral("hidden");
    if (!widget->isEnabled()) return QStringLiteral("disabled");
    QWidget* window = widget->window();
    QWidget* modal = QApplication::activeModalWidget();
    if (modal != nullptr && modal != window)
        return QStringLiteral("blocked by modal '%1'").arg(modal->windowTitle());
    const QPoint inWindow = widget->mapTo(window, place);
    QWidget* hit = window->childAt(inWindow);
    if (hit == nullptr) hit = window;
    if (hit != widget && !widget->isAncestorOf(hit))
        return QStringLiteral("covered by '%1'").arg(hit->objectName());
    QTest::mouseClick(window->windowHandle(), button, {}, inWindow);
    return {};
}

void onModal(std::function<void(QWidget*)> script, int timeoutMs) {
    ModalDriver& state = driver();
    if (state.timer == nullptr) {
        state.timer = new QTimer(qApp);
        state.timer->setInterval(tickMs);
        QObject::connect(state.timer, &QTimer::timeout, qApp, [] { tick(); });
    }
    QWidget* standing = QApplication::activeModalWidget();
    if (state.scripts.empty() && standing != nullptr) markServed(standing);
    state.scripts.push_back({std::move(script), timeoutMs / tickMs});
    state.timer->start();
}

void answerBox(
    const QString& title, const QString& buttonText, std::function<void(const QMessageBox&)> look) {
    onModal([title, buttonText, look](QWidget* modal) {
        if (!titled(modal, title)) return;
        auto* box = qobject_cast<QMessageBox*>(modal);
        if (box == nullptr) return complain(QStringLiteral("'%1' is no message box").arg(title));
        if (look) look(*box);
        clickButton(box, buttonText);
    });
}

void answerInput(const QString& title, const QString& text, bool accept) {
    onModal([title, text, accept](QWidget* modal) {
        if (!titled(modal, title)) return;
        auto* edit = modal->findChild<QLineEdit*>(QStringLiteral("InputText"));
        if (edit == nullptr) return complain(QStringLiteral("'%1' has no text box").arg(title));
        edit->selectAll();
        QTest::keyClick(edit, Qt::Key_Delete);
        QTest::keyClicks(edit, text);
        clickButton(modal, accept ? QStringLiteral("OK") : QStringLiteral("Cancel"));
    });
}

QString modalComplaints() {
    ModalDriver& state = driver();
    QStringList all = state.complaints;
    if (!state.scripts.empty())
        all << QStringLiteral("%1 expected dialogs did not come up").arg(state.scripts.size());
    state.complaints.clear();
    state.scripts.clear();
    state.served.clear();
    return all.join(QStringLiteral("; "));
}

} // namespace kvo::testing
