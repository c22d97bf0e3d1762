#include "library/forms/import_form.h"

#include "core/shared_state.h"
#include "library/forms/drive_box.h"
#include "library/run_list.h"
#include "platform/qt/text.h"
#include "platform/services.h"

#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QTextDocument>

#include <utility>

namespace kvo::forms {

using namespace platform_qt;
using library::ImportMode;

namespace {

constexpr int wholePercent = 100;
constexpr int yieldStep = 10; // percent between two looks at what the user does

QString importPattern(ImportMode mode) {
    return mode == ImportMode::windows ? QStringLiteral("*.??d") : QStringLiteral("*");
}

QString importCaption(ImportMode mode) {
    return mode == ImportMode::windows ? QStringLiteral("Import Windows Data")
                                       : QStringLiteral("Import VRN Dos Data");
}

// What became of a batch, in words.
QString importSummary(const library::ImportedBatch& batch) {
    const QString done = QStringLiteral("%1 of %2 imported").arg(batch.imported).arg(batch.files);
    return batch.cancelled ? done + QStringLiteral(", then cancelled") : done;
}

} // namespace

Import::Import()
    : m_import({core::state().Config, core::state().AppFolder, library::runList()}, *this,
          *platform::services().dialogs, *platform::services().files),
      m_walk(*platform::services().files) {
    setObjectName(QStringLiteral("Import"));
    makeControls();
    makeLayout();
}

void Import::makeControls() {
    Drive_Dos = named(new DriveBox, "Drive_Dos");
    Dir_Dos = named(new QListWidget, "Dir_Dos");
    Dir_Dos->setAccessibleName(QStringLiteral("Folders"));
    Dir_Dos->setToolTip(QStringLiteral("Double click or press Return to open a folder."));
    Files_Dos = named(new QListWidget, "Files_Dos");
    Files_Dos->setAccessibleName(QStringLiteral("Files"));
    Files_Dos->setSelectionMode(QAbstractItemView::ExtendedSelection);
    Data_Files_List = named(new QListView, "Data_Files_List");
    Data_Files_List->setAccessibleName(QStringLiteral("Runs in the list"));
    Data_Files_List->setModel(&m_runs);
    Data_Files_List->setEditTriggers(QAbstractItemView::NoEditTriggers);
    for (QListView* list :
        {static_cast<QListView*>(Dir_Dos), static_cast<QListView*>(Files_Dos), Data_Files_List})
        list->setUniformItemSizes(true);
    LAB_CurrentDir = named(plainLabel({}), "LAB_CurrentDir");
    LAB_CurrentDir->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    Import_Name = named(new QLineEdit, "Import_Name");
    Import_Name->setReadOnly(true);
    m_all = named(new QPushButton(QStringLiteral("Select &All")), "BTN_SelectAll");
    Butten_Import = named(new QPushButton(QStringLiteral("&Import")), "Butten_Import");
    Butten_Cancel = named(new QPushButton(QStringLiteral("Cancel")), "Butten_Cancel");
    for (QPushButton* button : {m_all, Butten_Import, Butten_Cancel}) button->setAutoDefault(false);
    connect(m_all, &QPushButton::clicked, Files_Dos, &QListWidget::selectAll);
    connect(Butten_Import, &QPushButton::clicked, this, &Import::Butten_Import_Click);
    connect(Butten_Cancel, &QPushButton::clicked, this, &Import::Butten_Cancel_Click);
    connect(Drive_Dos, &DriveBox::activated, this, &Import::Drive_Dos_Change);
    connect(Dir_Dos, &QListWidget::itemActivated, this, &Import::Dir_Dos_DblClick);
    connect(Files_Dos, &QListWidget::itemSelectionChanged, this, &Import::Files_Dos_Click);
}

QLayout* Import::makeProgress() {
    Import_Ind = named(plainLabel({}), "Import_Ind");
    Import_Bar = named(new QProgressBar, "Import_Bar");
    Import_Bar->setTextVisible(false);
    Import_Bar->setAccessibleName(QStringLiteral("Progress of the file"));
    Import_Percent = named(valueLabel(QStringLiteral("100%")), "Import_Percent");
    return row({{Import_Ind, 1}, {Import_Bar, 1}, Import_Percent});
}

void Import::makeLayout() {
    const int letter = fontMetrics().averageCharWidth();
    Dir_Dos->setMinimumSize(letter * 26, 260);
    Files_Dos->setMinimumSize(letter * 26, 260);
    Data_Files_List->setMinimumSize(letter * 42, 260);
    auto* lists = new QGridLayout;
    lists->setHorizontalSpacing(12);
    lists->setVerticalSpacing(6);
    lists->addLayout(row({buddyLabel(QStringLiteral("&Drive:"), Drive_Dos), {Drive_Dos, 1}}), 0, 0);
    lists->addWidget(Dir_Dos, 1, 0);
    lists->addLayout(
        row({buddyLabel(QStringLiteral("&Files:"), Files_Dos), LayoutPart::room(), m_all}), 0, 1);
    lists->addWidget(Files_Dos, 1, 1);
    lists->addWidget(buddyLabel(QStringLiteral("&Known runs:"), Data_Files_List), 0, 2);
    lists->addWidget(Data_Files_List, 1, 2);
    lists->setColumnStretch(0, 2);
    lists->setColumnStretch(1, 2);
    lists->setColumnStretch(2, 3);
    lists->setRowStretch(1, 1);
    auto* all = column({LAB_CurrentDir, {lists, 1},
        row({buddyLabel(QStringLiteral("&Name:"), Import_Name), {Import_Name, 1}}), makeProgress(),
        row({LayoutPart::room(), Butten_Import, Butten_Cancel})});
    all->setContentsMargins(16, 14, 16, 14);
    all->setSpacing(10);
    setLayout(all);
    for (QWidget* next = Drive_Dos;
         QWidget * widget : {static_cast<QWidget*>(Dir_Dos), static_cast<QWidget*>(Files_Dos),
             static_cast<QWidget*>(m_all), static_cast<QWidget*>(Data_Files_List),
             static_cast<QWidget*>(Import_Name), static_cast<QWidget*>(Butten_Import),
             static_cast<QWidget*>(Butten_Cancel)}) {
        setTabOrder(next, widget);
        next = widget;
    }
}

// --- Opening and closing

std::vector<std::string> Import::importRuns(ImportMode mode) {
    kept<Import>().written.clear();
    m_mode = mode;
    setWindowTitle(importCaption(mode));
    m_import.Data_File();
    clearProgress();
    Import_Ind->clear();
    showFolder(m_walk.enter(kept<Import>().folder) ||
               m_walk.enter(typedPath(QDir::toNativeSeparators(QDir::homePath()))));
    Files_Dos->setFocus();
    showModal(*this);
    return std::exchange(kept<Import>().written, {}); // the form is gone, and what it kept is not
}

// While a batch is at work it ends that, and the form stays to say what is in.
void Import::Butten_Cancel_Click() {
    if (m_import.running()) return m_import.Cancel();
    m_import.close();
    unload<Import>();
}

// --- Drives, folders and files

void Import::goTo(const std::string& folder) {
    showFolder(m_walk.enter(folder));
}

// A place that cannot be read leaves all as it was.
void Import::showFolder(bool entered) {
    Drive_Dos->showDriveOf(m_walk.folder());
    if (!entered) return platform::services().dialogs->beep();
    kept<Import>().folder = m_walk.folder();
    LAB_CurrentDir->setText(shownPath(m_walk.folder()));
    LAB_CurrentDir->setToolTip(plainTip(LAB_CurrentDir->text()));
    Dir_Dos->clear();
    for (const std::string& row : m_walk.rows()) Dir_Dos->addItem(shownPath(row));
    Dir_Dos->setCurrentRow(0);
    m_files.clear();
    Files_Dos->clear();
    for (std::string& name : m_walk.files()) {
        const QString text = shownPath(name);
        if (!QDir::match(importPattern(m_mode), text)) continue;
        Files_Dos->addItem(text);
        m_files.push_back(std::move(name));
    }
    Files_Dos_Click();
}

void Import::Drive_Dos_Change() {
    goTo(Drive_Dos->chosenRoot());
}

void Import::Dir_Dos_DblClick() {
    if (const int row = Dir_Dos->currentRow(); row >= 0)
        showFolder(m_walk.enterRow(static_cast<std::size_t>(row)));
}

void Import::Files_Dos_Click() {
    const auto selected = Files_Dos->selectedItems();
    Butten_Import->setEnabled(!selected.isEmpty());
    m_all->setEnabled(Files_Dos->count() > 0);
    Import_Name->setText(selected.size() == 1 ? selected.front()->text()
                         : selected.isEmpty() ? QString()
                                              : QStringLiteral("%1 files").arg(selected.size()));
}

// --- The import

void Import::setBusy(bool busy) {
    for (QWidget* widget : {static_cast<QWidget*>(Drive_Dos), static_cast<QWidget*>(Dir_Dos),
             static_cast<QWidget*>(Files_Dos), static_cast<QWidget*>(m_all),
             static_cast<QWidget*>(Butten_Import)})
        widget->setEnabled(!busy);
    if (!busy) Files_Dos_Click();
}

void Import::Butten_Import_Click() {
    std::vector<std::string> names;
    for (int i = 0; i < Files_Dos->count(); ++i) {
        if (Files_Dos->item(i)->isSelected()) names.push_back(m_files[static_cast<std::size_t>(i)]);
    }
    if (names.empty() || m_import.running()) return;
    setBusy(true);
    Butten_Cancel->setFocus();
    const auto batch = m_import.Butten_Import(m_mode, m_walk.folder(), names);
    auto& written = kept<Import>().written;
    written.insert(written.end(), batch.written.begin(), batch.written.end());
    setBusy(false);
    Import_Ind->setText(importSummary(batch));
    Files_Dos->setFocus();
}

void Import::showFile(const std::string& name, int number, int files) {
    Import_Name->setText(shownPath(name));
    Import_Ind->setText(QStringLiteral("File %1 of %2").arg(number).arg(files));
}

void Import::setProgress(int row, int rows) {
    const int percent = row * wholePercent / rows;
    Import_Bar->setRange(0, rows);
    Import_Bar->setValue(row);
    Import_Percent->setText(QStringLiteral("%1%").arg(percent));
    if (percent % yieldStep == 0) platform::services().yield->turns(1);
}

void Import::clearProgress() {
    Import_Bar->reset();
    Import_Percent->clear();
}

void Import::showRuns() {
    QStringList descriptions;
    for (const core::RunIndexEntry& one : library::runList().rows())
        descriptions << shown(one.Description);
    m_runs.setStringList(descriptions);
}

} // namespace kvo::forms
