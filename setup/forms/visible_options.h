#pragma once
// Visible_Options: which channels the graph in view draws, how large, how high and how smooth. It
// is modal over the graph window and acts on it at once; the rules are setup/graph_options.
#include "core/basic/from_one.h"
#include "platform/qt/form_kit.h"
#include "setup/graph_options.h"

#include <QDialog>

#include <string>

class QCheckBox;
class QGroupBox;
class QPushButton;
class QStackedWidget;
class QTabBar;

namespace kvo::forms {

class ScaleRows;

class Visible_Options : public QDialog {
    Q_OBJECT

public:
    Visible_Options();

    // Form_Load on the configuration, with the names of the analogs on the graph.
    void Form_Load(const core::FromOne<std::string, 8>& analogNames);

protected:
    void reject() override;

private:
    void makeLayout();
    QWidget* makeBoxes(int firstBox, const char* name);
    QWidget* makeScales();
    // The pair "All Off" and "All On" of that name.
    QHBoxLayout* makeAllButtons(
        const char* name, void (*routine)(setup::VisibleOptions& form, int index));

    void TabStrip1_Click(int tab);
    void Command1_Click(int index);
    void Command2_Click();
    void Command3_Click();
    void changed();
    // Takes what the controls read now, runs a rule on it and shows what has become of it.
    template <class Rule> void runRule(Rule rule);
    void collect();
    void showForm();

    setup::VisibleOptions m_form;
    int m_model = 0; // by whose inputs rows are hidden
    int m_tab = 0;   // of TabStrip1 that is on view
    bool m_showing = false;
    QTabBar* TabStrip1 = nullptr;
    QStackedWidget* m_frames = nullptr;
    platform_qt::ControlArray<QCheckBox, 0, 49> Check1;
    platform_qt::ControlArray<QGroupBox, 0, 2> EGTFrame;
    ScaleRows* m_rows = nullptr;
    platform_qt::ControlArray<QPushButton, 0, 1> Command1;
    QPushButton* Command2 = nullptr;
};

} // namespace kvo::forms
