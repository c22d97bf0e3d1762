#pragma once
// TimeGraph: the timed runs below one another, a mark for each of their times on one axis, and a
// line that reads it. What is drawn and said is library/time_graph.
#include "core/run_times.h"
#include "library/time_graph.h"
#include "platform/qt/form_kit.h"

#include <QDialog>

#include <vector>

class QFrame;
class QLabel;
class QPushButton;
class QScrollBar;

namespace kvo::platform_qt {
class SurfaceWidget;
}

namespace kvo::forms {

class TimeGraph : public QDialog {
    Q_OBJECT

public:
    TimeGraph();

    // Reads the times and comes to the front. Opened from the graph it gives way to that when it
    // goes, else to the main window.
    void showTable(bool fromGraph);

    void Date_Click(int row);
    void BUT_Close_Click();
    void PrintGraph_Click();
    void reject() override { BUT_Close_Click(); }

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void makeControls();
    void makeDates();
    void makeLayout();
    QLayout* makeReadOut();
    QLayout* makeLegend();
    void Form_Load();
    void Form_Unload();
    void Form_Resize();
    void Draw_TimeGraph();
    void placeDates();
    void GraphLine(int x);
    void moveLine(std::optional<int> x);
    void showMarks();
    void bringIntoView(int x);
    void HScroll1_Change();
    void Graph_KeyDown(int key, Qt::KeyboardModifiers modifiers);
    void Graph_MouseMove(float x, float y);
    // Hundredths of a second within which a mark counts as met.
    int reach() const;

    bool TimeGraphFromGraph = false;
    core::RunTimesTable m_table;
    std::vector<library::TimedRow> m_rows;
    int m_line = 0; // where the line stands, hundredths of a second

    platform_qt::SurfaceWidget* Graph = nullptr;
    platform_qt::ControlArray<QPushButton, 1, 25> Date;
    QFrame* Frame1 = nullptr; // the labels of the runs
    QFrame* Frame2 = nullptr; // what is in view of Graph
    QScrollBar* HScroll1 = nullptr;
    QLabel* Time_Label = nullptr;
    QLabel* Label3 = nullptr; // in front of the time of the line
    QLabel* Label4 = nullptr; // its unit
    QLabel* Label6 = nullptr; // in front of the legend
    QLabel* Label7 = nullptr; // the marks at the line
    QPushButton* BUT_Close = nullptr;
    QPushButton* PrintGraph = nullptr;
};

} // namespace kvo::forms
