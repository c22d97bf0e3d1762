#pragma once
// Statistics: minimum, maximum and average of every channel of the run on the graph, with its track
// times and a horsepower estimate.
#include "core/basic/from_one.h"
#include "core/forms/doors.h"
#include "platform/qt/form_kit.h"

#include <QDialog>

class QGridLayout;
class QLabel;
class QPushButton;

namespace kvo::library {
struct StatisticsRow;
}

namespace kvo::forms {

class Statistics : public QDialog {
    Q_OBJECT

public:
    using GraphTexts = forms::GraphTexts;

    Statistics();
    // Form_Load: works everything out and fills the labels.
    void showRun(const GraphTexts& graph);

    void reject() override { BUT_Close_Click(); }

    void Buttin_Info_Click();
    void BUT_Close_Click();
    void Print_Button_Click();

private:
    // One channel's line: its name and three values.
    struct Line {
        QLabel* name = nullptr;
        QLabel* min = nullptr;
        QLabel* max = nullptr;
        QLabel* ave = nullptr;
    };
    void makeLayout();
    QWidget* makeTrack();
    QWidget* makeChannels();
    Line makeLine(QGridLayout& grid, const QString& caption, const QString& name, int index);
    QLabel* makeTrackLine(QGridLayout& grid, const QString& caption, const char* name);
    void fillLabels();
    static void fill(const Line& line, const library::StatisticsRow& row);

    GraphTexts m_graph;
    QLabel* ET60 = nullptr;
    QLabel* Et330 = nullptr;
    QLabel* ET660 = nullptr;
    QLabel* Et1000 = nullptr;
    QLabel* Et = nullptr;
    QLabel* Speed660 = nullptr;
    QLabel* Mph_Max = nullptr;
    QLabel* Horsepower = nullptr;
    QLabel* Range = nullptr; // what the minima, maxima and averages are taken from
    Line m_rpm;
    Line m_input;
    Line m_pinion;
    core::FromOne<Line, 8> m_analog;
    core::FromOne<Line, 8> m_exhaust;
    QPushButton* Buttin_Info = nullptr;
    QPushButton* Print_Button = nullptr;
    QPushButton* BUT_Close = nullptr;
};

} // namespace kvo::forms
