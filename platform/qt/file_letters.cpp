#include "platform/qt/file_letters.h"

#include "platform/qt/text.h"

#include <QLineEdit>
#include <QValidator>

namespace kvo::platform_qt {

namespace {

bool inFiles(QChar letter) {
    return letter == QLatin1Char('?') || typed(QString(letter)) != "?";
}

class FileLetters : public QValidator {
public:
    explicit FileLetters(QLineEdit* box) : QValidator(box), m_before(box->text()) {
        connect(box, &QLineEdit::textChanged, this, [this](const QString& now) { m_before = now; });
    }
    State validate(QString& text, int&) const override {
        const bool oneKey = text.size() <= m_before.size() + 1;
        for (QChar& letter : text) {
            if (inFiles(letter)) continue;
            if (oneKey) return Invalid;
            letter = QLatin1Char('?');
        }
        return Acceptable;
    }

private:
    QString m_before;
};

} // namespace

void onlyFileLetters(QLineEdit* box) {
    box->setValidator(new FileLetters(box));
}

} // namespace kvo::platform_qt
