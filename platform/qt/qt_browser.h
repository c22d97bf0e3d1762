#pragma once
// The user's browser, as the desktop has it set.
#include "platform/browser.h"

namespace kvo::platform_qt {

class QtBrowser : public platform::Browser {
public:
    bool open(const std::string& address) override;
};

} // namespace kvo::platform_qt
