// Import: its lists of folders and files, a batch in both modes, Cancel, and the way to it.
#include "core/basic/byte_writer.h"
#include "core/paths.h"
#include "core/run_index.h"
#include "core/run_records.h"
#include "library/forms/import_form.h"
#include "library/run_list.h"
#include "platform/os/os_files.h"
#include "platform/qt/drives.h"
#include "platform/qt/text.h"
#include "platform/yield.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/test_program.h"
#include "tests/forms/support/user_click.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>

#include <functional>
#include <memory>

using namespace kvo;
using namespace kvo::platform_qt;
using namespace kvo::testing;
using kvo::library::ImportMode;
using ImportForm = kvo::forms::Import;

namespace {

// A wait in which the user does something.
class PressingYield : public platform::Yield {
public:
    int turns(int limit) override {
        ++waits;
        if (press) press();
        return limit;
    }
    std::function<void()> press;
    int waits = 0;
};

} // namespace

class ImportFormTest : public QObject {
    Q_OBJECT

    std::unique_ptr<TestProgram> m_program;
    std::unique_ptr<QTemporaryDir> m_place;
    platform_os::OsFiles m_files;
    PressingYield m_yield;

    static ImportForm& importForm() { return form<ImportForm>(); }
    template <class W> static W& part(const char* name) { return control<W>(importForm(), name); }
    static void press(const char* button) {
        QCOMPARE(userClick(&part<QPushButton>(button)), QString());
    }
    static QStringList names(const char* list) {
        QStringList all;
        const QAbstractItemModel& model = *part<QListView>(list).model();
        for (int row = 0; row < model.rowCount(); ++row)
            all << model.index(row, 0).data().toString();
        return all;
    }
    // A folder beside the program's, as this system writes it.
    QString disk() const {
        return QDir::toNativeSeparators(m_place->filePath(QStringLiteral("disk")));
    }
    void put(const QString& name, const QByteArray& content) {
        QFile file(disk() + QLatin1Char('/') + name);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(content), content.size());
    }
    static QByteArray runFile(const std::string& description) {
        core::ByteWriter writer;
        core::encodeHeaderLine(
            writer, "25 VRN23 Ver 1.3 128k Serial No 7  Date:" + description + "#");
        writer.fillTo(3 * core::runRecordWidth);
        const platform::Bytes bytes = writer.take();
        return {reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size())};
    }
    static QByteArray textRun() {
        QByteArray text =
            "23 VRN old program\r\n4 2 1 13 8249 53 49 8488 11628 2.11 3327 18.15 6885 "
            "17.21 4380 4.18 \r\n";
        for (int i = 1; i <= 1213; ++i)
            text += QByteArray::number(i) +
                    " 6555 9236 440 7380 29 101 102 103 104 105 106 107 77 \r\n";
        text += "2.7\r\n1.9\r\n1.5\r\n1.2\r\n1\r\n";
        for (int n = 1; n <= 8; ++n) text += "Name\r\n";
        for (int n = 1; n <= 8; ++n) text += "1 2.5 -3 \r\n";
        return text;
    }
    // The day is told, since that of a fresh file is today.
    void expectDate(const std::string& name) {
        m_program->dialogs.expectBoxTitled("File Date for [ " + name + " ]", platform::Reply::no);
        m_program->dialogs.expectInputTitled("Run Date", "15-11-2026");
    }
    std::vector<core::RunIndexEntry> onDisk() const {
        return core::readRunIndex(core::indexPath(m_program->state.AppFolder, m_files), m_files);
    }
    // Opens the form on the disk, and does there what `script` says.
    std::vector<std::string> m_written; // paths, by the last opening

    void open(ImportMode mode, std::function<void()> script) {
        onModal([=, this](QWidget* modal) {
            QCOMPARE(modal->objectName(), QStringLiteral("Import"));
            importForm().goTo(typedPath(disk()));
            script();
            if (isLoaded<ImportForm>()) press("Butten_Cancel");
        });
        m_written = importForm().importRuns(mode);
        QVERIFY(!isLoaded<ImportForm>());
    }

private slots:
    void init() {
        m_program = std::make_unique<TestProgram>();
        m_place = std::make_unique<QTemporaryDir>();
        QVERIFY(m_place->isValid());
        QVERIFY(QDir(m_place->path()).mkpath(QStringLiteral("disk/Summer & more")));
        m_program->state.AppFolder =
            typedPath(QDir::toNativeSeparators(m_place->filePath(QStringLiteral("kvo"))));
        QVERIFY(QDir(m_place->path()).mkpath(QStringLiteral("kvo/Data")));
        platform::services().files = &m_files;
        platform::services().yield = &m_yield;
        m_yield.press = {};
        library::runList() = {};
    }
    void cleanup() {
        unload<ImportForm>();
        const std::string problems = m_program->dialogs.problems();
        QVERIFY2(problems.empty(), problems.c_str());
        m_program.reset();
        library::runList() = {};
        QCOMPARE(modalComplaints(), QString());
    }

    void runFilesOfThisProgramAreShownByTheirPattern() {
        for (const char* name :
            {"26111514.52d", "26111514.52i", "26111514.53D", "run.012", "a.txt"})
            put(QLatin1String(name), "x");
        open(ImportMode::windows, [] {
            QCOMPARE(importForm().windowTitle(), QStringLiteral("Import Windows Data"));
            QCOMPARE(names("Files_Dos"), QStringList({"26111514.52d", "26111514.53D"}));
        });
        QVERIFY(core::writeRunIndex(
            m_program->state.AppFolder, {{"26111514.52d", "Sun 15 Nov 2026 Run: 1 known"}}, m_files)
                    .done);
        open(ImportMode::dos, [] {
            QCOMPARE(names("Files_Dos").size(), 5);
            QCOMPARE(names("Data_Files_List"), QStringList({"Sun 15 Nov 2026 Run: 1 known"}));
        });
    }

    void aBatchOfRunFiles() {
        put(QStringLiteral("a.12d"), runFile("Wed 01 Jan 2025 Run: 4 Test"));
        put(QStringLiteral("a.12i"), "notes");
        put(QStringLiteral("b.13d"), runFile("Thu 02 Jan 2025 Run: 1"));
        expectDate("a.12d");
        expectDate("b.13d");
        open(ImportMode::windows, [] {
            QVERIFY(!part<QPushButton>("Butten_Import").isEnabled());
            press("BTN_SelectAll");
            QCOMPARE(part<QLineEdit>("Import_Name").text(), QStringLiteral("2 files"));
            press("Butten_Import");
            QCOMPARE(names("Data_Files_List"),
                QStringList({"Thu 02 Jan 2025 Run: 1", "Wed 01 Jan 2025 Run: 4 Test"}));
            QCOMPARE(part<QLabel>("Import_Ind").text(), QStringLiteral("2 of 2 imported"));
            QVERIFY(part<QListWidget>("Files_Dos").isEnabled());
        });
        const std::string data = core::dataFolder(m_program->state.AppFolder, m_files);
        QCOMPARE(m_written, (std::vector<std::string>{core::joined(data, "26111500.12d", m_files),
                                core::joined(data, "26111500.13d", m_files)}));
        QCOMPARE(onDisk().size(), std::size_t(2));
        QVERIFY(m_files.exists(m_program->state.AppFolder + "/Data/26111500.12i"));
        QCOMPARE(library::runList().rowCount(), 2);
    }

    void onlyWhatIsSelectedIsImported() {
        put(QStringLiteral("a.12d"), runFile("Wed 01 Jan 2025 Run: 4 Test"));
        put(QStringLiteral("b.13d"), runFile("Thu 02 Jan 2025 Run: 1"));
        expectDate("b.13d");
        open(ImportMode::windows, [] {
            auto& files = part<QListWidget>("Files_Dos");
            QCOMPARE(userClick(files.viewport(), files.visualItemRect(files.item(1)).center()),
                QString());
            QCOMPARE(part<QLineEdit>("Import_Name").text(), QStringLiteral("b.13d"));
            press("Butten_Import");
        });
        QCOMPARE(onDisk().size(), std::size_t(1));
    }

    void aTextRunShowsHowFarItIs() {
        put(QStringLiteral("run.012"), textRun());
        expectDate("run.012");
        m_program->dialogs.expectInputTitled("VRN Dos Import", "7 Final");
        QStringList percents;
        open(ImportMode::dos, [&] {
            QCOMPARE(importForm().windowTitle(), QStringLiteral("Import VRN Dos Data"));
            m_yield.press = [&] {
                percents << part<QLabel>("Import_Percent").text();
                QVERIFY(!part<QPushButton>("Butten_Import").isEnabled());
                QVERIFY(part<QPushButton>("Butten_Cancel").isEnabled());
                QCOMPARE(part<QLineEdit>("Import_Name").text(), QStringLiteral("run.012"));
                if (percents.size() > 1) QCOMPARE(part<QProgressBar>("Import_Bar").maximum(), 1213);
            };
            press("BTN_SelectAll");
            press("Butten_Import");
            QCOMPARE(part<QLabel>("Import_Percent").text(), QString());
        });
        QVERIFY(percents.contains(QStringLiteral("50%")));
        QCOMPARE(percents.back(), QStringLiteral("100%"));
        QCOMPARE(onDisk().at(0).Description, std::string("Sun 15 Nov 2026 Run: 7 Final"));
    }

    void cancelInsideAFileEndsTheBatchAndLeavesTheForm() {
        put(QStringLiteral("run.012"), textRun());
        put(QStringLiteral("run.013"), textRun());
        expectDate("run.012");
        open(ImportMode::dos, [&] {
            m_yield.press = [&] {
                if (part<QLabel>("Import_Percent").text() == QLatin1String("50%"))
                    press("Butten_Cancel");
            };
            press("BTN_SelectAll");
            press("Butten_Import");
            QVERIFY(isLoaded<ImportForm>());
            QCOMPARE(part<QLabel>("Import_Ind").text(),
                QStringLiteral("0 of 2 imported, then cancelled"));
            QCOMPARE(part<QLabel>("Import_Percent").text(), QString());
            QVERIFY(part<QPushButton>("Butten_Import").isEnabled());
        });
        QVERIFY(onDisk().empty());
        QVERIFY(!m_files.exists(m_program->state.AppFolder + "/Data/26111500.12d"));
    }

    void cancelBetweenTwoFilesLeavesNoProgressAndTheNextBatchGoesItsWay() {
        put(QStringLiteral("run.012"), textRun());
        put(QStringLiteral("run.013"), textRun());
        expectDate("run.012");
        m_program->dialogs.expectInputTitled("VRN Dos Import", "1");
        open(ImportMode::dos, [&] {
            m_yield.press = [&] {
                if (part<QLabel>("Import_Ind").text() == QLatin1String("File 2 of 2"))
                    press("Butten_Cancel");
            };
            press("BTN_SelectAll");
            press("Butten_Import");
            QCOMPARE(part<QLabel>("Import_Ind").text(),
                QStringLiteral("1 of 2 imported, then cancelled"));
            QCOMPARE(part<QLabel>("Import_Percent").text(), QString());
            m_yield.press = {};
            QCOMPARE(userClick(part<QListWidget>("Files_Dos").viewport(),
                         part<QListWidget>("Files_Dos")
                             .visualItemRect(part<QListWidget>("Files_Dos").item(1))
                             .center()),
                QString());
            expectDate("run.013");
            m_program->dialogs.expectInputTitled("VRN Dos Import", "2");
            press("Butten_Import");
            QCOMPARE(part<QLabel>("Import_Ind").text(), QStringLiteral("1 of 1 imported"));
        });
        QCOMPARE(onDisk().size(), std::size_t(2));
    }

    // The cross of the window too ends the batch first, and the form stays to say what is in.
    void theCrossInsideABatchEndsItAlone() {
        put(QStringLiteral("run.012"), textRun());
        open(ImportMode::dos, [&] {
            m_yield.press = [] { importForm().close(); };
            press("BTN_SelectAll");
            press("Butten_Import");
            QVERIFY(isLoaded<ImportForm>() && importForm().isVisible());
            QCOMPARE(part<QLabel>("Import_Ind").text(),
                QStringLiteral("0 of 1 imported, then cancelled"));
            m_yield.press = {};
            importForm().close();
        });
    }

    void runsThatTheIndexRefusedAreTriedAgainAtTheClose() {
        put(QStringLiteral("a.12d"), runFile("Wed 01 Jan 2025 Run: 4 Test"));
        expectDate("a.12d");
        m_program->dialogs.expectBoxTitled("Run index", platform::Reply::cancel);
        m_program->dialogs.expectBoxTitled("Run index").contains = "could not be read";
        const QString index = shownPath(core::indexPath(m_program->state.AppFolder, m_files));
        open(ImportMode::windows, [&] {
            QFile::remove(index);
            QVERIFY(QDir().mkpath(index)); // a folder where the file should be
            press("BTN_SelectAll");
            press("Butten_Import");
            QVERIFY(onDisk().empty());
            QVERIFY(QDir().rmdir(index));
        });
        QCOMPARE(onDisk().size(), std::size_t(1));
    }

    void theTabKeyWalksInTheOrderOfTheWork() {
        put(QStringLiteral("run.012"), "x");
        open(ImportMode::dos, [] {
            part<QListWidget>("Files_Dos").selectAll();
            part<QComboBox>("Drive_Dos").setFocus();
            QStringList walk;
            for (int i = 0; i < 9; ++i) {
                walk << QApplication::focusWidget()->objectName();
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            }
            QCOMPARE(walk, QStringList({"Drive_Dos", "Dir_Dos", "Files_Dos", "BTN_SelectAll",
                               "Data_Files_List", "Import_Name", "Butten_Import", "Butten_Cancel",
                               "Drive_Dos"}));
        });
    }

    void lettersLeadToTheLists() {
        put(QStringLiteral("run.012"), "x");
        open(ImportMode::dos, [] {
            const struct {
                Qt::Key letter;
                const char* reached;
            } ways[] = {{Qt::Key_D, "Drive_Dos"}, {Qt::Key_F, "Files_Dos"},
                {Qt::Key_K, "Data_Files_List"}, {Qt::Key_N, "Import_Name"}};
            for (const auto& [letter, reached] : ways) {
                QTest::keyClick(&importForm(), letter, Qt::AltModifier);
                QCOMPARE(QApplication::focusWidget()->objectName(), QLatin1String(reached));
            }
            QTest::keyClick(&importForm(), Qt::Key_A, Qt::AltModifier);
            QTRY_COMPARE(part<QListWidget>("Files_Dos").selectedItems().size(), 1);
        });
    }

    // Escape in the middle is Cancel, and a second batch cannot begin inside the first.
    void escapeInsideABatchEndsItAlone() {
        put(QStringLiteral("run.012"), textRun());
        open(ImportMode::dos, [&] {
            m_yield.press = [&] {
                importForm().Butten_Import_Click();
                QTest::keyClick(&importForm(), Qt::Key_Escape);
            };
            press("BTN_SelectAll");
            press("Butten_Import");
            QVERIFY(isLoaded<ImportForm>());
            m_yield.press = {};
            QTest::keyClick(&importForm(), Qt::Key_Escape);
        });
        QCOMPARE(m_yield.waits > 0, true);
    }

    void foldersAreWalkedByMouseAndKeys() {
        put(QStringLiteral("Summer & more/run.012"), "x");
        open(ImportMode::dos, [&] {
            auto& folders = part<QListWidget>("Dir_Dos");
            QCOMPARE(names("Dir_Dos"), QStringList({"..", "Summer & more"}));
            QCOMPARE(part<QLabel>("LAB_CurrentDir").text(), disk());
            folders.setFocus();
            QTest::keyClick(&folders, Qt::Key_Down);
            QTest::keyClick(&folders, Qt::Key_Return);
            QVERIFY(isLoaded<ImportForm>());
            QCOMPARE(part<QLabel>("LAB_CurrentDir").text(),
                QDir::toNativeSeparators(disk() + QLatin1String("/Summer & more")));
            QCOMPARE(names("Files_Dos"), QStringList({"run.012"}));
            const QRect up = folders.visualItemRect(folders.item(0));
            QTest::mouseClick(folders.viewport(), Qt::LeftButton, {}, up.center());
            QTest::mouseDClick(folders.viewport(), Qt::LeftButton, {}, up.center());
            QCOMPARE(part<QLabel>("LAB_CurrentDir").text(), disk());
            QVERIFY(names("Files_Dos").isEmpty());
            // The folder follows the drive, and the drive the folder.
            auto& drives = part<QComboBox>("Drive_Dos");
            drives.setFocus();
            for (int i = 0; i < drives.count(); ++i) {
                QTest::keyClick(&drives, i == 0 ? Qt::Key_End : Qt::Key_Up);
                const auto row = static_cast<std::size_t>(drives.currentIndex());
                QCOMPARE(part<QLabel>("LAB_CurrentDir").text(),
                    shownPath(platform_qt::drives()[row].root));
            }
            // The way home is from another drive, where there is one.
            if (drives.currentText() == QLatin1String("Home"))
                QTest::keyClick(&drives, Qt::Key_End);
            const int drive = drives.currentIndex();
            importForm().goTo(typedPath(QDir::toNativeSeparators(QDir::homePath())));
            QCOMPARE(drives.currentText(), QStringLiteral("Home"));
            QVERIFY(drives.count() < 2 || drives.currentIndex() != drive);
            importForm().goTo(typedPath(disk()));
        });
        // The next visit begins where the last one ended.
        onModal([&](QWidget*) {
            QCOMPARE(part<QLabel>("LAB_CurrentDir").text(), disk());
            press("Butten_Cancel");
        });
        importForm().importRuns(ImportMode::windows);
    }
};

KVO_FORM_TEST_MAIN(ImportFormTest)
#include "import_form_test.moc"
