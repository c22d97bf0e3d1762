#pragma once
// What must end the program, an assert, is tried in a process of its own: the test function starts
// its program anew with itself as the only test.
#include <QString>

namespace kvo::testing {

// Whether this is that process: the test function does what must not be done.
bool isOwnProcess();

// Runs the test function that is calling, with its data row, in a process of its own. The message
// of the assert that ended it; empty when it came to its end, or ended otherwise.
QString assertInOwnProcess();

} // namespace kvo::testing
