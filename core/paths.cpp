#include "core/paths.h"

namespace kvo::core {

std::string joined(const std::string& folder, std::string_view name, const platform::Files& files) {
    std::string path = folder;
    if (path.empty() || path.back() != files.separator()) path += files.separator();
    path += name;
    return path;
}

std::string baseName(std::string_view path) {
    return std::string(path.substr(path.find_last_of("/\\") + 1));
}

std::string dataFolder(const std::string& appFolder, const platform::Files& files) {
    return joined(appFolder, "Data", files);
}

} // namespace kvo::core
