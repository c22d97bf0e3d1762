#pragma once
// The rows of channels that both option forms have: the name of a channel, its magnification and
// the raise of its zero, in three groups, with the button that restores their defaults. Which
// controls of them are on view is said by the rules.
#include "platform/qt/form_kit.h"
#include "setup/graph_options.h"

#include <QWidget>

class QComboBox;
class QGridLayout;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace kvo::forms {

class ScaleRows : public QWidget {
    Q_OBJECT

public:
    // Object names of the groups.
    struct Groups {
        const char* channels;
        const char* analogs;
        const char* exhausts;
    };
    explicit ScaleRows(const Groups& names);

    void showCaptions(const setup::ByChannel<std::string>& captions);
    void showValues(const setup::ScaleValues& values);
    setup::ScaleValues values() const;
    void showRows(const setup::OptionRows& rows, bool exhausts);

signals:
    // Text_Magnify Change and ComboScale Click, of any row.
    void changed();
    // "Restore Defaults"; the form has it done by the rows on view.
    void Command3_Click();

private:
    QGroupBox* makeGroup(const QString& caption, const char* name);
    void makeRow(QGridLayout& grid, int channel);
    QLineEdit* makeMagnify(int channel);
    QComboBox* makeRaise(int channel);

    platform_qt::ControlArray<QLabel, 0, 24> Label_Magnify;
    platform_qt::ControlArray<QLineEdit, 0, 24> Text_Magnify;
    platform_qt::ControlArray<QComboBox, 0, 24> ComboScale;
    platform_qt::ControlArray<QLabel, 1, 8> Label_Magnify_Analog_Text;
    QGroupBox* m_exhausts = nullptr;
    QLabel* m_range = nullptr;
    QPushButton* Command3 = nullptr;
};

} // namespace kvo::forms
