#include "platform/qt/qt_browser.h"

#include <QDesktopServices>
#include <QUrl>

namespace kvo::platform_qt {

bool QtBrowser::open(const std::string& address) {
    return QDesktopServices::openUrl(QUrl(QString::fromStdString(address)));
}

} // namespace kvo::platform_qt
