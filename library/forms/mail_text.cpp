#include "library/forms/mail_text.h"

#include "platform/qt/form_kit.h"
#include "platform/qt/text.h"
#include "platform/services.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QUrl>

namespace kvo::forms {

using namespace platform_qt;

MailText::MailText(const library::SentMail& sent) : m_folder(shownPath(sent.folder)) {
    setObjectName(QStringLiteral("MailText"));
    setWindowTitle(QStringLiteral("Email Files"));
    makeLayout(sent);
}

void MailText::makeLayout(const library::SentMail& sent) {
    auto* message =
        named(plainLabel(shownMessage(library::notHandedOverText(sent))), "Mail_Message");
    message->setWordWrap(true);
    message->setTextInteractionFlags(Qt::TextSelectableByMouse);
    Mail_Text = named(new QPlainTextEdit, "Mail_Text");
    Mail_Text->setReadOnly(true);
    Mail_Text->setTabChangesFocus(true);
    Mail_Text->setPlainText(shownMessage(sent.draft.subject + "\n\n" + sent.draft.body));
    Mail_Text->setMinimumSize(Mail_Text->fontMetrics().averageCharWidth() * 80, 160);
    auto* copy = named(new QPushButton(QStringLiteral("&Copy Text")), "Copy_Text");
    auto* open = named(new QPushButton(QStringLiteral("&Open Folder")), "Open_Folder");
    auto* close = named(new QPushButton(QStringLiteral("C&lose")), "But_Close");
    for (QPushButton* button : {copy, open}) button->setAutoDefault(false);
    close->setDefault(true);
    open->setEnabled(!m_folder.isEmpty());
    connect(copy, &QPushButton::clicked, this, &MailText::Copy_Text_Click);
    connect(open, &QPushButton::clicked, this, &MailText::Open_Folder_Click);
    connect(close, &QPushButton::clicked, this, &QDialog::hide);
    auto* all = column({message, buddyLabel(QStringLiteral("&Text of the mail:"), Mail_Text),
        {Mail_Text, 1}, row({copy, open, LayoutPart::room(), close})});
    all->setContentsMargins(16, 16, 16, 14);
    all->setSpacing(10);
    setLayout(all);
    copy->setFocus();
}

void MailText::Copy_Text_Click() {
    QApplication::clipboard()->setText(Mail_Text->toPlainText());
}

void MailText::Open_Folder_Click() {
    const QUrl address = QUrl::fromLocalFile(m_folder);
    (void)platform::services().browser->open(address.toString(QUrl::FullyEncoded).toStdString());
}

} // namespace kvo::forms
