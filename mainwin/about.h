#pragma once
// About: the program's name and version.
#include <QDialog>

namespace kvo::forms {

class About : public QDialog {
    Q_OBJECT

public:
    About();

protected:
    void reject() override;

private:
    void Command1_Click();
};

} // namespace kvo::forms
