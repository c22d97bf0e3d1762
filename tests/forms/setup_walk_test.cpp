// The setup form on a long seeded walk of settings, and on the texts of an enemy: what it saves
// loads back to the same controls, and what it does not save is told and stays in its boxes.
#include "core/basic/format.h"
#include "core/config.h"
#include "core/default_config.h"
#include "platform/text.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/setup_window.h"

#include <QMap>

#include <random>

using namespace kvo;
using namespace kvo::platform_qt;
using namespace kvo::testing;
using kvo::forms::SetupSoftware;

namespace {

// Takes every box and remembers how many came.
class PatientDialogs : public ScriptedDialogs {
public:
    platform::Reply messageBox(const std::string&, int, const std::string&) override {
        ++boxes;
        return platform::Reply::ok;
    }
    int boxes = 0;
};

bool isInput(const QWidget& widget) {
    const QString name = widget.objectName();
    if (name.isEmpty() || name.startsWith(QLatin1String("qt_"))) return false;
    if (name == QLatin1String("FlowRange")) return false; // out of the user's reach
    for (const QWidget* above = widget.parentWidget(); above; above = above->parentWidget()) {
        if (above->objectName() == QLatin1String("Edit_Gears") ||
            above->objectName() == QLatin1String("Analog_Setup") ||
            above->objectName() == QLatin1String("FramePassword")) {
            return false;
        }
    }
    return true;
}

// What every control of the editor of an analog input reads; the points only where they are kept.
QMap<QString, QString> editorOf(const SetupSoftware& setup) {
    QMap<QString, QString> all;
    const auto& frame = control<QFrame>(setup, "Analog_Setup");
    for (const auto* list : frame.findChildren<QComboBox*>())
        all[list->objectName()] = QString::number(list->currentIndex());
    for (const auto* box : frame.findChildren<QLineEdit*>())
        if (!box->objectName().startsWith(QLatin1String("qt_")))
            all[box->objectName()] = box->text();
    all[QStringLiteral("SmoothOption")] =
        QString::number(control<QCheckBox>(frame, "SmoothOption").isChecked());
    return all;
}

// The members of an array are alike: two of them stand for all.
bool isAlone(const QString& name) {
    return !name.contains(QLatin1Char('(')) || name.endsWith(QLatin1String("(4)")) ||
           name.endsWith(QLatin1String("(24)"));
}

// What every control of the form reads, by its name.
QMap<QString, QString> controlsOf(const SetupSoftware& setup) {
    QMap<QString, QString> all;
    for (const auto* box : setup.findChildren<QLineEdit*>())
        if (isInput(*box)) all[box->objectName()] = box->text();
    for (const auto* list : setup.findChildren<QComboBox*>())
        if (isInput(*list)) all[list->objectName()] = QString::number(list->currentIndex());
    for (const auto* button : setup.findChildren<QAbstractButton*>())
        if (isInput(*button) && button->isCheckable())
            all[button->objectName()] = QString::number(button->isChecked());
    for (const char* name : {"Gears", "First_Ratio", "Second_Ratio", "Third_Ratio", "Forth_Ratio",
             "Fifth_Ratio", "Sixth_Ratio", "Label_Diff_Ratio", "Pteeth_Label"}) {
        all[QLatin1String(name)] = control<QLabel>(setup, name).text();
    }
    return all;
}

} // namespace

class SetupWalkTest : public QObject, SetupWindow {
    Q_OBJECT

    std::mt19937 m_random{20261115};
    int number(int from, int to) { return std::uniform_int_distribution<int>(from, to)(m_random); }
    QString decimal(double from, double to, const char* picture) {
        const double value = std::uniform_real_distribution<double>(from, to)(m_random);
        return QString::fromStdString(core::Format(value, picture));
    }
    QString letters(int most) {
        QString text;
        for (int i = number(0, most); i > 0; --i) {
            const auto byte = static_cast<char>(number(0x21, 0xFF));
            text += QString::fromLatin1(&byte, 1).at(0).unicode() < 0x7F ||
                            static_cast<unsigned char>(byte) >= 0xA0
                        ? QString::fromLatin1(&byte, 1)
                        : QStringLiteral("x");
        }
        return text;
    }

    // A text that the box shows in just this way when it is loaded.
    QString textFor(const QString& name) {
        if (name == QLatin1String("Driver")) return letters(25);
        if (name == QLatin1String("DriverNo")) return QString::number(number(1, 32767));
        if (name.endsWith(QLatin1String("_Correction"))) return decimal(1, 5, "0.00");
        if (name.startsWith(QLatin1String("Text_Magnify"))) return QString::number(number(0, 50));
        return QString::number(number(0, 999999) / 100.0);
    }
    static void put(QLineEdit& box, const QString& text) {
        box.clear();
        box.insert(text);
    }
    void setEverything(SetupSoftware& setup) {
        for (auto* box : setup.findChildren<QLineEdit*>())
            if (isInput(*box)) put(*box, textFor(box->objectName()));
        for (auto* list : setup.findChildren<QComboBox*>())
            if (isInput(*list)) list->setCurrentIndex(number(0, list->count() - 1));
        for (auto* button : setup.findChildren<QAbstractButton*>())
            if (isInput(*button) && button->isCheckable()) button->setChecked(number(0, 1) == 1);
        setGears(setup);
        setPassword();
    }
    void setGears(SetupSoftware& setup) {
        emit control<QPushButton>(setup, "GearRatios").clicked();
        auto& gears = list("Number_Of_Gears");
        const int entry = number(0, 5);
        gears.setCurrentIndex(entry);
        emit gears.activated(entry);
        int gear = 0;
        for (const char* name : {"FirstG", "SecondG", "ThirdG", "ForthG", "FifthG", "SixthG"}) {
            if (gear++ <= entry) put(box(name), decimal(0.3, 9, "0.00"));
        }
        control<QPushButton>(setup, number(0, 3) == 0 ? "Cancel" : "Ok").click();
    }
    // What the editor of a channel shows; it is left by Cancel.
    static QMap<QString, QString> editorAt(SetupSoftware& setup, int channel) {
        emit control<QPushButton>(setup, qPrintable(QStringLiteral("AnalogSetup(%1)").arg(channel)))
            .clicked();
        const auto all = editorOf(setup);
        control<QPushButton>(setup, "Command1").click();
        return all;
    }
    void setAnalog(SetupSoftware& setup, int channel) {
        emit control<QPushButton>(setup, qPrintable(QStringLiteral("AnalogSetup(%1)").arg(channel)))
            .clicked();
        for (auto* edit : part<QFrame>("Analog_Setup").findChildren<QLineEdit*>()) {
            const QString name = edit->objectName();
            if (name == QLatin1String("Analog"))
                put(*edit, letters(8));
            else if (name == QLatin1String("RangeText1"))
                put(*edit, QString::number(number(-300, 300)));
            else if (!name.startsWith(QLatin1String("qt_")))
                put(*edit, QString::number(number(-5000, 15000) / 10.0));
        }
        for (const char* name : {"Analog_Type", "Decimals", "Sensor_Combo", "Fuel_Combo"})
            list(name).setCurrentIndex(number(0, list(name).count() - 1));
        tick("SmoothOption").setChecked(number(0, 1) == 1);
        part<QPushButton>("Command2").click();
        QVERIFY(!part<QFrame>("Analog_Setup").isVisibleTo(&setup));
    }
    void setPassword() {
        auto& check = tick("Check_Password");
        if (!check.isEnabled()) {
            put(box("OPassword"), QString::fromStdString(config().Password));
            check.setChecked(false);
        } else if (number(0, 1) == 1) {
            const QString password = QStringLiteral("pass%1").arg(number(0, 999));
            check.setChecked(true);
            put(box("NPassword"), password);
            put(box("VPassword"), password);
        }
    }
    // Leaves a list, as a user does who goes on to the next control.
    static void leaveLists(SetupSoftware& setup) {
        for (auto* list : setup.findChildren<QComboBox*>()) {
            QFocusEvent out(QEvent::FocusOut, Qt::TabFocusReason);
            QApplication::sendEvent(list, &out);
        }
    }

private slots:
    void init() { begin(); }
    void cleanup() { QCOMPARE(end(), QString()); }

    void settingsLoadBackToTheSameControls() {
        // The sanitizers look for another kind of fault, which shows early, and take four times as
        // long.
#ifdef KVO_SANITIZED
        constexpr int steps = 100;
#else
        constexpr int steps = 500;
#endif
        for (int step = 0; step < steps; ++step) {
            QCoreApplication::processEvents(); // the form of the step before goes
            auto& setup = form<SetupSoftware>();
            setEverything(setup);
            leaveLists(setup);
            const int channel = number(1, 8);
            setAnalog(setup, channel);
            auto editor = editorAt(setup, channel);
            const bool battery = channel == 6 && list("D_Modal").currentIndex() == 3;
            const auto before = controlsOf(setup);
            const QString oldPassword = QString::fromStdString(config().Password);
            part<QPushButton>("SaveSetup").click();
            QVERIFY2(!isOpen(), qPrintable(QString::number(step)));
            // From the file alone.
            config() = core::AppConfig();
            config() = saved();
            const auto after = controlsOf(form<SetupSoftware>());
            for (auto it = before.begin(); it != before.end(); ++it) {
                const QString where = QStringLiteral("step %1, %2: \"%3\" became \"%4\"")
                                          .arg(step)
                                          .arg(it.key(), it.value(), after.value(it.key()));
                QVERIFY2(it.value() == after.value(it.key()), qPrintable(where));
            }
            if (!battery) QCOMPARE(editorAt(form<SetupSoftware>(), channel), editor);
            const bool ticked = config().Check_Password != 0;
            QCOMPARE(tick("Check_Password").isEnabled(), !ticked);
            if (!ticked) QCOMPARE(QString::fromStdString(config().Password), oldPassword);
        }
    }

    void hostileTexts_data() {
        QTest::addColumn<QString>("text");
        const QString longNines(10000, QLatin1Char('9'));
        QTest::newRow("empty") << QString();
        QTest::newRow("a blank") << QStringLiteral(" ");
        QTest::newRow("ten thousand digits") << longNines;
        QTest::newRow("ten thousand letters") << QString(10000, QLatin1Char('W'));
        QTest::newRow("a huge number") << QStringLiteral("1e999");
        QTest::newRow("no single") << QStringLiteral("1e39");
        QTest::newRow("below") << QStringLiteral("-1e38");
        QTest::newRow("no whole number of 16 bits") << QStringLiteral("40000");
        QTest::newRow("tiny") << QStringLiteral("1e-320");
        QTest::newRow("nan") << QStringLiteral("nan");
        QTest::newRow("infinite") << QStringLiteral("inf");
        QTest::newRow("hexadecimal") << QStringLiteral("&H7FFF");
        QTest::newRow("a comma") << QStringLiteral("1,5");
        QTest::newRow("two points") << QStringLiteral("1.2.3");
        QTest::newRow("an exponent of another kind") << QStringLiteral("1d2");
        QTest::newRow("a percent format") << QStringLiteral("%s%n%1");
        QTest::newRow("markup") << QStringLiteral("<b>&amp;</b>");
        QTest::newRow("other letters") << QString::fromUtf8("Жук 日本 😀");
        QTest::newRow("letters of the file") << QString::fromUtf8("Zoë €ÿ“x”");
        QTest::newRow("control letters") << QStringLiteral("1\t2\r\n3\x7f");
        QTest::newRow("minus") << QStringLiteral("-");
        QTest::newRow("zero") << QStringLiteral("-0");
    }
    // In each box alone and in all at once.
    void hostileTexts() {
        QFETCH(QString, text);
        // The sanitizers take three times as long, for the same routines again and again.
#ifdef KVO_SANITIZED
        constexpr qsizetype stride = 5;
#else
        constexpr qsizetype stride = 1;
#endif
        PatientDialogs patient;
        platform::services().dialogs = &patient;
        QStringList names;
        for (const auto* box : form<SetupSoftware>().findChildren<QLineEdit*>())
            if (isInput(*box) && isAlone(box->objectName())) names << box->objectName();
        QStringList all;
        for (const auto* box : form<SetupSoftware>().findChildren<QLineEdit*>())
            if (isInput(*box)) all << box->objectName();
        for (qsizetype i = names.size() % stride; i <= names.size(); i += stride) {
            const QStringList some = i < names.size() ? QStringList{names[i]} : all;
            config() = core::defaultConfig();
            unload<SetupSoftware>();
            QCoreApplication::processEvents();
            auto& setup = form<SetupSoftware>();
            for (const QString& name : some) put(box(qPrintable(name)), text);
            const auto typed = controlsOf(setup);
            const int boxes = patient.boxes;
            part<QPushButton>("SaveSetup").click();
            if (isOpen()) {
                QCOMPARE(patient.boxes, boxes + 1);
                QCOMPARE(controlsOf(setup), typed);
                continue;
            }
            QCOMPARE(patient.boxes, boxes);
            const core::AppConfig file = saved();
            config() = file;
            const auto shown = controlsOf(form<SetupSoftware>());
            part<QPushButton>("SaveSetup").click();
            if (isOpen()) continue; // a number that fits the file may be out of a box's range
            QVERIFY2(saved() == file, qPrintable(some.join(' ')));
            QCOMPARE(controlsOf(form<SetupSoftware>()), shown);
        }
        platform::services().dialogs = &dialogs();
    }

    void hostileTextsThatAreLeft_data() {
        hostileTexts_data();
    }
    // In each box that has the focus, which is left by the Tab key: what a box refuses is told by a
    // beep or an empty box, and it keeps the focus until it is mended.
    void hostileTextsThatAreLeft() {
        QFETCH(QString, text);
        PatientDialogs patient;
        platform::services().dialogs = &patient;
        open();
        for (const Tab tab : {general, graph, dataLogger}) {
            goTo(tab);
            for (auto* edit : form<SetupSoftware>().findChildren<QLineEdit*>()) {
                const QString name = edit->objectName();
                if (!isInput(*edit) || !isAlone(name) || !edit->isVisible()) continue;
                edit->setFocus();
                const int beeps = patient.beeps();
                put(*edit, text);
                const QString typed = edit->text();
                leave();
                if (edit->hasFocus()) {
                    const bool serial = name == QLatin1String("DriverNo");
                    QCOMPARE(edit->text(), serial ? QString()
                                           : name.contains(QLatin1String("Correction"))
                                               ? QStringLiteral("1")
                                               : QStringLiteral("0"));
                    QCOMPARE(patient.beeps(), beeps + (serial ? 0 : 1));
                    if (serial) put(*edit, QStringLiteral("7"));
                    leave();
                } else {
                    QCOMPARE(edit->text(), typed);
                    QCOMPARE(patient.beeps(), beeps);
                }
                QVERIFY2(!edit->hasFocus(), qPrintable(name));
            }
        }
        const int boxes = patient.boxes;
        part<QPushButton>("SaveSetup").click();
        QCOMPARE(patient.boxes, isOpen() ? boxes + 1 : boxes);
        if (!isOpen()) {
            QVERIFY(saved().Speed_Correction >= 1 && saved().Speed_Correction <= 5);
            QVERIFY(saved().Text_Magnify[24] >= 1 && saved().Text_Magnify[24] <= 51);
        }
        platform::services().dialogs = &dialogs();
    }

    void hostileRatios_data() {
        hostileTexts_data();
    }
    void hostileRatios() {
        QFETCH(QString, text);
        config().Gears = 6;
        auto& setup = form<SetupSoftware>();
        emit control<QPushButton>(setup, "GearRatios").clicked();
        for (const char* name : {"FirstG", "SecondG", "ThirdG", "ForthG", "FifthG", "SixthG"}) {
            put(box(name), text);
            QVERIFY(box(name).text().size() <= 5);
        }
        part<QPushButton>("Ok").click();
        part<QPushButton>("SaveSetup").click();
        QVERIFY(!isOpen());
        QVERIFY(std::isfinite(saved().Sixth_Ratio));
    }

    void hostilePasswords_data() {
        hostileTexts_data();
    }
    void hostilePasswords() {
        QFETCH(QString, text);
        PatientDialogs patient;
        platform::services().dialogs = &patient;
        form<SetupSoftware>();
        tick("Check_Password").setChecked(true);
        put(box("VPassword"), text);
        put(box("NPassword"), box("VPassword").text());
        part<QPushButton>("SaveSetup").click();
        if (isOpen()) {
            QCOMPARE(patient.boxes, 1);
            QVERIFY(box("NPassword").text().trimmed().isEmpty());
        } else {
            // What was typed opens the way to another one.
            const QString word = QString::fromStdString(platform::fromFile(saved().Password));
            config() = saved();
            form<SetupSoftware>();
            put(box("OPassword"), word);
            QVERIFY(tick("Check_Password").isEnabled());
        }
        platform::services().dialogs = &dialogs();
    }
};

KVO_FORM_TEST_MAIN(SetupWalkTest)
#include "setup_walk_test.moc"
