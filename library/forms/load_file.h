#pragma once
// LoadFile: the modal form on which the user picks a run from the list of runs, deletes runs or
// changes a run's description. It shows library/run_list, where the rows and the choice are.
#include "core/open_run.h"
#include "library/forms/run_rows.h"

#include <QDialog>
#include <QTimer>

#include <optional>

class QLabel;
class QLineEdit;
class QListView;
class QPushButton;

namespace kvo::forms {

class LoadFile : public QDialog {
    Q_OBJECT

public:
    LoadFile();

    // Reads the index into the list; the choice stays on its run.
    void Data_File();
    // The captions of the button, of the label over the box, and of the form.
    void setCaptions(const QString& button, const QString& label, const QString& form);
    // Shows the form to choose one run; none where it was left without a choice.
    std::optional<core::ChosenRun> choose(const QString& button, const QString& form);
    // Shows the form to delete runs.
    void chooseToDelete(const QString& form);

    void BTN_Ok_Click();
    void BTN_Cancel_Click();
    void Files_List_Click();
    void Files_List_DblClick();
    void editDescription();

protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void reject() override;

private:
    void makeLayout();
    void DeleteFile();
    void typeAhead(const QString& text);
    void listChanged();
    void showChoice();

    enum class Purpose { choose, deleteRuns };
    Purpose m_purpose = Purpose::choose;
    std::optional<core::ChosenRun> m_answer;
    QString m_typed;
    QTimer m_typedTimer;
    RunRows m_descriptions{RunRows::Column::description};
    RunRows m_names{RunRows::Column::fileName};

    QListView* Files_List = nullptr;
    QListView* Path_List = nullptr;
    QLineEdit* Discription = nullptr;
    QLabel* Label1 = nullptr;
    QPushButton* BTN_Ok = nullptr;
    QPushButton* BTN_Cancel = nullptr;
    QPushButton* m_edit = nullptr;
};

} // namespace kvo::forms
