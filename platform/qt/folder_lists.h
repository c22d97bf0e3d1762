#pragma once
// What the drive, folder and file lists of a form show. Paths and names are the system's own; names
// that this system cannot read as text, and hidden ones, are left out.
#include <QString>
#include <QStringList>

namespace kvo::platform_qt {

// Where a way through the folders may begin: the drives, on a system without them its root, the
// user's folder and what is mounted.
QStringList driveList();
// The drive that a folder is on: the longest of them that it lies below.
QString driveOf(const QString& folder, const QStringList& drives);
// The names of the folders in a folder, ".." in front unless it is the uppermost one.
QStringList folderList(const QString& folder);
// The names of its files that fit a pattern with * and ?, whatever their case; by name.
QStringList fileList(const QString& folder, const QString& pattern);
// A folder of a folder; ".." is the one above. Gives the folder itself where there is none.
QString subFolder(const QString& folder, const QString& name);

} // namespace kvo::platform_qt
