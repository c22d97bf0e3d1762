#include "platform/look_only_files.h"

namespace kvo::platform {

bool LookOnlyFiles::isInside(const std::string& path) const {
    if (m_everywhere) return true;
    if (m_folder.empty() || !path.starts_with(m_folder)) return false;
    if (path.size() == m_folder.size() || m_folder.ends_with(separator())) return true;
    return path[m_folder.size()] == separator() || path[m_folder.size()] == '/';
}

WriteResult LookOnlyFiles::refused(const std::string& path) {
    return {false, path + ": this folder is open for looking only.", FileFailure::readOnly};
}

ReadResult LookOnlyFiles::readOrReason(const std::string& path) const {
    return m_below.readOrReason(path);
}

ReadResult LookOnlyFiles::readAsNamed(const std::string& path) const {
    return m_below.readAsNamed(path);
}

WriteResult LookOnlyFiles::write(const std::string& path, const Bytes& content) {
    return isInside(path) ? refused(path) : m_below.write(path, content);
}

WriteResult LookOnlyFiles::createEmpty(const std::string& path) {
    return isInside(path) ? refused(path) : m_below.createEmpty(path);
}

WriteResult LookOnlyFiles::replaceable(const std::string& path) const {
    return isInside(path) ? refused(path) : m_below.replaceable(path);
}

bool LookOnlyFiles::linksElsewhere(const std::string& path) const {
    return m_below.linksElsewhere(path);
}

std::optional<DateTime> LookOnlyFiles::createdOn(const std::string& path) const {
    return m_below.createdOn(path);
}

bool LookOnlyFiles::exists(const std::string& path) const {
    return m_below.exists(path);
}

bool LookOnlyFiles::folderExists(const std::string& path) const {
    return m_below.folderExists(path);
}

WriteResult LookOnlyFiles::enterable(const std::string& folder) const {
    return m_below.enterable(folder);
}

WriteResult LookOnlyFiles::writable(const std::string& folder) const {
    return isInside(folder) ? refused(folder) : m_below.writable(folder);
}

WriteResult LookOnlyFiles::makeFolder(const std::string& path) {
    return isInside(path) ? refused(path) : m_below.makeFolder(path);
}

WriteResult LookOnlyFiles::remove(const std::string& path) {
    return isInside(path) ? refused(path) : m_below.remove(path);
}

std::vector<std::string> LookOnlyFiles::list(const std::string& folder) const {
    return m_below.list(folder);
}

std::optional<std::vector<std::string>> LookOnlyFiles::folders(const std::string& folder) const {
    return m_below.folders(folder);
}

char LookOnlyFiles::separator() const {
    return m_below.separator();
}

} // namespace kvo::platform
