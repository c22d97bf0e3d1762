#pragma once
// DownloadData: the form under which a run comes over the wire. It reads and shows; the course of a
// download is link/download_session.h. Once the transfer has begun it cannot be left.
#include "link/download_session.h"
#include "link/download_view.h"

#include <QDialog>

class QLabel;
class QProgressBar;
class QPushButton;

namespace kvo::forms {

class DownloadData : public QDialog, public link::DownloadView {
    Q_OBJECT

public:
    DownloadData();

    void setText_Display(const std::string& text) override;
    void setProgressMax(int maximum) override;
    void setProgress(int value) override;
    void hideButtons() override;
    void unload() override;
    void showSoftwareSetup() override;
    void showFreshRun(const std::string& path, const std::string& caption) override;
    void refreshChooser(const std::string& fileName) override;

protected:
    void reject() override;

private:
    void makeLayout();
    void showPort();
    void Command_Send_Click();
    void Cancel_Command_Click();

    QPushButton* Command_Send = nullptr;
    QPushButton* Cancel_Command = nullptr;
    QProgressBar* ProgressBar1 = nullptr;
    QLabel* Text_Display = nullptr;
    QLabel* Percent = nullptr;
    QLabel* Label_Port = nullptr; // where the logger is looked for
    link::DownloadSession m_session;
};

} // namespace kvo::forms
