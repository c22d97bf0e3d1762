// Which run is this: the titles in the line of time and read-out.
#include "graph/forms/read_out_line.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/graph_window.h"
#include "tests/forms/support/model_run.h"
#include "tests/forms/support/user_click.h"

#include <QToolButton>

#include <array>

using namespace kvo;
using namespace kvo::forms;
using namespace kvo::platform_qt;

class GraphTitleTest : public QObject, private testing::GraphWindow {
    Q_OBJECT

    QString title(const char* label) { return part<QLabel>(label).accessibleName(); }
    // What shows in the line, each within it and beside the others.
    void nothingOverlaps() {
        const QWidget& line = part<QWidget>("ReadOuts");
        QList<QRect> places;
        for (const char* name :
            {"LoggerTime", "ReferenceTime", "Label_DataChanel", "RunTitle", "OverlayTitle"}) {
            const auto& label = part<QLabel>(name);
            if (!label.isVisible() || label.width() == 0) continue;
            QVERIFY2(line.rect().contains(label.geometry()), name);
            for (const QRect& other : places) QVERIFY2(!other.intersects(label.geometry()), name);
            QVERIFY2(label.sizeHint().width() <= label.width(), name);
            places << label.geometry();
        }
    }

private slots:
    void init() { begin(); }
    void cleanup() { QCOMPARE(end(), QString()); }

    void theRunsTitleAndDateStandInTheLine() {
        for (const int number : {1, 2}) store(32, number);
        openByChooser(cancelling());
        QCOMPARE(text("RunTitle"), QString());
        testing::onModal(taking(2));
        command("Mnu_LoadData").trigger();
        const QString second = text("RunTitle");
        QVERIFY2(second.contains(QLatin1String("Jun 2024")), qPrintable(second));
        QVERIFY(second.contains(QLatin1String("Run: 2")));
        QCOMPARE(title("RunTitle"), second);
        QVERIFY(part<QLabel>("RunTitle").toolTip().contains(QLatin1String("Run: 2")));
        QCOMPARE(text("OverlayTitle"), QString());
        part<QToolButton>("NextData").click();
        QVERIFY(text("RunTitle").contains(QLatin1String("Run: 1")));
    }

    void theOverlaysStandsBesideIt() {
        for (const int number : {1, 2}) store(32, number);
        openOverlaid();
        QVERIFY(text("RunTitle").contains(QLatin1String("Run: 2")));
        QVERIFY(text("OverlayTitle").startsWith(QLatin1String("Overlay: ")));
        QVERIFY(text("OverlayTitle").contains(QLatin1String("Run: 1")));
        QVERIFY(part<QWidget>("OverlayTitle").x() > part<QWidget>("RunTitle").x());
        command("Mnu_Overlay").trigger();
        QCOMPARE(text("OverlayTitle"), QString());
    }

    void itGoesWithTheRun() {
        store(32, 1);
        openByChooser(taking(1));
        QVERIFY(!text("RunTitle").isEmpty());
        testing::onModal([this](QWidget* chooser) {
            (void)files().remove(pathOf(1));
            pressIn(chooser, "BTN_Cancel");
        });
        command("Mnu_DeleteRun").trigger();
        QCOMPARE(text("RunTitle"), QString());
    }

    // In every window, with all that the line may hold.
    void nothingIsCutAndNothingOverlaps() {
        for (const int number : {1, 2}) store(32, number);
        for (const QSize size : std::array{QSize(960, 540), QSize(1024, 768), QSize(1027, 700),
                 QSize(1366, 768), QSize(1920, 1080)}) {
            openOverlaid(size);
            pointAtTheEngine(); // says where the text under the pointer stands
            nothingOverlaps();
            command("Mnu_Overlay").trigger();
            nothingOverlaps();
            QVERIFY(text("RunTitle").contains(QLatin1String("Run: 2")));
            command("Mnu_Reference").trigger();
            nothingOverlaps();
            QVERIFY(!text("RunTitle").isEmpty());
            unload<DataGraph>();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }

    void aLongTitleIsShortenedInTheMiddle() {
        open(32, {1027, 700});
        auto& line = part<ReadOutLine>("ReadOuts");
        const QString whole = QStringLiteral("Wed 05 Jun 2024 Run: 3 ") +
                              QStringLiteral("WWWW <b>& ").repeated(20) + QStringLiteral("the end");
        line.showTitles(whole, whole);
        const QString shown = text("RunTitle");
        QVERIFY(shown.startsWith(QLatin1String("Wed")));
        QVERIFY(shown.endsWith(QLatin1String("end")));
        QVERIFY(shown.size() < whole.size());
        QCOMPARE(title("RunTitle"), whole);
        QCOMPARE(part<QLabel>("RunTitle").toolTip(), plainTip(whole));
        QCOMPARE(title("OverlayTitle"), QStringLiteral("Overlay: ") + whole);
        nothingOverlaps();
        // More room shows more of it.
        form<DataGraph>().resize(1920, 800);
        QCoreApplication::processEvents();
        QVERIFY(text("RunTitle").size() > shown.size());
    }

    // A text under the pointer that is longer than any of its kind still stands whole.
    void theTextUnderThePointerTakesItsRoom() {
        open(32, {1027, 700});
        auto& line = part<ReadOutLine>("ReadOuts");
        line.showTitles(QStringLiteral("W").repeated(200), {});
        line.showPointer(QStringLiteral(" Overlay Throttle = ").repeated(3), true);
        nothingOverlaps();
        QVERIFY(!text("RunTitle").isEmpty());
    }

    void theLoadingPanelCoversTheTitles() {
        open(32);
        QVERIFY(part<QWidget>("LoadingFrame").autoFillBackground());
        const auto order = part<QWidget>("ReadOuts").children();
        QVERIFY(order.indexOf(&part<QWidget>("LoadingFrame")) >
                order.indexOf(&part<QWidget>("OverlayTitle")));
    }
};

KVO_FORM_TEST_MAIN(GraphTitleTest)
#include "graph_title_test.moc"
