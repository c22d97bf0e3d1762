#pragma once
// Boxes for what is stored as one byte a letter.
class QLineEdit;

namespace kvo::platform_qt {

// The box takes the letters that a file can hold. A key with another one does nothing; in a text
// that is pasted it becomes "?".
void onlyFileLetters(QLineEdit* box);

} // namespace kvo::platform_qt
