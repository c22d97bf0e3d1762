#include "platform/system_path.h"

#include "platform/text.h"

namespace kvo::platform {

#ifdef _WIN32

std::filesystem::path systemPath(std::string_view path) {
    const std::u16string wide = utf16Of(path);
    return std::filesystem::path(std::wstring(wide.begin(), wide.end()));
}

std::string pathText(const std::filesystem::path& path) {
    const std::wstring& wide = path.native();
    return utf8Of(std::u16string(wide.begin(), wide.end()));
}

#else

std::filesystem::path systemPath(std::string_view path) {
    return std::filesystem::path(path);
}

std::string pathText(const std::filesystem::path& path) {
    return path.native();
}

#endif

} // namespace kvo::platform
