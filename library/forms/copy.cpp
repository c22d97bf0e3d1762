#include "library/forms/copy.h"

#include "core/forms/doors.h"
#include "core/paths.h"
#include "core/shared_state.h"
#include "library/chooser_list.h"
#include "library/forms/mail_text.h"
#include "library/forms/unread.h"
#include "platform/qt/form_kit.h"
#include "platform/qt/text.h"
#include "platform/services.h"

#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPlainTextEdit>
#include <QPushButton>

#include <algorithm>

namespace kvo::forms {

using namespace platform_qt;

namespace {

// The window is painted; what the user presses meanwhile waits.
void letWindowsPaint() {
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

// A mail that no mail program took: its files and its text, for the user to send in another way.
void showMailText(const library::SentMail& sent) {
    MailText text(sent);
    if (!sent.folder.empty()) text.Open_Folder_Click();
    showModal(text);
}

QString withoutTrailingBlanks(QString text) {
    while (text.endsWith(QLatin1Char(' '))) text.chop(1);
    return text;
}

} // namespace

Copy::Copy() {
    setObjectName(QStringLiteral("Copy"));
    makeLists();
    makeBoxes();
    makeButtons();
    makeLayout();
    m_descriptions.show(&m_rows);
    m_names.show(&m_rows);
    Data_File();
}

void Copy::makeLists() {
    File_List = makeRunView(m_descriptions, "File_List");
    File_List->setAccessibleName(QStringLiteral("Runs"));
    File_List->setSelectionMode(QAbstractItemView::ExtendedSelection);
    File_List->setAlternatingRowColors(true);
    File_List->setToolTip(
        QStringLiteral("Ctrl or Shift and a click select several runs, Ctrl+A selects all."));
    File_List->setMinimumSize(File_List->fontMetrics().averageCharWidth() * 90, 200);
    Path_List = makeRunView(m_names, "Path_List");
    Path_List->hide();
    Path_List->setParent(this);
    Label_Files = buddyLabel({}, File_List);
    Label_Files->setObjectName(QStringLiteral("Label_Files"));
    connect(File_List, &QListView::doubleClicked, this, &Copy::File_List_DblClick);
}

void Copy::makeBoxes() {
    Text_Destination = named(new QLineEdit, "Text_Destination");
    Text_Destination->setText(kept<Copy>().destination);
    Label_Destination = buddyLabel(QStringLiteral("&Destination:"), Text_Destination);
    onLeave(Text_Destination, [this] { Text_Destination_LostFocus(); });
    Text1 = named(new QPlainTextEdit, "Text1");
    Text1->setTabChangesFocus(true);
    Text1->setFixedHeight(Text1->fontMetrics().lineSpacing() * 6);
    Email_Text_label =
        named(buddyLabel(QStringLiteral("Add &Text (Optional)"), Text1), "Email_Text_label");
    Copy_Label = named(plainLabel({}), "Copy_Label");
    Copy_Label->setWordWrap(true);
    Copy_Label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    Copy_Label->setMinimumHeight(Copy_Label->fontMetrics().lineSpacing() * 3);
    Copy_Label->hide();
}

void Copy::makeButtons() {
    But_Browse = named(new QPushButton(QStringLiteral("&Browse")), "But_Browse");
    But_Copy = named(new QPushButton, "But_Copy");
    But_Cancel = named(new QPushButton(QStringLiteral("Ca&ncel")), "But_Cancel");
    for (QPushButton* button : {But_Browse, But_Cancel}) button->setAutoDefault(false);
    But_Copy->setDefault(true);
    connect(But_Browse, &QPushButton::clicked, this, &Copy::But_Browse_Click);
    connect(But_Copy, &QPushButton::clicked, this, &Copy::But_Copy_Click);
    connect(But_Cancel, &QPushButton::clicked, this, &Copy::But_Cancel_Click);
}

void Copy::makeLayout() {
    auto* all = column(
        {Label_Files, {File_List, 1}, row({Label_Destination, {Text_Destination, 1}, But_Browse}),
            Email_Text_label, Text1, Copy_Label, row({LayoutPart::room(), But_Copy, But_Cancel})});
    all->setContentsMargins(16, 16, 16, 14);
    all->setSpacing(10);
    setLayout(all);
}

void Copy::showPurpose() {
    const bool mail = m_purpose == Purpose::mail;
    setWindowTitle(mail ? QStringLiteral("Email Files") : QStringLiteral("Data File Copy"));
    Label_Files->setText(mail ? QStringLiteral("Select &Attachments") : QStringLiteral("&Files:"));
    But_Copy->setText(mail ? QStringLiteral("&Send") : QStringLiteral("&Copy"));
    for (QWidget* one :
        std::initializer_list<QWidget*>{Label_Destination, Text_Destination, But_Browse}) {
        one->setVisible(!mail);
    }
    QSizePolicy place(QSizePolicy::Ignored, QSizePolicy::Fixed);
    place.setRetainSizeWhenHidden(!mail); // nothing moves when the first file is copied
    Copy_Label->setSizePolicy(place);
    Email_Text_label->setVisible(mail);
    Text1->setVisible(mail);
    File_List->setFocus();
}

void Copy::copyFiles() {
    m_purpose = Purpose::copy;
    showPurpose();
    showModal(*this);
}

void Copy::mailFiles(const library::MailProduct& product) {
    m_purpose = Purpose::mail;
    m_product = product;
    showPurpose();
    showModal(*this);
}

void Copy::Data_File() {
    core::ReadIndex index =
        core::readOrCreateRunIndex(core::state().AppFolder, *platform::services().files);
    m_rows = std::move(index.entries);
    m_descriptions.changed();
    m_names.changed();
    tellUnread(index.unread);
}

std::vector<std::size_t> Copy::selectedRows() const {
    std::vector<std::size_t> rows;
    const auto chosen = File_List->selectionModel()->selectedRows();
    for (const QModelIndex& index : chosen) rows.push_back(static_cast<std::size_t>(index.row()));
    std::sort(rows.begin(), rows.end());
    return rows;
}

void Copy::But_Copy_Click() {
    if (m_purpose == Purpose::mail)
        SendFile();
    else
        copySelected();
}

void Copy::copySelected() {
    Text_Destination_LostFocus();
    platform::Services& services = platform::services();
    library::CopyJob job(core::state().AppFolder, *services.files, *services.dialogs, *this);
    job.copy(m_rows, selectedRows(), typedPath(Text_Destination->text()));
}

void Copy::SendFile() {
    platform::Services& services = platform::services();
    library::MailOrder order{
        core::state().AppFolder, {}, Text1->toPlainText().toStdString(), m_product};
    for (const std::size_t row : selectedRows()) order.runs.push_back(m_rows[row]);
    library::SentMail sent;
    {
        const Hourglass busy(*services.dialogs);
        letWindowsPaint();
        sent = library::SendFile(order, *services.files, *services.mail, showMailText);
    }
    unload<Copy>();
    if (sent.result) {
        services.dialogs->messageBox(
            library::handedOverText(sent), platform::boxStyle::information, "Email Files");
        return;
    }
    showMailText(sent);
}

void Copy::But_Browse_Click() {
    const auto folder = doors().browseFolder();
    if (folder) Text_Destination->setText(shownPath(*folder));
}

void Copy::But_Cancel_Click() {
    kept<Copy>().destination = withoutTrailingBlanks(Text_Destination->text());
    unload<Copy>();
}

void Copy::reject() {
    But_Cancel_Click();
}

void Copy::File_List_DblClick() {
    if (m_purpose == Purpose::mail || !Text_Destination->text().isEmpty()) But_Copy_Click();
}

void Copy::Text_Destination_LostFocus() {
    const QString text = withoutTrailingBlanks(Text_Destination->text());
    if (text != Text_Destination->text()) Text_Destination->setText(text);
}

void Copy::showDestination(const std::string& folder) {
    Text_Destination->setText(shownPath(folder));
    kept<Copy>().destination = Text_Destination->text();
}

void Copy::moveTo(std::size_t row) {
    Path_List->setCurrentIndex(m_names.index(static_cast<int>(row)));
}

// A control that is disabled loses the focus; it comes back to where the user had it.
void Copy::lockControls(bool locked) {
    if (locked && But_Copy->isEnabled()) m_focus = focusWidget();
    for (QWidget* one :
        std::initializer_list<QWidget*>{File_List, Text_Destination, But_Copy, But_Browse}) {
        one->setEnabled(!locked);
    }
    if (!locked && m_focus) m_focus->setFocus();
    if (!locked) m_focus.clear();
}

void Copy::showProgress(const std::string& text) {
    Copy_Label->setText(shownMessage(text));
    Copy_Label->show();
    letWindowsPaint();
}

void Copy::hideProgress() {
    Copy_Label->hide();
}

void Copy::deselect(std::size_t row) {
    File_List->selectionModel()->select(
        m_descriptions.index(static_cast<int>(row)), QItemSelectionModel::Deselect);
}

} // namespace kvo::forms
