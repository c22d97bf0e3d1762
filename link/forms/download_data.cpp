#include "link/forms/download_data.h"

#include "core/forms/doors.h"
#include "core/shared_state.h"
#include "link/forms/logger_line.h"
#include "platform/qt/application.h"
#include "platform/qt/form_kit.h"
#include "platform/qt/text.h"
#include "platform/services.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

namespace kvo::forms {

using namespace platform_qt;

DownloadData::DownloadData()
    : m_session(loggerLink(),
          {core::state().Config, core::state().ConfigKnown, core::state().AppFolder,
              core::state().Run, core::state().Tables},
          *this, *platform::services().dialogs, *platform::services().clock,
          *platform::services().files) {
    setObjectName(QStringLiteral("DownloadData"));
    setWindowTitle(QStringLiteral("Download Data"));
    makeLayout();
}

void DownloadData::makeLayout() {
    Text_Display = named(
        plainLabel(QStringLiteral("Plug In Download Cable and Start Download")), "Text_Display");
    Text_Display->setWordWrap(true);
    Text_Display->setFont(tabularFont());
    Text_Display->setMinimumHeight(Text_Display->fontMetrics().lineSpacing() * 2);
    Text_Display->setMinimumWidth(Text_Display->fontMetrics().averageCharWidth() * 64);
    ProgressBar1 = named(new QProgressBar, "ProgressBar1");
    ProgressBar1->setTextVisible(false);
    ProgressBar1->setRange(0, 100);
    ProgressBar1->setValue(0);
    ProgressBar1->setAccessibleName(QStringLiteral("Download progress"));
    Percent = named(new QLabel(QStringLiteral("100%")), "Percent"); // the end of the bar's scale
    Command_Send = named(new QPushButton(QStringLiteral("&Start Download")), "Command_Send");
    Cancel_Command = named(new QPushButton(QStringLiteral("Cancel")), "Cancel_Command");
    Command_Send->setDefault(true);
    Cancel_Command->setAutoDefault(false);
    connect(Command_Send, &QPushButton::clicked, this, &DownloadData::Command_Send_Click);
    connect(Cancel_Command, &QPushButton::clicked, this, &DownloadData::Cancel_Command_Click);
    for (QPushButton* button : {Command_Send, Cancel_Command}) {
        QSizePolicy policy = button->sizePolicy();
        policy.setRetainSizeWhenHidden(true); // the bar stays where it is when they go
        button->setSizePolicy(policy);
    }
    Label_Port = named(plainLabel({}), "Label_Port");
    showPort();
    auto* all = column({Text_Display, row({{ProgressBar1, 1}, Percent}), LayoutPart::room(),
        row({Label_Port, LayoutPart::room(), Command_Send, Cancel_Command})});
    all->setContentsMargins(20, 18, 20, 16);
    all->setSpacing(14);
    setLayout(all);
}

// An adapter may have come or gone since the form was made.
void DownloadData::showPort() {
    Label_Port->setText(
        QString::fromStdString(loggerLink().portText(core::state().Config.CommPort)));
}

void DownloadData::Command_Send_Click() {
    showPort();
    m_session.Command_Send_Click();
    showPort();
}

void DownloadData::Cancel_Command_Click() {
    m_session.Cancel_Command_Click();
}

// Escape and the window's close button are Cancel, and like it out of reach once the transfer runs.
void DownloadData::reject() {
    if (!Cancel_Command->isHidden()) Cancel_Command_Click();
}

void DownloadData::setText_Display(const std::string& text) {
    const QString now = shown(text);
    if (now == Text_Display->text()) return; // most of a transfer's steps show the same percent
    Text_Display->setText(now);
    Text_Display->repaint();
}

void DownloadData::setProgressMax(int maximum) {
    ProgressBar1->setMaximum(maximum);
}

void DownloadData::setProgress(int value) {
    ProgressBar1->setValue(value);
}

void DownloadData::hideButtons() {
    Command_Send->hide();
    Cancel_Command->hide();
    repaint();
}

void DownloadData::unload() {
    platform_qt::unload<DownloadData>();
}

void DownloadData::showSoftwareSetup() {
    doors().showSoftwareSetup();
}

void DownloadData::showFreshRun(const std::string& path, const std::string& caption) {
    doors().showFreshRun(path, caption);
}

void DownloadData::refreshChooser(const std::string& fileName) {
    doors().refreshChooser(fileName);
}

} // namespace kvo::forms
