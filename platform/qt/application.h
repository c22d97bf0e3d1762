#pragma once
// What the one QApplication needs before the first form: number formats that do not follow the
// locale, one look on every desktop, and control names that assistive tools and test drivers find.
#include <QApplication>
#include <QFont>
#include <QObject>
#include <QString>

#include <memory>
#include <string>
#include <vector>

namespace kvo::platform_qt {

// The one application object. No exception gets through Qt's loops: where memory runs out in an
// event, the event is dropped, the user is told once by the program's dialogs, and the loop goes
// on.
class Application : public QApplication {
public:
    Application(int& argc, char* argv[]);
    bool notify(QObject* receiver, QEvent* event) override;

private:
    void tellNoMemory() noexcept;

    std::unique_ptr<char[]> m_reserve; // given up so that there is memory for telling
    bool m_telling = false;
};

// Of what main() got the words behind the program's name, UTF-8, from which the application object
// has taken the toolkit's own options.
std::vector<std::string> wordsOf(int argc, const char* const* argv);

// Called once, right behind the application object: LC_NUMERIC and the default locale become "C",
// the style Fusion with the desktop's own palette and font, the filters below are installed, and
// closing the last window no longer ends the program (the main window's unload does).
void prepareApplication(QApplication& application);

// The application's font when its digits are all of one width, else a font of that size whose
// digits are; for values that change in place.
QFont tabularFont();

// Processor number as the start sequence compares it. Every processor that this toolkit runs on is
// later than a 586, also where a system names its whole family after the 386.
inline constexpr int processorType = 586;

// Brings the program's windows to the front, out of the task bar too, as far as the desktop lets a
// window do so by itself; else it is marked there.
void bringToFront();

// Makes a folder the current directory; silent when it is gone.
void changeFolder(const std::string& folder);
// The current directory, without a separator behind it.
std::string currentFolder();

// Gives every named widget its object name as accessible description, unless it has one. Object
// names do not reach the accessibility bus by themselves. Labels show their text as it is.
class Namer : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject* object, QEvent* event) override;
};

// Clicks a button at once when the key of its caption is pressed. The toolkit does so a moment
// later: a click that then comes to a window behind a dialog would open a second one over it.
class PromptKeys : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject* object, QEvent* event) override;
};

} // namespace kvo::platform_qt
