#include "graph/forms/graph_export.h"

#include "core/paths.h"
#include "core/run_title.h"
#include "core/shared_state.h"
#include "graph/forms/graph_printing.h"
#include "graph/forms/graph_surface.h"
#include "platform/memory.h"
#include "platform/qt/form_kit.h"
#include "platform/qt/picture_page.h"
#include "platform/qt/text.h"
#include "platform/services.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QLocale>
#include <QStandardPaths>

#include <algorithm>

namespace kvo::forms {

using namespace platform_qt;

namespace {

constexpr QSize drawingPx(1280, 800); // in which a viewer shows a drawing at first

const graph::ExportForm& formOf(int item) {
    switch (item) {
    case GraphExport::pngPicture:
        return graph::pngForm;
    case GraphExport::svgPicture:
        return graph::svgForm;
    case GraphExport::pdfPicture:
        return graph::pdfForm;
    default:
        return graph::csvForm;
    }
}

// The decimal sign of the desktop; the program's own locale has the point.
graph::CsvLook desktopLook() {
    const QString sign = QLocale::system().decimalPoint();
    return graph::csvLookOf(sign.size() == 1 ? sign.front().unicode() : U'.');
}

PicturePage pageFor(int item, const PictureLook& look) {
    if (item == GraphExport::pdfPicture) return PicturePage::ofPaper(look.whitePaper);
    if (item == GraphExport::svgPicture) return PicturePage::ofDrawing(drawingPx, look.whitePaper);
    return {look.sizePx, look.whitePaper};
}

int withinSides(int px) {
    return std::clamp(px, graph::leastPictureSide, graph::mostPictureSide);
}

} // namespace

void GraphExport::Mnu_Export(int item) {
    if (!m_course.hasRun()) return;
    platform::withinMemory(*platform::services().dialogs, "export this", [&] {
        if (item == toClipboard) return copyPicture();
        if (item == wholeRun || item == stretchInView) return exportCsv(item == stretchInView);
        exportPicture(item);
    });
}

// Empty where the question was left.
std::string GraphExport::askPath(const graph::ExportForm& form) const {
    const platform::Services& services = platform::services();
    std::string& folder = kept<GraphExport>().folder;
    if (folder.empty()) {
        const QString documents =
            QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
        folder = typedPath(QDir(documents).exists() ? documents : QDir::homePath());
    }
    const core::OpenRun& run = core::state().Run;
    return graph::askExportPath(form, graph::exportName(run.headerLine, core::baseName(run.path)),
        folder, *services.dialogs, *services.files)
        .value_or(std::string());
}

void GraphExport::exportCsv(bool inView) const {
    const core::SharedState& state = core::state();
    const platform::Services& services = platform::services();
    const channels::RunView run = channels::viewOfRun(state.Run);
    graph::SampleStretch stretch = graph::wholeRun(run);
    if (inView) {
        stretch =
            graph::stretchInView(run, m_surface.trend().surface().scale(), m_surface.partInView());
    }
    if (stretch.empty()) {
        services.dialogs->messageBox("No sample of the run is in view.",
            platform::boxStyle::information, graph::csvForm.title);
        return;
    }
    const std::string path = askPath(graph::csvForm);
    if (path.empty()) return;
    graph::writeExport(graph::csvForm, path,
        graph::runAsCsv(run, state.Config, stretch, desktopLook()), *services.dialogs,
        *services.files);
}

QSize GraphExport::windowSizePx() const {
    const QWidget& window = *m_surface.window();
    const QSize size = window.size() * window.devicePixelRatioF();
    return {withinSides(size.width()), withinSides(size.height())};
}

void GraphExport::exportPicture(int item) const {
    Kept& last = kept<GraphExport>();
    const graph::ExportForm& file = formOf(item);
    const PictureLook start{last.sizePx.isValid() ? last.sizePx : windowSizePx(), last.whitePaper};
    const auto look = platform_qt::form<ExportPicture>().ask(
        QString::fromUtf8(file.title), item == pngPicture, start);
    if (!look) return;
    last.whitePaper = look->whitePaper;
    if (item == pngPicture) last.sizePx = look->sizePx;
    const std::string path = askPath(file);
    if (path.empty()) return;
    const platform::Services& services = platform::services();
    const Hourglass busy(*services.dialogs);
    graph::writeExport(file, path, picture(item, *look), *services.dialogs, *services.files);
}

platform::Bytes GraphExport::picture(int item, const PictureLook& look) const {
    PicturePage page = pageFor(item, look);
    const graph::PictureInput shownPicture = m_printing.shown();
    graph::printPicture(page, shownPicture);
    const QString title = shown(core::titleOf(shownPicture.run.headerLine)).trimmed();
    if (item == svgPicture) return page.svg(title);
    return item == pdfPicture ? page.pdf(title) : page.png();
}

void GraphExport::copyPicture() const {
    PicturePage page(windowSizePx(), false);
    graph::printPicture(page, m_printing.shown());
    QApplication::clipboard()->setImage(page.image());
}

} // namespace kvo::forms
