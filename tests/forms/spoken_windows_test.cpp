// Every window as assistive tools find it: whatever can be read or used in it has a name.
#include "core/forms/doors.h"
#include "library/forms/time_graph.h"
#include "library/run_list.h"
#include "link/forms/download_data.h"
#include "link/forms/logger_line.h"
#include "link/forms/pit_run.h"
#include "link/forms/setup_obc.h"
#include "mainwin/main_window.h"
#include "mainwin/splash.h"
#include "platform/services.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/graph_window.h"
#include "tests/forms/support/user_click.h"
#include "tests/support/pit_rig.h"

#include <QAccessible>
#include <QAction>
#include <QFrame>
#include <QMenu>
#include <QPushButton>
#include <QTabBar>

using namespace kvo;
using namespace kvo::forms;
using namespace kvo::platform_qt;

namespace {

// What a user reads or works with. The rest are frames around it.
bool needsName(const QAccessibleInterface& face) {
    switch (face.role()) {
    case QAccessible::Button:
    case QAccessible::ButtonMenu:
    case QAccessible::CheckBox:
    case QAccessible::RadioButton:
    case QAccessible::EditableText:
    case QAccessible::ComboBox:
    case QAccessible::SpinBox:
    case QAccessible::Slider:
    case QAccessible::List:
    case QAccessible::Table:
    case QAccessible::Tree:
    case QAccessible::PageTab:
    case QAccessible::MenuItem:
    case QAccessible::ProgressBar:
    case QAccessible::Chart:
    case QAccessible::Graphic:
    case QAccessible::Dialog:
    case QAccessible::Window:
        return true;
    case QAccessible::StaticText: // one that stands empty says nothing to anybody
        return !face.text(QAccessible::Value).isEmpty();
    default:
        return face.state().focusable != 0;
    }
}

QString whoIs(const QAccessibleInterface& face) {
    const QObject* object = face.object();
    const QString name = object == nullptr ? QString() : object->objectName();
    return QStringLiteral("%1 %2 (role %3)")
        .arg(object == nullptr ? QString() : QLatin1String(object->metaObject()->className()), name)
        .arg(face.role());
}

struct Walked {
    int named = 0;
    QStringList nameless;
};

void walk(QAccessibleInterface& face, Walked& walked) {
    const bool separator = face.role() == QAccessible::Separator;
    if (!face.isValid() || face.state().invisible != 0 || separator) return;
    if (needsName(face)) {
        if (face.text(QAccessible::Name).trimmed().isEmpty()) {
            walked.nameless << whoIs(face);
        } else {
            ++walked.named;
        }
    }
    // The cells of a list are texts of files.
    const bool cells = face.role() == QAccessible::List || face.role() == QAccessible::Table ||
                       face.role() == QAccessible::ComboBox || face.role() == QAccessible::Tree;
    for (int i = 0; !cells && i < face.childCount(); ++i) {
        if (QAccessibleInterface* child = face.child(i)) walk(*child, walked);
    }
}

} // namespace

class SpokenWindowsTest : public QObject, private testing::GraphWindow {
    Q_OBJECT

    struct Line {
        explicit Line(testing::TestProgram& program)
            : line(logger), link(line, line, program.dialogs) {
            platform::services().port = &line;
            platform::services().yield = &line;
            useLoggerLink(&link);
        }
        ~Line() { useLoggerLink(nullptr); }
        simulator::ModelLogger logger{32};
        testing::VirtualLine line;
        link::LoggerLink link;
    };
    std::unique_ptr<Line> m_line;
    QSet<QString> m_walked;

    void allNamed(QWidget* window) {
        QVERIFY(window != nullptr);
        QCoreApplication::processEvents();
        Walked walked;
        walk(*QAccessible::queryAccessibleInterface(window), walked);
        for (QMenu* menu : window->findChildren<QMenu*>()) {
            QAccessibleInterface* entries = QAccessible::queryAccessibleInterface(menu);
            for (int i = 0; i < entries->childCount(); ++i) {
                QAccessibleInterface* entry = entries->child(i);
                const bool shows = menu->actions().at(i)->isVisible();
                if (!shows || entry->role() == QAccessible::Separator) continue;
                const QString name = entry->text(QAccessible::Name);
                const bool letters =
                    std::any_of(name.begin(), name.end(), [](QChar c) { return c.isLetter(); });
                if (!letters) walked.nameless << menu->title() + QLatin1Char(' ') + name;
            }
        }
        const QString where = QLatin1String(window->metaObject()->className());
        m_walked.insert(where);
        QVERIFY2(walked.nameless.isEmpty(),
            qPrintable(
                where + QStringLiteral(":\n  ") + walked.nameless.join(QLatin1String("\n  "))));
        QVERIFY2(walked.named > 0, qPrintable(where));
    }
    void allTabsNamed(QWidget* window) {
        allNamed(window);
        for (QTabBar* tabs : window->findChildren<QTabBar*>()) {
            for (int i = 0; tabs->isVisible() && i < tabs->count(); ++i) {
                tabs->setCurrentIndex(i);
                allNamed(window);
            }
        }
    }
    void modal(const std::function<void()>& open, const std::function<void(QWidget*)>& look) {
        testing::onModal([&](QWidget* window) {
            look(window);
            window->close();
        });
        open();
    }
    void modal(const std::function<void()>& open) {
        modal(open, [this](QWidget* window) { allTabsNamed(window); });
    }
    static void clickIn(QWidget* window, const char* button) {
        control<QPushButton>(*window, button).click();
    }

private slots:
    void init() {
        begin();
        m_line = std::make_unique<Line>(program());
        for (const int number : {1, 2}) store(32, number);
    }
    void cleanup() {
        const QString problems = end();
        m_line.reset();
        QCOMPARE(problems, QString());
    }

    void theGraphAndWhatItOpens() {
        DataGraph& graph = openByChooser(taking(2));
        allNamed(&graph);
        overlay(1);
        allNamed(&graph);
        modal([] { doors().showVisibleOptions({}); });
        modal([] { (void)doors().chooseCustomScale({20000, 12000}); });
        modal([] { doors().showStatistics({"Run one", {}, {}}); });
        files().put("/kvo/Kvobike.dll", testing::pictureFile(40, 20, 0xFF0000));
        files().put("/kvo/Kvocar.dll", testing::pictureFile(40, 20, 0xFF0000));
        modal([] { doors().showAbout(); });
        modal([] { doors().openConversions(); });
    }

    void theMainWindowAndItsPicture() {
        auto& window = form<VrnWin32>();
        window.show();
        allNamed(&window);
        auto& splash = form<frmSplash>();
        splash.show();
        allNamed(&splash);
    }

    void theLibrary() {
        (void)library::runList().read(state().AppFolder, files());
        modal([] { (void)doors().chooseRun("Load", "Load Data File"); });
        modal([] { doors().showInfo(pathOf(1), "Info For : x"); },
            [this](QWidget* info) {
                allNamed(info);
                clickIn(info, "Command1");
                allNamed(info);
            });
        modal([] { doors().editVehicleSetup(); });
        modal([] { (void)doors().importRuns(true); });
        modal([] { (void)doors().importRuns(false); });
        modal([] { doors().copyRuns(); });
        modal([] { doors().mailRuns(); });
        modal([] { (void)doors().browseFolder(); });
        doors().showTimeGraph(true);
        allNamed(&form<TimeGraph>());
    }

    void theLogger() {
        state().Config = testing::pitConfig(32);
        modal([] { showModal(form<DownloadData>()); });
        form<PitRun>().show();
        allNamed(&form<PitRun>());
        form<SetupOBC>().show();
        allNamed(&form<SetupOBC>());
    }

    // The form waits until its frames are closed.
    void theSetup() {
        const auto frame = [this](QWidget* setup, const char* opens, const char* name,
                               const char* closes) {
            clickIn(setup, opens);
            auto& frame = control<QFrame>(*setup, name);
            QVERIFY(frame.isVisible());
            allNamed(setup);
            clickIn(&frame, closes);
        };
        modal([] { doors().showSoftwareSetup(); },
            [&](QWidget* setup) {
                allTabsNamed(setup);
                frame(setup, "GearRatios", "Edit_Gears", "Cancel");
                frame(setup, "AnalogSetup(3)", "Analog_Setup", "Command1");
            });
    }

    void theCalculators() {
        for (int sum = 0; sum < 6; ++sum) modal([sum] { doors().showCalculator(sum); });
    }
};

KVO_FORM_TEST_MAIN(SpokenWindowsTest)
#include "spoken_windows_test.moc"
