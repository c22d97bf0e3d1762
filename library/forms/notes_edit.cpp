#include "library/forms/notes_edit.h"

#include "platform/qt/text.h"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QTextCursor>
#include <QTextDocument>

namespace kvo::forms {

using namespace platform_qt;

namespace {

// The kit's own separators of lines, and a lone CR or LF, become what a file has.
QString withFileLineEnds(QString text) {
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    for (const QChar lineEnd :
        {QChar('\r'), QChar(QChar::ParagraphSeparator), QChar(QChar::LineSeparator)})
        text.replace(lineEnd, QLatin1Char('\n'));
    return text.replace(QLatin1Char('\n'), QLatin1String("\r\n"));
}

int bytesOf(const QString& text) {
    return static_cast<int>(typed(withFileLineEnds(text)).size());
}

bool isLineKey(const QKeyEvent& event) {
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

// A key that writes its letter, and no command.
bool isLetterKey(const QKeyEvent& event) {
    const bool isCommand = (event.modifiers() & Qt::ControlModifier) != 0 &&
                           (event.modifiers() & Qt::AltModifier) == 0;
    return !isCommand && !event.text().isEmpty() &&
           (event.text()[0].isPrint() || event.text()[0].isSurrogate());
}

} // namespace

NotesEdit::NotesEdit(int most) : m_most(most) {
    setTabChangesFocus(true);
}

void NotesEdit::setFileText(std::string_view text) {
    setPlainText(shown(text));
}

// Not toPlainText, which makes a plain blank of one that no line may be broken at.
std::string NotesEdit::fileText() const {
    return typed(withFileLineEnds(document()->toRawText()));
}

void NotesEdit::insertLetters(QString letters) {
    if (isReadOnly()) return;
    letters = shown(typed(withFileLineEnds(std::move(letters))));
    const int kept = bytesOf(document()->toRawText()) - bytesOf(textCursor().selectedText());
    const int room = m_most - kept;
    const bool fits = letters.size() <= room;
    if (!fits) {
        letters.truncate(qMax(0, room));
        if (letters.endsWith(QLatin1Char('\r'))) letters.chop(1); // half of a line end
    }
    if (!letters.isEmpty()) insertPlainText(letters);
    ensureCursorVisible();
    if (!fits) emit full();
}

// A key with a letter that no file can hold does nothing.
void NotesEdit::keyPressEvent(QKeyEvent* event) {
    if (isLineKey(*event)) return insertLetters(QStringLiteral("\n"));
    if (!isLetterKey(*event)) return QPlainTextEdit::keyPressEvent(event);
    if (shown(typed(event->text())) == event->text()) insertLetters(event->text());
}

void NotesEdit::inputMethodEvent(QInputMethodEvent* event) {
    const QString letters = event->commitString();
    event->setCommitString({});
    QPlainTextEdit::inputMethodEvent(event);
    if (!letters.isEmpty()) insertLetters(letters);
}

void NotesEdit::insertFromMimeData(const QMimeData* source) {
    if (source->hasText()) insertLetters(source->text());
}

} // namespace kvo::forms
