#pragma once
// What a user could do, done as a user does it. A click is delivered only where a person could
// click: visible, enabled, not behind a modal dialog, not covered.
#include <QPoint>
#include <QString>
#include <QWidget>

#include <functional>

class QMessageBox;

namespace kvo::testing {

// Clicks through the window, where the hit test is the real one. "" when the click was delivered,
// else why a user could not have made it.
QString userClick(
    QWidget* widget, QPoint place = {-1, -1}, Qt::MouseButton button = Qt::LeftButton);

// Runs `script` once, inside the next modal dialog that comes up. A script that leaves its dialog
// open, or that never gets one, is reported by modalComplaints() and the dialog is closed, so that
// a test never hangs.
void onModal(std::function<void(QWidget*)> script, int timeoutMs = 120000);

// The next message box must have this title; its button is clicked. Text and buttons of it can be
// read by `look` before.
void answerBox(const QString& title, const QString& buttonText,
    std::function<void(const QMessageBox&)> look = {});
// The next input box must have this title; `text` is typed in place of the preset, then OK or
// Cancel.
void answerInput(const QString& title, const QString& text, bool accept = true);

// What went wrong in scripts since the last call, and scripts still waiting; empty when all is
// well.
QString modalComplaints();

} // namespace kvo::testing
