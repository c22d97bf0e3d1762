// The table of a mapped input in the frame Analog_Setup, its curve and its file, and what the frame
// refuses.
#include "core/basic/numbers.h"
#include "core/paths.h"
#include "platform/qt/text.h"
#include "tests/forms/support/analog_window.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/user_click.h"

using namespace kvo;
using namespace kvo::platform_qt;
using namespace kvo::testing;
using kvo::forms::SetupSoftware;

class AnalogSetupTableTest : public QObject, private AnalogWindow {
    Q_OBJECT

private slots:
    void init() { begin(); }
    void cleanup() { QCOMPARE(end(), QString()); }

    void typingTheFactorIsTypingTheLastPoint() {
        open(1);
        for (const char* text : {"1", "12", "120", "120.5", "x"}) {
            type(box("AFactor"), text);
            QCOMPARE(point(10).text(), QString(text));
        }
        pickKind(setup::mappedInput);
        type(point(10), "7");
        QCOMPARE(box("AFactor").text(), QStringLiteral("x"));
        pickKind(setup::lambdaInput);
        QCOMPARE(box("AFactor").text(), QStringLiteral("255"));
        QCOMPARE(box("RangeText1").text(), QStringLiteral("0"));
        QCOMPARE(box("Zero").text(), QStringLiteral("0"));
        QCOMPARE(point(10).text(), QStringLiteral("255"));
    }

    void theTextsOfScaleAndTableAreComparedAsTexts() {
        open(1);
        type(box("AFactor"), "100");
        pickKind(setup::mappedInput);
        typePoints(9);
        QCOMPARE(point(10).text(), QStringLiteral("90"));
        click("Command2");
        QCOMPARE(config().AnalogScale[1], 90.0F / 255);
        open(1);
        QCOMPARE(box("AFactor").text(), QStringLiteral("90"));
        click("Command1");
    }

    void savingAnotherKindRewritesTheTableThatWasRead() {
        putTable(6, 3);
        const platform::Bytes table = tableFile(6);
        open(6);
        pickKind(setup::mappedInput);
        typePoints(5);
        pickKind(setup::customInput);
        click("Command2");
        QCOMPARE(tableFile(6), table);
    }

    void aMappedInputWritesItsTableAndKeepsTheOldOne() {
        putTable(7, 1);
        const platform::Bytes old = tableFile(7);
        open(7);
        pickKind(setup::mappedInput);
        typePoints(25);
        click("Command2");
        QCOMPARE(tableFile(7).size(), std::size_t{2048});
        QCOMPARE(files().read("/kvo/Backup/Analog7.Dat.0001"), old);
        open(7);
        for (int number = 1; number <= 10; ++number)
            QCOMPARE(point(number).text(), QString::number(number * 25));
        QCOMPARE(drawn(26), 25.0);
        click("Command1");
    }

    void theCurveFollowsEveryKey() {
        putTable(1, 0);
        open(1);
        type(box("AFactor"), "255");
        pickKind(setup::mappedInput);
        typePoints(10);
        QCOMPARE(drawn(25), 10.0);
        QCOMPARE(drawn(24), 9.6);
        type(point(4), "4");
        QCOMPARE(drawn(102), 4.0);
        QTest::keyClicks(&point(4), "5");
        QCOMPARE(drawn(102), 45.0);
        QTest::keyClick(&point(4), Qt::Key_Backspace);
        QCOMPARE(drawn(102), 4.0);
        type(point(4), "");
        QCOMPARE(drawn(102), 0.0);
        QVERIFY(part<QLabel>("CurveRemark").text().isEmpty());
        type(point(4), "300");
        QVERIFY(part<QLabel>("CurveRemark").text().contains("between 0 and 255"));
        pickKind(setup::customInput);
        type(box("AFactor"), "400");
        pickKind(setup::mappedInput);
        QVERIFY(part<QLabel>("CurveRemark").text().isEmpty());
        QCOMPARE(point(10).text(), QStringLiteral("400"));
        pickKind(setup::customInput);
        type(box("RangeText1"), "-100");
        pickKind(setup::mappedInput);
        type(point(4), "600");
        QVERIFY(part<QLabel>("CurveRemark").text().contains("between 0 and 500"));
    }

    void theCurveMarksThePointThatIsTyped() {
        open(1);
        pickKind(setup::mappedInput);
        QCOMPARE(curveView().marked(), 0);
        for (int number = 1; number <= 10; ++number) {
            QCOMPARE(userClick(&point(number)), QString());
            QCOMPARE(curveView().marked(), number);
            QCOMPARE(point(number).selectedText(), point(number).text());
        }
        QCOMPARE(userClick(&box("Analog")), QString());
        QCOMPARE(curveView().marked(), 0);
    }

    void theCurveIsThatOfTheChannelThatIsOpen() {
        config().Analog_Type[1] = config().Analog_Type[2] = setup::mappedInput;
        config().AnalogScale[1] = 2;
        putTable(1, 2);
        putTable(2, 0.5);
        open(1);
        QCOMPARE(drawn(255), 510.0);
        click("Command1");
        open(2);
        QCOMPARE(drawn(255), 127.5);
        click("Command1");
    }

    void aNumberThatDoesNotFitIsNamedAndNothingIsLost() {
        putTable(1, 1);
        const core::AppConfig before = config();
        open(1);
        type(box("RangeText1"), "99999");
        const QStringList entries = controls();
        expectRefusal("Reading at 0 Volts:");
        click("Command2");
        QVERIFY(frame().isVisible());
        QVERIFY(!part<QPushButton>("SaveSetup").isEnabled());
        QCOMPARE(controls(), entries);
        QVERIFY2(box("RangeText1").hasFocus(), "the text that does not fit is selected");
        QCOMPARE(box("RangeText1").selectedText(), QStringLiteral("99999"));
        QVERIFY(config() == before);
        pickKind(setup::exhaustInput);
        dialogs().expectBoxTitled(core::programName).contains = "with \"Custum Input\"";
        click("Command2");
        QVERIFY2(!box("RangeText1").hasFocus(), "a box that is not on view has no focus");
        pickKind(setup::customInput);
        type(box("RangeText1"), "0");
        click("Command2");
        QVERIFY(!frame().isVisible());
    }

    void theLongestTextsAreRefusedAndTheShortestTaken() {
        open(1);
        const QString nines(32767, '9'); // more than a number can have
        box("AFactor").setText(nines);
        expectRefusal("Reading at 5 Volts:");
        click("Command2");
        type(box("AFactor"), "1");
        box("Zero").setText(nines);
        expectRefusal("Number required to Zero Reading:");
        click("Command2");
        QVERIFY(frame().isVisible());
        type(box("Zero"), "1");
        pickKind(setup::mappedInput);
        point(5).setText(QString(300, '9'));
        QVERIFY2(curveView().curve(), "it has room for any number");
        point(5).setText(nines);
        point(6).setText("-" + nines);
        QVERIFY(!curveView().curve());
        frame().grab();
        expectRefusal("3.0 v =");
        click("Command2");
        QVERIFY(frame().isVisible());
        QVERIFY(point(6).hasFocus());
        for (int number = 1; number <= 10; ++number) point(number).setText(QString());
        pickKind(setup::customInput);
        for (const char* name : {"Analog", "RangeText1", "AFactor", "Zero"})
            box(name).setText(QString());
        pickKind(setup::mappedInput);
        click("Command2");
        QVERIFY(!frame().isVisible());
        QCOMPARE(config().AnalogScale[1], 0.0F);
        open(1);
        QVERIFY2(part<QLabel>("CurveRemark").text().startsWith("Counts 0 to 255"),
            "nothing can be kept at a scale of 0");
        click("Command1");
    }

    void hostileTextsAreReadLeniently() {
        const QStringList texts{"12abc", "abc", " - 5", "1e5", "--3", "1,5", "\t7", "0x10",
            "+4.5.6", QString::fromUtf8("\u0663"), QString(200, ' '), "<b>9</b>", "%n%s"};
        open(1);
        pickKind(setup::mappedInput);
        for (int i = 0; i < texts.size(); ++i) {
            QLineEdit& edit = point(i % 9 + 1);
            edit.setText(texts[i]);
            QCOMPARE(drawn(setup::tableEntry(i % 9 + 1)), core::Val(typed(texts[i])));
        }
        click("Command2");
        open(1);
        QCOMPARE(point(1).text(), shown(core::CStr(core::Val(typed(texts[9])))));
        QCOMPARE(point(4).text(), QStringLiteral("0"));
        click("Command1");
    }

    void aFullDiskIsToldAndTheEntriesStay() {
        putTable(1, 1);
        const platform::Bytes old = tableFile(1);
        const core::AppConfig before = config();
        open(1);
        pickKind(setup::mappedInput);
        typePoints(3);
        const QStringList entries = controls();
        files().failWrites("/kvo/Analog1.Dat", MemoryFiles::Failure::fullDisk, 1);
        dialogs().expectBoxTitled(core::programName).contains = "Analog1.Dat";
        click("Command2");
        QVERIFY(frame().isVisible());
        QCOMPARE(controls(), entries);
        QVERIFY(config() == before);
        QCOMPARE(tableFile(1), old);
        click("Command2");
        QVERIFY(!frame().isVisible());
        QVERIFY(tableFile(1) != old);
    }

    void aBrokenTableOpens() {
        files().put("/kvo/Analog1.Dat", platform::Bytes(2048, 0xFF)); // no numbers at all
        files().put("/kvo/Analog2.Dat", platform::Bytes(3, 0x41));
        files().failReads("/kvo/Analog3.Dat", MemoryFiles::Failure::diskError);
        files().put("/kvo/Analog3.Dat", platform::Bytes(2048, 0));
        for (const int channel : {1, 2, 3}) {
            config().Analog_Type[channel] = setup::mappedInput;
            open(channel);
            for (int number = 1; number <= 10; ++number)
                QCOMPARE(point(number).text(), QStringLiteral("0"));
            frame().grab();
            click("Command1");
        }
        open(3);
        type(point(1), "1");
        dialogs().expectBoxTitled(core::programName).contains = "Analog3.Dat";
        click("Command2");
        QVERIFY2(frame().isVisible(), "what cannot be read is not overwritten");
        click("Command1");
    }
};

KVO_FORM_TEST_MAIN(AnalogSetupTableTest)
#include "analog_setup_table_test.moc"
