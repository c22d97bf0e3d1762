#pragma once
// Browser: the modal dialogue that looks for a folder to copy to, by drive, folder and the files
// that lie there.
#include "library/folder_browser.h"

#include <QDialog>

#include <optional>
#include <string>

class QLabel;
class QListWidget;
class QPushButton;

namespace kvo::forms {

class DriveBox;

class Browser : public QDialog {
    Q_OBJECT

public:
    Browser();

    // The folder that the user took, UTF-8; none where the dialogue was cancelled. It opens where
    // it was left the last time. While it is open the process's current folder follows.
    std::optional<std::string> browse();

    void Drive1_Change();
    void Dir1_Change();
    void Ok_Click();
    void Cancel_Click();

    struct Kept {
        std::string folder;
    };

protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void reject() override;

private:
    void Form_Load();
    void makeLayout();
    QLayout* makeLists();
    void enterChosen();

    library::FolderBrowser m_walk;
    bool m_taken = false;

    DriveBox* Drive1 = nullptr;
    QListWidget* Dir1 = nullptr;
    QListWidget* Fil_Files = nullptr;
    QLabel* LAB_CurrentDir = nullptr;
    QPushButton* Ok = nullptr;
    QPushButton* Cancel = nullptr;
};

} // namespace kvo::forms
