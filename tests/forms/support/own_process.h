#pragma once
// What must end the program, an assert say, is tried in a process of its own: the test function
// starts its program anew with itself as the only test.
#include <QString>

namespace kvo::testing {

// Whether this is that process: the test function does what must not be done.
bool isOwnProcess();

// Runs the test function that is calling, with its data row, in a process of its own. What that
// wrote to the error output when it was aborted; empty when it came to its end.
QString abortInOwnProcess();

} // namespace kvo::testing
