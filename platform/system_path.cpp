#include "platform/system_path.h"

#include "platform/text.h"

namespace kvo::platform {

#ifdef _WIN32

std::wstring wideText(std::string_view text) {
    const std::u16string wide = utf16Of(text);
    return {wide.begin(), wide.end()};
}

std::string narrowText(std::wstring_view text) {
    return utf8Of(std::u16string(text.begin(), text.end()));
}

std::filesystem::path systemPath(std::string_view path) {
    return std::filesystem::path(wideText(path));
}

std::string pathText(const std::filesystem::path& path) {
    return narrowText(path.native());
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
