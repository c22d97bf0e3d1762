#include "tools/kvo_cli/pictures.h"

#include "core/forms/doors.h"
#include "core/paths.h"
#include "core/shared_state.h"
#include "graph/forms/data_graph.h"
#include "graph/layout.h"
#include "platform/qt/application.h"
#include "platform/qt/form_kit.h"
#include "platform/services.h"
#include "platform/unanswered_dialogs.h"
#include "tools/kvo_cli/cli.h"

#include <QAction>
#include <QApplication>

namespace kvo::cli {
namespace {

// Nobody answers here: what the user would be told goes to the error stream.
class SpokenDialogs : public platform::UnansweredDialogs {
public:
    platform::Reply messageBox(const std::string& text, int style, const std::string&) override {
        // An overlay of another type is wanted: the command line names it.
        if ((style & 0x0F) == platform::boxStyle::yesNo) return platform::Reply::yes;
        fail(text);
        return platform::Reply::cancel;
    }
};

// The toolkit's remarks about a display that is none are of no use here.
void sayNothing(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type == QtFatalMsg) fail(text.toStdString());
}

core::ChosenRun chosen(const RunPlace& place) {
    return {place.run, place.info, core::baseName(place.run), {}};
}

// Lays a run over the one that is shown, by the window's own command.
bool layOver(forms::DataGraph& graph, const RunPlace& place) {
    forms::doors().chooseRun = [place](const std::string&, const std::string&) {
        return std::optional(chosen(place));
    };
    auto& command = platform_qt::control<QAction>(graph, "Mnu_Overlay");
    command.trigger();
    QApplication::processEvents();
    return command.text() == QLatin1String("Unload Overlay");
}

int itemOf(PictureKind kind) {
    if (kind == PictureKind::svg) return forms::GraphExport::svgPicture;
    return kind == PictureKind::pdf ? forms::GraphExport::pdfPicture
                                    : forms::GraphExport::pngPicture;
}

std::optional<platform::Bytes> drawInWindow(const PictureTask& task) {
    auto& graph = platform_qt::form<forms::DataGraph>();
    graph.openChosen(chosen(task.run));
    QApplication::processEvents();
    if (!graph.hasRun()) return {};
    if (task.overlay && !layOver(graph, *task.overlay)) return {};
    return graph.exporting().picture(
        itemOf(task.kind), {{task.widthPx, task.heightPx}, task.whiteGround});
}

} // namespace

std::optional<platform::Bytes> drawPicture(
    const PictureTask& task, const core::AppConfig& config, platform::Files& look) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(sayNothing);
    int count = 1;
    char name[] = "kvo-cli";
    char* words[] = {name, nullptr};
    QApplication application(count, words);
    platform_qt::prepareApplication(application);
    SpokenDialogs dialogs;
    platform::services().files = &look;
    platform::services().dialogs = &dialogs;
    core::state().Config = config;
    core::state().Config.ScaleCustom = graph::scaleFull; // of the whole run, for nobody scrolls
    core::state().AppFolder = task.run.folder;
    auto picture = drawInWindow(task);
    platform_qt::unloadAllForms();
    return picture;
}

} // namespace kvo::cli
