#include "library/forms/drive_box.h"

#include "library/folder_browser.h"
#include "platform/qt/text.h"

#include <QDir>

namespace kvo::forms {

DriveBox::DriveBox() {
    for (const platform_qt::Drive& drive : m_drives) addItem(platform_qt::shownPath(drive.caption));
}

std::string DriveBox::chosenRoot() const {
    const int chosen = currentIndex();
    return chosen < 0 ? std::string() : m_drives[static_cast<std::size_t>(chosen)].root;
}

void DriveBox::showDriveOf(const std::string& folder) {
    std::vector<std::string> roots;
    for (const platform_qt::Drive& drive : m_drives) roots.push_back(drive.root);
    const auto drive = library::driveOf(roots, folder, QDir::separator().toLatin1());
    setCurrentIndex(drive ? static_cast<int>(*drive) : -1);
}

} // namespace kvo::forms
