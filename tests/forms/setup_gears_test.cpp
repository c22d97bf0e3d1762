// The Data Logger tab of the setup form and its frame "Gears".
#include "core/default_config.h"
#include "setup/setup_values.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/setup_window.h"
#include "tests/forms/support/user_click.h"

#include <QTabBar>

#include <array>

using namespace kvo;
using namespace kvo::platform_qt;
using namespace kvo::testing;
using kvo::forms::SetupSoftware;

namespace {

constexpr std::array<const char*, 6> ratioNames{
    "First_Ratio", "Second_Ratio", "Third_Ratio", "Forth_Ratio", "Fifth_Ratio", "Sixth_Ratio"};
constexpr std::array<const char*, 6> gearNames{
    "First_Label", "Second_Label", "Third_Label", "Fourth_Label", "Fifth_Label", "Sixth_Label"};
constexpr std::array<const char*, 6> boxNames{
    "FirstG", "SecondG", "ThirdG", "ForthG", "FifthG", "SixthG"};
constexpr std::array<const char*, 4> corrections{
    "Engine_Correction", "Clutch_Correction", "Pinion_Correction", "Speed_Correction"};

} // namespace

class SetupGearsTest : public QObject, SetupWindow {
    Q_OBJECT

    // How many gears the labels show, from the first on; -1 where there is a gap.
    int gearsShown() {
        int count = 0;
        for (std::size_t i = 0; i < 6; ++i) {
            if (isShown(ratioNames[i]) != isShown(gearNames[i])) return -1;
            if (isShown(ratioNames[i]) && count != static_cast<int>(i)) return -1;
            count += isShown(ratioNames[i]) ? 1 : 0;
        }
        return count;
    }
    int boxesShown() {
        int count = 0;
        for (const char* name : boxNames) count += isShown(name) ? 1 : 0;
        return count;
    }
    QStringList ratios() {
        QStringList all;
        for (const char* name : ratioNames) all << text(name);
        return all;
    }
    bool frameIsUp() { return part<QWidget>("Edit_Gears").isVisible(); }
    // All members of the lock, or none, are enabled.
    bool allEnabled(bool wanted) {
        const auto widgets = form<SetupSoftware>().findChildren<QWidget*>();
        int seen = 0;
        for (const QWidget* widget : widgets) {
            const std::string name =
                widget->objectName().section(QLatin1Char('('), 0, 0).toStdString();
            const auto& locked = setup::lockedControls;
            if (std::find(locked.begin(), locked.end(), name) == locked.end()) continue;
            ++seen;
            if (widget->isEnabled() != wanted) return false;
        }
        return seen == 17 + 7 + 7; // two of the names are arrays of eight
    }

private slots:
    void init() { begin(); }
    void cleanup() { QCOMPARE(end(), QString()); }

    void showsTheVehicle() {
        config().Weight_F = 2350.5F;
        config().Engine_Correction = 1.256F;
        config().RWheel = 33.1;
        open(dataLogger);
        QCOMPARE(box("Weight_F").text(), QStringLiteral("2350.5"));
        QCOMPARE(box("Wheel").text(), QStringLiteral("25"));
        QCOMPARE(box("RWheel").text(), QStringLiteral("33.1"));
        QCOMPARE(box("Engine_Correction").text(), QStringLiteral("1.26"));
        QCOMPARE(box("Pinion_F").text(), QStringLiteral("10"));
        QCOMPARE(box("Crown_F").text(), QStringLiteral("41"));
        QCOMPARE(text("Gears"), QStringLiteral("2"));
        QCOMPARE(text("First_Ratio"), QStringLiteral("1.80"));
        QCOMPARE(text("Label_Diff_Ratio"), QStringLiteral("Ratio = 4.10"));
        QVERIFY(!isShown("FlowRange"));
    }

    void saveTakesEveryControlOfThePage() {
        open(dataLogger);
        type("Weight_F", QStringLiteral("2000.5"));
        type("Wheel", QStringLiteral("22"));
        type("RWheel", QStringLiteral("30.25"));
        type("Engine_Correction", QStringLiteral("1.5"));
        type("Clutch_Correction", QStringLiteral("2"));
        type("Pinion_Correction", QStringLiteral("2.5"));
        type("Speed_Correction", QStringLiteral("3"));
        type("Pinion_F", QStringLiteral("16"));
        type("Crown_F", QStringLiteral("40 teeth"));
        press("Analog_Check(2)");
        press("SaveSetup");
        QVERIFY(!isOpen());
        const core::AppConfig now = saved();
        QCOMPARE(now.Weight_F, 2000.5F);
        QCOMPARE(now.Wheel, 22.0F);
        QCOMPARE(now.RWheel, 30.25);
        QCOMPARE(now.Engine_Correction, 1.5F);
        QCOMPARE(now.Clutch_Correction, 2.0F);
        QCOMPARE(now.Pinion_Correction, 2.5F);
        QCOMPARE(now.Speed_Correction, 3.0F);
        QCOMPARE(now.Pinion_F, 16.0F);
        QCOMPARE(now.Crown_F, 40.0F);
        QCOMPARE(now.Analog_Check[1], 1);
        QCOMPARE(now.Analog_Check[2], 0);
    }

    void theFlowRangePassesThrough() {
        config().FlowRange = 0.5F;
        open(dataLogger);
        press("SaveSetup");
        QCOMPARE(saved().FlowRange, 0.5F);
    }

    void theFinalDriveFollowsBothBoxes() {
        open(dataLogger);
        type("Pinion_F", QStringLiteral("16"));
        type("Crown_F", QStringLiteral("40"));
        QCOMPARE(text("Label_Diff_Ratio"), QStringLiteral("Ratio = 2.50"));
        type("Crown_F", QString());
        QCOMPARE(text("Label_Diff_Ratio"), QString());
        type("Crown_F", QStringLiteral("40"));
        type("Pinion_F", QStringLiteral("0"));
        QCOMPARE(text("Label_Diff_Ratio"), QString());
    }

    void aCorrectionIsANumberFrom1To5_data() {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<bool>("stays");
        QTest::newRow("the least") << "1.0" << true;
        QTest::newRow("the largest") << "5.00" << true;
        QTest::newRow("above") << "5.01" << false;
        QTest::newRow("below") << "0.99" << false;
        QTest::newRow("no number") << "1.2x" << false;
        QTest::newRow("nothing") << "" << false;
        QTest::newRow("a comma") << "1,5" << false;
    }
    void aCorrectionIsANumberFrom1To5() {
        QFETCH(QString, typed);
        QFETCH(bool, stays);
        open(dataLogger);
        int beeps = 0;
        for (const char* name : corrections) {
            type(name, typed);
            leave();
            QCOMPARE(box(name).text(), stays ? typed : QStringLiteral("1"));
            QCOMPARE(box(name).hasFocus(), !stays);
            beeps += stays ? 0 : 1;
            QCOMPARE(dialogs().beeps(), beeps);
        }
    }

    void aBadCorrectionIsSeenBeforeAnythingElse() {
        for (const char* button : {"SaveSetup", "GearRatios", "AnalogSetup(3)"}) {
            open(dataLogger);
            type("Engine_Correction", QStringLiteral("9"));
            press(button);
            QVERIFY(isOpen());
            QVERIFY(!frameIsUp());
            QCOMPARE(box("Engine_Correction").text(), QStringLiteral("1"));
            QVERIFY(box("Engine_Correction").hasFocus());
            press("CancelSetup");
        }
        QCOMPARE(dialogs().beeps(), 3);
    }

    // A file of zeros: every correction on the way is mended, and none traps the user.
    void zerosAreMendedOneByOne() {
        config() = core::AppConfig();
        config().DriverNo = 1;
        open(dataLogger);
        box("Engine_Correction").setFocus();
        for (int i = 0; i < 4; ++i) {
            leave();
            QCOMPARE(dialogs().beeps(), i + 1);
            leave();
        }
        press("SaveSetup");
        QVERIFY(!isOpen());
        QCOMPARE(saved().Speed_Correction, 1.0F);
    }

    // As the form is locked, no box is judged that the user was never in.
    void aFrameThatComesUpLeavesTheBoxesAlone_data() {
        QTest::addColumn<QByteArray>("button");
        QTest::newRow("gears") << QByteArray("GearRatios");
        QTest::newRow("an analog input") << QByteArray("AnalogSetup(3)");
    }
    void aFrameThatComesUpLeavesTheBoxesAlone() {
        QFETCH(QByteArray, button);
        config() = core::AppConfig();
        config().DriverNo = 1;
        open(dataLogger);
        box("Weight_F").setFocus();
        press(button.constData());
        for (const char* name : corrections) QCOMPARE(box(name).text(), QStringLiteral("0.00"));
        QCOMPARE(dialogs().beeps(), 0);
        QVERIFY(allEnabled(false));
        press(button == "GearRatios" ? "Cancel" : "Command1");
        for (const char* name : corrections) QCOMPARE(box(name).text(), QStringLiteral("0.00"));
        QCOMPARE(dialogs().beeps(), 0);
    }

    void theLabelsShowTheGearsOfTheFile_data() {
        QTest::addColumn<int>("gears");
        QTest::addColumn<int>("shown");
        QTest::addColumn<int>("entry");
        QTest::newRow("none") << 0 << 1 << 0;
        QTest::newRow("below") << -7 << 1 << 0;
        QTest::newRow("one") << 1 << 1 << 0;
        QTest::newRow("four") << 4 << 4 << 3;
        QTest::newRow("six") << 6 << 6 << 5;
        QTest::newRow("seven") << 7 << 5 << 0; // the sixth shows for exactly six
    }
    void theLabelsShowTheGearsOfTheFile() {
        QFETCH(int, gears);
        QFETCH(int, shown);
        QFETCH(int, entry);
        config().Gears = static_cast<std::int16_t>(gears);
        open(dataLogger);
        QCOMPARE(gearsShown(), shown);
        QCOMPARE(text("Gears"), QString::number(gears));
        QCOMPARE(list("Number_Of_Gears").currentIndex(), entry);
        press("SaveSetup");
        QCOMPARE(saved().Gears, gears);
    }

    void theFrameLocksTheFormAndEveryWayOutFreesIt() {
        open(dataLogger);
        QVERIFY(allEnabled(true));
        for (int way = 0; way < 4; ++way) {
            press("GearRatios");
            QVERIFY(frameIsUp());
            QVERIFY(allEnabled(false));
            QVERIFY(list("Number_Of_Gears").hasFocus());
            if (way == 0) press("Ok");
            if (way == 1) press("Cancel");
            if (way == 2) QTest::keyClick(&list("Number_Of_Gears"), Qt::Key_Escape);
            if (way == 3) form<SetupSoftware>().close();
            QVERIFY(isOpen());
            QVERIFY(!frameIsUp());
            QVERIFY(allEnabled(true));
            QVERIFY(part<QWidget>("GearRatios").hasFocus());
        }
    }

    void theFrameOfAnInputLocksTheFormToo() {
        open(dataLogger);
        for (int way = 0; way < 4; ++way) {
            press("AnalogSetup(3)");
            QVERIFY(part<QWidget>("Analog_Setup").isVisible());
            QVERIFY(allEnabled(false));
            if (way == 0) press("Command2");
            if (way == 1) press("Command1");
            if (way == 2) QTest::keyClick(&box("Analog"), Qt::Key_Escape);
            if (way == 3) form<SetupSoftware>().close();
            QVERIFY(isOpen());
            QVERIFY(!part<QWidget>("Analog_Setup").isVisible());
            QVERIFY(allEnabled(true));
            QVERIFY(part<QWidget>("AnalogSetup(3)").hasFocus());
        }
    }

    // No letter of the page stands in the way of one of the frame.
    void theLettersOfTheFrameAreItsOwn() {
        auto& setup = open(dataLogger);
        const std::array<std::pair<Qt::Key, const char*>, 5> keys{
            {{Qt::Key_F, "FirstG"}, {Qt::Key_E, "SecondG"}, {Qt::Key_O, "ForthG"},
                {Qt::Key_X, "SixthG"}, {Qt::Key_N, "Number_Of_Gears"}}};
        press("GearRatios");
        pick("Number_Of_Gears", 5);
        for (const auto& [key, name] : keys) {
            QTest::keyClick(&setup, key, Qt::AltModifier);
            QVERIFY2(part<QWidget>(name).hasFocus(), name);
        }
        QTest::keyClick(&setup, Qt::Key_S, Qt::AltModifier);
        QTRY_VERIFY(!frameIsUp()); // the button moves before it clicks
        QVERIFY(isOpen());
        QTest::keyClick(&setup, Qt::Key_E, Qt::AltModifier);
        QVERIFY(box("Engine_Correction").hasFocus());
    }

    void theFrameIsWholeAndOverTheForm() {
        auto& setup = open(dataLogger);
        press("GearRatios");
        const auto& frame = part<QWidget>("Edit_Gears");
        QVERIFY(setup.rect().contains(frame.geometry()));
        QVERIFY(frame.size() == frame.sizeHint());
        QVERIFY(QRect(frame.geometry().center() - setup.rect().center(), QSize(1, 1))
                    .intersects(QRect(-2, -2, 5, 5)));
    }

    void returnInABoxOfTheFrameSavesTheFrameAlone() {
        open(dataLogger);
        press("GearRatios");
        type("FirstG", QStringLiteral("2.5"));
        QTest::keyClick(&box("FirstG"), Qt::Key_Return);
        QVERIFY(isOpen());
        QVERIFY(!frameIsUp());
        QCOMPARE(text("First_Ratio"), QStringLiteral("2.50"));
        // And outside of it the form again.
        box("Weight_F").setFocus();
        QTest::keyClick(&box("Weight_F"), Qt::Key_Return);
        QVERIFY(!isOpen());
        QCOMPARE(saved().First_Ratio, 2.5);
    }

    void aNumberOfGearsResetsItsOwnBoxAndThoseAbove() {
        open(dataLogger);
        press("GearRatios");
        pick("Number_Of_Gears", 5);
        QCOMPARE(boxesShown(), 6);
        QCOMPARE(box("FirstG").text(), QStringLiteral("1.80"));
        for (const char* name : {"FirstG", "SecondG", "ThirdG", "ForthG", "FifthG", "SixthG"})
            type(name, QStringLiteral("3.33"));
        pick("Number_Of_Gears", 3);
        QCOMPARE(boxesShown(), 4);
        QCOMPARE(box("ThirdG").text(), QStringLiteral("3.33"));
        QCOMPARE(box("ForthG").text(), QStringLiteral("1.00"));
        press("Ok");
        QCOMPARE(text("Gears"), QStringLiteral("4"));
        QCOMPARE(gearsShown(), 4);
    }

    void okTakesTheRatiosAsPicturesAndWordsAsTheyAre() {
        open(dataLogger);
        press("GearRatios");
        list("Number_Of_Gears").setCurrentIndex(2);
        emit list("Number_Of_Gears").activated(2);
        type("FirstG", QStringLiteral("2.345"));
        type("SecondG", QStringLiteral("1.7ab"));
        type("ThirdG", QString());
        press("Ok");
        QCOMPARE(ratios().mid(0, 3), QStringList({"2.35", "1.7ab", ""}));
        press("SaveSetup");
        QCOMPARE(saved().Gears, 3);
        QCOMPARE(saved().First_Ratio, 2.35);
        QCOMPARE(saved().Second_Ratio, 1.7);
        QCOMPARE(saved().Third_Ratio, 0.0);
    }

    // The sixth box takes nothing at the opening.
    void okWithoutATouchOfTheNumberLosesTheSixthRatio() {
        config().Gears = 6;
        config().Sixth_Ratio = 0.75;
        open(dataLogger);
        QCOMPARE(text("Sixth_Ratio"), QStringLiteral("0.75"));
        press("GearRatios");
        QCOMPARE(box("SixthG").text(), QString());
        press("Ok");
        QCOMPARE(text("Sixth_Ratio"), QString());
        press("SaveSetup");
        QCOMPARE(saved().Sixth_Ratio, 0.0);
    }

    void cancelOfTheFrameKeepsTheLabels() {
        open(dataLogger);
        const QStringList before = ratios();
        press("GearRatios");
        pick("Number_Of_Gears", 4);
        type("FirstG", QStringLiteral("9"));
        type("FifthG", QStringLiteral("8"));
        press("Cancel");
        QCOMPARE(ratios(), before);
        QCOMPARE(text("Gears"), QStringLiteral("2"));
        // The boxes take the labels anew, the number stays as it was picked.
        press("GearRatios");
        QCOMPARE(box("FirstG").text(), QStringLiteral("1.80"));
        QCOMPARE(list("Number_Of_Gears").currentIndex(), 4);
        QCOMPARE(boxesShown(), 5);
    }

    void aBoxTakesFiveLetters() {
        open(dataLogger);
        press("GearRatios");
        type("FirstG", QStringLiteral("1.23456"));
        QCOMPARE(box("FirstG").text(), QStringLiteral("1.234"));
    }

    void theNamesOfTheAnalogsStandOnTheirButtons() {
        config().AnalogName[1] = "R&D     ";
        open(dataLogger);
        QCOMPARE(part<QPushButton>("AnalogSetup(1)").text(), QStringLiteral("R&&D"));
        press("SaveSetup");
        QCOMPARE(saved().AnalogName[1], std::string("R&D     "));
    }

    void everyControlIsReachedByTheTabKeyInItsOrder() {
        open(dataLogger);
        box("Weight_F").setFocus();
        QStringList order;
        for (int i = 0; i < 40; ++i) {
            order << QApplication::focusWidget()->objectName();
            leave();
            if (box("Weight_F").hasFocus()) break;
        }
        QStringList wanted{"Weight_F", "Wheel", "RWheel", "Engine_Correction", "Clutch_Correction",
            "Pinion_Correction", "Speed_Correction", "Pinion_F", "Crown_F", "GearRatios"};
        for (int n = 1; n <= 8; ++n) {
            wanted << QStringLiteral("AnalogSetup(%1)").arg(n)
                   << QStringLiteral("Analog_Check(%1)").arg(n);
        }
        wanted << QStringLiteral("SaveSetup") << QStringLiteral("CancelSetup")
               << QStringLiteral("TabStrip1");
        QVERIFY2(order == wanted, qPrintable(order.join(' ')));
    }
};

KVO_FORM_TEST_MAIN(SetupGearsTest)
#include "setup_gears_test.moc"
