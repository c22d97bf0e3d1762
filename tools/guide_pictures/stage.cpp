#include "stage.h"

#include "core/config.h"
#include "core/default_config.h"
#include "core/forms/doors.h"
#include "core/run_info.h"
#include "core/shared_state.h"
#include "graph/forms/data_graph.h"
#include "library/run_list.h"
#include "link/forms/logger_line.h"
#include "mainwin/start.h"
#include "platform/qt/form_kit.h"
#include "platform/services.h"
#include "tools/make_runs/race_folder.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDialog>
#include <QPainter>
#include <QPointer>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <array>
#include <optional>

namespace kvo::guide_pictures {

using namespace platform_qt;

namespace {

// Together longer than any rest that a window waits for before it goes on.
constexpr int lookEveryMs = 20;
constexpr int quietLooks = 10;
constexpr int mostLooks = 500;

// What is wired to an input: its reading at 0 and at 5 volts.
struct Sensor {
    const char* name;
    int low;
    int high;
    int decimals;
};
constexpr std::array<Sensor, 8> sensors{{
    {"Oil Psi ", 0, 150, 0},
    {"Boost   ", 0, 45, 1},
    {"Fuel Psi", 0, 100, 0},
    {"Battery ", 0, 18, 1},
    {"G Force ", -1, 3, 2},
    {"Throttle", 0, 104, 0},
    {"Water F ", 0, 400, 0},
    {"Pan Vac ", 0, 30, 1},
}};

void wireUp(core::AppConfig& config) {
    constexpr float counts = 255;
    for (int n = 1; n <= 8; ++n) {
        const Sensor& sensor = sensors[static_cast<std::size_t>(n - 1)];
        config.AnalogName[n] = sensor.name;
        config.AnalogScale[n] = static_cast<float>(sensor.high - sensor.low) / counts;
        config.AnalogRangeLow[n] = static_cast<std::int16_t>(sensor.low);
        config.AnalogOffset[n] = static_cast<float>(sensor.low);
        config.Decimals[n] = static_cast<std::uint8_t>(sensor.decimals);
    }
    config.Driver = "Sam Miller";
    config.DriverNo = 117;
    config.Date_Prompt = config.SpeedWheel_Prompt = 1; // no questions before a download
}

// Notes and weather of a run on top of its times.
platform::WriteResult writeNotes(
    const std::string& folder, const core::ChosenRun& run, platform::Files& files) {
    core::VehicleSetup setup;
    constexpr std::array<std::array<const char*, 2>, 6> lines{
        {{"Primary jet", "88"}, {"Main jet", "134"}, {"Left tyre psi", "6.5"},
            {"Right tyre psi", "6.5"}, {"Clutch weights g", "62"}, {"Fuel", "Methanol"}}};
    for (int i = 1; i <= 6; ++i) {
        const auto& [name, value] = lines[static_cast<std::size_t>(i - 1)];
        setup[i] = {name, value};
    }
    core::RunInfo info = core::LoadRunInfo(run.infoPath, setup, files);
    info.Info_Text = "Four turns more on the clutch. Leaves straight, no tyre shake.\r\n"
                     "Shift came 100 rpm early. Track good on the left.";
    info.Text_AirTemp = "21";
    info.Text_Barometric = "1016";
    info.Text_Humidity = "48";
    return core::SaveRunInfo(folder, run.infoPath, run.path, info, files);
}

// By looks and not by the clock alone: a machine that was busy meanwhile has not shown all of it.
void settle(QWidget& window) {
    QImage before;
    int alike = 0;
    for (int look = 0; alike < quietLooks && look < mostLooks; ++look) {
        QThread::msleep(lookEveryMs);
        QCoreApplication::processEvents();
        const QImage now = window.grab().toImage();
        alike = now == before ? alike + 1 : 0;
        before = now;
    }
}

// A menu opens the one below it, which lies over its edge.
void drawMenus(QPainter& painter, const QWidget& window) {
    QWidgetList menus = QApplication::topLevelWidgets();
    menus.removeIf([](const QWidget* widget) {
        return !widget->isVisible() || widget->windowType() != Qt::Popup;
    });
    std::ranges::sort(menus, {}, [](const QWidget* menu) { return menu->x(); });
    for (QWidget* menu : menus) painter.drawPixmap(menu->pos() - window.pos(), menu->grab());
}

} // namespace

Stage::Stage(const std::string& folder) {
    platform::Services& services = platform::services();
    services = {&m_files, &m_clock, &m_dialogs, &m_port, &m_port};
    services.settings = &m_settings;
    forms::useLoggerLink(&m_link);
    forms::openDoors();
    core::SharedState& state = core::state();
    state = core::SharedState();
    state.AppFolder = folder;
    state.Config = core::defaultConfig();
    state.ConfigKnown = true;
    wireUp(state.Config);
    library::runList() = library::RunList();
    (void)library::runList().read(folder, m_files); // an empty folder has no list yet
}

Stage::~Stage() {
    unloadAllForms();
    forms::useLoggerLink(nullptr);
    platform::services() = {};
}

platform::WriteResult Stage::fillFolder() {
    core::SharedState& state = core::state();
    const std::string folder = state.AppFolder + m_files.separator();
    auto written = m_files.makeFolder(folder + "Data");
    if (written) written = m_files.copy(KVO_SHIPPED_FILES "/Kvocar.dll", folder + "Kvocar.dll");
    if (written) written = core::SaveConfig(state.AppFolder, state.Config, m_files);
    if (written) written = race_days::fillFolder(state, m_files);
    if (!written) return written;
    (void)library::runList().read(state.AppFolder, m_files);
    return writeNotes(state.AppFolder, runAt(1), m_files);
}

QImage Stage::picture(QWidget& window) {
    constexpr int frame = 1;
    settle(window);
    QImage all(window.size() + QSize(2 * frame, 2 * frame), QImage::Format_RGB32);
    all.fill(QColor(0x80, 0x80, 0x80));
    QPainter painter(&all);
    painter.translate(frame, frame);
    painter.drawPixmap(0, 0, window.grab());
    drawMenus(painter, window);
    return all;
}

void Stage::inModal(
    const std::function<void()>& open, const std::function<void(QWidget&)>& script) {
    constexpr int depth = 2; // a frame of a form is left first
    QTimer::singleShot(0, qApp, [&] {
        const QPointer<QDialog> form = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (form == nullptr) return;
        script(*form);
        for (int i = 0; i < depth && form != nullptr; ++i) form->reject();
    });
    open();
}

QImage Stage::pictureOfModal(
    const std::function<void()>& open, const std::function<void(QWidget&)>& script) {
    QImage taken;
    inModal(open, [&](QWidget& form) {
        if (script) script(form);
        taken = picture(form);
    });
    return taken;
}

core::ChosenRun Stage::runAt(int place) const {
    library::RunList& runs = library::runList();
    runs.choose(place);
    return runs.chosenRun(core::state().AppFolder, m_files);
}

forms::DataGraph& Stage::openGraph(int run, QSize size) const {
    auto& graph = form<forms::DataGraph>();
    graph.setWindowState(Qt::WindowNoState);
    graph.resize(size);
    graph.openChosen(runAt(run));
    settle(graph);
    return graph;
}

void Stage::layOver(forms::DataGraph& graph, int run) const {
    auto& chooser = forms::doors().chooseRun;
    const auto before = chooser;
    const core::ChosenRun second = runAt(run);
    chooser = [second](const std::string&, const std::string&) { return std::optional(second); };
    graph.commands().Mnu_Overlay_Click();
    chooser = before;
    settle(graph);
}

} // namespace kvo::guide_pictures
