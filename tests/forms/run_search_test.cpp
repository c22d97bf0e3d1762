// LoadFile: finding a run by filter, order and preview, by mouse and by keyboard alone.
#include "core/forms/doors.h"
#include "core/run_info.h"
#include "core/run_records.h"
#include "library/forms/load_file.h"
#include "library/run_list.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/test_program.h"
#include "tests/forms/support/user_click.h"

#include <QComboBox>
#include <QHeaderView>
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

class RunSearchTest : public QObject {
    Q_OBJECT

    std::unique_ptr<TestProgram> m_program;
    QStringList m_previewed; // base names

    static LoadFile& chooser() { return form<LoadFile>(); }
    static QTreeView& list() { return control<QTreeView>(chooser(), "Files_List"); }
    static QLineEdit& filter() { return control<QLineEdit>(chooser(), "Text_Filter"); }
    static QComboBox& order() { return control<QComboBox>(chooser(), "Combo_Order"); }
    static QString text() { return control<QLineEdit>(chooser(), "Discription").text(); }
    static QString label(const char* name) { return control<QLabel>(chooser(), name).text(); }
    static QString cell(int place, int column) {
        return list().model()->index(place, column).data().toString();
    }
    // What stands behind "Run: " in each row.
    static QStringList shownRuns() {
        QStringList all;
        for (int place = 0; place < list().model()->rowCount(); ++place)
            all << cell(place, 0).section(QStringLiteral("Run: "), 1);
        return all;
    }
    static bool summarySays(const char* words) {
        return QTest::qWaitFor([=] { return label("Label_Found") == QLatin1String(words); }, 20000);
    }
    static bool pressHeading(int column) {
        const QHeaderView* header = list().header();
        const QPoint place(header->sectionViewportPosition(column) + 10, header->height() / 2);
        return userClick(header->viewport(), place).isEmpty();
    }
    static void type(const char* words) { QTest::keyClicks(&filter(), QLatin1String(words)); }
    static std::optional<core::ChosenRun> choose() {
        return chooser().choose(QStringLiteral("Load"), QStringLiteral("x"));
    }
    static void leave() { QTest::keyClick(&list(), Qt::Key_Escape); }

    void putRun(const core::RunIndexEntry& row, const std::string& elapsed,
        const std::string& speed, const std::string& notes) {
        core::ByteWriter writer;
        core::encodeHeaderLine(writer, "25 VRN25  Date:" + row.Description + "#");
        writer.fillTo(core::runRecordWidth);
        const std::string run = "/kvo/Data/" + row.FileName;
        m_program->files.put(run, writer.take());
        core::RunInfo info;
        info.Info_Text = notes;
        info.Text_ET = elapsed;
        info.Text_Mph = speed;
        QVERIFY(core::SaveRunInfo("/kvo", core::infoFilePath(run), run, info, m_program->files));
    }

private slots:
    void init() {
        m_program = std::make_unique<TestProgram>();
        library::runList() = {};
        const std::vector<core::RunIndexEntry> rows{
            {"26111609.01d", "Mon 16 Nov 2026 Run: 1 Third"},
            {"25111515.10d", "Sat 15 Nov 2025 Run: 4 Old"},
            {"26111514.52d", "Sun 15 Nov 2026 Run: 1 First pass"},
            {"26111515.10d", "Sun 15 Nov 2026 Run: 2 Second"}};
        QVERIFY(core::writeRunIndex("/kvo", rows, m_program->files).done);
        putRun(rows[0], "7.90", "170", "cold M\xfcll\nmore");
        putRun(rows[1], "8.10", "", "");
        putRun(rows[2], "", "", "spun");
        putRun(rows[3], "7.10", "188.5", "cold track");
        m_previewed.clear();
        forms::doors().runPreview = [this](const std::string& path, int widthPx, int heightPx) {
            m_previewed << QString::fromStdString(path).section(QLatin1Char('/'), -1);
            core::RunPicture picture{widthPx, heightPx, {}, {}};
            picture.pixels.assign(
                static_cast<std::size_t>(widthPx) * static_cast<std::size_t>(heightPx), 0xFF00FF00);
            return picture;
        };
    }
    void cleanup() {
        unload<LoadFile>();
        const std::string problems = m_program->dialogs.problems();
        QVERIFY2(problems.empty(), problems.c_str());
        m_program.reset();
        QCOMPARE(modalComplaints(), QString());
    }

    void aFilterShowsTheRunsInWhichEveryWordStands() {
        onModal([](QWidget*) {
            QTest::keyClick(&list(), Qt::Key_F, Qt::ControlModifier);
            QVERIFY(filter().hasFocus());
            type("2026 SECOND");
            QCOMPARE(shownRuns(), QStringList{QStringLiteral("2 Second")});
            QCOMPARE(text(), QStringLiteral("Sun 15 Nov 2026 Run: 2 Second"));
            QVERIFY(summarySays("1 of 4 runs"));
            QTest::keyClick(&filter(), Qt::Key_Return);
        });
        const auto chosen = choose();
        QVERIFY(chosen.has_value());
        QCOMPARE(chosen->path, std::string("/kvo/Data/26111515.10d"));
        QCOMPARE(library::runList().chosenRow(), 3);
    }

    void aFilterFindsWordsOfNotesOnceTheyAreRead() {
        onModal([](QWidget*) {
            filter().setFocus();
            type("cold");
            QVERIFY(summarySays("2 of 4 runs"));
            QCOMPARE(
                shownRuns(), QStringList({QStringLiteral("1 Third"), QStringLiteral("2 Second")}));
            QTest::keyClicks(&filter(), QStringLiteral(" m\u00dcll"));
            QCOMPARE(shownRuns(), QStringList{QStringLiteral("1 Third")});
            leave();
        });
        QVERIFY(!choose());
    }

    // The user's run is the choice again when the filter lets it.
    void theChoiceComesBackWithItsRun() {
        onModal([](QWidget*) {
            QCOMPARE(text(), QStringLiteral("Mon 16 Nov 2026 Run: 1 Third"));
            filter().setFocus();
            type("first");
            QCOMPARE(text(), QStringLiteral("Sun 15 Nov 2026 Run: 1 First pass"));
            type("zz");
            QCOMPARE(text(), QString());
            QVERIFY(!list().currentIndex().isValid());
            QTest::keyClick(&filter(), Qt::Key_Escape);
            QVERIFY(chooser().isVisible());
            QCOMPARE(filter().text(), QString());
            QCOMPARE(text(), QStringLiteral("Mon 16 Nov 2026 Run: 1 Third"));
            type("first");
            QTest::keyClick(&list(), Qt::Key_Escape);
        });
        QVERIFY(!choose());
        // Who steps through the list goes on from the user's run.
        QCOMPARE(library::runList().chosenRow(), 0);
        onModal([](QWidget*) {
            QCOMPARE(filter().text(), QString());
            QCOMPARE(list().model()->rowCount(), 4);
            leave();
        });
        QVERIFY(!choose());
    }

    void returnWithNothingFoundStays() {
        onModal([this](QWidget*) {
            filter().setFocus();
            type("zz");
            QTest::keyClick(&filter(), Qt::Key_Return);
            QVERIFY(chooser().isVisible());
            QCOMPARE(m_program->dialogs.beeps(), 1);
            QTest::keyClick(&filter(), Qt::Key_Escape);
            QTest::keyClick(&filter(), Qt::Key_Escape);
        });
        QVERIFY(!choose());
    }

    void theListIsWalkedFromTheFilter() {
        onModal([](QWidget*) {
            filter().setFocus();
            type("2026");
            QTest::keyClick(&filter(), Qt::Key_Down);
            QCOMPARE(text(), QStringLiteral("Sun 15 Nov 2026 Run: 1 First pass"));
            QVERIFY(filter().hasFocus());
            QTest::keyClick(&filter(), Qt::Key_PageDown);
            QCOMPARE(text(), QStringLiteral("Sun 15 Nov 2026 Run: 2 Second"));
            QTest::keyClick(&filter(), Qt::Key_Up);
            QCOMPARE(control<QListView>(chooser(), "Path_List").currentIndex().row(), 2);
            QTest::keyClick(&filter(), Qt::Key_Return);
        });
        const auto chosen = choose();
        QVERIFY(chosen.has_value());
        QCOMPARE(chosen->fileName, std::string("26111514.52d"));
    }

    void typingInTheListFindsAmongWhatIsShown() {
        onModal([](QWidget*) {
            filter().setFocus();
            type("2026");
            QTest::keyClicks(&list(), QStringLiteral("4 old"));
            QCOMPARE(text(), QStringLiteral("Mon 16 Nov 2026 Run: 1 Third"));
            leave();
        });
        QVERIFY(!choose());
    }

    void aHeadingSorts() {
        onModal([](QWidget*) {
            QVERIFY(!list().header()->isSortIndicatorShown());
            QVERIFY(pressHeading(0));
            QCOMPARE(
                shownRuns(), QStringList({QStringLiteral("1 Third"), QStringLiteral("2 Second"),
                                 QStringLiteral("1 First pass"), QStringLiteral("4 Old")}));
            QVERIFY(list().header()->isSortIndicatorShown());
            QCOMPARE(list().header()->sortIndicatorSection(), 0);
            QCOMPARE(list().header()->sortIndicatorOrder(), Qt::DescendingOrder);
            QCOMPARE(order().currentText(), QStringLiteral("Newest first"));
            QVERIFY(pressHeading(0));
            QCOMPARE(shownRuns().front(), QStringLiteral("4 Old"));
            QCOMPARE(text(), QStringLiteral("Mon 16 Nov 2026 Run: 1 Third"));
            QCOMPARE(list().currentIndex().row(), 3);
            QVERIFY(pressHeading(1));
            QVERIFY(summarySays("4 runs"));
            QCOMPARE(
                shownRuns(), QStringList({QStringLiteral("2 Second"), QStringLiteral("1 Third"),
                                 QStringLiteral("4 Old"), QStringLiteral("1 First pass")}));
            QCOMPARE(list().header()->sortIndicatorSection(), 1);
            QCOMPARE(list().header()->sortIndicatorOrder(), Qt::AscendingOrder);
            QVERIFY(pressHeading(2));
            QCOMPARE(shownRuns().front(), QStringLiteral("2 Second"));
            leave();
        });
        QVERIFY(!choose());
    }

    // The index, the choice and what the graph steps through stay as they are.
    void anOrderIsTheViewsAlone() {
        const auto before = library::runList().rows();
        onModal([](QWidget*) {
            order().setFocus();
            QTest::keyClick(&order(), Qt::Key_End);
            QCOMPARE(order().currentText(), QStringLiteral("Lowest speed first"));
            QVERIFY(summarySays("4 runs"));
            QCOMPARE(shownRuns().front(), QStringLiteral("1 Third"));
            QTest::keyClick(&order(), Qt::Key_Home);
            QTest::keyClick(&order(), Qt::Key_Down);
            QTest::keyClick(&order(), Qt::Key_Down);
            QCOMPARE(shownRuns().front(), QStringLiteral("4 Old"));
            list().setFocus();
            QTest::keyClick(&list(), Qt::Key_Home);
            QTest::keyClick(&list(), Qt::Key_Return);
        });
        QVERIFY(choose().has_value());
        QCOMPARE(library::runList().chosenRow(), 1);
        QCOMPARE(library::runList().rows().front().FileName, std::string("26111609.01d"));
        onModal([](QWidget*) {
            QCOMPARE(order().currentIndex(), 0);
            QCOMPARE(shownRuns().front(), QStringLiteral("1 Third"));
            QVERIFY(!list().header()->isSortIndicatorShown());
            leave();
        });
        QVERIFY(!choose());
    }

    void columnsShowWhatIsKnownOfARow() {
        onModal([](QWidget*) {
            QVERIFY(QTest::qWaitFor([] { return cell(0, 1) == QLatin1String("7.90"); }, 20000));
            QVERIFY(QTest::qWaitFor([] { return cell(3, 2) == QLatin1String("188.5"); }, 20000));
            QCOMPARE(cell(0, 2), QStringLiteral("170"));
            QCOMPARE(cell(2, 1), QString());
            QCOMPARE(list().model()->headerData(1, Qt::Horizontal).toString(),
                QStringLiteral("Elapsed time"));
            leave();
        });
        const int written = m_program->files.writes();
        QVERIFY(!choose());
        QCOMPARE(m_program->files.writes(), written);
    }

    // 100,000 runs open at once since only rows in view are read.
    void rowsOutOfViewAreNotRead() {
        std::vector<core::RunIndexEntry> rows;
        for (int i = 0; i < 5000; ++i) {
            rows.push_back({"26" + std::to_string(100000 + i) + ".01d",
                "Sun 15 Nov 2026 Run: " + std::to_string(i)});
        }
        QVERIFY(core::writeRunIndex("/kvo", rows, m_program->files).done);
        onModal([this](QWidget*) {
            const int before = m_program->files.namedReads();
            QVERIFY(QTest::qWaitFor([&] { return m_program->files.namedReads() > before; }, 20000));
            QTest::qWait(100);
            QVERIFY(m_program->files.namedReads() < 400);
            filter().setFocus();
            type("run: 4999");
            QVERIFY(label("Label_Found").startsWith(QLatin1String("1 of 5000 runs; notes and")));
            QVERIFY(summarySays("1 of 5000 runs"));
            leave();
        });
        QVERIFY(!choose());
    }

    void thePreviewShowsTheChosenRun() {
        onModal([this](QWidget*) {
            QVERIFY(QTest::qWaitFor([this] { return !m_previewed.isEmpty(); }, 20000));
            QCOMPARE(m_previewed, QStringList{QStringLiteral("26111609.01d")});
            const QPixmap picture = control<QLabel>(chooser(), "Preview_Picture").pixmap();
            QVERIFY(!picture.isNull());
            const QImage seen = picture.toImage();
            for (int y = 0; y < seen.height(); y += 7)
                for (int x = 0; x < seen.width(); x += 7)
                    QCOMPARE(seen.pixelColor(x, y), QColor(Qt::green));
            QCOMPARE(label("Preview_Text"),
                QStringLiteral("Elapsed time: 7.90 at 170\nNotes: cold M\u00fcll"));
            leave();
        });
        QVERIFY(!choose());
    }

    // Who runs down the list waits for no picture.
    void thePreviewWaitsUntilTheChoiceRests() {
        onModal([this](QWidget*) {
            for (int i = 0; i < 3; ++i) QTest::keyClick(&list(), Qt::Key_Down);
            QVERIFY(m_previewed.isEmpty());
            QVERIFY(QTest::qWaitFor([this] { return !m_previewed.isEmpty(); }, 20000));
            QCOMPARE(m_previewed, QStringList{QStringLiteral("26111515.10d")});
            leave();
        });
        QVERIFY(!choose());
    }

    void aRunWithoutAPictureSaysWhy() {
        forms::doors().runPreview = [](const std::string&, int, int) {
            return core::RunPicture{0, 0, {}, "The file of this run is damaged, or it is no run."};
        };
        onModal([](QWidget*) {
            QVERIFY(QTest::qWaitFor([] { return !label("Preview_Picture").isEmpty(); }, 20000));
            QCOMPARE(label("Preview_Picture"),
                QStringLiteral("The file of this run is damaged, or it is no run."));
            // A line without a run empties both at once.
            filter().setFocus();
            type("zz");
            QCOMPARE(label("Preview_Picture"), QString());
            QCOMPARE(label("Preview_Text"), QString());
            leave();
        });
        QVERIFY(!choose());
    }

    void deletingGoesOnUnderAFilter() {
        m_program->dialogs.expectBoxTitled("Warning", platform::Reply::yes);
        onModal([](QWidget*) {
            filter().setFocus();
            type("2026");
            QTest::keyClick(&filter(), Qt::Key_Down);
            QTest::keyClick(&filter(), Qt::Key_Return);
            QCOMPARE(text(), QString());
            QCOMPARE(
                shownRuns(), QStringList({QStringLiteral("1 Third"), QStringLiteral("2 Second")}));
            QVERIFY(summarySays("2 of 3 runs"));
            QCOMPARE(text(), QString()); // nothing is chosen for the next Return
            leave();
        });
        chooser().chooseToDelete(QStringLiteral("Delete File"));
        QVERIFY(!m_program->files.exists("/kvo/Data/26111514.52d"));
        QVERIFY(m_program->files.exists("/kvo/Data/26111515.10d"));
    }

    void aDescriptionChangesUnderAFilter() {
        m_program->dialogs.expectInputTitled("Edit File Description", "5 Semi final");
        onModal([](QWidget*) {
            filter().setFocus();
            type("second");
            QTest::keyClick(&list(), Qt::Key_F2);
            QCOMPARE(text(), QStringLiteral("Sun 15 Nov 2026 Run: 5 Semi final"));
            QCOMPARE(list().model()->rowCount(), 0);
            leave();
        });
        QVERIFY(!choose());
        QCOMPARE(library::runList().rows()[3].Description,
            std::string("Sun 15 Nov 2026 Run: 5 Semi final"));
    }

    void everyControlIsReachedByTheKeyboard() {
        onModal([](QWidget*) {
            for (const auto& [key, name] : std::initializer_list<std::pair<Qt::Key, const char*>>{
                     {Qt::Key_F, "Text_Filter"}, {Qt::Key_O, "Combo_Order"}}) {
                QTest::keyClick(&chooser(), key, Qt::AltModifier);
                QCOMPARE(chooser().focusWidget()->objectName(), QLatin1String(name));
            }
            leave();
        });
        QVERIFY(!choose());
    }

    // With KVO_PICTURES naming a folder: what the form looks like, on a light and a dark desktop.
    void pictures() {
        const QString folder = qEnvironmentVariable("KVO_PICTURES");
        if (folder.isEmpty()) QSKIP("KVO_PICTURES names no folder");
        const QPalette light = QApplication::palette();
        const QPalette dark(QColor(0x35, 0x37, 0x3b), QColor(0x2b, 0x2d, 0x30));
        for (const auto& colours : {light, dark}) {
            QApplication::setPalette(colours);
            onModal([&](QWidget*) {
                filter().setFocus();
                type("run");
                QTest::keyClick(&filter(), Qt::Key_Down);
                QVERIFY(pressHeading(1));
                QVERIFY(QTest::qWaitFor([] { return !label("Preview_Text").isEmpty(); }, 20000));
                QVERIFY(saveScreenshot(
                    chooser(), folder + (colours == dark ? QStringLiteral("/chooser-dark.png")
                                                         : QStringLiteral("/chooser-light.png"))));
                leave();
            });
            QVERIFY(!choose());
            unload<LoadFile>();
            QCoreApplication::processEvents();
        }
        QApplication::setPalette(light);
    }

    void itStandsOnASmallScreen() {
        onModal([](QWidget*) {
            QVERIFY(chooser().minimumSizeHint().width() <= 940);
            QVERIFY(chooser().minimumSizeHint().height() <= 500);
            leave();
        });
        QVERIFY(!choose());
    }
};

KVO_FORM_TEST_MAIN(RunSearchTest)
#include "run_search_test.moc"
