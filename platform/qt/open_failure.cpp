#include "platform/qt/open_failure.h"

#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace kvo::platform_qt {
namespace {

using platform::PortError;

#ifdef Q_OS_UNIX
// The group that may use the device, empty if being in a group would not help.
QString groupOf(const QString& device) {
    struct stat facts {};
    if (::stat(device.toLocal8Bit().constData(), &facts) != 0) return {};
    constexpr mode_t groupMayUse = S_IRGRP | S_IWGRP;
    if ((facts.st_mode & groupMayUse) != groupMayUse) return {};
    const struct group* owner = ::getgrgid(facts.st_gid);
    return owner != nullptr ? QString::fromLocal8Bit(owner->gr_name) : QString();
}

bool mayUse(const QString& device) {
    return ::access(device.toLocal8Bit().constData(), R_OK | W_OK) == 0;
}
#else
QString groupOf(const QString&) {
    return {};
}
bool mayUse(const QString&) {
    return true;
}
#endif

OpenFailure missing(int port, const QString& device) {
    if (device.isEmpty()) {
        return {PortError::missing,
            QStringLiteral("There is no serial port number %1 on this computer.\n"
                           "Plug in the download cable's adapter, or choose another port.")
                .arg(port)};
    }
    return {PortError::missing,
        QStringLiteral("Port %1 is %2, which is not there.\n"
                       "Plug in the download cable's adapter, or choose another port.")
            .arg(port)
            .arg(withTarget(device))};
}

OpenFailure notPermitted(int port, const QString& device) {
    const QString group = groupOf(device);
    const QString cure =
        group.isEmpty()
            ? QStringLiteral("Ask the administrator of this computer for access to it.")
            : QStringLiteral("Join the group \"%1\" (as administrator: adduser YOUR-NAME %1), "
                             "then log out and in again.")
                  .arg(group);
    return {PortError::notPermitted, QStringLiteral("You are not permitted to use port %1, %2.\n%3")
                                         .arg(port)
                                         .arg(withTarget(device), cure)};
}

OpenFailure busy(int port, const QString& device) {
    return {PortError::busy,
        QStringLiteral("Port %1, %2, is in use by another program.\nClose that program first.")
            .arg(port)
            .arg(withTarget(device))};
}

bool soundsBusy(const QString& systemText) {
    return systemText.contains(QLatin1String("busy"), Qt::CaseInsensitive) ||
           systemText.contains(QLatin1String("while locking"), Qt::CaseInsensitive);
}

} // namespace

QString withTarget(const QString& device) {
    const QFileInfo info(device);
    if (!info.isSymLink()) return device;
    return QStringLiteral("%1 (%2)").arg(device, info.symLinkTarget());
}

OpenFailure explainOpenFailure(int port, const QString& device, const QString& systemText) {
#ifdef Q_OS_UNIX
    if (device.isEmpty() || !QFileInfo::exists(device)) return missing(port, device);
    if (!mayUse(device)) return notPermitted(port, device);
#else
    if (device.isEmpty()) return missing(port, device);
    if (systemText.contains(QLatin1String("cannot find"), Qt::CaseInsensitive))
        return missing(port, device);
    if (systemText.contains(QLatin1String("denied"), Qt::CaseInsensitive))
        return busy(port, device);
#endif
    if (soundsBusy(systemText)) return busy(port, device);
    return {PortError::other, QStringLiteral("Port %1, %2, cannot be opened: %3.")
                                  .arg(port)
                                  .arg(withTarget(device), systemText)};
}

} // namespace kvo::platform_qt
