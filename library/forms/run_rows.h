#pragma once
// The rows of the index as a list shows them; one column of the index at a time, so that 100,000
// runs open at once.
#include "core/run_index.h"

#include <QAbstractListModel>

#include <vector>

class QListView;

namespace kvo::forms {

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

// A list of such rows for a form to place, under the name of its control; nothing in it is edited.
QListView* makeRunView(RunRows& rows, const char* name);

} // namespace kvo::forms
