#pragma once
// LoadFile: the modal form on which the user picks a run from the index, deletes runs or changes a
// run's description. It stays loaded when it hides, since the graph steps through its list.
#include "core/shared_state.h"

#include <QAbstractListModel>
#include <QDialog>
#include <QTimer>

#include <string>
#include <vector>

class QLabel;
class QLineEdit;
class QListView;
class QPushButton;

namespace kvo::forms {

// The rows of the chooser; one column of the index at a time, so that 100,000 runs open at once.
class RunRows : public QAbstractListModel {
    Q_OBJECT

public:
    enum class Column { description, fileName };
    explicit RunRows(Column column) : m_column(column) {}
    void show(const std::vector<core::RunIndexEntry>* rows);
    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    // A row or the whole list has changed.
    void changed();

private:
    Column m_column;
    const std::vector<core::RunIndexEntry>* m_rows = nullptr;
};

class LoadFile : public QDialog {
    Q_OBJECT

public:
    LoadFile();

    // Reads the index into the list; the selection stays on its run.
    void Data_File();
    // The captions of the button, of the label over the box, and of the form.
    void setCaptions(const QString& button, const QString& label, const QString& form);
    // Shows the form to choose one run. True when one was chosen: DataFilePath, InfoFilePath and
    // chosenName() are set. False leaves LoadStatus at -1.
    bool choose(const QString& button, const QString& form);
    // Shows the form to delete runs.
    void chooseToDelete(const QString& form);

    // Text of the chosen row, its file name, and the row itself; -1 where none is selected.
    std::string chosenDescription() const;
    std::string chosenName() const;
    int chosenRow() const;
    int rowCount() const { return static_cast<int>(m_rows.size()); }
    void chooseRow(int row);
    // DataFilePath and InfoFilePath of the chosen row.
    void takePaths() const;

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

    std::vector<core::RunIndexEntry> m_rows;
    std::string m_lastChosen; // file name of the last choice made
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
