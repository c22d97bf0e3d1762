// The lock of a program without a window against that of one with windows: each keeps the other
// out, and takes over what a dead one has left.
#include "platform/os/os_folder_lock.h"

#include "platform/qt/qt_folder_lock.h"
#include "tests/forms/support/form_test_main.h"

#include <QCoreApplication>
#include <QFile>
#include <QSysInfo>
#include <QTemporaryDir>

#include <memory>

using namespace kvo;

class OsFolderLockTest : public QObject {
    Q_OBJECT

    static QByteArray content(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static void put(const QString& path, const QByteArray& text) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(text), text.size());
    }

private slots:
    void bothWriteTheSameLock() {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("Kvo.lock"));
        QByteArray windows;
        {
            platform_qt::QtFolderLock lock;
            QVERIFY(!lock.take(folder.path().toStdString()));
            windows = content(path);
        }
        QVERIFY(!QFile::exists(path));
        {
            platform_os::OsFolderLock lock;
            QVERIFY(!lock.take(folder.path().toStdString()));
            QVERIFY(!lock.take(folder.path().toStdString())); // its own already
            QCOMPARE(content(path), windows);
        }
        QVERIFY(!QFile::exists(path));
    }

    void eachKeepsTheOtherOut() {
        const QTemporaryDir folder;
        const std::string place = folder.path().toStdString();
        auto windowless = std::make_unique<platform_os::OsFolderLock>();
        platform_qt::QtFolderLock windows;
        QVERIFY(!windowless->take(place));
        const auto holder = windows.take(place);
        QVERIFY(holder.has_value());
        QCOMPARE(holder->process, std::int64_t{QCoreApplication::applicationPid()});
        QVERIFY(holder->here);
        windowless.reset();
        QVERIFY(!windows.take(place));
        platform_os::OsFolderLock second;
        const auto now = second.take(place);
        QVERIFY(now.has_value());
        QCOMPARE(now->process, holder->process);
        QCOMPARE(now->program, holder->program);
        QCOMPARE(now->host, QSysInfo::machineHostName().toStdString());
        QVERIFY(now->here);
        QVERIFY(now->since.year >= 2024);
        QVERIFY(!second.askToShow(*now));
    }

    void aDeadOneIsTakenOver() {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("Kvo.lock"));
        const QByteArray here =
            QSysInfo::machineUniqueId() + '\n' + QSysInfo::bootUniqueId() + '\n';
        const QByteArray host = QSysInfo::machineHostName().toUtf8() + '\n';
        // A number that no process has, one that another program has, and another start.
        const QByteArray number = QByteArray::number(QCoreApplication::applicationPid()) + '\n';
        for (const QByteArray& text :
            {"4194305\nkvo\n" + host + here, number + "another_program\n" + host + here,
                number + "\n" + host + QSysInfo::machineUniqueId() + "\nan-earlier-start\n"}) {
            put(path, text);
            platform_os::OsFolderLock lock;
            QVERIFY2(!lock.take(folder.path().toStdString()), text.constData());
            QVERIFY(content(path).startsWith(number));
        }
        // Nobody here can know of one on another machine, nor of one that names nobody.
        for (const QByteArray& text :
            {QByteArray("4194305\nkvo\npit-laptop\nanother-machine\nx\n"), QByteArray()}) {
            put(path, text);
            platform_os::OsFolderLock lock;
            const auto holder = lock.take(folder.path().toStdString());
            QVERIFY(holder.has_value());
            QCOMPARE(content(path), text);
            QCOMPARE(holder->here, text.isEmpty());
        }
    }

    void aFolderThatIsNotThereHasNone() {
        platform_os::OsFolderLock lock;
        QVERIFY(!lock.take("/no/such/folder"));
    }
};

KVO_FORM_TEST_MAIN(OsFolderLockTest)
#include "os_folder_lock_test.moc"
