#include "scenes.h"

#include "core/forms/doors.h"
#include "graph/forms/data_graph.h"
#include "guide/forms/help_window.h"
#include "library/forms/time_graph.h"
#include "link/forms/download_data.h"
#include "link/forms/pit_run.h"
#include "mainwin/main_window.h"
#include "platform/qt/form_kit.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollBar>
#include <QTabBar>

#include <array>

namespace kvo::guide_pictures {

using namespace platform_qt;

namespace {

constexpr QSize graphSize(1024, 620);

// Runs of the race days by their places.
constexpr int slipping = 0;
constexpr int moreClutch = 1;

void press(QWidget& window, const char* button) {
    control<QAbstractButton>(window, button).click();
}

void choose(QWidget& window, const char* command) {
    control<QAction>(window, command).trigger();
}

void type(QWidget& form, const char* box, const QString& text) {
    auto& edit = control<QLineEdit>(form, box);
    edit.setFocus();
    edit.setText(text);
}

// A key on the surface of the graph, so many times.
void key(QWidget& graph, Qt::Key key, Qt::KeyboardModifiers with, int times) {
    auto& surface = control<QWidget>(graph, "Trend");
    for (int i = 0; i < times; ++i) {
        QKeyEvent press(QEvent::KeyPress, key, with);
        QApplication::sendEvent(&surface, &press);
    }
}

QImage mainWindow(Stage& stage) {
    auto& window = form<forms::VrnWin32>();
    window.resize(800, 560);
    window.show();
    return stage.picture(window);
}

QImage download(Stage& stage) {
    constexpr double seconds = 24; // of the minute that it takes
    QImage taken;
    stage.port().plugIn(32, seconds, [&stage, &taken] {
        const Waiting waiting;
        taken = Stage::picture(form<forms::DownloadData>());
        stage.port().setPortOpen(false); // as if unplugged: nobody gives the run a title
    });
    Stage::inModal(
        forms::doors().downloadData, [](QWidget& window) { press(window, "Command_Send"); });
    return taken;
}

QImage graph(Stage& stage) {
    auto& window = stage.openGraph(moreClutch, graphSize);
    key(window, Qt::Key_Right, Qt::ShiftModifier, 3);
    return stage.picture(window);
}

QImage overlay(Stage& stage) {
    auto& window = stage.openGraph(moreClutch, graphSize);
    stage.layOver(window, slipping);
    key(window, Qt::Key_Right, Qt::ShiftModifier, 3);
    return stage.picture(window);
}

QImage chooser(Stage& stage) {
    (void)stage.runAt(moreClutch);
    return Stage::pictureOfModal([] { (void)forms::doors().chooseRun("Load", "Load Data File"); },
        [](QWidget& window) { type(window, "Text_Filter", QStringLiteral("clutch nov")); });
}

// Between the first shift and the begin of the second gear, with the numbers out of view.
QImage reference(Stage& stage) {
    auto& window = stage.openGraph(moreClutch, graphSize);
    key(window, Qt::Key_Right, Qt::ShiftModifier, 2);
    choose(window, "Mnu_Reference");
    key(window, Qt::Key_Right, Qt::ControlModifier, 3);
    choose(window, "Mnu_ScaleItem(1)");
    auto& along = control<QScrollBar>(window, "HScroll");
    auto& down = control<QScrollBar>(window, "VScroll");
    along.setValue(along.maximum() / 4);
    down.setValue(down.maximum() / 3);
    return stage.picture(window);
}

QImage daylight(Stage& stage) {
    auto& window = stage.openGraph(moreClutch, graphSize);
    choose(window, "Mnu_Colours(1)");
    choose(window, "Mnu_LineWidth(2)");
    key(window, Qt::Key_Right, Qt::ShiftModifier, 3);
    QImage taken = stage.picture(window);
    choose(window, "Mnu_Colours(0)");
    choose(window, "Mnu_LineWidth(1)");
    return taken;
}

// The menu with its items, over the window.
QImage exporting(Stage& stage) {
    auto& window = stage.openGraph(moreClutch, graphSize);
    auto& file = control<QMenu>(window, "Mnu_File");
    auto& items = control<QMenu>(window, "Mnu_ExportMenu");
    window.menuBar()->setActiveAction(file.menuAction());
    file.setActiveAction(items.menuAction());
    QImage taken = stage.picture(window);
    items.close();
    file.close();
    return taken;
}

QImage statistics(Stage& stage) {
    auto& window = stage.openGraph(moreClutch, graphSize);
    return Stage::pictureOfModal([&window] { window.commands().Mnu_Statistics_Click(); });
}

QImage times(Stage& stage) {
    auto& window = form<forms::TimeGraph>();
    window.resize(800, 420);
    window.showTable(false);
    return stage.picture(window);
}

QImage pitRun(Stage& stage) {
    constexpr double seconds = 17; // the engine is being blipped
    QImage taken;
    stage.port().plugIn(32, seconds, [&taken] {
        const Waiting waiting;
        taken = Stage::picture(form<forms::PitRun>());
        press(form<forms::PitRun>(), "Command1");
    });
    form<forms::PitRun>().show();
    press(form<forms::PitRun>(), "Command1");
    return taken;
}

QImage info(Stage& stage) {
    const core::ChosenRun run = stage.runAt(moreClutch);
    return Stage::pictureOfModal([&run] { forms::doors().showInfo(run.path, "Info"); },
        [](QWidget& window) { press(window, "Command1"); });
}

QImage setup(Stage&) {
    return Stage::pictureOfModal(forms::doors().showSoftwareSetup);
}

QImage mappedInput(Stage&) {
    return Stage::pictureOfModal(forms::doors().showSoftwareSetup, [](QWidget& window) {
        control<QTabBar>(window, "TabStrip1").setCurrentIndex(2);
        press(window, "AnalogSetup(7)");
        auto& kinds = control<QComboBox>(window, "Analog_Type");
        kinds.setCurrentIndex(kinds.findText(QStringLiteral("Mapped Input")));
        emit kinds.activated(kinds.currentIndex()); // as a choice of the user does
        constexpr std::array<int, 10> degrees{70, 92, 112, 131, 150, 171, 196, 226, 272, 400};
        for (int n = 10; n >= 1; --n) {
            const QByteArray box = "Text9(" + QByteArray::number(n) + ")";
            type(
                window, box.constData(), QString::number(degrees[static_cast<std::size_t>(n - 1)]));
        }
    });
}

QImage help(Stage& stage) {
    forms::doors().showHelp(forms::HelpPage::keyboard);
    auto& window = form<forms::HelpWindow>();
    window.resize(860, 480);
    return stage.picture(window);
}

} // namespace

const std::vector<Scene>& scenes() {
    static const std::vector<Scene> all{
        {"main-window.png", mainWindow},
        {"download.png", download},
        {"graph.png", graph},
        {"chooser.png", chooser},
        {"reference.png", reference},
        {"overlay.png", overlay},
        {"daylight.png", daylight},
        {"export.png", exporting},
        {"statistics.png", statistics},
        {"times.png", times},
        {"pit-run.png", pitRun},
        {"mapped-input.png", mappedInput},
        {"setup.png", setup},
        {"info.png", info},
        {"help.png", help},
    };
    return all;
}

} // namespace kvo::guide_pictures
