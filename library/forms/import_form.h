#pragma once
// Import: the form on which the user picks files from elsewhere that become runs of this program.
// The course is library/import; the form shows drives, folders, files, the known runs and how far
// the import is.
#include "library/folder_browser.h"
#include "library/import.h"
#include "platform/qt/form_kit.h"

#include <QDialog>
#include <QStringListModel>

#include <string>
#include <vector>

class QLabel;
class QLineEdit;
class QListView;
class QListWidget;
class QProgressBar;
class QPushButton;

namespace kvo::forms {

class DriveBox;

class Import : public QDialog, private library::ImportView {
    Q_OBJECT

public:
    // The folder that was looked at last, UTF-8, and what the form has written.
    struct Kept {
        std::string folder;
        std::vector<std::string> written;
    };

    Import();

    // Form_Load: sets the form for files of this program, or for those of the older one.
    // Gives the paths of the run files that were written.
    std::vector<std::string> importRuns(library::ImportMode mode);
    // The folder that the lists show, UTF-8. One that cannot be read leaves them, with a beep.
    void goTo(const std::string& folder);

    void Butten_Import_Click();
    void Butten_Cancel_Click();
    void reject() override { Butten_Cancel_Click(); }

private:
    void makeControls();
    void makeLayout();
    QLayout* makeProgress();
    void Drive_Dos_Change();
    void Dir_Dos_DblClick();
    void Files_Dos_Click();
    void showFolder(bool entered);
    void setBusy(bool busy);

    // library::ImportView
    void showFile(const std::string& name, int number, int files) override;
    void setProgress(int row, int rows) override;
    void clearProgress() override;
    void showRuns() override;

    library::ImportMode m_mode = library::ImportMode::windows;
    library::Import m_import;
    library::FolderBrowser m_walk;
    std::vector<std::string> m_files; // that the list shows, in its order
    QStringListModel m_runs;
    DriveBox* Drive_Dos = nullptr;
    QListWidget* Dir_Dos = nullptr;
    QListWidget* Files_Dos = nullptr;
    QListView* Data_Files_List = nullptr;
    QLabel* LAB_CurrentDir = nullptr;
    QLineEdit* Import_Name = nullptr;
    QLabel* Import_Ind = nullptr;
    QProgressBar* Import_Bar = nullptr;
    QLabel* Import_Percent = nullptr;
    QPushButton* m_all = nullptr;
    QPushButton* Butten_Import = nullptr;
    QPushButton* Butten_Cancel = nullptr;
};

} // namespace kvo::forms
