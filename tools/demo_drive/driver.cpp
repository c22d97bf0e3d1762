#include "driver.h"

#include "graph/forms/data_graph.h"
#include "mainwin/main_window.h"
#include "platform/os/windows_api.h"
#include "platform/qt/form_kit.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPushButton>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace kvo::demo {
namespace {

using namespace platform_qt;

constexpr int lookEveryMs = 20;

// The dialogs of a download, by how their titles begin, and the button that is pressed.
struct Answer {
    const char* title;
    const char* button;
};
constexpr std::array<Answer, 6> answers{{
    {"Date: ", "OK"},
    {"Download Data", "Start Download"},
    {"Front Wheel Dimeter", "Yes"},
    {"Warning", "OK"},
    {"Run Title", "OK"},
    {"Download Saved", "Yes"},
}};

// What this process has used of the processor. Windows' own clock() goes on while it waits.
double cpuSeconds() {
#ifdef _WIN32
    FILETIME begin, end, kernel, user;
    if (GetProcessTimes(GetCurrentProcess(), &begin, &end, &kernel, &user) == FALSE) return 0;
    const auto ticks = [](const FILETIME& time) {
        return static_cast<double>(time.dwHighDateTime) * 4294967296.0 + time.dwLowDateTime;
    };
    return (ticks(kernel) + ticks(user)) / 1e7; // of 100 ns each
#else
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
#endif
}

QString textOf(const QWidget& window) {
    const auto* box = qobject_cast<const QMessageBox*>(&window);
    return box != nullptr ? box->text() : QString();
}

// A press and a release in the middle of the button, through its window.
void clickOn(QWidget& button) {
    const QPointF place = button.rect().center();
    const QPointF global = button.mapToGlobal(place);
    const QPointer<QWidget> guard(&button);
    QMouseEvent press(QEvent::MouseButtonPress, place, global, Qt::LeftButton, Qt::LeftButton, {});
    QApplication::sendEvent(&button, &press);
    if (guard.isNull()) return;
    QMouseEvent release(
        QEvent::MouseButtonRelease, place, global, Qt::LeftButton, Qt::NoButton, {});
    QApplication::sendEvent(&button, &release);
}

} // namespace

Driver::Driver(int timeoutMs) {
    m_looking.setInterval(lookEveryMs);
    connect(&m_looking, &QTimer::timeout, this, &Driver::look);
    QTimer::singleShot(timeoutMs, this, [this] {
        problem(QStringLiteral("it took too long"));
        std::exit(1); // whatever still waits would wait for ever
    });
}

void Driver::start() {
    m_looking.start();
    QTimer::singleShot(0, this, [this] {
        control<QAction>(form<forms::VrnWin32>(), "Mnu_DownloadData").trigger();
        cameBack();
    });
}

// Looks for a dialog that had no answer yet.
void Driver::look() {
    QWidget* modal = QApplication::activeModalWidget();
    if (modal == nullptr || !modal->isVisible()) return;
    if (std::find(m_served.begin(), m_served.end(), modal) != m_served.end()) return;
    m_served.emplace_back(modal);
    // Not from here: a timer does not fire again while its handler waits for the next dialog.
    QTimer::singleShot(0, modal, [this, modal] { serve(*modal); });
}

void Driver::serve(QWidget& modal) {
    const QString title = modal.windowTitle();
    if (title == QLatin1String("Run Title")) endClock();
    const auto* answer = std::find_if(answers.begin(), answers.end(),
        [&title](const Answer& row) { return title.startsWith(QLatin1String(row.title)); });
    // "Download Error" and its like begin as the form does, so the whole title decides there.
    const bool expected = answer != answers.end() &&
                          (title == QLatin1String(answer->title) || title.startsWith("Date: "));
    if (!expected) {
        problem(QStringLiteral("%1: %2").arg(title, textOf(modal)));
        if (auto* dialog = qobject_cast<QDialog*>(&modal)) dialog->reject();
        return;
    }
    m_wheelAsked = m_wheelAsked || title == QLatin1String("Front Wheel Dimeter");
    m_view = m_view || title == QLatin1String("Download Saved");
    if (title == QLatin1String("Download Data") || title == QLatin1String("Front Wheel Dimeter"))
        beginClock();
    const QPointer<QWidget> guard(&modal);
    press(modal, QLatin1String(answer->button));
    // Back from a download that left the form standing: nothing more will come of it.
    if (!guard.isNull() && guard->isVisible() && title == QLatin1String("Download Data")) {
        problem(QStringLiteral("the download ended without a run"));
        qobject_cast<QDialog*>(guard.data())->reject();
    }
}

void Driver::press(QWidget& window, const QString& caption) {
    const auto buttons = window.findChildren<QPushButton*>();
    for (QPushButton* button : buttons) {
        if (button->text().remove(QLatin1Char('&')) != caption) continue;
        if (button->isVisible() && button->isEnabled()) return clickOn(*button);
    }
    problem(QStringLiteral("%1 has no button %2").arg(window.windowTitle(), caption));
}

void Driver::beginClock() {
    if (m_transferSeconds > 0) return;
    m_clock.start();
    m_cpuAtBegin = cpuSeconds();
}

void Driver::endClock() {
    if (m_transferSeconds > 0) return;
    m_transferSeconds = static_cast<double>(m_clock.nsecsElapsed()) / 1e9;
    m_transferCpuSeconds = cpuSeconds() - m_cpuAtBegin;
}

void Driver::problem(const QString& text) {
    m_problems << text;
    std::fprintf(stderr, "demo_drive: %s\n", qPrintable(text));
}

void Driver::cameBack() {
    constexpr int paintMs = 200;
    m_looking.stop();
    QTimer::singleShot(paintMs, this, &Driver::done);
}

} // namespace kvo::demo
