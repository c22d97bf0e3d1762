#include "link/forms/port_search.h"

#include "link/forms/logger_line.h"
#include "platform/qt/form_kit.h"
#include "platform/services.h"

#include <QApplication>
#include <QFontMetrics>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

namespace kvo::forms {

using namespace platform_qt;

PortSearch::PortSearch() : QDialog(QApplication::activeModalWidget()) {
    constexpr int widthInLetters = 50; // of a line with a device's name
    setObjectName(QStringLiteral("PortSearch"));
    setWindowTitle(QStringLiteral("Find Comm Port"));
    setWindowModality(Qt::ApplicationModal);
    Label_Port = named(plainLabel({}), "Label_Port");
    Label_Port->setWordWrap(true);
    Label_Port->setMinimumWidth(QFontMetrics(font()).averageCharWidth() * widthInLetters);
    ProgressBar1 = named(new QProgressBar, "ProgressBar1");
    ProgressBar1->setRange(0, platform::portNumbers);
    ProgressBar1->setFormat(QStringLiteral("%v of %m"));
    ProgressBar1->setAccessibleName(QStringLiteral("Ports tried"));
    Cancel_Command = named(new QPushButton(QStringLiteral("Cancel")), "Cancel_Command");
    connect(Cancel_Command, &QPushButton::clicked, this, &PortSearch::reject);
    auto* all = column({Label_Port, ProgressBar1, row({LayoutPart::room(), Cancel_Command})});
    all->setContentsMargins(20, 18, 20, 16);
    all->setSpacing(14);
    setLayout(all);
}

std::optional<int> PortSearch::search() {
    // A session that led here has its port open; the search would take that for port 1.
    loggerLink().CloseLoggerPort();
    link::FindLoggerPort(loggerLink(), *platform::services().dialogs, *this);
    return m_taken;
}

void PortSearch::showPort(int port) {
    Label_Port->setText(QStringLiteral("Looking for the logger.\n%1")
                            .arg(QString::fromStdString(loggerLink().portText(port))));
    ProgressBar1->setValue(port);
    show();
}

void PortSearch::selectComPort(int entry) {
    m_taken = entry + 1;
}

void PortSearch::searchIsOver() {
    hide();
}

// Escape and the window's close button are Cancel too. The window stands until the port that is
// being tried has had its time.
void PortSearch::reject() {
    m_stopped = true;
    Cancel_Command->setEnabled(false);
}

} // namespace kvo::forms
