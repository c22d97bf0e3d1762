#pragma once
// What the chooser shows of the list of runs, for its view: the description, and the elapsed time
// and the speed where they are known. A row that is painted before it was read is asked for.
#include "library/found_runs.h"

#include <QAbstractTableModel>

class QTreeView;

namespace kvo::forms {

class FoundRows : public QAbstractTableModel {
    Q_OBJECT

public:
    // All outlive it; `rows` is the list that the two others have.
    FoundRows(const std::vector<core::RunIndexEntry>& rows, const library::FoundRuns& found,
        library::RunFacts& facts)
        : m_rows(rows), m_found(found), m_facts(facts) {}
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    // A view asks for each row of a list that it lays out.
    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    // Other rows, or another order.
    void changed();
    // Rows in view were read.
    void factsCame();

signals:
    // Of a row in view more is wanted than the list has.
    void factsWanted() const;

private:
    QString known(int row, int column) const;

    const std::vector<core::RunIndexEntry>& m_rows;
    const library::FoundRuns& m_found;
    library::RunFacts& m_facts;
};

// A list with columns for such rows, under the name of its control; nothing in it is edited.
QTreeView* makeFoundView(FoundRows& rows, const char* name);

} // namespace kvo::forms
