// Presses, types, drags, scrolls, resizes and closes whatever stands on the screen, at random but
// by a seed, in the whole program with a modelled logger on its line and its folder in memory. What
// is open decides what can be hit, so it gets into forms over forms. Nothing may crash, hang, or
// hold the window system up for a second of work.
//   monkey [--count EVENTS] [--seed N]
#include "core/config.h"
#include "core/shared_state.h"
#include "link/forms/logger_line.h"
#include "mainwin/main_window.h"
#include "mainwin/start.h"
#include "platform/qt/application.h"
#include "platform/qt/form_kit.h"
#include "platform/qt/qt_dialogs.h"
#include "platform/qt/qt_printer.h"
#include "tests/faults/heap_in_use.h"
#include "tests/faults/proof.h"
#include "tests/forms/support/model_run.h"
#include "tests/forms/support/test_program.h"
#include "tests/support/virtual_line.h"
#include "tools/logger_simulator/faults.h"
#include "tools/logger_simulator/model_logger.h"

#include <QAction>
#include <QApplication>
#include <QFileDialog>
#include <QMainWindow>
#include <QMenu>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <deque>
#include <map>
#include <memory>
#include <random>
#include <unistd.h>
#if __has_include(<execinfo.h>)
#include <execinfo.h>
#endif

using namespace kvo;
using namespace kvo::platform_qt;

namespace {

constexpr std::int64_t shortForm = 3000;
constexpr unsigned hungSeconds = 120;
constexpr double longestGap = 1; // seconds of work without an event

// The last actions, for the one who has to find out why it ended.
std::deque<std::string>& lastActions() {
    static std::deque<std::string> all;
    return all;
}

void tellAndEnd(int signal) {
    std::fprintf(stderr, "FAULT ended by signal %d; the last actions:\n", signal);
    for (const std::string& action : lastActions()) std::fprintf(stderr, "  %s\n", action.c_str());
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

// Addresses, which addr2line knows the lines of, where the system tells them.
std::string callers() {
    std::string told;
#if __has_include(<execinfo.h>)
    std::array<void*, 150> calls{};
    const int count = backtrace(calls.data(), static_cast<int>(calls.size()));
    char** names = backtrace_symbols(calls.data(), count);
    for (int i = 0; names != nullptr && i < count; ++i) told += std::string("\n  at ") + names[i];
    std::free(names);
#endif
    return told;
}

// What the toolkit warns of is a fault of ours, but for what the off-screen plugin cannot do.
faults::Proof* warnings = nullptr;
void onWarning(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type == QtDebugMsg || type == QtInfoMsg || text.startsWith("This plugin does not support"))
        return;
    std::string told = text.toStdString();
    for (const std::string& action : lastActions()) told += "\n  " + action;
    told += callers();
    warnings->fault(told);
}

double workSeconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

// The wait of a line without hardware that lets events in, as the real one does.
class LivelyLine : public testing::VirtualLine {
public:
    using VirtualLine::VirtualLine;
    int turns(int limit) override {
        if (++m_waits % 16 == 0) QCoreApplication::processEvents();
        return VirtualLine::turns(limit);
    }

private:
    long m_waits = 0;
};

class Monkey : public QObject {
public:
    Monkey(faults::Options options, faults::Proof& proof)
        : m_count(options.count > 0 ? options.count : shortForm), m_random(options.seed),
          m_proof(proof) {
        useProgram();
    }

    int run() {
        while (m_done < m_count) {
            start();
            if (m_done < m_count) QApplication::exec();
            ++m_starts;
            unloadAllForms();
        }
        // Where it was: what it never opened it has not tried.
        for (const auto& [name, events] : m_windows)
            std::printf("%9lld %s\n", static_cast<long long>(events), name.c_str());
        char finding[200];
        std::snprintf(finding, sizeof finding,
            "%zu kinds of window, %lld starts, longest event %.2f s of work, %.0f MB in use beside "
            "the disk's",
            m_windows.size(), static_cast<long long>(m_starts), m_longest,
            static_cast<double>(faults::bytesInUse() - m_program.files.bytes()) / 1e6);
        return m_proof.end("monkey on all windows", m_done, "events", finding);
    }

private:
    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(m_random); }
    bool oneIn(int n) { return below(n) == 0; }

    void useProgram() {
        platform::Services& services = platform::services();
        services.dialogs = &m_dialogs;
        services.printer = &m_printer;
    }

    // A new logger on the line, a folder with some runs, and the first window.
    void start() {
        constexpr std::array types{8, 12, 17, 20, 25, 32, 43};
        const int type = types[static_cast<std::size_t>(below(7))];
        simulator::Fault fault;
        if (oneIn(3)) fault = {static_cast<simulator::Fault::Kind>(below(6)), below(2000)};
        m_link.reset();
        m_logger = std::make_unique<simulator::ModelLogger>(type);
        m_faulty = std::make_unique<simulator::FaultyEnd>(*m_logger, fault);
        m_line = std::make_unique<LivelyLine>(*m_faulty);
        m_link = std::make_unique<link::LoggerLink>(*m_line, *m_line, m_dialogs);
        platform::services().port = m_line.get();
        platform::services().yield = m_line.get();
        forms::useLoggerLink(m_link.get());
        core::SharedState& state = core::state();
        state = core::SharedState();
        state.AppFolder = "/kvo";
        for (int number = 1; number <= 5; ++number) {
            state.Config = testing::graphConfig(types[static_cast<std::size_t>(below(7))]);
            testing::listModelRun(state, m_program.files, state.Config.LoggerDataType, number);
        }
        state.Config = testing::graphConfig(type);
        state.Config.CommPort = 1;
        m_program.files.put(currentFolder() + "/Kvo.Cfg", core::encodeConfig(state.Config));
        m_program.putConfig();
        forms::openDoors();
        state.AppFolder = "/kvo";
        ++m_chain;
        next();
        if (!forms::startProgram()) form<forms::VrnWin32>().show();
        core::state().AppFolder = "/kvo";
    }

    // One chain of actions a start; it goes on inside whatever an action has opened.
    void next() {
        QTimer::singleShot(0, this, [this, chain = m_chain] {
            if (chain == m_chain) step();
        });
    }

    void step() {
        if (m_done >= m_count) return endAll();
        next();
        watchGap();
        alarm(hungSeconds);
        ++m_done;
        m_program.clock.set({2026, 11, 1 + below(28), below(24), below(60), below(60)});
        QWidget* window = target();
        if (window == nullptr) return;
        auto* splash = window->findChild<QTimer*>(QStringLiteral("Timer1"));
        if (splash != nullptr && splash->isActive()) return splash->start(0);
        act(*window);
    }

    // A form that is closed may ask something: that is closed as well, until all loops have ended.
    void endAll() {
        constexpr int againMs = 10;
        QTimer::singleShot(againMs, this, [this] { endAll(); });
        forms::closeLoggerLine();
        if (QWidget* popup = QApplication::activePopupWidget()) popup->close();
        if (QWidget* modal = QApplication::activeModalWidget()) modal->close();
        QCoreApplication::exit();
    }

    void watchGap() {
        const double now = workSeconds();
        const double gap = now - m_lastStep;
        m_lastStep = now;
        if (m_done == 0 || lastActions().empty()) return;
        m_longest = std::max(m_longest, gap);
        if (gap > longestGap)
            m_proof.fault("held up for " + std::to_string(gap) + " s by " + lastActions().back());
    }

    void note(const std::string& action, const QWidget& window) {
        ++m_windows[window.window()->metaObject()->className()];
        auto& all = lastActions();
        all.push_back(std::to_string(m_done) + " " + window.objectName().toStdString() + " (" +
                      window.metaObject()->className() + "): " + action);
        if (all.size() > 20) all.pop_front();
    }

    QWidget* target() {
        if (QWidget* popup = QApplication::activePopupWidget()) return popup;
        if (QWidget* modal = QApplication::activeModalWidget()) return modal;
        QWidgetList shown;
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->isVisible() && window->isWindow()) shown << window;
        if (!shown.isEmpty()) return shown[below(static_cast<int>(shown.size()))];
        QApplication::quit(); // the last window has gone: the program is started anew
        return nullptr;
    }

    void act(QWidget& window) {
        // The toolkit's own file question works on the machine's disk: it is only left.
        if (qobject_cast<QFileDialog*>(&window) != nullptr ||
            qobject_cast<QFileDialog*>(window.window()) != nullptr) {
            note("left", window);
            QTest::keyClick(window.window(), Qt::Key_Escape);
            return;
        }
        const int what = below(100);
        if (what < 42)
            click(window);
        else if (what < 70)
            key(window);
        else if (what < 78)
            type(window);
        else if (what < 86)
            command(window);
        else if (what < 91)
            drag(window);
        else if (what < 95)
            wheel(window);
        else if (what < 97)
            window.resize(400 + below(1000), 300 + below(600));
        else if (what < 98)
            leave(window);
        else
            hover(window);
    }

    // A visible part of the window and a place on it.
    QWidget* part(QWidget& window, QPoint& place) {
        const QList<QWidget*> all = window.findChildren<QWidget*>();
        QWidget* found = &window;
        for (int attempt = 0; attempt < 8 && !all.isEmpty(); ++attempt) {
            QWidget* one = all[below(static_cast<int>(all.size()))];
            if (!one->isVisible() || one->window() != &window || !one->isEnabled()) continue;
            found = one;
            break;
        }
        place = {below(std::max(1, found->width())), below(std::max(1, found->height()))};
        return found;
    }

    void click(QWidget& window) {
        QPoint place;
        QWidget* at = part(window, place);
        note("click on " + at->objectName().toStdString(), window);
        const Qt::MouseButton button = oneIn(12) ? Qt::RightButton : Qt::LeftButton;
        if (oneIn(8))
            QTest::mouseDClick(at, button, Qt::NoModifier, place);
        else
            QTest::mouseClick(at, button, oneIn(20) ? Qt::ShiftModifier : Qt::NoModifier, place);
    }

    void drag(QWidget& window) {
        QPoint place;
        QPointer<QWidget> at = part(window, place);
        note("drag on " + at->objectName().toStdString(), window);
        QTest::mousePress(at, Qt::LeftButton, Qt::NoModifier, place);
        for (int i = 0; i < 3 && !at.isNull(); ++i) QTest::mouseMove(at, {below(1000), below(700)});
        if (!at.isNull())
            QTest::mouseRelease(at, Qt::LeftButton, Qt::NoModifier, {below(1000), below(700)});
    }

    void hover(QWidget& window) {
        QPoint place;
        QWidget* at = part(window, place);
        note("hover over " + at->objectName().toStdString(), window);
        QTest::mouseMove(at, place);
    }

    void wheel(QWidget& window) {
        QPoint place;
        QWidget* at = part(window, place);
        note("wheel on " + at->objectName().toStdString(), window);
        const QPoint turn(0, oneIn(2) ? 120 : -120);
        QWheelEvent event(place, at->mapToGlobal(place), {}, turn, Qt::NoButton,
            oneIn(4) ? Qt::ControlModifier : Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(at, &event);
    }

    QWidget& focusOf(QWidget& window) {
        QWidget* focus = window.focusWidget();
        return focus != nullptr && focus->isVisible() ? *focus : window;
    }

    void key(QWidget& window) {
        constexpr std::array keys{Qt::Key_Tab, Qt::Key_Backtab, Qt::Key_Return, Qt::Key_Escape,
            Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown,
            Qt::Key_Home, Qt::Key_End, Qt::Key_Space, Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_F1,
            Qt::Key_F10, Qt::Key_Plus, Qt::Key_Minus};
        const int what = below(10);
        Qt::Key pressed = keys[static_cast<std::size_t>(below(static_cast<int>(keys.size())))];
        Qt::KeyboardModifiers with = Qt::NoModifier;
        if (what >= 8) {
            pressed = static_cast<Qt::Key>(Qt::Key_A + below(26));
            with = what == 8 ? Qt::AltModifier : Qt::ControlModifier;
        } else if (what == 7) {
            with = oneIn(2) ? Qt::ShiftModifier : Qt::ControlModifier;
        }
        note("key " + std::to_string(pressed) + " with " + std::to_string(with.toInt()), window);
        QTest::keyClick(&focusOf(window), pressed, with);
    }

    // Texts of all kinds, and numbers that boxes take and refuse.
    void type(QWidget& window) {
        constexpr std::array texts{"1", "0", "-3.5", "99999999999", "1e9", "abc", "%n &x", "12,5",
            "\xc3\xbc\xe3\x82\xac", "....", "1.2.3", "CON", "#", "7000", "16"};
        const char* text = texts[static_cast<std::size_t>(below(static_cast<int>(texts.size())))];
        note(std::string("typed ") + text, window);
        QPointer<QWidget> at(&focusOf(window));
        for (const QChar letter : QString::fromUtf8(text)) {
            if (at.isNull()) return;
            QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(letter));
            QApplication::sendEvent(at, &press);
        }
    }

    // A command of a menu, as its shortcut would run it.
    void command(QWidget& window) {
        if (qobject_cast<QMainWindow*>(&window) == nullptr) return key(window);
        QList<QAction*> enabled;
        for (QAction* action : window.findChildren<QAction*>())
            if (action->isEnabled() && action->isVisible() && action->menu() == nullptr)
                enabled << action;
        if (enabled.isEmpty()) return;
        QAction* chosen = enabled[below(static_cast<int>(enabled.size()))];
        // The program's end would be every twentieth command.
        if (chosen->objectName() == QStringLiteral("Mnu_Exit") && !oneIn(10)) return;
        note("command " + chosen->objectName().toStdString(), window);
        chosen->trigger();
    }

    void leave(QWidget& window) {
        if (qobject_cast<forms::VrnWin32*>(&window) != nullptr && !oneIn(5)) return;
        note("closed", window);
        window.close();
    }

    std::int64_t m_count;
    std::int64_t m_done = 0;
    std::int64_t m_starts = 0;
    int m_chain = 0;
    std::map<std::string, std::int64_t> m_windows;
    double m_lastStep = 0;
    double m_longest = 0;
    std::mt19937 m_random;
    faults::Proof& m_proof;
    testing::TestProgram m_program;
    QtDialogs m_dialogs;
    QtPrinter m_printer{m_program.files};
    std::unique_ptr<simulator::ModelLogger> m_logger;
    std::unique_ptr<simulator::FaultyEnd> m_faulty;
    std::unique_ptr<LivelyLine> m_line;
    std::unique_ptr<link::LoggerLink> m_link;
};

} // namespace

int main(int argc, char* argv[]) {
    const faults::Options options = faults::optionsOf(argc, argv);
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    // Not the program's own application, which would swallow an exception that this looks for.
    QApplication application(argc, argv);
    prepareApplication(application);
    QApplication::setEffectEnabled(Qt::UI_AnimateMenu, false);
    for (const int signal : {SIGSEGV, SIGABRT, SIGFPE, SIGALRM}) std::signal(signal, tellAndEnd);
    faults::Proof proof(options);
    warnings = &proof;
    qInstallMessageHandler(onWarning);
    Monkey monkey(options, proof);
    return monkey.run();
}
