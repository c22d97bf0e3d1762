#include "tests/forms/support/graph_window.h"

#include "channels/channels.h"
#include "core/config.h"
#include "core/paths.h"
#include "core/run_file.h"
#include "graph/forms/channel_cell.h"
#include "library/run_list.h"
#include "mainwin/start.h"
#include "tests/forms/support/model_run.h"
#include "tests/forms/support/user_click.h"

#include <QCoreApplication>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QTreeView>

namespace kvo::testing {

using forms::DataGraph;
using namespace platform_qt;

void GraphWindow::begin() {
    m_program = std::make_unique<TestProgram>();
    forms::openDoors();
}

QString GraphWindow::end() {
    unloadAllForms();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const QString problems = modalComplaints() + QString::fromStdString(dialogs().problems());
    m_program.reset();
    return problems;
}

DataGraph& GraphWindow::open(int dataType, QSize size) {
    storeModelRun(state(), files(), dataType);
    return openFresh(size);
}

DataGraph& GraphWindow::openFresh(QSize size) {
    form<DataGraph>().openFresh(state().Run.path, " Date:Wed 05 Jun 2024 Run: 3 Second round");
    return show(size);
}

DataGraph& GraphWindow::openByChooser(std::function<void(QWidget*)> script, QSize size) {
    onModal(std::move(script));
    return show(size);
}

DataGraph& GraphWindow::show(QSize size) {
    auto& graph = form<DataGraph>();
    graph.setWindowState(Qt::WindowNoState);
    graph.resize(size);
    graph.show();
    if (!QTest::qWaitForWindowExposed(&graph)) qFatal("the window does not come");
    // The chooser may stand over it first; off-screen nothing gives the focus back.
    QCoreApplication::processEvents();
    graph.activateWindow();
    if (!QTest::qWaitForWindowActive(&graph)) qFatal("the window does not become active");
    return graph;
}

bool GraphWindow::menuEnabled(const char* name) {
    return part<QMenu>(name).menuAction()->isEnabled();
}

QPoint GraphWindow::place(float x, float y) {
    const platform::PixelScale scale(trend().surface().scale(), trend().deviceSize());
    const double ratio = trend().devicePixelRatioF();
    return {qRound(scale.x(x) / ratio), qRound(scale.y(y) / ratio)};
}

void GraphWindow::press(const char* name) {
    const QString problem = userClick(&part<QWidget>(name));
    QVERIFY2(problem.isEmpty(), qPrintable(QLatin1String(name) + QStringLiteral(": ") + problem));
}

core::OpenRun GraphWindow::loaded(const std::string& path) {
    core::OpenRun run;
    if (!core::LoadRun(path, run, files())) qFatal("the run does not load");
    return run;
}

// --- Runs and settings

void GraphWindow::store(int type, int number) {
    listModelRun(state(), files(), type, number);
}

std::string GraphWindow::pathOf(int number) {
    return "/kvo/Data/24060512.3" + std::to_string(number) + "d";
}

void GraphWindow::saveRun() {
    QVERIFY(core::SaveRun(state().Run, state().AppFolder, files()));
}

core::AppConfig GraphWindow::savedConfig() {
    core::AppConfig saved;
    const auto file = files().read(state().AppFolder + "/Kvo.Cfg");
    if (!file || !core::decodeConfig(*file, saved)) qFatal("there is no configuration");
    return saved;
}

void GraphWindow::onlyChannel(int channel) {
    for (int each = 0; each < channels::channelCount; ++each)
        channels::visibleFlag(state().Config, each) = each == channel ? -1 : 0;
}

void GraphWindow::overlay(int number) {
    if (loaded(pathOf(number)).DataType != state().Run.DataType)
        dialogs().expectBoxTitled("Overlay", platform::Reply::yes);
    onModal(taking(number));
    command("Mnu_Overlay").trigger();
    QCOMPARE(int(view().OverlayLoaded), -1);
    QCOMPARE(state().Overlay.path, pathOf(number));
}

DataGraph& GraphWindow::openOverlaid(QSize size) {
    DataGraph& graph = openByChooser(taking(2), size);
    overlay(1);
    return graph;
}

void GraphWindow::chooseBackground(platform::Colour colour) {
    dialogs().expectColour(colour);
    command("Graph_Colour_Invert").trigger();
}

// --- What is shown

QImage GraphWindow::picture() {
    const int width = static_cast<int>(trend().surface().scaleWidth());
    return trend().picture({width, 1100}).convertToFormat(QImage::Format_RGB32);
}

int GraphWindow::pixels(QRgb colour, int fromSample) {
    const QImage all = picture();
    int count = 0;
    for (int y = 0; y < all.height(); ++y) {
        for (int x = fromSample; x < all.width(); ++x) count += all.pixel(x, y) == colour ? 1 : 0;
    }
    return count;
}

QMap<QString, QString> GraphWindow::texts() {
    QMap<QString, QString> all;
    for (const auto* label : part<QWidget>("Frame3").findChildren<forms::ValueLabel*>()) {
        if (!label->objectName().startsWith(QLatin1String("Text_")))
            all[label->objectName()] = label->text();
    }
    all[QStringLiteral("LoggerTime")] = text("LoggerTime");
    return all;
}

int GraphWindow::filledExhausts() {
    int count = 0;
    for (int n = 1; n <= 8; ++n) {
        const QByteArray name = "Exhaust(" + QByteArray::number(n) + ")";
        if (!text(name.constData()).isEmpty()) ++count;
    }
    return count;
}

// --- The pointer

void GraphWindow::pointAt(float sample, float height) {
    emit trend().mouseMoved(Qt::NoButton, sample, height);
}

void GraphWindow::pointAtTheEngine(int sample) {
    const float rpm = state().Run.image.samples[sample].EngineRpm;
    pointAt(static_cast<float>(sample), rpm / static_cast<float>(view().RpmScale));
}

void GraphWindow::clickAt(float sample) {
    emit trend().mouseDown(Qt::LeftButton, sample, 500);
}

QSet<QString> GraphWindow::hitsAt(float sample) {
    QSet<QString> all;
    for (int y = 0; y < 1100; y += 2) {
        emit trend().mouseLeft();
        pointAt(sample, static_cast<float>(y));
        all.insert(text("Label_DataChanel"));
    }
    all.remove(QString());
    return all;
}

// --- The chooser

void GraphWindow::chooseRow(QWidget* chooser, int row) {
    auto& list = control<QTreeView>(*chooser, "Files_List");
    list.setCurrentIndex(list.model()->index(row, 0));
}

void GraphWindow::pressIn(QWidget* dialog, const char* button) {
    control<QPushButton>(*dialog, button).click();
}

std::function<void(QWidget*)> GraphWindow::takingRow(int row) {
    return [row](QWidget* chooser) {
        chooseRow(chooser, row);
        pressIn(chooser, "BTN_Ok");
    };
}

std::function<void(QWidget*)> GraphWindow::taking(int number) {
    return takingFile(core::baseName(pathOf(number)));
}

std::function<void(QWidget*)> GraphWindow::takingFile(const std::string& fileName) {
    return [fileName](QWidget* chooser) {
        const auto& rows = library::runList().rows();
        for (std::size_t row = 0; row < rows.size(); ++row) {
            if (rows[row].FileName == fileName) chooseRow(chooser, static_cast<int>(row));
        }
        pressIn(chooser, "BTN_Ok");
    };
}

std::function<void(QWidget*)> GraphWindow::cancelling() {
    return [](QWidget* chooser) { pressIn(chooser, "BTN_Cancel"); };
}

} // namespace kvo::testing
