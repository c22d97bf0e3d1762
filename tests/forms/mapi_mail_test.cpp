// MapiMail: what the mail call of Windows is given, and what its answers mean. Here a call of the
// test's own; the system's is looked for and found on Windows alone.
#include "platform/qt/mapi_mail.h"
#include "tests/forms/support/form_test_main.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace kvo;
using namespace kvo::platform_qt;
using platform::MailDraft;
using platform::MailOutcome;

namespace {

// What the call was given last, and its answer.
struct {
    int calls = 0;
    QString subject;
    QString text;
    QStringList recipients;
    QStringList paths;
    std::uint32_t flags = 0;
    std::uint32_t answer = 0;
} given;

std::uint32_t KVO_MAPI_CALL fakeMapiSend(std::uintptr_t session, std::uintptr_t window,
    const MapiMessage* message, std::uint32_t flags, std::uint32_t reserved) {
    if (session != 0 || window != 0 || reserved != 0) return 2;
    ++given.calls;
    given.subject = QString::fromUtf16(message->subject);
    given.text = QString::fromUtf16(message->text);
    given.recipients.clear();
    for (std::uint32_t i = 0; i < message->recipients; ++i)
        given.recipients << QString::fromUtf16(message->firstRecipient[i].name);
    given.paths.clear();
    for (std::uint32_t i = 0; i < message->files; ++i) {
        if (message->firstFile[i].position != UINT32_MAX) return 2;
        given.paths << QString::fromUtf16(message->firstFile[i].path);
    }
    given.flags = flags;
    return given.answer;
}

} // namespace

class MapiMailTest : public QObject {
    Q_OBJECT

private slots:
    void init() { given = {}; }

    void handsOverTheWholeDraft() {
        QTemporaryDir folder;
        MailDraft draft{"a@pits", "J\xc3\xbcrg", "one\r\n\xe3\x82\xac", {}};
        for (const char* name : {"1.10d", "1.10i"}) {
            draft.attachments.push_back(folder.filePath(QLatin1String(name)).toStdString());
            QFile file(QString::fromStdString(draft.attachments.back()));
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
        QVERIFY(MapiMail(fakeMapiSend).compose(draft, {}));
        QCOMPARE(given.subject, QStringLiteral("J\u00fcrg"));
        QCOMPARE(given.text, QStringLiteral("one\r\n\u30ac"));
        QCOMPARE(given.recipients, QStringList{"a@pits"});
        QStringList wanted;
        for (const char* name : {"1.10d", "1.10i"})
            wanted << QDir::toNativeSeparators(folder.filePath(QLatin1String(name)));
        QCOMPARE(given.paths, wanted);
        QCOMPARE(given.flags, 0x40009U);
    }

    void leavesOutWhatIsEmpty() {
        QVERIFY(MapiMail(fakeMapiSend).compose({}, {}));
        QCOMPARE(given.calls, 1);
        QVERIFY(given.recipients.isEmpty() && given.paths.isEmpty());
    }

    void eachAnswerHasItsOutcome_data() {
        QTest::addColumn<unsigned>("answer");
        QTest::addColumn<int>("outcome");
        QTest::newRow("sent") << 0U << static_cast<int>(MailOutcome::handedOver);
        QTest::newRow("left unsent") << 1U << static_cast<int>(MailOutcome::handedOver);
        QTest::newRow("failure") << 2U << static_cast<int>(MailOutcome::failed);
        QTest::newRow("no program") << 26U << static_cast<int>(MailOutcome::noMailProgram);
    }
    void eachAnswerHasItsOutcome() {
        QFETCH(unsigned, answer);
        QFETCH(int, outcome);
        given.answer = answer;
        const auto result = MapiMail(fakeMapiSend).compose({}, {});
        QCOMPARE(static_cast<int>(result.outcome), outcome);
        QCOMPARE(result.message.empty(), static_cast<bool>(result));
    }

    void aFileThatIsNotThereIsNotHandedOver() {
        const auto result = MapiMail(fakeMapiSend).compose({"", "", "", {"/no/such/run"}}, {});
        QCOMPARE(result.outcome, MailOutcome::failed);
        QCOMPARE(given.calls, 0);
    }

    void withoutTheCallThereIsNoMailProgram() {
        QCOMPARE(MapiMail(nullptr).compose({}, {}).outcome, MailOutcome::noMailProgram);
#ifndef _WIN32
        QVERIFY(systemMapiSend() == nullptr);
#endif
    }
};

KVO_FORM_TEST_MAIN(MapiMailTest)
#include "mapi_mail_test.moc"
