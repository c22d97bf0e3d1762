#include "platform/qt/application.h"

#include "platform/memory.h"
#include "platform/qt/text.h"
#include "platform/services.h"

#include <QAbstractButton>
#include <QDir>
#include <QEvent>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QLabel>
#include <QLocale>
#include <QShortcutEvent>
#include <QWidget>

#include <algorithm>
#include <clocale>
#include <new>

namespace kvo::platform_qt {
namespace {

constexpr std::size_t reserveBytes = 1 << 20; // enough for a box

bool digitsOfOneWidth(const QFont& font) {
    const QFontMetricsF metrics(font);
    const qreal width = metrics.horizontalAdvance(QLatin1Char('0'));
    for (char digit = '1'; digit <= '9'; ++digit) {
        if (!qFuzzyCompare(metrics.horizontalAdvance(QLatin1Char(digit)), width)) return false;
    }
    return true;
}

// Desktops without a font setting name a family that only stands for one; make sure that what comes
// is a readable sans serif where we know one.
void settleFont(QApplication& application) {
    const QString known = QStringLiteral("DejaVu Sans");
    QFont font = application.font();
    QFont::insertSubstitution(font.family(), known);
    const bool placeholder =
        font.family().compare(QLatin1String("Sans Serif"), Qt::CaseInsensitive) == 0 ||
        font.family().compare(QLatin1String("Sans"), Qt::CaseInsensitive) == 0;
    if (placeholder && QFontDatabase::hasFamily(known)) font.setFamily(known);
    application.setFont(font);
}

QtMessageHandler formerHandler = nullptr;

// Off-screen windows have no frame, place or stack, and say so at every turn.
void dropOffscreenComplaints(
    QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (message.startsWith(QLatin1String("This plugin does not support"))) return;
    if (formerHandler != nullptr) formerHandler(type, context, message);
}

} // namespace

Application::Application(int& argc, char* argv[])
    : QApplication(argc, argv), m_reserve(std::make_unique<char[]>(reserveBytes)) {}

bool Application::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::bad_alloc&) {
    }
    tellNoMemory();
    return false;
}

// While the box stands nothing is told on top of it.
void Application::tellNoMemory() noexcept {
    platform::Dialogs* const dialogs = platform::services().dialogs;
    if (m_telling || dialogs == nullptr) return;
    m_telling = true;
    m_reserve.reset();
    dialogs->setHourglass(false); // of the work that was broken off
    platform::tellNoMemory(*dialogs, "do this");
    m_reserve.reset(new (std::nothrow) char[reserveBytes]);
    m_telling = false;
}

void prepareApplication(QApplication& application) {
    std::setlocale(LC_NUMERIC, "C");
    QLocale::setDefault(QLocale::c());
    QApplication::setApplicationName(QStringLiteral("Kvo"));
    // By this a desktop finds the entry of its menu, and so the picture, for a window.
    QApplication::setDesktopFileName(QStringLiteral("kvo"));
    QApplication::setStyle(QStringLiteral("Fusion"));
    settleFont(application);
    application.installEventFilter(new Namer(&application));
    application.installEventFilter(new PromptKeys(&application));
    QApplication::setQuitOnLastWindowClosed(false);
    if (QApplication::platformName() == QLatin1String("offscreen"))
        formerHandler = qInstallMessageHandler(dropOffscreenComplaints);
}

QFont tabularFont() {
    QFont font = QApplication::font();
    if (digitsOfOneWidth(font)) return font;
    font.setFamily(QStringLiteral("DejaVu Sans"));
    if (digitsOfOneWidth(font)) return font;
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fixed.setPointSizeF(font.pointSizeF());
    return fixed;
}

void bringToFront() {
    QWidget* last = nullptr;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (!window->isVisible() || window->windowType() == Qt::Popup) continue;
        window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
        window->raise();
        last = window;
    }
    if (QWidget* modal = QApplication::activeModalWidget()) last = modal;
    if (last == nullptr) return;
    last->raise();
    last->activateWindow();
    QApplication::alert(last);
}

std::vector<std::string> wordsOf(
    [[maybe_unused]] int argc, [[maybe_unused]] const char* const* argv) {
#ifdef Q_OS_WIN
    std::vector<std::string> words; // main() gets them without the letters of other countries
    const QStringList all = QCoreApplication::arguments().mid(1);
    for (const QString& word : all) words.push_back(typedPath(word));
    return words;
#else
    return {argv + std::min(argc, 1), argv + argc};
#endif
}

void changeFolder(const std::string& folder) {
    QDir::setCurrent(shownPath(folder));
}

std::string currentFolder() {
    std::string folder = typedPath(QDir::toNativeSeparators(QDir::currentPath()));
    while (folder.size() > 1 && (folder.back() == '/' || folder.back() == '\\')) folder.pop_back();
    return folder == "/" ? std::string() : folder;
}

// A label guesses by its text whether that is a page with markup. Ours are what users and files
// say. A tool tip is such a label too, but long ones are made a page of plain text to break the
// lines.
static void showPlain(QWidget* widget) {
    auto* label = qobject_cast<QLabel*>(widget);
    if (label != nullptr && label->textFormat() == Qt::AutoText && !label->inherits("QTipLabel"))
        label->setTextFormat(Qt::PlainText);
}

bool Namer::eventFilter(QObject* object, QEvent* event) {
    if (event->type() != QEvent::Polish || !object->isWidgetType()) return false;
    auto* widget = static_cast<QWidget*>(object);
    showPlain(widget);
    const QString name = widget->objectName();
    if (!name.isEmpty() && !name.startsWith(QLatin1String("qt_")) &&
        widget->accessibleDescription().isEmpty()) {
        widget->setAccessibleDescription(name);
    }
    return false;
}

// A key that several captions have only goes from one of them to the next.
bool PromptKeys::eventFilter(QObject* object, QEvent* event) {
    if (event->type() != QEvent::Shortcut) return false;
    auto* button = qobject_cast<QAbstractButton*>(object);
    if (button == nullptr || static_cast<QShortcutEvent*>(event)->isAmbiguous()) return false;
    if (button->isCheckable()) button->setFocus(Qt::ShortcutFocusReason);
    button->click();
    return true;
}

} // namespace kvo::platform_qt
