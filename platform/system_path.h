#pragma once
// The border between the program's paths, UTF-8, and those of the file system library, which go by
// what the system has: bytes or UTF-16. Nothing else makes one of the other: the library itself
// takes a text for one in the system's old code page on Windows.
#include <filesystem>
#include <string>
#include <string_view>

namespace kvo::platform {

// Where paths are bytes they go through as they are, UTF-8 or not. Where they are UTF-16, bytes
// that are no UTF-8 become U+FFFD, and the path names nothing.
std::filesystem::path systemPath(std::string_view path);
// The other way. Half of a pair of UTF-16 becomes U+FFFD, so that such a name can be shown.
std::string pathText(const std::filesystem::path& path);

#ifdef _WIN32
// The same border for other texts of the system.
std::wstring wideText(std::string_view text);
std::string narrowText(std::wstring_view text);
#endif

} // namespace kvo::platform
