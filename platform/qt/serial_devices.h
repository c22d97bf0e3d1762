#pragma once
// Which device stands behind a port number, where the system has no ports of that number. Systems
// other than Windows name their serial devices by kind; the program counts ports from 1 to 16.
#include <QString>

#include <vector>

namespace kvo::platform_qt {

struct SerialDevice {
    QString path;     // "/dev/ttyUSB0"
    bool usb = false; // an adapter that was plugged in
};

// All serial devices of the system, in the order of port numbers.
std::vector<SerialDevice> serialDevices();

// USB adapters first, then by name, numbers in a name by their value: the order does not depend on
// how the system happens to list them.
void sortSerialDevices(std::vector<SerialDevice>& devices);

// The device of a port number: the link COMn in the program's folder when there is one (also when
// it leads nowhere), else the n-th of `devices`. Empty if there is none.
QString deviceOfPort(int number, const QString& folder, const std::vector<SerialDevice>& devices);

} // namespace kvo::platform_qt
