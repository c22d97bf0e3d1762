#include "core/forms/software_setup.h"

namespace kvo::forms {

void showSoftwareSetup() {}

} // namespace kvo::forms
