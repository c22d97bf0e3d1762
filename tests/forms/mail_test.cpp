// QtMail: a draft is handed to a program on the PATH, here one that writes down what it is given.
#include "platform/qt/qt_mail.h"
#include "tests/forms/support/form_test_main.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <optional>

using namespace kvo;
using namespace kvo::platform_qt;
using platform::MailDraft;
using platform::MailOutcome;

class MailTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_folder;
    QByteArray m_path = qgetenv("PATH");

    QString at(const QString& name) const { return m_folder.filePath(name); }

    // A mail program that keeps its arguments, then runs `ending` of the shell.
    void installProgram(const QByteArray& ending) {
        QVERIFY(QDir(m_folder.path()).mkpath(QStringLiteral("bin")));
        QFile script(at(QStringLiteral("bin/xdg-email")));
        QVERIFY(script.open(QIODevice::WriteOnly));
        script.write("#!/bin/sh\nprintf '%s\\0' \"$@\" > '" + at("arguments").toUtf8() + "'\n" +
                     ending + "\n");
        script.close();
        QVERIFY(script.setPermissions(script.permissions() | QFile::ExeOwner));
        qputenv("PATH", at(QStringLiteral("bin")).toUtf8() + ":" + m_path);
    }

    QByteArrayList givenArguments() const {
        QFile file(at(QStringLiteral("arguments")));
        if (!file.open(QIODevice::ReadOnly)) return {};
        QByteArrayList all = file.readAll().split('\0');
        all.removeLast(); // behind the last zero
        return all;
    }

    // The draft that an address stands for, read as a mail program reads it.
    static MailDraft draftOf(const QByteArray& address) {
        const auto decoded = [](const QByteArray& coded) {
            return QByteArray::fromPercentEncoding(coded).toStdString();
        };
        MailDraft draft;
        const qsizetype mark = address.indexOf('?');
        draft.recipient = decoded(address.mid(7, mark - 7));
        const QByteArrayList fields = address.mid(mark + 1).split('&');
        for (const QByteArray& field : fields) {
            const QByteArray value = field.mid(field.indexOf('=') + 1);
            if (field.startsWith("subject=")) draft.subject = decoded(value);
            if (field.startsWith("body=")) draft.body = decoded(value);
            if (field.startsWith("attach=")) draft.attachments.push_back(decoded(value));
        }
        return draft;
    }

    std::optional<platform::MailResult> m_refused; // later

    platform::MailResult composed(const MailDraft& draft, int patienceMs = 5000) {
        return QtMail(patienceMs).compose(draft, [this](const platform::MailResult& why) {
            m_refused = why;
        });
    }

    std::string makeFile(const std::string& name) const {
        const QString path = at(QString::fromStdString(name));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly)) QTest::qFail(qPrintable(path), __FILE__, __LINE__);
        return path.toStdString();
    }

private slots:
    void initTestCase() { QVERIFY(m_folder.isValid()); }
    void cleanup() {
        m_refused.reset();
        qputenv("PATH", m_path);
        QFile::remove(at(QStringLiteral("arguments")));
    }

    void handsOverAnyTextAsItIs_data() {
        // Options, quotes, what a shell would run or fill in, codes, separators, other scripts.
        const QList<QByteArray> nasty{"--help", "-n", "--", "'", "\"", "`touch hit`",
            "$(touch hit)", "; touch hit", "&& touch hit", "| touch hit", "> hit", "$HOME", "~",
            "*", "?", "&attach=/etc/passwd", "%41%", "%s", "\\n\\c", "a,b", "=", "#", "{a,b}",
            "J\xc3\xbcrg\xc5\x82", "\xe3\x82\xac\xe3\x83\xac"};
        QTest::addColumn<QByteArray>("text");
        for (int i = 0; i < 100; ++i) {
            const QByteArray& one = nasty[i % nasty.size()];
            const QByteArray& other = nasty[(i * 7 + i / 25) % nasty.size()];
            QTest::addRow("%d", i) << (i < nasty.size() ? one : one + " " + other + one);
        }
    }
    void handsOverAnyTextAsItIs() {
        QFETCH(QByteArray, text);
        installProgram("exit 0");
        const std::string word = text.toStdString();
        std::string name = word;
        for (char& c : name) c = c == '/' ? '_' : c;
        const MailDraft draft{word + "@pits", word, word + "\r\n\r\n" + word,
            {makeFile(name + ".10d"), makeFile(name + ".10i")}};
        const auto result = composed(draft);
        QVERIFY2(result, result.message.c_str());
        QCOMPARE(givenArguments().size(), 1);
        QVERIFY(givenArguments()[0].startsWith("mailto:"));
        const MailDraft got = draftOf(givenArguments()[0]);
        QCOMPARE(got.recipient, draft.recipient);
        QCOMPARE(got.subject, draft.subject);
        QCOMPARE(got.body, draft.body);
        QCOMPARE(got.attachments, draft.attachments);
        QVERIFY(!QFile::exists(QStringLiteral("hit")));
    }

    void leavesOutWhatIsEmpty() {
        installProgram("exit 0");
        QVERIFY(composed({}));
        QCOMPARE(givenArguments(), QByteArrayList{"mailto:?"});
    }

    // A second line of the head could name further recipients.
    void keepsTheHeadToItsLines() {
        installProgram("exit 0");
        QVERIFY(composed({"a@b\r\nBcc: c@d", "one\ntwo", "three\nfour", {}}));
        const MailDraft got = draftOf(givenArguments().value(0));
        QCOMPARE(got.recipient, std::string("a@b  Bcc: c@d"));
        QCOMPARE(got.subject, std::string("one two"));
        QCOMPARE(got.body, std::string("three\r\nfour"));
    }

    void tellsThatThereIsNoMailProgram() {
        installProgram("exit 3");
        const auto result = composed({"a@b", "", "", {}});
        QCOMPARE(result.outcome, MailOutcome::noMailProgram);
        QVERIFY(!result.message.empty());
        qputenv("PATH", at(QStringLiteral("nothing here")).toUtf8());
        QCOMPARE(composed({"a@b", "", "", {}}).outcome, MailOutcome::noMailProgram);
    }

    void tellsOfAProgramThatFails_data() {
        QTest::addColumn<QByteArray>("ending");
        QTest::newRow("code") << QByteArray("exit 4");
        QTest::newRow("crash") << QByteArray("kill -9 $$");
    }
    void tellsOfAProgramThatFails() {
        QFETCH(QByteArray, ending);
        installProgram(ending);
        const auto result = composed({"a@b", "", "", {}});
        QCOMPARE(result.outcome, MailOutcome::failed);
        QVERIFY(!result.message.empty());
    }

    void tellsOfAProgramThatCannotStart() {
        installProgram("exit 0");
        QFile script(at(QStringLiteral("bin/xdg-email")));
        QVERIFY(script.open(QIODevice::WriteOnly));
        script.write("#!/no/such/shell\n");
        script.close();
        QCOMPARE(composed({"a@b", "", "", {}}).outcome, MailOutcome::failed);
    }

    void handsOverNothingWhereAnAttachmentIsMissing() {
        installProgram("exit 0");
        const std::string missing =
            at(QStringLiteral("J\u00fcrg\u0142 was here.10d")).toStdString();
        const auto result = composed({"a@b", "", "", {missing}});
        QCOMPARE(result.outcome, MailOutcome::failed);
        QVERIFY(result.message.find(missing) != std::string::npos);
        QVERIFY(givenArguments().isEmpty());
    }

    void copiesLieInAFolderOfTheirOwnThatGoesWithTheProgram() {
        QString first;
        {
            QtMail mail;
            first = QString::fromStdString(mail.folderForCopies());
            const QString second = QString::fromStdString(mail.folderForCopies());
            QVERIFY(!first.isEmpty() && QFileInfo(first).isDir() && QFileInfo(second).isDir());
            QVERIFY(first != second);
            const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
            QVERIFY(!(QFileInfo(QFileInfo(first).path()).permissions() & others));
        }
        QVERIFY(!QFileInfo::exists(first));
    }

    void aFolderForCopiesThatCannotBeMadeIsNone() {
        const QByteArray before = qgetenv("TMPDIR");
        QFile file(at(QStringLiteral("no folder")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        qputenv("TMPDIR", file.fileName().toUtf8());
        QtMail mail;
        QCOMPARE(mail.folderForCopies(), std::string());
        qputenv("TMPDIR", m_folder.path().toUtf8());
        QVERIFY(!mail.folderForCopies().empty()); // there is room again
        if (before.isNull())
            qunsetenv("TMPDIR");
        else
            qputenv("TMPDIR", before);
    }

    void doesNotWaitForAMailProgramThatStays() {
        const QString number = at(QStringLiteral("number"));
        const QString goodbye = at(QStringLiteral("goodbye"));
        installProgram("echo $$ > '" + number.toUtf8() + "'; while [ ! -e '" + goodbye.toUtf8() +
                       "' ]; do sleep 0.05; done");
        QVERIFY(composed({"a@b", "", "", {}}, 200));
        QTRY_VERIFY(QFile::exists(number) && QFile(number).size() > 0);
        QFile file(number);
        QVERIFY(file.open(QIODevice::ReadOnly));
        // A program that has ended stays in this list until somebody has taken its end.
        const QString listed =
            QStringLiteral("/proc/") + QString::fromLatin1(file.readAll().trimmed());
        QVERIFY(QFile::exists(listed));
        QVERIFY(QFile(goodbye).open(QIODevice::WriteOnly));
        QTRY_VERIFY(!QFile::exists(listed));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!m_refused); // it has taken the draft
    }

    // A slow desktop: what it cannot do it says long behind the time that is waited for it.
    void aRefusalThatComesLateIsTold_data() {
        QTest::addColumn<QByteArray>("ending");
        QTest::addColumn<int>("outcome");
        QTest::newRow("no program")
            << QByteArray("exit 3") << static_cast<int>(MailOutcome::noMailProgram);
        QTest::newRow("code") << QByteArray("exit 4") << static_cast<int>(MailOutcome::failed);
        QTest::newRow("crash") << QByteArray("kill -9 $$") << static_cast<int>(MailOutcome::failed);
    }
    void aRefusalThatComesLateIsTold() {
        QFETCH(QByteArray, ending);
        QFETCH(int, outcome);
        const QString goodbye = at(QStringLiteral("late goodbye"));
        QFile::remove(goodbye);
        installProgram("while [ ! -e '" + goodbye.toUtf8() + "' ]; do sleep 0.05; done; " + ending);
        QVERIFY(composed({"a@b", "", "", {}}, 200));
        QVERIFY(!m_refused);
        QVERIFY(QFile(goodbye).open(QIODevice::WriteOnly));
        QTRY_VERIFY(m_refused.has_value());
        QCOMPARE(static_cast<int>(m_refused->outcome), outcome);
        QVERIFY(!m_refused->message.empty());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
};

KVO_FORM_TEST_MAIN(MailTest)
#include "mail_test.moc"
