#include "library/forms/load_file.h"

#include "core/shared_state.h"
#include "library/chooser_list.h"
#include "library/forms/run_preview_pane.h"
#include "library/forms/unread.h"
#include "library/run_list.h"
#include "platform/qt/form_kit.h"
#include "platform/qt/text.h"
#include "platform/services.h"
#include "platform/text.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMouseEvent>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QTreeView>

namespace kvo::forms {

using namespace platform_qt;
using library::RunColumn;
using library::runList;
using library::RunOrder;

namespace {

constexpr int typeAheadMs = 1000;   // a pause this long begins a new search
constexpr int filesAtOnce = 8;      // that are read between two events
constexpr int filesARefresh = 2000; // that are read before the view is brought up to date

// What could not be done, in words; nothing where all is well.
void tell(const platform::WriteResult& result) {
    if (result) return;
    platform::services().dialogs->beep();
    platform::services().dialogs->messageBox(
        result.message, platform::boxStyle::warning, "Run index");
}

} // namespace

LoadFile::LoadFile() : m_rows(runList().rows(), m_found, m_facts) {
    setObjectName(QStringLiteral("LoadFile"));
    m_typedTimer.setSingleShot(true);
    connect(&m_typedTimer, &QTimer::timeout, this, [this] { m_typed.clear(); });
    m_reader.setSingleShot(true);
    connect(&m_reader, &QTimer::timeout, this, &LoadFile::readSome);
    makeList();
    makeBoxes();
    makeFinder();
    makeLayout();
    setCaptions(
        QStringLiteral("&Load"), QStringLiteral("File To Load"), QStringLiteral("Load Data File"));
    m_names.show(&runList().rows());
    listChanged();
}

void LoadFile::makeList() {
    Files_List = makeFoundView(m_rows, "Files_List");
    Files_List->setAccessibleName(QStringLiteral("Runs"));
    Files_List->setAlternatingRowColors(true);
    Files_List->setToolTip(
        core::state().LookOnly
            ? QStringLiteral("Type to find a run.")
            : QStringLiteral("Type to find a run. Right button or F2 changes its description."));
    Files_List->setMinimumSize(Files_List->fontMetrics().averageCharWidth() * 94, 220);
    Files_List->installEventFilter(this);
    Files_List->viewport()->installEventFilter(this);
    connect(Files_List->selectionModel(), &QItemSelectionModel::currentChanged, this,
        &LoadFile::Files_List_Click);
    connect(Files_List, &QTreeView::doubleClicked, this, &LoadFile::Files_List_DblClick);
    connect(Files_List->header(), &QHeaderView::sectionClicked, this, [this](int column) {
        sortBy(library::orderAfterClick(static_cast<RunColumn>(column), m_found.order()));
    });
    connect(&m_rows, &FoundRows::factsWanted, this, &LoadFile::startReading);
    Path_List = makeRunView(m_names, "Path_List");
    Path_List->hide();
    Path_List->setParent(this);
}

void LoadFile::makeBoxes() {
    Discription = named(new QLineEdit, "Discription");
    Discription->setReadOnly(true);
    Label1 = buddyLabel({}, Discription);
    Label1->setObjectName(QStringLiteral("Label1"));
    BTN_Ok = named(new QPushButton, "BTN_Ok");
    BTN_Ok->setDefault(true);
    BTN_Cancel = named(new QPushButton(QStringLiteral("Cancel")), "BTN_Cancel");
    BTN_Cancel->setAutoDefault(false);
    m_edit = named(new QPushButton(QStringLiteral("&Edit Description...")), "BTN_Edit");
    m_edit->setAutoDefault(false);
    m_preview = new RunPreviewPane("Preview");
    connect(BTN_Ok, &QPushButton::clicked, this, &LoadFile::BTN_Ok_Click);
    connect(BTN_Cancel, &QPushButton::clicked, this, &LoadFile::BTN_Cancel_Click);
    connect(m_edit, &QPushButton::clicked, this, &LoadFile::editDescription);
}

void LoadFile::makeFinder() {
    m_filter = named(new QLineEdit, "Text_Filter");
    m_filter->setPlaceholderText(QStringLiteral("Words of title, date or notes"));
    m_filter->setToolTip(
        QStringLiteral("Shows the runs in which every word stands. Ctrl+F comes here."));
    m_filter->setClearButtonEnabled(true);
    m_filter->installEventFilter(this);
    m_order = named(new QComboBox, "Combo_Order");
    for (int order = 0; order < library::runOrders; ++order)
        m_order->addItem(QLatin1String(library::runOrderCaption(static_cast<RunOrder>(order))));
    m_summary = named(plainLabel({}), "Label_Found");
    connect(m_filter, &QLineEdit::textChanged, this, &LoadFile::Filter_Change);
    connect(m_order, &QComboBox::activated, this,
        [this](int order) { sortBy(static_cast<RunOrder>(order)); });
    const auto* find = new QShortcut(QKeySequence::Find, this);
    connect(find, &QShortcut::activated, this, [this] {
        m_filter->setFocus(Qt::ShortcutFocusReason);
        m_filter->selectAll();
    });
}

void LoadFile::makeLayout() {
    auto* finder = row({buddyLabel(QStringLiteral("&Find:"), m_filter), {m_filter, 1},
        buddyLabel(QStringLiteral("&Order:"), m_order), m_order});
    auto* list = column({{Files_List, 1}, m_summary});
    auto* all = column({finder, {row({{list, 1}, m_preview}), 1}, row({Label1, {Discription, 1}}),
        row({m_edit, LayoutPart::room(), BTN_Ok, BTN_Cancel})});
    all->setContentsMargins(16, 16, 16, 14);
    all->setSpacing(12);
    setLayout(all);
}

void LoadFile::setCaptions(const QString& button, const QString& label, const QString& form) {
    BTN_Ok->setText(button);
    Label1->setText(label);
    setWindowTitle(form + QLatin1String(core::state().titleMark()));
}

// Each opening shows the list as it is: all of it, in its own order.
void LoadFile::Data_File() {
    {
        const QSignalBlocker quiet(m_filter);
        m_filter->clear();
    }
    m_found.filterBy({});
    m_found.sortBy(RunOrder::asListed);
    m_facts.forget();
    const std::string unread = runList().read(core::state().AppFolder, *platform::services().files);
    listChanged();
    tellUnread(unread);
}

// The views read the rows again and go to the choice.
void LoadFile::listChanged() {
    m_facts.setRows(runList().rows(), core::state().AppFolder);
    m_found.setRows(runList().rows());
    m_wanted = runList().chosenRow();
    m_names.changed();
    showFound();
}

// The view reads what is found again; for a moment it has no choice.
void LoadFile::showFound() {
    m_showing = true;
    m_rows.changed();
    m_showing = false;
    showOrder();
    showChoice();
    m_sinceRefresh = 0;
    m_facts.wantAll(m_found.needsFacts());
    m_summary->setText(shownMessage(m_found.summary()));
    if (m_facts.wantsMore()) startReading();
}

void LoadFile::showOrder() {
    m_order->setCurrentIndex(static_cast<int>(m_found.order()));
    const auto mark = library::orderMark(m_found.order());
    QHeaderView* header = Files_List->header();
    header->setSortIndicatorShown(mark.has_value());
    if (mark)
        header->setSortIndicator(
            static_cast<int>(mark->column), mark->falls ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void LoadFile::showChoice() {
    const int row = runList().chosenRow();
    const QModelIndex place = m_rows.index(m_found.placeOf(row), 0);
    m_showing = true;
    Files_List->setCurrentIndex(place);
    Path_List->setCurrentIndex(row >= 0 ? m_names.index(row) : QModelIndex{});
    m_showing = false;
    if (place.isValid()) Files_List->scrollTo(place);
    Discription->setText(shown(runList().chosen().Description));
    Discription->setCursorPosition(0);
    m_edit->setEnabled(row >= 0 && !core::state().LookOnly);
    m_preview->follow(row < 0 ? std::nullopt
                              : std::optional(runList().chosenRun(
                                    core::state().AppFolder, *platform::services().files)));
}

void LoadFile::Filter_Change() {
    m_found.filterBy(typed(m_filter->text()));
    chooseFound();
    showFound();
}

// The choice stays on the user's run while that is found; else it is the first one found, and the
// user's again when the line lets it.
void LoadFile::chooseFound() {
    const bool first = m_found.isFiltered() && m_found.placeOf(m_wanted) < 0;
    runList().choose(first ? m_found.rowAt(0) : m_wanted);
}

void LoadFile::sortBy(RunOrder order) {
    m_found.sortBy(order);
    showFound();
}

void LoadFile::startReading() {
    if (isVisible() && !m_reader.isActive()) m_reader.start(0);
}

// Between two events; what is wanted of all rows comes to the view now and then, and at the end.
void LoadFile::readSome() {
    const bool inView = m_facts.wantsRowInView();
    m_sinceRefresh +=
        static_cast<int>(m_facts.read(filesAtOnce, *platform::services().files).size());
    // Asked for anew each time, so that a want of memory is told once and not for ever.
    const bool ends = !m_facts.wantsMore();
    if (!ends) startReading();
    if (inView) m_rows.factsCame();
    m_summary->setText(shownMessage(m_found.summary()));
    if (!m_found.needsFacts() || !(ends || m_sinceRefresh >= filesARefresh)) return;
    m_sinceRefresh = 0;
    if (!m_found.refresh()) return;
    const int scrolled = Files_List->verticalScrollBar()->value();
    if (m_wanted >= 0 && m_found.placeOf(runList().chosenRow()) < 0) chooseFound();
    showFound();
    Files_List->verticalScrollBar()->setValue(scrolled);
}

std::optional<core::ChosenRun> LoadFile::choose(const QString& button, const QString& form) {
    m_purpose = Purpose::choose;
    m_answer.reset();
    setCaptions(button, QStringLiteral("File To Load"), form);
    showModal(*this);
    return m_answer;
}

void LoadFile::chooseToDelete(const QString& form) {
    m_purpose = Purpose::deleteRuns;
    setCaptions(QStringLiteral("Delete"), QStringLiteral("File To Delete"), form);
    showModal(*this);
}

void LoadFile::Files_List_Click() {
    if (m_showing) return;
    const int row = m_found.rowAt(Files_List->currentIndex().row());
    runList().choose(row);
    m_wanted = row;
    showChoice();
}

void LoadFile::BTN_Ok_Click() {
    if (m_purpose == Purpose::deleteRuns) return DeleteFile();
    m_answer.reset();
    // A row without a description is no choice.
    if (!runList().chosen().Description.empty()) {
        runList().take();
        m_answer = runList().chosenRun(core::state().AppFolder, *platform::services().files);
    }
    hide();
}

void LoadFile::BTN_Cancel_Click() {
    m_answer.reset();
    // A filter alone chooses nothing for those who step through the list.
    runList().choose(m_wanted);
    hide();
}

void LoadFile::reject() {
    BTN_Cancel_Click();
}

void LoadFile::Files_List_DblClick() {
    BTN_Ok_Click();
}

void LoadFile::DeleteFile() {
    if (runList().chosenRow() < 0) return;
    platform::Dialogs& dialogs = *platform::services().dialogs;
    const std::string question = "Are you sure you want to Delete:           \n" +
                                 platform::fromFile(runList().chosen().Description);
    if (dialogs.messageBox(question, platform::boxStyle::yesNo + platform::boxStyle::question,
            "Warning") != platform::Reply::yes) {
        return;
    }
    const auto deleted =
        runList().deleteChosen(core::state().AppFolder, *platform::services().files);
    listChanged(); // before anything is painted under a message
    tell(deleted);
}

void LoadFile::editDescription() {
    const std::string description = runList().chosen().Description;
    if (description.empty() || core::state().LookOnly) return;
    const std::string answer = platform::services().dialogs->inputBox(
        "Enter the new file description for.\n\n" + platform::fromFile(description) +
            "\n\nRun Number     Description",
        "Edit File Description", library::editableDescription(description));
    const auto renamed = runList().renameChosen(
        core::state().AppFolder, answer, core::state().Run, *platform::services().files);
    listChanged();
    tell(renamed);
}

void LoadFile::typeAhead(const QString& text) {
    const int place = m_found.placeOf(runList().chosenRow());
    const bool goesOn = !m_typed.isEmpty();
    m_typed += text;
    m_typedTimer.start(typeAheadMs);
    // A new search begins behind the selected row, a longer one may stay on it.
    const int from = place < 0 ? 0 : place + (goesOn ? 0 : 1);
    if (const auto found = m_found.findTyped(from, typed(m_typed)))
        Files_List->setCurrentIndex(m_rows.index(*found, 0));
}

bool LoadFile::keyInList(const QKeyEvent& key) {
    if (key.key() == Qt::Key_F2 || key.key() == Qt::Key_Menu) {
        editDescription();
        return true;
    }
    const bool plain = (key.modifiers() & ~Qt::ShiftModifier) == Qt::NoModifier;
    const bool blankFirst = m_typed.isEmpty() && key.key() == Qt::Key_Space;
    if (!plain || blankFirst || key.text().isEmpty() || !key.text().front().isPrint()) return false;
    typeAhead(key.text());
    return true;
}

// The list is walked from the line, and Escape empties the line before it leaves the form.
bool LoadFile::keyInFilter(QKeyEvent& key) {
    switch (key.key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        QCoreApplication::sendEvent(Files_List, &key);
        return true;
    case Qt::Key_Escape:
        if (m_filter->text().isEmpty()) return false;
        m_filter->clear();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (m_found.count() > 0) return false;
        platform::services().dialogs->beep();
        return true;
    default:
        return false;
    }
}

bool LoadFile::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress && object == Files_List->viewport()) {
        const auto* press = static_cast<QMouseEvent*>(event);
        if (press->button() == Qt::RightButton) {
            editDescription();
            return true;
        }
    }
    if (event->type() == QEvent::KeyPress) {
        auto& key = *static_cast<QKeyEvent*>(event);
        if (object == Files_List && keyInList(key)) return true;
        if (object == m_filter && keyInFilter(key)) return true;
    }
    return QDialog::eventFilter(object, event);
}

void LoadFile::showEvent(QShowEvent* event) {
    Data_File();
    Files_List->setFocus();
    QDialog::showEvent(event);
}

void LoadFile::hideEvent(QHideEvent* event) {
    m_reader.stop();
    m_preview->stop();
    QDialog::hideEvent(event);
}

} // namespace kvo::forms
