#include "library/folder_browser.h"

#include "core/paths.h"

namespace kvo::library {

namespace {

constexpr const char* rowAbove = "..";

std::vector<std::string> withoutHidden(std::vector<std::string> names) {
    std::erase_if(names, [](const std::string& name) { return name.empty() || name[0] == '.'; });
    return names;
}

} // namespace

bool isRootFolder(std::string_view folder) {
    const bool ends = folder.ends_with('/') || folder.ends_with('\\');
    return ends && (folder.size() == 1 || (folder.size() == 3 && folder[1] == ':'));
}

bool FolderBrowser::enter(const std::string& folder) {
    std::string place = folder;
    if (place.size() > 1 && place.back() == m_files.separator() && !isRootFolder(place))
        place.pop_back();
    auto folders = place.empty() ? std::nullopt : m_files.folders(place);
    if (!folders) return false;
    m_folder = std::move(place);
    m_rows = withoutHidden(std::move(*folders));
    if (above()) m_rows.insert(m_rows.begin(), rowAbove);
    return true;
}

bool FolderBrowser::enterRow(std::size_t row) {
    if (row >= m_rows.size()) return false;
    if (m_rows[row] == rowAbove) return goUp();
    return enter(core::joined(m_folder, m_rows[row], m_files));
}

bool FolderBrowser::goUp() {
    const auto parent = above();
    return parent && enter(*parent);
}

std::optional<std::string> FolderBrowser::above() const {
    const std::size_t last = m_folder.rfind(m_files.separator());
    if (last == std::string::npos || isRootFolder(m_folder)) return {};
    const std::string root = m_folder.substr(0, last + 1);
    return isRootFolder(root) ? root : m_folder.substr(0, last);
}

std::vector<std::string> FolderBrowser::files() const {
    return withoutHidden(m_files.list(m_folder));
}

std::optional<std::size_t> driveOf(
    const std::vector<std::string>& roots, const std::string& folder, char separator) {
    std::optional<std::size_t> best;
    for (std::size_t i = 0; i < roots.size(); ++i) {
        const std::string& root = roots[i];
        if (root.empty() || folder.rfind(root, 0) != 0) continue;
        const bool whole = folder.size() == root.size() || root.back() == separator ||
                           folder[root.size()] == separator;
        if (whole && (!best || root.size() > roots[*best].size())) best = i;
    }
    return best;
}

} // namespace kvo::library
