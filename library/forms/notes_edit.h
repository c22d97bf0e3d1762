#pragma once
// A box of several lines for the text of a record: it takes the letters that a file can hold, and
// no more of them than the record has room for.
#include <QPlainTextEdit>

#include <string>
#include <string_view>

namespace kvo::forms {

class NotesEdit : public QPlainTextEdit {
    Q_OBJECT

public:
    // `most` is the room in bytes; a line end takes two.
    explicit NotesEdit(int most);

    // As the file has it, with CR LF between lines.
    void setFileText(std::string_view text);
    std::string fileText() const;
    int most() const { return m_most; }

signals:
    // A letter, or the rest of what was pasted, found no room.
    void full();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void insertFromMimeData(const QMimeData* source) override;

private:
    void insertLetters(QString letters);

    int m_most;
};

} // namespace kvo::forms
