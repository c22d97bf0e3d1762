// Browser: looking for a folder by drive and folder, with the process's current folder behind it.
#include "library/folder_browser.h"
#include "library/forms/browser.h"
#include "platform/os/os_files.h"
#include "platform/qt/drives.h"
#include "platform/qt/form_kit.h"
#include "platform/qt/text.h"
#include "platform/services.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/host_files.h"
#include "tests/forms/support/test_program.h"
#include "tests/forms/support/user_click.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTemporaryDir>

#include <algorithm>
#include <memory>

using namespace kvo;
using namespace kvo::platform_qt;
using namespace kvo::testing;
using kvo::forms::Browser;

namespace {

Browser& folderDialogue() {
    return form<Browser>();
}
QListWidget& folderList() {
    return control<QListWidget>(folderDialogue(), "Dir1");
}
QString currentDir() {
    return control<QLabel>(folderDialogue(), "LAB_CurrentDir").text();
}
// A path of the toolkit, as this system writes it.
QString native(const QString& path) {
    return QDir::toNativeSeparators(path);
}
QStringList namesIn(const QListWidget& list) {
    QStringList names;
    for (int i = 0; i < list.count(); ++i) names << list.item(i)->text();
    return names;
}
void pressIn(const char* button) {
    QCOMPARE(userClick(&control<QPushButton>(folderDialogue(), button)), QString());
}

} // namespace

class BrowserTest : public QObject {
    Q_OBJECT

    std::unique_ptr<TestProgram> m_program;
    std::unique_ptr<QTemporaryDir> m_folder;
    platform_os::OsFiles m_files;
    QString m_before;

    QString at(const char* name) const { return m_folder->filePath(QLatin1String(name)); }
    static std::optional<std::string> browseDoing(std::function<void()> steps) {
        onModal([steps](QWidget*) { steps(); });
        const auto folder = folderDialogue().browse();
        unload<Browser>();
        return folder;
    }

private slots:
    void init() {
        m_before = QDir::currentPath();
        m_program = std::make_unique<TestProgram>();
        m_folder = std::make_unique<QTemporaryDir>();
        for (const char* name : {"program", "program/Data", "stick/Runs", "stick/J\u00FCrg"}) {
            QVERIFY(QDir(m_folder->path()).mkpath(QString::fromUtf8(name)));
        }
        QVERIFY(QFile(at("stick/26111514.52d")).open(QIODevice::WriteOnly));
        platform::services().files = &m_files;
        m_program->state.AppFolder = typedPath(native(QDir(at("program")).canonicalPath()));
        kept<Browser>() = {};
    }
    void cleanup() {
        unload<Browser>();
        const std::string problems = m_program->dialogs.problems();
        m_program.reset();
        QDir::setCurrent(m_before);
        QCOMPARE(modalComplaints(), QString());
        QVERIFY2(problems.empty(), problems.c_str());
    }

    void opensInTheProgramsFolder() {
        const auto folder = browseDoing([this] {
            QCOMPARE(folderDialogue().windowTitle(), QStringLiteral("Browser"));
            QCOMPARE(currentDir().toStdString(), m_program->state.AppFolder);
            QCOMPARE(namesIn(folderList()), QStringList({"..", "Data"}));
            QVERIFY(folderList().hasFocus());
            pressIn("Ok");
        });
        QCOMPARE(folder, m_program->state.AppFolder);
    }

    void theKeyboardWalksAndTheCurrentFolderFollows() {
        const auto folder = browseDoing([this] {
            QTest::keyClick(&folderList(), Qt::Key_Backspace);
            QCOMPARE(namesIn(folderList()), QStringList({"..", "program", "stick"}));
            QCOMPARE(QDir::currentPath(), QDir(m_folder->path()).canonicalPath());
            QTest::keyClick(&folderList(), Qt::Key_End);
            QTest::keyClick(&folderList(), Qt::Key_Return);
            QVERIFY(folderDialogue().isVisible());
            QCOMPARE(namesIn(control<QListWidget>(folderDialogue(), "Fil_Files")),
                QStringList{"26111514.52d"});
            QTest::keyClick(&folderList(), Qt::Key_Down);
            QTest::keyClick(&folderList(), Qt::Key_Return);
            QCOMPARE(QDir::currentPath(), QDir(at("stick")).canonicalPath() + "/J\u00FCrg");
            pressIn("Ok");
        });
        QCOMPARE(folder, typedPath(native(QDir(at("stick")).canonicalPath() + "/J\u00FCrg")));
        // A stick that is the current folder could not be taken out.
        QCOMPARE(typedPath(native(QDir::currentPath())), m_program->state.AppFolder);
    }

    void opensAgainWhereItWasLeft() {
        browseDoing([] {
            QTest::keyClick(&folderList(), Qt::Key_Down);
            QTest::keyClick(&folderList(), Qt::Key_Return);
            pressIn("Ok");
        });
        browseDoing([] {
            QVERIFY(currentDir().endsWith(native(QStringLiteral("/program/Data"))));
            pressIn("Cancel");
        });
        QVERIFY(QDir(at("program/Data")).removeRecursively());
        browseDoing([this] {
            QCOMPARE(currentDir().toStdString(), m_program->state.AppFolder);
            pressIn("Cancel");
        });
    }

    void aDoubleClickOpensAFolder() {
        browseDoing([] {
            const QRect place = folderList().visualItemRect(folderList().item(1));
            QTest::mouseClick(folderList().viewport(), Qt::LeftButton, {}, place.center());
            QTest::mouseDClick(folderList().viewport(), Qt::LeftButton, {}, place.center());
            QVERIFY(currentDir().endsWith(native(QStringLiteral("/program/Data"))));
            pressIn("Cancel");
        });
    }

    void leavingItInAnyOtherWayIsNoFolder() {
        QVERIFY(!browseDoing([] { pressIn("Cancel"); }));
        QVERIFY(!browseDoing([] { QTest::keyClick(&folderDialogue(), Qt::Key_Escape); }));
        QVERIFY(!browseDoing([] { folderDialogue().close(); }));
    }

    void aFolderThatIsGoneLeavesAllAsItWas() {
        browseDoing([this] {
            QVERIFY(QDir(at("program/Data")).removeRecursively());
            QTest::keyClick(&folderList(), Qt::Key_Down);
            QTest::keyClick(&folderList(), Qt::Key_Return);
            QCOMPARE(currentDir().toStdString(), m_program->state.AppFolder);
            QCOMPARE(m_program->dialogs.beeps(), 1);
            pressIn("Cancel");
        });
    }

    void theDriveBoxGoesToADriveAndFollowsTheFolder() {
        const auto drives = platform_qt::drives();
        const auto root = std::find_if(drives.begin(), drives.end(),
            [](const auto& drive) { return library::isRootFolder(drive.root); });
        QVERIFY(root != drives.end());
        browseDoing([&] {
            auto& drive = control<QComboBox>(folderDialogue(), "Drive1");
            drive.setFocus();
            QTest::keyClick(&drive, Qt::Key_End);
            QTest::keyClick(&drive, Qt::Key_Home);
            QCOMPARE(currentDir(), shownPath(drives.front().root));
            for (auto each = drives.begin(); each != root; ++each)
                QTest::keyClick(&drive, Qt::Key_Down);
            QCOMPARE(currentDir(), shownPath(root->root));
            QCOMPARE(drive.currentIndex(), static_cast<int>(root - drives.begin()));
            QVERIFY(!namesIn(folderList()).contains(QStringLiteral("..")));
            pressIn("Cancel");
        });
    }

    void anUnreadableDriveIsCaught() {
        MemoryFiles memory;
        QVERIFY(memory.makeFolder("/kvo/Data").done);
        for (const auto& drive : platform_qt::drives()) {
            const std::string root = memoryPath(drive.root);
            memory.failReads(root == "/" ? "/none" : root, MemoryFiles::Failure::notReady);
        }
        HostFiles files(memory);
        platform::services().files = &files;
        m_program->state.AppFolder = hostPath("/kvo");
        browseDoing([this] {
            auto& drive = control<QComboBox>(folderDialogue(), "Drive1");
            const int own = drive.currentIndex();
            QVERIFY(own >= 0 && drive.count() > 1);
            drive.setFocus();
            QTest::keyClick(&drive, own + 1 < drive.count() ? Qt::Key_Down : Qt::Key_Up);
            QCOMPARE(drive.currentIndex(), own);
            QCOMPARE(currentDir(), shownPath(hostPath("/kvo")));
            QVERIFY(m_program->dialogs.beeps() > 0);
            pressIn("Cancel");
        });
    }
};

KVO_FORM_TEST_MAIN(BrowserTest)
#include "browser_test.moc"
