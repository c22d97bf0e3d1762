#include "tests/forms/support/host_files.h"

#include "platform/qt/text.h"

#include <QDir>
#include <QFileInfo>

namespace kvo::testing {

using platform::ReadResult;
using platform::WriteResult;
using platform_qt::shownPath;
using platform_qt::typedPath;

std::string hostPath(const std::string& memoryPath) {
    return typedPath(QDir::toNativeSeparators(QFileInfo(shownPath(memoryPath)).absoluteFilePath()));
}

std::string memoryPath(const std::string& hostPath) {
    const std::string path = typedPath(QDir::fromNativeSeparators(shownPath(hostPath)));
    const std::string root = typedPath(QFileInfo(QStringLiteral("/")).absoluteFilePath());
    return path.starts_with(root) ? path.substr(root.size() - 1) : path;
}

ReadResult HostFiles::readOrReason(const std::string& path) const {
    return m_memory.readOrReason(memoryPath(path));
}

ReadResult HostFiles::readAsNamed(const std::string& path) const {
    return m_memory.readAsNamed(memoryPath(path));
}

WriteResult HostFiles::write(const std::string& path, const platform::Bytes& content) {
    return m_memory.write(memoryPath(path), content);
}

WriteResult HostFiles::createEmpty(const std::string& path) {
    return m_memory.createEmpty(memoryPath(path));
}

WriteResult HostFiles::replaceable(const std::string& path) const {
    return m_memory.replaceable(memoryPath(path));
}

bool HostFiles::linksElsewhere(const std::string& path) const {
    return m_memory.linksElsewhere(memoryPath(path));
}

std::optional<platform::DateTime> HostFiles::createdOn(const std::string& path) const {
    return m_memory.createdOn(memoryPath(path));
}

bool HostFiles::exists(const std::string& path) const {
    return m_memory.exists(memoryPath(path));
}

bool HostFiles::folderExists(const std::string& path) const {
    return m_memory.folderExists(memoryPath(path));
}

WriteResult HostFiles::enterable(const std::string& folder) const {
    return m_memory.enterable(memoryPath(folder));
}

WriteResult HostFiles::writable(const std::string& folder) const {
    return m_memory.writable(memoryPath(folder));
}

WriteResult HostFiles::makeFolder(const std::string& path) {
    return m_memory.makeFolder(memoryPath(path));
}

WriteResult HostFiles::remove(const std::string& path) {
    return m_memory.remove(memoryPath(path));
}

std::vector<std::string> HostFiles::list(const std::string& folder) const {
    return m_memory.list(memoryPath(folder));
}

std::optional<std::vector<std::string>> HostFiles::folders(const std::string& folder) const {
    return m_memory.folders(memoryPath(folder));
}

char HostFiles::separator() const {
    return QDir::separator().toLatin1();
}

} // namespace kvo::testing
