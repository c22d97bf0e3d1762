// Opening folders and runs: by the command line, by a drop, from the menus of the main window.
#include "mainwin/opening.h"

#include "core/config.h"
#include "core/forms/doors.h"
#include "core/paths.h"
#include "core/run_index.h"
#include "library/run_list.h"
#include "mainwin/main_window.h"
#include "mainwin/start.h"
#include "platform/qt/application.h"
#include "platform/qt/qt_settings.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/graph_window.h"
#include "tests/forms/support/host_files.h"
#include "tests/forms/support/model_run.h"
#include "tests/forms/support/user_click.h"

#include <QDir>
#include <QDropEvent>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTimer>
#include <QUrl>

using namespace kvo;
using namespace kvo::forms;
using namespace kvo::testing;
using platform::Reply;

namespace {

using Paths = std::vector<std::string>;

// A drop of these files; whether the window takes them.
bool dropOn(QWidget& window, const QList<QUrl>& urls) {
    QMimeData data;
    data.setUrls(urls);
    const QPoint at = window.rect().center();
    QDragEnterEvent enter(at, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&window, &enter);
    QDropEvent drop(at, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&window, &drop);
    QCoreApplication::processEvents();
    return enter.isAccepted() && drop.isAccepted() && drop.dropAction() == Qt::CopyAction;
}

QUrl file(const std::string& path) {
    return QUrl::fromLocalFile(QString::fromStdString(path));
}

} // namespace

class OpeningTest : public QObject, private testing::GraphWindow {
    Q_OBJECT

    std::vector<std::string> m_shown; // runs that were shown
    std::unique_ptr<HostFiles> m_host;

    // The program's folder and its runs, as this system writes their paths.
    void store(int type, int number) {
        GraphWindow::store(type, number);
        state().AppFolder = hostPath("/kvo");
    }
    static std::string pathOf(int number) { return hostPath(GraphWindow::pathOf(number)); }
    platform::Bytes content(const std::string& path) {
        return files().read(memoryPath(path)).value();
    }

    Paths& folders() { return program().settings.lists["folders"]; }
    Paths& runs() { return program().settings.lists["runs"]; }
    void scriptShowing() {
        forms::openDoors();
        doors().showChosenRun = [this](const std::optional<core::ChosenRun>& run) {
            m_shown.push_back(run ? run->path : std::string());
        };
    }
    VrnWin32& mainWindow() {
        auto& window = platform_qt::form<VrnWin32>();
        window.show();
        QCoreApplication::processEvents();
        return window;
    }
    QAction& mainCommand(const char* name) { return mainWindow().commands().command(name); }
    // A run that lies on a stick, and its path.
    std::string onTheStick(int number) {
        store(32, number);
        const std::string path = hostPath("/stick/" + core::baseName(pathOf(number)));
        files().put(memoryPath(path), content(pathOf(number)));
        return path;
    }
    void expectGone(const std::string& path) {
        dialogs().expectBox(
            path + "\nis not there any more. It is taken off the list.", 48, "Open");
    }

private slots:
    void init() {
        begin();
        m_host = std::make_unique<HostFiles>(files());
        platform::services().files = m_host.get();
        m_shown.clear();
    }
    void cleanup() { QCOMPARE(end(), QString()); }

    // --- The start

    void aStartIsInTheFolderThatIsNamed() {
        store(32, 1);
        QVERIFY(startPlace({}).has_value());
        QCOMPARE(startPlace({})->folder, std::string());
        QCOMPARE(startPlace({"/kvo", false})->folder, hostPath("/kvo"));
        const auto run = startPlace({pathOf(1), false});
        QCOMPARE(run->folder, hostPath("/kvo"));
        QCOMPARE(run->run, pathOf(1));
        const std::string stick = onTheStick(1);
        QCOMPARE(startPlace({stick, false})->folder, std::string());
        QCOMPARE(startPlace({stick, false})->run, stick);
        folders() = {"/kvo"};
        QCOMPARE(startPlace({stick, true})->folder, std::string("/kvo"));
        QCOMPARE(startPlace({stick, true})->run, stick);
    }

    void aStartOnNothingIsTold() {
        dialogs().expectBox(hostPath("/none") + "\nis not there.", 48, "Open");
        QVERIFY(!startPlace({"/none", false}));
        files().put("/kvo/notes.txt", {1, 2, 3});
        dialogs().expectBox(hostPath("/kvo/notes.txt") + "\nis no run of a logger.", 48, "Open");
        QVERIFY(!startPlace({"/kvo/notes.txt", false}));
    }

    void aMenusStartIsInTheLastFolder() {
        QVERIFY(files().makeFolder("/b \xC3\xA4"));
        folders() = {"/gone", "/b \xC3\xA4", "/c"};
        expectGone("/gone");
        QCOMPARE(startPlace({{}, true})->folder, std::string("/b \xC3\xA4"));
        QCOMPARE(folders(), (Paths{"/b \xC3\xA4", "/c"}));
    }

    // A click on the program itself starts it in its own folder.
    void aStartAmongTheProgramsIsInTheLastFolder() {
        QVERIFY(files().makeFolder("/kvo"));
        folders() = {"/kvo"};
        const std::string here = platform_qt::currentFolder();
        QCOMPARE(startPlace({{}, false, "/usr"})->folder, std::string());
        QCOMPARE(startPlace({{}, false, here})->folder, std::string("/kvo"));
        QCOMPARE(startPlace({{}, false, here + "/./"})->folder, std::string("/kvo"));
        QCOMPARE(startPlace({"/kvo", false, here})->folder, hostPath("/kvo"));
        files().put(memoryPath(here) + "/Kvo.Cfg", {1}); // somebody keeps runs there
        QCOMPARE(startPlace({{}, false, here})->folder, std::string());
    }

    void theFirstStartOffersAFolder() {
        dialogs().expectBoxTitled("Welcome to Kvo", Reply::cancel).contains =
            "\n" + hostPath(QDir::homePath().toStdString() + "/Kvo") +
            "\n"; // where there are no documents
        QVERIFY(!startPlace({{}, true}));
        const std::string documents =
            QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation).toStdString();
        QVERIFY(files().makeFolder(memoryPath(documents)));
        const std::string offered = hostPath(documents + "/Kvo");
        dialogs().expectBoxTitled("Welcome to Kvo", Reply::cancel);
        QVERIFY(!startPlace({{}, true}));
        QVERIFY(!m_host->folderExists(offered));
        dialogs().expectBoxTitled("Welcome to Kvo", Reply::yes).contains = offered;
        QCOMPARE(startPlace({{}, true})->folder, offered);
        core::AppConfig config;
        QVERIFY(core::decodeConfig(content(offered + "/Kvo.Cfg"), config));
        QCOMPARE(config.LoggerDataType, std::int16_t{32});
        // One that is there keeps its own setup.
        files().put(memoryPath(offered) + "/Kvo.Cfg", {1});
        dialogs().expectBoxTitled("Welcome to Kvo", Reply::yes);
        QVERIFY(startPlace({{}, true}));
        QCOMPARE(content(offered + "/Kvo.Cfg"), platform::Bytes{1});
        dialogs().expectBoxTitled("Welcome to Kvo", Reply::no);
        dialogs().expectFolder("/elsewhere");
        QCOMPARE(startPlace({{}, true})->folder, std::string("/elsewhere"));
        dialogs().expectBoxTitled("Welcome to Kvo", Reply::no);
        dialogs().expectFolder(std::nullopt);
        QVERIFY(!startPlace({{}, true}));
        files().failWrites("/full", MemoryFiles::Failure::fullDisk);
        dialogs().expectBoxTitled("Welcome to Kvo", Reply::no);
        dialogs().expectFolder("/full");
        dialogs().expectBoxTitled("Open");
        QVERIFY(!startPlace({{}, true}));
    }

    // They lie where the package puts them, which the desktop names.
    void aNewFolderGetsTheShippedPictures() {
        QTemporaryDir data;
        QVERIFY(QDir(data.path()).mkdir("kvo"));
        const QString shipped = data.filePath("kvo/Kvocar.dll");
        QFile picture(shipped);
        QVERIFY(picture.open(QIODevice::WriteOnly) && picture.write("a car") == 5);
        picture.close();
        files().put(shipped.toStdString(), {'c', 'a', 'r'});
        const QByteArray before = qgetenv("XDG_DATA_DIRS");
        qputenv("XDG_DATA_DIRS", data.path().toLocal8Bit());
        dialogs().expectBoxTitled("Welcome to Kvo", Reply::no);
        dialogs().expectFolder("/new");
        const auto place = startPlace({{}, true});
        qputenv("XDG_DATA_DIRS", before);
        QCOMPARE(place->folder, std::string("/new"));
        QCOMPARE(files().read("/new/Kvocar.dll"), (platform::Bytes{'c', 'a', 'r'}));
        QVERIFY(!files().exists("/new/Kvobike.dll")); // as far as they are shipped
    }

    // --- Runs

    void aRunOfThisFolderOpens() {
        scriptShowing();
        store(32, 1);
        store(32, 2);
        openPath(pathOf(1));
        QCOMPARE(m_shown, Paths{pathOf(1)});
        QCOMPARE(library::runList().chosen().FileName,
            core::baseName(pathOf(1))); // back and forward go on from it
    }

    void aRunFromElsewhereIsOfferedForImport() {
        scriptShowing();
        const std::string stick = onTheStick(1);
        const std::string question = core::baseName(stick) +
                                     "\nlies in another folder. Do you want to import it into this "
                                     "one?";
        dialogs().expectBox(question, 4 + 32, "Open", Reply::no);
        openPath(stick);
        QVERIFY(m_shown.empty());
        dialogs().expectBox(question, 4 + 32, "Open", Reply::yes);
        dialogs().expectBoxTitled("File Date for [ " + core::baseName(stick) + " ]", Reply::yes);
        openPath(stick);
        QCOMPARE(m_shown.size(), std::size_t(1));
        QVERIFY(m_shown[0].starts_with(hostPath("/kvo/Data") + m_host->separator()));
        QCOMPARE(content(m_shown[0]), content(stick));
    }

    void whoLooksOnlyImportsNothing() {
        scriptShowing();
        const std::string stick = onTheStick(1);
        state().LookOnly = true;
        dialogs().expectBoxTitled("Open").contains = "open for looking only";
        openPath(stick);
        QVERIFY(m_shown.empty());
    }

    void whatIsNoRunIsTold() {
        scriptShowing();
        files().put("/kvo/notes.txt", {1});
        dialogs().expectBox(hostPath("/kvo/notes.txt") + "\nis no run of a logger.", 48, "Open");
        openPath("/kvo/notes.txt");
        dialogs().expectBox(hostPath("/none") + "\nis not there.", 48, "Open");
        openPath("/none");
    }

    void aRunOfTheCommandLineWaitsForTheQuestions() {
        scriptShowing();
        store(32, 1);
        mainWindow();
        QTimer::singleShot(0, [] {
            QMessageBox box(QMessageBox::Question, QStringLiteral("first"), QString());
            QTimer::singleShot(150, &box, &QDialog::accept);
            box.exec();
        });
        openSoon(pathOf(1));
        QTest::qWait(20);
        QVERIFY(m_shown.empty());
        QTRY_COMPARE(m_shown, Paths{pathOf(1)});
    }

    // --- Drops

    void aDropOnEitherWindowOpens() {
        scriptShowing();
        store(32, 1);
        QVERIFY(dropOn(mainWindow(), {file(pathOf(1)), file("/second")}));
        QCOMPARE(m_shown, Paths{pathOf(1)});
        doors().showChosenRun = [](const auto&) {};
        auto& graph = open(32);
        Paths opened;
        doors().openDropped = [&opened](const std::string& path) { opened.push_back(path); };
        const std::string other = hostPath("/r\xC3\xA4"
                                           "d/x.12d");
        QVERIFY(dropOn(graph, {file(other)}));
        QCOMPARE(opened.size(), std::size_t(1));
        QCOMPARE(memoryPath(opened.front()), memoryPath(other));
        QVERIFY(!dropOn(graph, {QUrl(QStringLiteral("https://example.org/x.12d"))}));
        QVERIFY(!dropOn(graph, {}));
        QCOMPARE(opened.size(), std::size_t(1));
    }

    void nothingIsTakenUnderAQuestion() {
        scriptShowing();
        store(32, 1);
        auto& window = mainWindow();
        onModal([&window](QWidget* box) {
            QVERIFY(!dropOn(window, {file(pathOf(1))}));
            box->close();
        });
        QMessageBox box(QMessageBox::Question, QStringLiteral("first"), QString(), QMessageBox::Ok);
        box.exec();
        QVERIFY(m_shown.empty());
    }

    void nothingIsTakenWhileACommandIsAtWork() {
        scriptShowing();
        store(32, 1);
        auto& window = mainWindow();
        {
            const MainMenusDisabled off;
            QVERIFY(dropOn(window, {file(pathOf(1))}));
            openSoon(pathOf(1));
            QTest::qWait(120);
            QVERIFY(m_shown.empty());
            QCOMPARE(dialogs().beeps(), 1);
        }
        QTRY_COMPARE(m_shown, Paths{pathOf(1)});
    }

    // --- Folders

    void anotherFolderIsANewStart() {
        scriptShowing();
        QVERIFY(files().makeFolder("/kvo"));
        QVERIFY(files().makeFolder("/other"));
        mainWindow();
        dialogs().expectBox(hostPath("/kvo") + "\nis the folder that is open.", 48, "Open");
        openFolder("/kvo");
        program().startsAnew = false;
        dialogs().expectBox("Kvo could not be started in\n" + hostPath("/other"), 48, "Open");
        openFolder("/other");
        QVERIFY(platform_qt::form<VrnWin32>().isVisible());
        program().startsAnew = true;
        dialogs().expectFolder("/other");
        QTest::keyClick(
            &platform_qt::form<VrnWin32>(), Qt::Key_O, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(program().startedAnew,
            (std::vector<Paths>{{hostPath("/other")}, {hostPath("/other")}}));
        QVERIFY(!platform_qt::form<VrnWin32>().isVisible());
    }

    // As a close of the graph window does.
    void whatTheGraphKeepsIsKeptFirst() {
        store(32, 1);
        QVERIFY(files().makeFolder("/other"));
        program().putConfig();
        open(32);
        forms::openDoors();
        command("Resolution(8)").trigger();
        openPath("/other");
        QCOMPARE(program().startedAnew, std::vector<Paths>{{hostPath("/other")}});
        QVERIFY(!platform_qt::isLoaded<DataGraph>());
        QCOMPARE(savedConfig().G_Res, std::uint8_t{8});
    }

    void theFolderDialogMayBeCancelled() {
        scriptShowing();
        dialogs().expectFolder(std::nullopt);
        mainCommand("Mnu_OpenFolder").trigger();
        QVERIFY(program().startedAnew.empty());
    }

    // --- Those that were open last

    void theMenusHaveTheLastOnes() {
        scriptShowing();
        QVERIFY(!mainCommand("Mnu_RecentFolder(0)").isVisible());
        QVERIFY(!mainWindow().commands().menu("Mnu_RecentFolders").menuAction()->isEnabled());
        store(32, 1);
        QVERIFY(files().makeFolder("/one & two"));
        folders() = {"/one & two", "/gone"};
        runs() = {pathOf(1), "/kvo/Data/gone.12d"};
        folders().push_back("/" + std::string(300, 'x'));
        mainWindow().hide();
        QVERIFY(mainCommand("Mnu_RecentFolder(2)").text().size() < 110); // no wider than a screen
        folders().pop_back();
        mainWindow().hide();
        QCOMPARE(mainCommand("Mnu_RecentFolder(0)").text(), QStringLiteral("&1  /one && two"));
        QCOMPARE(mainCommand("Mnu_RecentFolder(1)").text(), QStringLiteral("&2  /gone"));
        QVERIFY(!mainCommand("Mnu_RecentFolder(2)").isVisible());
        QVERIFY(!mainCommand("Mnu_RecentRun(2)").isEnabled());
        expectGone("/gone");
        mainCommand("Mnu_RecentFolder(1)").trigger();
        QCOMPARE(folders(), Paths{"/one & two"});
        QVERIFY(!mainCommand("Mnu_RecentFolder(1)").isVisible());
        mainCommand("Mnu_RecentRun(0)").trigger();
        QCOMPARE(m_shown, Paths{pathOf(1)});
        expectGone("/kvo/Data/gone.12d");
        mainCommand("Mnu_RecentRun(1)").trigger();
        QCOMPARE(runs(), Paths{pathOf(1)});
        mainCommand("Mnu_RecentFolder(0)").trigger();
        QCOMPARE(program().startedAnew, std::vector<Paths>{{hostPath("/one & two")}});
    }

    void aRunOfAnotherFolderStartsThere() {
        scriptShowing();
        store(32, 1);
        const std::string other = hostPath("/other/Data/26111514.52d");
        files().put(memoryPath(other), content(pathOf(1)));
        mainWindow();
        openRecentRun(other);
        QCOMPARE(program().startedAnew, std::vector<Paths>{{other}});
        QVERIFY(m_shown.empty());
    }

    void whatIsOpenedIsRemembered() {
        forms::openDoors();
        store(32, 1);
        store(32, 2);
        rememberFolder();
        QCOMPARE(folders(), Paths{hostPath("/kvo")});
        openByChooser(taking(1));
        QCOMPARE(runs(), Paths{pathOf(1)});
        command("GraphChange(0)").isEnabled() ? command("GraphChange(0)").trigger()
                                              : command("GraphChange(1)").trigger();
        QCOMPARE(runs(), (Paths{pathOf(2), pathOf(1)}));
    }

    void theSettingsKeepPathsOfAnyScript() {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("Kvo.ini"));
        const Paths paths{"/r\xC3\xA4"
                          "der, \xE8\xB5\xB0/a;b",
            "/x"};
        platform_qt::QtSettings(path).setList("folders", paths);
        QCOMPARE(platform_qt::QtSettings(path).list("folders"), paths);
        platform_qt::QtSettings(path).setList("folders", {"/x"});
        QCOMPARE(platform_qt::QtSettings(path).list("folders"), Paths{"/x"});
        QVERIFY(platform_qt::QtSettings(path).list("runs").empty());
    }
};

KVO_FORM_TEST_MAIN(OpeningTest)
#include "opening_test.moc"
