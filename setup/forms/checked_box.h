#pragma once
// Text boxes of the option forms: what they select when the focus comes, what they take while the
// user types, and the checks as the user leaves them.
#include "platform/qt/file_letters.h"
#include "setup/option_rows.h"

#include <functional>
#include <string_view>

class QLineEdit;
class QWidget;

namespace kvo::forms {

// GotFocus: the whole text is selected, also where the mouse brought the focus without marking a
// part of the text.
void selectOnFocus(QLineEdit* box);

// LostFocus: `check` judges the text. What it refuses is set as it says, with its beep, and the
// focus goes back into the box.
using LeaveCheck = std::function<setup::BoxCheck(std::string_view text)>;
void checkOnLeave(QLineEdit* box, LeaveCheck check);

// For what takes no focus as it is clicked, such as a button with Qt::TabFocus or a tab: judges the
// box that has the focus in this window as if the user left it. False where it was refused: the
// click then does nothing, so that the user sees what has become of the text.
bool mayLeaveBox(const QWidget& window);

} // namespace kvo::forms
