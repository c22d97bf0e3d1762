// The help as the windows of the program call it: commands, F1, and the keys that its page lists.
#include "calc/forms/calc_form.h"
#include "calc/forms/conversions.h"
#include "core/forms/doors.h"
#include "graph/forms/data_graph.h"
#include "guide/chapters.h"
#include "guide/forms/guide_browser.h"
#include "guide/forms/help_window.h"
#include "library/forms/copy.h"
#include "library/forms/import_form.h"
#include "library/forms/info.h"
#include "library/forms/load_file.h"
#include "library/forms/run_statistics.h"
#include "library/forms/time_graph.h"
#include "link/forms/download_data.h"
#include "mainwin/about.h"
#include "mainwin/help.h"
#include "setup/forms/setup_software.h"
#include "setup/forms/visible_options.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/main_window.h"

#include <QAction>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>

#include <algorithm>

using namespace kvo;
using namespace kvo::platform_qt;
using namespace kvo::testing;
using kvo::forms::GuideBrowser;
using kvo::forms::HelpWindow;
using kvo::forms::VrnWin32;

class HelpTest : public QObject, private testing::MainWindow {
    Q_OBJECT

    static QString place() {
        return isLoaded<HelpWindow>() && form<HelpWindow>().isVisible()
                   ? form<HelpWindow>().pages().source().toString()
                   : QString();
    }
    static QString chapter(const char* anchor) {
        return GuideBrowser::address("user-guide.md", QLatin1String(anchor)).toString();
    }
    static QString chapterOf(const QString& window) {
        return chapter(guide::anchorFor({window.toStdString()}).c_str());
    }
    // F1 in a window of the program.
    template <class F> static void pressIn() {
        auto& window = form<F>();
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QTest::keyClick(&window, Qt::Key_F1);
        QCOMPARE(place(), chapterOf(window.objectName()));
        form<HelpWindow>().close();
        window.hide();
    }
    // All keys of a window which a list of them must have.
    template <class F> static QStringList keysOf() {
        QStringList keys;
        for (const QAction* action : form<F>().template findChildren<QAction*>())
            for (const QKeySequence& key : action->shortcuts()) keys << key.toString();
        for (const QShortcut* shortcut : form<F>().template findChildren<QShortcut*>())
            keys << shortcut->key().toString();
        keys.removeAll(QString());
        keys.replaceInStrings(QStringLiteral("Backtab"), QStringLiteral("Tab"));
        return keys;
    }
    // The page's left column; where keys share a line they stand apart by commas.
    static QStringList keysOfThePage() {
        QStringList keys;
        const QString page = form<HelpWindow>().pages().markdown(QStringLiteral("keyboard"));
        const QStringList lines = page.split(QLatin1Char('\n'));
        for (QString line : lines) {
            line.remove(QLatin1Char('\\'));
            const QString cell = line.section(QLatin1Char('|'), 1, 1);
            for (const QString& key : cell.split(QStringLiteral(", "))) keys << key.trimmed();
        }
        for (QString& key : keys) {
            const QString spelled = QKeySequence(key).toString();
            if (!spelled.isEmpty()) key = spelled;
        }
        return keys;
    }
    template <class F> static QStringList missing() {
        static const QStringList listed = keysOfThePage();
        QStringList left;
        for (const QString& key : keysOf<F>())
            if (!listed.contains(key)) left << form<F>().objectName() + QLatin1String(": ") + key;
        return left;
    }

private slots:
    void init() { open(); }
    void cleanup() { QCOMPARE(closeAndTell(), QString()); }

    void theCommandsOpenTheirPages() {
        shownWindow();
        const QString keyboard = GuideBrowser::address("keyboard").toString();
        for (const auto& [control, page] :
            {std::pair("Mnu_Help(2)", keyboard), std::pair("Mnu_Help(1)", chapter("")),
                std::pair("Mnu_Help(3)", GuideBrowser::address("commands").toString()),
                std::pair("Mnu_Help(4)", chapter("using-this-help"))}) {
            command(control).trigger();
            QCOMPARE(place(), page);
        }
        form<VrnWin32>().commands().press("Help");
        QCOMPARE(place(), chapter(""));
        QVERIFY(menusEnabled()); // it stays beside the window
        forms::doors().showHelp(forms::HelpPage::graph);
        QCOMPARE(place(), chapter("the-graph"));
    }

    void f1InTheMainWindowOpensTheBeginning() {
        QTest::keyClick(&shownWindow(), Qt::Key_F1);
        QCOMPARE(place(), chapter(""));
    }

    void f1OpensTheChapterOfTheWindow() {
        pressIn<forms::LoadFile>();
        pressIn<forms::Conversions>();
        pressIn<forms::DownloadData>();
        pressIn<forms::SetupSoftware>();
        pressIn<forms::About>();
    }

    // A program that was started twice in a test has one such key.
    void f1AsksOnce() {
        forms::openDoors();
        pressIn<forms::Conversions>();
        QVERIFY(!form<HelpWindow>().isVisible());
    }

    void everyKeyOfEveryWindowIsOnThePage() {
        forms::showHelp(forms::HelpPage::keyboard);
        QVERIFY(keysOf<VrnWin32>().contains(QStringLiteral("F1")));
        QVERIFY(keysOf<forms::DataGraph>().contains(QStringLiteral("Ctrl+O")));
        QStringList left = missing<VrnWin32>() + missing<forms::DataGraph>() +
                           missing<forms::LoadFile>() + missing<forms::TimeGraph>() +
                           missing<forms::DownloadData>() + missing<forms::Conversions>() +
                           missing<forms::CalcForm>() + missing<forms::SetupSoftware>() +
                           missing<forms::Visible_Options>() + missing<forms::Info>() +
                           missing<forms::Copy>() + missing<forms::Import>() +
                           missing<forms::Statistics>() + missing<HelpWindow>();
        QCOMPARE(left.join(QLatin1String("; ")), QString());
    }

    // A window with menus that the pages do not know would have its keys in no list.
    void everyCommandIsOnThePage() {
        const auto all = forms::allCommands();
        const auto has = [&all](const QString& control) {
            return std::ranges::any_of(all, [&](const guide::WindowCommands& window) {
                return std::ranges::any_of(window.rows, [&](const guide::CommandRow& row) {
                    return row.control == control.toStdString();
                });
            });
        };
        int count = 0;
        for (const QWidget* window : {static_cast<QWidget*>(&form<VrnWin32>()),
                 static_cast<QWidget*>(&form<forms::DataGraph>())}) {
            for (const QAction* action : window->findChildren<QAction*>()) {
                if (!action->objectName().startsWith(QLatin1String("Mnu_"))) continue;
                ++count;
                QVERIFY2(has(action->objectName()), qPrintable(action->objectName()));
            }
        }
        QVERIFY(count > 40);
    }

    void theAboutFormTellsLicenceAndToolkit() {
        auto& about = form<forms::About>();
        QVERIFY(control<QLabel>(about, "Label_Licence")
                    .text()
                    .contains(QStringLiteral("No licence has been granted yet")));
        const QString toolkit = control<QLabel>(about, "Label_Toolkit").text();
        QVERIFY(toolkit.contains(QStringLiteral("Qt ") + QLatin1String(qVersion())));
        QVERIFY(toolkit.contains(QStringLiteral("GNU Lesser General Public License, version 3")));
    }
};

KVO_FORM_TEST_MAIN(HelpTest)
#include "help_test.moc"
