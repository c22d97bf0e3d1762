#pragma once
// PitRun: the readings of the logger as numbers, live, while the engine runs in the pits. It reads
// and shows; the course of a pit run is link/pit_run_session.h.
#include "link/pit_run_display.h"
#include "link/pit_run_session.h"
#include "platform/qt/form_kit.h"

#include <QDialog>

#include <array>

class QLabel;
class QPushButton;

namespace kvo::forms {

class RangeBar;

class PitRun : public QDialog, public link::PitRunView {
    Q_OBJECT

public:
    PitRun();

protected:
    void reject() override;

private:
    void makeLayout();
    void showPort();
    QLayout* makeSpeeds();
    QLayout* makeAnalogs();
    QLayout* makeExhausts();
    QLayout* makeIdleRow();
    QLayout* makeBottom();
    void makeFreeze();
    RangeBar* makeBar(int channel, QLabel* value, const QString& name);
    void Command1_Click();
    void But_Freeze_Click();
    void showFreeze();
    void showNumbers();
    void BTN_Ok_Click();

    // link::PitRunView
    void setCommand1(const std::string& caption) override;
    void applyLayout(const link::PitRunLayout& layout) override;
    void showReadings(const link::PitRunReadings& readings) override;
    void setStatus(const std::string& text) override;
    void unload() override;

    QPushButton* Command1 = nullptr;
    QPushButton* BTN_Ok = nullptr;
    QLabel* LineNumber = nullptr;
    QLabel* ERpm = nullptr;
    QLabel* CRpm = nullptr;
    QLabel* PRpm = nullptr;
    QLabel* Mph = nullptr;
    QLabel* Temps_Label = nullptr;
    QLabel* FlowMeter = nullptr;    // never driven, as StatusLabel
    QLabel* Label_Port = nullptr;   // where the logger is
    QLabel* Label_Status = nullptr; // says when nothing comes
    QPushButton* But_Freeze = nullptr;
    QLabel* Label_Freeze = nullptr; // says that the numbers stand still
    std::array<RangeBar*, link::pitChannels> m_bars{};
    link::PitRunDisplay m_display;
    platform_qt::ControlArray<QLabel, 1, 8> Analog;
    platform_qt::ControlArray<QLabel, 1, 8> Text_Analog;
    platform_qt::ControlArray<QLabel, 1, 8> T;
    platform_qt::ControlArray<QLabel, 1, 8> Text_T;
    platform_qt::ControlArray<QLabel, 0, 3> StatusLabel;
    core::FromOne<QString, 8> m_widestWhole; // of the channels that go through a table
    link::PitRunSession m_session;
};

} // namespace kvo::forms
