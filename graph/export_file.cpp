#include "graph/export_file.h"

#include "core/paths.h"
#include "core/run_title.h"
#include "platform/text.h"

#include <algorithm>
#include <cctype>

namespace kvo::graph {
namespace {

// Letters beyond ASCII are taken by every file system of today.
char inFileName(char c) {
    const auto byte = static_cast<unsigned char>(c);
    const bool taken = byte >= 0x80 || std::isalnum(byte) != 0 ||
                       std::string_view(" .-_()").find(c) != std::string_view::npos;
    return taken ? c : '_';
}

bool isSeparator(char c) {
    return c == '/' || c == '\\';
}

std::string lowered(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
        [](char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); });
    return lower;
}

// What stands in front of the last separator.
std::string folderOf(const std::string& path) {
    const auto end = std::find_if(path.rbegin(), path.rend(), isSeparator);
    return end == path.rend() ? std::string() : std::string(path.begin(), end.base() - 1);
}

} // namespace

std::string exportName(std::string_view headerLine, std::string_view fileName) {
    std::string name;
    for (const char c : platform::fromFile(core::titleOf(headerLine))) {
        const char taken = inFileName(c);
        if (taken != ' ' || (!name.empty() && name.back() != ' ')) name += taken;
    }
    while (!name.empty() && name.back() == ' ') name.pop_back();
    name.erase(0, name.find_first_not_of('.')); // a point in front would hide it
    return name.empty() ? std::string(fileName) : name;
}

std::string withExtension(std::string path, std::string_view extension) {
    if (!lowered(path).ends_with(extension)) path += extension;
    return path;
}

std::optional<std::string> askExportPath(const ExportForm& form, const std::string& name,
    std::string& folder, platform::Dialogs& dialogs, const platform::Files& files) {
    std::string suggestion = core::joined(folder, name + form.extension, files);
    for (;;) {
        const auto chosen = dialogs.chooseFile({form.title, form.kind, suggestion});
        if (!chosen) return std::nullopt;
        const std::string path = withExtension(*chosen, form.extension);
        suggestion = path;
        if (!files.exists(path) ||
            dialogs.messageBox(
                core::baseName(path) + "\nis there already. Do you want to replace it?",
                platform::boxStyle::yesNo | platform::boxStyle::warning |
                    platform::boxStyle::secondDefault,
                form.title) == platform::Reply::yes) {
            folder = folderOf(path);
            return path;
        }
    }
}

void writeExport(const ExportForm& form, const std::string& path, const platform::Bytes& content,
    platform::Dialogs& dialogs, platform::Files& files) {
    const auto written = files.write(path, content);
    if (!written) dialogs.messageBox(written.message, platform::boxStyle::critical, form.title);
}

} // namespace kvo::graph
