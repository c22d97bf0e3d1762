#pragma once
// The tab "Graph" of the setup form: the defaults of the graph's look. Its part of the values is
// SetupValues::graph, by SetupValues::rows and SetupValues::Label_Magnify.
#include "setup/forms/setup_page.h"

namespace kvo::forms {

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
};

} // namespace kvo::forms
