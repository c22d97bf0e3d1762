// Saves what the graph window shows of a run as a PNG file.
#include "core/config.h"
#include "core/forms/doors.h"
#include "core/paths.h"
#include "core/run_info.h"
#include "core/shared_state.h"
#include "graph/forms/data_graph.h"
#include "platform/os/os_files.h"
#include "platform/qt/application.h"
#include "platform/qt/form_kit.h"
#include "platform/qt/text.h"
#include "platform/services.h"
#include "platform/unanswered_dialogs.h"
#include "tools/command_line/command_line.h"

#include <QAction>
#include <QApplication>

#include <iostream>

namespace {

using namespace kvo;

// Nobody answers here: what the user would be told goes to the error stream.
class SpokenDialogs : public platform::UnansweredDialogs {
public:
    platform::Reply messageBox(const std::string& text, int, const std::string& title) override {
        std::cerr << title << ": " << text << '\n';
        return platform::Reply::cancel;
    }
};

const command_line::Syntax syntax{
    "graph_picture FOLDER RUNFILE OUT.png [WIDTHxHEIGHT [OVERLAY]] [--surface]",
    "Saves what the graph window shows of RUNFILE as a PNG file: the whole\n"
    "window, 1366x768 unless another size is given, or with --surface the graph\n"
    "alone. OVERLAY is a second run file, laid over it. FOLDER is the program's folder, whose "
    "Kvo.Cfg gives channels and\n"
    "colours. With QT_QPA_PLATFORM=offscreen in the environment it needs no\n"
    "display. The exit code is 1 when anything failed.\n",
    3, 5, {"--surface"}};

struct Task {
    std::string folder;
    std::string run;
    QString picture;
    QSize size{1366, 768};
    std::string overlay;
    bool surfaceOnly = false;
};

// Nothing where the fourth operand is no size.
std::optional<Task> taskOf(const command_line::Arguments& arguments) {
    const auto& operands = arguments.operands;
    Task task;
    task.folder = operands[0];
    task.run = operands[1];
    task.picture = QString::fromLocal8Bit(operands[2].c_str());
    task.surfaceOnly = arguments.has("--surface");
    if (operands.size() < 4) return task;
    const QStringList sides = QString::fromStdString(operands[3]).split(QLatin1Char('x'));
    if (sides.size() != 2 || sides[0].toInt() <= 0 || sides[1].toInt() <= 0) return {};
    task.size = {sides[0].toInt(), sides[1].toInt()};
    if (operands.size() > 4) task.overlay = operands[4];
    return task;
}

// Lays a run over the one that is shown, by the window's own command.
bool overlay(forms::DataGraph& graph, const std::string& path) {
    forms::doors().chooseRun = [path](const std::string&, const std::string&) {
        return std::optional(
            core::ChosenRun{path, core::infoFilePath(path), core::baseName(path), {}});
    };
    auto& command = platform_qt::control<QAction>(graph, "Mnu_Overlay");
    command.trigger();
    QApplication::processEvents();
    return command.text() == QLatin1String("Unload Overlay");
}

bool save(const Task& task, platform::Files& files) {
    core::SharedState& state = core::state();
    state.AppFolder = task.folder;
    const auto config = files.read(task.folder + files.separator() + "Kvo.Cfg");
    if (!config || !core::decodeConfig(*config, state.Config)) {
        std::cerr << task.folder << ": no Kvo.Cfg that can be read\n";
        return false;
    }
    auto& graph = platform_qt::form<forms::DataGraph>();
    graph.openFresh(task.run, "Data File: " + core::baseName(task.run));
    if (!graph.hasRun()) return false;
    graph.setWindowState(Qt::WindowNoState);
    graph.resize(task.size);
    graph.show();
    QApplication::processEvents();
    if (!task.overlay.empty() && !overlay(graph, task.overlay)) return false;
    return task.surfaceOnly ? graph.saveGraphPicture(task.picture, task.size)
                            : graph.saveWindowPicture(task.picture);
}

} // namespace

int main(int argc, char** argv) {
    const auto arguments = command_line::read(syntax, argc, argv);
    if (arguments.exitCode) return *arguments.exitCode;
    const auto task = taskOf(arguments);
    if (!task) return command_line::misuse(syntax, arguments.operands[3] + " is no size");
    QApplication application(argc, argv);
    platform_qt::prepareApplication(application);
    platform_os::OsFiles files;
    SpokenDialogs dialogs;
    platform::services().files = &files;
    platform::services().dialogs = &dialogs;
    const bool saved = save(*task, files);
    if (!saved) std::cerr << "no picture was saved\n";
    platform_qt::unloadAllForms();
    return saved ? 0 : 1;
}
