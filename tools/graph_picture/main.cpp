// graph_picture FOLDER RUNFILE OUT.png [WIDTHxHEIGHT] [--surface]
// Saves what the graph window shows of a run as a PNG file: the whole window, or with --surface the
// graph alone. FOLDER is the program's folder, whose Kvo.Cfg gives channels and colours. Works
// without a display with QT_QPA_PLATFORM=offscreen. Ends with 1 when anything failed.
#include "core/config.h"
#include "core/paths.h"
#include "core/shared_state.h"
#include "graph/forms/data_graph.h"
#include "platform/os/os_files.h"
#include "platform/qt/application.h"
#include "platform/qt/form_kit.h"
#include "platform/qt/text.h"
#include "platform/services.h"
#include "platform/unanswered_dialogs.h"

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

struct Task {
    std::string folder;
    std::string run;
    QString picture;
    QSize size{1366, 768};
    bool surfaceOnly = false;
};

std::optional<Task> taskOf(const QStringList& arguments) {
    if (arguments.size() < 4) return {};
    Task task{
        platform_qt::typedPath(arguments[1]), platform_qt::typedPath(arguments[2]), arguments[3]};
    for (const QString& argument : arguments.mid(4)) {
        const QStringList sides = argument.split(QLatin1Char('x'));
        if (argument == QLatin1String("--surface")) {
            task.surfaceOnly = true;
        } else if (sides.size() == 2 && sides[0].toInt() > 0 && sides[1].toInt() > 0) {
            task.size = {sides[0].toInt(), sides[1].toInt()};
        } else {
            return {};
        }
    }
    return task;
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
    return task.surfaceOnly ? graph.saveGraphPicture(task.picture, task.size)
                            : graph.saveWindowPicture(task.picture);
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    platform_qt::prepareApplication(application);
    const auto task = taskOf(QApplication::arguments());
    if (!task) {
        std::cerr << "usage: graph_picture FOLDER RUNFILE OUT.png [WIDTHxHEIGHT] [--surface]\n";
        return 2;
    }
    platform_os::OsFiles files;
    SpokenDialogs dialogs;
    platform::services().files = &files;
    platform::services().dialogs = &dialogs;
    const bool saved = save(*task, files);
    if (!saved) std::cerr << "no picture was saved\n";
    platform_qt::unloadAllForms();
    return saved ? 0 : 1;
}
