#pragma once
// The face of a tab of the setup form. The form alone holds the values (setup/setup_values.h) and
// runs the rules on them; a page is its own widget that shows its part of them and gives it back.
//
//   opening        showValues(values), once, on a page that is fresh
//   a rule ran     showRows(values): what is on view and which captions stand there has changed
//   Save           collect(values), then the rules take them all into the configuration
//
// A page tells the form of an event by a signal and decides nothing that reaches beyond itself.
#include "setup/setup_values.h"

#include <QWidget>

namespace kvo::forms {

class SetupPage : public QWidget {
    Q_OBJECT

public:
    // Fills all controls of the page, showRows() included.
    virtual void showValues(const setup::SetupValues& values) = 0;
    // What comes and goes with model, vehicle and tab, and the captions that depend on them. The
    // texts and selections of the controls stay.
    virtual void showRows(const setup::SetupValues& values) = 0;
    // Writes the page's own part of the values, in the order of showValues().
    virtual void collect(setup::SetupValues& values) const = 0;
};

} // namespace kvo::forms
