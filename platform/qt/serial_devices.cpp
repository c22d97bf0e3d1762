#include "platform/qt/serial_devices.h"

#include <QDir>
#include <QFileInfo>
#include <QSerialPortInfo>

#include <algorithm>
#include <utility>

namespace kvo::platform_qt {
namespace {

bool isUsb(const QSerialPortInfo& info) {
    return info.hasVendorIdentifier() || info.portName().startsWith(QLatin1String("ttyUSB")) ||
           info.portName().startsWith(QLatin1String("ttyACM"));
}

// The name without the digits at its end, and the number they make: ttyUSB2 comes before ttyUSB10.
std::pair<QString, qlonglong> nameAndNumber(const QString& path) {
    qsizetype end = path.size();
    while (end > 0 && path[end - 1].isDigit()) --end;
    return {path.left(end), path.mid(end).toLongLong()};
}

} // namespace

std::vector<SerialDevice> serialDevices() {
    std::vector<SerialDevice> devices;
    const auto infos = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo& info : infos)
        devices.push_back({info.systemLocation(), isUsb(info)});
    sortSerialDevices(devices);
    return devices;
}

void sortSerialDevices(std::vector<SerialDevice>& devices) {
    std::sort(devices.begin(), devices.end(), [](const SerialDevice& a, const SerialDevice& b) {
        return a.usb != b.usb ? a.usb : nameAndNumber(a.path) < nameAndNumber(b.path);
    });
}

QString deviceOfPort(int number, const QString& folder, const std::vector<SerialDevice>& devices) {
    if (number < 1 || number > 16) return {};
    QString link = QDir(folder).absoluteFilePath(QStringLiteral("COM%1").arg(number));
    const QFileInfo info(link);
    if (info.isSymLink() || info.exists()) return link;
    const auto place = static_cast<std::size_t>(number - 1);
    return place < devices.size() ? devices[place].path : QString();
}

} // namespace kvo::platform_qt
