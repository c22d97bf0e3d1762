// CustomScale through its real widgets, and the surface of the graph that takes its size.
#include "setup/forms/custom_scale.h"

#include "platform/qt/form_kit.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/graph_window.h"
#include "tests/forms/support/model_run.h"
#include "tests/forms/support/user_click.h"

#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QSlider>
#include <QToolButton>

#include <functional>

using namespace kvo;
using namespace kvo::forms;
using namespace kvo::platform_qt;
using namespace kvo::testing;

class CustomScaleTest : public QObject, private testing::GraphWindow {
    Q_OBJECT

    static QSlider& slider(const char* name) { return control<QSlider>(form<CustomScale>(), name); }
    static QString value(const char* name) {
        return control<QLabel>(form<CustomScale>(), name).text();
    }
    static void click(const char* name) {
        QCOMPARE(userClick(&control<QPushButton>(form<CustomScale>(), name)), QString());
    }
    static void slideTo(QSlider& slider, int position) {
        slider.setFocus();
        QTest::keyClick(&slider, Qt::Key_Home);
        for (int i = 1; i < position; ++i) QTest::keyClick(&slider, Qt::Key_Right);
    }

    // Picks "Custom" of the scale menu; what `script` leaves open is left by Cancel.
    void custom(std::function<void()> script) {
        onModal([script](QWidget* modal) {
            QCOMPARE(modal->objectName(), QStringLiteral("CustomScale"));
            script();
            if (isLoaded<CustomScale>()) click("CancelButton");
        });
        command("Mnu_ScaleItem(3)").trigger();
        QVERIFY(!isLoaded<CustomScale>());
    }
    QString scaleCaption() { return part<QMenu>("Mnu_Scale").title(); }

private slots:
    void init() { begin(); }
    void cleanup() { QCOMPARE(end(), QString()); }

    void opensOnTheStoredPositions() {
        open(32);
        state().Config.CustomScaleLow = 15;
        state().Config.CustomScaleHigh = 2;
        custom([this] {
            QCOMPARE(form<CustomScale>().windowTitle(), QStringLiteral("Custom Scale"));
            QCOMPARE(slider("Slider1").value(), 15);
            QCOMPARE(slider("Slider2").value(), 2);
            QCOMPARE(value("Label1(4)"), QStringLiteral("15"));
            QCOMPARE(value("Label1(5)"), QStringLiteral("2"));
            QCOMPARE(slider("Slider1").minimum(), 1);
            QCOMPARE(slider("Slider2").maximum(), 15);
            QVERIFY(!menuEnabled("Mnu_File"));
            click("CancelButton");
        });
        QVERIFY(menuEnabled("Mnu_File"));
        state().Config.CustomScaleLow = 0; // none of the sliders
        custom([] {
            QCOMPARE(slider("Slider1").value(), 1);
            QCOMPARE(value("Label1(4)"), QStringLiteral("1"));
            click("CancelButton");
        });
    }

    void aSliderShowsWhereItStands() {
        open(32);
        custom([] {
            slideTo(slider("Slider1"), 7);
            QCOMPARE(value("Label1(4)"), QStringLiteral("7"));
            QCOMPARE(value("Label1(5)"), QStringLiteral("1"));
            QTest::keyClick(&slider("Slider2"), Qt::Key_End);
            QCOMPARE(value("Label1(5)"), QStringLiteral("15"));
            click("CancelButton");
        });
    }

    void okGivesTheSurfaceItsSize() {
        open(32);
        const QWidget& room = part<QWidget>("GraphSurface");
        const QSize full = trend().size();
        custom([] {
            slideTo(slider("Slider1"), 2);
            slideTo(slider("Slider2"), 3);
            click("OKButton");
        });
        // Of the window's inside, less 265 twips of its height and 2225 of its width.
        QCOMPARE(trend().height(), qRound(((room.height() + 129) * 15 - 265) * 2 / 15.0));
        QCOMPARE(trend().width(), qRound((room.width() * 15 - 2225) * 3 / 15.0));
        QCOMPARE(scaleCaption(), QStringLiteral("&Graph Scale(Custom)"));
        QVERIFY(command("Mnu_ScaleItem(3)").isChecked());
        QVERIFY(!command("Mnu_ScaleItem(0)").isChecked());
        QCOMPARE(int(state().Config.ScaleCustom), 3);
        QCOMPARE(int(state().Config.CustomScaleLow), 2);
        QCOMPARE(int(state().Config.CustomScaleHigh), 3);
        QVERIFY(!kept().empty());
        QCOMPARE(onTop(), 1U);
        QVERIFY(!dialogs().hourglass());
        // Both bars bring the ends of the surface into view.
        const QWidget& frame = part<QWidget>("Frame1");
        for (const char* name : {"HScroll", "VScroll"}) {
            auto& bar = part<QScrollBar>(name);
            QVERIFY(bar.isVisible() && bar.maximum() > 0);
            bar.setValue(bar.maximum());
        }
        QVERIFY(qAbs(trend().x() + trend().width() - frame.width()) <= 1);
        QVERIFY(qAbs(trend().y() + trend().height() - frame.height()) <= 1);
        command("Mnu_ScaleItem(0)").trigger();
        QCOMPARE(trend().size(), full);
        QCOMPARE(trend().pos(), QPoint(0, 0));
        QCOMPARE(scaleCaption(), QStringLiteral("&Graph Scale(Full)  "));
    }

    // The choice stands in the configuration all the same; the surface keeps its size.
    void cancelLeavesTheSurface_data() {
        QTest::addColumn<bool>("byEscape");
        QTest::newRow("button") << false;
        QTest::newRow("escape") << true;
    }
    void cancelLeavesTheSurface() {
        QFETCH(bool, byEscape);
        open(32);
        const QSize full = trend().size();
        custom([byEscape] {
            slideTo(slider("Slider1"), 9);
            if (byEscape)
                QTest::keyClick(&form<CustomScale>(), Qt::Key_Escape);
            else
                click("CancelButton");
        });
        QCOMPARE(trend().size(), full);
        QCOMPARE(scaleCaption(), QStringLiteral("&Graph Scale(Full)  "));
        QCOMPARE(int(state().Config.ScaleCustom), 3);
        QCOMPARE(int(state().Config.CustomScaleLow), 0);
        QCOMPARE(onTop(), 1U);
        command("Mnu_ScaleItem(0)").trigger();
        QCOMPARE(trend().size(), full);
        QVERIFY(!part<QScrollBar>("HScroll").isVisible());
    }

    void theHourglassStandsWhileTheSurfaceTakesItsSize() {
        struct Watch : QObject {
            explicit Watch(const testing::ScriptedDialogs& all) : dialogs(all) {}
            bool eventFilter(QObject*, QEvent* event) override {
                if (event->type() == QEvent::Resize) busy << dialogs.hourglass();
                return false;
            }
            const testing::ScriptedDialogs& dialogs;
            QList<bool> busy;
        };
        open(32);
        Watch watch(dialogs());
        trend().installEventFilter(&watch);
        custom([] {
            slideTo(slider("Slider1"), 3);
            click("OKButton");
        });
        trend().removeEventFilter(&watch);
        QVERIFY(!watch.busy.isEmpty());
        QVERIFY(!watch.busy.contains(false));
        QVERIFY(!dialogs().hourglass());
    }

    void aZoomGrowsFromTheChosenSize() {
        DataGraph& graph = open(32);
        custom([] {
            slideTo(slider("Slider2"), 2);
            click("OKButton");
        });
        const int width = trend().width();
        press("ZoomIn");
        QVERIFY(qAbs(trend().width() - qRound(width * 1.2)) <= 2);
        QVERIFY(!menuEnabled("Mnu_Scale"));
        graph.resize(graph.size() - QSize(100, 60));
        QCoreApplication::processEvents();
        QVERIFY(qAbs(trend().width() - qRound(width * 1.2)) <= 2);
        // Back to a custom size, by the rule of the window as it opens: the factors change places.
        press("CancelZoom");
        QCOMPARE(int(state().Config.ScaleCustom), 3);
        const QWidget& room = part<QWidget>("GraphSurface");
        QCOMPARE(trend().width(), qRound(room.width() - 265 / 15.0));
        QCOMPARE(trend().height(), room.height() * 2);
        QVERIFY(menuEnabled("Mnu_Scale"));
    }

    void anOverlayStaysOnTheSurface() {
        store(32, 1);
        store(32, 2);
        openOverlaid();
        const QImage before = picture();
        custom([] {
            slideTo(slider("Slider1"), 3);
            click("OKButton");
        });
        QCOMPARE(picture(), before);
        QCOMPARE(int(view().OverlayLoaded), -1);
    }

    void isWorkedByKeysAlone() {
        open(32);
        custom([] {
            auto& form = platform_qt::form<CustomScale>();
            QTest::keyClick(&form, Qt::Key_W, Qt::AltModifier);
            QVERIFY(slider("Slider2").hasFocus());
            QTest::keyClick(&slider("Slider2"), Qt::Key_Right);
            QTest::keyClick(&form, Qt::Key_H, Qt::AltModifier);
            QVERIFY(slider("Slider1").hasFocus());
            QTest::keyClick(&slider("Slider1"), Qt::Key_Return);
        });
        QCOMPARE(int(state().Config.CustomScaleLow), 1);
        QCOMPARE(int(state().Config.CustomScaleHigh), 2);
    }
};

KVO_FORM_TEST_MAIN(CustomScaleTest)
#include "custom_scale_test.moc"
