#include "platform/qt/drives.h"

#include "platform/qt/text.h"

#include <QDir>
#include <QStorageInfo>

#include <algorithm>

namespace kvo::platform_qt {

namespace {

// The system mounts much that is no disk of the user's; his stand in these folders.
bool isUsersDisk(const QString& root) {
#ifdef _WIN32
    (void)root;
    return true;
#else
    const QStringList folders{QStringLiteral("/media/"), QStringLiteral("/run/media/"),
        QStringLiteral("/mnt/"), QStringLiteral("/Volumes/")};
    return std::any_of(folders.begin(), folders.end(),
        [&root](const QString& folder) { return root.startsWith(folder); });
#endif
}

} // namespace

std::vector<Drive> drives() {
    std::vector<Drive> all;
    const auto add = [&all](const QString& caption, const QString& root) {
        all.push_back({caption.toStdString(), typedPath(QDir::toNativeSeparators(root))});
    };
#ifndef _WIN32
    add(QStringLiteral("/"), QDir::rootPath());
#endif
    add(QStringLiteral("Home"), QDir::homePath());
    const auto volumes = QStorageInfo::mountedVolumes();
    for (const QStorageInfo& volume : volumes) {
        const QString root = volume.rootPath();
        if (isUsersDisk(root)) add(root, root);
    }
    return all;
}

} // namespace kvo::platform_qt
