#pragma once
// The tab "Graph" of the setup form: the defaults of the graph's look. Its part of the values is
// SetupValues::graph, by SetupValues::rows and SetupValues::Label_Magnify.
#include "setup/forms/setup_page.h"

#include <span>
#include <string_view>

class QComboBox;
class QGridLayout;
class QTabBar;

namespace kvo::forms {

class ScaleRows;

class GraphPage : public SetupPage {
    Q_OBJECT

public:
    GraphPage();

    void showValues(const setup::SetupValues& values) override;
    void showRows(const setup::SetupValues& values) override;
    void collect(setup::SetupValues& values) const override;

signals:
    // A click on a tab of TabStrip2. The form runs the routines of tab and vehicle by the models
    // and vehicles that are selected now, and comes back with showRows().
    void TabStrip2_Clicked(setup::RowsTab tab);

private:
    QWidget* makeLooks();
    QWidget* makeScales();
    QComboBox* makeList(QGridLayout& grid, const QString& caption, const char* name,
        std::span<const std::string_view> entries);
    void TabStrip2_Click(int tab);
    void Command3_Click();

    setup::SetupRows m_shown; // what is on view
    QComboBox* G_Res = nullptr;
    QComboBox* MaxRpm = nullptr;
    QComboBox* Exhaust = nullptr;
    QComboBox* GridStyle = nullptr;
    QComboBox* OverlayStyle = nullptr;
    QComboBox* OverlayColours = nullptr;
    QTabBar* TabStrip2 = nullptr;
    ScaleRows* m_rows = nullptr;
};

} // namespace kvo::forms
