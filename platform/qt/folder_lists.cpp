#include "platform/qt/folder_lists.h"

#include <QDir>
#include <QStorageInfo>

namespace kvo::platform_qt {
namespace {

// Where desktops put sticks, disks and shares.
bool isMountPlace(const QString& path) {
    for (const char* place : {"/media/", "/run/media/", "/mnt/"}) {
        if (path.startsWith(QLatin1String(place))) return true;
    }
    return false;
}

bool liesIn(const QString& folder, const QString& drive) {
    if (folder == drive) return true;
    const QString above = drive.endsWith(QLatin1Char('/')) ? drive : drive + QLatin1Char('/');
    return folder.startsWith(above);
}

} // namespace

QStringList driveList() {
    QStringList drives;
    const auto roots = QDir::drives();
    for (const QFileInfo& root : roots) drives << root.absoluteFilePath();
    const auto add = [&drives](const QString& path) {
        if (!drives.contains(path)) drives << path;
    };
    add(QDir::homePath());
    const auto volumes = QStorageInfo::mountedVolumes();
    for (const QStorageInfo& volume : volumes) {
        if (volume.isReady() && isMountPlace(volume.rootPath())) add(volume.rootPath());
    }
    return drives;
}

QString driveOf(const QString& folder, const QStringList& drives) {
    QString found;
    for (const QString& drive : drives) {
        if (liesIn(folder, drive) && drive.size() > found.size()) found = drive;
    }
    return found;
}

QStringList folderList(const QString& folder) {
    const QDir dir(folder);
    QStringList names = dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    if (!dir.isRoot()) names.prepend(QStringLiteral(".."));
    return names;
}

QStringList fileList(const QString& folder, const QString& pattern) {
    return QDir(folder).entryList({pattern}, QDir::Files, QDir::Name);
}

QString subFolder(const QString& folder, const QString& name) {
    QDir dir(folder);
    return dir.cd(name) ? dir.absolutePath() : folder;
}

} // namespace kvo::platform_qt
