#pragma once
// Pages outside the program, shown in the user's own browser.
#include <string>

namespace kvo::platform {

class Browser {
public:
    virtual ~Browser() = default;
    // Opens a page in a new visible window. False where that is known to have failed; a desktop may
    // also fail without telling.
    virtual bool open(const std::string& address) = 0;
};

} // namespace kvo::platform
