#include "tests/forms/support/graph_window.h"

#include "core/run_file.h"
#include "library/run_list.h"
#include "tests/forms/support/model_run.h"
#include "tests/forms/support/user_click.h"

#include <QCoreApplication>
#include <QListView>
#include <QMenu>
#include <QPushButton>
#include <QTest>

namespace kvo::testing {

using forms::DataGraph;
using namespace platform_qt;

void GraphWindow::begin() {
    m_program = std::make_unique<TestProgram>();
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

// --- The chooser

void GraphWindow::chooseRow(QWidget* chooser, int row) {
    auto& list = control<QListView>(*chooser, "Files_List");
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
    return [number](QWidget* chooser) {
        const std::string wanted = ".3" + std::to_string(number) + "d";
        const auto& rows = library::runList().rows();
        for (std::size_t row = 0; row < rows.size(); ++row) {
            if (rows[row].FileName.ends_with(wanted)) chooseRow(chooser, static_cast<int>(row));
        }
        pressIn(chooser, "BTN_Ok");
    };
}

std::function<void(QWidget*)> GraphWindow::cancelling() {
    return [](QWidget* chooser) { pressIn(chooser, "BTN_Cancel"); };
}

} // namespace kvo::testing
