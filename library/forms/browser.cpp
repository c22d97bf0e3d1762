#include "library/forms/browser.h"

#include "core/shared_state.h"
#include "library/forms/drive_box.h"
#include "platform/qt/application.h"
#include "platform/qt/form_kit.h"
#include "platform/qt/text.h"
#include "platform/services.h"

#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>

namespace kvo::forms {

using namespace platform_qt;

namespace {

void fillNames(QListWidget& list, const std::vector<std::string>& names) {
    list.clear();
    for (const std::string& name : names) list.addItem(shownPath(name));
}

} // namespace

Browser::Browser() : m_walk(*platform::services().files) {
    setObjectName(QStringLiteral("Browser"));
    setWindowTitle(QStringLiteral("Browser"));
    makeLayout();
    Form_Load();
}

QLayout* Browser::makeLists() {
    Dir1 = named(new QListWidget, "Dir1");
    Dir1->setAccessibleName(QStringLiteral("Folders"));
    Dir1->setMinimumSize(Dir1->fontMetrics().averageCharWidth() * 38, 220);
    Dir1->setToolTip(QStringLiteral("Return or a double click opens a folder, Backspace goes up."));
    Dir1->installEventFilter(this);
    Fil_Files = named(new QListWidget, "Fil_Files");
    Fil_Files->setAccessibleName(QStringLiteral("Files"));
    Fil_Files->setMinimumWidth(Fil_Files->fontMetrics().averageCharWidth() * 26);
    Fil_Files->setSelectionMode(QAbstractItemView::NoSelection);
    connect(Dir1, &QListWidget::itemDoubleClicked, this, &Browser::enterChosen);
    return row({{column({buddyLabel(QStringLiteral("&Folders"), Dir1), {Dir1, 1}}), 3},
        {column({buddyLabel(QStringLiteral("Files &List"), Fil_Files), {Fil_Files, 1}}), 2}});
}

void Browser::makeLayout() {
    Drive1 = named(new DriveBox, "Drive1");
    connect(Drive1, &QComboBox::activated, this, &Browser::Drive1_Change);
    LAB_CurrentDir = named(plainLabel({}), "LAB_CurrentDir");
    LAB_CurrentDir->setWordWrap(true);
    LAB_CurrentDir->setTextInteractionFlags(Qt::TextSelectableByMouse);
    Ok = named(new QPushButton(QStringLiteral("&Ok")), "Ok");
    Cancel = named(new QPushButton(QStringLiteral("&Cancel")), "Cancel");
    Ok->setDefault(true);
    Cancel->setAutoDefault(false);
    connect(Ok, &QPushButton::clicked, this, &Browser::Ok_Click);
    connect(Cancel, &QPushButton::clicked, this, &Browser::Cancel_Click);
    auto* all = column({row({buddyLabel(QStringLiteral("&Drive:"), Drive1), {Drive1, 1}}),
        LAB_CurrentDir, {makeLists(), 1}, row({LayoutPart::room(), Ok, Cancel})});
    all->setContentsMargins(16, 16, 16, 14);
    all->setSpacing(12);
    setLayout(all);
}

// It opens where it was left, else in the program's folder, else on the first drive that is ready.
void Browser::Form_Load() {
    bool entered = m_walk.enter(kept<Browser>().folder) || m_walk.enter(core::state().AppFolder);
    for (const Drive& drive : Drive1->drives()) entered = entered || m_walk.enter(drive.root);
    Dir1_Change();
}

std::optional<std::string> Browser::browse() {
    m_taken = false;
    Dir1->setFocus();
    showModal(*this);
    kept<Browser>().folder = m_walk.folder();
    // A disk that is the current folder could not be taken out.
    changeFolder(core::state().AppFolder);
    if (!m_taken) return {};
    return m_walk.folder();
}

void Browser::Dir1_Change() {
    fillNames(*Dir1, m_walk.rows());
    fillNames(*Fil_Files, m_walk.files());
    Dir1->setCurrentRow(0);
    LAB_CurrentDir->setText(shownPath(m_walk.folder()));
    changeFolder(m_walk.folder());
    Drive1->showDriveOf(m_walk.folder());
}

// An unreadable drive leaves all as it was.
void Browser::Drive1_Change() {
    const std::string root = Drive1->chosenRoot();
    if (root.empty() || m_walk.enter(root)) return Dir1_Change();
    platform::services().dialogs->beep();
    Drive1->showDriveOf(m_walk.folder());
}

void Browser::enterChosen() {
    if (Dir1->currentRow() < 0) return;
    if (m_walk.enterRow(static_cast<std::size_t>(Dir1->currentRow()))) return Dir1_Change();
    platform::services().dialogs->beep();
}

void Browser::Ok_Click() {
    m_taken = !m_walk.folder().empty();
    hide();
}

void Browser::Cancel_Click() {
    m_taken = false;
    hide();
}

void Browser::reject() {
    Cancel_Click();
}

bool Browser::eventFilter(QObject* object, QEvent* event) {
    if (object == Dir1 && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            enterChosen();
            return true;
        }
        if (key == Qt::Key_Backspace) {
            if (m_walk.goUp()) Dir1_Change();
            return true;
        }
    }
    return QDialog::eventFilter(object, event);
}

} // namespace kvo::forms
