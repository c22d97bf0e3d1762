#pragma once
// What the program remembers of its user and not of a folder, such as the folders that were open
// last. Losing it costs nobody a run.
#include <string>
#include <vector>

namespace kvo::platform {

class Settings {
public:
    virtual ~Settings() = default;
    // The list of that name; empty where there is none. Texts are UTF-8.
    virtual std::vector<std::string> list(const std::string& name) const = 0;
    // Keeps it from now on; where it cannot be kept that is silent.
    virtual void setList(const std::string& name, const std::vector<std::string>& values) = 0;
};

} // namespace kvo::platform
