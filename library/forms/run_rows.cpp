#include "library/forms/run_rows.h"

#include "platform/qt/form_kit.h"
#include "platform/qt/text.h"

#include <QListView>

namespace kvo::forms {

void RunRows::show(const std::vector<core::RunIndexEntry>* rows) {
    beginResetModel();
    m_rows = rows;
    endResetModel();
}

int RunRows::rowCount(const QModelIndex& parent) const {
    return parent.isValid() || m_rows == nullptr ? 0 : static_cast<int>(m_rows->size());
}

QVariant RunRows::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole || m_rows == nullptr) return {};
    // A view asks for no row too: Ctrl+C in a list that has none chosen.
    if (index.row() < 0 || index.row() >= rowCount({})) return {};
    const core::RunIndexEntry& row = (*m_rows)[static_cast<std::size_t>(index.row())];
    const std::string& text = m_column == Column::description ? row.Description : row.FileName;
    return platform_qt::shown(text);
}

void RunRows::changed() {
    beginResetModel();
    endResetModel();
}

QListView* makeRunView(RunRows& rows, const char* name) {
    auto* view = platform_qt::named(new QListView, name);
    view->setModel(&rows);
    view->setUniformItemSizes(true); // so that 100,000 rows are not measured one by one
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    return view;
}

} // namespace kvo::forms
