#pragma once
// HelpWindow: the guide inside the program, with its chapters, a search, and the way back.
#include "guide/command_pages.h"

#include <QDialog>
#include <QPointer>

#include <string>
#include <vector>

class QLabel;
class QLayout;
class QLineEdit;
class QListWidget;
class QPushButton;
class QUrl;

namespace kvo::forms {

class GuideBrowser;

class HelpWindow : public QDialog {
    Q_OBJECT

public:
    HelpWindow();

    // The commands of all windows, which its pages list.
    void listCommands(std::vector<guide::WindowCommands> commands);
    // Comes to the front with the guide at the chapter of that anchor, at its beginning where it is
    // empty; and with the pages that list keys and commands. Not modal, but where a modal form
    // waits for the user it comes over that one.
    void showChapter(const std::string& anchor);
    void showKeyboard();
    void showCommands();
    const GuideBrowser& pages() const { return *Text_Guide; }

protected:
    void done(int result) override;

private:
    void makeControls();
    QLayout* searchRow();
    void fillChapters();
    void connectControls();
    void takeKeys();
    void come(const QUrl& page);
    void placeOn(const QWidget& beside);
    void Chapters_Click(int row);
    void showPlace();
    void find(bool back);

    QPushButton* But_Back = nullptr;
    QPushButton* But_Forward = nullptr;
    QPushButton* But_Close = nullptr;
    QLineEdit* Text_Find = nullptr;
    QPushButton* But_Previous = nullptr;
    QPushButton* But_Next = nullptr;
    QLabel* Label_Found = nullptr;
    QListWidget* List_Chapters = nullptr;
    GuideBrowser* Text_Guide = nullptr;
    QPointer<QWidget> m_from; // the window that asked
};

} // namespace kvo::forms
