#include "library/forms/found_rows.h"

#include "platform/qt/form_kit.h"
#include "platform/qt/text.h"

#include <QHeaderView>
#include <QTreeView>

namespace kvo::forms {

using library::RunColumn;

namespace {

constexpr int runColumn = static_cast<int>(RunColumn::run);
constexpr int timeColumn = static_cast<int>(RunColumn::elapsedTime);
constexpr int speedColumn = static_cast<int>(RunColumn::speed);

} // namespace

int FoundRows::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_found.count();
}

int FoundRows::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : library::runColumns;
}

QModelIndex FoundRows::index(int row, int column, const QModelIndex& parent) const {
    const bool there = !parent.isValid() && row >= 0 && row < m_found.count() && column >= 0 &&
                       column < library::runColumns;
    return there ? createIndex(row, column) : QModelIndex();
}

Qt::ItemFlags FoundRows::flags(const QModelIndex& index) const {
    if (!index.isValid()) return {};
    return Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
}

QVariant FoundRows::data(const QModelIndex& index, int role) const {
    // A view asks for no row too, and may be painted before it hears of another list.
    const int row = m_found.rowAt(index.row());
    if (row < 0 || row >= static_cast<int>(m_rows.size())) return {};
    if (role == Qt::TextAlignmentRole && index.column() != runColumn)
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::DisplayRole) return {};
    if (index.column() == runColumn)
        return platform_qt::shown(m_rows[static_cast<std::size_t>(row)].Description);
    return known(row, index.column());
}

QString FoundRows::known(int row, int column) const {
    if (const library::RunFact* fact = m_facts.known(row))
        return platform_qt::shown(column == timeColumn ? fact->Text_ET : fact->Text_Mph);
    m_facts.want(row);
    emit factsWanted();
    return {};
}

QVariant FoundRows::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) return {};
    if (role == Qt::TextAlignmentRole && section != runColumn)
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::DisplayRole) return {};
    return section == runColumn    ? QStringLiteral("Run")
           : section == timeColumn ? QStringLiteral("Elapsed time")
                                   : QStringLiteral("Speed");
}

void FoundRows::changed() {
    beginResetModel();
    endResetModel();
}

void FoundRows::factsCame() {
    if (rowCount() > 0) emit dataChanged(index(0, timeColumn), index(rowCount() - 1, speedColumn));
}

QTreeView* makeFoundView(FoundRows& rows, const char* name) {
    auto* view = platform_qt::named(new QTreeView, name);
    view->setModel(&rows);
    view->setRootIsDecorated(false);
    view->setItemsExpandable(false);
    view->setUniformRowHeights(true); // so that 100,000 rows are not measured one by one
    view->setAllColumnsShowFocus(true);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    QHeaderView* header = view->header();
    header->setStretchLastSection(false);
    header->setSectionsMovable(false);
    header->setSectionsClickable(true);
    header->setSectionResizeMode(runColumn, QHeaderView::Stretch);
    for (const int column : {timeColumn, speedColumn}) {
        header->setSectionResizeMode(column, QHeaderView::Fixed);
        const QString caption = rows.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
        // Room for the mark of the order too.
        header->resizeSection(column, header->fontMetrics().horizontalAdvance(caption) + 36);
    }
    return view;
}

} // namespace kvo::forms
