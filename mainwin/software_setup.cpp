#include "mainwin/software_setup.h"

namespace kvo::forms {

void showSoftwareSetup() {}

} // namespace kvo::forms
