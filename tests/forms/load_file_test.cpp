// LoadFile: choosing, deleting and renaming runs, by mouse and by keyboard alone.
#include "core/run_index.h"
#include "core/run_records.h"
#include "library/forms/load_file.h"
#include "library/run_list.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/test_program.h"
#include "tests/forms/support/user_click.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QTreeView>

#include <memory>

using namespace kvo;
using namespace kvo::platform_qt;
using namespace kvo::testing;
using kvo::forms::LoadFile;

class LoadFileTest : public QObject {
    Q_OBJECT

    std::unique_ptr<TestProgram> m_program;

    static LoadFile& chooser() { return form<LoadFile>(); }
    static QTreeView& list() { return control<QTreeView>(chooser(), "Files_List"); }
    static QString text() { return control<QLineEdit>(chooser(), "Discription").text(); }
    static QPushButton* button(const char* name) { return &control<QPushButton>(chooser(), name); }
    void putRun(const std::string& name, const std::string& description) {
        core::ByteWriter writer;
        core::encodeHeaderLine(
            writer, "25 VRN23 Ver 1.3 128k Serial No 7  Date:" + description + "#");
        writer.fillTo(core::runRecordWidth);
        m_program->files.put("/kvo/Data/" + name, writer.take());
    }
    std::vector<core::RunIndexEntry> onDisk() const {
        return core::readRunIndex(core::indexPath("/kvo", m_program->files), m_program->files);
    }
    static void clickRow(int row, Qt::MouseButton mouse = Qt::LeftButton) {
        const QRect place = list().visualRect(list().model()->index(row, 0));
        QCOMPARE(userClick(list().viewport(), place.center(), mouse), QString());
    }

private slots:
    void init() {
        m_program = std::make_unique<TestProgram>();
        m_program->state.AppFolder = "/kvo";
        library::runList() = {};
        QVERIFY(m_program->files.makeFolder("/kvo/Data").done);
        const std::vector<core::RunIndexEntry> rows{
            {"26111514.52d", "Sun 15 Nov 2026 Run: 1 First pass"},
            {"26111515.10d", "Sun 15 Nov 2026 Run: 2 Second"},
            {"26111609.01d", "Mon 16 Nov 2026 Run: 1 Third"}};
        QVERIFY(core::writeRunIndex("/kvo", rows, m_program->files).done);
        for (const auto& row : rows) putRun(row.FileName, row.Description);
    }
    void cleanup() {
        unload<LoadFile>();
        const std::string problems = m_program->dialogs.problems();
        QVERIFY2(problems.empty(), problems.c_str());
        m_program.reset();
        QCOMPARE(modalComplaints(), QString());
    }

    void opensOnTheNewestRunAndReturnLoadsIt() {
        onModal([](QWidget* dialog) {
            QCOMPARE(dialog->windowTitle(), QStringLiteral("Load Data File"));
            QCOMPARE(text(), QStringLiteral("Mon 16 Nov 2026 Run: 1 Third"));
            QTest::keyClick(&list(), Qt::Key_Return);
        });
        const auto chosen =
            chooser().choose(QStringLiteral("Load"), QStringLiteral("Load Data File"));
        QVERIFY(chosen.has_value());
        QCOMPARE(chosen->path, std::string("/kvo/Data/26111609.01d"));
        QCOMPARE(chosen->infoPath, std::string("/kvo/Data/26111609.01i"));
    }

    // The view asks for the text of a row that there is not.
    void copyingFromAListWithoutAChoiceDoesNothing() {
        QVERIFY(core::writeRunIndex("/kvo", {}, m_program->files).done);
        QGuiApplication::clipboard()->setText(QStringLiteral("kept"));
        chooser().Data_File();
        chooser().show();
        QVERIFY(!list().currentIndex().isValid());
        QTest::keyClick(&list(), Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("kept"));
        QCOMPARE(list().model()->data(QModelIndex()), QVariant());
    }

    void tellsOfAListThatCannotBeReadNow() {
        const auto index = m_program->files.read("/kvo/Data/KvoData.Ini");
        m_program->files.failReads("/kvo/Data/KvoData.Ini", MemoryFiles::Failure::diskError);
        const int written = m_program->files.writes();
        m_program->dialogs.expectBoxTitled("Kvo");
        onModal([](QWidget*) {
            QCOMPARE(list().model()->rowCount(), 0);
            QTest::keyClick(&list(), Qt::Key_Escape);
        });
        QVERIFY(!chooser().choose(QStringLiteral("Load"), QStringLiteral("x")));
        QCOMPARE(m_program->files.writes(), written);
        m_program->files.allowReads();
        QVERIFY(m_program->files.read("/kvo/Data/KvoData.Ini") == index);
    }

    void opensAgainOnTheLastChoice() {
        onModal([](QWidget*) {
            clickRow(1);
            QCOMPARE(userClick(button("BTN_Ok")), QString());
        });
        QVERIFY(chooser().choose(QStringLiteral("Load"), QStringLiteral("x")).has_value());
        onModal([](QWidget*) {
            QCOMPARE(text(), QStringLiteral("Sun 15 Nov 2026 Run: 2 Second"));
            QTest::keyClick(&list(), Qt::Key_Escape);
        });
        QVERIFY(!chooser().choose(QStringLiteral("Load"), QStringLiteral("x")));
    }

    void aClickSelectsTheSameRowOfTheHiddenList() {
        onModal([](QWidget*) {
            clickRow(0);
            QCOMPARE(control<QListView>(chooser(), "Path_List").currentIndex().row(), 0);
            QVERIFY(control<QListView>(chooser(), "Path_List").isHidden());
            QTest::keyClick(&list(), Qt::Key_Down);
            QCOMPARE(text(), QStringLiteral("Sun 15 Nov 2026 Run: 2 Second"));
            QCOMPARE(userClick(button("BTN_Cancel")), QString());
        });
        QVERIFY(!chooser().choose(QStringLiteral("Load"), QStringLiteral("x")));
    }

    void aDoubleClickLoads() {
        onModal([](QWidget*) {
            clickRow(0);
            const QRect place = list().visualRect(list().model()->index(0, 0));
            QTest::mouseDClick(list().viewport(), Qt::LeftButton, {}, place.center());
        });
        const auto chosen = chooser().choose(QStringLiteral("Load"), QStringLiteral("x"));
        QVERIFY(chosen.has_value());
        QCOMPARE(chosen->path, std::string("/kvo/Data/26111514.52d"));
    }

    void typedTextFindsARow() {
        onModal([](QWidget*) {
            QTest::keyClicks(&list(), QStringLiteral("run: 2 s"));
            QCOMPARE(text(), QStringLiteral("Sun 15 Nov 2026 Run: 2 Second"));
            QTest::keyClick(&list(), Qt::Key_Return);
        });
        const auto chosen = chooser().choose(QStringLiteral("Load"), QStringLiteral("x"));
        QVERIFY(chosen.has_value());
        QCOMPARE(chosen->path, std::string("/kvo/Data/26111515.10d"));
    }

    void itsCaptionsSayWhatTheRunIsWantedFor() {
        const auto expectCaptions = [](const char* button, const char* label, const char* form) {
            onModal([=](QWidget* dialog) {
                QCOMPARE(control<QPushButton>(chooser(), "BTN_Ok").text(), QLatin1String(button));
                QCOMPARE(control<QLabel>(chooser(), "Label1").text(), QLatin1String(label));
                QCOMPARE(dialog->windowTitle(), QLatin1String(form));
                QTest::keyClick(&list(), Qt::Key_Escape);
            });
        };
        QCOMPARE(control<QLabel>(chooser(), "Label1").text(), QStringLiteral("File To Load"));
        expectCaptions("Delete", "File To Delete", "Delete File");
        chooser().chooseToDelete(QStringLiteral("Delete File"));
        // None of these words is left for the next one who asks.
        expectCaptions("Load", "File To Load", "Load Overlay File");
        QVERIFY(!chooser().choose(QStringLiteral("Load"), QStringLiteral("Load Overlay File")));
    }

    void okWithoutARunIsNoChoice() {
        onModal([](QWidget*) {
            list().setCurrentIndex({});
            QCOMPARE(userClick(button("BTN_Ok")), QString());
        });
        QVERIFY(!chooser().choose(QStringLiteral("Load"), QStringLiteral("x")));
    }

    void aRowThatHoldsAPathLoadsItsRunAndAHostileOneNone() {
        const std::vector<core::RunIndexEntry> rows{
            {"C:\\KVO\\Data\\26111515.10d", "Sun 15 Nov 2026 Run: 2 Second"},
            {"../Kvo.Cfg", "Sun 15 Nov 2026 Run: 3 Third"}};
        QVERIFY(core::writeRunIndex("/kvo", rows, m_program->files).done);
        const auto chooseRow = [](int row) {
            onModal([row](QWidget*) {
                clickRow(row);
                QTest::keyClick(&list(), Qt::Key_Return);
            });
            return chooser().choose(QStringLiteral("Load"), QStringLiteral("x"));
        };
        const auto chosen = chooseRow(0);
        QVERIFY(chosen.has_value());
        QCOMPARE(chosen->path, std::string("/kvo/Data/26111515.10d"));
        const auto hostile = chooseRow(1);
        QVERIFY(hostile.has_value());
        QCOMPARE(hostile->path, std::string());
        QCOMPARE(hostile->infoPath, std::string());
    }

    void aMissingIndexIsAnEmptyList() {
        QVERIFY(m_program->files.remove("/kvo/Data/KvoData.Ini").done);
        onModal([](QWidget*) {
            QCOMPARE(list().model()->rowCount(), 0);
            QTest::keyClick(&list(), Qt::Key_Escape);
        });
        QVERIFY(!chooser().choose(QStringLiteral("Load"), QStringLiteral("x")));
        QVERIFY(m_program->files.exists("/kvo/Data/KvoData.Ini"));
    }

    void severalRunsGoInOneVisit() {
        for (const char* row :
            {"Sun 15 Nov 2026 Run: 1 First pass", "Mon 16 Nov 2026 Run: 1 Third"}) {
            m_program->dialogs.expectBox(
                std::string("Are you sure you want to Delete:           \n") + row, 36, "Warning",
                platform::Reply::yes);
        }
        onModal([](QWidget*) {
            QCOMPARE(button("BTN_Ok")->text(), QStringLiteral("Delete"));
            clickRow(0);
            QCOMPARE(userClick(button("BTN_Ok")), QString());
            QCOMPARE(text(), QString());
            QVERIFY(chooser().isVisible());
            clickRow(1);
            QCOMPARE(userClick(button("BTN_Ok")), QString());
            QTest::keyClick(&list(), Qt::Key_Escape);
        });
        chooser().chooseToDelete(QStringLiteral("Delete File"));
        QCOMPARE(onDisk().size(), std::size_t(1));
        QVERIFY(!m_program->files.exists("/kvo/Data/26111514.52d"));
        QVERIFY(m_program->files.exists("/kvo/Data/26111515.10d"));
    }

    void aNoKeepsTheRun() {
        m_program->dialogs.expectBoxTitled("Warning", platform::Reply::no);
        onModal([](QWidget*) {
            clickRow(0);
            QCOMPARE(userClick(button("BTN_Ok")), QString());
            QTest::keyClick(&list(), Qt::Key_Escape);
        });
        chooser().chooseToDelete(QStringLiteral("Delete File"));
        QCOMPARE(onDisk().size(), std::size_t(3));
    }

    void theRightButtonRenamesTheChosenRun() {
        m_program->dialogs.expectInput(
            "Enter the new file description for.\n\n"
            "Sun 15 Nov 2026 Run: 2 Second\n\nRun Number     Description",
            "Edit File Description", "2 Second", "5 Semi final");
        onModal([](QWidget*) {
            clickRow(1);
            clickRow(1, Qt::RightButton);
            QCOMPARE(text(), QStringLiteral("Sun 15 Nov 2026 Run: 5 Semi final"));
            QTest::keyClick(&list(), Qt::Key_Escape);
        });
        QVERIFY(!chooser().choose(QStringLiteral("Load"), QStringLiteral("x")));
        QCOMPARE(onDisk()[1].Description, std::string("Sun 15 Nov 2026 Run: 5 Semi final"));
    }

    void theKeyboardRenamesTooAndARefusedTextChangesNothing() {
        m_program->dialogs.expectInputTitled("Edit File Description", "0 nothing");
        onModal([](QWidget*) {
            QTest::keyClick(&list(), Qt::Key_F2);
            QTest::keyClick(&list(), Qt::Key_Escape);
        });
        QVERIFY(!chooser().choose(QStringLiteral("Load"), QStringLiteral("x")));
        QCOMPARE(onDisk()[2].Description, std::string("Mon 16 Nov 2026 Run: 1 Third"));
    }

    void aFullDiskIsTold() {
        m_program->files.failWrites("/kvo/Backup", MemoryFiles::Failure::fullDisk);
        m_program->dialogs.expectBoxTitled("Warning", platform::Reply::yes);
        m_program->dialogs.expectBoxTitled("Run index");
        onModal([](QWidget*) {
            clickRow(0);
            QCOMPARE(userClick(button("BTN_Ok")), QString());
            QCOMPARE(list().model()->rowCount(), 3);
            QTest::keyClick(&list(), Qt::Key_Escape);
        });
        chooser().chooseToDelete(QStringLiteral("Delete File"));
        QVERIFY(m_program->files.exists("/kvo/Data/26111514.52d"));
    }

    void aLongIndexOpens() {
        std::vector<core::RunIndexEntry> rows;
        for (int i = 0; i < 10000; ++i) {
            rows.push_back({"26" + std::to_string(100000 + i) + ".01d",
                "Sun 15 Nov 2026 Run: " + std::to_string(i)});
        }
        QVERIFY(core::writeRunIndex("/kvo", rows, m_program->files).done);
        onModal([](QWidget*) {
            QCOMPARE(list().model()->rowCount(), 10000);
            QCOMPARE(text(), QStringLiteral("Sun 15 Nov 2026 Run: 9999"));
            QTest::keyClick(&list(), Qt::Key_Return);
        });
        QVERIFY(chooser().choose(QStringLiteral("Load"), QStringLiteral("x")).has_value());
    }
};

KVO_FORM_TEST_MAIN(LoadFileTest)
#include "load_file_test.moc"
