// Visible_Options through its real widgets.
#include "setup/forms/visible_options.h"

#include "channels/channels.h"
#include "core/config.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/model_run.h"
#include "tests/forms/support/options_form.h"

#include <QMenu>

using namespace kvo;
using namespace kvo::forms;
using namespace kvo::testing;
using namespace kvo::platform_qt;

class VisibleOptionsTest : public QObject, private testing::OptionsWindow {
    Q_OBJECT

private slots:
    void init() { begin(); }
    void cleanup() { QCOMPARE(end(), QString()); }

    // --- As it opens

    void opensOnWhatTheGraphShows() {
        open(32);
        state().Config.ExhaustVisible[3] = 0;
        state().Config.MphVisible = 0;
        state().Config.SmoothOption[7] = 1;
        state().Run.image.setup.AnalogName[2] = "A & B";
        options([this] {
            auto& form = platform_qt::form<Visible_Options>();
            QCOMPARE(form.windowTitle(), QStringLiteral("Visible Options"));
            auto& tabs = control<QTabBar>(form, "TabStrip1");
            QCOMPARE(tabs.count(), 4);
            QCOMPARE(tabs.tabText(0), QStringLiteral("Graph Line/s ( On/ Off )"));
            QCOMPARE(tabs.tabText(1), QStringLiteral("Magnify Data"));
            QCOMPARE(tabs.tabText(2), QStringLiteral("Raise Scale (0) Point"));
            QCOMPARE(tabs.tabText(3), QStringLiteral("Smooth Graph Line/s"));
            QCOMPARE(tabs.currentIndex(), 0);
            for (int index = 0; index <= 24; ++index)
                QCOMPARE(box(index).isChecked(), index != 18 && index != 6);
            for (int index = 25; index <= 49; ++index)
                QCOMPARE(box(index).isChecked(), index == 32);
            QCOMPARE(box(0).text(), QStringLiteral("Eng. RPM"));
            QCOMPARE(box(6).text(), QStringLiteral("Mph"));
            QCOMPARE(box(7).text(), QStringLiteral("RoCoS"));
            QCOMPARE(box(9).text(), QStringLiteral("A && B"));
            QCOMPARE(box(43).text(), QStringLiteral("A && B"));
            QCOMPARE(item<QLabel>("Label_Magnify", 9).text(), QStringLiteral("A & B"));
            QCOMPARE(box(32).text(), QStringLiteral("Output RPM"));
            QCOMPARE(button("Command1(0)").text(), QStringLiteral("&Save"));
            QCOMPARE(apply().text(), QStringLiteral("&Apply"));
            QVERIFY(!apply().isEnabled());
            QCOMPARE(button("Command2").text(), QStringLiteral("Cancel"));
            QVERIFY(!menuEnabled("Mnu_File"));
            QVERIFY(!command("Mnu_Options").isEnabled());
        });
        QVERIFY(menuEnabled("Mnu_File"));
        QVERIFY(command("Mnu_Options").isEnabled());
    }

    void eachTabShowsItsFrame() {
        testing::storeModelRun(state(), files(), 32);
        state().Config.Vehicle_Type = 2;
        openFresh();
        options([] {
            const QList<int> magnified = QList<int>{4, 5, 6} + from(8, 24);
            const QList<int> none;
            const auto shows = [](const QList<int>& boxes, const QList<int>& texts,
                                   const QList<int>& lists) {
                QCOMPARE(seen<QCheckBox>("Check1", 0, 49), boxes);
                QCOMPARE(seen<QLineEdit>("Text_Magnify", 0, 24), texts);
                QCOMPARE(seen<QComboBox>("ComboScale", 0, 24), lists);
                QCOMPARE(button("Command3").isVisible(), boxes.isEmpty());
            };
            shows(from(0, 24), none, none);
            goTo(1);
            shows(none, magnified, none);
            QCOMPARE(seen<QLabel>("Label_Magnify", 0, 24), from(0, 24));
            QVERIFY(control<QLabel>(form<Visible_Options>(), "Label_Range").isVisible());
            goTo(2);
            shows(none, none, from(0, 24));
            QVERIFY(!control<QLabel>(form<Visible_Options>(), "Label_Range").isVisible());
            goTo(3);
            shows(from(25, 49), none, none);
            goTo(0);
            shows(from(0, 24), none, none);
        });
    }

    void theModelOfTheRunHidesWhatItLacks_data() {
        QTest::addColumn<int>("type");
        QTest::addColumn<int>("firstHidden"); // row up to the last analog
        QTest::addColumn<int>("exhaustGroups");
        QTest::newRow("8") << 8 << 12 << 0;
        QTest::newRow("12") << 12 << 12 << 0;
        QTest::newRow("17") << 17 << 16 << 0;
        QTest::newRow("20") << 20 << 14 << 2;
        QTest::newRow("25") << 25 << 16 << 3;
        QTest::newRow("32") << 32 << 16 << 3;
        QTest::newRow("43") << 43 << 16 << 3;
    }
    void theModelOfTheRunHidesWhatItLacks() {
        QFETCH(int, type);
        QFETCH(int, firstHidden);
        QFETCH(int, exhaustGroups);
        testing::storeModelRun(state(), files(), type);
        state().Config.LoggerDataType = type == 8 ? 43 : 8; // counts without a run only
        state().Config.Vehicle_Type = 1;
        openFresh();
        options([=] {
            const auto exhausts = [=](int group, int first) {
                return exhaustGroups > group ? from(first, first + 7) : QList<int>();
            };
            const QList<int> speeds = QList<int>{0} + from(2, 7);
            const QList<int> analogs = from(8, firstHidden - 1);
            QCOMPARE(seen<QCheckBox>("Check1", 0, 24),
                speeds + analogs + exhausts(0, 16) + from(24, 24));
            goTo(1);
            QCOMPARE(seen<QLabel>("Label_Magnify", 0, 24),
                speeds + analogs + exhausts(1, 16) + from(24, 24));
            QCOMPARE(seen<QLabel>("Label_Magnify_Analog_Text", 1, 8), from(1, firstHidden - 8));
            QCOMPARE(seen<QLineEdit>("Text_Magnify", 0, 24),
                from(4, 6) + analogs + exhausts(1, 16) + from(24, 24));
            goTo(2);
            QCOMPARE(seen<QComboBox>("ComboScale", 0, 24),
                speeds + analogs + exhausts(1, 16) + from(24, 24));
            goTo(3);
            // The box of the clutch stays here.
            QCOMPARE(seen<QCheckBox>("Check1", 25, 49),
                from(25, 33) + exhausts(2, 34) + from(42, firstHidden + 33));
        });
    }

    void withoutARunTheModelOfTheSetupCounts() {
        state().Config = graphConfig(17);
        state().AppFolder = "/kvo";
        openByChooser(cancelling());
        options([this] {
            QCOMPARE(seen<QCheckBox>("Check1", 8, 23), from(8, 15));
            QCOMPARE(box(8).text(), QStringLiteral("Oil"));
            tick(0);
            click(apply());
            QCOMPARE(int(state().Config.EngineVisible), 0);
            QVERIFY(!part<QLabel>("Rpm").isEnabled());
            QVERIFY(kept().empty());
        });
        QCOMPARE(dialogs().beeps(), 0);
    }

    // --- Apply, Save and Cancel

    void everyKindOfChangeIsForApply() {
        open(32);
        const auto enables = [this](int tab, std::function<void()> change) {
            options([&] {
                goTo(tab);
                QVERIFY(!apply().isEnabled());
                change();
                QVERIFY(apply().isEnabled());
            });
        };
        enables(0, [] { tick(0); });
        enables(3, [] { tick(49); });
        enables(1, [] { type(magnify(4), QStringLiteral("7")); });
        enables(2, [] { pick(raise(0), 3); });
        enables(0, [] { click(item<QPushButton>("AnalogCommand", 0)); });
        enables(0, [] { click(item<QPushButton>("EGTCommand", 0)); });
        enables(1, [] { click(button("Command3")); });
        enables(2, [] { click(button("Command3")); });
        options([] {
            click(item<QPushButton>("EGTCommand", 1)); // they are all on
            QVERIFY(!apply().isEnabled());
        });
    }

    void applyActsOnTheGraphAtOnce() {
        open(32);
        QVERIFY(pixels(engineColour, 1) > 0);
        const core::AppConfig before = state().Config;
        options([&] {
            tick(0);
            QCOMPARE(state().Config, before);
            wipe();
            click(apply());
            QVERIFY(isLoaded<Visible_Options>());
            QVERIFY(!apply().isEnabled());
            QCOMPARE(button("Command2").text(), QStringLiteral("Exit"));
            QCOMPARE(int(state().Config.EngineVisible), 0);
            QCOMPARE(pixels(engineColour, 1), 0);
            QVERIFY(!part<QLabel>("Rpm").isEnabled());
            QCOMPARE(onTop(), 1U); // the time line
            QVERIFY(!dialogs().hourglass());
            tick(0);
            click(apply());
            QVERIFY(pixels(engineColour, 1) > 0);
            QVERIFY(part<QLabel>("Rpm").isEnabled());
            tick(0);
            click(apply());
        });
        // What Apply did stays, but nobody asked to keep it.
        QCOMPARE(int(state().Config.EngineVisible), 0);
        QCOMPARE(int(view().GraphDirty), 0);
        form<DataGraph>().close();
        QVERIFY(!files().exists("/kvo/Kvo.Cfg"));
    }

    void saveShowsClosesAndKeeps() {
        open(32);
        options([] {
            tick(0);
            goTo(1);
            type(magnify(4), QStringLiteral("50"));
            goTo(2);
            pick(raise(7), 5);
            goTo(3);
            tick(49); // analog 8
            click(button("Command1(0)"));
            QVERIFY(!isLoaded<Visible_Options>());
        });
        QCOMPARE(pixels(engineColour, 1), 0);
        QCOMPARE(int(view().GraphDirty), -1);
        form<DataGraph>().close();
        const core::AppConfig saved = savedConfig();
        QCOMPARE(int(saved.EngineVisible), 0);
        QCOMPARE(int(saved.Text_Magnify[4]), 51);
        QCOMPARE(int(saved.ComboScale[7]), 100);
        QCOMPARE(int(saved.SmoothOption[24]), 1);
    }

    void saveWithoutAChangeLeavesThePictureAlone() {
        open(32);
        options([this] {
            wipe();
            click(button("Command1(0)"));
        });
        QCOMPARE(onTop(), 0U);
        QCOMPARE(int(view().GraphDirty), -1);
    }

    void cancelLeavesEverythingAsItWas_data() {
        QTest::addColumn<bool>("byEscape");
        QTest::newRow("button") << false;
        QTest::newRow("escape") << true;
    }
    void cancelLeavesEverythingAsItWas() {
        QFETCH(bool, byEscape);
        open(32);
        const core::AppConfig before = state().Config;
        const QImage picture = this->picture();
        options([=] {
            click(item<QPushButton>("AnalogCommand", 0));
            goTo(1);
            click(button("Command3"));
            // A bad text is no reason to stay.
            type(magnify(4), QStringLiteral("99"));
            if (byEscape) QTest::keyClick(&form<Visible_Options>(), Qt::Key_Escape);
        });
        QCOMPARE(state().Config, before);
        QCOMPARE(this->picture(), picture);
        QCOMPARE(int(view().GraphDirty), 0);
        QCOMPARE(dialogs().beeps(), 0);
    }

    // --- The boxes

    void aMagnificationOutOfRangeGoesBack() {
        open(32);
        options([this] {
            goTo(1);
            int beeps = dialogs().beeps();
            for (const char* bad : {"51", "-1", "12abc", "", "abc"}) {
                type(magnify(5), QLatin1String(bad));
                QTest::keyClick(&magnify(5), Qt::Key_Tab);
                QCOMPARE(magnify(5).text(), QStringLiteral("0"));
                QVERIFY(magnify(5).hasFocus());
                QCOMPARE(dialogs().beeps(), ++beeps);
            }
            type(magnify(5), QStringLiteral("50"));
            QTest::keyClick(&magnify(5), Qt::Key_Tab);
            QVERIFY(magnify(6).hasFocus());
            QCOMPARE(magnify(5).text(), QStringLiteral("50"));
            QCOMPARE(dialogs().beeps(), beeps);
        });
    }

    // What takes no focus leaves the box all the same: the user sees what has become of the text.
    void aRefusedTextHoldsTheClick() {
        open(32);
        const core::AppConfig before = state().Config;
        const auto held = [this](std::function<void()> press) {
            const int beeps = dialogs().beeps();
            type(magnify(5), QStringLiteral("99"));
            press();
            QVERIFY(isLoaded<Visible_Options>());
            QVERIFY(magnify(5).isVisible());
            QCOMPARE(magnify(5).text(), QStringLiteral("0"));
            QCOMPARE(dialogs().beeps(), beeps + 1);
        };
        options([&] {
            goTo(1);
            held([] { click(button("Command1(0)")); });
            held([] { click(apply()); });
            held([] { click(button("Command3")); });
            held([] { QTest::keyClick(&magnify(5), Qt::Key_Return); });
            held([] { goTo(0); });
            auto& tabs = control<QTabBar>(form<Visible_Options>(), "TabStrip1");
            QCOMPARE(tabs.currentIndex(), 1);
            QCOMPARE(state().Config, before);
            click(apply());
            QCOMPARE(int(state().Config.Text_Magnify[5]), 1);
        });
    }

    void whatWasNeverSetShowsMinusOne() {
        open(32);
        onlyChannel(channels::mphChannel); // no drawing sets the others
        state().Config.Text_Magnify.fill(0);
        options([this] {
            goTo(1);
            QCOMPARE(magnify(4).text(), QStringLiteral("-1"));
            QCOMPARE(magnify(24).text(), QStringLiteral("-1"));
            magnify(4).setFocus();
            QTest::keyClick(&magnify(4), Qt::Key_Tab);
            QCOMPARE(magnify(4).text(), QStringLiteral("0"));
            QCOMPARE(dialogs().beeps(), 1);
            click(apply());
            QCOMPARE(int(state().Config.Text_Magnify[4]), 1);
            QCOMPARE(int(state().Config.Text_Magnify[24]), 0);
        });
    }

    // The boxes go one after another; none is judged but the one that the user was in.
    void aTabJudgesNoBoxThatTheUserWasNeverIn() {
        open(32);
        state().Config.Text_Magnify.fill(0);
        options([this] {
            for (const int tab : {2, 3, 0}) {
                goTo(1);
                type(magnify(4), QStringLiteral("7"));
                goTo(tab);
                QCOMPARE(
                    control<QTabBar>(form<Visible_Options>(), "TabStrip1").currentIndex(), tab);
                QCOMPARE(magnify(4).text(), QStringLiteral("7"));
                for (int i = 5; i <= 24; ++i) QCOMPARE(magnify(i).text(), QStringLiteral("-1"));
            }
            QCOMPARE(dialogs().beeps(), 0);
        });
    }

    void restoreDefaultsChangesTheHalfInView() {
        open(32);
        state().Config.Text_Magnify.fill(21);
        state().Config.ComboScale.fill(60);
        const core::AppConfig before = state().Config;
        options([&] {
            goTo(1);
            click(button("Command3"));
            QCOMPARE(magnify(4).text(), QStringLiteral("8"));
            QCOMPARE(magnify(5).text(), QStringLiteral("50"));
            QCOMPARE(magnify(6).text(), QStringLiteral("0"));
            QCOMPARE(magnify(24).text(), QStringLiteral("10"));
            QCOMPARE(magnify(16).text(), QStringLiteral("0"));
            QCOMPARE(raise(0).currentIndex(), 3);
            goTo(2);
            magnify(4).setText(QStringLiteral("20"));
            click(button("Command3"));
            QCOMPARE(magnify(4).text(), QStringLiteral("20"));
            QCOMPARE(raise(0).currentIndex(), 0);
            QCOMPARE(raise(4).currentIndex(), 0);
            for (int n = 1; n <= 8; ++n)
                QCOMPARE(raise(15 + n).currentText(), QString::number(n - 1) + '%');
            QCOMPARE(raise(24).currentIndex(), 3);
            QCOMPARE(state().Config, before);
            click(button("Command1(0)"));
        });
        QCOMPARE(int(state().Config.Text_Magnify[4]), 21);
        QCOMPARE(int(state().Config.Text_Magnify[5]), 51);
        QCOMPARE(int(state().Config.ComboScale[23]), 140);
        QCOMPARE(int(state().Config.ComboScale[24]), 60);
    }

    void allOnAndAllOffSetTheirEight() {
        open(32);
        options([] {
            click(item<QPushButton>("AnalogCommand", 0));
            click(item<QPushButton>("EGTCommand", 0));
            for (int index = 0; index <= 24; ++index)
                QCOMPARE(box(index).isChecked(), index < 8 || index == 24);
            click(item<QPushButton>("AnalogCommand", 1));
            for (int index = 0; index <= 24; ++index)
                QCOMPARE(box(index).isChecked(), index < 16 || index == 24);
            click(item<QPushButton>("EGTCommand", 1));
            for (int index = 0; index <= 24; ++index) QVERIFY(box(index).isChecked());
            for (int index = 25; index <= 49; ++index) QVERIFY(!box(index).isChecked());
            QCOMPARE(item<QPushButton>("EGTCommand", 0).text(), QStringLiteral("All Off"));
            QCOMPARE(item<QPushButton>("AnalogCommand", 1).text(), QStringLiteral("All On"));
        });
    }

    // --- Keys and looks

    void allOfItIsReachedByKeys() {
        open(32);
        options([this] {
            auto& form = platform_qt::form<Visible_Options>();
            auto& tabs = control<QTabBar>(form, "TabStrip1");
            tabs.setFocus();
            QTest::keyClick(&tabs, Qt::Key_Tab);
            QVERIFY(box(0).hasFocus());
            QTest::keyClick(&box(0), Qt::Key_Space);
            QTest::keyClick(&box(0), Qt::Key_A, Qt::AltModifier);
            QTRY_COMPARE(int(state().Config.EngineVisible), 0);
            tabs.setFocus();
            QTest::keyClick(&tabs, Qt::Key_Right);
            QTest::keyClick(&tabs, Qt::Key_Tab);
            QVERIFY(magnify(4).hasFocus());
            QTest::keyClick(&magnify(4), Qt::Key_R, Qt::AltModifier);
            QTRY_COMPARE(magnify(4).text(), QStringLiteral("8"));
            // Group by group, and the button behind them.
            const QList<int> order = from(4, 6) + from(24, 24) + from(8, 23);
            magnify(4).setFocus();
            for (const int channel : order) {
                QVERIFY2(magnify(channel).hasFocus(), qPrintable(QString::number(channel)));
                QVERIFY(!magnify(channel).accessibleName().isEmpty());
                QTest::keyClick(&magnify(channel), Qt::Key_Tab);
            }
            QVERIFY(button("Command3").hasFocus());
            QTest::keyClick(&form, Qt::Key_S, Qt::AltModifier);
            QTRY_VERIFY(!isLoaded<Visible_Options>());
        });
        QCOMPARE(int(state().Config.Text_Magnify[4]), 9);
    }

    void nothingIsCutAndNothingMoves_data() {
        QTest::addColumn<int>("type");
        for (const int type : {8, 17, 20, 43}) QTest::addRow("%d", type) << type;
    }
    void nothingIsCutAndNothingMoves() {
        QFETCH(int, type);
        testing::storeModelRun(state(), files(), type);
        state().Config.Vehicle_Type = 2;
        openFresh();
        for (int n = 1; n <= 8; ++n) state().Run.image.setup.AnalogName[n] = "WWWWWWWW";
        options([] {
            auto& form = platform_qt::form<Visible_Options>();
            const QSize size = form.size();
            // No tab is behind an arrow, however small the form may be made.
            QVERIFY(form.minimumSizeHint().width() >=
                    control<QTabBar>(form, "TabStrip1").sizeHint().width());
            QVERIFY(size.width() <= 960 && size.height() <= 500);
            for (int tab = 0; tab < 4; ++tab) {
                goTo(tab);
                QCoreApplication::processEvents();
                QCOMPARE(form.size(), size);
                for (const QWidget* widget : form.findChildren<QWidget*>()) {
                    const bool counts = qobject_cast<const QCheckBox*>(widget) != nullptr ||
                                        qobject_cast<const QLabel*>(widget) != nullptr ||
                                        qobject_cast<const QComboBox*>(widget) != nullptr ||
                                        qobject_cast<const QPushButton*>(widget) != nullptr;
                    if (!widget->isVisible() || !counts) continue;
                    const QSize wanted = widget->minimumSizeHint();
                    QVERIFY2(
                        widget->width() >= wanted.width() && widget->height() >= wanted.height(),
                        qPrintable(widget->objectName()));
                }
            }
        });
    }
};

KVO_FORM_TEST_MAIN(VisibleOptionsTest)
#include "visible_options_test.moc"
