#include "library/forms/load_file.h"

#include "core/shared_state.h"
#include "library/chooser_list.h"
#include "library/forms/unread.h"
#include "library/run_list.h"
#include "platform/qt/form_kit.h"
#include "platform/qt/text.h"
#include "platform/services.h"
#include "platform/text.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMouseEvent>
#include <QPushButton>

namespace kvo::forms {

using namespace platform_qt;
using library::runList;

namespace {

constexpr int typeAheadMs = 1000; // a pause this long begins a new search

// What could not be done, in words; nothing where all is well.
void tell(const platform::WriteResult& result) {
    if (result) return;
    platform::services().dialogs->beep();
    platform::services().dialogs->messageBox(
        result.message, platform::boxStyle::warning, "Run index");
}

} // namespace

LoadFile::LoadFile() {
    setObjectName(QStringLiteral("LoadFile"));
    m_typedTimer.setSingleShot(true);
    connect(&m_typedTimer, &QTimer::timeout, this, [this] { m_typed.clear(); });
    makeLayout();
    setCaptions(
        QStringLiteral("&Load"), QStringLiteral("File To Load"), QStringLiteral("Load Data File"));
    m_descriptions.show(&runList().rows());
    m_names.show(&runList().rows());
}

void LoadFile::makeLayout() {
    Files_List = makeRunView(m_descriptions, "Files_List");
    Files_List->setAccessibleName(QStringLiteral("Runs"));
    Files_List->setAlternatingRowColors(true);
    Files_List->setToolTip(
        QStringLiteral("Type to find a run. Right button or F2 changes its description."));
    Files_List->setMinimumSize(Files_List->fontMetrics().averageCharWidth() * 70, 320);
    Files_List->installEventFilter(this);
    Files_List->viewport()->installEventFilter(this);
    Path_List = makeRunView(m_names, "Path_List");
    Path_List->hide();
    Path_List->setParent(this);
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
    connect(BTN_Ok, &QPushButton::clicked, this, &LoadFile::BTN_Ok_Click);
    connect(BTN_Cancel, &QPushButton::clicked, this, &LoadFile::BTN_Cancel_Click);
    connect(m_edit, &QPushButton::clicked, this, &LoadFile::editDescription);
    connect(Files_List->selectionModel(), &QItemSelectionModel::currentChanged, this,
        &LoadFile::Files_List_Click);
    connect(Files_List, &QListView::doubleClicked, this, &LoadFile::Files_List_DblClick);
    auto* all = column({{Files_List, 1}, row({Label1, {Discription, 1}}),
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

void LoadFile::Data_File() {
    const std::string unread = runList().read(core::state().AppFolder, *platform::services().files);
    listChanged();
    tellUnread(unread);
}

// The views read the rows again and go to the choice.
void LoadFile::listChanged() {
    const int choice = runList().chosenRow();
    m_descriptions.changed();
    m_names.changed();
    runList().choose(choice); // the views had none for a moment
    showChoice();
}

void LoadFile::showChoice() {
    const int row = runList().chosenRow();
    Files_List->setCurrentIndex(row >= 0 ? m_descriptions.index(row) : QModelIndex{});
    if (row >= 0) Files_List->scrollTo(m_descriptions.index(row));
    Path_List->setCurrentIndex(row >= 0 ? m_names.index(row) : QModelIndex{});
    Discription->setText(shown(runList().chosen().Description));
    Discription->setCursorPosition(0);
    m_edit->setEnabled(row >= 0 && !core::state().LookOnly);
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
    runList().choose(Files_List->currentIndex().row());
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
    tell(runList().deleteChosen(core::state().AppFolder, *platform::services().files));
    listChanged();
}

void LoadFile::editDescription() {
    const std::string description = runList().chosen().Description;
    if (description.empty()) return;
    const std::string answer = platform::services().dialogs->inputBox(
        "Enter the new file description for.\n\n" + platform::fromFile(description) +
            "\n\nRun Number     Description",
        "Edit File Description", library::editableDescription(description));
    tell(runList().renameChosen(
        core::state().AppFolder, answer, core::state().Run, *platform::services().files));
    listChanged();
}

void LoadFile::typeAhead(const QString& text) {
    const int row = runList().chosenRow();
    const bool goesOn = !m_typed.isEmpty();
    m_typed += text;
    m_typedTimer.start(typeAheadMs);
    // A new search begins behind the selected row, a longer one may stay on it.
    const std::size_t from = row < 0 ? 0 : static_cast<std::size_t>(row) + (goesOn ? 0 : 1);
    if (const auto found = library::findTyped(runList().rows(), from, typed(m_typed))) {
        runList().choose(static_cast<int>(*found));
        showChoice();
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
    if (event->type() == QEvent::KeyPress && object == Files_List) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_F2 || key->key() == Qt::Key_Menu) {
            editDescription();
            return true;
        }
        const bool plain = (key->modifiers() & ~Qt::ShiftModifier) == Qt::NoModifier;
        const bool blankFirst = m_typed.isEmpty() && key->key() == Qt::Key_Space;
        if (plain && !blankFirst && !key->text().isEmpty() && key->text().front().isPrint()) {
            typeAhead(key->text());
            return true;
        }
    }
    return QDialog::eventFilter(object, event);
}

void LoadFile::showEvent(QShowEvent* event) {
    Data_File();
    Files_List->setFocus();
    QDialog::showEvent(event);
}

} // namespace kvo::forms
