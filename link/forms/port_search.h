#pragma once
// PortSearch: the window under which the search for the logger's port runs. It shows which port is
// tried, and its Cancel ends the search before the next one.
#include "link/find_port.h"

#include <QDialog>

#include <optional>

class QLabel;
class QProgressBar;
class QPushButton;

namespace kvo::forms {

class PortSearch : public QDialog, public link::PortListView {
    Q_OBJECT

public:
    PortSearch();

    // Asks, searches and asks again. The port that the user took, 1 to 16.
    std::optional<int> search();

    void selectComPort(int entry) override;
    void showPort(int port) override;
    bool stopped() const override { return m_stopped; }
    void searchIsOver() override;

protected:
    void reject() override;

private:
    QLabel* Label_Port = nullptr;
    QProgressBar* ProgressBar1 = nullptr;
    QPushButton* Cancel_Command = nullptr;
    std::optional<int> m_taken;
    bool m_stopped = false;
};

} // namespace kvo::forms
