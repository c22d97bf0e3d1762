#include "platform/qt/open_failure.h"

#include "platform/port_words.h"

#include <QFileInfo>

#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kvo::platform_qt {
namespace {

using platform::PortError;

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

OpenFailure missing(int port, const QString& device) {
    const std::string behind = device.isEmpty() ? std::string() : withTarget(device).toStdString();
    return {PortError::missing, QString::fromStdString(platform::missingPortText(port, behind))};
}

OpenFailure notPermitted(int port, const QString& device) {
    return {PortError::notPermitted,
        QString::fromStdString(platform::forbiddenPortText(
            port, withTarget(device).toStdString(), groupOf(device).toStdString()))};
}

OpenFailure busy(int port, const QString& device) {
    return {PortError::busy,
        QString::fromStdString(platform::busyPortText(port, withTarget(device).toStdString()))};
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
    if (device.isEmpty() || !QFileInfo::exists(device)) return missing(port, device);
    if (!mayUse(device)) return notPermitted(port, device);
    if (soundsBusy(systemText)) return busy(port, device);
    return {PortError::other, QString::fromStdString(platform::failedPortText(port,
                                  withTarget(device).toStdString(), systemText.toStdString()))};
}

} // namespace kvo::platform_qt
