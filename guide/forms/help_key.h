#pragma once
// F1 in whatever window of the program: help on the place where the user is.
#include <QObject>

#include <functional>
#include <string>
#include <vector>

namespace kvo::forms {

// An event filter for the application. A window whose menu has F1 as a shortcut keeps it.
class HelpKey : public QObject {
    Q_OBJECT

public:
    // What is shown for the object names of the control that has the focus and of all that it lies
    // in, from the inside out; the window that a form stands over comes behind the form.
    using Show = std::function<void(const std::vector<std::string>&)>;
    HelpKey(QObject* parent, Show show);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    Show m_show;
};

} // namespace kvo::forms
