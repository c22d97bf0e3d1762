#pragma once
// LoadFile: the modal form on which the user picks a run from the list of runs, deletes runs or
// changes a run's description. It shows library/run_list, where the rows and the choice are,
// through library/found_runs, which says what of it is seen in which order.
#include "core/open_run.h"
#include "library/forms/found_rows.h"
#include "library/forms/run_rows.h"
#include "library/found_runs.h"

#include <QDialog>
#include <QTimer>

#include <optional>

class QComboBox;
class QKeyEvent;
class QLabel;
class QLineEdit;
class QListView;
class QPushButton;
class QTreeView;

namespace kvo::forms {

class RunPreviewPane;

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
    void Filter_Change();
    // The order of the view alone: the list keeps its own.
    void sortBy(library::RunOrder order);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void reject() override;

private:
    void makeList();
    void makeBoxes();
    void makeFinder();
    void makeLayout();
    void DeleteFile();
    void typeAhead(const QString& text);
    bool keyInList(const QKeyEvent& key);
    bool keyInFilter(QKeyEvent& key);
    void listChanged();
    void chooseFound();
    void showFound();
    void showOrder();
    void showChoice();
    void startReading();
    void readSome();

    enum class Purpose { choose, deleteRuns };
    Purpose m_purpose = Purpose::choose;
    std::optional<core::ChosenRun> m_answer;
    QString m_typed;
    QTimer m_typedTimer;
    library::RunFacts m_facts;
    library::FoundRuns m_found{m_facts};
    FoundRows m_rows;
    RunRows m_names{RunRows::Column::fileName};
    QTimer m_reader;        // reads what the rows need, a little at a time
    int m_sinceRefresh = 0; // files read since the view was brought up to date
    int m_wanted = -1;      // the row that the user chose, also while a filter hides it
    bool m_showing = false; // the form itself moves the choice

    QTreeView* Files_List = nullptr;
    QListView* Path_List = nullptr;
    QLineEdit* Discription = nullptr;
    QLabel* Label1 = nullptr;
    QPushButton* BTN_Ok = nullptr;
    QPushButton* BTN_Cancel = nullptr;
    QPushButton* m_edit = nullptr;
    QLineEdit* m_filter = nullptr;
    QComboBox* m_order = nullptr;
    QLabel* m_summary = nullptr;
    RunPreviewPane* m_preview = nullptr;
};

} // namespace kvo::forms
