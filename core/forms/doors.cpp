#include "core/forms/doors.h"

#include <cstdlib>
#include <iostream>

namespace kvo::forms {

void endAtShutDoor(const char* name) {
    std::cerr << "The door " << name << " was never opened." << std::endl;
    std::abort();
}

Doors& doors() {
    static Doors all;
    return all;
}

} // namespace kvo::forms
