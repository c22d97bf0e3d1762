// The captions of the setup and logger forms, letter for letter and blank for blank, without the
// mark of their keys.
#include "core/default_config.h"
#include "link/forms/logger_line.h"
#include "link/forms/pit_run.h"
#include "link/forms/setup_obc.h"
#include "setup/forms/custom_scale.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/setup_window.h"
#include "tests/support/virtual_line.h"
#include "tools/logger_simulator/model_logger.h"

#include <QGroupBox>
#include <QKeySequence>
#include <QMap>
#include <QTabBar>

#include <vector>

using namespace kvo;
using namespace kvo::platform_qt;
using namespace kvo::testing;
using kvo::forms::CustomScale;
using kvo::forms::PitRun;
using kvo::forms::SetupOBC;
using kvo::forms::SetupSoftware;

namespace {

struct Caption {
    const char* control; // by its own text, title, or the label that leads to it
    const char* text;
};

QString withoutKey(QString caption) {
    return caption.replace(QLatin1String("&&"), QLatin1String("\1"))
        .remove(QLatin1Char('&'))
        .replace(QLatin1Char('\1'), QLatin1Char('&'));
}

QString captionOf(const QWidget& form, const char* name) {
    const auto& widget = control<QWidget>(form, name);
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget))
        return withoutKey(button->text());
    if (const auto* group = qobject_cast<const QGroupBox*>(&widget))
        return withoutKey(group->title());
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) return withoutKey(label->text());
    for (const auto* label : form.findChildren<QLabel*>())
        if (label->buddy() == &widget) return withoutKey(label->text());
    return QStringLiteral("no caption");
}

void compareAll(const QWidget& form, const std::vector<Caption>& captions) {
    for (const Caption& caption : captions) {
        QCOMPARE(std::make_pair(caption.control, captionOf(form, caption.control)),
            std::make_pair(caption.control, QString::fromLatin1(caption.text)));
    }
}

// How many labels read so.
int timesSeen(const QWidget& form, const char* text) {
    int seen = 0;
    for (const auto* label : form.findChildren<QLabel*>())
        seen += withoutKey(label->text()) == QLatin1String(text) ? 1 : 0;
    return seen;
}

QStringList entriesOf(const QWidget& form, const char* name) {
    const auto& list = control<QComboBox>(form, name);
    QStringList entries;
    for (int i = 0; i < list.count(); ++i) entries << list.itemText(i);
    return entries;
}

QStringList tabsOf(const QWidget& form, const char* name) {
    const auto& strip = control<QTabBar>(form, name);
    QStringList tabs;
    for (int i = 0; i < strip.count(); ++i) tabs << withoutKey(strip.tabText(i));
    return tabs;
}

} // namespace

class CaptionsTest : public QObject, SetupWindow {
    Q_OBJECT

private slots:
    void init() { begin(); }
    void cleanup() {
        unloadAllForms();
        QCOMPARE(end(), QString());
    }

    void theSetupFormAround() {
        const auto& setup = form<SetupSoftware>();
        compareAll(setup, {{"SaveSetup", "Save"}, {"CancelSetup", "Cancel"}});
        QCOMPARE(tabsOf(setup, "TabStrip1"), (QStringList{"General", "Graph", "Data Logger"}));
    }

    void theGeneralTab() {
        const auto& setup = form<SetupSoftware>();
        compareAll(setup,
            {{"DriverNo", "Serial Number:"}, {"Date_Prompt", "Disable Date Prompt on Download"},
                {"SpeedWheel_Prompt", "Disable Speed Wheel Prompt on Download"},
                {"OptionDownloadMode(0)", "Safe Download Mode"},
                {"OptionDownloadMode(1)", "Fast Download Mode"},
                {"FramePassword", "Log In Password"},
                {"Check_Password", "Enable Password on Startup"},
                {"OPassword", "Enter Old Password:"}, {"NPassword", "New Password:"},
                {"VPassword", "Verify Password:"}});
        QCOMPARE(
            entriesOf(setup, "D_Modal"), (QStringList{"VRN 8", "VRN 12", "VRN 17", "VRN 22 or KVO",
                                             "VRN 23, 25", "VRN 32", "VRN 35, 43"}));
        QCOMPARE(entriesOf(setup, "Vehicle_Type"), (QStringList{"BIKE", "CAR"}));
        QStringList ports;
        for (int port = 1; port <= 16; ++port) ports << QStringLiteral("COM%1").arg(port);
        QCOMPARE(entriesOf(setup, "ComPort"), ports);
    }

    void theCaptionsOfBothVehicles() {
        config().Vehicle_Type = 0;
        compareAll(form<SetupSoftware>(),
            {{"Label_DriverNumber", "Rider Name:"}, {"Pinion_Label", "Output Correction:"},
                {"Weight_Label", "Bike Weight:"}, {"Pteeth_Label", "Output Sprocket:"},
                {"Cteeth_Label", "Rear Wheel Sprocket:"}});
        unload<SetupSoftware>();
        config().Vehicle_Type = 1;
        compareAll(form<SetupSoftware>(),
            {{"Label_DriverNumber", "Driver Name:"}, {"Pinion_Label", "Pinion Correction:"},
                {"Weight_Label", "Vehicle Weight:"}, {"Pteeth_Label", "Pinion:"},
                {"Cteeth_Label", "Crown Wheel:"}});
    }

    void theDataLoggerTab() {
        const auto& setup = form<SetupSoftware>();
        compareAll(setup,
            {{"Wheel", "Speed Wheel Diameter :"}, {"RWheel", "Rear Wheel Diameter :"},
                {"Engine_Correction", "Engine Correction:"},
                {"Clutch_Correction", "Clutch Correction:"},
                {"Speed_Correction", "MPH Correction:"}, {"First_Label", "First:"},
                {"Second_Label", "Second:"}, {"Third_Label", "Third:"}, {"Fourth_Label", "Fourth:"},
                {"Fifth_Label", "Fifth:"}, {"Sixth_Label", "Sixth:"}, {"GearRatios", "Gear Ratios"},
                {"Number_Of_Gears", "Number of Gears:"}, {"Ok", "Save"}, {"Cancel", "Cancel"}});
        for (int n = 1; n <= 8; ++n) {
            const QByteArray check = "Analog_Check(" + QByteArray::number(n) + ')';
            QCOMPARE(captionOf(setup, check.constData()), QStringLiteral("Use on pit run"));
        }
        QCOMPARE(timesSeen(setup, "Range = 1.00 to 5.00"), 4);
        QCOMPARE(timesSeen(setup, "Lbs"), 1);
        QCOMPARE(timesSeen(setup, "In"), 2);
        const auto groups = setup.findChildren<QGroupBox*>();
        QVERIFY(std::any_of(groups.begin(), groups.end(),
            [](const QGroupBox* group) { return group->title() == "Number of Teeth"; }));
    }

    void theGraphTab() {
        const auto& setup = form<SetupSoftware>();
        compareAll(
            setup, {{"MaxRpm", "Max. Eng. Rpm:"}, {"Command3", "Restore Defaults"},
                       {"Label_Range", "Range 0 to 50"}, {"Label_Magnify(0)", "Eng. RPM"},
                       {"Label_Magnify(1)", "Clutch RPM"}, {"Label_Magnify(2)", "Input RPM"},
                       {"Label_Magnify(3)", "Output RPM"}, {"Label_Magnify(4)", "Input Slip"},
                       {"Label_Magnify(5)", "Drive Ratio"}, {"Label_Magnify(6)", "RoCoS"},
                       {"Label_Magnify(24)", "Tyre Growth"}});
        QCOMPARE(
            tabsOf(setup, "TabStrip2"), (QStringList{"Magnify Data", "Raise Scale (0) Point"}));
        QCOMPARE(entriesOf(setup, "G_Res"), (QStringList{"High", "Med", "Low"}));
        QCOMPARE(entriesOf(setup, "MaxRpm"),
            (QStringList{"6000", "7000", "8000", "9000", "10000", "11000", "12000", "13000",
                "14000", "15000", "16000", "17000"}));
        QCOMPARE(entriesOf(setup, "Exhaust"), (QStringList{"Deg C", "Deg F"}));
        const QStringList styles{"Solid", "Dashs", "Dots", "Dash Dot Dash", "Dash Dot Dot"};
        QCOMPARE(entriesOf(setup, "GridStyle"), styles);
        QCOMPARE(entriesOf(setup, "OverlayStyle"), styles);
        QCOMPARE(
            entriesOf(setup, "OverlayColours"), (QStringList{"Same as Graph", "Invert of Graph"}));
        QCOMPARE(entriesOf(setup, "ComboScale(24)"),
            (QStringList{"0%", "1%", "2%", "3%", "4%", "5%", "6%", "7%", "8%", "9%", "10%"}));
    }

    // A letter of the keyboard leads to one control of those on view.
    void noLetterStandsForTwoControls_data() {
        QTest::addColumn<int>("vehicle");
        QTest::addColumn<bool>("withAPassword");
        for (const int vehicle : {0, 1}) {
            for (const bool password : {false, true}) {
                QTest::addRow(
                    "%s, %s password", vehicle == 0 ? "bike" : "car", password ? "a" : "no")
                    << vehicle << password;
            }
        }
    }
    void noLetterStandsForTwoControls() {
        QFETCH(int, vehicle);
        QFETCH(bool, withAPassword);
        config().Vehicle_Type = static_cast<std::uint8_t>(vehicle);
        if (withAPassword) {
            config().Password = "secret";
            config().Check_Password = 1;
        }
        open();
        for (const Tab tab : {general, graph, dataLogger}) {
            goTo(tab);
            QMap<QString, QString> taken;
            const auto count = [&taken](const QWidget& widget, const QString& caption) {
                const QKeySequence letter = QKeySequence::mnemonic(caption);
                if (letter.isEmpty() || !widget.isVisible()) return;
                QVERIFY2(!taken.contains(letter.toString()),
                    qPrintable(caption + " and " + taken.value(letter.toString())));
                taken.insert(letter.toString(), caption);
            };
            const auto& setup = form<SetupSoftware>();
            for (const auto* label : setup.findChildren<QLabel*>())
                if (label->buddy() != nullptr) count(*label, label->text());
            for (const auto* button : setup.findChildren<QAbstractButton*>())
                count(*button, button->text());
            QVERIFY(taken.size() > 3);
        }
    }

    void theEditorOfAnAnalogInput() {
        auto& setup = form<SetupSoftware>();
        emit control<QPushButton>(setup, "AnalogSetup(1)").clicked();
        compareAll(setup,
            {{"Txt_Analog", "Analog 1 Name:"}, {"Zero", "Number required to Zero Reading:"},
                {"SmoothOption", "Smooth Graph Line"}, {"Fuel_Combo", "Fuel Type"},
                {"Sensor_Combo", "Sensor Model Number"}, {"Command2", "Ok"}, {"Command1", "Cancel"},
                {"Label32(1)", "0.5 v ="}, {"Label32(2)", "1.0 v ="}, {"Label32(10)", "5.0 v ="}});
    }

    void theLoggersOwnSettings() {
        simulator::ModelLogger logger(25);
        VirtualLine line(logger);
        link::LoggerLink link(line, line, dialogs());
        forms::useLoggerLink(&link);
        const auto& obc = form<SetupOBC>();
        QCOMPARE(obc.windowTitle(), QStringLiteral("Configure On Board Computer"));
        compareAll(obc, {{"Label_RoRpm", "Record on RPM ="},
                            {"Label_GR1", "Motorcycle Crankshaft Reduction Gear teeth       ="},
                            {"Label_GR2", "Motorcycle Clutch Basket Reduction Gear teeth ="},
                            {"ComboPPR(0)", "Engine Digital Pickups per Rev ="},
                            {"ComboPPR(1)", "Input Shaft     Pickups per Rev ="},
                            {"ComboPPR(2)", "Output Shaft   Pickups per Rev ="},
                            {"ComboPPR(3)", "Front Wheel    Pickups per Rev ="},
                            {"Label_PreStartRPM", "Pre Launch RPM threshold is"},
                            {"Label_MR1", "Shift Light threshold is set to"},
                            {"Label_MR2", "Shift Light threshold changes to"},
                            {"Label_MR3", "Shift Light threshold changes to"},
                            {"Label_MR4", "Shift Light threshold changes to"},
                            {"SaveSetup", "Save"}, {"CancelSetup", "Cancel"}});
        for (const char* caption : {"Data Type:", "Model:", "Software Version:", "Memory Type:",
                 "Serial Number :", "@  [ 0.00     ]  sec."})
            QCOMPARE(std::make_pair(caption, timesSeen(obc, caption)), std::make_pair(caption, 1));
        QCOMPARE(timesSeen(obc, "sec."), 3);
        unloadAllForms();
        forms::useLoggerLink(nullptr);
    }

    void thePitRun() {
        simulator::ModelLogger logger(25);
        VirtualLine line(logger);
        link::LoggerLink link(line, line, dialogs());
        forms::useLoggerLink(&link);
        config().LoggerDataType = 25;
        const auto& pitRun = form<PitRun>();
        QCOMPARE(pitRun.windowTitle(), QStringLiteral("Pit Run"));
        compareAll(
            pitRun, {{"Command1", "Start"}, {"BTN_Ok", "Cancel"}, {"Temps_Label", "Exhaust Temps"},
                        {"StatusLabel(0)", "Trans Brake"}, {"StatusLabel(1)", "Wide Open Throttle"},
                        {"StatusLabel(2)", "Shift Light"}, {"StatusLabel(3)", "Dyna Two Step"}});
        for (const char* caption : {"Sample:", "Clutch RPM:", "Pinion RPM:", "Mph:"})
            QCOMPARE(
                std::make_pair(caption, timesSeen(pitRun, caption)), std::make_pair(caption, 1));
        unloadAllForms();
        forms::useLoggerLink(nullptr);
    }

    void theSizeOfTheGraph() {
        const auto& custom = form<CustomScale>();
        QCOMPARE(custom.windowTitle(), QStringLiteral("Custom Scale"));
        compareAll(custom, {{"Slider1", "Height :"}, {"Slider2", "Width :"}});
        QCOMPARE(timesSeen(custom, "X"), 2);
    }
};

KVO_FORM_TEST_MAIN(CaptionsTest)
#include "captions_test.moc"
