#pragma once
// Why a serial device did not open, told apart by what the user can do about it.
#include "platform/serial_port.h"

#include <QString>

namespace kvo::platform_qt {

struct OpenFailure {
    platform::PortError error = platform::PortError::other;
    QString text; // for the user: device, reason, what to do
};

// A device's name, and what it leads to where it is a link.
QString withTarget(const QString& device);

// `device` is empty when the port number stands for none; `systemText` is the system's own reason.
OpenFailure explainOpenFailure(int port, const QString& device, const QString& systemText);

} // namespace kvo::platform_qt
