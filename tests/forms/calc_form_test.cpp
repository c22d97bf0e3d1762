// CalcForm: each sum through its boxes and buttons, as the menu of the main window opens it.
#include "calc/forms/calc_form.h"

#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/test_program.h"
#include "tests/forms/support/user_click.h"

#include <QDir>
#include <QPalette>
#include <QPushButton>

#include <functional>
#include <memory>

using namespace kvo;
using namespace kvo::platform_qt;
using namespace kvo::testing;
using kvo::forms::CalcForm;

class CalcFormTest : public QObject {
    Q_OBJECT

    std::unique_ptr<TestProgram> m_program;

    static QLabel& label(const char* name) { return control<QLabel>(form<CalcForm>(), name); }
    static QLineEdit& box(const char* name) { return control<QLineEdit>(form<CalcForm>(), name); }
    static QString result() { return label("Label5").text(); }
    static void press(const char* name) {
        QCOMPARE(userClick(&control<QPushButton>(form<CalcForm>(), name)), QString());
    }
    static void type(const char* name, const QString& text) {
        QCOMPARE(userClick(&box(name)), QString());
        box(name).selectAll();
        QTest::keyClick(&box(name), Qt::Key_Delete);
        QTest::keyClicks(&box(name), text);
    }
    // The sum of a menu event, opened; the script leaves the form by its button.
    static int placeOf(const char* menu) {
        const auto sums = calc::engineSums();
        for (std::size_t i = 0; i < sums.size(); ++i)
            if (sums[i].menu == menu) return static_cast<int>(i);
        return -1;
    }
    static void opened(const char* menu, const std::function<void()>& script) {
        bool ran = false;
        onModal([&](QWidget* modal) {
            QCOMPARE(modal->objectName(), QStringLiteral("CalcForm"));
            script();
            ran = true;
            press("Cancel");
        });
        form<CalcForm>().showSum(placeOf(menu));
        QVERIFY(ran);
        QVERIFY(!isLoaded<CalcForm>());
    }

private slots:
    void init() { m_program = std::make_unique<TestProgram>(); }
    void cleanup() {
        unloadAllForms();
        m_program.reset();
        QCOMPARE(modalComplaints(), QString());
    }

    void everySumStandsAsItsTableSays_data() {
        QTest::addColumn<QString>("menu");
        for (const calc::EngineSum& sum : calc::engineSums()) {
            const std::string menu(sum.menu);
            QTest::newRow(menu.c_str()) << QString::fromStdString(menu);
        }
    }
    void everySumStandsAsItsTableSays() {
        QFETCH(QString, menu);
        const int place = placeOf(menu.toLatin1().constData());
        const calc::EngineSum& sum = calc::engineSums()[static_cast<std::size_t>(place)];
        opened(menu.toLatin1().constData(), [&] {
            const auto text = [](std::string_view from) {
                return QString::fromUtf8(from.data(), static_cast<qsizetype>(from.size()));
            };
            QCOMPARE(form<CalcForm>().windowTitle(), text(sum.title));
            QCOMPARE(label("Label4").text(), text(sum.result));
            QCOMPARE(result(), QString());
            QLineEdit* first = nullptr;
            for (int i = 1; i <= 3; ++i) {
                const calc::CalcRow& row = sum.rows[static_cast<std::size_t>(i - 1)];
                QLabel& caption = label(qPrintable(QStringLiteral("Label%1").arg(i)));
                QLabel& unit = label(qPrintable(QStringLiteral("Label%1").arg(i + 5)));
                QLineEdit& input = box(qPrintable(QStringLiteral("Text%1").arg(i)));
                QCOMPARE(caption.text(), text(row.caption));
                QCOMPARE(unit.text(), text(row.unit));
                for (QWidget* part : {static_cast<QWidget*>(&caption), static_cast<QWidget*>(&unit),
                         static_cast<QWidget*>(&input)})
                    QCOMPARE(part->isVisible(), !row.caption.empty());
                QCOMPARE(caption.buddy(), &input);
                if (first == nullptr && input.isVisible()) first = &input;
            }
            QVERIFY(first->hasFocus());
        });
    }

    // By the keys alone: Tab from box to box, Return calculates, Escape closes.
    void aSumByTheKeys() {
        onModal([](QWidget* modal) {
            auto& compression = form<CalcForm>();
            for (const char* text : {"4", "4", "100"}) {
                QTest::keyClicks(QApplication::focusWidget(), QLatin1String(text));
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            }
            QTest::keyClick(&compression, Qt::Key_Return);
            QCOMPARE(result(), QStringLiteral("9.2 :1"));
            QTest::keyClick(modal, Qt::Key_Escape);
        });
        form<CalcForm>().showSum(placeOf("Compression"));
        QVERIFY(!isLoaded<CalcForm>());
    }

    void fiveCylindersKeepTheResultAndGreyIt() {
        opened("Displacement", [] {
            type("Text1", "8");
            type("Text2", "4");
            type("Text3", "3");
            press("Command1");
            QCOMPARE(result(), QStringLiteral("301.59 Cu.In"));
            QVERIFY(label("Label5").isEnabled());
            type("Text1", "5");
            QVERIFY(!label("Label5").isEnabled()); // of other numbers than those in the boxes
            press("Command1");
            QCOMPARE(result(), QStringLiteral("301.59 Cu.In"));
            QVERIFY(!label("Label5").isEnabled());
            type("Text1", "4.0");
            press("Command1");
            QCOMPARE(result(), QStringLiteral("0.00 Cu.In"));
            QVERIFY(label("Label5").isEnabled());
        });
    }

    void theSwitchTurnsInputsUnitsAndResult() {
        opened("Mnu_TDiameter", [] {
            type("Text3", "100");
            press("Command1");
            QCOMPARE(result(), QStringLiteral("31.83 In"));
            press("ToggleMetric");
            QCOMPARE(label("Label8").text(), QStringLiteral("Cm"));
            QCOMPARE(box("Text3").text(), QStringLiteral("254"));
            QCOMPARE(result(), QStringLiteral(" 80.85 Cm"));
            press("Command1"); // sums in inches and shows centimetres
            QCOMPARE(label("Label8").text(), QStringLiteral("Cm"));
            QCOMPARE(box("Text3").text(), QStringLiteral("254"));
            QCOMPARE(result(), QStringLiteral(" 80.85 Cm"));
            press("ToggleMetric");
            QCOMPARE(box("Text3").text(), QStringLiteral("100"));
            QCOMPARE(result(), QStringLiteral(" 31.83 In"));
        });
    }

    void aGreyResultStaysGreyInOtherUnits() {
        opened("Mnu_TDiameter", [] {
            type("Text3", "100");
            press("Command1");
            type("Text3", "200");
            QVERIFY(!label("Label5").isEnabled());
            press("ToggleMetric");
            QCOMPARE(result(), QStringLiteral(" 80.85 Cm"));
            QVERIFY(!label("Label5").isEnabled());
            press("Command1");
            QVERIFY(label("Label5").isEnabled());
            press("ToggleMetric");
            QVERIFY(label("Label5").isEnabled());
        });
    }

    void aLengthThereAndBack() {
        opened("Speed", [] {
            type("Text1", "12.34");
            press("ToggleMetric");
            QCOMPARE(box("Text1").text(), QStringLiteral("31.34"));
            QCOMPARE(label("Label7").text(), QStringLiteral(":1"));
            press("ToggleMetric");
            QCOMPARE(box("Text1").text(), QStringLiteral("12.34"));
        });
    }

    void nothingIsKeptFromOneOpeningToTheNext() {
        opened("Mnu_TDiameter", [] {
            type("Text3", "10");
            press("ToggleMetric");
            press("Command1");
        });
        opened("Mnu_TDiameter", [] {
            QCOMPARE(box("Text3").text(), QString());
            QCOMPARE(label("Label8").text(), QStringLiteral("In"));
            QCOMPARE(result(), QString());
        });
    }

    // What is no number stays in its box, and a result of a hundred digits does not move the form.
    void absurdInputHarmsNothing() {
        opened("MnuCFM", [] {
            const QSize size = form<CalcForm>().size();
            type("Text2", QStringLiteral("x"));
            box("Text2").insert(QStringLiteral("\u20ac\u0416"));
            press("Command1");
            QCOMPARE(result(), QStringLiteral("0.0 Hp"));
            QVERIFY(box("Text2").text().startsWith(QLatin1Char('x')));
            type("Text2", QString(200, QLatin1Char('9')));
            type("Text3", "8");
            press("Command1");
            QVERIFY(result().size() > 150);
            QCOMPARE(label("Label5").toolTip(), result());
            QApplication::processEvents();
            QCOMPARE(form<CalcForm>().size(), size);
            type("Text2", QString(400, QLatin1Char('9'))); // too large for any number
            press("Command1");
            press("ToggleMetric");
        });
    }

    // With KVO_PICTURES naming a folder: what the form looks like.
    void pictures() {
        const QString folder = qEnvironmentVariable("KVO_PICTURES");
        if (folder.isEmpty()) QSKIP("KVO_PICTURES names no folder");
        const QPalette light = QApplication::palette();
        const QPalette dark(QColor(0x35, 0x37, 0x3b), QColor(0x2b, 0x2d, 0x30));
        for (const bool isDark : {false, true}) {
            QApplication::setPalette(isDark ? dark : light);
            for (const char* menu : {"Compression", "Mnu_PistonSpeen", "Mnu_TDiameter"}) {
                opened(menu, [&] {
                    for (const char* name : {"Text1", "Text2", "Text3"})
                        if (box(name).isVisible()) type(name, "1234.5");
                    press("Command1");
                    QVERIFY(saveScreenshot(form<CalcForm>(),
                        QStringLiteral("%1/%2-%3.png")
                            .arg(folder, menu, isDark ? QString("dark") : QString("light"))));
                });
            }
        }
        QApplication::setPalette(light);
    }
};

KVO_FORM_TEST_MAIN(CalcFormTest)
#include "calc_form_test.moc"
