// The request to another program to show its window, over a real socket.
#include "platform/qt/qt_show_requests.h"
#include "tests/forms/support/form_test_main.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <memory>
#include <string>
#include <vector>

using namespace kvo;
using platform_qt::QtShowRequests;

class QtShowRequestsTest : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_folder;

private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void aRequestIsHeardAndOnlyWhileTheProgramLives() {
        QtShowRequests asking(m_folder->path());
        platform::FolderHolder holder;
        holder.process = QCoreApplication::applicationPid();
        QVERIFY(!asking.askToShow(holder, {}));
        {
            int shows = 0;
            QtShowRequests asked(m_folder->path());
            asked.whenAsked([&shows](const std::string& run) { shows += run.empty() ? 1 : 100; });
            QVERIFY(asking.askToShow(holder, {}));
            QTRY_COMPARE(shows, 1);
            holder.here = false; // a number of another machine
            QVERIFY(!asking.askToShow(holder, {}));
            holder.here = true;
        }
        QVERIFY(!asking.askToShow(holder, {}));
    }

    void theRunThatIsAskedForLastIsHeard() {
        std::vector<std::string> runs;
        QtShowRequests asked(m_folder->path());
        asked.whenAsked([&runs](const std::string& run) { runs.push_back(run); });
        platform::FolderHolder holder;
        holder.process = QCoreApplication::applicationPid();
        const std::string run = "/home/J\xc3\xbcrg/" + std::string(4000, 'x') + ".52d";
        QVERIFY(asked.askToShow(holder, "/home/first.52d"));
        QVERIFY(asked.askToShow(holder, run));
        QTRY_COMPARE(runs, std::vector<std::string>{run});
    }

    void aSocketOfAKilledProgramIsNotInTheWay() {
        const QString socket = m_folder->filePath(
            QStringLiteral("kvo-%1.show").arg(QCoreApplication::applicationPid()));
        QFile stale(socket);
        QVERIFY(stale.open(QIODevice::WriteOnly));
        stale.close();
        int shows = 0;
        QtShowRequests asked(m_folder->path());
        asked.whenAsked([&shows](const std::string&) { ++shows; });
        platform::FolderHolder holder;
        holder.process = QCoreApplication::applicationPid();
        QVERIFY(asked.askToShow(holder, {}));
        QTRY_COMPARE(shows, 1);
    }

    void aSocketFolderThatIsTooLongIsNone() {
        QtShowRequests far(QString(200, QLatin1Char('x')));
        far.whenAsked([](const std::string&) {});
        platform::FolderHolder holder;
        holder.process = QCoreApplication::applicationPid();
        QVERIFY(!far.askToShow(holder, {}));
    }
};

KVO_FORM_TEST_MAIN(QtShowRequestsTest)
#include "qt_show_requests_test.moc"
