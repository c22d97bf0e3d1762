// SetupSoftware: its tabs, the General page, the password, and both ways to leave it.
#include "core/config.h"
#include "core/default_config.h"
#include "core/forms/doors.h"
#include "setup/models.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/setup_window.h"
#include "tests/forms/support/user_click.h"

#include <QAbstractItemView>
#include <QGroupBox>
#include <QTabBar>

using namespace kvo;
using namespace kvo::platform_qt;
using namespace kvo::testing;
using kvo::forms::SetupSoftware;

namespace {

constexpr int critical = 16;
constexpr const char* blankPassword =
    "You can't have a blank password\n\nRe-Enter your Password and try again.";

} // namespace

class SetupSoftwareTest : public QObject, SetupWindow {
    Q_OBJECT

    void withPassword(const char* password) {
        config().Password = password;
        config().Check_Password = 1;
    }

private slots:
    void init() { begin(); }
    void cleanup() { QCOMPARE(end(), QString()); }

    void eachTabShowsThePageOfItsName() {
        open();
        auto& tabs = part<QTabBar>("TabStrip1");
        const std::array<const char*, 3> names{"General", "Graph", "Data_Logger"};
        const std::array<const char*, 3> captions{"General", "Graph", "Data Logger"};
        for (int tab : {2, 0, 1}) {
            goTo(static_cast<Tab>(tab));
            QCOMPARE(tabs.tabText(tab), QLatin1String(captions.at(static_cast<std::size_t>(tab))));
            for (int page = 0; page < 3; ++page) {
                QCOMPARE(part<QWidget>(names.at(static_cast<std::size_t>(page))).isVisible(),
                    page == tab);
            }
        }
    }

    void theFirstLettersAreTheDriversName() {
        auto& setup = open();
        QVERIFY(box("Driver").hasFocus());
        QTest::keyClicks(setup.focusWidget(), QStringLiteral("Ann"));
        QCOMPARE(box("Driver").text(), QStringLiteral("Ann"));
    }

    void theKeysOfATabbedWindowTurnThePages() {
        auto& setup = open();
        auto& tabs = part<QTabBar>("TabStrip1");
        QTest::keyClick(&setup, Qt::Key_Tab, Qt::ControlModifier);
        QCOMPARE(tabs.currentIndex(), 1);
        QTest::keyClick(&setup, Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(tabs.currentIndex(), 0);
        QTest::keyClick(&setup, Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(tabs.currentIndex(), 2);
        QVERIFY(part<QWidget>("Data_Logger").isVisible());
        press("GearRatios");
        QTest::keyClick(&setup, Qt::Key_Tab, Qt::ControlModifier);
        QCOMPARE(tabs.currentIndex(), 2); // the form is locked
        press("Cancel");
        QTest::keyClick(&setup, Qt::Key_Tab, Qt::ControlModifier);
        QCOMPARE(tabs.currentIndex(), 0);
    }

    void theListsHoldWhatCanBeChosen() {
        open();
        QCOMPARE(list("D_Modal").count(), 7);
        QCOMPARE(list("D_Modal").itemText(3), QStringLiteral("VRN 22 or KVO"));
        QCOMPARE(list("ComPort").count(), 16);
        QCOMPARE(list("ComPort").itemText(0), QStringLiteral("COM1"));
        QCOMPARE(list("ComPort").itemText(15), QStringLiteral("COM16"));
        QCOMPARE(list("Vehicle_Type").itemText(0), QStringLiteral("BIKE"));
        QCOMPARE(list("Vehicle_Type").itemText(1), QStringLiteral("CAR"));
        QCOMPARE(part<QPushButton>("But_FindComm").text(), QStringLiteral("&Find Comm Port"));
        QCOMPARE(part<QGroupBox>("FramePassword").title(), QStringLiteral("Log In Password"));
    }

    void showsTheConfiguration() {
        config().Driver = "Somebody Else            ";
        config().DriverNo = 1234;
        config().LoggerDataType = 43;
        config().CommPort = 16;
        config().Vehicle_Type = 0;
        config().Date_Prompt = 1;
        config().SpeedWheel_Prompt = 1;
        config().CheckBits = {-1, 0};
        open();
        QCOMPARE(box("Driver").text(), QStringLiteral("Somebody Else"));
        QCOMPARE(box("DriverNo").text(), QStringLiteral("1234"));
        QCOMPARE(list("D_Modal").currentText(), QStringLiteral("VRN 35, 43"));
        QCOMPARE(list("ComPort").currentText(), QStringLiteral("COM16"));
        QCOMPARE(list("Vehicle_Type").currentText(), QStringLiteral("BIKE"));
        QVERIFY(tick("Date_Prompt").isChecked());
        QVERIFY(tick("SpeedWheel_Prompt").isChecked());
        QVERIFY(part<QRadioButton>("OptionDownloadMode(0)").isChecked());
        QVERIFY(!part<QRadioButton>("OptionDownloadMode(1)").isChecked());
    }

    void saveWritesWhatTheFormWasOpenedWith() {
        program().state.ConfigKnown = false;
        open();
        press("SaveSetup");
        QVERIFY(!isOpen());
        core::AppConfig wanted;
        QVERIFY(core::decodeConfig(core::encodeConfig(core::defaultConfig()), wanted));
        QVERIFY(saved() == wanted);
        QVERIFY(program().state.ConfigKnown);
        QVERIFY(!kept<SetupSoftware>().DialogCancelled);
    }

    void saveTakesEveryControlOfThePage() {
        int pictures = 0;
        forms::doors().loadLogo = [&] {
            ++pictures;
            QCOMPARE(config().Vehicle_Type, 0); // the picture is of the vehicle that was chosen
        };
        open();
        type("Driver", QStringLiteral("Ann"));
        type("DriverNo", QStringLiteral("77"));
        pick("D_Modal", 4);
        pick("Vehicle_Type", 0);
        pick("ComPort", 2);
        press("OptionDownloadMode(0)");
        press("Date_Prompt");
        press("SpeedWheel_Prompt");
        press("SaveSetup");
        QVERIFY(!isOpen());
        const core::AppConfig now = saved();
        QCOMPARE(now.Driver, std::string("Ann                      "));
        QCOMPARE(now.DriverNo, 77);
        QCOMPARE(now.LoggerDataType, 25); // also for a logger 23
        QCOMPARE(now.Vehicle_Type, 0);
        QCOMPARE(now.CommPort, 3);
        QVERIFY((now.CheckBits == std::array<std::int16_t, 2>{-1, 0}));
        QCOMPARE(now.Date_Prompt, 1);
        QCOMPARE(now.SpeedWheel_Prompt, 1);
        QCOMPARE(pictures, 1);
    }

    void cancelWritesNothing_data() {
        QTest::addColumn<int>("way");
        QTest::newRow("the button") << 0;
        QTest::newRow("Escape") << 1;
        QTest::newRow("the window's own button") << 2;
    }
    void cancelWritesNothing() {
        QFETCH(int, way);
        open();
        type("Driver", QStringLiteral("Nobody"));
        if (way == 0) press("CancelSetup");
        if (way == 1) QTest::keyClick(&box("Driver"), Qt::Key_Escape);
        if (way == 2) form<SetupSoftware>().close();
        QVERIFY(!isOpen());
        QVERIFY(!program().files.exists("/kvo/Kvo.Cfg"));
        QVERIFY(config() == core::defaultConfig());
        QVERIFY(kept<SetupSoftware>().DialogCancelled);
    }

    void aSaveTakesBackWhatACancelLeft() {
        open();
        press("CancelSetup");
        QVERIFY(kept<SetupSoftware>().DialogCancelled);
        open();
        press("SaveSetup");
        QVERIFY(!isOpen());
        QVERIFY(!kept<SetupSoftware>().DialogCancelled);
    }

    // By the mouse, which puts a caret of its own.
    void aClickIntoABoxSelectsItsWholeText() {
        config().Driver = "Somebody";
        config().DriverNo = 77;
        open();
        const std::array<std::pair<Tab, QStringList>, 3> boxes{
            {{general, {"DriverNo", "Driver"}}, {graph, {}},
                {dataLogger, {"Engine_Correction", "Clutch_Correction", "Pinion_Correction",
                                 "Speed_Correction", "Crown_F", "Pinion_F", "RWheel", "Weight_F",
                                 "Wheel"}}}};
        const auto click = [this](const QString& name) {
            QLineEdit& edit = box(qPrintable(name));
            QVERIFY(!edit.text().isEmpty());
            const QString problem = userClick(&edit);
            QVERIFY2(problem.isEmpty(), qPrintable(name + problem));
            QVERIFY2(edit.hasFocus(), qPrintable(name));
            QCOMPARE(edit.selectedText(), edit.text());
        };
        for (const auto& [tab, names] : boxes) {
            goTo(tab);
            for (const QString& name : names) click(name);
        }
        goTo(graph);
        for (const int channel : {4, 5, 6, 8, 16, 24})
            click(QStringLiteral("Text_Magnify(%1)").arg(channel));
        goTo(dataLogger);
        press("AnalogSetup(1)");
        box("Analog").setText(QStringLiteral("Oil"));
        list("Analog_Type").setCurrentIndex(0);
        for (const char* name : {"AFactor", "Zero", "Analog"}) click(QLatin1String(name));
        list("Analog_Type").setCurrentIndex(2);
        QCoreApplication::processEvents(); // the frame grows
        for (int point = 1; point <= 10; ++point) click(QStringLiteral("Text9(%1)").arg(point));
        press("Command1");
    }

    void returnSavesAndTheNextOpeningShowsIt() {
        open();
        type("Driver", QStringLiteral("Bob"));
        QTest::keyClick(&box("Driver"), Qt::Key_Return);
        QVERIFY(!isOpen());
        open();
        QCOMPARE(box("Driver").text(), QStringLiteral("Bob"));
    }

    void aFullDiskIsToldAndTheFormKeepsItsEntries() {
        program().files.failWrites("/kvo", MemoryFiles::Failure::fullDisk, 1);
        open();
        type("Driver", QStringLiteral("Carol"));
        auto& told = dialogs().expectBoxTitled("Kvo");
        told.style = critical;
        told.contains = "could NOT be saved";
        press("SaveSetup");
        QVERIFY(isOpen());
        QCOMPARE(box("Driver").text(), QStringLiteral("Carol"));
        QVERIFY(part<QPushButton>("SaveSetup").isEnabled());
        press("SaveSetup");
        QVERIFY(!isOpen());
        QVERIFY(saved().Driver.starts_with("Carol "));
    }

    // The user has fixed the settings by the file itself.
    void aFileThatIsReadOnlyStaysWithoutAWord() {
        program().putConfig();
        const auto before = program().files.read("/kvo/Kvo.Cfg");
        program().files.failWrites("/kvo/Kvo.Cfg", MemoryFiles::Failure::readOnly);
        open();
        type("Driver", QStringLiteral("Dora"));
        press("SaveSetup");
        QVERIFY(!isOpen());
        QVERIFY(program().files.read("/kvo/Kvo.Cfg") == before);
    }

    void aModelTakesEffectAsTheFocusLeavesTheList() {
        open();
        list("D_Modal").setFocus();
        QTest::keyClick(&list("D_Modal"), Qt::Key_Home); // VRN 8
        QVERIFY(isShown("AnalogSetup(8)"));
        leave();
        QVERIFY(!isShown("AnalogSetup(8)"));
    }

    void eachModelOffersItsAnalogs_data() {
        QTest::addColumn<int>("model");
        QTest::addColumn<int>("analogs");
        QTest::addColumn<int>("type");
        QTest::newRow("VRN 8") << 0 << 4 << 8;
        QTest::newRow("VRN 12") << 1 << 4 << 12;
        QTest::newRow("VRN 17") << 2 << 8 << 17;
        QTest::newRow("VRN 22 or KVO") << 3 << 6 << 20;
        QTest::newRow("VRN 23, 25") << 4 << 8 << 25;
        QTest::newRow("VRN 32") << 5 << 8 << 32;
        QTest::newRow("VRN 35, 43") << 6 << 8 << 43;
    }
    void eachModelOffersItsAnalogs() {
        QFETCH(int, model);
        QFETCH(int, analogs);
        QFETCH(int, type);
        for (const int before : {0, 5}) {
            open();
            pick("D_Modal", before);
            pick("D_Modal", model);
            for (int n = 1; n <= 8; ++n) {
                for (const char* name : {"Text", "AnalogSetup", "Analog_Check"}) {
                    const QString member = QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(n);
                    QCOMPARE(isShown(qPrintable(member)), n <= analogs);
                }
            }
            press("SaveSetup");
            QCOMPARE(saved().LoggerDataType, type);
            // The next opening maps back.
            open();
            QCOMPARE(list("D_Modal").currentIndex(), model);
            press("CancelSetup");
        }
    }

    void aTypeOfNoModelIsKept() {
        config().LoggerDataType = 23;
        open();
        QCOMPARE(list("D_Modal").currentIndex(), -1);
        press("SaveSetup");
        QCOMPARE(saved().LoggerDataType, 23);
    }

    void aModelWithABatteryNamesChannel6() {
        config().Analog_Type[6] = 2;
        config().AnalogOffset[6] = 3;
        open();
        pick("D_Modal", 3);
        press("SaveSetup");
        const core::AppConfig now = saved();
        QCOMPARE(now.AnalogName[6], std::string("Battery "));
        QCOMPARE(now.Analog_Type[6], 0);
        QCOMPARE(now.AnalogScale[6], 0.1F);
        QCOMPARE(now.Decimals[6], 1);
        QCOMPARE(now.AnalogOffset[6], 0.0F);
    }

    void theCaptionsAreThoseOfTheVehicle() {
        open(); // a car
        QCOMPARE(text("Label_DriverNumber"), QStringLiteral("Driver Name:"));
        QCOMPARE(text("Pinion_Label"), QStringLiteral("Pinion Correction:"));
        QCOMPARE(text("Weight_Label"), QStringLiteral("Vehicle Weight:"));
        QCOMPARE(text("Pteeth_Label"), QStringLiteral("Pinion:"));
        QCOMPARE(text("Cteeth_Label"), QStringLiteral("Crown Wheel:"));
        list("Vehicle_Type").setFocus();
        QTest::keyClick(&list("Vehicle_Type"), Qt::Key_Up);
        QCOMPARE(text("Weight_Label"), QStringLiteral("Vehicle Weight:"));
        leave();
        QCOMPARE(text("Label_DriverNumber"), QStringLiteral("Rider Name:"));
        QCOMPARE(text("Pinion_Label"), QStringLiteral("Output Correction:"));
        QCOMPARE(text("Weight_Label"), QStringLiteral("Bike Weight:"));
        QCOMPARE(text("Pteeth_Label"), QStringLiteral("Output Sprocket:"));
        QCOMPARE(text("Cteeth_Label"), QStringLiteral("Rear Wheel Sprocket:"));
    }

    void aPortThatIsNoneIsNotSelectedAndKept() {
        config().CommPort = 0;
        open();
        QCOMPARE(list("ComPort").currentIndex(), -1);
        press("SaveSetup");
        QCOMPARE(saved().CommPort, 0);
    }

    void theSerialNumberIsAboveZero_data() {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<bool>("stays");
        QTest::newRow("a number") << "12" << true;
        QTest::newRow("a number and words") << "12 bought 2001" << true;
        QTest::newRow("zero") << "0" << false;
        QTest::newRow("below") << "-3" << false;
        QTest::newRow("no number") << "twelve" << false;
        QTest::newRow("nothing") << "" << false;
    }
    void theSerialNumberIsAboveZero() {
        QFETCH(QString, typed);
        QFETCH(bool, stays);
        open();
        type("DriverNo", typed);
        leave();
        QCOMPARE(box("DriverNo").text(), stays ? typed : QString());
        QCOMPARE(box("DriverNo").hasFocus(), !stays);
        QCOMPARE(dialogs().beeps(), 0);
    }

    // The click on Save, the tab and Return all leave the box first.
    void aBadSerialNumberIsSeenBeforeASave() {
        for (int way = 0; way < 3; ++way) {
            open();
            type("DriverNo", QStringLiteral("none"));
            if (way == 0) press("SaveSetup");
            if (way == 1) goTo(dataLogger);
            if (way == 2) QTest::keyClick(&box("DriverNo"), Qt::Key_Return);
            QVERIFY(isOpen());
            QVERIFY(part<QWidget>("General").isVisible());
            QCOMPARE(part<QTabBar>("TabStrip1").currentIndex(), 0);
            QVERIFY(box("DriverNo").hasFocus());
            QCOMPARE(box("DriverNo").text(), QString());
            press("CancelSetup"); // and Cancel is never in the way
            QVERIFY(!isOpen());
        }
        QVERIFY(!program().files.exists("/kvo/Kvo.Cfg"));
    }

    void aNumberThatDoesNotFitIsToldAndShown() {
        open();
        type("DriverNo", QStringLiteral("32768"));
        goTo(dataLogger);
        auto& told = dialogs().expectBoxTitled("Kvo");
        told.style = critical;
        told.contains = "\"Serial Number:\" is not a number that can be saved";
        press("SaveSetup");
        QVERIFY(isOpen());
        QVERIFY(!program().files.exists("/kvo/Kvo.Cfg"));
        QVERIFY(part<QWidget>("General").isVisible());
        QCOMPARE(part<QTabBar>("TabStrip1").currentIndex(), 0);
        QVERIFY(box("DriverNo").hasFocus());
        QCOMPARE(box("DriverNo").text(), QStringLiteral("32768"));
    }

    void aNewPasswordIsTakenWhenBothBoxesAgree() {
        open();
        QVERIFY(isShown("NPassword") && isShown("VPassword") && !isShown("OPassword"));
        press("Check_Password");
        type("NPassword", QStringLiteral("secret  "));
        type("VPassword", QStringLiteral("secret"));
        press("SaveSetup");
        QVERIFY(!isOpen());
        QCOMPARE(saved().Password, std::string("secret"));
        QCOMPARE(saved().Check_Password, 1);
    }

    void theMaskedBoxesShowNumberSigns() {
        open();
        type("VPassword", QStringLiteral("abc"));
        QCOMPARE(box("VPassword").displayText(), QStringLiteral("###"));
        QCOMPARE(box("VPassword").maxLength(), 25);
        QCOMPARE(box("OPassword").maxLength(), 25);
        QCOMPARE(box("OPassword").echoMode(), QLineEdit::Password);
        type("NPassword", QStringLiteral("abc"));
        QCOMPARE(box("NPassword").displayText(), QStringLiteral("abc"));
    }

    void aBlankPasswordIsRefused() {
        open();
        press("Check_Password");
        type("NPassword", QStringLiteral("   "));
        dialogs().expectBox(blankPassword, critical, "Kvo");
        press("SaveSetup");
        QVERIFY(isOpen());
        QVERIFY(!program().files.exists("/kvo/Kvo.Cfg"));
    }

    void aMismatchPrintsBothAndKeepsTheForm() {
        open();
        type("Driver", QStringLiteral("Eve"));
        press("Check_Password");
        type("NPassword", QString::fromUtf8("münchen"));
        type("VPassword", QStringLiteral("Other"));
        dialogs().expectBox("The passwords you entered are not the same.\n\nmünchen\nOther\n\n"
                            "Re-Enter your Password and try again.",
            critical, "Kvo");
        press("SaveSetup");
        QVERIFY(isOpen());
        QVERIFY(config() == core::defaultConfig());
        QCOMPARE(box("Driver").text(), QStringLiteral("Eve"));
        QCOMPARE(box("VPassword").text(), QStringLiteral("Other"));
    }

    void aRefusedSaveHasChangedTheBatteryChannelAlready() {
        open();
        pick("D_Modal", 3);
        press("Check_Password");
        dialogs().expectBox(blankPassword, critical, "Kvo");
        press("SaveSetup");
        QCOMPARE(config().AnalogScale[6], 0.1F);
        QCOMPARE(config().LoggerDataType, 32);
        QCOMPARE(part<QPushButton>("AnalogSetup(6)").text(), QStringLiteral("Battery"));
    }

    void withAPasswordInForceASaveIsRefused() {
        withPassword("secret");
        open();
        QVERIFY(isShown("OPassword") && !isShown("NPassword") && !isShown("VPassword"));
        QVERIFY(tick("Check_Password").isChecked() && !tick("Check_Password").isEnabled());
        dialogs().expectBox(blankPassword, critical, "Kvo");
        press("SaveSetup");
        QVERIFY(isOpen());
    }

    void theOldPasswordGivesTheWayToANewOneFree() {
        withPassword("secret");
        open();
        type("OPassword", QStringLiteral("Secret"));
        QVERIFY(!tick("Check_Password").isEnabled());
        QVERIFY(!box("NPassword").isEnabled() && !box("VPassword").isEnabled());
        type("OPassword", QStringLiteral("secret"));
        QVERIFY(tick("Check_Password").isEnabled());
        QVERIFY(box("NPassword").isEnabled() && box("VPassword").isEnabled());
        QVERIFY(!isShown("NPassword") && !isShown("VPassword"));
        press("Check_Password");
        press("SaveSetup");
        QVERIFY(!isOpen());
        QCOMPARE(saved().Check_Password, 0);
        QCOMPARE(saved().Password, std::string("secret"));
        open();
        QVERIFY(isShown("NPassword") && isShown("VPassword") && !isShown("OPassword"));
        press("Check_Password");
        type("NPassword", QStringLiteral("new"));
        type("VPassword", QStringLiteral("new"));
        press("SaveSetup");
        QCOMPARE(saved().Password, std::string("new"));
    }

    void anotherLetterInTheOldPasswordLocksTheBoxesAgain() {
        withPassword("secret");
        open();
        type("OPassword", QStringLiteral("secretX"));
        QVERIFY(!box("NPassword").isEnabled());
        QVERIFY(tick("Check_Password").isEnabled()); // once free, it stays
    }

    void aTickedBoxWithoutAPasswordIsClearedOnOpening() {
        config().Check_Password = 1;
        config().Password = "   ";
        open();
        QVERIFY(!tick("Check_Password").isChecked());
        QVERIFY(tick("Check_Password").isEnabled());
        QVERIFY(isShown("NPassword"));
    }

    void theFormSaysThatThePasswordProtectsNothing() {
        open();
        const auto labels = part<QGroupBox>("FramePassword").findChildren<QLabel*>();
        const bool said = std::any_of(labels.begin(), labels.end(), [](const QLabel* label) {
            return label->text() == QStringLiteral(
                                        "Stored readable in Kvo.Cfg. It keeps others from changing "
                                        "things by mistake; it protects nothing.");
        });
        QVERIFY(said);
    }

    void theSearchChangesTheListAlone() {
        forms::doors().findLoggerPort = [] { return std::optional(7); };
        open();
        press("But_FindComm");
        QCOMPARE(list("ComPort").currentIndex(), 6);
        QCOMPARE(config().CommPort, 1);
        forms::doors().findLoggerPort = [] { return std::optional<int>(); };
        press("But_FindComm");
        QCOMPARE(list("ComPort").currentIndex(), 6);
        press("SaveSetup");
        QCOMPARE(saved().CommPort, 7);
    }

    void theListOfPortsSaysWhatIsBehindEach() {
        int looks = 0;
        forms::doors().describePorts = [&] {
            ++looks;
            std::vector<std::string> lines(16, "COM: no device");
            lines[4] = "COM5: /dev/ttyUSB0, free";
            return lines;
        };
        open();
        QCOMPARE(looks, 0); // nothing is opened until somebody looks
        list("ComPort").showPopup();
        QCOMPARE(looks, 1);
        QCOMPARE(list("ComPort").itemData(4, Qt::ToolTipRole).toString(),
            QStringLiteral("COM5: /dev/ttyUSB0, free"));
        list("ComPort").hidePopup();
    }

    void everyControlIsReachedByTheTabKeyInItsOrder() {
        open();
        box("Driver").setFocus();
        QStringList order;
        for (int i = 0; i < 30; ++i) {
            order << QApplication::focusWidget()->objectName();
            leave();
            if (box("Driver").hasFocus()) break;
        }
        const QStringList wanted{"Driver", "Vehicle_Type", "D_Modal", "DriverNo", "ComPort",
            "But_FindComm", "OptionDownloadMode(0)", "Date_Prompt", "SpeedWheel_Prompt",
            "Check_Password", "NPassword", "VPassword", "SaveSetup", "CancelSetup", "TabStrip1"};
        QVERIFY2(order == wanted, qPrintable(order.join(' ')));
    }

    void everyBoxHasANameForAssistiveTools() {
        open();
        const auto widgets = form<SetupSoftware>().findChildren<QWidget*>();
        for (const QWidget* widget : widgets) {
            const bool box = qobject_cast<const QLineEdit*>(widget) != nullptr ||
                             qobject_cast<const QComboBox*>(widget) != nullptr;
            if (!box || widget->objectName().startsWith(QLatin1String("qt_"))) continue;
            if (widget->objectName() == QLatin1String("FlowRange")) continue; // never shown
            const auto labels = form<SetupSoftware>().findChildren<QLabel*>();
            const bool named =
                !widget->accessibleName().isEmpty() ||
                std::any_of(labels.begin(), labels.end(),
                    [widget](const QLabel* label) { return label->buddy() == widget; });
            QVERIFY2(named, qPrintable(widget->objectName()));
        }
    }
};

KVO_FORM_TEST_MAIN(SetupSoftwareTest)
#include "setup_software_test.moc"
