#pragma once
// SetupSoftware: the form on which the user states driver, logger, port, vehicle, sensors and the
// look of the graph. It holds the one SetupValues and runs the rules of setup/ on them; its tabs
// are pages (setup/forms/setup_page.h) and its two pop-up frames widgets of their own.
#include "setup/setup_values.h"

#include <QDialog>
#include <QPointer>

#include <array>
#include <string>

class QFrame;
class QPushButton;
class QStackedWidget;
class QTabBar;

namespace kvo::forms {

class AnalogSetupFrame;
class DataLoggerPage;
class EditGearsFrame;
class GeneralPage;
class GraphPage;
class SetupPage;

class SetupSoftware : public QDialog {
    Q_OBJECT

public:
    SetupSoftware();

    // Whether the form was left by Cancel the last time.
    struct Kept {
        bool DialogCancelled = false;
    };

    // The lock of the form while a pop-up frame is open.
    void EnableSetupControls(bool Enabled);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void reject() override;

private:
    void makeLayout();
    void connectPages();
    std::array<SetupPage*, 3> pages() const;
    std::array<QFrame*, 2> frames() const;

    void Form_Load();
    void TabStrip1_Click(int tab);
    void turnTab(int by);
    void SaveSetup_Click();
    void CancelSetup_Click();
    void GearRatios_Click(QWidget* button);
    void AnalogSetup_Click(int channel, QWidget* button);
    void Ok_Click();
    // Locks the form for a frame that a button opens; false where the user may not leave the box.
    bool lockFor(QWidget* button);
    void frameLeft();
    // Takes what the controls read now, runs a rule on it and shows what has become of it.
    template <class Rule> void runRule(Rule rule);
    void collect();
    void showRows();
    // A pop-up frame stands over the middle of the form.
    void place(QFrame& frame);
    // The tab of a control comes to the front, and the control gets the focus.
    void lookAt(const std::string& control);
    [[nodiscard]] bool writeConfig();

    setup::SetupValues m_values;
    QPointer<QWidget> m_opener; // the button that opened the frame, which gets the focus back
    QTabBar* TabStrip1 = nullptr;
    QStackedWidget* m_pages = nullptr;
    GeneralPage* General = nullptr;
    GraphPage* Graph = nullptr;
    DataLoggerPage* Data_Logger = nullptr;
    EditGearsFrame* Edit_Gears = nullptr;
    AnalogSetupFrame* Analog_Setup = nullptr;
    QPushButton* SaveSetup = nullptr;
    QPushButton* CancelSetup = nullptr;
};

} // namespace kvo::forms
