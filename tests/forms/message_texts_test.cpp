// What real boxes say where a folder's name has letters of no code page and the texts of the files
// in it have letters of theirs: each reads as it is written.
#include "core/run_index.h"
#include "library/forms/load_file.h"
#include "link/logger_link.h"
#include "platform/os/os_files.h"
#include "platform/qt/qt_dialogs.h"
#include "platform/qt/qt_serial_port.h"
#include "platform/qt/qt_yield.h"
#include "platform/qt/text.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/test_program.h"
#include "tests/forms/support/user_click.h"

#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>

#include <memory>

using namespace kvo;
using namespace kvo::platform_qt;
using namespace kvo::testing;
using kvo::forms::LoadFile;

class MessageTextsTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_place;
    QString m_folder;
    QtDialogs m_boxes;
    std::unique_ptr<TestProgram> m_program;

    // The next box has this title; gives what it said.
    void answer(const char* title, const char* button, QString& said) {
        answerBox(QString::fromUtf8(title), QString::fromUtf8(button),
            [&said](const QMessageBox& box) { said = box.text(); });
    }

private slots:
    void initTestCase() {
        QVERIFY(m_place.isValid());
        m_folder = m_place.filePath(QStringLiteral("J\u00fcrg\u0142 \u30ac\u30ec\u30fc\u30b8"));
        QVERIFY(QDir().mkpath(m_folder));
    }
    void init() {
        m_program = std::make_unique<TestProgram>();
        m_program->state.AppFolder = m_folder.toStdString();
        platform::services().dialogs = &m_boxes;
    }
    void cleanup() {
        unloadAllForms();
        m_program.reset();
        QCOMPARE(modalComplaints(), QString());
    }

    void aPathAndARunsDescriptionReadAsTheyAreWritten() {
        const core::RunIndexEntry run{"26111514.52d", "Sun 15 Nov 2026 Run: 7 M\xfcller 5\x80"};
        const std::string folder = m_program->state.AppFolder;
        QVERIFY(core::writeRunIndex(folder, {run}, m_program->files).done);
        m_program->files.put(folder + "/Data/" + run.FileName, {1});
        m_program->files.failWrites(folder + "/Data", MemoryFiles::Failure::fullDisk);
        QString question;
        QString failure;
        onModal([&](QWidget*) {
            answer("Warning", "Yes", question);
            answer("Run index", "OK", failure);
            auto& chooser = form<LoadFile>();
            QCOMPARE(userClick(&control<QPushButton>(chooser, "BTN_Ok")), QString());
            chooser.close();
        });
        form<LoadFile>().chooseToDelete(QStringLiteral("Delete File"));
        QCOMPARE(question, QStringLiteral("Are you sure you want to Delete:           \n"
                                          "Sun 15 Nov 2026 Run: 7 M\u00fcller 5\u20ac"));
        QCOMPARE(failure, m_folder + QStringLiteral("/Data/26111514.52d: No space left on device"));
    }

    void thePromptForADescriptionShowsTheOldOne() {
        const core::RunIndexEntry run{"26111514.52d", "Sun 15 Nov 2026 Run: 7 M\xfcller 5\x80"};
        QVERIFY(core::writeRunIndex(m_program->state.AppFolder, {run}, m_program->files).done);
        QString prompt;
        QString preset;
        onModal([&](QWidget*) {
            onModal([&](QWidget* box) {
                prompt = box->findChild<QLabel*>()->text();
                preset = box->findChild<QLineEdit*>(QStringLiteral("InputText"))->text();
                QTest::keyClick(box, Qt::Key_Escape);
            });
            auto& chooser = form<LoadFile>();
            QCOMPARE(userClick(&control<QPushButton>(chooser, "BTN_Edit")), QString());
            chooser.close();
        });
        form<LoadFile>().choose(QStringLiteral("Load"), QStringLiteral("Load Data File"));
        QVERIFY2(prompt.contains(QStringLiteral("Run: 7 M\u00fcller 5\u20ac")), qPrintable(prompt));
        QCOMPARE(preset, QStringLiteral("7 M\u00fcller 5\u20ac"));
    }

    void aPortOfTheProgramsFolderReadsAsItIsWritten() {
        QVERIFY(
            QFile::link(QStringLiteral("/dev/no-such-device"), m_folder + QStringLiteral("/COM1")));
        QtSerialPort port([this] { return m_program->state.AppFolder; });
        QtYield yield(port);
        link::LoggerLink logger(port, yield, m_boxes);
        QString said;
        answer("Communications Error", "OK", said);
        logger.OpenLoggerPort(1);
        QVERIFY2(said.contains(m_folder + QStringLiteral("/COM1 (/dev/no-such-device)")),
            qPrintable(said));
    }

    void aFileThatCannotBeReadOrWrittenIsNamedAsItIsWritten() {
        platform_os::OsFiles files;
        const std::string path = m_folder.toStdString() + "/none/26111514.52d";
        QString said;
        for (const std::string& message :
            {files.readOrReason(path).message, files.write(path, {1}).message}) {
            answer("Kvo", "OK", said);
            m_boxes.messageBox(message, platform::boxStyle::critical, "Kvo");
            QVERIFY2(said.startsWith(m_folder + QStringLiteral("/none/26111514.52d\ncould not be")),
                qPrintable(said));
        }
    }
};

KVO_FORM_TEST_MAIN(MessageTextsTest)
#include "message_texts_test.moc"
