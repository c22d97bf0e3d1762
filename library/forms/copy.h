#pragma once
// Copy: the modal form that copies run files with their info files to a folder, or sends them as
// the attachments of a mail.
#include "core/run_index.h"
#include "library/copy_job.h"
#include "library/forms/run_rows.h"
#include "library/mail_files.h"

#include <QDialog>
#include <QPointer>
#include <QString>

#include <string>
#include <vector>

class QLabel;
class QLineEdit;
class QListView;
class QPlainTextEdit;
class QPushButton;

namespace kvo::forms {

class Copy : public QDialog, private library::CopyView {
    Q_OBJECT

public:
    Copy();

    // Shows the form to copy runs to a folder. It stays until the user leaves it.
    void copyFiles();
    // Shows it to send runs by mail; `product` is what the mail says of the program.
    void mailFiles(const library::MailProduct& product);

    // Reads the index into both lists.
    void Data_File();
    void But_Copy_Click();
    void But_Browse_Click();
    void But_Cancel_Click();
    void File_List_DblClick();
    void Text_Destination_LostFocus();

    // The folder that was copied to last.
    struct Kept {
        QString destination;
    };

protected:
    void reject() override;

private:
    void makeLists();
    void makeBoxes();
    void makeButtons();
    void makeLayout();
    void showPurpose();
    void copySelected();
    void SendFile();
    std::vector<std::size_t> selectedRows() const;

    void showDestination(const std::string& folder) override;
    void moveTo(std::size_t row) override;
    void lockControls(bool locked) override;
    void showProgress(const std::string& text) override;
    void hideProgress() override;
    void deselect(std::size_t row) override;

    enum class Purpose { copy, mail };
    Purpose m_purpose = Purpose::copy;
    library::MailProduct m_product;
    std::vector<core::RunIndexEntry> m_rows;
    RunRows m_descriptions{RunRows::Column::description};
    RunRows m_names{RunRows::Column::fileName};
    QPointer<QWidget> m_focus; // where it was before the controls were locked

    QLabel* Label_Files = nullptr;
    QListView* File_List = nullptr;
    QListView* Path_List = nullptr;
    QLabel* Label_Destination = nullptr;
    QLineEdit* Text_Destination = nullptr;
    QPushButton* But_Browse = nullptr;
    QLabel* Email_Text_label = nullptr;
    QPlainTextEdit* Text1 = nullptr;
    QLabel* Copy_Label = nullptr;
    QPushButton* But_Copy = nullptr;
    QPushButton* But_Cancel = nullptr;
};

} // namespace kvo::forms
