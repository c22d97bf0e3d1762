// The transfer of a whole type 25 logger through the real serial port: a pseudo-terminal whose far
// end answers as slowly as 9600 baud does. The least that the line can need is the bound.
#include "link/download.h"
#include "bench/parts.h"
#include "bench/run.h"
#include "bench/silent_dialogs.h"
#include "bench/timing.h"
#include "platform/qt/qt_serial_port.h"
#include "platform/qt/qt_yield.h"
#include "tools/logger_simulator/duplex_line.h"
#include "tools/logger_simulator/model_logger.h"
#include "tools/logger_simulator/pty_logger.h"

#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>
#include <QWidget>

#include <filesystem>
#include <memory>

namespace kvo::bench {
namespace {

constexpr int loggerType = 25;
constexpr double byteSeconds = simulator::byteTimeMs / 1000;
// A byte comes in for each that goes out: on a line of two ways the replies alone count, behind the
// first request.
const Goal fastGoal{1.03, "1.004"};
const Goal safeGoal{1.15, "1.10"};
const Goal coreGoal{0.05, "0.02"};

// The bar and the text of the download form, painted as they change.
class ProgressWindow : public link::DownloadView {
public:
    ProgressWindow() {
        auto* column = new QVBoxLayout(&m_window);
        column->addWidget(&m_text);
        column->addWidget(&m_bar);
        m_window.show();
    }
    void setText_Display(const std::string& text) override {
        m_text.setText(QString::fromLatin1(text.c_str()));
    }
    void setProgressMax(int maximum) override { m_bar.setMaximum(maximum); }
    void setProgress(int value) override { m_bar.setValue(value); }
    void hideButtons() override {}
    void unload() override {}
    void showSoftwareSetup() override {}
    void showFreshRun(const std::string&, const std::string&) override {}
    void refreshChooser(const std::string&) override {}

private:
    QWidget m_window;
    QLabel m_text;
    QProgressBar m_bar;
};

struct Transfer {
    double wallSeconds = 0;
    double threadSeconds = 0;
};

void demand(bool well, const char* what) {
    if (well) return;
    std::fprintf(stderr, "kvo_bench: %s\n", what);
    std::exit(2);
}

Transfer transfer(bool fast) {
    const ScratchFolder folder;
    simulator::ModelLogger logger(loggerType);
    simulator::PtyLogger pty(logger, true);
    demand(pty.start(), "no pseudo-terminal is to be had");
    std::filesystem::create_symlink(pty.device(), folder.path() + "/COM1");

    auto run = std::make_unique<core::OpenRun>();
    auto periods = std::make_unique<link::PulsePeriods>();
    SilentDialogs dialogs;
    ProgressWindow window;
    platform_qt::QtSerialPort port([&] { return folder.path(); });
    platform_qt::QtYield yield(port);
    link::LoggerLink link(port, yield, dialogs);
    link.recorder().begin(); // as a download does
    link.OpenLoggerPort(1);
    demand(link.LinkFailed == 0 && link.greetLogger(), "the simulated logger did not answer");
    link.ReadLoggerHeader();
    run->DataType = link.Header.DataType;
    demand(link::prepareDownload(*run).has_value(), "the logger is of another type");
    window.setProgressMax(run->SampleCount);
    link::Download download(link, *run, *periods, window, dialogs);

    Transfer result{wallSeconds(), threadSeconds()};
    fast ? download.DownloadFast() : download.DownloadSafe();
    result = {wallSeconds() - result.wallSeconds, threadSeconds() - result.threadSeconds};
    demand(link.LinkFailed == 0 && run->image.samples[600].Index == 600, "the transfer failed");
    link.CloseLoggerPort();
    return result;
}

} // namespace

void measureDownload(Table& table) {
    const auto type = *link::downloadType(loggerType);
    // A batch of B bytes takes B + 1 byte times; the loop reads a batch for each pair of samples.
    const int batches = (type.SampleCount - 2 + 1) / 2;
    const double fastBound = batches * (2 * type.RecordSize + 1) * byteSeconds;
    // One request ahead, the replies follow one another.
    const double safeBound = type.SampleCount * type.RecordSize * byteSeconds;

    const Transfer fast = transfer(true);
    table.add("download, fast", "its bound on the line", fast.wallSeconds, fastBound, fastGoal);
    table.addRatio("download, fast", "a core", fast.threadSeconds / fast.wallSeconds, coreGoal);
    const Transfer safe = transfer(false);
    table.add("download, safe", "its bound on the line", safe.wallSeconds, safeBound, safeGoal);
    table.addRatio("download, safe", "a core", safe.threadSeconds / safe.wallSeconds, coreGoal);
}

} // namespace kvo::bench
