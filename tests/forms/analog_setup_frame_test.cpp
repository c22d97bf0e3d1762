// The frame Analog_Setup through its real widgets, in the form that opens it.
#include "core/basic/numbers.h"
#include "core/basic/plain_number.h"
#include "platform/qt/text.h"
#include "setup/sensor_models.h"
#include "tests/forms/support/analog_window.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/user_click.h"

#include <QAbstractItemView>
#include <QAccessible>

#include <cstdlib>
#include <random>

using namespace kvo;
using namespace kvo::platform_qt;
using namespace kvo::testing;
using kvo::forms::SetupSoftware;

class AnalogSetupFrameTest : public QObject, private AnalogWindow {
    Q_OBJECT

private slots:
    void init() { begin(); }
    void cleanup() { QCOMPARE(end(), QString()); }

    void eachButtonOpensItsChannel() {
        for (int channel = 1; channel <= 8; ++channel) {
            config().AnalogName[channel] = "Chan " + std::to_string(channel) + "  ";
            config().AnalogRangeLow[channel] = static_cast<std::int16_t>(-channel);
        }
        for (int channel = 1; channel <= 8; ++channel) {
            open(channel);
            QCOMPARE(part<QLabel>("Txt_Analog").text().remove('&'),
                QStringLiteral("Analog %1 Name:").arg(channel));
            QCOMPARE(box("Analog").text(), QStringLiteral("Chan %1").arg(channel));
            QCOMPARE(box("RangeText1").text(), QString::number(-channel));
            QVERIFY(box("Analog").hasFocus());
            QCOMPARE(box("Analog").selectedText(), box("Analog").text());
            QVERIFY2(!part<QPushButton>("SaveSetup").isEnabled(), "the form is locked");
            click("Command1");
            QVERIFY(!frame().isVisible());
            QVERIFY(part<QPushButton>("SaveSetup").isEnabled());
        }
    }

    void theListsHoldTheirTexts() {
        open(1);
        QCOMPARE(
            listed("Analog_Type"), (QStringList{"Custum Input", "Exhaust Input", "Mapped Input",
                                       "KVO Lambda Sensor", "KVO Pressure Sensor"}));
        QCOMPARE(listed("Fuel_Combo"),
            (QStringList{"Unleaded Petrol", "Propane", "Methanol", "Ethanol", "Lambda"}));
        QCOMPARE(listed("Decimals"), (QStringList{"0", "1", "2"}));
        QCOMPARE(list("Sensor_Combo").count(), 23);
        QCOMPARE(list("Sensor_Combo").itemText(22), QStringLiteral("kvo 2000  0-2000 psi"));
        for (int number = 1; number <= 10; ++number)
            QCOMPARE(part<QLabel>(qPrintable(QStringLiteral("Label32(%1)").arg(number))).text(),
                QStringLiteral("%1.%2 v =").arg(number / 2).arg(number % 2 * 5));
    }

    void eachKindShowsItsFields() {
        open(1);
        struct Row {
            int kind;
            QStringList onView;
        };
        const QStringList all{"Decimals", "RangeText1", "AFactor", "Zero", "Fuel_Combo",
            "Sensor_Combo", "Text9(1)", "Text9(10)", "Curve"};
        for (const Row& row : {Row{0, {"Decimals", "RangeText1", "AFactor", "Zero"}}, Row{1, {}},
                 Row{2, {"Decimals", "Zero", "Text9(1)", "Text9(10)", "Curve"}},
                 Row{3, {"Fuel_Combo"}}, Row{4, {"Decimals", "Zero", "Sensor_Combo"}}}) {
            pickKind(row.kind);
            for (const QString& name : all)
                QCOMPARE(std::make_pair(name, part<QWidget>(qPrintable(name)).isVisible()),
                    std::make_pair(name, row.onView.contains(name)));
            for (const char* name : {"Analog", "Analog_Type", "SmoothOption", "Command2"})
                QVERIFY(part<QWidget>(name).isVisible());
            // A label comes and goes with its box.
            for (QLabel* label : frame().findChildren<QLabel*>())
                if (label->buddy() != nullptr)
                    QCOMPARE(label->isVisible(), label->buddy()->isVisible());
        }
    }

    // The pick of the kind that stands is a click too, and sets the raw count anew.
    void aLambdaSensorThatIsPickedAgainKeepsTheRawCount() {
        config().Analog_Type[2] = 3;
        config().AnalogScale[2] = 0.5F;
        config().AnalogOffset[2] = 4;
        config().AnalogRangeLow[2] = -3;
        open(2);
        QCOMPARE(list("Analog_Type").currentIndex(), 3);
        list("Analog_Type").showPopup();
        QTest::keyClick(list("Analog_Type").view(), Qt::Key_Return);
        QCOMPARE(list("Analog_Type").currentIndex(), 3);
        click("Command2");
        QCOMPARE(config().AnalogScale[2], 1.0F);
        QCOMPARE(config().AnalogOffset[2], 0.0F);
        QCOMPARE(config().AnalogRangeLow[2], std::int16_t{0});
    }

    void theFrameGrowsForTheTableAlone() {
        open(1);
        QCoreApplication::processEvents();
        const int low = frame().height();
        pickKind(setup::mappedInput);
        QTRY_VERIFY(frame().height() > low + 100);
        for (const int kind : {0, 1, 3, 4}) {
            pickKind(kind);
            QTRY_COMPARE(frame().height(), low);
        }
        QVERIFY(form<SetupSoftware>().rect().contains(frame().geometry()));
    }

    void okKeepsTheChannel() {
        open(3);
        type(box("Analog"), "Oil pressure");
        type(box("RangeText1"), "-50");
        type(box("AFactor"), "150");
        pick("Decimals", 1);
        type(box("Zero"), "2.5");
        QCOMPARE(userClick(&part<QCheckBox>("SmoothOption")), QString());
        click("Command2");
        QVERIFY(!frame().isVisible());
        QVERIFY(part<QPushButton>("SaveSetup").isEnabled());
        QCOMPARE(channelButton(3).text(), QStringLiteral("Oil pres"));
        QVERIFY(channelButton(3).hasFocus());
        QCOMPARE(config().AnalogRangeLow[3], std::int16_t{-50});
        QCOMPARE(config().AnalogScale[3], 200.0F / 255);
        QCOMPARE(config().Decimals[3], std::uint8_t{1});
        QCOMPARE(config().AnalogOffset[3], 2.5F);
        QCOMPARE(config().SmoothOption[19], std::uint8_t{1});
        QVERIFY(!files().exists("/kvo/Kvo.Cfg"));
        const QStringList before = [] {
            open(3);
            return controls();
        }();
        QCOMPARE(before.mid(0, 4), (QStringList{"Oil pres", "-50", "150", "2.5"}));
        click("Command1");
    }

    void cancelKeepsNothing() {
        putTable(2, 1);
        const core::AppConfig before = config();
        const platform::Bytes table = tableFile(2);
        for (const bool byKey : {false, true}) {
            open(2);
            type(box("Analog"), "Other");
            pickKind(setup::mappedInput);
            typePoints(7);
            if (byKey)
                QTest::keyClick(&point(3), Qt::Key_Escape);
            else
                click("Command1");
            QVERIFY(!frame().isVisible());
            QVERIFY2(isLoaded<SetupSoftware>(), "Escape leaves the frame and not the form");
            QVERIFY(part<QPushButton>("SaveSetup").isEnabled());
            QVERIFY(config() == before);
            QCOMPARE(tableFile(2), table);
            QVERIFY(channelButton(2).text() != QStringLiteral("Other"));
        }
        open(2);
        QCOMPARE(list("Analog_Type").currentIndex(), 0);
        QCOMPARE(point(10).text(), QStringLiteral("255"));
        click("Command1");
    }

    void theNameThatWasTakenShowsAtTheNextOpening() {
        open(5);
        type(box("Analog"), "Fuel");
        click("Command2");
        open(6);
        click("Command1");
        open(5);
        QCOMPARE(box("Analog").text(), QStringLiteral("Fuel"));
        click("Command1");
        click("SaveSetup");
        QCOMPARE(QString::fromStdString(config().AnalogName[5]), QStringLiteral("Fuel    "));
    }

    void theNameTakesWhatAFileCanHold() {
        open(1);
        type(box("Analog"), QString::fromUtf8("\u00D6l \u0142\u6F22\u20AC12345"));
        QCOMPARE(box("Analog").text(), QString::fromUtf8("\u00D6l \u20AC1234"));
        click("Command2");
        QCOMPARE(channelButton(1).text(), QString::fromUtf8("\u00D6l \u20AC1234"));
        open(1);
        type(box("Analog"), "");
        click("Command2");
        QCOMPARE(channelButton(1).text(), QString());
        open(1);
        type(box("Analog"), "A&B &&C");
        click("Command2");
        open(1);
        QCOMPARE(box("Analog").text(), QStringLiteral("A&B &&C"));
        click("Command1");
    }

    void aFuelIsForAllChannels() {
        open(2);
        pickKind(setup::lambdaInput);
        pick("Fuel_Combo", 3);
        click("Command2");
        QCOMPARE(config().AnalogScale[2], 1.0F);
        open(1);
        pickKind(setup::lambdaInput);
        QCOMPARE(list("Fuel_Combo").currentText(), QStringLiteral("Ethanol"));
        click("Command1");
    }

    void aSensorSetsTheScale() {
        for (const int sensor : {0, 8, 13, 22}) {
            open(4);
            pickKind(setup::pressureInput);
            pick("Sensor_Combo", sensor);
            click("Command2");
            const double top = setup::sensorModelAt(sensor)->atFiveVolts;
            QCOMPARE(config().AnalogScale[4], static_cast<float>(top / 255));
            open(4);
            QCOMPARE(box("AFactor").text(), shown(core::CStr(top)));
            QCOMPARE(list("Sensor_Combo").currentIndex(), sensor);
            const QComboBox& combo = list("Sensor_Combo");
            QVERIFY2(combo.fontMetrics().horizontalAdvance(combo.itemText(22)) < combo.width() - 20,
                "the longest model is not cut");
            click("Command1");
        }
    }

    void settingsThatNoListHasLeaveTheLists() {
        config().Analog_Type[1] = 200;
        config().Decimals[1] = 3;
        config().Sensor_Combo[1] = 23;
        config().Fuel_Combo = 5;
        const core::AppConfig before = config();
        open(1);
        for (const char* name : {"Analog_Type", "Decimals", "Sensor_Combo", "Fuel_Combo"})
            QCOMPARE(list(name).currentIndex(), -1);
        QVERIFY(!box("Zero").isVisible());
        click("Command2");
        QVERIFY(config() == before);
        open(1);
        pickKind(setup::pressureInput);
        QVERIFY(list("Sensor_Combo").isVisible());
        click("Command1");
    }

    void theKeyboardAloneIsEnough() {
        showForm();
        channelButton(2).setFocus();
        QTest::keyClick(&channelButton(2), Qt::Key_Space);
        QVERIFY(frame().isVisible());
        QTest::keyClicks(box("Analog").window()->focusWidget(), "Boost");
        const auto tab = [] { QTest::keyClick(form<SetupSoftware>().focusWidget(), Qt::Key_Tab); };
        const auto focus = [] { return form<SetupSoftware>().focusWidget()->objectName(); };
        tab();
        QCOMPARE(focus(), QStringLiteral("Analog_Type"));
        QTest::keyClick(&list("Analog_Type"), Qt::Key_Down);
        QTest::keyClick(&list("Analog_Type"), Qt::Key_Down);
        QStringList order;
        for (int i = 0; i < 15; ++i) {
            tab();
            order << focus();
            if (focus().startsWith("Text9"))
                QTest::keyClicks(form<SetupSoftware>().focusWidget(), "8");
        }
        QCOMPARE(order, (QStringList{"Decimals", "Zero", "Text9(1)", "Text9(2)", "Text9(3)",
                            "Text9(4)", "Text9(5)", "Text9(6)", "Text9(7)", "Text9(8)", "Text9(9)",
                            "Text9(10)", "SmoothOption", "Command2", "Command1"}));
        QTest::keyClick(&point(10), Qt::Key_Return);
        QVERIFY(!frame().isVisible());
        QCOMPARE(channelButton(2).text(), QStringLiteral("Boost"));
        QCOMPARE(program().state.Tables[1][153], 8.0);
        QVERIFY(isLoaded<SetupSoftware>());
    }

    void aBoxSelectsItsTextAsTheFocusComes() {
        open(1);
        for (const char* name : {"AFactor", "Zero", "Analog"}) {
            QCOMPARE(userClick(&box(name)), QString());
            QCOMPARE(box(name).selectedText(), box(name).text());
        }
        QCOMPARE(userClick(&box("RangeText1")), QString());
        QVERIFY2(!box("RangeText1").hasSelectedText(), "this one alone does not");
    }

    void theLettersOfTheLabelsMoveTheFocus() {
        open(1);
        const auto press = [](char letter) {
            QTest::keyClick(
                form<SetupSoftware>().focusWidget(), static_cast<Qt::Key>(letter), Qt::AltModifier);
            return form<SetupSoftware>().focusWidget()->objectName();
        };
        QCOMPARE(press('0'), QStringLiteral("RangeText1"));
        QCOMPARE(press('5'), QStringLiteral("AFactor"));
        QCOMPARE(press('D'), QStringLiteral("Decimals"));
        QCOMPARE(press('Z'), QStringLiteral("Zero"));
        QCOMPARE(press('T'), QStringLiteral("Analog_Type"));
        pickKind(setup::lambdaInput);
        QCOMPARE(press('F'), QStringLiteral("Fuel_Combo"));
        press('O');
        QTRY_VERIFY2(!frame().isVisible(), "Ok");
    }

    void everyControlHasAName() {
        open(1);
        for (int kind = 0; kind < 5; ++kind) {
            pickKind(kind);
            for (QWidget* widget : frame().findChildren<QWidget*>()) {
                if (!widget->isVisible() || widget->focusPolicy() == Qt::NoFocus) continue;
                if (!qobject_cast<QLineEdit*>(widget) && !qobject_cast<QComboBox*>(widget) &&
                    !qobject_cast<QAbstractButton*>(widget))
                    continue;
                if (widget->objectName().startsWith("qt_")) continue;
                QAccessibleInterface* face = QAccessible::queryAccessibleInterface(widget);
                QVERIFY2(face != nullptr && !face->text(QAccessible::Name).isEmpty(),
                    qPrintable(widget->objectName()));
            }
        }
        QVERIFY(!curveView().accessibleName().isEmpty());
    }

    // Channels at random, through the widgets: saved, they come back to the same controls, and a
    // second save changes neither settings nor tables.
    void whatWasSavedComesBack() {
        std::mt19937 random(11);
        const auto upTo = [&](unsigned most) { return static_cast<int>(random() % (most + 1)); };
        const auto number = [&] { return shown(core::CStr((upTo(20000) - 5000) / 10.0)); };
        for (int turn = 0; turn < 200; ++turn) {
            const int channel = 1 + upTo(7);
            open(channel);
            box("Analog").setText(QString::number(upTo(99999999)));
            list("Decimals").setCurrentIndex(upTo(2));
            list("Sensor_Combo").setCurrentIndex(upTo(22));
            list("Fuel_Combo").setCurrentIndex(upTo(4));
            part<QCheckBox>("SmoothOption").setChecked(upTo(1) != 0);
            box("RangeText1").setText(QString::number(upTo(600) - 300));
            box("AFactor").setText(number());
            box("Zero").setText(number());
            for (int i = 1; i <= setup::tablePoints; ++i) point(i).setText(number());
            list("Analog_Type").setCurrentIndex(upTo(4));
            const bool mapped = list("Analog_Type").currentIndex() == setup::mappedInput;
            click("Command2");
            QStringList saved = controls();
            const core::AppConfig settings = config();
            const platform::Bytes table = tableFile(channel);
            open(channel % 8 + 1);
            click("Command1");
            open(channel);
            // The last of seven digits is that of the single which holds the scale.
            const float scale = settings.AnalogScale[channel];
            const int low = std::abs(int{settings.AnalogRangeLow[channel]});
            saved[2] = shown(
                core::plainNumber(static_cast<float>(static_cast<double>(scale) * 255 - low)));
            QCOMPARE(controls().mid(0, mapped ? -1 : 9), saved.mid(0, mapped ? -1 : 9));
            click("Command2");
            QVERIFY(qAbs(config().AnalogScale[channel] - scale) <= 1e-5F);
            config().AnalogScale[channel] = scale;
            QVERIFY(config() == settings);
            QCOMPARE(tableFile(channel), table);
        }
    }
};

KVO_FORM_TEST_MAIN(AnalogSetupFrameTest)
#include "analog_setup_frame_test.moc"
