// The lock of a folder between real programs, and the request to show a window.
#include "platform/qt/qt_folder_lock.h"
#include "tests/forms/support/form_test_main.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QSysInfo>
#include <QTemporaryDir>

#include <memory>

#ifdef Q_OS_UNIX
#include <sys/wait.h>
#include <unistd.h>
#endif

using namespace kvo;
using platform_qt::QtFolderLock;

class QtFolderLockTest : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_folder;
    std::string path() const { return m_folder->path().toStdString(); }
    QString lockFile() const { return m_folder->filePath(QStringLiteral("Kvo.lock")); }

private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void theFirstTakesTheFolderAndTheSecondLearnsWhoHasIt() {
        QtFolderLock first(m_folder->path());
        QtFolderLock second(m_folder->path());
        QVERIFY(!first.take(path()));
        const auto holder = second.take(path());
        QVERIFY(holder.has_value());
        QCOMPARE(holder->process, QCoreApplication::applicationPid());
        QCOMPARE(QString::fromStdString(holder->host), QSysInfo::machineHostName());
        QVERIFY(holder->here);
        QVERIFY(!holder->program.empty());
        QVERIFY(holder->since.year >= 2026);
    }

    void aProgramThatEndsLeavesTheFolderFree() {
        {
            QtFolderLock first(m_folder->path());
            QVERIFY(!first.take(path()));
            QVERIFY(QFile::exists(lockFile()));
        }
        QVERIFY(!QFile::exists(lockFile()));
        QtFolderLock second(m_folder->path());
        QVERIFY(!second.take(path()));
    }

    // A lock is as old as its program: neither its age nor a refused attempt takes it away.
    void anOldLockOfALivingProgramHolds() {
        QtFolderLock first(m_folder->path());
        QVERIFY(!first.take(path()));
        QFile file(lockFile());
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(
            QDateTime::currentDateTime().addDays(-9), QFileDevice::FileModificationTime));
        file.close();
        for (int attempt = 0; attempt < 2; ++attempt) {
            QtFolderLock second(m_folder->path());
            QVERIFY(second.take(path()));
        }
        QVERIFY(QFile::exists(lockFile()));
    }

    void aFolderThatCannotHaveALockIsNotHeld() {
        QtFolderLock lock(m_folder->path());
        QVERIFY(!lock.take(path() + "/not/there"));
    }

    void aFolderOfAnotherScriptIsLocked() {
        const std::string folder = path() + "/\xc3\x9c"
                                            "bung \xe3\x82\xac";
        QVERIFY(QDir().mkpath(QString::fromStdString(folder)));
        QtFolderLock first(m_folder->path());
        QVERIFY(!first.take(folder));
        QVERIFY(QFile::exists(QString::fromStdString(folder) + QStringLiteral("/Kvo.lock")));
    }

#ifdef Q_OS_UNIX
    void theLockOfAProgramThatDiedIsTakenOver() {
        const pid_t child = fork();
        QVERIFY(child >= 0);
        if (child == 0) {
            auto* lock = new QtFolderLock(m_folder->path());
            _exit(lock->take(path()) ? 1 : 0); // as a kill: no destructor runs
        }
        int status = 0;
        QCOMPARE(waitpid(child, &status, 0), child);
        QCOMPARE(status, 0);
        QVERIFY(QFile::exists(lockFile()));
        QtFolderLock next(m_folder->path());
        QVERIFY(!next.take(path()));
    }

    void aRequestIsHeardAndOnlyWhileTheProgramLives() {
        QtFolderLock asking(m_folder->path());
        platform::FolderHolder holder;
        holder.process = QCoreApplication::applicationPid();
        QVERIFY(!asking.askToShow(holder));
        {
            int shows = 0;
            QtFolderLock asked(m_folder->path());
            asked.whenAsked([&shows] { ++shows; });
            QVERIFY(asking.askToShow(holder));
            QTRY_COMPARE(shows, 1);
            holder.here = false; // a number of another machine
            QVERIFY(!asking.askToShow(holder));
            holder.here = true;
        }
        QVERIFY(!asking.askToShow(holder));
    }

    void aSocketOfAKilledProgramIsNotInTheWay() {
        const QString socket = m_folder->filePath(
            QStringLiteral("kvo-%1.show").arg(QCoreApplication::applicationPid()));
        QFile stale(socket);
        QVERIFY(stale.open(QIODevice::WriteOnly));
        stale.close();
        int shows = 0;
        QtFolderLock asked(m_folder->path());
        asked.whenAsked([&shows] { ++shows; });
        platform::FolderHolder holder;
        holder.process = QCoreApplication::applicationPid();
        QVERIFY(asked.askToShow(holder));
        QTRY_COMPARE(shows, 1);
    }

    void aSocketFolderThatIsTooLongIsNone() {
        QtFolderLock lock(QString(200, QLatin1Char('x')));
        lock.whenAsked([] {});
        platform::FolderHolder holder;
        holder.process = QCoreApplication::applicationPid();
        QVERIFY(!lock.askToShow(holder));
    }
#endif
};

KVO_FORM_TEST_MAIN(QtFolderLockTest)
#include "qt_folder_lock_test.moc"
