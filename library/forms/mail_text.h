#pragma once
// The text of a mail that no mail program took, with the folder of its files: the user copies the
// one and attaches the other in a way of his own.
#include "library/mail_files.h"

#include <QDialog>
#include <QString>

class QPlainTextEdit;

namespace kvo::forms {

class MailText : public QDialog {
    Q_OBJECT

public:
    explicit MailText(const library::SentMail& sent);

    void Copy_Text_Click();
    // Shows the files in the desktop's own window.
    void Open_Folder_Click();

private:
    void makeLayout(const library::SentMail& sent);

    QString m_folder; // empty where there are no files
    QPlainTextEdit* Mail_Text = nullptr;
};

} // namespace kvo::forms
