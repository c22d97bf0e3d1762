#pragma once
// FolderHeld: the question at the start of a program whose folder another one has. Two programs
// that write in one folder would take each other's runs.
#include "platform/folder_lock.h"

#include <QDialog>

class QLabel;
class QPushButton;

namespace kvo::forms {

class FolderHeld : public QDialog {
    Q_OBJECT

public:
    enum class Answer { showOther, lookOnly, leave };

    FolderHeld();
    // Asks, modal. `unreached` says that the other window did not hear when it was asked last.
    Answer ask(const platform::FolderHolder& holder, const std::string& folder, bool unreached);

protected:
    // Escape and the close box leave.
    void reject() override { answer(Answer::leave); }

private:
    void answer(Answer answer);

    Answer m_answer = Answer::leave;
    QLabel* Label_Holder = nullptr;
    QLabel* Label_Folder = nullptr;
    QLabel* Label_Unreached = nullptr;
    QPushButton* Show_Other = nullptr;
    QPushButton* Look_Only = nullptr;
    QPushButton* Leave = nullptr;
};

// Who has the folder, as a sentence: "Kvo (process 4711 on pit-laptop) has this folder open since
// 21.11.2026 14:05."
QString holderText(const platform::FolderHolder& holder);

} // namespace kvo::forms
