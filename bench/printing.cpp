// Printing to PDF: the table of the longest run, and the picture of all channels, from the command
// to the file.
#include "graph/printing.h"
#include "bench/cairo_peer.h"
#include "bench/parts.h"
#include "bench/run.h"
#include "bench/silent_dialogs.h"
#include "bench/timing.h"
#include "bench/trend_image.h"
#include "graph/windowless_host.h"
#include "platform/os/os_files.h"
#include "platform/qt/qt_print_job.h"

#include <QFileInfo>

#include <memory>

namespace kvo::bench {
namespace {

constexpr int rounds = 7;
constexpr int runRows = 2520;
constexpr int tableType = 12;   // of the longest run
constexpr int pictureType = 32; // with all channels
constexpr qint64 mostBytes = 300'000;
constexpr double pointsAUnit = 561.0 / 240; // of the table, on A4 between the margins
constexpr double margin = 17;

class PdfPrinter : public platform::Printer {
public:
    explicit PdfPrinter(std::string path) : m_path(std::move(path)) {}
    platform::PrintStart begin(const platform::PrintRequest& request) override {
        using namespace platform_qt;
        const QPageLayout layout(QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF());
        auto target = std::make_unique<PdfTarget>(m_files, m_path, layout, QStringLiteral("bench"));
        return {{}, std::make_unique<QtPrintJob>(std::move(target), request.firstPage, true)};
    }

private:
    platform_os::OsFiles m_files;
    std::string m_path;
};

class Uncancelled : public graph::PrintProgress {
public:
    bool goesOn(int, int) override { return true; }
};

// A run and its printing to a file.
class Printing {
public:
    explicit Printing(int type) {
        fillRun(*m_state, type, runRows, true);
        m_state->Run.headerLine = "32" + benchRunText;
    }
    core::SharedState& state() { return *m_state; }
    std::string pathOf(const char* name) const { return m_folder.path() + "/" + name; }
    void print(int item) {
        PdfPrinter printer(pathOf("ours.pdf"));
        const graph::PictureInput input{m_state->Config, m_state->Run, m_state->Overlay, m_view,
            m_onTop, {0, 1100, runRows + 1, 0}, {}, true, benchRunText, {}};
        graph::Mnu_Print(
            item, input, m_state->AnalogPicture, {printer, m_dialogs, m_window, m_progress});
    }
    qint64 bytes() const { return QFileInfo(QString::fromStdString(pathOf("ours.pdf"))).size(); }

private:
    std::unique_ptr<core::SharedState> m_state = std::make_unique<core::SharedState>();
    ScratchFolder m_folder;
    SilentDialogs m_dialogs;
    graph::GraphView m_view;
    platform::DisplayList m_onTop;
    platform::DisplayListSurface m_surface;
    graph::WindowlessHost m_window{m_surface, true};
    Uncancelled m_progress;
};

// The same cells as a program has them that only writes them.
std::vector<PageOfCells> readyCells(core::SharedState& state) {
    const auto table = graph::makePrintTable(channels::viewOfRun(state.Run), state.AnalogPicture);
    std::vector<PageOfCells> pages;
    for (std::size_t line = 0; line < table.lines.size(); ++line) {
        const auto r = static_cast<int>(line % graph::linesAPage) + 1;
        if (r == 1) pages.emplace_back();
        for (const graph::PrintCell& cell : table.lines[line]) {
            const float x = table.columns[static_cast<std::size_t>(cell.column)].x;
            pages.back().push_back({margin + static_cast<double>(x) * pointsAUnit,
                margin + static_cast<double>(graph::printedLineY(r) + 3) * pointsAUnit, cell.text});
        }
    }
    return pages;
}

void measureTable(Table& table) {
    Printing printing(tableType);
    const auto pages = readyCells(printing.state());
    const std::string peer = printing.pathOf("peer.pdf");
    if (!cairoTable(peer, pages)) return table.skip("table to PDF", "cairo is not on this machine");
    const auto seconds = medianSeconds(
        {{[&] { printing.print(graph::printData); }}, {[&] { cairoTable(peer, pages); }}}, rounds);
    table.add("table of 2,520 samples to PDF", "cairo with the ready cells", seconds[0], seconds[1],
        Goal{1.5, "-"});
}

std::vector<PageCurve> readyCurves(core::SharedState& state) {
    const TrendImage image(state, false, 1920, 1080);
    std::vector<PageCurve> curves;
    for (const auto& points : image.curves()) {
        PageCurve& curve = curves.emplace_back();
        for (const platform::Point& point : points) {
            curve.points.emplace_back(margin + static_cast<double>(point.x) / runRows * 808,
                578 - static_cast<double>(point.y) / 1100 * 450);
        }
        curve.red = 0.04 * static_cast<double>(curves.size());
    }
    return curves;
}

void measurePicture(Table& table) {
    Printing printing(pictureType);
    const auto curves = readyCurves(printing.state());
    const std::string peer = printing.pathOf("peer.pdf");
    printing.print(graph::printScreen);
    table.addDemand("picture of 25 curves to PDF",
        "at most 300 kB; " + std::to_string(printing.bytes() / 1000) + " kB",
        printing.bytes() > 0 && printing.bytes() <= mostBytes);
    if (!cairoCurves(peer, curves)) return table.skip("picture", "cairo is not on this machine");
    const auto seconds = medianSeconds(
        {{[&] { printing.print(graph::printScreen); }}, {[&] { cairoCurves(peer, curves); }}},
        rounds);
    table.add("picture of 25 curves to PDF", "cairo with the ready curves", seconds[0], seconds[1],
        Goal{2.0, "-"});
}

} // namespace

void measurePrinting(Table& table) {
    measureTable(table);
    measurePicture(table);
}

} // namespace kvo::bench
