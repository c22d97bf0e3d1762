// What the lists of drives, folders and files show.
#include "platform/qt/folder_lists.h"
#include "tests/forms/support/form_test_main.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace kvo::platform_qt;

class FolderListsTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_place;

private slots:
    void initTestCase() {
        QVERIFY(m_place.isValid());
        const QDir place(m_place.path());
        for (const char* folder : {"b", "A", ".hidden"})
            QVERIFY(place.mkpath(QLatin1String(folder)));
        for (const char* name : {"x.12d", "y.12D", "z.123d", "x.12i", "d", ".12d"}) {
            QFile file(place.filePath(QLatin1String(name)));
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
    }

    void foldersWithTheOneAbove() {
        QCOMPARE(folderList(m_place.path()), QStringList({"..", "A", "b"}));
        QVERIFY(!folderList(QDir::rootPath()).contains(QLatin1String("..")));
        QCOMPARE(subFolder(m_place.path(), QStringLiteral("b")), m_place.filePath("b"));
        QCOMPARE(subFolder(m_place.filePath("b"), QStringLiteral("..")), m_place.path());
        QCOMPARE(subFolder(m_place.path(), QStringLiteral("gone")), m_place.path());
    }

    void filesByTheirPatternWhateverTheirCase() {
        QCOMPARE(
            fileList(m_place.path(), QStringLiteral("*.??d")), QStringList({"x.12d", "y.12D"}));
        QCOMPARE(fileList(m_place.path(), QStringLiteral("*")),
            QStringList({"d", "x.12d", "x.12i", "y.12D", "z.123d"}));
        QVERIFY(fileList(m_place.filePath("gone"), QStringLiteral("*")).isEmpty());
    }

    void theDriveIsTheNearestOneAbove() {
        const QStringList drives{"/", "/home/me", "/media/me/STICK"};
        QCOMPARE(driveOf(QStringLiteral("/media/me/STICK/runs"), drives), drives[2]);
        QCOMPARE(driveOf(QStringLiteral("/media/me/STICK2"), drives), drives[0]);
        QCOMPARE(driveOf(QStringLiteral("/home/me"), drives), drives[1]);
        QVERIFY(driveList().contains(QDir::homePath()));
        QCOMPARE(driveList().removeDuplicates(), 0);
    }
};

KVO_FORM_TEST_MAIN(FolderListsTest)
#include "folder_lists_test.moc"
